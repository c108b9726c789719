// SPDX-License-Identifier: Apache-2.0
#include "automation/com/active_array_windows.h"

#include "automation/q_node.h"
#include "framework/path/path_names.h"
#include "platform/windows/wide_text.h"

namespace fixtop {

namespace {

// What the last function of the interface answers.
InterfaceId ItemIdOf(ITypeInfo& type) {
    const std::vector<MemberRecord> records = ReadMemberRecords(type);
    return records.empty() ? InterfaceId{} : records.back().id;
}

}  // namespace

HRESULT MakeFace(Ref<FIIteratorBase> place, const InterfaceId& id, void** out) {
    const auto node = Ref<IQSINode>::Adopt(CQSINode::Make(std::move(place)));
    return node->QueryInterface(id, out);
}

ActiveArray::ActiveArray(Ref<FIIteratorBase> node, std::string name, Ref<ITypeInfo> type)
    : node_(std::move(node)),
      name_(std::move(name)),
      dispatch_(std::move(type)),
      id_(AsInterfaceId(IdOf(dispatch_.Info()))),
      item_id_(ItemIdOf(dispatch_.Info())) {}

void* ActiveArray::Find(const InterfaceId& id) {
    const bool is_known = id == id_ || id == IUnknown::kId || id == DispatchMembers::kId;
    return is_known ? static_cast<ListMembers*>(this) : nullptr;
}

HRESULT ActiveArray::Invoke(DISPID number, const InterfaceId&, LCID, WORD flags,
                            DISPPARAMS* arguments, VARIANT* result, EXCEPINFO* exception,
                            UINT* place) {
    const auto self = Ref<ActiveArray>::Share(this);
    return dispatch_.Invoke(*this, number, flags, arguments, result, exception, place);
}

HRESULT ActiveArray::Count(LONG* number) {
    return HandOutNumber(number, [&] {
        LONG found = 0;
        FIValue name;
        const auto it = Ref<FIIteratorBase>::Adopt(node_->Copy());
        for (bool on = it->DownFirst(); on; on = it->Next()) {
            it->GetName(name);
            if (name.ToText() == name_) ++found;
        }
        return found;
    });
}

std::string ActiveArray::PathOf(const VARIANT& index) const {
    VARIANT read;
    VariantInit(&read);
    if (V_VT(&index) == VT_BSTR) {
        const BSTR key = V_BSTR(&index);
        return name_ + "(" + WrittenKey(Narrow({key, SysStringLen(key)})) + ")";
    }
    if (FAILED(VariantChangeType(&read, const_cast<VARIANT*>(&index), 0, VT_I4))) return {};
    return V_I4(&read) < 0 ? std::string() : name_ + "#" + std::to_string(V_I4(&read));
}

HRESULT ActiveArray::ItemAt(VARIANT index, void** item) {
    if (!item) return kResultPointer;
    *item = nullptr;
    return RunMember([&] {
        const std::string path = PathOf(index);
        auto place = Ref<FIIteratorBase>::Adopt(node_->Copy());
        if (path.empty() || !place->SeekPath(FIValue(path.c_str()))) return kResultOk;
        return MakeFace(std::move(place), item_id_, item);
    });
}

}  // namespace fixtop
