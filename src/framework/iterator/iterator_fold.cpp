// SPDX-License-Identifier: Apache-2.0
// FIIterator: positions that are held and hardly ever move.

#include <array>

#include "framework/iterator/iterator.h"
#include "framework/iterator/shielded_iterator.h"
#include "framework/nodes/living_of.h"

namespace fixtop {

FIIterator* FIIterator::CopyToHold() {
    return new HeldIterator(*this);
}

void FIIterator::Fold() {
    if (!frames_.MayFold()) return;
    if (FrameVars* chain = FindChain()) frames_.Fold(*chain, frames_.Size());
}

// What is entered at the levels before one fails holds no more than the frames do. Where a level
// keeps its cursor nobody need ask whether there could be another.
FrameVars* FIIterator::FindChain() const {
    if (frames_.IsFolded()) return frames_.Chain();
    if (frozen_ || frames_.Size() > FrameStack::kFoldLimit) return nullptr;
    FrameVars* above = nullptr;
    for (int i = 0; i < frames_.Size(); ++i) {
        const IteratorFrame& frame = frames_[i];
        if (!frame.vars) return nullptr;
        FICursorBase* kept = frame.cursor.Get();
        if (frame.vars->level.cursor.Get() != kept) {
            const LivingNode* child = LivingOf(*EntryAt(i + 1));
            if (child && child->Remakes(*kept)) kept = nullptr;
        }
        if (!frame.vars->Enter(frame.entry.Get(), kept, above)) return nullptr;
        above = frame.vars.Get();
    }
    return above;
}

FrameVars& FIIterator::FoldedLevel(int level) const {
    FrameVars* found = frames_.Chain();
    for (int i = frames_.Size() - 1; i > level; --i) found = found->level.above.Get();
    return *found;
}

void FIIterator::LayFrames(FrameStack& frames) const {
    frames.Reserve(frames_.Size());
    if (!frames_.IsFolded()) {
        for (int i = 0; i < frames_.Size(); ++i) {
            const IteratorFrame& frame = frames_[i];
            auto cursor = Ref<FICursorBase>::Adopt(frame.cursor->Clone(false));
            frames.Push({frame.entry, std::move(cursor), frame.vars});
        }
        return;
    }
    std::array<FrameVars*, FrameStack::kFoldLimit> levels;
    FrameVars* each = frames_.Chain();
    for (int i = frames_.Size() - 1; i >= 0; --i, each = each->level.above.Get()) levels[i] = each;
    for (int i = 0; i < frames_.Size(); ++i) {
        const FrameVars::Level& level = levels[i]->level;
        auto cursor = level.cursor ? Ref<FICursorBase>::Adopt(level.cursor->Clone(false))
                                   : LivingOf(*EntryAt(i + 1))->RemakeCursor();
        frames.Push({level.entry, std::move(cursor), Ref<FrameVars>::Share(levels[i])});
    }
}

void FIIterator::Unfold() const {
    FrameStack frames(nullptr);
    LayFrames(frames);
    frames_.Unfold(frames);
}

}  // namespace fixtop
