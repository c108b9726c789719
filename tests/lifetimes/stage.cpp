// SPDX-License-Identifier: Apache-2.0
#include "lifetimes/stage.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace fixtop::lifetimes {

namespace {

char g_present[256];
// A store that waits for so many turns waits for ever.
constexpr int kTooManyTurns = 400;

// Half of the clients that leave have the other kind of top.
bool HasCombinedTop(Event event) {
    return event == Event::client_leaves || event == Event::client_leaves_silently;
}

bool WasUsed(const std::vector<Op>& done) {
    return std::find(done.begin(), done.end(), Op::read) != done.end() ||
           std::find(done.begin(), done.end(), Op::rest) != done.end();
}

// Compares handles on the same place.
bool IsEqual(Op op) {
    return op == Op::self || op == Op::twin || op == Op::fresh || op == Op::copy_self;
}

bool IsClientLeaving(Event event) {
    return event >= Event::client_leaves && event <= Event::client_leaves_silently;
}

}  // namespace

Tally& TheTally() {
    static Tally tally;
    return tally;
}

const char* PresentScene() {
    return g_present;
}

Stage::Stage(const Scene& scene, std::vector<int> orders, Tell tell)
    : scene_(scene),
      orders_(std::move(orders)),
      tell_(std::move(tell)),
      fate_(FateOf(scene.event, scene.place)),
      plant_(scene.place, scene.moment != Moment::offline) {}

void Stage::Play() {
    std::snprintf(g_present, sizeof g_present, "%s", scene_.Name().c_str());
    TheTally().scenes += static_cast<long>(orders_.size());
    SetUp();
    LetHappen();
    if (!happened_) {
        tell_(scene_.Name() + ": the event did not happen");
        return;
    }
    Settle();
    MakeTruth();
    for (Player& player : players_) Use(player);
    Leave();
    TheTally().addresses_taken_again += plant_.AddressTakenAgain();
}

void Stage::SetUp() {
    client_ = std::make_unique<Client>(scene_.view, scene_.place, plant_, true);
    Observe();
    other_ = client_->MakeOther(scene_.kind);
    twin_ = client_->Make(scene_.kind);
    for (int order : orders_) {
        players_.push_back({order, client_->Make(scene_.kind)});
        if (!players_.back().subject) {
            tell_(scene_.Name() + ": there is no such node");
            std::exit(2);
        }
        // Every other one is used before, too.
        if (order % 2 == 1 && scene_.kind != Kind::frozen && scene_.kind != Kind::frozen_again) {
            players_.back().subject->Do(Op::read);
        }
    }
    if (IsClientLeaving(scene_.event)) {
        second_client_ = std::make_unique<Client>(scene_.view, scene_.place, plant_, true);
        if (HasCombinedTop(scene_.event))
            second_top_ = Ref<FIEntry>::Adopt(GetCombinedEntry(nullptr));
    }
    GuardAgainstWaiting();
}

// What is the same before and after the event.
void Stage::Observe() {
    const std::unique_ptr<Subject> subject = client_->Make(scene_.kind);
    if (!subject) return;
    const std::vector<Op> ops = OpsInOrder(scene_.view, scene_.kind, 0);
    const auto ask = [&](Op op) {
        const bool can = std::find(ops.begin(), ops.end(), op) != ops.end();
        return can ? subject->Do(op) : std::string();
    };
    before_ = {ask(Op::name), ask(Op::key), ask(Op::up), ask(Op::model_rows), ask(Op::read)};
    if (scene_.kind != Kind::node && scene_.kind != Kind::iterator) return;
    const std::string known = plant_.Known();
    if (!known.empty()) Check({0, nullptr}, "before the event", "\"" + known + "\"", ask(Op::read));
}

void Stage::GuardAgainstWaiting() {
    plant_.Script().AtTurn(kTooManyTurns, [] {
        std::fprintf(stderr, "%s: a store waits for ever\n", g_present);
        std::_Exit(3);
    });
}

void Stage::LetHappen() {
    switch (scene_.moment) {
        case Moment::between:
        case Moment::offline:
            return Happen();
        case Moment::in_loop:
            plant_.Host().Post([this] { Happen(); });
            return plant_.Host().RunHostLoop();
        case Moment::in_store:
            return HappenInStore(false, false);
        case Moment::in_own_store:
            return HappenInStore(true, false);
        case Moment::in_solve:
            return HappenInStore(false, true);
        case Moment::in_own_solve:
            return HappenInStore(true, true);
        case Moment::in_callback:
            return HappenInCallback();
    }
}

void Stage::Happen() {
    happened_ = true;
    if (IsClientLeaving(scene_.event)) return SecondClientLeaves();
    plant_.Happen(scene_.event);
}

