// SPDX-License-Identifier: Apache-2.0
#include "host/adapter.h"

#include "diagnostics/memory_guard.h"
#include "fixtop/host/local_services.h"
#include "framework/nodes/subscribers.h"
#include "host/case_life.h"
#include "host/lists/list_index.h"
#include "host/solver/solve_wait.h"

namespace fixtop {

namespace {

const host::Text kStreamClass("StreamObject");
const host::Text kUnitOpClass("UnitOpObject");
const host::Text kCorrelationClass("HovexCorrelationObject");

}  // namespace

struct HostAdapter::Lists {
    CaseRecords cases;
    HEditBatch batch;
    SubscriberList subscribers;
    ListIndexTable indices;
};

constinit HostAdapter g_adapter;

void HostAdapter::Replace(host::HostServices* services) {
    if (services == services_ && replacing_ == 0) return;
    const unsigned installation = installation_;
    ++replacing_;
    memory::OrNothing(CaseLife::EndAll);
    --replacing_;
    // Who is told of the end may have installed a host, if only the same: that call came later.
    if (installation_ == installation) Install(services);
}

void HostAdapter::Install(host::HostServices* services) {
    services_ = services;
    tracks_objects_ = services && !services->Lives(~std::uint64_t{0});
    types_are_known_ = false;
    ++installation_;
    host::SetLocalServices(services);
}

void HostAdapter::LookTypesUp() {
    types_ = {};
    if (services_) {
        types_ = {services_->FindObjectType(kStreamClass), services_->FindObjectType(kUnitOpClass),
                  services_->FindObjectType(kCorrelationClass)};
    }
    types_are_known_ = true;
}

const host::ObjectTypeRecords& HostAdapter::TypeRecords() const {
    static constexpr host::ObjectTypeRecords none;
    return services_ ? services_->ObjectTypes() : none;
}

// Apart from where they are asked for again and again.
[[gnu::noinline]] void HostAdapter::MakeLists() {
    lists_ = new Lists;
}

HostAdapter::Lists& HostAdapter::TheLists() {
    if (!lists_) MakeLists();
    return *lists_;
}

HEditBatch& HostAdapter::EditBatch() {
    return TheLists().batch;
}
HostAdapter::CaseRecords& HostAdapter::Cases() {
    return TheLists().cases;
}
SubscriberList& HostAdapter::Subscribers() {
    return TheLists().subscribers;
}
ListIndexTable& HostAdapter::ListIndices() {
    return TheLists().indices;
}

}  // namespace fixtop
