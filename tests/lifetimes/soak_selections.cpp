// SPDX-License-Identifier: Apache-2.0
#include "lifetimes/soak_selections.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace fixtop::lifetimes {

namespace {

constexpr std::size_t kSelections = 6;
constexpr std::size_t kItems = 12;
constexpr int kDeepest = 3;
constexpr int kTop = 0;

constexpr char kNothing[] = "No element under this node";

bool SaysGone(const std::string& answer) {
    return answer == "Node deleted" || answer == "Node invalid";
}

// The number that a value or a note begins with; -1 when it is neither.
long NumberIn(const std::string& answer) {
    const std::size_t begin = answer.find("note ") == 0 ? 5 : 0;
    char* end = nullptr;
    const double number = std::strtod(answer.c_str() + begin, &end);
    return end == answer.c_str() + begin ? -1 : static_cast<long>(std::floor(number));
}

Ref<FIIteratorBase> RootOf(const SoakView& view) {
    return IteratorAt(view.root, {});
}

}  // namespace

bool SoakSelections::Item::HasPathOf(const Item& other) const {
    return is_top == other.is_top && is_operation == other.is_operation && holder == other.holder &&
           name == other.name && field == other.field;
}

SoakSelections::SoakSelections(World& world, Dice& dice, World::Fail fail, Client client)
    : world_(world), dice_(dice), fail_(std::move(fail)), client_(std::move(client)) {
    world_.SetWitness(this);
}

SoakSelections::~SoakSelections() {
    world_.SetWitness(nullptr);
    LetGo();
}

void SoakSelections::LetGo() {
    while (!held_.empty()) Drop(*held_.back());
    Bury();
}

void SoakSelections::Bury() {
    for (const Held& each : dropped_) {
        if (!each->face->IsLeft()) fail_("a collection that is gone holds a sink");
    }
    dropped_.clear();
}

void SoakSelections::Step() {
    struct Chance {
        int weight;
        Op op;
    };
    static constexpr Chance kChances[] = {
        {30, &SoakSelections::Add},   {8, &SoakSelections::Remove},
        {25, &SoakSelections::Read},  {10, &SoakSelections::Store},
        {15, &SoakSelections::Walk},  {6, &SoakSelections::SaveAndLoad},
        {12, &SoakSelections::Watch}, {12, &SoakSelections::Join},
        {2, &SoakSelections::Drop},
    };
    ++acts_;
    if (depth_ == 0) Bury();
    if (held_.size() < kSelections && (held_.empty() || dice_.OneIn(8))) Make();
    const Held held = Any();
    if (!held) return;
    if (IsSpent(*held) && dice_.OneIn(3)) return Drop(*held);
    int left = dice_.Roll(120);
    const Chance* chance = kChances;
    for (; left >= chance->weight; ++chance) left -= chance->weight;
    ++depth_;
    (this->*chance->op)(*held);
    --depth_;
}

// Of what lives it has nothing any more.
bool SoakSelections::IsSpent(const Selection& of) const {
    return !of.items.empty() &&
           std::none_of(of.items.begin(), of.items.end(),
                        [&](const Item& each) { return each.number >= 0 && IsLive(each); });
}

SoakSelections::Held SoakSelections::Any() {
    if (held_.empty()) return {};
    return held_[static_cast<std::size_t>(dice_.Roll(static_cast<int>(held_.size())))];
}

// ---- They come and go

void SoakSelections::Make() {
    const SoakView* view = client_.live_view();
    if (!view) return;
    if (dice_.OneIn(2)) return MakePasted(*view);
    auto made = std::make_shared<Selection>();
    made->neutral = view->neutral;
    Selection& of = *made;
    made->face =
        MakePlainFace([this, &of](int ear, int place, int kind) { Heard(of, ear, place, kind); });
    held_.push_back(std::move(made));
}

std::string SoakSelections::TextOf(Selection& of) {
    std::string text = of.face->AsXml();
    if (of.is_dropped) return text;
    FollowNames(of);
    std::size_t places = 0;
    for (auto at = text.find(" loc="); at != text.npos; at = text.find(" loc=", at + 1)) ++places;
    if (places != of.items.size()) fail_("kept are " + text);
    return text;
}

