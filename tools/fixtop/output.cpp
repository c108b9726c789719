// SPDX-License-Identifier: Apache-2.0
#include "output.h"

#include <cerrno>
#include <system_error>

namespace fixtop {

namespace {

// Not every platform tells a reader that went away by an error of its own.
bool ReaderIsGone(int error) {
    return error == EPIPE || error == EINVAL;
}

}  // namespace

void Output::Line(std::string_view text) {
    Data(std::string(text) + '\n');
}

void FileOutput::Data(std::string_view text) {
    const bool written = std::fwrite(text.data(), 1, text.size(), data_) == text.size();
    if (written && std::fflush(data_) == 0) return;
    const int error = errno;
    if (ReaderIsGone(error)) throw ClosedPipe();
    throw std::system_error(error, std::generic_category(), "the output can't be written");
}

void FileOutput::Note(std::string_view text) {
    const std::string line = std::string(text) + '\n';
    std::fwrite(line.data(), 1, line.size(), notes_);
    std::fflush(notes_);
}

void RecordingOutput::Data(std::string_view text) {
    recorded_ += text;
    next_.Data(text);
}

void RecordingOutput::Note(std::string_view text) {
    recorded_ += std::string(text) + '\n';
    next_.Note(text);
}

}  // namespace fixtop
