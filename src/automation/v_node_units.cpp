// SPDX-License-Identifier: Apache-2.0
// CQSVNode: units and specifications. All nodes take the unit in which they show a number as an
// attribute of its own; it stays with the iterator that stored it.

#include "automation/member.h"
#include "automation/read_value.h"
#include "automation/v_node.h"

namespace fixtop {

namespace {

// The two numbers of a node.
struct Face {
    const char* number;
    const char* unit;
};
constexpr Face kValue = {"value", "uom"};
constexpr Face kSpecification = {"spec_value", "spec_uom"};

// Whoever hears of the store may let go of the node: its place is held for the call.
template <class Store>
HRESULT StoreUnit(const Ref<FIIteratorBase>& place, char** error, Store store) {
    return HandOutMessage(error, [&](FIValue& out) {
        // NOLINTNEXTLINE(performance-unnecessary-copy-initialization)
        const Ref<FIIteratorBase> held = place;
        store(*held, out);
    });
}

void ShowIn(FIIteratorBase& node, const Face& face, const char* unit, FIValue& out) {
    node.SetAttribute(FIValue(face.unit), FIValue(unit), 0, out);
}

void StoreInUnit(FIIteratorBase& node, const Face& face, double number, const char* unit,
                 FIValue& out) {
    ShowIn(node, face, unit, out);
    if (out.IsNull()) node.SetAttribute(FIValue(face.number), FIValue::OfReal(number), 0, out);
}

}  // namespace

HRESULT CQSVNode::GetDoubleInUnit(const char* unit, double* value) {
    if (!value) return kResultPointer;
    *value = 0;
    if (!unit) return kResultPointer;
    return RunMember([&] {
        FIValue read, refused;
        const Ref<FIIteratorBase> it = Copy();
        ShowIn(*it, kValue, unit, refused);
        if (!refused.IsNull()) return kResultFalse;
        it->GetAttribute(FIValue(kValue.number), read);
        if (read.IsNull() || LacksNode(read)) return kResultFalse;
        *value = read.AsDouble();
        return kResultOk;
    });
}

HRESULT CQSVNode::SetDoubleInUnit(double value, const char* unit, char** error) {
    if (LacksText(error, unit)) return kResultPointer;
    return HandOutMessage(error,
                          [&](FIValue& out) { StoreInUnit(*Copy(), kValue, value, unit, out); });
}

HRESULT CQSVNode::SetSpecDouble(double value, char** error) {
    return SetDouble(kSpecification.number, value, error);
}

HRESULT CQSVNode::SetSpecDoubleInUnit(double value, const char* unit, char** error) {
    if (LacksText(error, unit)) return kResultPointer;
    return HandOutMessage(
        error, [&](FIValue& out) { StoreInUnit(*Copy(), kSpecification, value, unit, out); });
}

HRESULT CQSVNode::SetUnit(const char* unit, char** error) {
    if (LacksText(error, unit)) return kResultPointer;
    return StoreUnit(iterator, error,
                     [=](FIIteratorBase& node, FIValue& out) { node.SetUnit(FIValue(unit), out); });
}

HRESULT CQSVNode::SetSpecUnit(const char* unit, char** error) {
    if (LacksText(error, unit)) return kResultPointer;
    return StoreUnit(iterator, error, [=](FIIteratorBase& node, FIValue& out) {
        node.SetSpecUnit(FIValue(unit), out);
    });
}

HRESULT CQSVNode::SetDisplayUnit(const char* unit, const char* quantity, char** error) {
    if (LacksText(error, unit, quantity)) return kResultPointer;
    return StoreUnit(iterator, error, [=](FIIteratorBase& node, FIValue& out) {
        if (!*quantity) return ShowIn(node, kValue, unit, out);
        node.SetDisplayUnit(FIValue(unit), FIValue(quantity), out);
    });
}

HRESULT CQSVNode::SetDisplaySpecUnit(const char* unit, const char* quantity, char** error) {
    if (LacksText(error, unit, quantity)) return kResultPointer;
    return StoreUnit(iterator, error, [=](FIIteratorBase& node, FIValue& out) {
        if (!*quantity) return ShowIn(node, kSpecification, unit, out);
        node.SetDisplaySpecUnit(FIValue(unit), FIValue(quantity), out);
    });
}

}  // namespace fixtop
