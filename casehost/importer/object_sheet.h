// SPDX-License-Identifier: Apache-2.0
#pragma once

// Writes the variables of one object. Numbers are given in the unit of the file; a null number is
// stored empty with the state `missing`, whatever state is asked for.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "casehost/case_data.h"
#include "file_units.h"
#include "reading.h"

namespace fixtop::casehost::importer {

using Number = std::optional<double>;

// A word of the file and the option that shows it.
struct Choice {
    const char* word;
    const char* shown;
};

// Elements that carry a label and a number each.
struct LabelledNumbers {
    std::vector<std::string> labels;
    std::vector<Number> values;
};

// Words that show themselves.
std::vector<Choice> Words(std::initializer_list<const char*> words);

DimensionData LabelledBy(std::vector<std::string> labels);
// Elements that are told apart by their number, from 0.
DimensionData Numbered(std::size_t count);
// Null when the object has no such variable.
const VariableData* FindVariable(const ObjectData& object, std::string_view name);
// Null for an empty one.
Number NumberOf(const ValueData& value);
// Null for one that is not finite.
Number InInternalUnit(Number value, FileUnit unit);

class ObjectSheet {
 public:
    ObjectSheet(Reading& reading, ObjectData& object) : reading_(reading), object_(object) {}

    // What is needed beyond a name and a unit to describe a real variable.
    struct Address {
        int number;
        int variable_type;
    };

    void Real(const std::string& name, FileUnit unit, Number value,
              VariableState state = VariableState::calculated);
    void Text(const std::string& name, std::string_view text,
              VariableState state = VariableState::calculated);
    // One text for each element.
    void Texts(const std::string& name, DimensionData dimension,
               const std::vector<std::string>& texts,
               VariableState state = VariableState::calculated);
    // The object of that name in the same flowsheet; null for no name.
    void Attachment(const std::string& name, const std::string& object);
    // A word outside of the choices becomes one more option. An empty word is no value.
    void Option(const std::string& name, const std::vector<Choice>& choices, std::string_view word,
                VariableState state);
    // `values` has the product of the counts, last dimension fastest.
    void Array(const std::string& name, FileUnit unit, std::vector<DimensionData> dimensions,
               const std::vector<Number>& values, VariableState state = VariableState::calculated,
               Address address = {0, 0});

    // Lists whose elements have numbers.
    void Numbers(const std::string& name, FileUnit unit, const std::vector<Number>& values);
    void Texts(const std::string& name, const std::vector<std::string>& texts);
    // An object by its path; an empty one is no object.
    void Link(const std::string& name, const std::string& path);
    // The elements have numbers when there are no names for them.
    void Links(const std::string& name, const std::vector<std::string>& paths,
               std::vector<std::string> names = {});
    // What another variable holds, under a name of its own; nothing without one.
    void CopyAs(const VariableData* source, const std::string& name);

 private:
    void Add(VariableSpec spec, std::vector<ValueData> values);
    void AddTexts(VariableSpec spec, const std::vector<std::string>& texts);

    Reading& reading_;
    ObjectData& object_;
};

}  // namespace fixtop::casehost::importer
