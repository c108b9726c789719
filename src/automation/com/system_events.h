// SPDX-License-Identifier: Apache-2.0
#pragma once

// SystemEvents: where the system's kind of clients hear of the changes of a collection, its
// connection point container. It has one point, for the interface of IQSISink's id; a client's sink
// is an object with the system's dispatch interface, whose member 1 is called with one argument:
// the place of the item, or of the type null. Part of the collection, which counts for it.

#include <memory>

#include "fixtop/automation/unknown.h"

namespace fixtop {

class CQSICollection;
class EventContainer;

class SystemEvents {
 public:
    SystemEvents();
    ~SystemEvents();
    SystemEvents(const SystemEvents&) = delete;
    SystemEvents& operator=(const SystemEvents&) = delete;

    // Not counted; null for any other interface, and where the system has none such.
    void* Find(CQSICollection& collection, const InterfaceId& id);

 private:
    // Null until it is asked for.
    std::unique_ptr<EventContainer> container_;
};

}  // namespace fixtop
