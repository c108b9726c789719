// SPDX-License-Identifier: Apache-2.0
#pragma once

// What members of script objects throw, and how scripts are told of it.

#include <windows.h>
// The component services follow the base header.
#include <oaidl.h>

#include <stdexcept>
#include <string>

namespace fixtop::hovex {

// The call itself is wrong; the code is the system's, and scripts have a text of their own for it.
class CallError : public std::exception {
 public:
    explicit CallError(HRESULT code) : code_(code) {}
    HRESULT Code() const { return code_; }

 private:
    HRESULT code_;
};

// What was asked can't be done now; scripts get the text.
class ScriptError : public std::runtime_error {
 public:
    using std::runtime_error::runtime_error;
};

// The codes under which scripts get what went wrong, as Err.Number has them.
inline constexpr HRESULT kCodeOfScript = static_cast<HRESULT>(0x80040200);
inline constexpr HRESULT kCodeOfNotFound = static_cast<HRESULT>(0x80040201);
inline constexpr HRESULT kCodeOfRefused = static_cast<HRESULT>(0x80040202);
inline constexpr HRESULT kCodeOfGone = static_cast<HRESULT>(0x80040203);
inline constexpr HRESULT kCodeOfCase = static_cast<HRESULT>(0x80040204);
inline constexpr HRESULT kCodeOfPath = static_cast<HRESULT>(0x80040205);

// The answer to a call that ended in the exception that is being handled. `told`, which may be
// null, gets its text.
HRESULT AnswerToException(EXCEPINFO* told);

}  // namespace fixtop::hovex
