// SPDX-License-Identifier: Apache-2.0
#include "automation/com/type_library.h"

#include <map>
#include <vector>

#include "automation/com/load_types_windows.h"
#include "automation/com/system_types_windows.h"
#include "automation/typed/type_id.h"
#include "diagnostics/memory_guard.h"
#include "platform/windows/wide_text.h"

namespace fixtop {

namespace {

// The system counts the interfaces of the library that it makes, so that two of one program differ.
int g_libraries_made = 0;

// No interface is told to be dual: the system counts the places of a derived one wrongly then.
constexpr UINT kInterfaceFlags = TYPEFLAG_FOLEAUTOMATION | TYPEFLAG_FDISPATCHABLE;
constexpr MEMBERID kCount = 1;
constexpr MEMBERID kItemAt = DISPID_VALUE;

std::wstring Wide(const std::string& text) {
    return Widen(text).value_or(std::wstring());
}

bool Done(::HRESULT result) {
    return SUCCEEDED(result);
}

TYPEDESC Plain(VARTYPE type) {
    TYPEDESC made{};
    made.vt = type;
    return made;
}

TYPEDESC Named(HREFTYPE reference) {
    TYPEDESC made = Plain(VT_USERDEFINED);
    made.hreftype = reference;
    return made;
}

// To what stands as long as the result.
TYPEDESC PointerTo(TYPEDESC& type) {
    TYPEDESC made = Plain(VT_PTR);
    made.lptdesc = &type;
    return made;
}

ELEMDESC Parameter(const TYPEDESC& type, USHORT flags) {
    ELEMDESC made{};
    made.tdesc = type;
    made.paramdesc.wParamFlags = flags;
    return made;
}

constexpr USHORT kAnswer = PARAMFLAG_FOUT | PARAMFLAG_FRETVAL;

// One interface that is being made.
struct Draft {
    Ref<ICreateTypeInfo> made;
    Ref<ITypeInfo> info;
    UINT functions = 0;

    // What this interface calls another one by; false when the system refuses it.
    bool Refer(ITypeInfo* to, HREFTYPE& reference) const {
        return to && Done(made->AddRefTypeInfo(to, &reference));
    }
    bool BaseOn(ITypeInfo* base) const {
        HREFTYPE reference = 0;
        return Refer(base, reference) && Done(made->AddImplType(0, reference));
    }
    bool AddFunction(MEMBERID id, INVOKEKIND kind, std::vector<ELEMDESC> parameters,
                     std::vector<std::wstring> names) {
        FUNCDESC function{};
        function.memid = id;
        function.funckind = FUNC_PUREVIRTUAL;
        function.invkind = kind;
        function.callconv = CC_STDCALL;
        function.cParams = static_cast<SHORT>(parameters.size());
        function.lprgelemdescParam = parameters.data();
        function.elemdescFunc.tdesc.vt = VT_HRESULT;
        std::vector<wchar_t*> written;
        for (std::wstring& each : names) written.push_back(each.data());
        if (!Done(made->AddFuncDesc(functions, &function))) return false;
        return Done(made->SetFuncAndParamNames(functions++, written.data(),
                                               static_cast<UINT>(written.size())));
    }
};

class LibraryDraft {
 public:
    LibraryDraft(const MemberTable& table, int major, int minor)
        : table_(table), major_(static_cast<WORD>(major)), minor_(static_cast<WORD>(minor)) {}

    bool Write(const std::string& file) {
        const Ref<ITypeInfo> node = TypeOfFile("qsicom.dll", L"IQSINode");
        const Ref<ITypeInfo> dispatch = TypeOfFile("stdole2.tlb", L"IDispatch");
        if (!node || !dispatch || !Begin(Wide(file))) return false;
        for (const TypedInterface* each : table_.Interfaces()) {
            Announce(each->name);
            Announce(each->ArrayName());
        }
        for (const TypedInterface* each : table_.Interfaces()) {
            MakeInterface(*each, *node);
            MakeArray(*each, *dispatch);
        }
        return Done(library_->SaveAllChanges());
    }

