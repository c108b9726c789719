// SPDX-License-Identifier: Apache-2.0
#include "automation/com/load_types_windows.h"

#include "automation/com/type_library.h"
#include "platform/windows/own_module.h"
#include "platform/windows/wide_text.h"

namespace fixtop {

namespace {

Ref<ITypeLib> Load(const std::wstring& file) {
    return TakeFromSystem<ITypeLib>(
        [&](ITypeLib** out) { return LoadTypeLibEx(file.c_str(), REGKIND_NONE, out); });
}

// Of this module, with the separator at its end; empty when the system does not tell.
std::wstring OwnFolder() {
    wchar_t path[MAX_PATH] = L"";
    const DWORD length = GetModuleFileNameW(OwnModule(), path, MAX_PATH);
    if (length >= MAX_PATH) return {};
    const std::wstring_view file(path, length);
    return std::wstring(file.substr(0, file.find_last_of(L"\\/") + 1));
}

}  // namespace

void* LoadTypeLibrary(const std::string& file) {
    const auto name = Widen(file);
    if (!name) return nullptr;
    Ref<ITypeLib> library;
    if (name->find_first_of(L"\\/:") == std::wstring::npos) library = Load(OwnFolder() + *name);
    if (!library) library = Load(*name);
    return library.Detach();
}

Ref<ITypeInfo> FindType(ITypeLib& library, const std::wstring& name) {
    std::wstring sought = name;
    ITypeInfo* found[2] = {};
    MEMBERID members[2] = {};
    USHORT count = 2;
    if (FAILED(library.FindName(sought.data(), 0, found, members, &count))) return {};
    const auto first = Ref<ITypeInfo>::Adopt(found[0]), second = Ref<ITypeInfo>::Adopt(found[1]);
    return count == 1 && members[0] == MEMBERID_NIL ? first : Ref<ITypeInfo>();
}

GUID IdOf(ITypeInfo& info) {
    TYPEATTR* facts = nullptr;
    if (FAILED(info.GetTypeAttr(&facts))) return kNoId;
    const GUID id = facts->guid;
    info.ReleaseTypeAttr(facts);
    return id;
}

std::wstring NameOf(ITypeInfo& info) {
    SystemText name;
    if (FAILED(info.GetDocumentation(MEMBERID_NIL, name.Out(), nullptr, nullptr, nullptr))) {
        return {};
    }
    return std::wstring(name.View());
}

}  // namespace fixtop
