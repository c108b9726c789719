// SPDX-License-Identifier: Apache-2.0
#pragma once

// CaseData: a case as plain data. Readers of files make one, the live case is built from one and
// can be turned back into one, writers of files take one. Nothing here refers to live objects:
// objects name each other by path.
//
// Units: every number is in the internal unit of its quantity (units.h): C, kPa, kgmole/h, kg/h,
// kJ/h, m2, m3, kg/m3, kJ/kgmole, kJ/kg, percent, seconds and so on; fractions are 0 to 1.
// An empty number is kEmpty.

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace fixtop::casehost {

inline constexpr double kEmpty = -32767.0;

enum class ValueKind { real = 1, enumeration = 2, text = 3, attachment = 4, message = 5 };

enum class VariableState {
    calculated = 0,
    specified = 1,
    defaulted = 2,
    specified_otherwise = 3,
    missing = 4
};

enum class ObjectStatus { ok = 0, not_solved = 1, warning = 2, under_specified = 3, error = 4 };

// How the elements of one array dimension are named.
enum class ElementNaming { number, enumeration, text, attached_object };

struct DimensionData {
    int low = 0;
    int count = 0;
    ElementNaming naming = ElementNaming::number;
    std::vector<std::string> labels;  // one per element, empty for `number`

    bool operator==(const DimensionData&) const = default;
};

// What all variables of one name in objects of one shape share. Immutable once shared.
struct VariableSpec {
    std::string name;  // display name, "Molar Flow"
    ValueKind kind = ValueKind::real;
    std::string quantity;   // unit type such as "Temperature", "MolarFlow"; empty: no unit
    int number = 0;         // the variable's number inside its object; 0: the case gives one
    int variable_type = 0;  // the host's variable type; 9 to 14 are compositions; 0: by quantity
    std::vector<DimensionData> dimensions;  // none for a scalar, at most three
    std::vector<std::string> options;       // names of an enumeration by ordinal
    double minimum = kEmpty;
    double maximum = kEmpty;
    bool flagged = false;

    bool operator==(const VariableSpec&) const = default;
};

// Elements of an array, 1 for a scalar.
inline std::size_t ElementCount(const VariableSpec& spec) {
    std::size_t count = 1;
    for (const DimensionData& each : spec.dimensions) count *= static_cast<std::size_t>(each.count);
    return count;
}

// One value: a number (ordinal of an enumeration), a text, or the path of the attached object.
struct ValueData {
    double number = kEmpty;
    std::string text;
    VariableState state = VariableState::missing;

    bool operator==(const ValueData&) const = default;
};

struct VariableData {
    std::shared_ptr<const VariableSpec> spec;
    // One value for a scalar; for an array the product of the counts, last dimension fastest.
    std::vector<ValueData> values;
};

// The stream on one port of a unit operation.
struct PortData {
    enum class Role { feed, product, energy_in, energy_out };
    Role role = Role::feed;
    int index = 0;
    std::string stream;  // name within the same flowsheet

    bool operator==(const PortData&) const = default;
};

struct FlowsheetData;

struct ObjectData {
    std::string name;
    // The type word: "MaterialStreamObject", "CompressorObject", or a file's own class word.
    std::string type;
    std::vector<VariableData> variables;
    std::vector<PortData> ports;  // unit operations only
    ObjectStatus status = ObjectStatus::ok;
    std::string status_text;                       // what a file says about a status other than ok
    std::shared_ptr<FlowsheetData> sub_flowsheet;  // template operations only
    // The calculated values are older than a change of the case. A case that can be computed shows
    // them missing until it is solved.
    bool stale = false;
};

struct FlowsheetData {
    std::vector<ObjectData> objects;  // streams, unit operations, flowsheet utilities in one order
};

// Constants of one compound. Ideal-gas heat capacity in kJ/(kgmole K): sum of cp[i] * T^i, T in K.
struct CompoundData {
    std::string name;
    std::string formula;
    double molar_mass = kEmpty;  // kg/kgmole
    double critical_temperature_K = kEmpty;
    double critical_pressure_kPa = kEmpty;
    double acentric_factor = kEmpty;
    double normal_boiling_point_K = kEmpty;
    double liquid_molar_volume = kEmpty;  // m3/kgmole
    std::vector<double> cp;
    // Everything else that a file told, by the file's name for it, in the file's units.
    std::map<std::string, std::string> other;
};

// A column of a table: numbers, or paths of objects when it is called kObjectColumn.
struct BasisColumn {
    std::string name;
    std::vector<double> numbers;
    std::vector<std::string> objects;

    bool operator==(const BasisColumn&) const = default;
};

inline constexpr char kObjectColumn[] = "Attachment";

// One element of the specification of the basis. The kind tells which fields it has.
struct BasisElement {
    enum class Kind { group, custom, status, table, variable, object, number, text, document };

    std::string tag;  // siblings may have one tag
    Kind kind = Kind::text;
    std::string text;        // text, document, custom; path of an object
    double number = kEmpty;  // number, custom, variable
    std::string quantity;    // unit type of a number or variable; empty: no unit
    VariableState state = VariableState::missing;  // variable: specified, calculated or missing
    bool adjustable = false;                       // variable
    bool fixed = false;                            // variable that clients can't specify
    std::vector<BasisElement> elements;            // group
    std::vector<BasisColumn> columns;              // table

    bool operator==(const BasisElement&) const = default;
};

// Everything of a case but its objects.
struct CaseBasics {
    std::string name;
    std::string title;      // free text
    std::string source;     // "own" or the kind of file that it was recorded in
    bool recorded = false;  // true: values are a recording and can't be computed again
    bool dynamic = false;
    bool online = true;  // connected: has published variables and tells of changes
    unsigned unit_set = 0;
    int solve_turns = 3;  // turns of the host's loop that one solve takes
    std::string property_package;
    std::vector<CompoundData> compounds;
};

struct CaseData : CaseBasics {
    std::vector<BasisElement> basis;  // shown after the package and the compounds
    FlowsheetData main;
    std::vector<ObjectData> utilities;  // at case level
    std::vector<ObjectData> data_tables;
    std::vector<ObjectData> reactions;
    std::vector<ObjectData> published;  // real-time variables, one variable "Value" each
};

// What went wrong while a file was read or written. `where` is file, and line or path in it.
struct CaseProblem {
    std::string where;
    std::string message;

    std::string Text() const { return where.empty() ? message : where + ": " + message; }
};

// A file's content or the problems that kept it from being read.
struct ReadResult {
    std::unique_ptr<CaseData> data;     // null when reading failed
    std::vector<CaseProblem> problems;  // errors when data is null, else remarks
};

}  // namespace fixtop::casehost
