// SPDX-License-Identifier: Apache-2.0
#pragma once

// HostServices: the host's free functions as one object that the host installs. Everything else
// that the module needs of a simulator hangs on the objects that these functions hand out.
//
// Threads: every call comes on the thread that runs the simulation.
// Ownership: pointers that are handed out belong to the host unless a comment says otherwise.
// Changes: the structure of a case changes in stores, in WaitForTurn and between calls of the
// module, never inside an operation that only asks.
// Failure: a null, an empty text or the empty real, never an exception but std::bad_alloc: with it
// the operation of the module that asked is given up. Nothing is thrown at the host.

#include <cstddef>
#include <cstdint>

#include "fixtop/host/object_type.h"
#include "fixtop/host/simulation_case.h"
#include "fixtop/host/specification.h"
#include "fixtop/host/text.h"
#include "fixtop/host/variables.h"
#include "fixtop/host/viewable.h"

namespace fixtop::host {

// The class records that the adapter compares against. None may be null.
struct ObjectTypeRecords {
    const ObjectTypeInfo* ViewableObject = nullptr;
    const ObjectTypeInfo* SimulationObjectObject = nullptr;
    const ObjectTypeInfo* FlowSheetObjectObject = nullptr;
    const ObjectTypeInfo* UnitOpObject = nullptr;
    const ObjectTypeInfo* TemplateOpObject = nullptr;
};

class HostServices {
 public:
    // Units. Records and names live as long as the host.

    // Index of the active case's unit set; 0 when none is open.
    virtual unsigned DefaultUnits() = 0;
    // Default unit of a unit type in a set; null for a type without units.
    virtual const UnitRecord* def_unit(VarType type, unsigned set) = 0;
    // Unit by name within a unit type; null when the type has no such unit.
    virtual const UnitRecord* findunit(const char* name, VarType type) = 0;
    // User unit to internal unit, and back. The empty real stays; a null unit changes nothing.
    virtual double calc_unit(double value, const UnitRecord* unit) = 0;
    virtual double calc_ounit(double value, const UnitRecord* unit) = 0;
    // Name of a unit type, such as "Temperature"; empty for a type without units, never null.
    virtual const char* utypetoa(VarType type) = 0;
    // Unit type of a variable type; kVariableUnitType when there is none.
    virtual VarType GetUnitConvTypeFromVarType(VariableType type) = 0;
    // Variable type from a unit text; kEmptyDimensionMarker when no type has such a unit.
    virtual VariableType GetVarTypeFromUnitString(const char* unit) = 0;
    // Walks the names of the units of a type, one walk at a time; an empty text ends the walk.
    virtual void UnitConvList(VarType type) = 0;
    virtual Text GetFirstConvName() = 0;
    virtual Text GetNextConvName() = 0;

    // Objects and variables.

    // Moniker of `to` seen from `from`; a null `from` means the case. `full` names every owner on
    // the way with its name in parentheses. Empty when `to` is no object of a case.
    virtual Text RelativeMoniker(Viewable* from, Viewable* to, bool full) = 0;
    // State of a variable of `object`; may leave both out values as the caller preset them.
    virtual void GetVariableStatus(Viewable* object, const VarDescription& variable,
                                   ModifyState& state, int& detail) = 0;
    // Whether a calculated value is shown though it is older than a change of the case. A host that
    // computes its values anew, or shows none that are old, leaves the answer as it is.
    virtual bool IsOutdated(Viewable* /*object*/, const VarDescription& /*variable*/) {
        return false;
    }
    // By class name, of which "StreamObject", "UnitOpObject" and "HovexCorrelationObject" must be
    // known; null for an unknown class.
    virtual const ObjectTypeInfo* FindObjectType(const Text& class_name) = 0;
    virtual const ObjectTypeRecords& ObjectTypes() = 0;
    // Null when the host keeps no table of its variable types.
    virtual VariableTypes* pVarTypes() = 0;
    // Facts of a variable that is known by its moniker alone; false when the host does not know it.
    virtual bool DescribeMoniker(const Text& moniker, VarDescription::Facts& out) = 0;

    // Specifications: an empty info for the caller, and its end, which takes null as well.
    virtual CSpecInfo* NewSpecInfo() = 0;
    virtual void DeleteSpecInfo(CSpecInfo* info) = 0;

    // The application.

    // Null when the application has no session.
    virtual Session* pSession() = 0;
    // Refresh of open views; null means all.
    virtual void UpdateViews(Viewable* object) = 0;
    // Keeps a number of the host's configuration under a key, in place of an earlier one; `flag` is
    // the host's own.
    virtual void SetConfigData(const char* key, double value, bool flag) = 0;
    // A number as the host writes it; empty for the empty real.
    virtual Text NumToText(double value) = 0;
    // Yields once to the host's message loop; model callbacks and deletions may come meanwhile.
    virtual void WaitForTurn(unsigned long milliseconds) = 0;

    // The host's heap, for containers that host and adapter share. A null block is none, and a host
    // without memory ends the call by its own means rather than answer null.
    virtual void* IFace_malloc(std::size_t size) = 0;
    virtual void* IFace_realloc(void* block, std::size_t size) = 0;
    virtual void IFace_free(void* block) = 0;

    // Lifetimes, optional: a host that gives them serves handles that outlive its objects safely,
    // whether a case tells of its changes or not.

    // The place of a number, never 0, that changes whenever an object of any case is deleted,
    // added, renamed or moved, and when a case is opened or closed. It is read before host memory
    // is touched, as often as that, so it is a plain number and no call; it lasts as long as the
    // host is installed. Null when the host does not keep track.
    virtual const std::uint64_t* StructureRevision() { return nullptr; }
    // Whether the object of this number (Viewable::Identity) is still one of an open case. A
    // deleted object is not, though it may be readable for a while; neither is a closed case; nor
    // is a number that was never given, the greatest among them. A host that gives numbers answers
    // this: without it they count as not given.
    virtual bool Lives(std::uint64_t) { return true; }

 protected:
    ~HostServices() = default;
};

}  // namespace fixtop::host
