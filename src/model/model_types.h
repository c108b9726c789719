// SPDX-License-Identifier: Apache-2.0
#pragma once

// The small closed vocabularies of the model files.

#include <span>
#include <string_view>

namespace fixtop {

// How many elements of a list of the application are shown: as many as its count, or what the low
// eight bits of that are, which is what programs of old expect.
enum class ListLength { kByte, kWhole };

// What an attribute holds; the numbers are part of the interface.
enum class CCDMAttrType : int {
    kNone = 0,
    kReal = 1,
    kString = 2,
    kInteger = 3,
    kBoolean = 4,
    kEnumeration = 5,
    kObject = 6,
};

// Any text but the seven names is kNone; compared exactly.
CCDMAttrType AttrTypeFromText(std::string_view text);
const char* AttrTypeText(CCDMAttrType type);
// The seven names.
std::span<const char* const> AttrTypeTexts();

// The face of a simulated quantity: what the solver calculated, what the user specified, or both.
// kUnspecified stands for the default branch of the library.
enum class CCDMBranch : int { kUnspecified = 0, kBoth = 1, kCalc = 2, kSpec = 3 };

// Any text but "Both", "Calc" and "Spec" is kUnspecified; compared exactly.
CCDMBranch BranchFromText(std::string_view text);
// The three names.
std::span<const char* const> BranchTexts();

}  // namespace fixtop
