// SPDX-License-Identifier: Apache-2.0
#include "files/durable.h"

#include <windows.h>

#include <algorithm>
#include <optional>

namespace fixtop::casehost::files {

namespace {

constexpr std::size_t kMostAtOnce = std::size_t{1} << 30;
constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

std::error_code LastError() {
    return {static_cast<int>(GetLastError()), std::system_category()};
}

class Handle {
 public:
    explicit Handle(HANDLE handle) : handle_(handle) {}
    ~Handle() {
        if (IsOpen()) CloseHandle(handle_);
    }
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;

    HANDLE Get() const { return handle_; }
    bool IsOpen() const { return handle_ != INVALID_HANDLE_VALUE; }

 private:
    HANDLE handle_;
};

// A file that is to go does so when its last handle is closed, whatever closes it.
void LetGo(HANDLE file, bool go) {
    FILE_DISPOSITION_INFO info{static_cast<BOOLEAN>(go)};
    SetFileInformationByHandle(file, FileDispositionInfo, &info, sizeof info);
}

}  // namespace

// The file goes with the process that ends before it has taken its place. One that is left all the
// same, by a machine that failed, is in use as long as its handle is open.
struct NewFile::State {
    explicit State(std::filesystem::path its_target) : target(std::move(its_target)) {}

    std::filesystem::path target;
    std::filesystem::path name;  // empty once the file has the target's
    std::optional<Handle> file;
};

NewFile::NewFile(std::filesystem::path target)
    : state_(std::make_unique<State>(std::move(target))) {}

NewFile::~NewFile() {
    state_->file.reset();
    if (!state_->name.empty()) DeleteFileW(state_->name.c_str());
}

// Rights come from the folder, as those of the target did.
std::error_code NewFile::Open(const std::filesystem::path& name) {
    // Once there is a file, no memory is needed to keep its name.
    std::filesystem::path made = name;
    state_->file.emplace(CreateFileW(name.c_str(), GENERIC_WRITE | DELETE, kShareAll, nullptr,
                                     CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!state_->file->IsOpen()) {
        const bool taken = GetLastError() == ERROR_FILE_EXISTS;
        return taken ? std::make_error_code(std::errc::file_exists) : LastError();
    }
    LetGo(state_->file->Get(), true);
    state_->name = std::move(made);
    return {};
}

std::error_code NewFile::Append(std::string_view text) {
    while (!text.empty()) {
        const DWORD wanted = static_cast<DWORD>(std::min(text.size(), kMostAtOnce));
        DWORD written = 0;
        if (!WriteFile(state_->file->Get(), text.data(), wanted, &written, nullptr)) {
            return LastError();
        }
        text.remove_prefix(written);
    }
    return {};
}

std::error_code NewFile::Sync() {
    return FlushFileBuffers(state_->file->Get()) ? std::error_code() : LastError();
}

std::error_code NewFile::TakePlace() {
    constexpr DWORD kHow = MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH;
    LetGo(state_->file->Get(), false);
    if (!MoveFileExW(state_->name.c_str(), state_->target.c_str(), kHow)) return LastError();
    state_->name.clear();
    state_->file.reset();
    return {};
}

// A file that anybody has open for writing can't be opened by one who shares it with nobody.
void RemoveUnused(const std::filesystem::path& name) {
    const DWORD attributes = GetFileAttributesW(name.c_str());
    constexpr DWORD kNoFile = FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_REPARSE_POINT;
    if (attributes == INVALID_FILE_ATTRIBUTES || attributes & kNoFile) return;
    const Handle file(CreateFileW(name.c_str(), DELETE, 0, nullptr, OPEN_EXISTING,
                                  FILE_FLAG_OPEN_REPARSE_POINT, nullptr));
    if (file.IsOpen()) LetGo(file.Get(), true);
}

bool IsDevice(const std::filesystem::path& name) {
    const Handle file(CreateFileW(name.c_str(), 0, kShareAll, nullptr, OPEN_EXISTING,
                                  FILE_FLAG_BACKUP_SEMANTICS, nullptr));
    return file.IsOpen() && GetFileType(file.Get()) != FILE_TYPE_DISK;
}

}  // namespace fixtop::casehost::files
