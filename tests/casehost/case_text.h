// SPDX-License-Identifier: Apache-2.0
#pragma once

// Case files written down in tests, and what is read out of them.

#include <gtest/gtest.h>

#include <string>

#include "casehost/case_file.h"

namespace fixtop::casehost::test {

// A text that must read without a problem.
inline CaseData Read(const std::string& text) {
    const ReadResult result = ReadCaseText("plant.json", text);
    for (const CaseProblem& problem : result.problems) ADD_FAILURE() << problem.Text();
    return result.data ? *result.data : CaseData();
}

// `inside` becomes the objects of the flowsheet, on line 6.
inline std::string WithObjects(const std::string& inside) {
    return R"({"format": "casehost case", "version": 1, "shapes": {"S": {
"T": {"quantity": "Temperature", "minimum": -273.15}, "Mode": {"kind": "enumeration", "options": ["on", "off"]},
"Grid": {"dimensions": [{"count": 2}]}, "To": {"kind": "attachment"},
"Notes": {"kind": "text"}}},
"flowsheet": {"objects": [
)" + inside +
           "]}}";
}

inline std::string WithBasis(const std::string& inside) {
    return "{\"format\": \"casehost case\", \"version\": 1, \"basis\": [\n" + inside + "]}";
}

inline std::string WithVariable(const std::string& inside) {
    return WithObjects(R"({"name": "A", "type": "MixerOpObject", "shape": "S", "variables": {)" +
                       inside + "}}");
}

}  // namespace fixtop::casehost::test
