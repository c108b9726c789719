// SPDX-License-Identifier: Apache-2.0
#pragma once

// ReferenceClients: who listens to a reference, one record an owner for each kind of change.
// Records that leave during a round stay, inactive, until the reference erases them after it.
// Nobody listens to most references, so the lists are made for the first who does.

#include <array>
#include <map>
#include <memory>

#include "diagnostics/memory_guard.h"
#include "fixtop/entry.h"

namespace fixtop {

class ReferenceClients {
 public:
    // All operations take one of them.
    static constexpr std::array kKinds = {kNodeDeleted, kValueChanged, kStructureChanged};
    static_assert(kKinds[kNodeDeleted] == kNodeDeleted && kKinds[kValueChanged] == kValueChanged &&
                  kKinds[kStructureChanged] == kStructureChanged);

    void Add(int kind, void* owner, FICallback callback) {
        if (!lists_) lists_ = std::make_unique<Lists>();
        ListOf(kind)[owner] = {callback, true};
    }
    // False when the owner is not an active client. With `keep` the record stays, inactive.
    bool Leave(int kind, void* owner, bool keep) {
        if (!lists_) return false;
        List& clients = ListOf(kind);
        const auto found = clients.find(owner);
        if (found == clients.end() || !found->second.active) return false;
        found->second.active = false;
        if (!keep) clients.erase(found);
        return true;
    }
    // True when one was erased.
    bool EraseInactive(int kind) {
        return lists_ && std::erase_if(ListOf(kind),
                                       [](const auto& item) { return !item.second.active; }) > 0;
    }
    // Tells those of a kind of a change, which is told as `told`.
    void Call(int kind, int told) {
        if (!lists_) return;
        for (const auto& each : ListOf(kind)) {
            if (!each.second.active) continue;
            memory::Outside([&] { each.second.callback(each.first, told); });
        }
    }
    bool IsEmpty(int kind) const { return !lists_ || (*lists_)[IndexOf(kind)].empty(); }
    void Clear() {
        if (!lists_) return;
        for (List& each : *lists_) each.clear();
    }

 private:
    struct Client {
        FICallback callback;
        bool active;
    };
    using List = std::map<void*, Client>;
    using Lists = std::array<List, kKinds.size()>;

    static constexpr std::size_t IndexOf(int kind) { return static_cast<std::size_t>(kind); }
    List& ListOf(int kind) { return (*lists_)[IndexOf(kind)]; }

    std::unique_ptr<Lists> lists_;
};

}  // namespace fixtop