// What is pasted is another one's, or nothing.
void SoakSelections::MakePasted(const SoakView& view) {
    auto made = std::make_shared<Selection>();
    made->neutral = view.neutral;
    std::string text = "<CollectionBackup/>";
    const Held other = Any();
    if (other && other->neutral == view.neutral) {
        text = TextOf(*other);
        if (other->is_dropped) return;
        made->items = other->items;
    }
    Selection& of = *made;
    const long changes = world_.Changes();
    made->face = MakeAutomationFace(*view.root, text, [this, &of](int ear, int place, int kind) {
        Heard(of, ear, place, kind);
    });
    if (!made->face) return fail_("a text is not pasted: " + text);
    if (!made->items.empty() && made->face->AsXml() != text) {
        fail_("pasted is " + made->face->AsXml() + ", not " + text);
    }
    made->has_top = true;
    made->case_number = view.case_number;
    made->removals = view.removals;
    FindAll(of);
    held_.push_back(std::move(made));
    IsSure(of, changes, true);
}

void SoakSelections::Drop(Selection& of) {
    const auto is_it = [&](const Held& each) { return each.get() == &of; };
    const auto found = std::find_if(held_.begin(), held_.end(), is_it);
    if (found == held_.end()) return;
    dropped_.push_back(std::move(*found));
    held_.erase(found);
    of.is_dropped = true;
    of.walk.Reset();
    of.face->Drop();
}

// ---- What the book says

bool SoakSelections::IsLive(int case_number, int removals) const {
    return world_.HasHost() && removals == world_.Removals() && world_.Live(case_number);
}

bool SoakSelections::IsLive(const Item& item) const {
    if (!IsLive(item.case_number, item.removals)) return false;
    return item.is_top || world_.Lives(item.number);
}

SoakSelections::Item SoakSelections::ItemOn(const SoakView& view, int number, Field field) const {
    Item item;
    item.is_top = number < 0;
    if (!item.is_top) {
        item.is_operation = world_.At(number).is_operation;
        item.holder = world_.HolderName(number);
        item.name = world_.At(number).name;
        item.field = field;
    }
    item.number = item.is_top ? kTop : number;
    item.case_number = view.case_number;
    item.removals = view.removals;
    return item;
}

void SoakSelections::Bind(Item& item, int number, int case_number, int removals) {
    item.number = number;
    item.case_number = case_number;
    item.removals = removals;
    std::fill(std::begin(item.end_told), std::end(item.end_told), false);
}

void SoakSelections::FindMissing(Selection& of) {
    for (Item& each : of.items) Find(of, each);
}

void SoakSelections::Find(const Selection& of, Item& item) {
    if (item.number >= 0 || !of.has_top || !IsLive(of.case_number, of.removals)) return;
    const int number =
        item.is_top ? kTop : world_.Find(of.case_number, item.holder, item.name, item.is_operation);
    if (number >= 0) Bind(item, number, of.case_number, of.removals);
}

// Who was renamed is kept under the new name. One that is gone gives way to it, and of two on one
// object the one that was called so before stays.
void SoakSelections::FollowNames(Selection& of) {
    if (!of.has_top || !IsLive(of.case_number, of.removals)) return;
    std::vector<Item*> moved;
    for (Item& each : of.items) {
        if (each.is_top || each.number < 0 || !IsLive(each)) continue;
        if (each.name == world_.At(each.number).name &&
            each.holder == world_.HolderName(each.number))
            continue;
        each.name = world_.At(each.number).name;
        each.holder = world_.HolderName(each.number);
        moved.push_back(&each);
    }
    std::vector<const Item*> gone;
    const auto is_in = [](const auto& list, const Item* item) {
        return std::find(list.begin(), list.end(), item) != list.end();
    };
    for (auto planted = moved.begin(); planted != moved.end(); ++planted) {
        const std::vector<Item*> later(planted, moved.end());
        for (const Item& each : of.items) {
            if (is_in(later, &each) || is_in(gone, &each) || !each.HasPathOf(**planted)) continue;
            gone.push_back(each.number >= 0 && IsLive(each) ? *planted : &each);
            break;
        }
    }
    if (!gone.empty()) ++of.list_changes;
    std::vector<Item> left;
    for (const Item& each : of.items) {
        if (!is_in(gone, &each)) left.push_back(each);
    }
    of.items.swap(left);
}

// Before a search the names are followed.
bool SoakSelections::PrepareSearch(Selection& of) {
    if (!Misses(of)) return false;
    const long list_changes = of.list_changes;
    const std::string text = of.face->AsXml();
    if (of.is_dropped) return true;
    if (list_changes != of.list_changes) Drop(of);
    if (!of.is_dropped) FollowNames(of);
    return true;
}

