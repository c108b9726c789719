// SPDX-License-Identifier: Apache-2.0
#pragma once

// Failures inside the process library. They never leave it: the flowsheet turns each into the
// status and the status text of one object.

#include <cstdio>
#include <stdexcept>
#include <string>

namespace fixtop::casehost::process {

// No such state, compound data missing, contradictory specifications.
class ProcessError : public std::runtime_error {
 public:
    using std::runtime_error::runtime_error;
};

// Something that the user has to give is not given.
class UnderSpecified : public ProcessError {
 public:
    using ProcessError::ProcessError;
};

inline std::string FormatNumber(double value) {
    char text[32];
    std::snprintf(text, sizeof text, "%.6g", value);
    return text;
}

}  // namespace fixtop::casehost::process
