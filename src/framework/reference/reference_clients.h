// SPDX-License-Identifier: Apache-2.0
#pragma once

// ReferenceClients: who listens to a reference for one kind of change, one record an owner. Records
// that leave during a round stay, inactive, until the reference erases them after it.

#include <map>

#include "diagnostics/memory_guard.h"
#include "fixtop/entry.h"

namespace fixtop {

class ReferenceClients {
 public:
    void Add(void* owner, FICallback callback) { clients_[owner] = {callback, true}; }
    // False when the owner is not an active client. With `keep` the record stays, inactive.
    bool Leave(void* owner, bool keep) {
        const auto found = clients_.find(owner);
        if (found == clients_.end() || !found->second.active) return false;
        found->second.active = false;
        if (!keep) clients_.erase(found);
        return true;
    }
    // True when one was erased.
    bool EraseInactive() {
        return std::erase_if(clients_, [](const auto& item) { return !item.second.active; }) > 0;
    }
    void Call(int kind) {
        for (const auto& each : clients_) {
            if (!each.second.active) continue;
            memory::Outside([&] { each.second.callback(each.first, kind); });
        }
    }
    bool IsEmpty() const { return clients_.empty(); }
    void Clear() { clients_.clear(); }

 private:
    struct Client {
        FICallback callback;
        bool active;
    };

    std::map<void*, Client> clients_;
};

}  // namespace fixtop