// A solve begins in the turn after the store that asked for it and ends in the fourth.
void Stage::HappenInStore(bool own, bool solve) {
    if (solve) {
        const int variety =
            own ? scene_.order : static_cast<int>(scene_.kind) + static_cast<int>(scene_.place);
        plant_.Script().AtTurn(2 + variety % 3, [this] { Happen(); });
    } else {
        plant_.Script().InStore(1, [this] { Happen(); });
    }
    if (own) {
        const std::string answer = players_[0].subject->Do(Op::store);
        Check(players_[0], "own store", fate_ == Fate::live ? "NULL" : "\"Node deleted\"", answer);
        return;
    }
    FIValue out;
    const auto it = client_->Bystander();
    it->SetAttribute(FIValue("value"), NextNumber(Access()), 0, out);
}

void Stage::HappenInCallback() {
    listener_ = Ref<FIReferenceBase>::Adopt(client_->Bystander()->MakeReference());
    listener_->Subscribe(this, kValueChanged, [](void* owner, int) {
        Stage& stage = *static_cast<Stage*>(owner);
        if (!stage.happened_) stage.Happen();
    });
    plant_.ChangeElsewhere();
}

void Stage::SecondClientLeaves() {
    second_client_.reset();
    second_top_.Reset();
    if (scene_.event == Event::client_leaves_silently) return;
    if (scene_.event == Event::client_leaves_late) return;
    UnsetTopNotify(nullptr);
    if (scene_.event == Event::client_leaves_twice) UnsetTopNotify(nullptr);
}

void Stage::Settle() {
    plant_.Settle(scene_.event, scene_.moment != Moment::between);
    if (scene_.event == Event::client_leaves_late) UnsetTopNotify(nullptr);
}

// In good order, but for a client of whom it is told that it forgets.
void Stage::Leave() {
    listener_.Reset();
    other_.reset();
    twin_.reset();
    fresh_.reset();
    peer_.reset();
    fresh_client_.reset();
    if (scene_.event != Event::client_leaves_silently) UnsetTopNotify(nullptr);
    client_.reset();
}

// By a top of its own, and in the neutral views at some moments by a view of its own.
void Stage::MakeTruth() {
    if (fate_ != Fate::live) return;
    const bool own = scene_.view == View::raw || scene_.moment == Moment::between ||
                     scene_.moment == Moment::offline;
    if (own) fresh_client_ = std::make_unique<Client>(scene_.view, scene_.place, plant_, false);
    fresh_ = (own ? *fresh_client_ : *client_).Make(scene_.kind);
    if (!fresh_) tell_(scene_.Name() + ": a fresh path leads nowhere");
    // Handles of two neutral views are never comparable, whatever they stand on.
    if (scene_.view != View::raw && own) peer_ = client_->Make(scene_.kind);
}

void Stage::Use(Player& player) {
    scene_.order = player.order;
    std::snprintf(g_present, sizeof g_present, "%s", scene_.Name().c_str());
    player.subject->Meet(twin_.get(), other_.get(), peer_ ? peer_.get() : fresh_.get());
    const std::vector<Op> ops = OpsInOrder(scene_.view, scene_.kind, player.order);
    std::vector<Op> done;
    for (Op op : ops) {
        const bool counted = scene_.kind == Kind::subscriber || scene_.kind == Kind::top_subscriber;
        if (counted && op != Op::read && op != Op::rest) {
            AskSubscriber(player, op, WasUsed(done));
        } else {
            Ask(player, op);
        }
        done.push_back(op);
    }
    if (scene_.kind == Kind::subscriber) AskAtRelease(player, WasUsed(done));
    player.subject.reset();
}

void Stage::Ask(Player& player, Op op) {
    if (fate_ == Fate::live && !fresh_) return;
    if (op == Op::elsewhere) {
        const std::string answer = StoreElsewhere();
        Check(player, NameOf(op), fate_ == Fate::live ? "held" : "solved", answer);
        return;
    }
    const Answer expected = AnswerOf(scene_, op);
    if (expected == Answer::open || (expected == Answer::right && op == Op::other)) {
        player.subject->Do(op);
        return;
    }
    const std::string text = Expected(player, op);
    std::string answer = player.subject->Do(op);
    // Where a cursor stands then is asked of some alone.
    const bool bare = op == Op::seek_first || op == Op::seek_next || op == Op::seek_prev;
    if (bare && (expected == Answer::no || expected == Answer::yes)) {
        answer = answer.substr(0, answer.find_first_of(", "));
    }
    Check(player, NameOf(op), text, answer);
    if (expected == Answer::right && op == Op::store) {
        Check(player, "stored", fresh_->Do(Op::read), player.subject->Do(Op::read));
    }
}

std::string Stage::Expected(Player& player, Op op) {
    switch (AnswerOf(scene_, op)) {
        case Answer::right:
            return IsEqual(op) ? "0" : Truth(op);
        case Answer::node_deleted:
            return "\"Node deleted\"";
        case Answer::guarded:
            return op == Op::model_rows ? GuardedRows(player) : Guarded(player, op);
        case Answer::null:
            return "NULL";
        case Answer::no:
            return "false";
        case Answer::yes:
            return "true";
        case Answer::same:
            return "0";
        case Answer::apart:
            return other_ ? "-2" : "nobody";
        case Answer::before:
            if (op == Op::model_rows) return before_.model_rows;
            if (op == Op::read || op == Op::copy_read) return before_.read;
            return before_.name.empty() ? before_.key : before_.name;
        case Answer::parent:
            if (before_.up == "false") return "false";
            return scene_.view != View::raw ||
                           FateOfParent(scene_.event, scene_.place) == Fate::live
                       ? before_.up
                       : "true NULL";
        case Answer::at_first:
            return "false, at the first";
        case Answer::at_end:
            return "false, at the end";
        case Answer::empty:
            return scene_.view == View::raw ? "NULL NULL" : "nothing";
        case Answer::solved:
        case Answer::open:
            break;
    }
    return "";
}