// A search in whose middle the case changed may have missed what moved: then it is let go.
bool SoakSelections::IsSure(Selection& of, long changes, bool searched) {
    if (of.is_dropped) return false;
    if (changes == world_.Changes()) return true;
    if (searched) Drop(of);
    return false;
}

bool SoakSelections::Misses(const Selection& of) const {
    return std::any_of(of.items.begin(), of.items.end(),
                       [](const Item& each) { return each.number < 0; });
}

void SoakSelections::FindAll(Selection& of) {
    for (Item& each : of.items) {
        Bind(each, -1, 0, 0);
        std::fill(std::begin(each.heard_in), std::end(each.heard_in), 0);
    }
    FindMissing(of);
}

const SoakView* SoakSelections::ViewFor(const Selection& of) {
    const SoakView* view = client_.live_view();
    return view && view->neutral == of.neutral ? view : nullptr;
}

std::string SoakSelections::Describe(const Selection& of, const Item& item) const {
    return std::string(of.neutral ? "neutral " : "raw ") + (of.face->Plain() ? "" : "automation ") +
           "item on " + std::to_string(item.number) + " (" + item.holder + "/" + item.name +
           "), field " + std::to_string(static_cast<int>(item.field)) +
           (item.is_top ? ", the top" : "") + (of.is_watching ? ", watched" : "");
}

void SoakSelections::Check(const Selection& of, const Item& item, const std::string& row,
                           const std::string& answer) {
    bool right = true;
    if (item.number < 0) {
        right = answer == kNothing;
    } else if (!IsLive(item)) {
        ++counts_.gone;
        right = SaysGone(answer);
    } else if (item.field == Field::object || row != "value") {
        right = !SaysGone(answer) && answer != kNothing;
    } else {
        ++counts_.reads;
        right = NumberIn(answer) == item.number;
    }
    if (!right) fail_(Describe(of, item) + ", " + row + ": " + answer);
}

// ---- Operations

void SoakSelections::Add(Selection& of) {
    TextOf(of);
    const SoakView* found = ViewFor(of);
    if (of.is_dropped || !found || of.items.size() >= kItems) return;
    const SoakView view = *found;
    const int number = dice_.OneIn(20) ? -1 : world_.Any(view.case_number, dice_.OneIn(6));
    if (number < 0 && !dice_.OneIn(20)) return;
    const bool whole = number < 0 || world_.At(number).is_operation;
    const Field field = whole ? Field::object : static_cast<Field>(dice_.Roll(world_.FieldCount()));
    const auto node = number < 0
                          ? RootOf(view)
                          : IteratorAt(view.root, PathTo(world_, view.neutral, number, field));
    if (!node) return fail_("no node to add");
    const Item item = ItemOn(view, number, field);
    const auto known = std::find_if(of.items.begin(), of.items.end(),
                                    [&](const Item& each) { return each.HasPathOf(item); });
    // What is just being stored is for the one that is gone.
    if (of.in_use > 0 && known != of.items.end() && !IsLive(*known)) return;
    const bool same_tree =
        !of.has_top || (of.case_number == view.case_number && of.removals == view.removals);
    const bool is_taken = known != of.items.end() && known->number >= 0 && IsLive(*known) &&
                          known->number != item.number;
    const long changes = world_.Changes();
    const long list_changes = of.list_changes;
    const bool is_added = of.face->Add(*node);
    if (!IsSure(of, changes, true)) return;
    if (list_changes != of.list_changes) return Drop(of);
    if (is_added != (same_tree && !is_taken)) {
        return fail_(Describe(of, item) + (is_added ? " is added" : " is not added"));
    }
    if (!is_added) return;
    ++of.list_changes;
    of.has_top = true;
    of.case_number = view.case_number;
    of.removals = view.removals;
    if (known == of.items.end()) {
        of.items.push_back(item);
    } else if (known->number < 0 || !IsLive(*known)) {
        Bind(*known, item.number, item.case_number, item.removals);
    }
    // An automation object with sinks watches from its first item on.
    if (!of.face->Plain()) {
        of.is_watching =
            std::any_of(std::begin(of.joined), std::end(of.joined), [](bool each) { return each; });
    }
}

