// SPDX-License-Identifier: Apache-2.0
#include "automation/com/system_events.h"

namespace fixtop {

class EventContainer {};

SystemEvents::SystemEvents() = default;
SystemEvents::~SystemEvents() = default;

void* SystemEvents::Find(CQSICollection&, const InterfaceId&) {
    return nullptr;
}

}  // namespace fixtop
