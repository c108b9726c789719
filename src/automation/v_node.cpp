// SPDX-License-Identifier: Apache-2.0
#include "automation/v_node.h"

#include "automation/member.h"
#include "automation/read_value.h"

namespace fixtop {

namespace {

// A number, made of the attribute by `convert`; kResultFalse for NULL and without a node.
template <class T, class Convert>
HRESULT ReadAs(FIIteratorBase& node, const char* name, T* out, Convert convert) {
    if (!out) return kResultPointer;
    *out = T();
    if (!name) return kResultPointer;
    return RunMember([&] {
        FIValue value;
        node.GetAttribute(FIValue(name), value);
        if (value.IsNull() || LacksNode(value)) return kResultFalse;
        *out = convert(value);
        return kResultOk;
    });
}

// Whoever hears of the store may let go of the node: its place is held here.
template <class Make>
HRESULT StoreMade(const Ref<FIIteratorBase>& place, const char* name, char** error, Make make) {
    if (LacksText(error, name)) return kResultPointer;
    return HandOutMessage(error, [&](FIValue& out) {
        // NOLINTNEXTLINE(performance-unnecessary-copy-initialization)
        const Ref<FIIteratorBase> held = place;
        held->SetAttribute(FIValue(name), make(), 0, out);
    });
}

}  // namespace

HRESULT CQSVNode::GetInt(const char* name, std::int32_t* value) {
    return ReadAs(*iterator, name, value, [](const FIValue& read) { return read.AsInt(); });
}

HRESULT CQSVNode::GetDouble(const char* name, double* value) {
    return ReadAs(*iterator, name, value, [](const FIValue& read) { return read.AsDouble(); });
}

HRESULT CQSVNode::GetBool(const char* name, bool* value) {
    return ReadAs(*iterator, name, value, [](const FIValue& read) { return read.AsDouble() != 0; });
}

HRESULT CQSVNode::GetString(const char* name, char** value) {
    if (LacksText(value, name)) return kResultPointer;
    return HandOutText(value, [&](FIValue& out) { iterator->GetAttribute(FIValue(name), out); });
}

HRESULT CQSVNode::SetInt(const char* name, std::int32_t value, char** error) {
    return StoreMade(iterator, name, error, [=] { return FIValue::OfInt(value); });
}

HRESULT CQSVNode::SetDouble(const char* name, double value, char** error) {
    return StoreMade(iterator, name, error, [=] { return FIValue::OfReal(value); });
}

HRESULT CQSVNode::SetBool(const char* name, bool value, char** error) {
    return SetInt(name, value ? 1 : 0, error);
}

HRESULT CQSVNode::SetString(const char* name, const char* value, char** error) {
    if (LacksText(error, value)) return kResultPointer;
    return StoreMade(iterator, name, error, [=] { return FIValue(value); });
}

HRESULT CQSVNode::GetChildByIndex(std::int32_t index, IQSVNode** child) {
    return HandOutObject(child, [&]() -> IQSVNode* {
        Ref<FIIteratorBase> it = Copy();
        return index >= 0 && it->Down(index) ? new CQSVNode(std::move(it)) : nullptr;
    });
}

HRESULT CQSVNode::GetCount(std::int32_t* count) {
    return HandOutNumber(count, [&] {
        std::int32_t children = 0;
        const Ref<FIIteratorBase> it = Copy();
        const bool may_have = it->CanDescend();
        for (bool on = may_have && it->DownFirst(); on; on = it->Next()) ++children;
        return children;
    });
}

HRESULT CQSVNode::GetKeyLength(std::int32_t* length) {
    return HandOutNumber(length, [&] { return iterator->KeyLength(); });
}

HRESULT CQSVNode::GetKey(std::int32_t size, char* buffer) {
    if (!buffer) return kResultPointer;
    return RunMember([&] {
        iterator->KeyText(buffer, size);
        return kResultOk;
    });
}

HRESULT CQSVNode::IsContainer(bool* is_container) {
    return HandOutNumber(is_container, [&] { return iterator->CanDescend(); });
}

HRESULT CQSVNode::HasValue(bool* has_value) {
    return HandOutNumber(has_value, [&] {
        FIValue value;
        iterator->GetAttribute(FIValue("value"), value);
        return !value.IsNull() && !LacksNode(value);
    });
}

}  // namespace fixtop
