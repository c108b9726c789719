// SPDX-License-Identifier: Apache-2.0
#pragma once

// Where a command writes: data for the next program on one side, everything that is said about it
// on the other. Both are UTF-8; a line ends with one line feed on every platform.

#include <cstdio>
#include <string>
#include <string_view>

namespace fixtop {

// The reader of our data went away: nobody is left to write for, and nobody to be told so.
struct ClosedPipe {};

class Output {
 public:
    virtual ~Output() = default;
    // One line of data, out at once. Throws ClosedPipe, and std::system_error when it can't be
    // written for another reason.
    void Line(std::string_view text);
    // Several lines of data as they stand. Throws like Line.
    virtual void Data(std::string_view text) = 0;
    // A line for the person at the terminal.
    virtual void Note(std::string_view text) = 0;
};

class FileOutput final : public Output {
 public:
    FileOutput(std::FILE* data, std::FILE* notes) : data_(data), notes_(notes) {}
    void Data(std::string_view text) override;
    void Note(std::string_view text) override;

 private:
    std::FILE* data_;
    std::FILE* notes_;
};

// Keeps the data; notes are passed on.
class TextOutput final : public Output {
 public:
    explicit TextOutput(Output& notes) : notes_(notes) {}
    void Data(std::string_view text) override { text_ += text; }
    void Note(std::string_view text) override { notes_.Note(text); }
    const std::string& Text() const { return text_; }

 private:
    Output& notes_;
    std::string text_;
};

// Passes everything on and remembers it.
class RecordingOutput : public Output {
 public:
    explicit RecordingOutput(Output& next) : next_(next) {}
    void Data(std::string_view text) override;
    void Note(std::string_view text) override;
    const std::string& Recorded() const { return recorded_; }

 protected:
    Output& Next() { return next_; }

 private:
    Output& next_;
    std::string recorded_;
};

}  // namespace fixtop
