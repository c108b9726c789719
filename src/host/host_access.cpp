// SPDX-License-Identifier: Apache-2.0
#include "host/host_access.h"

#include "host/adapter.h"

#include <algorithm>
#include <array>
#include <string>

namespace fixtop {

namespace {

const host::Text kCorrelationClass("HovexCorrelationObject");

const host::ObjectTypeRecords& Records() {
    return TheAdapter().TypeRecords();
}

host::Viewable* OwnerOf(host::Viewable* object) {
    return object ? object->GetOwner(Records().ViewableObject) : nullptr;
}

bool HasOwnerOf(host::Viewable* object, const host::ObjectTypeInfo* type) {
    for (host::Viewable* owner = OwnerOf(object); owner; owner = OwnerOf(owner)) {
        if (IsA(owner, type)) return true;
    }
    return false;
}

// The class by which the owners of an object are told; null when it has no such owner.
const host::ObjectTypeInfo* OwnerKind(host::Viewable* object) {
    const host::ObjectTypeRecords& records = Records();
    for (const host::ObjectTypeInfo* kind :
         {records.FlowSheetObjectObject, records.SimulationObjectObject}) {
        if (HasOwnerOf(object, kind)) return kind;
    }
    return nullptr;
}

host::Viewable* NearestOwner(host::Viewable* object) {
    const host::ObjectTypeInfo* kind = OwnerKind(object);
    host::Viewable* owner = kind ? OwnerOf(object) : nullptr;
    while (owner && !IsA(owner, kind)) owner = OwnerOf(owner);
    return owner;
}

}  // namespace

host::SimulationCase* CaseOrActive(host::SimulationCase* simulation_case) {
    if (simulation_case) return simulation_case;
    host::HostServices* services = TheAdapter().Services();
    host::Session* session = services ? services->pSession() : nullptr;
    return session ? session->ActiveCase() : nullptr;
}

bool IsInDynamics(host::SimulationCase& simulation_case) {
    return simulation_case.Dynamic() || simulation_case.SimCaseDynamic();
}

const host::ObjectTypeInfo* StreamType() {
    return TheAdapter().Types().stream;
}
const host::ObjectTypeInfo* UnitOpType() {
    return TheAdapter().Types().unit_op;
}
const host::ObjectTypeInfo* CorrelationType() {
    return TheAdapter().Types().correlation;
}

bool IsA(const host::Viewable* object, const host::ObjectTypeInfo* type) {
    const host::ObjectTypeInfo* own = object && type ? object->Type() : nullptr;
    return own && own->IsA(type);
}

bool IsStream(const host::Viewable* object) {
    return IsA(object, StreamType());
}
bool IsTemplateOp(const host::Viewable* object) {
    return IsA(object, Records().TemplateOpObject);
}
bool IsExactlyTemplateOp(const host::Viewable* object) {
    return object && object->Type() && object->Type() == Records().TemplateOpObject;
}
bool IsFlowSheetObject(const host::Viewable* object) {
    return IsA(object, Records().FlowSheetObjectObject);
}
bool IsCorrelationHolder(const host::Viewable* object) {
    const host::ObjectTypeInfo* type = object ? object->Type() : nullptr;
    return type && type->ClassName() == kCorrelationClass;
}

host::FlowSheet* FlowSheetOrMain(host::FlowSheet* flowsheet,
                                 host::SimulationCase* simulation_case) {
    if (flowsheet) return flowsheet;
    return simulation_case ? simulation_case->MainFlowSheet() : nullptr;
}

host::FlowSheet* InnerFlowSheet(host::Viewable* object) {
    return IsTemplateOp(object) ? object->SubFlowSheet() : nullptr;
}

void ReadContainer(host::Viewable* object, FIValue& out) {
    out.Clear();
    const host::ObjectTypeInfo* kind = OwnerKind(object);
    if (!kind) return;
    std::string names;
    for (host::Viewable* owner = OwnerOf(object); owner; owner = OwnerOf(owner)) {
        if (!IsA(owner, kind)) continue;
        names = names.empty() ? owner->GetName().Str() : owner->GetName().Str() + "." + names;
    }
    out.SetText(names);
}

void ReadContainerType(host::Viewable* object, FIValue& out) {
    out.Clear();
    if (host::Viewable* owner = NearestOwner(object)) {
        out.SetText(owner->Type()->DisplayName().CStr());
    }
}

void ReadContainerCategory(host::Viewable* object, FIValue& out) {
    if (IsA(NearestOwner(object), Records().UnitOpObject)) {
        out.SetText("UnitOp");
    } else {
        ReadContainerType(object, out);
    }
}

int FlowSheetStatus(host::FlowSheet* flowsheet) {
    int largest = 0;
    if (!flowsheet) return largest;
    host::FlowSheetObjectIterator objects = flowsheet->Objects();
    for (host::Viewable* object = objects.Reset(); object; object = objects.Next()) {
        if (IsFlowSheetObject(object)) largest = std::max(largest, ObjectStatus(object));
    }
    return largest;
}

int ObjectStatus(host::Viewable* object) {
    if (!object) return 0;
    return IsTemplateOp(object) ? FlowSheetStatus(object->SubFlowSheet())
                                : static_cast<int>(object->GetMyStatusCondition());
}

const char* StatusText(int status) {
    static constexpr std::array<const char*, 4> kTexts = {"OK", "Not Solved", "Warning",
                                                          "Under-Specified"};
    return status >= 0 && status < static_cast<int>(kTexts.size()) ? kTexts[status] : "Error";
}

}  // namespace fixtop
