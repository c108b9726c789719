// SPDX-License-Identifier: Apache-2.0
#include "automation/node_iterator.h"

#include "automation/member.h"

namespace fixtop {

CQSINodeIterator::CQSINodeIterator(Ref<FIIteratorBase> children, NodeMaker make_node)
    : children_(std::move(children)), make_node_(make_node) {}

HRESULT CQSINodeIterator::GetNameBuffer(std::int32_t size, char* buffer) {
    if (!buffer) return kResultPointer;
    return RunMember([&] {
        FIValue name;
        const bool stands = !IsPastLast();
        if (stands) children_->GetName(name);
        name.CopyText(buffer, size);
        return stands ? kResultOk : kResultFalse;
    });
}

HRESULT CQSINodeIterator::GetName(char** name) {
    return HandOutText(name, [&](FIValue& out) {
        if (!IsPastLast()) children_->GetName(out);
    });
}

HRESULT CQSINodeIterator::GetNode(IQSINode** node) {
    return HandOutObject(node, [&]() -> IQSINode* {
        if (IsPastLast()) return nullptr;
        return make_node_(Ref<FIIteratorBase>::Adopt(children_->Copy()));
    });
}

bool CQSINodeIterator::StepOn() {
    if (IsPastLast()) return false;
    past_last_ = !children_->Next();
    return !past_last_;
}

bool CQSINodeIterator::StepBack() {
    if (!IsPastLast()) return children_->Prev();
    past_last_ = !children_->Last();
    return !past_last_;
}

HRESULT CQSINodeIterator::Move(std::int32_t count, std::int32_t* moved) {
    if (!moved) return kResultPointer;
    *moved = 0;
    return RunMember([&] {
        const int step = count < 0 ? -1 : 1;
        while (*moved != count && (count < 0 ? StepBack() : StepOn())) *moved += step;
        return *moved == count ? kResultOk : kResultFalse;
    });
}

HRESULT CQSINodeIterator::Reset() {
    return RunMember([&] {
        past_last_ = !children_->First();
        return past_last_ ? kResultFail : kResultOk;
    });
}

HRESULT CQSINodeIterator::ToEnd() {
    return RunMember([&] {
        past_last_ = true;
        return children_->Last() ? kResultOk : kResultFail;
    });
}

HRESULT CQSINodeIterator::Close() {
    return RunMember([] { return kResultOk; });
}

HRESULT CQSINodeIterator::AtEnd(bool* at_end) {
    return HandOutNumber(at_end, [&] { return IsPastLast(); });
}

}  // namespace fixtop
