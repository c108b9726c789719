// SPDX-License-Identifier: Apache-2.0
#pragma once

// What the file's classes of unit operations hold, as tables: which elements are read, what they
// are called, their unit, and when they are input. Elements without a row are defaults,
// presentation or repeat another one.
//
// A condition is "" (never), "*" (always) or "Element=word|word", true when the element of the
// object has one of the words; several of these joined by '&' must all hold.

#include <string_view>
#include <vector>

#include "file_units.h"
#include "object_sheet.h"
#include "xml_tree.h"

namespace fixtop::casehost::importer {

struct RealRow {
    const char* element;
    const char* name;
    FileUnit unit;
    const char* specified = "";
    double sign = 1.0;        // -1: the file counts in the other direction
    const char* valid = "*";  // else the number is a default without meaning, and left empty
};

struct OptionRow {
    const char* element;
    const char* name;
    std::vector<Choice> choices;
    const char* specified = "*";
};

struct TextRow {
    const char* element;
    const char* name;
    const char* specified = "*";
};

struct UnitClass {
    const char* word;  // class word of the file
    const char* type;  // type word of the case
    std::vector<RealRow> reals;
    std::vector<OptionRow> options = {};
    std::vector<TextRow> texts = {};
};

// What the rows ask for, out of the elements of `node`.
void ReadRows(Reading& reading, const UnitClass& rows, XmlNode node, ObjectSheet& sheet);

// Null for an unknown class.
const UnitClass* FindUnitClass(std::string_view word);

}  // namespace fixtop::casehost::importer
