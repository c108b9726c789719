// SPDX-License-Identifier: Apache-2.0
#include "automation/com/member_records_windows.h"

#include <ranges>

#include "automation/typed/member_table.h"
#include "platform/windows/wide_text.h"

namespace fixtop {

namespace {

// Of an interface that leads in a circle no end would be found.
constexpr std::size_t kMostBases = 100;

Ref<ITypeInfo> Referred(ITypeInfo& info, HREFTYPE reference) {
    return TakeFromSystem<ITypeInfo>(
        [&](ITypeInfo** out) { return info.GetRefTypeInfo(reference, out); });
}

Ref<ITypeInfo> BaseOf(ITypeInfo& info) {
    HREFTYPE reference = 0;
    const bool has_base = SUCCEEDED(info.GetRefTypeOfImplType(0, &reference));
    return has_base ? Referred(info, reference) : Ref<ITypeInfo>();
}

// A function of an interface, for as long as this lives.
class Function {
 public:
    Function(ITypeInfo& info, UINT place) : info_(info) {
        if (FAILED(info.GetFuncDesc(place, &described_))) described_ = nullptr;
    }
    Function(const Function&) = delete;
    Function& operator=(const Function&) = delete;
    ~Function() {
        if (described_) info_.ReleaseFuncDesc(described_);
    }
    std::string Name() const {
        SystemText name;
        if (described_) {
            info_.GetDocumentation(described_->memid, name.Out(), nullptr, nullptr, nullptr);
        }
        return Narrow(name.View());
    }
    // The interface to which the last parameter leads; null when it is none.
    Ref<ITypeInfo> Result() const {
        if (!described_ || described_->cParams < 1) return {};
        const TYPEDESC* type = &described_->lprgelemdescParam[described_->cParams - 1].tdesc;
        while (type->vt == VT_PTR) type = type->lptdesc;
        return type->vt == VT_USERDEFINED ? Referred(info_, type->hreftype) : Ref<ITypeInfo>();
    }

 private:
    ITypeInfo& info_;
    FUNCDESC* described_ = nullptr;
};

UINT CountFunctions(ITypeInfo& info) {
    TYPEATTR* facts = nullptr;
    if (FAILED(info.GetTypeAttr(&facts))) return 0;
    const UINT count = facts->cFuncs;
    info.ReleaseTypeAttr(facts);
    return count;
}

MemberRecord ReadRecord(ITypeInfo& info, UINT place) {
    const Function function(info, place);
    MemberRecord record;
    record.name = function.Name();
    record.result = function.Result();
    if (!record.result) return record;
    record.id = AsInterfaceId(IdOf(*record.result));
    record.is_list = NameOf(*record.result).find(L"Array") != std::wstring::npos;
    return record;
}

}  // namespace

std::vector<Ref<ITypeInfo>> WithBases(ITypeInfo& info) {
    std::vector<Ref<ITypeInfo>> found;
    auto next = Ref<ITypeInfo>::Share(&info);
    while (next && found.size() < kMostBases && !IsEqualGUID(IdOf(*next), kDispatchId)) {
        found.push_back(next);
        next = BaseOf(*next);
    }
    return found;
}

std::vector<MemberRecord> ReadMemberRecords(ITypeInfo& info) {
    std::vector<MemberRecord> records;
    const std::vector<Ref<ITypeInfo>> interfaces = WithBases(info);
    for (const Ref<ITypeInfo>& each : std::views::reverse(interfaces)) {
        const UINT functions = CountFunctions(*each);
        for (UINT i = 0; i < functions && records.size() < MemberTable::kMostMembers; ++i) {
            records.push_back(ReadRecord(*each, i));
        }
    }
    return records;
}

}  // namespace fixtop
