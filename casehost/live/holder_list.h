// SPDX-License-Identifier: Apache-2.0
#pragma once

// HolderList: a host list over elements that live elsewhere. Steps and access by number take
// constant time. Its revision is a number that no other list of the process ever answers.

#include <atomic>
#include <vector>

#include "fixtop/host/list.h"

namespace fixtop::casehost {

inline std::uint64_t NextRevision() {
    static std::atomic<std::uint64_t> last{0};
    return ++last;
}

class HolderList final : public host::LinkedList {
 public:
    const host::ListHolder* FirstHolder() const override { return At(0); }
    const host::ListHolder* LastHolder() const override {
        return holders_.empty() ? nullptr : &holders_.back();
    }
    const host::ListHolder* HolderAfter(const host::ListHolder* holder) const override {
        return At(IndexOf(holder) + 1);
    }
    const host::ListHolder* HolderBefore(const host::ListHolder* holder) const override {
        const std::size_t index = IndexOf(holder);
        return index == 0 ? nullptr : At(index - 1);
    }
    void* EntryAt(unsigned index) const override {
        const host::ListHolder* holder = At(index);
        return holder ? holder->element : nullptr;
    }
    std::uint64_t Revision() const override { return revision_; }

    std::size_t Size() const { return holders_.size(); }
    void Reserve(std::size_t count) { holders_.reserve(count); }
    void Insert(std::size_t index, void* element) {
        holders_.insert(holders_.begin() + index, host::ListHolder{element});
        Touch();
    }
    void Append(void* element) { Insert(holders_.size(), element); }
    void Erase(std::size_t index) {
        holders_.erase(holders_.begin() + index);
        Touch();
    }
    // An element was renamed or otherwise changed its place in the eyes of a client.
    void Touch() { revision_ = NextRevision(); }

 private:
    const host::ListHolder* At(std::size_t index) const {
        return index < holders_.size() ? &holders_[index] : nullptr;
    }
    std::size_t IndexOf(const host::ListHolder* holder) const {
        return static_cast<std::size_t>(holder - holders_.data());
    }

    std::vector<host::ListHolder> holders_;
    std::uint64_t revision_ = NextRevision();
};

}  // namespace fixtop::casehost
