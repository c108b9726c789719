// SPDX-License-Identifier: Apache-2.0
#pragma once

// Reading and storing one variable of a host object: by the row that tells what it holds, the
// object that it is read on, and its address. Array elements use the same routines with an address
// of their own.
//
// Units: the host's numbers are in internal units; `value` is shown in the unit that the reader's
// var set asks for, or else in the default unit of the case. Reentrance: a store runs the host's
// loop, so callbacks arrive inside it and whoever stores keeps itself alive.

#include <cstring>

#include "fixtop/value.h"
#include "fixtop/var_set.h"
#include "host/case_life.h"

namespace fixtop {

struct HVariable {
    const host::VariableNameInfo* row;
    host::Viewable* object;
    const host::VarDescription* description;
    // An object that is known to be no correlation holder; null when none is.
    const host::Viewable* no_correlation = nullptr;
};

// The row that shows no value, status or limits.
inline constexpr char kCustomBlockName[] = "Custom datablock for user input";
inline bool IsCustomBlock(const host::VariableNameInfo& row) {
    return row.name && *row.name == *kCustomBlockName &&
           std::strcmp(row.name, kCustomBlockName) == 0;
}

// Where the address leads: the object that finally holds the variable and the address on it.
struct HVariablePlace {
    host::Viewable* object;
    const host::VarDescription* description;
};
HVariablePlace FindPlace(host::Viewable* object, const host::VarDescription& description);

// The object that an attachment variable of `object` leads to, null when there is none. `owner` is
// the object that the variable is listed on.
host::Viewable* FindHolder(host::Viewable* owner, host::Viewable* object,
                           const host::VarDescription& description);

// Whether an attachment of `owner` leads into its own inner parts. Such a one is followed always.
bool LeadsInside(host::Viewable* owner, host::Viewable* attached);
// The moniker of an attached object with the names of all owners; NULL for none.
void ReadFullMoniker(host::Viewable* attached, FIValue& out);

// Value in internal units: REAL, or the text of an enumeration, text or attachment; NULL when
// unset, for messages, and for numbers of correlations that the reader skips. Texts that begin with
// "Key: " read "Unknown Key".
void ReadRaw(const HVariable& variable, FIVarSet* vars, FIValue& out);
// "Calculated", "Specified", "Default" or "Missing".
const char* ReadStatus(const HVariable& variable, FIVarSet* vars);
// Whether the value is older than a change of the case.
bool IsOutdated(const HVariable& variable);
// Names of the options of an enumerated variable, joined with ";".
void ReadOptions(const HVariable& variable, FIValue& out);
// The word that clients see as the type of a scalar.
const char* ScalarTypeText(int value_kind);

// The number that the host stores for a value in internal units; NULL is the empty real.
double InternalNumber(const FIValue& value);
// What is no number never goes to the host, which need not look at what it is given; kNotStored is
// the answer.
bool IsNoNumber(const FIValue& value);
inline constexpr char kNotStored[] = "Value not stored";
// Stores; answers null or the message. Numbers are in internal units, NULL is the empty real.
// Starts the solver and waits, unless a batch is open. An object that goes meanwhile is told as
// such.
const char* StoreValue(const HVariable& variable, const FIValue& value, const Ref<CaseLife>& life);
// A composition variable of a stream. Its stores are not read back and start no solve.
bool IsComposition(const host::Viewable* owner, const host::VarDescription& description);
void StoreComposition(const HVariable& variable, const FIValue& value);

// ---- Units ----

// The unit type, with a unit type that is not fixed asked of the object.
host::VarType EffectiveUnitType(host::VarType unit_type, host::Viewable* object,
                                const host::VarDescription& description);
// The unit in which the reader sees values of a type; null for a type without units.
const host::UnitRecord* ShownUnit(host::HostServices& services, host::VarType type, FIVarSet* vars);
// To the shown unit and back to internal units; other values than numbers are left as they are.
void ToShownUnit(host::VarType type, FIVarSet* vars, FIValue& value);
void ToInternalUnit(host::VarType type, FIVarSet* vars, FIValue& value);
// Name of a unit type, such as "Temperature"; NULL without a host.
void ReadUnitType(host::VarType type, FIValue& out);
// Name of the shown unit; NULL without one.
void ReadUnit(host::VarType type, FIVarSet* vars, FIValue& out);
// Names of all units of a type, joined with a line feed.
void ReadUnitOptions(host::VarType type, FIValue& out);
// Asks the reader's var set to show a unit; `out` is NULL or the message.
void SetShownUnit(host::VarType type, FIVarSet* vars, const FIValue& unit, FIValue& out);

}  // namespace fixtop
