// SPDX-License-Identifier: Apache-2.0
#pragma once

// Visits by the module, which nothing may be thrown through.

#include <exception>
#include <functional>
#include <utility>

#include "fixtop/iterator.h"
#include "fixtop/ref.h"

namespace fixtop::client {

// An iterator of one's own.
Ref<FIIteratorBase> CopyOf(FIIteratorBase& node);

template <class Visited>
class Visitor {
 public:
    using Function = std::function<bool(const Visited& visited)>;
    explicit Visitor(Function visit) : visit_(std::move(visit)) {}

    // With this object as the owner.
    static bool (*Call())(void* owner, const Visited* visited) {
        return [](void* owner, const Visited* visited) {
            auto& self = *static_cast<Visitor*>(owner);
            try {
                return self.visit_(*visited);
            } catch (...) {
                self.thrown_ = std::current_exception();
                return false;
            }
        };
    }
    // To be called after the visits.
    void Rethrow() const {
        if (thrown_) std::rethrow_exception(thrown_);
    }

 private:
    Function visit_;
    std::exception_ptr thrown_;
};

}  // namespace fixtop::client
