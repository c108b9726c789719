// SPDX-License-Identifier: Apache-2.0
// CQSVNode: units and specifications.

#include "automation/member.h"
#include "automation/v_node.h"

namespace fixtop {

HRESULT CQSVNode::GetDoubleInUnit(const char* unit, double* value) {
    if (!value) return kResultPointer;
    *value = 0;
    if (!unit) return kResultPointer;
    return RunMember([&] {
        FIValue read, refused;
        const Ref<FIIteratorBase> it = Copy();
        it->SetDisplayUnit(FIValue(unit), FIValue(), refused);
        if (!refused.IsNull()) return kResultFalse;
        it->GetAttribute(FIValue("value"), read);
        *value = read.AsDouble();
        return read.IsNull() ? kResultFalse : kResultOk;
    });
}

HRESULT CQSVNode::SetDoubleInUnit(double value, const char* unit, char** error) {
    if (LacksText(error, unit)) return kResultPointer;
    return HandOutMessage(error, [&](FIValue& out) {
        iterator->SetValueInUnit(FIValue::OfReal(value), FIValue(unit), 0, out);
    });
}

HRESULT CQSVNode::SetSpecDouble(double value, char** error) {
    return HandOutMessage(
        error, [&](FIValue& out) { iterator->SetSpecValue(FIValue::OfReal(value), 0, out); });
}

HRESULT CQSVNode::SetSpecDoubleInUnit(double value, const char* unit, char** error) {
    if (LacksText(error, unit)) return kResultPointer;
    return HandOutMessage(error, [&](FIValue& out) {
        iterator->SetSpecValueInUnit(FIValue::OfReal(value), FIValue(unit), 0, out);
    });
}

HRESULT CQSVNode::SetUnit(const char* unit, char** error) {
    if (LacksText(error, unit)) return kResultPointer;
    return HandOutMessage(error, [&](FIValue& out) { iterator->SetUnit(FIValue(unit), out); });
}

HRESULT CQSVNode::SetSpecUnit(const char* unit, char** error) {
    if (LacksText(error, unit)) return kResultPointer;
    return HandOutMessage(error, [&](FIValue& out) { iterator->SetSpecUnit(FIValue(unit), out); });
}

HRESULT CQSVNode::SetDisplayUnit(const char* unit, const char* quantity, char** error) {
    if (LacksText(error, unit, quantity)) return kResultPointer;
    return HandOutMessage(error, [&](FIValue& out) {
        iterator->SetDisplayUnit(FIValue(unit), FIValue(quantity), out);
    });
}

HRESULT CQSVNode::SetDisplaySpecUnit(const char* unit, const char* quantity, char** error) {
    if (LacksText(error, unit, quantity)) return kResultPointer;
    return HandOutMessage(error, [&](FIValue& out) {
        iterator->SetDisplaySpecUnit(FIValue(unit), FIValue(quantity), out);
    });
}

}  // namespace fixtop
