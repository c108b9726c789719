// SPDX-License-Identifier: Apache-2.0
#pragma once

// ReferenceClients: who listens to a reference for one kind of change, one record an owner. Records
// that leave during a round stay, inactive, until the reference erases them after it. Nobody
// listens to most references, so the list is made for the first who does.

#include <map>
#include <memory>

#include "diagnostics/memory_guard.h"
#include "fixtop/entry.h"

namespace fixtop {

class ReferenceClients {
 public:
    void Add(void* owner, FICallback callback) {
        if (!clients_) clients_ = std::make_unique<Clients>();
        (*clients_)[owner] = {callback, true};
    }
    // False when the owner is not an active client. With `keep` the record stays, inactive.
    bool Leave(void* owner, bool keep) {
        if (!clients_) return false;
        const auto found = clients_->find(owner);
        if (found == clients_->end() || !found->second.active) return false;
        found->second.active = false;
        if (!keep) clients_->erase(found);
        return true;
    }
    // True when one was erased.
    bool EraseInactive() {
        return clients_ &&
               std::erase_if(*clients_, [](const auto& item) { return !item.second.active; }) > 0;
    }
    void Call(int kind) {
        if (!clients_) return;
        for (const auto& each : *clients_) {
            if (!each.second.active) continue;
            memory::Outside([&] { each.second.callback(each.first, kind); });
        }
    }
    bool IsEmpty() const { return !clients_ || clients_->empty(); }
    void Clear() {
        if (clients_) clients_->clear();
    }

 private:
    struct Client {
        FICallback callback;
        bool active;
    };

    using Clients = std::map<void*, Client>;

    std::unique_ptr<Clients> clients_;
};

}  // namespace fixtop
