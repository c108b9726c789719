// SPDX-License-Identifier: Apache-2.0
#pragma once

// The error log: a text file that a person reads when a map or class library does not load.
//
// The file is opened and closed for every line, since the host may crash at any time and the last
// line must be on disk. A name is UTF-8; a relative one lies in the working directory. A file that
// cannot be opened is passed over in silence. Not synchronised.

#include <string>

namespace fixtop {

// Called with each line as it was given to the log, on the thread that writes.
using LogListener = void (*)(void* owner, const char* text);

class ErrorLog {
 public:
    static constexpr int kDefaultLevel = 5;
    static constexpr const char* kDefaultFile = "QSIErrors.log";

    // Names the file, without writing. The first call after the log was opened also ends that log:
    // the next message writes a header, and the level is back at its default.
    void SetFile(const char* name);
    // Answers the former level.
    int SetLevel(int level) noexcept;
    // Begins the log anew: the file is emptied and gets its header. A null or empty name keeps it.
    void Open(const char* name);
    // Writes one line, led by a blank, behind the header if the log was not opened yet.
    void Message(const char* text);
    // Writes the line when `level` is at most the log's.
    void AtLevel(const char* text, int level);
    // Hands every line to a listener too, until the next call; null for nobody.
    void SetListener(LogListener listener, void* owner) noexcept;

 private:
    std::string file_ = kDefaultFile;
    int level_ = kDefaultLevel;
    bool opened_ = false;
    LogListener listener_ = nullptr;
    void* listener_owner_ = nullptr;
};

}  // namespace fixtop
