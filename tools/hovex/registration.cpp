// SPDX-License-Identifier: Apache-2.0
#include "registration.h"

#include <windows.h>
// The component services follow the base header.
#include <objbase.h>

#include <algorithm>
#include <array>
#include <iterator>
#include <vector>

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

std::wstring NameKey() {
    return std::wstring(kClasses) + kName;
}

// Each behind the key in which it stands.
std::vector<Entry> NameEntries() {
    return {{NameKey(), kTitle}, {NameKey() + L"\\CLSID", ClassId()}};
}
std::vector<Entry> ClassEntries() {
    const std::wstring by_id = std::wstring(kClasses) + L"CLSID\\" + ClassId();
    return {{by_id, kTitle},
            {by_id + L"\\ProgID", kName},
            {by_id + L"\\LocalServer32", L'"' + OwnFile() + L'"'}};
}

LSTATUS Write(const Entry& entry) {
    const auto size = static_cast<DWORD>((entry.value.size() + 1) * sizeof(wchar_t));
    return RegSetKeyValueW(Root(), entry.key.c_str(), nullptr, REG_SZ, entry.value.c_str(), size);
}

bool IsEmpty(const std::wstring& key) {
    HKEY open = nullptr;
    if (RegOpenKeyExW(Root(), key.c_str(), 0, KEY_READ, &open) != ERROR_SUCCESS) return false;
    DWORD keys = 1, values = 1;
    const LSTATUS status = RegQueryInfoKeyW(open, nullptr, nullptr, nullptr, &keys, nullptr,
                                            nullptr, &values, nullptr, nullptr, nullptr, nullptr);
    RegCloseKey(open);
    return status == ERROR_SUCCESS && keys == 0 && values == 0;
}

// What others have put into the key stays, and with it the key.
LSTATUS Remove(const Entry& entry) {
    const LSTATUS status = RegDeleteKeyValueW(Root(), entry.key.c_str(), nullptr);
    if (status != ERROR_SUCCESS && status != ERROR_FILE_NOT_FOUND) return status;
    return IsEmpty(entry.key) ? RegDeleteKeyW(Root(), entry.key.c_str()) : ERROR_SUCCESS;
}

// The name may stand for a class of somebody else by now.
bool IsNameOurs() {
    std::array<wchar_t, 40> text = {};
    DWORD size = sizeof text;
    const LSTATUS status = RegGetValueW(Root(), (NameKey() + L"\\CLSID").c_str(), nullptr,
                                        RRF_RT_REG_SZ, nullptr, text.data(), &size);
    return status != ERROR_SUCCESS || ClassId() == text.data();
}

std::string ForEach(const std::vector<Entry>& entries, LSTATUS (*change)(const Entry& entry)) {
    for (const Entry& entry : entries) {
        const LSTATUS status = change(entry);
        if (status != ERROR_SUCCESS) return MessageOf(status, entry.key);
    }
    return "";
}

std::vector<Entry> Joined(std::vector<Entry> entries, const std::vector<Entry>& more) {
    entries.insert(entries.end(), more.begin(), more.end());
    return entries;
}

}  // namespace

std::string Register() {
    return ForEach(Joined(NameEntries(), ClassEntries()), Write);
}

std::string Unregister() {
    std::vector<Entry> entries =
        IsNameOurs() ? Joined(NameEntries(), ClassEntries()) : ClassEntries();
    std::reverse(entries.begin(), entries.end());
    return ForEach(entries, Remove);
}

}  // namespace fixtop::hovex