// Asked once, but for what stores change.
const std::string& Stage::Truth(Op op) {
    const bool lasts = op != Op::read && op != Op::copy_read && op != Op::store && op != Op::entry;
    std::string& truth = truths_[op];
    if (!lasts || truth.empty()) truth = fresh_->Do(op);
    return truth;
}

// A neutral reference has a guard of its own before that of the node, which its copies stand on and
// which tells it when one of them is used. On the root all handles stand on one node.
std::string Stage::Guarded(Player& player, Op op) {
    const bool has_own = scene_.kind == Kind::reference || scene_.kind == Kind::subscriber;
    const bool by_own = has_own && op != Op::copy_read;
    bool& said = by_own             ? player.invalid_said
                 : IsOnRoot(scene_) ? root_invalid_said_
                                    : player.invalid_said_by_copy;
    const bool is_told = player.invalid_said_by_copy || root_invalid_said_;
    const bool invalid = fate_ == Fate::deleted && !said && !is_told;
    said = true;
    return invalid ? "\"Node invalid\"" : "\"Node deleted\"";
}

std::string Stage::GuardedRows(Player& player) {
    std::string rows;
    for (const char* row : kModelRows)
        rows += std::string(row) + " " + Guarded(player, Op::read) + " ";
    return rows;
}

// Into another stream, or into the case that is open instead.
std::string Stage::StoreElsewhere() {
    if (scene_.event == Event::host_out || scene_.event == Event::host_out_and_gone) {
        Plant next(Place::fixed, Online());
        Client client(View::raw, Place::fixed, next, false);
        FIValue out;
        client.Bystander()->SetAttribute(FIValue("value"), NextNumber(Access()), 0, out);
        return next.Solves() > 0 ? "solved" : "held";
    }
    const int before = plant_.Solves();
    Client client(View::raw, Place::fixed, plant_, false);
    FIValue out;
    client.Bystander()->SetAttribute(FIValue("value"), NextNumber(Access()), 0, out);
    return plant_.Solves() > before ? "solved" : "held";
}

// A case that is not connected can't tell of its closing; that the host is taken out nobody has to
// tell.
bool Stage::IsToldAtOnce() const {
    if (fate_ != Fate::closed) return false;
    const bool closing =
        scene_.event == Event::closed || scene_.event == Event::closed_and_reopened;
    return Online() || !closing;
}

// How often a subscription to the end has been called.
int Stage::EndsTold(bool used) const {
    if (fate_ == Fate::live) return 0;
    if (scene_.kind == Kind::top_subscriber) return IsToldAtOnce() ? 1 : 0;
    return used || IsToldAtOnce() ? 1 : 0;
}

// Those of the top are no longer told of changes when another client takes the callback of the case
// with its UnsetTopNotify.
bool Stage::ListensStill() const {
    if (!Online() || fate_ != Fate::live) return false;
    const bool unset =
        IsClientLeaving(scene_.event) && scene_.event != Event::client_leaves_silently;
    return scene_.kind != Kind::top_subscriber || !unset;
}

void Stage::AskSubscriber(Player& player, Op op, bool used) {
    if (op == Op::told_change) {
        if (fate_ != Fate::live) return;
        player.subject->Do(op);
        plant_.ChangeElsewhere();
        Check(player, "told of a change", Text(ListensStill()), player.subject->Do(op));
        return;
    }
    if (MayHaveFoundOut(used)) return;
    Check(player, "told", "end " + std::to_string(EndsTold(used)), player.subject->Do(op));
}

// A reference that ends tells those who still listen, so a gone one tells them again.
void Stage::AskAtRelease(Player& player, bool used) {
    if (MayHaveFoundOut(used)) return;
    Check(player, "told when released", "end " + std::to_string(EndsTold(used) + 1),
          player.subject->Do(Op::release));
}

// The reference may look after its object when it is told of a change, or when it is used; the one
// that the root of a view stands on is used by all.
bool Stage::MayHaveFoundOut(bool used) const {
    if (used) return false;
    return IsOnRoot(scene_) || (fate_ == Fate::deleted && Online());
}

void Stage::Check(const Player& player, const char* what, const std::string& expected,
                  const std::string& answer) {
    ++TheTally().answers;
    if (expected == answer) return;
    ++TheTally().failures;
    Scene scene = scene_;
    scene.order = player.order;
    tell_(scene.Name() + ": " + what + ": expected " + expected + ", got " + answer);
}

}  // namespace fixtop::lifetimes
