// SPDX-License-Identifier: Apache-2.0
#pragma once

// Helpers of the importer's tests: archives made in memory, small flowsheets as text, and look-ups
// in case data.

#include <string>
#include <string_view>
#include <vector>

#include "casehost/case_data.h"

namespace fixtop::casehost::test {

struct Entry {
    std::string name;
    std::string text;
    bool deflated = true;
    std::string password = {};  // not empty: encrypted
};

std::string ZipOf(const std::vector<Entry>& entries);
// One deflated entry "case.xml".
std::string ZipOf(const std::string& xml);

// A whole document. A heater "H" takes "feed" and makes "product"; "Q" is its energy stream.
// Compounds are A and B.
std::string SmallFlowsheet();
// The same with the first `from` replaced by `to`; the test fails when there is no `from`.
std::string SmallFlowsheetWith(std::string_view from, std::string_view to);

const ObjectData* FindObject(const CaseData& data, std::string_view name);
const VariableData* FindVariable(const ObjectData* object, std::string_view name);
// The element of a label of the last dimension; the number itself of a scalar. Null when absent.
const ValueData* FindValue(const ObjectData* object, std::string_view name,
                           std::string_view label = {});
// The shown text of a text or an enumeration.
std::string Shown(const VariableData& variable);

// "where: message" of all problems, one a line.
std::string Lines(const ReadResult& result);

}  // namespace fixtop::casehost::test
