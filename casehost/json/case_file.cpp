// Case files of our own on the disk.

#include "casehost/case_file.h"

#include <cerrno>
#include <filesystem>
#include <fstream>

#include "casehost/file_path.h"
#include "files/durable.h"

namespace casehost {

namespace fs = std::filesystem;

namespace {

// The file for which a name stands: links stay, and what they lead to is replaced.
fs::path BehindLinks(const fs::path& name) {
    std::error_code error;
    const fs::path target = fs::is_symlink(name, error) ? fs::canonical(name, error) : name;
    return error ? name : target;
}

// Replacing a file needs no right to write into it; who took that right away wants to keep it.
std::error_code WhyKept(const fs::path& target) {
    std::error_code ignored;
    if (!fs::is_regular_file(target, ignored) || std::ofstream(target, std::ios::app)) return {};
    return {errno, std::generic_category()};
}

void CopyPermissions(const fs::path& from, const fs::path& to) {
    std::error_code error;
    const fs::file_status status = fs::status(from, error);
    if (fs::is_regular_file(status)) fs::permissions(to, status.permissions(), error);
}

}  // namespace

ReadResult ReadCaseFile(const std::string& path) {
    std::error_code error;
    const auto size = fs::file_size(FilePath(path), error);
    if (error) return {nullptr, {{path, "can't be read: " + error.message()}}};
    if (size > kMaxCaseFileBytes) {
        return {nullptr,
                {{path, "larger than " + std::to_string(kMaxCaseFileBytes >> 20) + " MB"}}};
    }
    std::ifstream file(FilePath(path), std::ios::binary);
    if (!file.is_open()) {
        return {nullptr, {{path, "can't be read: " + std::generic_category().message(errno)}}};
    }
    std::string text(static_cast<std::size_t>(size), '\0');
    if (!file.read(text.data(), static_cast<std::streamsize>(size))) {
        return {nullptr, {{path, "can't be read to its end"}}};
    }
    return ReadCaseText(path, text);
}

SaveResult WriteCaseFile(const CaseData& data, const std::string& path) {
    const fs::path target = BehindLinks(FilePath(path));
    if (const std::error_code error = WhyKept(target)) {
        return {false, {path, "can't be written: " + error.message()}};
    }
    fs::path beside = target;
    beside += ".part";
    if (const std::error_code error = files::WriteThrough(beside, CaseToText(data))) {
        return {false, {path, "can't be written: " + error.message()}};
    }
    CopyPermissions(target, beside);
    const std::error_code error = files::Replace(beside, target);
    if (!error) return {true, {}};
    std::error_code ignored;
    fs::remove(beside, ignored);
    return {false, {path, "can't be replaced: " + error.message()}};
}

void RegisterCaseFiles() {
    RegisterReader(".json", ReadCaseFile);
    RegisterWriter(".json", WriteCaseFile);
}

}  // namespace casehost
