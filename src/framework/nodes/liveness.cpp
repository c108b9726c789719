// SPDX-License-Identifier: Apache-2.0
#include "framework/nodes/liveness.h"

#include <cstdint>

#include "diagnostics/memory_guard.h"
#include "fixtop/cursor.h"
#include "fixtop/ref.h"
#include "framework/nodes/change_round.h"
#include "framework/nodes/empties.h"

namespace fixtop {

Liveness::~Liveness() = default;

Ref<FICursorBase> LivingNode::RemakeCursor() const {
    return Ref<FICursorBase>::Adopt(EmptyCursor());
}

template <class Tell>
void Liveness::ForEachWatcher(Tell tell) {
    Round round{first_, rounds_};
    rounds_ = &round;
    while (Watcher* watcher = round.next) {
        round.next = watcher->next_;
        memory::Contain([&] { tell(*watcher); });
    }
    rounds_ = round.outer;
}

// Who comes during a round stands before its start and waits for the next.
void Liveness::Enter(Watcher& watcher, bool quietly) {
    if (watcher.watches_ || HasEnded()) return;
    if (!quietly && listeners_ == 0) OnFirstWatcher();
    if (!quietly) ++listeners_;
    watcher.watches_ = true;
    watcher.is_quiet_ = quietly;
    watcher.heard_ = round_;
    watcher.previous_ = nullptr;
    watcher.next_ = first_;
    if (first_) first_->previous_ = &watcher;
    first_ = &watcher;
}

void Liveness::Watch(Watcher& watcher) {
    Enter(watcher, false);
}

void Liveness::WatchQuietly(Watcher& watcher) {
    Enter(watcher, true);
}

void Liveness::Leave(Watcher& watcher) {
    if (!watcher.watches_) return;
    watcher.watches_ = false;
    for (Round* round = rounds_; round; round = round->outer) {
        if (round->next == &watcher) round->next = watcher.next_;
    }
    if (watcher.next_) watcher.next_->previous_ = watcher.previous_;
    (watcher.previous_ ? watcher.previous_->next_ : first_) = watcher.next_;
    if (!watcher.is_quiet_ && --listeners_ == 0 && !HasEnded()) OnNoWatcher();
}

bool Liveness::Look() {
    if (!HasEnded() && !IsThere()) EndUntold();
    return !HasEnded();
}

void Liveness::EndUntold() {
    if (HasEnded()) return;
    revision_ = &kEnded;
    OnEnded(false);
}

// Somebody may have found it out just before.
void Liveness::End() {
    const auto self = Ref<Liveness>::Share(this);
    const ChangeRound present;
    if (!HasEnded()) {
        revision_ = &kEnded;
        OnEnded(true);
    }
    ForEachWatcher([this](Watcher& watcher) {
        Leave(watcher);
        watcher.OnEnd();
    });
}

void Liveness::BeginChange() {
    ++own_;
    ++round_;
}

void Liveness::TellChange() {
    const auto self = Ref<Liveness>::Share(this);
    const ChangeRound present;
    const std::uint32_t round = round_;
    ForEachWatcher([round](Watcher& watcher) {
        // Of a later one, told meanwhile, too.
        if (watcher.heard_ - round <= UINT32_MAX / 2) return;
        watcher.heard_ = round;
        watcher.OnChange();
    });
}

void Liveness::TellForgotten() {
    const auto self = Ref<Liveness>::Share(this);
    ForEachWatcher([](Watcher& watcher) { watcher.OnForgotten(); });
}

}  // namespace fixtop
