// SPDX-License-Identifier: Apache-2.0
#include "automation/collection_iterator.h"

#include "automation/attribute.h"
#include "automation/held_node.h"
#include "automation/member.h"
#include "automation/q_node.h"
#include "fixtop/reference.h"

namespace fixtop {

HRESULT CQSICollectionIterator::GetIdBuffer(std::int32_t size, char* buffer) {
    if (!buffer) return kResultPointer;
    const auto held = Hold();
    return RunMember([&] {
        FIValue id;
        items_->GetAttribute(FIValue("id"), id);
        id.CopyText(buffer, size);
        return kResultOk;
    });
}

HRESULT CQSICollectionIterator::GetId(char** id) {
    const auto held = Hold();
    return HandOutText(id, [&](FIValue& out) { items_->GetAttribute(FIValue("id"), out); });
}

Ref<FIIteratorBase> CQSICollectionIterator::Place() {
    const auto reference = Ref<FIReferenceBase>::Adopt(items_->GetNode());
    return Ref<FIIteratorBase>::Adopt(reference ? reference->Copy() : nullptr);
}

HRESULT CQSICollectionIterator::GetNode(IQSINode** node) {
    const auto held = Hold();
    return HandOutObject(node, [&] {
        Ref<FIIteratorBase> place = Place();
        return place ? CQSINode::Make(std::move(place)) : nullptr;
    });
}

HRESULT CQSICollectionIterator::AtEnd(bool* at_end) {
    return HandOutNumber(at_end, [&] { return items_->AtEnd(); });
}

HRESULT CQSICollectionIterator::Move(std::int32_t count) {
    return RunMember([&] {
        for (; count > 0; --count) {
            if (!items_->Next()) return kResultFalse;
        }
        for (; count < 0; ++count) {
            if (!items_->Previous()) return kResultFail;
        }
        return kResultOk;
    });
}

HRESULT CQSICollectionIterator::Reset() {
    return RunMember([&] { return items_->First() ? kResultOk : kResultFail; });
}

HRESULT CQSICollectionIterator::ToEnd() {
    return RunMember([&] {
        if (items_->Last()) items_->Next();
        return items_->AtEnd() ? kResultOk : kResultFail;
    });
}

HRESULT CQSICollectionIterator::AddNode(IUnknown* node) {
    const auto held = Hold();
    return collection_->Add(node, kHeldNodeId, items_.Get());
}

HRESULT CQSICollectionIterator::AddAttribute(IUnknown* attribute) {
    const auto held = Hold();
    return collection_->Add(attribute, kHeldAttributeId, items_.Get());
}

HRESULT CQSICollectionIterator::GetValue(const char* name, IQSIAttribute** attribute) {
    if (LacksText(attribute, name)) return kResultPointer;
    const auto held = Hold();
    return HandOutObject(attribute, [&] { return CQSIAttribute::Read(*items_, name, Place()); });
}

}  // namespace fixtop
