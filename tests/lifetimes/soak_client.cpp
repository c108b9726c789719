// SPDX-License-Identifier: Apache-2.0
#include "lifetimes/soak_client.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <iterator>

#include "lifetimes/scene_files.h"

namespace fixtop::lifetimes {

namespace {

constexpr std::size_t kRoots = 6;
constexpr std::size_t kHeld = 48;
constexpr std::size_t kListeners = 8;
constexpr std::size_t kSolvers = 3;
// Callbacks call back only so deep.
constexpr int kDeepest = 3;

// The number that a value or a note begins with; -1 when it is neither.
long NumberIn(const std::string& answer) {
    const std::size_t note = answer.find("note ");
    const std::size_t begin = note == std::string::npos ? answer.find('"') + 1 : note + 5;
    char* end = nullptr;
    const double number = std::strtod(answer.c_str() + begin, &end);
    return end == answer.c_str() + begin ? -1 : static_cast<long>(std::floor(number));
}

bool SaysGone(const std::string& answer) {
    return answer == "\"Node deleted\"" || answer == "\"Node invalid\"";
}

bool Reads(Op op) {
    return op == Op::read || op == Op::copy_read;
}

bool Compares(Op op) {
    return op == Op::self || op == Op::copy_self;
}

std::string Quoted(const std::string& text) {
    return "\"" + text + "\"";
}

}  // namespace

SoakClient::SoakClient(World& world, Dice& dice, Views views, World::Fail fail)
    : world_(world),
      dice_(dice),
      views_(views),
      fail_(std::move(fail)),
      selections_(world, dice, fail_,
                  {[this] { return LiveRoot(); }, [this] { ActWithinCall(); }}) {}

SoakClient::~SoakClient() {
    LetGo();
}

void SoakClient::LetGo() {
    while (!listeners_.empty()) StopListening();
    held_.clear();
    selections_.LetGo();
    solvers_.clear();
    roots_.clear();
}

void SoakClient::Step() {
    const int roll = dice_.Roll(100);
    if (roll < 4) {
        ++disturbances_;
        world_.Disturb();
    } else if (roll < 7) {
        world_.Rest();
    } else if (roll < 9) {
        OpenRoot();
    } else if (roll < 10) {
        LeaveRoot();
    } else if (roll < 25) {
        Take();
    } else if (roll < 33) {
        Release();
    } else if (roll < 37) {
        Listen();
    } else if (roll < 40) {
        StopListening();
    } else if (roll < 43) {
        UseSolver();
    } else if (roll < 45) {
        TakeStock();
    } else if (roll < 65) {
        selections_.Step();
    } else {
        Use();
    }
}

bool SoakClient::IsLive(int case_number, int removals) const {
    return world_.HasHost() && removals == world_.Removals() && world_.Live(case_number);
}

bool SoakClient::IsLive(const Held& held) const {
    return world_.HasHost() && held.removals == world_.Removals() && world_.Lives(held.number);
}

// ---- Tops and views

void SoakClient::OpenRoot() {
    if (!world_.HasHost() || world_.Cases().empty()) return;
    const std::vector<int> cases = world_.Cases();
    Root root;
    root.case_number = cases[static_cast<std::size_t>(dice_.Roll(static_cast<int>(cases.size())))];
    root.removals = world_.Removals();
    root.neutral = views_ == Views::neutral || (views_ == Views::mixed && dice_.OneIn(2));
    world_.Activate(root.case_number);
    void* session = world_.Live(root.case_number);
    if (dice_.OneIn(8)) {
        root.top = Ref<FIEntry>::Adopt(GetCombinedEntry(session));
    } else {
        FixtopNotify notify = nullptr;
        root.top = Ref<FIEntry>::Adopt(GetTopFIEntry(&notify));
        if (!dice_.OneIn(4)) SetTopNotify(notify, session);
    }
    FixtopModelFiles files = SceneFiles();
    files.wholeLists = dice_.OneIn(2);
    root.root =
        root.neutral ? Ref<FIEntry>::Adopt(FixtopOpenModel(root.top.Get(), &files)) : root.top;
    if (!root.root) return fail_("a view does not open");
    if (roots_.size() == kRoots) roots_.erase(roots_.begin());
    roots_.push_back(std::move(root));
}

// In good order, or not.
void SoakClient::LeaveRoot() {
    if (roots_.empty()) return;
    const auto at = roots_.begin() + dice_.Roll(static_cast<int>(roots_.size()));
    host::SimulationCase* live = world_.Live(at->case_number);
    roots_.erase(at);
    for (int calls = dice_.Roll(3); calls > 0; --calls) UnsetTopNotify(live);
}

SoakClient::Root* SoakClient::LiveRoot() {
    std::vector<Root*> live;
    for (Root& each : roots_) {
        if (IsLive(each.case_number, each.removals)) live.push_back(&each);
    }
    if (live.empty()) return nullptr;
    return live[static_cast<std::size_t>(dice_.Roll(static_cast<int>(live.size())))];
}

// ---- Handles

Access SoakClient::AccessTo(int number, Field field) const {
    return {field == Field::object ? "status" : "value", static_cast<double>(number)};
}

void SoakClient::Take() {
    constexpr Kind kKinds[] = {Kind::node,        Kind::iterator,     Kind::copy,
                               Kind::frozen,      Kind::frozen_again, Kind::attribute_cursor,
                               Kind::lent_cursor, Kind::child_cursor, Kind::reference,
                               Kind::reference,   Kind::subscriber,   Kind::batch};
    const Root* root = LiveRoot();
    if (!root || held_.size() >= kHeld) return;
    const int number = world_.Any(root->case_number, dice_.OneIn(6));
    if (number < 0) return;
    auto held = std::make_shared<Held>();
    held->kind = kKinds[dice_.Roll(static_cast<int>(std::size(kKinds)))];
    if (held->kind == Kind::batch && (root->neutral || !dice_.OneIn(8))) held->kind = Kind::node;
    const bool whole = held->kind == Kind::batch || world_.At(number).is_operation;
    held->field = whole ? Field::object : static_cast<Field>(dice_.Roll(world_.FieldCount()));
    held->neutral = root->neutral;
    held->number = number;
    held->removals = root->removals;
    held->subject =
        MakeSubject(held->kind, root->root, PathTo(world_, root->neutral, number, held->field),
                    AccessTo(number, held->field));
    if (!held->subject)
        return fail_("no node " + TextOf(PathTo(world_, root->neutral, number, held->field)));
    held_.push_back(std::move(held));
}

void SoakClient::Release() {
    if (held_.empty()) return;
    const auto at = held_.begin() + dice_.Roll(static_cast<int>(held_.size()));
    if ((*at)->in_use > 0 || (IsLive(**at) && dice_.OneIn(2))) return;
    // Its end may call back, so it is out of the list before.
    const std::shared_ptr<Held> released = std::move(*at);
    held_.erase(at);
}

void SoakClient::Use() {
    if (held_.empty()) return;
    const std::shared_ptr<Held> held =
        held_[static_cast<std::size_t>(dice_.Roll(static_cast<int>(held_.size())))];
    // A handle is not used from within its own operations.
    if (held->in_use > 0) return;
    ++held->in_use;
    if (dice_.OneIn(6) && depth_ == 0) OrderEvent();
    UseHeld(*held);
    --held->in_use;
}

void SoakClient::UseHeld(Held& held) {
    const std::vector<Op> ops = OpsInOrder(held.neutral ? View::neutral : View::raw, held.kind, 0);
    const Op op = dice_.OneIn(20)
                      ? Op::rest
                      : ops[static_cast<std::size_t>(dice_.Roll(static_cast<int>(ops.size())))];
    if (op == Op::elsewhere || op == Op::told || op == Op::told_change) return;
    const bool live = IsLive(held);
    if (held.was_live && !live) ++counts_.lost;
    held.was_live = live;
    const int disturbances = disturbances_;
    const long acts = selections_.Acts();
    const std::string answer = held.subject->Do(op);
    if (op == Op::rest) {
        const bool moved = held.kind == Kind::attribute_cursor || held.kind == Kind::lent_cursor ||
                           held.kind == Kind::child_cursor;
        held.moved = held.moved || moved;
        return;
    }
    if (held.moved) return;
    ++(live ? counts_.live : counts_.gone);
    if (!live) return CheckGone(held, op, answer);
    if (IsLive(held)) {
        // What happened meanwhile may have stored, too.
        const bool is_alone = disturbances == disturbances_ && acts == selections_.Acts();
        if (op == Op::store && !is_alone) return;
        return CheckLive(held, op, answer);
    }
    if (op == Op::store && held.field != Field::object && answer != "\"Node deleted\"") {
        fail_(Describe(held, op, answer));
    }
}

void SoakClient::OrderEvent() {
    if (!world_.HasHost()) return;
    world_.Order([this] {
        ++disturbances_;
        world_.Disturb();
    });
}

// ---- What they must show

std::string SoakClient::StateOf(const Held& held) const {
    if (IsLive(held)) return "live";
    if (!world_.HasHost() || held.removals != world_.Removals()) return "its host taken out";
    return world_.Live(world_.At(held.number).case_number) ? "deleted" : "closed";
}

std::string SoakClient::Describe(const Held& held, Op op, const std::string& answer) const {
    const World::Thing& thing = world_.At(held.number);
    const Scene scene{held.neutral ? View::neutral : View::raw,
                      held.kind,
                      Event::none,
                      Moment::between,
                      Place::object,
                      0};
    return std::string(NameOf(scene.view)) + " " + NameOf(scene.kind) + " on " +
           std::to_string(held.number) + " (" + thing.name + "), field " +
           std::to_string(static_cast<int>(held.field)) + ", " + StateOf(held) + ", " + NameOf(op) +
           ": " + answer;
}

void SoakClient::CheckLive(const Held& held, Op op, const std::string& answer) {
    const std::string& name = world_.At(held.number).name;
    const bool is_object = held.field == Field::object;
    bool right = true;
    if (Reads(op)) right = is_object ? !SaysGone(answer) : NumberIn(answer) == held.number;
    if (op == Op::entry) {
        // Behind the name of a variable, which has no blank.
        const std::string value = answer.substr(answer.find(' ') + 1);
        right = is_object ? answer.find("NULL") != 0 : NumberIn(value) == held.number;
    }
    if (op == Op::store && !is_object) right = answer == "NULL";
    if (Compares(op)) right = answer == "0";
    if (op == Op::up) right = answer.find("true \"") == 0;
    if (op == Op::path) {
        right = answer.find("." + name + (is_object ? "\"" : ".")) != std::string::npos ||
                answer.find("(" + name + ")") != std::string::npos;
    }
    if (is_object && !held.neutral && (op == Op::name || op == Op::copy_name)) {
        const bool row = held.kind == Kind::attribute_cursor || held.kind == Kind::lent_cursor;
        right = row || answer == Quoted(name);
    }
    if (is_object && !held.neutral && held.kind == Kind::child_cursor && op == Op::key) {
        right = answer == Quoted(name);
    }
    if (!right) fail_(Describe(held, op, answer));
}

void SoakClient::CheckGone(Held& held, Op op, const std::string& answer) {
    const bool cursor = held.kind == Kind::child_cursor;
    const bool row = held.kind == Kind::attribute_cursor || held.kind == Kind::lent_cursor;
    bool right = true;
    if (Reads(op) || op == Op::store) {
        right = SaysGone(answer);
        const bool invalid = answer == "\"Node invalid\"";
        if (invalid && held.final_said && op == Op::read) right = false;
        if (op == Op::read) held.final_said = true;
    }
    if (op == Op::entry) right = answer == (held.neutral ? "nothing" : "NULL NULL");
    if (cursor && op == Op::key) right = answer == "NULL";
    if (op == Op::path || op == Op::copy_path) right = answer == "NULL";
    if (!row && !held.neutral && (op == Op::name || op == Op::copy_name)) right = answer == "NULL";
    if (op == Op::down || op == Op::next || op == Op::prev) right = answer == "false";
    if (Compares(op)) right = answer == "0";
    if (!right) fail_(Describe(held, op, answer));
}

// The names that a walk shows are those of the book.
void SoakClient::TakeStock() {
    const Root* root = LiveRoot();
    if (!root || root->neutral) return;
    const auto it = IteratorAt(root->root, {{"appModel"}, {"FlowSheetObjects"}, {"Streams"}});
    if (!it) return fail_("there are no streams");
    for (bool on = it->DownFirst(); on; on = it->Next()) {
        FIValue name;
        it->GetName(name);
        if (!world_.HasName(root->case_number, name.ToText()))
            fail_("a walk shows " + name.ToText());
    }
}

// ---- Listeners and solvers

void SoakClient::Listen() {
    const Root* root = LiveRoot();
    if (!root || listeners_.size() >= kListeners) return;
    const int number = world_.Any(root->case_number, false);
    if (number < 0) return;
    const auto it =
        IteratorAt(root->root, PathTo(world_, root->neutral, number, Field::temperature));
    if (!it) return fail_("no node to listen to");
    auto listener = std::make_shared<Listener>();
    listener->client = this;
    listener->number = number;
    listener->removals = root->removals;
    listener->reference = Ref<FIReferenceBase>::Adopt(it->MakeReference());
    for (int kind : {kNodeDeleted, kValueChanged, kStructureChanged}) {
        listener->ears[kind].listener = listener.get();
        listener->reference->Subscribe(&listener->ears[kind], kind, [](void* owner, int) {
            auto* ear = static_cast<Ear*>(owner);
            ear->listener->client->CallBack(*ear);
        });
    }
    listeners_.push_back(std::move(listener));
}

void SoakClient::StopListening() {
    if (listeners_.empty()) return;
    const auto at = listeners_.begin() + dice_.Roll(static_cast<int>(listeners_.size()));
    const std::shared_ptr<Listener> stopped = std::move(*at);
    listeners_.erase(at);
    stopped->ends = true;
    if (stopped->reference && dice_.OneIn(2)) {
        stopped->reference->Unsubscribe(&stopped->ears[kValueChanged], kValueChanged);
    }
    stopped->reference.Reset();
}

void SoakClient::CallBack(Ear& ear) {
    Listener& listener = *ear.listener;
    ++counts_.calls;
    const bool lives =
        world_.HasHost() && listener.removals == world_.Removals() && world_.Lives(listener.number);
    if (&ear == &listener.ears[kNodeDeleted] && lives && !listener.ends) {
        fail_("told of the end of " + std::to_string(listener.number) + ", which lives");
    }
    if (depth_ >= kDeepest || listener.ends || world_.IsGoing()) return;
    if (dice_.OneIn(12)) {
        selections_.Acted();
        listener.ends = true;
        listener.reference.Reset();
    } else {
        ActWithinCall();
    }
}

void SoakClient::ActWithinCall() {
    if (depth_ >= kDeepest || world_.IsGoing()) return;
    const World::Aside aside(world_);
    selections_.Acted();
    ++depth_;
    switch (dice_.Roll(12)) {
        case 0:
            ++disturbances_;
            world_.Disturb();
            break;
        case 1:
            Release();
            break;
        case 2:
        case 3:
        case 4:
            ++disturbances_;
            Use();
            break;
        case 5:
        case 6:
            ++disturbances_;
            selections_.Step();
            break;
        default:
            break;
    }
    --depth_;
}

void SoakClient::UseSolver() {
    if (solvers_.size() < kSolvers && dice_.OneIn(4)) {
        const std::vector<int> cases = world_.Cases();
        if (!world_.HasHost() || cases.empty()) return;
        Solver solver;
        solver.case_number = cases.front();
        solver.removals = world_.Removals();
        solver.solver.reset(GetTopHovexSolver(world_.Live(solver.case_number), 1));
        solvers_.push_back(std::move(solver));
        return;
    }
    if (solvers_.empty()) return;
    const auto at = solvers_.begin() + dice_.Roll(static_cast<int>(solvers_.size()));
    FISolver& solver = *at->solver;
    const bool live = IsLive(at->case_number, at->removals);
    FIValue out;
    FIErrorList errors;
    switch (dice_.Roll(8)) {
        case 0:
            solver.SetAttribute(FIValue("autosolve"), FIValue::OfInt(0), out);
            if (solver.Run() && !live) fail_("a solver of a case that is gone runs");
            solver.SetAttribute(FIValue("autosolve"), FIValue::OfInt(1), out);
            break;
        case 1:
            if (solver.Subscribe(this, 3, [](void*, int, const FIErrorList*) {}) && !live) {
                fail_("a case that is gone takes a subscriber");
            }
            solver.Unsubscribe(this, 3);
            break;
        case 2:
            solver.CheckSolve(errors);
            solver.SolveOnceNow(errors);
            solver.SetAttribute(FIValue("autosolve"), FIValue::OfInt(1), out);
            break;
        case 3:
            solvers_.erase(at);
            break;
        default:
            solver.GetAttribute(FIValue("state"), out);
            if (!live && Text(out) != "\"Node deleted\"")
                fail_("solver that is gone: " + Text(out));
            break;
    }
}

}  // namespace fixtop::lifetimes
