// Case files of our own on the disk.

#include "casehost/case_file.h"

#include <cerrno>
#include <filesystem>
#include <fstream>

#include "casehost/file_path.h"
#include "files/durable.h"

namespace casehost {

ReadResult ReadCaseFile(const std::string& path) {
    std::error_code error;
    const auto size = std::filesystem::file_size(FilePath(path), error);
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

namespace {

// Where a name leads: a link stays, the file behind it is replaced.
std::filesystem::path BehindLinks(const std::filesystem::path& path) {
    std::error_code error;
    const std::filesystem::path file = std::filesystem::canonical(path, error);
    return !error && std::filesystem::is_symlink(path, error) ? file : path;
}

// Replacing a file needs no right to write into it; who took that right away wants to keep it.
std::error_code WhyKept(const std::filesystem::path& target) {
    std::error_code ignored;
    if (!std::filesystem::is_regular_file(target, ignored)) return {};
    if (std::ofstream(target, std::ios::app)) return {};
    return {errno, std::generic_category()};
}

constexpr int kMostBeside = 100;

// Writes a file of its own beside the target: whoever saves there at the same time has another one,
// and a file that already has the name stays.
std::error_code WriteBeside(const std::filesystem::path& target, const std::string& text,
                            std::filesystem::path& beside) {
    std::error_code error;
    for (int number = 0; number < kMostBeside; ++number) {
        beside = target;
        beside += (number == 0 ? "" : "." + std::to_string(number)) + ".part";
        error = files::WriteThrough(beside, text, target);
        if (error != std::errc::file_exists) break;
    }
    return error;
}

}  // namespace

SaveResult WriteCaseFile(const CaseData& data, const std::string& path) {
    const std::string text = CaseToText(data);
    const std::filesystem::path target = BehindLinks(FilePath(path));
    if (const std::error_code error = WhyKept(target)) {
        return {false, {path, "can't be written: " + error.message()}};
    }
    std::filesystem::path beside;
    if (const std::error_code error = WriteBeside(target, text, beside)) {
        return {false, {path, "can't be written: " + error.message()}};
    }
    const std::error_code error = files::Replace(beside, target);
    if (!error) return {true, {}};
    std::error_code ignored;
    std::filesystem::remove(beside, ignored);
    return {false, {path, "can't be replaced: " + error.message()}};
}

void RegisterCaseFiles() {
    RegisterReader(".json", ReadCaseFile);
    RegisterWriter(".json", WriteCaseFile);
}

}  // namespace casehost
