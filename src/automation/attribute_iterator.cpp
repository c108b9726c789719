// SPDX-License-Identifier: Apache-2.0
#include "automation/attribute_iterator.h"

#include "automation/attribute.h"
#include "automation/member.h"

namespace fixtop {

CQSIAttributeIterator::CQSIAttributeIterator(Ref<FIIteratorBase> node) : node_(std::move(node)) {
    const auto source = Ref<FIAttributeSource>::Adopt(node_->GetAttributeSource());
    if (source) cursor_ = Ref<FIAttributeCursorBase>::Adopt(source->MakeCursor());
    if (!cursor_) return;
    cursor_->SetVarSet(node_->GetVarSet());
    has_rows_ = cursor_->Seek(kFromFirst, 0);
}

HRESULT CQSIAttributeIterator::GetNameBuffer(std::int32_t size, char* buffer) {
    if (!buffer) return kResultPointer;
    return RunMember([&] {
        FIValue key;
        if (!Stands()) return kResultOk;
        cursor_->GetKey(key);
        key.CopyText(buffer, size);
        return kResultOk;
    });
}

HRESULT CQSIAttributeIterator::GetName(char** name) {
    if (!name) return kResultPointer;
    TaskText text;
    const HRESULT result = RunMember([&] {
        FIValue key;
        if (!Stands()) return kResultOk;
        cursor_->GetKey(key);
        text = ToTaskText(key);
        return kResultOk;
    });
    if (result != kResultOk) *name = nullptr;
    if (text) *name = text.release();
    return result;
}

HRESULT CQSIAttributeIterator::GetAttribute(IQSIAttribute** attribute) {
    if (!attribute) return kResultPointer;
    if (!has_rows_) return RunMember([] { return kResultFail; });
    return HandOutObject(attribute, [&]() -> IQSIAttribute* {
        FIValue value;
        // Another cursor on the node may have taken back what it lent.
        cursor_->SetVarSet(node_->GetVarSet());
        cursor_->GetValue(value);
        return new CQSIAttribute(value, node_);
    });
}

// One by one, since a seek that goes too far does not say how far it went.
HRESULT CQSIAttributeIterator::Next(std::int32_t count, std::int32_t* moved) {
    if (!moved) return kResultPointer;
    *moved = 0;
    return RunMember([&] {
        if (!has_rows_) return kResultFail;
        const int step = count < 0 ? -1 : 1;
        while (*moved != count && cursor_->Seek(kFromPresent, step)) *moved += step;
        // A refused step back leaves the cursor on the first row, though the node may not have it.
        if (*moved != count && Stands()) cursor_->Seek(kFromFirst, 0);
        return Stands() ? kResultOk : kResultFalse;
    });
}

HRESULT CQSIAttributeIterator::Reset() {
    return RunMember(
        [&] { return !has_rows_ || cursor_->Seek(kFromFirst, 0) ? kResultOk : kResultFail; });
}

HRESULT CQSIAttributeIterator::ToEnd() {
    return RunMember([&] {
        if (has_rows_) cursor_->Seek(kFromEnd, 0);
        return Stands() ? kResultFail : kResultOk;
    });
}

HRESULT CQSIAttributeIterator::AtEnd(bool* at_end) {
    return HandOutNumber(at_end, [&] { return !Stands(); });
}

}  // namespace fixtop
