// SPDX-License-Identifier: Apache-2.0
#include "registration.h"

#include <windows.h>
// The component services follow the base header.
#include <objbase.h>

#include <array>
#include <iterator>

#include "class_factory.h"
#include "dispatch/text.h"

namespace fixtop::hovex {

namespace {

constexpr wchar_t kName[] = L"Fixtop.Case";
constexpr wchar_t kTitle[] = L"Fixtop case";
constexpr wchar_t kClasses[] = L"Software\\Classes\\";

HKEY Root() {
    const HMODULE system = GetModuleHandleW(L"ntdll.dll");
    const bool is_wine = system && GetProcAddress(system, "wine_get_version");
    return is_wine ? HKEY_LOCAL_MACHINE : HKEY_CURRENT_USER;
}

std::wstring ClassId() {
    std::array<wchar_t, 40> text = {};
    StringFromGUID2(kCaseClass, text.data(), static_cast<int>(text.size()));
    return text.data();
}

std::wstring OwnFile() {
    std::wstring path(MAX_PATH, L'\0');
    for (;;) {
        const DWORD size = static_cast<DWORD>(path.size());
        const DWORD length = GetModuleFileNameW(nullptr, path.data(), size);
        if (length < size) return path.substr(0, length);
        path.resize(path.size() * 2);
    }
}

std::string MessageOf(LSTATUS status, const std::wstring& key) {
    wchar_t* text = nullptr;
    FormatMessageW(
        FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS,
        nullptr, static_cast<DWORD>(status), 0, reinterpret_cast<wchar_t*>(&text), 0, nullptr);
    std::wstring message = text ? text : L"error " + std::to_wstring(status);
    LocalFree(text);
    message.erase(message.find_last_not_of(L"\r\n") + 1);
    return Utf8(key + L": " + message);
}

struct Entry {
    std::wstring key;
    std::wstring value;
};

LSTATUS Write(const Entry& entry) {
    const auto size = static_cast<DWORD>((entry.value.size() + 1) * sizeof(wchar_t));
    return RegSetKeyValueW(Root(), entry.key.c_str(), nullptr, REG_SZ, entry.value.c_str(), size);
}

}  // namespace

std::string Register() {
    const std::wstring by_name = std::wstring(kClasses) + kName;
    const std::wstring by_id = std::wstring(kClasses) + L"CLSID\\" + ClassId();
    const Entry entries[] = {
        {by_name, kTitle},
        {by_name + L"\\CLSID", ClassId()},
        {by_id, kTitle},
        {by_id + L"\\ProgID", kName},
        {by_id + L"\\LocalServer32", L'"' + OwnFile() + L'"'},
    };
    for (const Entry& entry : entries) {
        const LSTATUS status = Write(entry);
        if (status != ERROR_SUCCESS) return MessageOf(status, entry.key);
    }
    return "";
}

std::string Unregister() {
    for (const std::wstring& key :
         {std::wstring(kClasses) + kName, std::wstring(kClasses) + L"CLSID\\" + ClassId()}) {
        const LSTATUS status = RegDeleteTreeW(Root(), key.c_str());
        if (status != ERROR_SUCCESS && status != ERROR_FILE_NOT_FOUND) {
            return MessageOf(status, key);
        }
    }
    return "";
}

}  // namespace fixtop::hovex
