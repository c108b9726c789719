// SPDX-License-Identifier: Apache-2.0
#pragma once

// IteratorFrame: one level above an iterator's present node. FrameStack: the frames from the root;
// most positions are shallow, so the first ones lie within the iterator.

#include <array>
#include <utility>
#include <vector>

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

class FrameStack {
 public:
    int Size() const { return size_; }
    bool IsEmpty() const { return size_ == 0; }

    IteratorFrame& operator[](int index) {
        return index < kInline ? inline_[index] : overflow_[index - kInline];
    }
    const IteratorFrame& operator[](int index) const {
        return index < kInline ? inline_[index] : overflow_[index - kInline];
    }
    // The parent's frame; the stack may not be empty.
    IteratorFrame& Last() { return (*this)[size_ - 1]; }

    // The next frame finds room: pushing it can't fail.
    void MakeRoom() {
        if (size_ >= kInline) MakeRoomBeyond();
    }
    void Push(IteratorFrame frame) {
        if (size_ < kInline) {
            inline_[size_] = std::move(frame);
        } else {
            PushBeyond(frame);
        }
        ++size_;
    }
    IteratorFrame Pop() {
        --size_;
        if (size_ < kInline) return std::exchange(inline_[size_], IteratorFrame());
        IteratorFrame frame = std::move(overflow_.back());
        overflow_.pop_back();
        return frame;
    }

 private:
    static constexpr int kInline = 5;

    // Few positions are so deep.
    [[gnu::noinline]] void MakeRoomBeyond() {
        if (overflow_.size() < overflow_.capacity()) return;
        overflow_.reserve(overflow_.empty() ? kInline : 2 * overflow_.size());
    }
    [[gnu::noinline]] void PushBeyond(IteratorFrame& frame) {
        overflow_.push_back(std::move(frame));
    }

    std::array<IteratorFrame, kInline> inline_;
    std::vector<IteratorFrame> overflow_;
    int size_ = 0;
};

}  // namespace fixtop
