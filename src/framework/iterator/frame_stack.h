// SPDX-License-Identifier: Apache-2.0
#pragma once

// IteratorFrame: one level above an iterator's present node. FrameStack: the frames from the root;
// most positions are shallow, so those of an iterator that walks lie in a FrameRoom beside it.
//
// An iterator that is held and hardly ever moves folds its frames: the levels are found through
// their variables then, which many iterators share, and the stack keeps the lowest of these alone.

#include <algorithm>
#include <array>
#include <utility>

#include "fixtop/cursor.h"
#include "fixtop/entry.h"
#include "fixtop/ref.h"
#include "framework/iterator/var_map.h"

namespace fixtop {

struct IteratorFrame {
    // The parent.
    Ref<FIEntry> entry;
    // Stands on the child into which the iterator went.
    Ref<FICursorBase> cursor;
    // Null while the level has no variables.
    Ref<FrameVars> vars;
};

struct FrameRoom {
    static constexpr int kFrames = 5;
    std::array<IteratorFrame, kFrames> frames;
};

class FrameStack {
 public:
    // Folded stacks have at most this depth.
    static constexpr int kFoldLimit = 64;

    // The room is lent; without one the frames lie on the heap.
    explicit FrameStack(FrameRoom* room)
        : first_(room ? room->frames.data() : nullptr), capacity_(room ? FrameRoom::kFrames : 0) {}
    FrameStack(const FrameStack&) = delete;
    FrameStack& operator=(const FrameStack&) = delete;
    ~FrameStack() { Free(); }

    int Size() const { return size_; }
    bool IsEmpty() const { return size_ == 0; }

    // ---- Not of a folded stack ----

    IteratorFrame& operator[](int index) { return first_[index]; }
    const IteratorFrame& operator[](int index) const { return first_[index]; }
    // The parent's frame; the stack may not be empty.
    IteratorFrame& Last() { return first_[size_ - 1]; }

    // The next frame finds room: pushing it can't fail.
    void MakeRoom() {
        if (size_ >= capacity_) Reserve(2 * size_ + 1);
    }
    void Reserve(int size) {
        if (size > capacity_) Grow(size);
    }
    // There is room for it.
    void Push(IteratorFrame frame) { first_[size_++] = std::move(frame); }
    IteratorFrame Pop() { return std::move(first_[--size_]); }
    // The frames of another stack, which gets these.
    void Exchange(FrameStack& other) {
        Reserve(other.size_);
        other.Reserve(size_);
        const int count = std::max(size_, other.size_);
        std::swap_ranges(first_, first_ + count, other.first_);
        std::swap(size_, other.size_);
    }

    // ---- Folding ----

    bool IsFolded() const { return capacity_ == kFolded; }
    // One that has room has nothing to gain, and an empty one has no lowest level.
    bool MayFold() const {
        return capacity_ != FrameRoom::kFrames && !IsFolded() && size_ > 0 && size_ <= kFoldLimit;
    }
    // The lowest level of a folded stack; lent.
    FrameVars* Chain() const { return chain_; }
    // In place of the frames: the lowest of so many levels.
    void Fold(FrameVars& chain, int depth) {
        chain.AddRef();
        Free();
        chain_ = &chain;
        size_ = depth;
        capacity_ = kFolded;
    }
    // In place of the chain: frames on the heap, as many as the stack has, from which they are
    // taken.
    void Unfold(FrameStack& frames) {
        Free();
        first_ = std::exchange(frames.first_, nullptr);
        size_ = std::exchange(frames.size_, 0);
        capacity_ = std::exchange(frames.capacity_, 0);
    }

 private:
    static constexpr int kFolded = -1;

    // To more than a FrameRoom has, by which frames on the heap are known.
    [[gnu::noinline]] void Grow(int size) {
        const int capacity = std::max(size, FrameRoom::kFrames + 1);
        auto* frames = new IteratorFrame[static_cast<std::size_t>(capacity)];
        std::move(first_, first_ + size_, frames);
        const int kept = size_;
        Free();
        first_ = frames;
        size_ = kept;
        capacity_ = capacity;
    }
    void Free() {
        if (IsFolded()) Ref<FrameVars>::Adopt(chain_);
        if (capacity_ > FrameRoom::kFrames) delete[] first_;
    }

    union {
        IteratorFrame* first_;
        FrameVars* chain_;  // of a folded one, counted
    };
    int size_ = 0;
    int capacity_;
};

}  // namespace fixtop