void SoakSelections::Remove(Selection& of) {
    FICollectionBase* items = of.face->Plain();
    if (!items || of.items.empty()) return;
    ++of.list_changes;
    if (dice_.OneIn(8)) {
        items->Clear();
        of.items.clear();
    } else {
        const int at = dice_.Roll(static_cast<int>(of.items.size()));
        FICollectionElement* item = items->ItemAt(at);
        of.items.erase(of.items.begin() + at);
        if (!(dice_.OneIn(2) ? items->RemoveAt(at) : items->Remove(item))) {
            fail_("an item is not removed");
        }
    }
    if (of.items.empty()) of.has_top = false;
}

// Who hears of an end meanwhile does anything, and then nothing is expected.
void SoakSelections::Read(Selection& of) {
    const std::string row = dice_.OneIn(4) ? "status" : "value";
    const long changes = world_.Changes();
    const bool searches = PrepareSearch(of) && of.is_watching;
    if (of.is_dropped) return;
    if (of.is_watching) FindMissing(of);
    const std::vector<Item> expected = of.items;
    const long list_changes = of.list_changes;
    ++of.in_use;
    const std::vector<std::string> answers = of.face->Read(row.c_str());
    --of.in_use;
    if (!IsSure(of, changes, searches) || list_changes != of.list_changes) return;
    if (answers.size() != expected.size()) return fail_("another number of items");
    for (std::size_t i = 0; i < answers.size(); ++i) Check(of, expected[i], row, answers[i]);
}

void SoakSelections::Store(Selection& of) {
    const bool searches = PrepareSearch(of) && of.is_watching;
    if (of.is_dropped) return;
    if (of.is_watching) FindMissing(of);
    std::vector<std::string> texts;
    bool all_live = true;
    for (const Item& each : of.items) {
        const bool is_live = each.number >= 0 && IsLive(each);
        const bool is_left = each.number < 0 || each.field == Field::object || dice_.OneIn(3);
        texts.push_back(
            is_left ? "" : std::to_string(each.number) + "." + std::to_string(1 + dice_.Roll(9)));
        all_live = all_live && (is_live || is_left);
    }
    ++counts_.stores;
    const long changes = world_.Changes();
    const long acts = acts_;
    if (dice_.OneIn(6) && world_.HasHost()) world_.Order([this] { world_.Disturb(); });
    ++of.in_use;
    const bool is_stored = of.face->Store(texts);
    --of.in_use;
    // Others may have stored meanwhile.
    if (!IsSure(of, changes, searches) || acts != acts_) return;
    if (is_stored != all_live) fail_(is_stored ? "a gone item stores" : "a live item refuses");
}

// A walk that goes on from where it stood, whatever became of the items.
void SoakSelections::Walk(Selection& of) {
    FICollectionBase* items = of.face->Plain();
    if (!items) return;
    if (!of.walk || dice_.OneIn(6)) {
        of.walk = Ref<FICollectionIteratorBase>::Adopt(items->MakeIterator());
    }
    const Ref<FICollectionIteratorBase> walk = of.walk;
    PrepareSearch(of);
    if (of.is_dropped) return;
    const bool is_on = dice_.OneIn(3) ? walk->Previous() : walk->Next();
    if (is_on != walk->IsValid()) return fail_("a walk that moved stands on nothing");
    FIValue value;
    const long changes = world_.Changes();
    const long list_changes = of.list_changes;
    if (!is_on) {
        walk->GetAttribute(FIValue("value"), value);
        if (value.ToText() != kNothing) fail_("nothing reads " + value.ToText());
        return;
    }
    const int place = items->IndexOf(walk->Item());
    if (place < 0 || place >= static_cast<int>(of.items.size())) {
        return fail_("a walk stands on another collection's item");
    }
    Item& item = of.items[static_cast<std::size_t>(place)];
    const bool searches = of.is_watching && item.number < 0;
    if (of.is_watching) Find(of, item);
    const Item expected = item;
    ++of.in_use;
    walk->GetAttribute(FIValue("value"), value);
    --of.in_use;
    if (!IsSure(of, changes, searches) || list_changes != of.list_changes) return;
    Check(of, expected, "value", value.ToText());
}

void SoakSelections::SaveAndLoad(Selection& of) {
    FICollectionBase* items = of.face->Plain();
    const SoakView* view = ViewFor(of);
    if (!items || !view) return;
    const std::string text = TextOf(of);
    if (of.is_dropped) return;
    const long changes = world_.Changes();
    ++of.list_changes;
    ++counts_.loads;
    if (dice_.OneIn(3)) {
        if (!items->FromXml(text.c_str())) return fail_("a text is not read: " + text);
    } else {
        const SoakView from = *view;
        if (!items->Load(text.c_str(), *RootOf(from))) return fail_("a text is not read: " + text);
        of.has_top = true;
        of.case_number = from.case_number;
        of.removals = from.removals;
    }
    FindAll(of);
    if (!IsSure(of, changes, true)) return;
    if (of.face->AsXml() != text) fail_("loaded is " + of.face->AsXml() + ", not " + text);
}

