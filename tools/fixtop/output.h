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
    // One line of data, which may wait for others until Flush. Throws ClosedPipe, and
    // std::system_error when data can't be written for another reason.
    void Line(std::string_view text);
    // Several lines of data as they stand. Throws like Line.
    virtual void Data(std::string_view text) = 0;
    // A line for the person at the terminal, behind all data so far.
    virtual void Note(std::string_view text) = 0;
    // All data so far goes out. Throws like Line, also for data that could not go out before a
    // note.
    virtual void Flush() {}
};

class FileOutput final : public Output {
 public:
    // `at_once`: somebody looks at the data as they come.
    FileOutput(std::FILE* data, std::FILE* notes, bool at_once);
    FileOutput(const FileOutput&) = delete;
    FileOutput& operator=(const FileOutput&) = delete;
    // Data that can't go out any more are lost untold.
    ~FileOutput() override { WriteHeld(); }
    void Data(std::string_view text) override;
    void Note(std::string_view text) override;
    void Flush() override;

 private:
    // Throws what the error stands for that has kept data from going out, if there was one.
    void TellLost();
    void Write(std::string_view text);
    void WriteHeld();

    std::FILE* data_;
    std::FILE* notes_;
    bool at_once_;
    // Not the file's own buffer: a C library may take another size than it is given.
    std::string held_;
    int lost_ = 0;  // the first error that kept data from going out; 0 without one
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
    void Flush() override { next_.Flush(); }
    const std::string& Recorded() const { return recorded_; }

 protected:
    Output& Next() { return next_; }

 private:
    Output& next_;
    std::string recorded_;
};

}  // namespace fixtop