 private:
    static Ref<ITypeInfo> TypeOfFile(const char* file, const wchar_t* name) {
        const auto library = Ref<ITypeLib>::Adopt(static_cast<ITypeLib*>(LoadTypeLibrary(file)));
        return library ? FindType(*library, name) : Ref<ITypeInfo>();
    }
    bool Begin(const std::wstring& file) {
        library_ = TakeFromSystem<ICreateTypeLib2>(
            [&](ICreateTypeLib2** out) { return CreateTypeLib2(SYS_WIN64, file.c_str(), out); });
        InterfaceId id = IdOfType("CCDMLib", major_, minor_);
        id.data1 += static_cast<std::uint32_t>(g_libraries_made++);
        std::wstring name = L"CCDMLib", help = L"QSI-CCDM object types";
        return library_ && Done(library_->SetName(name.data())) &&
               Done(library_->SetDocString(help.data())) && Done(library_->SetLcid(0)) &&
               Done(library_->SetVersion(major_, minor_)) && Done(library_->SetGuid(AsGuid(id)));
    }
    // All stand before any is filled: classes refer to each other in circles.
    void Announce(const std::string& name) {
        Draft draft;
        draft.made = TakeFromSystem<ICreateTypeInfo>([&](ICreateTypeInfo** out) {
            return library_->CreateTypeInfo(Wide(name).data(), TKIND_INTERFACE, out);
        });
        if (!draft.made) return;
        draft.info = TakeFromSystem<ITypeInfo>([&](ITypeInfo** out) {
            return draft.made->QueryInterface(__uuidof(ITypeInfo), reinterpret_cast<void**>(out));
        });
        std::wstring help = Wide(name + " Interface");
        const bool stands = draft.info &&
                            Done(draft.made->SetGuid(AsGuid(IdOfType(name, major_, minor_)))) &&
                            Done(draft.made->SetTypeFlags(kInterfaceFlags)) &&
                            Done(draft.made->SetDocString(help.data())) &&
                            Done(draft.made->SetVersion(major_, minor_));
        if (stands) drafts_.emplace(name, std::move(draft));
    }
    ITypeInfo* Info(const std::string& name) const {
        const auto found = drafts_.find(name);
        return found == drafts_.end() ? nullptr : found->second.info.Get();
    }
    ITypeInfo* ResultOf(const TypedMember& member, ITypeInfo& node) const {
        switch (member.kind) {
            case TypedMember::Kind::kObject:
                return Info("I" + member.type_name);
            case TypedMember::Kind::kArray:
                return Info("I" + member.type_name + "Array");
            default:
                return &node;
        }
    }
    // What fails leaves the interface as far as it has come, with the numbers of the table.
    void MakeInterface(const TypedInterface& typed, ITypeInfo& node) {
        const auto found = drafts_.find(typed.name);
        if (found == drafts_.end()) return;
        Draft& draft = found->second;
        if (!draft.BaseOn(typed.base ? Info(typed.base->name) : &node)) return;
        MEMBERID id = typed.first_number + 1;
        for (const TypedMember& each : typed.members) {
            if (!AddProperty(draft, id++, each, ResultOf(each, node))) return;
        }
        draft.made->LayOut();
    }
    static bool AddProperty(Draft& draft, MEMBERID id, const TypedMember& member, ITypeInfo* of) {
        HREFTYPE reference = 0;
        if (!draft.Refer(of, reference)) return false;
        TYPEDESC named = Named(reference), object = PointerTo(named);
        const TYPEDESC out = PointerTo(object);
        return draft.AddFunction(id, INVOKE_PROPERTYGET, {Parameter(out, kAnswer)},
                                 {Wide(member.name), L"pOut"});
    }
    void MakeArray(const TypedInterface& typed, ITypeInfo& dispatch) {
        const auto found = drafts_.find(typed.ArrayName());
        if (found == drafts_.end()) return;
        Draft& draft = found->second;
        HREFTYPE reference = 0;
        if (!draft.BaseOn(&dispatch) || !draft.Refer(Info(typed.name), reference)) return;
        TYPEDESC number = Plain(VT_I4), named = Named(reference), object = PointerTo(named);
        const TYPEDESC number_out = PointerTo(number), out = PointerTo(object);
        const TYPEDESC index = Plain(VT_VARIANT);
        const bool added =
            draft.AddFunction(kCount, INVOKE_FUNC, {Parameter(number_out, kAnswer)},
                              {L"Count", L"pNumber"}) &&
            draft.AddFunction(kItemAt, INVOKE_FUNC,
                              {Parameter(index, PARAMFLAG_FIN), Parameter(out, kAnswer)},
                              {L"ItemAt", L"Index", L"pOut"});
        if (added) draft.made->LayOut();
    }

    const MemberTable& table_;
    const WORD major_;
    const WORD minor_;
    Ref<ICreateTypeLib2> library_;
    std::map<std::string, Draft> drafts_;
};

}  // namespace

HRESULT WriteTypeLibrary(const MemberTable& table, const std::string& file, int major, int minor) {
    return LibraryDraft(table, major, minor).Write(file) ? kResultOk : kResultFail;
}

}  // namespace fixtop
