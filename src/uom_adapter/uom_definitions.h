// SPDX-License-Identifier: Apache-2.0
#pragma once

// Quantities and their units, read from XML:
//
//   <QZClassLibrary>
//     <QuantityTypeDefn Name="Pressure" BaseUnit="Pa">
//       <UOM Name="bar" Formula="Linear" Factor="100000" Offset="0"/>
//
// A value in a unit becomes one in the base unit by Factor * value + Offset (Linear, which a
// missing Formula means) or Factor / (value + Offset) (Reciprocal). A missing Factor is 1, a
// missing Offset 0. A unit with a factor of 0, a number that does not scan or another formula is
// left out, as is the second unit of one name in a quantity; a quantity that comes again goes on
// where it ended.

#include <deque>
#include <string>
#include <string_view>
#include <unordered_map>

namespace fixtop {

enum class UomFormula { kLinear, kReciprocal };

struct Uom {
    std::string name;
    int quantity = 0;
    UomFormula formula = UomFormula::kLinear;
    double factor = 1;
    double offset = 0;
};

// Numbers by names, which the numbered records hold.
using UomNumbers = std::unordered_map<std::string_view, int>;

struct UomQuantity {
    std::string name;
    std::string base_unit;  // quantities of one base unit convert into each other
    UomNumbers units;
};

// Numbers count from 1 in the order of the file.
class UomDefinitions {
 public:
    // A file of the name beside the program or in the working directory, else the resource of that
    // name. Answers why there are no definitions: when there is neither, when it is no XML, or when
    // it defines no unit; empty when there are some.
    std::string Read(const std::string& name);

    // Takes no memory.
    void Clear() noexcept;

    // 0 when there is none.
    int FindQuantity(std::string_view name) const;
    // In quantity 0: the first unit of the name in the order of the file. 0 when there is none.
    int FindUnit(std::string_view name, int quantity) const;
    // Null for a number that is not valid.
    const UomQuantity* Quantity(int number) const;
    const Uom* Unit(int number) const;

    // The value unchanged when a number is not valid or the units are of different kinds.
    double Convert(double value, int from_unit, int to_unit) const;

    // For the reader: the number of a new or known quantity; adds a unit to it.
    int AddQuantity(std::string_view name, std::string_view base_unit);
    void AddUnit(Uom unit);

 private:
    // Records stay where they are when others come.
    std::deque<UomQuantity> quantities_;
    std::deque<Uom> units_;
    UomNumbers quantity_numbers_;
    UomNumbers first_units_;
};

}  // namespace fixtop
