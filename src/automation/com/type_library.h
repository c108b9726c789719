// SPDX-License-Identifier: Apache-2.0
#pragma once

// The type library of the system that gives each neutral class a typed interface. It is made of a
// MemberTable, whose numbers it has: member n has the dispatch id n + 1. Its name is "CCDMLib".
//
// The interface of a class with no base among the classes is based on IQSINode, in the library that
// qsicom.dll carries. A member has one out argument: IQSINode for a value, the interface of the
// class of an object, that interface's companion "I<class>Array" for a list. A companion has Count
// (dispatch id 1) and ItemAt (dispatch id 0), whose index is a number from 0 or a key.
//
// Where the system has no such libraries all answer failure.

#include <string>

#include "automation/typed/member_table.h"
#include "fixtop/automation/unknown.h"

namespace fixtop {

// What the shipped classes call their version.
inline constexpr int kModelMajor = 13;
inline constexpr int kModelMinor = 2;

// "<name>_<major>_<minor>.tlb"; empty for what can be no file of the system's: a version outside of
// 0 to 65535, more than 240 bytes. The name, "qsiccdm" for null or an empty one, may begin with a
// folder.
std::string TypeLibraryFile(const char* name, int major, int minor);

// Writes the file. An interface that the system refuses is left out. kResultNotImplemented where
// there are no type libraries, kResultFail when nothing was written.
HRESULT WriteTypeLibrary(const MemberTable& table, const std::string& file, int major, int minor);

// The system's object (ITypeLib) of a file, counted; null when it can't be loaded. A name without
// folder is sought beside this module, then where the system seeks such files.
void* LoadTypeLibrary(const std::string& file);

}  // namespace fixtop
