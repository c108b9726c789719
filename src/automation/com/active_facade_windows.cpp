// SPDX-License-Identifier: Apache-2.0
#include "automation/com/active_facade_windows.h"

#include "automation/com/active_array_windows.h"

namespace fixtop {

ActiveFacade::ActiveFacade(IUnknown& node, Ref<FIIteratorBase> place, Ref<ITypeInfo> type)
    : node_(node),
      place_(std::move(place)),
      dispatch_(std::move(type)),
      id_(AsInterfaceId(IdOf(dispatch_.Info()))) {}

HRESULT ActiveFacade::QueryInterface(const InterfaceId& id, void** out) {
    const bool is_this = out && (id == id_ || id == DispatchMembers::kId);
    if (!is_this) return node_.QueryInterface(id, out);
    *out = nullptr;
    return RunMember([&] {
        AddRef();
        *out = static_cast<DispatchMembers*>(this);
        return kResultOk;
    });
}

const MemberRecord* ActiveFacade::Record(int number) {
    if (records_.empty()) records_ = ReadMemberRecords(dispatch_.Info());
    const bool is_member = number >= 0 && number < static_cast<int>(records_.size());
    return is_member ? &records_[static_cast<std::size_t>(number)] : nullptr;
}

HRESULT ActiveFacade::Invoke(DISPID number, const InterfaceId&, LCID, WORD flags,
                             DISPPARAMS* arguments, VARIANT* result, EXCEPINFO* exception,
                             UINT* place) {
    const auto self = Ref<ActiveFacade>::Share(this);
    // The system passes on what is given to a member without arguments to the object that it
    // answers, and a leaf has no member for that.
    const HRESULT checked = RunMember([&]() -> HRESULT {
        if (!arguments) return kResultPointer;
        const MemberRecord* record = Record(number - 1);
        if (!record) return DISP_E_MEMBERNOTFOUND;
        return arguments->cArgs > 0 && !record->is_list ? DISP_E_BADPARAMCOUNT : kResultOk;
    });
    if (checked != kResultOk) return checked;
    return dispatch_.Invoke(*this, number, flags, arguments, result, exception, place);
}

HRESULT ActiveFacade::GetMember(int number, void** out) {
    if (!out) return kResultPointer;
    *out = nullptr;
    return RunMember([&] {
        const MemberRecord* record = Record(number);
        return record ? MakeMember(*record, out) : kResultNotImplemented;
    });
}

HRESULT ActiveFacade::MakeMember(const MemberRecord& record, void** out) const {
    auto place = Ref<FIIteratorBase>::Adopt(place_->Copy());
    if (record.is_list) {
        const auto list =
            Ref<ActiveArray>::Adopt(new ActiveArray(std::move(place), record.name, record.result));
        return list->QueryInterface(record.id, out);
    }
    if (!place->SeekPath(FIValue(record.name.c_str()))) return kResultOk;
    return MakeFace(std::move(place), record.id, out);
}

}  // namespace fixtop
