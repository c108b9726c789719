// SPDX-License-Identifier: Apache-2.0
#pragma once

// Viewable: the base of every host object that the tree can show.
//
// Lifetime: objects belong to the host. An object that has been deleted from the case must stay
// readable, with its name and type, until the host is back in its own loop with no call of this
// module on the stack. The adapter learns of the deletion through the model callback, and without
// one through HostServices::StructureRevision. A host that keeps neither revision nor identities,
// and has a case without a callback, may not free an object of that case while a client is there.
//
// Changes: an operation that only asks may not change the structure of a case: nothing is deleted,
// added, renamed, moved or closed before it has returned.

#include <cstdint>

#include "fixtop/host/list.h"
#include "fixtop/host/object_type.h"
#include "fixtop/host/text.h"
#include "fixtop/host/variables.h"

namespace fixtop::host {

class CSpecSource;
class FlowSheet;
class ProcessStream;

class Viewable {
 public:
    // Answers of GetMyStatusCondition; any other number is an error.
    enum Status : int { kOk = 0, kNotSolved = 1, kWarning = 2, kUnderSpecified = 3, kError = 4 };

    // Valid until the object is renamed or gone.
    virtual const Text& GetName() = 0;
    // Value of a real variable in internal units, or the ordinal of an enumerated one; the empty
    // real when it has none.
    virtual double GetRealValue(const VarDescription& variable) = 0;
    // Stores in internal units. The host may refuse silently.
    virtual void SetRealValue(const VarDescription& variable, double value) = 0;
    // Empty when it has none. Stores may be refused silently, too.
    virtual Text GetTextValue(const VarDescription& variable) = 0;
    virtual void SetTextValue(const VarDescription& variable, Text value) = 0;
    // The object's variable list, elements VariableNameInfo; null when it has none. Objects of one
    // kind may share a list.
    virtual const LinkedList* VariableNames() = 0;
    // The row for a description, null when there is none.
    virtual VariableNameInfo* FindVariableName(const VarDescription& variable) = 0;
    // Enumeration of an enumerated row, never null for one of value kind kEnumeration.
    virtual VarEnumInfo* GetVariableEnum(VariableNameInfo* row) = 0;
    // The object that finally holds a multi-part description; null when the description is an own
    // variable of this object.
    virtual Viewable* ResolveVariableOwner(const VarDescription& variable) = 0;
    // Bounds of an array variable; a scalar or unknown variable has count 0.
    virtual void GetVariableDimensions(const VarDescription& variable, DimInfo& out) = 0;
    // Nearest owner of a type; null at the top.
    virtual Viewable* GetOwner(const ObjectTypeInfo* type) = 0;
    // True when the object lies directly in the given flowsheet.
    virtual bool IsSameFlowSheet(Viewable* flowsheet) = 0;
    // For variables whose unit type is not fixed; kEmptyDimensionMarker when there is none.
    virtual VariableType GetVariableUnitType(const VarDescription& variable) = 0;
    // Null when the object offers no specification view.
    virtual CSpecSource* GetSpecSource() = 0;
    // Template operations only: the inner flowsheet, null for a plain one.
    virtual FlowSheet* SubFlowSheet() = 0;

    // The record of the object's own class, never null; compared by address, so one a class.
    virtual const ObjectTypeInfo* Type() const = 0;
    virtual Status GetMyStatusCondition() = 0;
    // The object that an attachment variable points at, or null.
    virtual Viewable* GetVariableAttachment(const VarDescription& variable) = 0;
    // The stream operations of this object, null when it is no process stream.
    virtual ProcessStream* AsProcessStream() { return nullptr; }
    // A number of this object alone: no other object of the process has it, before or after. 0 when
    // the host gives none. With it a handle that outlives the object knows so, whatever lies at the
    // address by then (HostServices::Lives).
    virtual std::uint64_t Identity() const { return 0; }

 protected:
    ~Viewable() = default;
};

// Composition editing of a material stream. Between Begin and End the host stores fractions as they
// come and normalises once, at End.
class ProcessStream {
 public:
    virtual void BeginDeferCompNormalize() = 0;
    virtual void EndDeferCompNormalize() = 0;
    // Called after Begin by who is about to edit the composition as a whole, so that the host may
    // keep the old ones in the case that the new fractions can't be normalised. Single elements are
    // stored without it.
    virtual void StartCompositionEditSession() = 0;

 protected:
    ~ProcessStream() = default;
};

}  // namespace fixtop::host
