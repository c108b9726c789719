// SPDX-License-Identifier: Apache-2.0
#pragma once

// The questions that every family of nodes asks of the host: which case, which class, which owner.
// All of them answer for null objects and for a host that knows no such class.

#include "fixtop/host/services.h"
#include "fixtop/value.h"

namespace fixtop {

// The given case, or the active one of the session; null when no case is open or no host installed.
host::SimulationCase* CaseOrActive(host::SimulationCase* simulation_case);
bool IsInDynamics(host::SimulationCase& simulation_case);

// Class names that the adapter looks up by text.
const host::ObjectTypeInfo* StreamType();
const host::ObjectTypeInfo* UnitOpType();
const host::ObjectTypeInfo* CorrelationType();

// True for objects of the class and its subclasses; false for a null object or class.
bool IsA(const host::Viewable* object, const host::ObjectTypeInfo* type);
bool IsStream(const host::Viewable* object);
bool IsTemplateOp(const host::Viewable* object);
// Of that very class, not of a subclass.
bool IsExactlyTemplateOp(const host::Viewable* object);
bool IsFlowSheetObject(const host::Viewable* object);
// The class itself, by its name.
bool IsCorrelationHolder(const host::Viewable* object);

// The given flowsheet, or the main one of the case.
host::FlowSheet* FlowSheetOrMain(host::FlowSheet* flowsheet, host::SimulationCase* simulation_case);
// The flowsheet inside a template operation; null for any other object.
host::FlowSheet* InnerFlowSheet(host::Viewable* object);

// Names of the owners of an object from the outermost inwards, joined with "."; the class of the
// nearest owner; the same with all unit operations called "UnitOp". NULL when nothing owns it.
void ReadContainer(host::Viewable* object, FIValue& out);
void ReadContainerType(host::Viewable* object, FIValue& out);
void ReadContainerCategory(host::Viewable* object, FIValue& out);

// Largest status number of the objects of a flowsheet, inner flowsheets included; 0 for none.
int FlowSheetStatus(host::FlowSheet* flowsheet);
// The status number of one object; of a template operation that of its flowsheet.
int ObjectStatus(host::Viewable* object);
const char* StatusText(int status);

}  // namespace fixtop
