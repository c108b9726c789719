// SPDX-License-Identifier: Apache-2.0
#include "automation/attribute.h"

#include <cstring>

#include "automation/member.h"
#include "automation/read_value.h"

namespace fixtop {

namespace {

HRESULT Write(const void* bytes, std::size_t count, std::int32_t size, void* buffer) {
    if (!buffer) return kResultPointer;
    if (size < 0 || static_cast<std::size_t>(size) < count) return kResultFail;
    std::memcpy(buffer, bytes, count);
    return kResultOk;
}

}  // namespace

CQSIAttribute::CQSIAttribute(const FIValue& value, Ref<FIIteratorBase> node)
    : HeldNode{std::move(node)}, value_(value) {}

void* CQSIAttribute::Find(const InterfaceId& id) {
    if (id == kHeldAttributeId && iterator) return static_cast<HeldNode*>(this);
    return AutomationObject::Find(id);
}

// The value of a message is 0, which is none of the node's.
HRESULT CQSIAttribute::AsNumber(HRESULT handed_out) const {
    return handed_out == kResultOk && LacksNode(value_) ? kResultFalse : handed_out;
}

HRESULT CQSIAttribute::GetType(std::int32_t* type) {
    return HandOutNumber(type, [&] { return value_.IsText() ? kText : value_.Kind(); });
}

HRESULT CQSIAttribute::GetValue(std::int32_t type, std::int32_t size, void* buffer) {
    return RunMember([&] {
        const std::int32_t number = value_.AsInt();
        const double real = value_.AsDouble();
        switch (type) {
            case kInt:
                return AsNumber(Write(&number, sizeof number, size, buffer));
            case kReal:
                return AsNumber(Write(&real, sizeof real, size, buffer));
            case kText: {
                const std::string text = value_.ToText();
                return Write(text.c_str(), text.size() + 1, size, buffer);
            }
            default:
                return kResultOk;
        }
    });
}

HRESULT CQSIAttribute::GetString(char** text) {
    return HandOutText(text, [&](FIValue& out) { out.SetText(value_.ToText()); });
}

HRESULT CQSIAttribute::GetInt(std::int32_t* number) {
    return AsNumber(HandOutNumber(number, [&] { return value_.AsInt(); }));
}

HRESULT CQSIAttribute::GetDouble(double* number) {
    return AsNumber(HandOutNumber(number, [&] { return value_.AsDouble(); }));
}

}  // namespace fixtop
