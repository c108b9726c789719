// SPDX-License-Identifier: Apache-2.0
#include "output.h"

#include <cerrno>
#include <system_error>
#include <utility>

namespace fixtop {

namespace {

// A write call costs more than many lines that are made.
constexpr std::size_t kHeldBytes = std::size_t{1} << 16;

// Not every platform tells a reader that went away by an error of its own.
bool ReaderIsGone(int error) {
    return error == EPIPE || error == EINVAL;
}

}  // namespace

void Output::Line(std::string_view text) {
    Data(std::string(text) + '\n');
}

FileOutput::FileOutput(std::FILE* data, std::FILE* notes, bool at_once)
    : data_(data), notes_(notes), at_once_(at_once) {
    held_.reserve(kHeldBytes);
}

void FileOutput::TellLost() {
    const int error = std::exchange(lost_, 0);
    if (error == 0) return;
    if (ReaderIsGone(error)) throw ClosedPipe();
    throw std::system_error(error, std::generic_category(), "the output can't be written");
}

void FileOutput::Write(std::string_view text) {
    const bool is_out =
        std::fwrite(text.data(), 1, text.size(), data_) == text.size() && std::fflush(data_) == 0;
    if (!is_out && lost_ == 0) lost_ = errno;
}

void FileOutput::WriteHeld() {
    if (!held_.empty()) Write(held_);
    held_.clear();
}

void FileOutput::Data(std::string_view text) {
    if (held_.size() + text.size() > kHeldBytes) WriteHeld();
    if (text.size() > kHeldBytes) {
        Write(text);
    } else {
        held_ += text;
    }
    if (at_once_) WriteHeld();
    TellLost();
}

void FileOutput::Note(std::string_view text) {
    WriteHeld();
    const std::string line = std::string(text) + '\n';
    std::fwrite(line.data(), 1, line.size(), notes_);
    std::fflush(notes_);
}

void FileOutput::Flush() {
    WriteHeld();
    TellLost();
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
