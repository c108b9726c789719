// SPDX-License-Identifier: Apache-2.0
// FIIterator: positions that outlive the host's lists.

#include "framework/iterator/iterator.h"
#include "framework/nodes/living_of.h"

namespace fixtop {

FIIterator::Elements FIIterator::MakeElements() const {
    Elements elements;
    SavedStep* parent = nullptr;
    for (int level = 0; level <= frames_.Size(); ++level) {
        FICursorBase* cursor = level == 0 ? nullptr : Frames()[level - 1].cursor.Get();
        elements.push_back(std::make_unique<SavedStep>(EntryAt(level), parent, cursor));
        parent = elements.back().get();
    }
    return elements;
}

std::unique_ptr<SavedStep> FIIterator::MakeElement() const {
    FICursorBase* cursor = frames_.IsEmpty() ? nullptr : Frames().Last().cursor.Get();
    return std::make_unique<SavedStep>(entry_.Get(), nullptr, cursor);
}

FIIterator::FrozenElements FIIterator::CloneElements(const FrozenElements& elements) {
    if (!elements) return nullptr;
    auto clones = std::make_unique<Elements>();
    SavedStep* parent = nullptr;
    for (const auto& element : *elements) {
        clones->push_back(std::make_unique<SavedStep>(*element, parent));
        parent = clones->back().get();
    }
    return clones;
}

void FIIterator::Freeze() {
    if (!frames_.IsEmpty() && !frozen_) frozen_ = std::make_unique<Elements>(MakeElements());
}

// All steps are found before any is replaced, so a failure leaves the position and what was saved.
bool FIIterator::Thaw() {
    if (!frozen_) return !IsGone();
    struct Found {
        Ref<FIEntry> entry;
        Ref<FICursorBase> cursor;
    };
    const Elements& saved = *frozen_;
    FrameStack& frames = Frames();
    std::vector<Found> path(saved.size());
    path[0].entry = Ref<FIEntry>::Adopt(saved[0]->GetEntry());
    for (std::size_t i = 1; i < path.size(); ++i) {
        path[i].cursor = frames[static_cast<int>(i) - 1].cursor;
        if (!saved[i]->Resolve(*path[i - 1].entry, path[i].cursor, path[i].entry)) return false;
    }
    for (int i = 0; i < frames.Size(); ++i) {
        frames[i].entry = path[i].entry;
        frames[i].cursor = path[i + 1].cursor;
    }
    entry_ = path.back().entry;
    frozen_.reset();
    return !IsGone();
}

bool FIIterator::IsGoneAt(int level) const {
    const auto* living = LivingOf(*EntryAt(level));
    return living && living->IsGone();
}

}  // namespace fixtop