void SoakSelections::Watch(Selection& of) {
    FICollectionBase* items = of.face->Plain();
    if (!items) return;
    if (dice_.OneIn(4)) {
        of.is_watching = false;
        items->StopWatching();
        return;
    }
    const bool searches = PrepareSearch(of);
    if (of.is_dropped) return;
    of.is_watching = true;
    const long changes = world_.Changes();
    FindMissing(of);
    items->StartWatching();
    IsSure(of, changes, searches);
}

void SoakSelections::Join(Selection& of) {
    const int ear = dice_.Roll(SelectionFace::kEars);
    if (of.joined[ear] && dice_.OneIn(3)) {
        of.joined[ear] = false;
        of.face->Leave(ear);
    } else {
        // Told from the first moment on.
        const bool was_joined = std::exchange(of.joined[ear], true);
        const bool automation = !of.face->Plain();
        const long changes = world_.Changes();
        const bool searches = automation && !of.is_watching && PrepareSearch(of);
        if (of.is_dropped) return;
        if (!of.face->Join(ear)) {
            of.joined[ear] = was_joined;
            if (automation || !of.items.empty()) fail_("a subscriber is not taken");
        }
        IsSure(of, changes, searches);
        if (of.is_dropped) return;
        if (searches) FindMissing(of);
    }
    if (of.is_dropped || of.face->Plain()) return;
    of.is_watching = !of.items.empty() && std::any_of(std::begin(of.joined), std::end(of.joined),
                                                      [](bool each) { return each; });
}

// ---- What they are told

void SoakSelections::Heard(Selection& of, int ear, int place, int kind) {
    ++counts_.calls;
    if (of.is_dropped) return;
    if (!of.joined[ear]) return fail_("told who has left");
    if (place < 0 || place >= static_cast<int>(of.items.size())) {
        return fail_("told of place " + std::to_string(place));
    }
    Item& item = of.items[static_cast<std::size_t>(place)];
    const long change = world_.PresentChange();
    if (change != 0 && item.heard_in[ear] == change) {
        fail_(Describe(of, item) + " is told of twice in one change");
    }
    item.heard_in[ear] = change;
    if (kind == kNodeDeleted) {
        if (item.number >= 0 && IsLive(item)) fail_(Describe(of, item) + " lives");
        if (std::exchange(item.end_told[ear], true)) fail_(Describe(of, item) + " ends twice");
    }
    if (world_.IsGoing()) return;
    ++depth_;
    if (depth_ <= kDeepest && dice_.OneIn(8)) {
        const World::Aside aside(world_);
        if (dice_.OneIn(2)) {
            Step();
        } else {
            client_.act();
        }
    }
    --depth_;
}

bool SoakSelections::IsTold(int case_number) const {
    host::SimulationCase* live = world_.Live(case_number);
    auto* manager = live ? live->OnlineManager() : nullptr;
    return manager && manager->ModelCallback();
}

void SoakSelections::OnBegin(int case_number) {
    Begun begun{world_.PresentChange(), acts_, {}};
    for (const Held& each : held_) {
        for (std::size_t i = 0; each->is_watching && i < each->items.size(); ++i) {
            const Item& item = each->items[i];
            const bool is_concerned = case_number < 0 || item.case_number == case_number;
            if (item.number < 0 || !is_concerned || !IsLive(item)) continue;
            if (!IsTold(item.case_number)) continue;
            for (int ear = 0; ear < SelectionFace::kEars; ++ear) {
                if (each->joined[ear])
                    begun.awaited.push_back({each.get(), ear, static_cast<int>(i)});
            }
        }
    }
    begun_.push_back(std::move(begun));
}

void SoakSelections::OnEnd(bool happened) {
    const Begun begun = std::move(begun_.back());
    begun_.pop_back();
    if (!happened || begun.acts != acts_) return;
    for (const Awaited& each : begun.awaited) {
        ++counts_.awaited;
        const Item& item = each.of->items[static_cast<std::size_t>(each.place)];
        if (item.heard_in[each.ear] != begun.change) {
            fail_(Describe(*each.of, item) + " is not told of");
        }
    }
}

}  // namespace fixtop::lifetimes
