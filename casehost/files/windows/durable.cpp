#include "files/durable.h"

#include <windows.h>

#include <algorithm>

namespace casehost::files {

namespace {

constexpr std::size_t kMostAtOnce = std::size_t{1} << 30;

std::error_code LastError() {
    return {static_cast<int>(GetLastError()), std::system_category()};
}

std::error_code Write(HANDLE file, std::string_view text) {
    while (!text.empty()) {
        const DWORD wanted = static_cast<DWORD>(std::min(text.size(), kMostAtOnce));
        DWORD written = 0;
        if (!WriteFile(file, text.data(), wanted, &written, nullptr)) return LastError();
        text.remove_prefix(written);
    }
    return FlushFileBuffers(file) ? std::error_code() : LastError();
}

}  // namespace

// Permissions come from the folder.
std::error_code WriteThrough(const std::filesystem::path& path, std::string_view text,
                             const std::filesystem::path&) {
    HANDLE file = CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                              FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        const bool taken = GetLastError() == ERROR_FILE_EXISTS;
        return taken ? std::make_error_code(std::errc::file_exists) : LastError();
    }
    const std::error_code error = Write(file, text);
    CloseHandle(file);
    if (error) DeleteFileW(path.c_str());
    return error;
}

std::error_code Replace(const std::filesystem::path& from, const std::filesystem::path& to) {
    constexpr DWORD kHow = MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH;
    return MoveFileExW(from.c_str(), to.c_str(), kHow) ? std::error_code() : LastError();
}

}  // namespace casehost::files
