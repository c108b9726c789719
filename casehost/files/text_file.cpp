// SPDX-License-Identifier: Apache-2.0
#include "casehost/text_file.h"

#include <cerrno>
#include <filesystem>
#include <fstream>

#include "casehost/file_path.h"
#include "files/draft.h"

namespace fixtop::casehost {

namespace {

// Where a name leads: a link stays, and the file behind it is replaced, or made.
std::filesystem::path BehindLinks(std::filesystem::path path, std::error_code& error) {
    constexpr int kMostLinks = 40;
    std::error_code leads_nowhere;
    for (int links = 0; std::filesystem::is_symlink(path, leads_nowhere); ++links) {
        std::filesystem::path file = std::filesystem::canonical(path, leads_nowhere);
        if (!leads_nowhere) return file;
        if (links == kMostLinks) {
            error = std::make_error_code(std::errc::too_many_symbolic_link_levels);
            break;
        }
        const std::filesystem::path next = std::filesystem::read_symlink(path, error);
        if (error) break;
        path = path.parent_path() / next;
    }
    return path;
}

// Replacing a file needs no right to write into it; who took that right away wants to keep it.
std::error_code WhyKept(const std::filesystem::path& target) {
    std::error_code ignored;
    if (!std::filesystem::is_regular_file(target, ignored)) return {};
    if (std::ofstream(target, std::ios::app)) return {};
    return {errno, std::generic_category()};
}

}  // namespace

std::optional<std::string> ReadTextFile(const std::string& path, std::size_t limit,
                                        std::string& problem) {
    const auto failed = [&](std::string why) {
        problem = std::move(why);
        return std::nullopt;
    };
    std::error_code error;
    const auto size = std::filesystem::file_size(FilePath(path), error);
    if (error) return failed("can't be read: " + error.message());
    if (size > limit) return failed("larger than " + std::to_string(limit >> 20) + " MB");
    std::ifstream file(FilePath(path), std::ios::binary);
    if (!file.is_open()) {
        return failed("can't be read: " + std::generic_category().message(errno));
    }
    std::string text(static_cast<std::size_t>(size), '\0');
    if (!file.read(text.data(), static_cast<std::streamsize>(size))) {
        return failed("can't be read to its end");
    }
    return text;
}

std::string WriteTextFile(const std::string& path, std::string_view text) {
    return WriteTextFile(path, [text](const TextTaker& take) { take(text); });
}

std::string WriteTextFile(const std::string& path, const TextMaker& make) {
    constexpr char kNotWritten[] = "can't be written: ";
    std::error_code error;
    const std::filesystem::path target = BehindLinks(FilePath(path), error);
    if (!error && files::IsDevice(target)) return std::string(kNotWritten) + "not a file";
    if (!error) error = WhyKept(target);
    if (error) return kNotWritten + error.message();
    files::RemoveLeftDrafts(target);
    files::NewFile draft(target);
    error = files::OpenDraft(draft, target);
    if (!error) {
        make([&](std::string_view piece) {
            if (!error) error = draft.Append(piece);
        });
    }
    if (!error) error = draft.Sync();
    if (error) return kNotWritten + error.message();
    error = draft.TakePlace();
    return error ? "can't be replaced: " + error.message() : "";
}

}  // namespace fixtop::casehost
