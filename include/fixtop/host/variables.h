// SPDX-License-Identifier: Apache-2.0
#pragma once

// The rows of an object's variable list, enumerations, units, and the state of a variable.

#include <cstdint>

#include "fixtop/host/text.h"
#include "fixtop/host/var_description.h"

namespace fixtop::host {

class Viewable;

// What a row of a variable list holds.
enum ValueKind : std::int32_t {
    kReal = 1,
    kEnumeration = 2,
    kText = 3,
    kAttachment = 4,
    kMessage = 5,
};

// What a variable of two states holds.
inline constexpr double FALSEVALUE = 0.0;
inline constexpr double TRUEVALUE = 1.0;

// How a value came about, out of GetVariableStatus. Any other number means missing.
enum ModifyState : std::int32_t {
    kCalculated = 0,
    kSpecified = 1,
    kDefaulted = 2,
    kSpecifiedByOtherRoute = 3,
    kMissing = 4,
};

// Name of one ordinal of an enumeration.
struct VarEnumEntry {
    const char* name = nullptr;
};

// The entries of an enumerated variable, in the order in which they are offered.
class VarEnumInfo {
 public:
    // Walks the entries: Reset answers the first, Next the one that follows, null at the end.
    virtual const VarEnumEntry* Reset() = 0;
    virtual const VarEnumEntry* Next() = 0;
    // By ordinal, null when there is none.
    virtual const VarEnumEntry* FindEntry(long ordinal) = 0;
    // By name, compared exactly; fills `ordinal` when found, else answers null and leaves it alone.
    virtual const VarEnumEntry* FindEntry(const Text& name, int& ordinal) = 0;

 protected:
    ~VarEnumInfo() = default;
};

// One row of an object's variable list. The object owns the rows and keeps them while it lives.
struct VariableNameInfo {
    const char* name = "";
    VarDescription description;
    std::int32_t value_kind = kReal;
    // Bit 6 flags the row.
    std::uint8_t flags = 0;
    // For arrays: up to three descriptions in a row, one per dimension; null when absent.
    const VarDescription* offset_descriptions = nullptr;
    int offset_description_count = 0;

    virtual ~VariableNameInfo() = default;
    // Text of the variable; each '[' in it counts one dimension.
    virtual Text TextDescription() const { return description.GetMoniker(); }
    // The row's enumeration on the given object; null when the row is not enumerated.
    virtual VarEnumInfo* GetEnumInfo(Viewable*) const { return nullptr; }
};

// A unit of one unit type. internal = user * factor + offset.
struct UnitRecord {
    double factor = 1.0;
    double offset = 0.0;
    const char* name = "";
};

// What is known of a variable type beyond its number.
class VariableInfo {
 public:
    // The variable type whose units this one uses, itself when it has its own.
    virtual VariableType UnitLookupType() const = 0;

 protected:
    ~VariableInfo() = default;
};

class VariableTypes {
 public:
    // Null for an unknown type.
    virtual VariableInfo* FindVarInfo(VariableType type) = 0;

 protected:
    ~VariableTypes() = default;
};

}  // namespace fixtop::host
