// SPDX-License-Identifier: Apache-2.0
// FIIterator: positions that outlive the host's lists.

#include "framework/iterator/iterator.h"
#include "framework/nodes/living_of.h"

namespace fixtop {

FIIterator::Elements FIIterator::MakeElements() const {
    Elements elements;
    SavedStep* parent = nullptr;
    for (int level = 0; level <= frames_.Size(); ++level) {
        FICursorBase* cursor = level == 0 ? nullptr : frames_[level - 1].cursor.Get();
        elements.push_back(std::make_unique<SavedStep>(EntryAt(level), parent, cursor));
        parent = elements.back().get();
    }
    return elements;
}

std::unique_ptr<SavedStep> FIIterator::MakeElement() const {
    FICursorBase* cursor = frames_.IsEmpty() ? nullptr : frames_.Last().cursor.Get();
    return std::make_unique<SavedStep>(entry_.Get(), nullptr, cursor);
}

FIIterator::Elements FIIterator::CloneElements(const Elements& elements) {
    Elements clones;
    SavedStep* parent = nullptr;
    for (const auto& element : elements) {
        clones.push_back(std::make_unique<SavedStep>(*element, parent));
        parent = clones.back().get();
    }
    return clones;
}

void FIIterator::Freeze() {
    if (!frames_.IsEmpty() && frozen_.empty()) frozen_ = MakeElements();
}

// All steps are found before any is replaced, so a failure leaves the position and what was saved.
bool FIIterator::Thaw() {
    if (frozen_.empty()) return !IsGone();
    struct Found {
        Ref<FIEntry> entry;
        Ref<FICursorBase> cursor;
    };
    std::vector<Found> path(frozen_.size());
    path[0].entry = Ref<FIEntry>::Adopt(frozen_[0]->GetEntry());
    for (std::size_t i = 1; i < path.size(); ++i) {
        path[i].cursor = frames_[static_cast<int>(i) - 1].cursor;
        if (!frozen_[i]->Resolve(*path[i - 1].entry, path[i].cursor, path[i].entry)) return false;
    }
    for (int i = 0; i < frames_.Size(); ++i) {
        frames_[i].entry = path[i].entry;
        frames_[i].cursor = path[i + 1].cursor;
    }
    entry_ = path.back().entry;
    frozen_.clear();
    return !IsGone();
}

bool FIIterator::IsGoneAt(int level) const {
    const auto* living = LivingOf(*EntryAt(level));
    return living && living->IsGone();
}

}  // namespace fixtop
