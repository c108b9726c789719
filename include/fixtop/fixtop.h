#pragma once

// What libfixtop.so / fixtop.dll exports: all of it, nothing else is visible. The functions that
// map files name come with fixtop/semantic_functions.h, the rest stands below.
//
// Every function runs on the caller's thread, which is the thread that runs the simulation. A
// `session` is the open case, a host::SimulationCase*, or null for the active case of the installed
// host. Objects that are answered carry one reference for the caller; null means that a feature, or
// the host, is not present.

#include "fixtop/cursor.h"
#include "fixtop/entry.h"
#include "fixtop/iterator.h"
#include "fixtop/ref.h"
#include "fixtop/reference.h"
#include "fixtop/semantic_functions.h"
#include "fixtop/solver.h"
#include "fixtop/value.h"
#include "fixtop/var_set.h"

namespace fixtop {

#if defined(_WIN32)
#define FIXTOP_EXPORT extern "C" __declspec(dllexport)
#else
#define FIXTOP_EXPORT extern "C" __attribute__((visibility("default")))
#endif

namespace host {
class HostServices;
}

// What the host calls when the simulation changed: 0 is a change, anything else a deletion.
using FixtopNotify = void (*)(int event);

// ---- The front, found by name at run time ----

// The plain top entry, late-bound through GetTopFIEntryV.
FIXTOP_EXPORT FIEntry* GetTopHovexEntry();
FIXTOP_EXPORT FIEntry* GetTopFIEntryV();
// With a non-null notify owner (the address of a FixtopNotify) the entry accepts subscribers and
// writes its dispatch function there.
FIXTOP_EXPORT FIEntry* GetTopFIEntry(void* notifyOwner);
// The host top context with the names of the files of its neutral view (class library, map and
// units) and of its application.
FIXTOP_EXPORT FIContext* GetTopHovexCtx(void* session, const char* library, const char* map,
                                        const char* units, const char* name);
// Kind 1 the steady-state solver, 4 the dynamic one; any other kind is null. Owned by the caller
// until a top entry takes it.
FIXTOP_EXPORT FISolver* GetTopHovexSolver(void* session, int kind);
// The top of a case with its solver and its models.
FIXTOP_EXPORT FIEntry* GetCombinedEntry(void* session);
// Node and document objects; null, and null through `out`, while no provider of them is present.
FIXTOP_EXPORT void* GetQSINode(void* session, void** out);
FIXTOP_EXPORT void* GetDocumentAgg(void* session, const void* identity, void** out);
FIXTOP_EXPORT void* QSVGetTopNode(void* session, void** out);
FIXTOP_EXPORT void* QSVGetDocumentAgg(void* session, const void* identity, void** out);
// Registers and removes the notification of a case.
FIXTOP_EXPORT void SetTopNotify(FixtopNotify notify, void* session);
FIXTOP_EXPORT void UnsetTopNotify(void* session);
// Whether attachments are followed below a context. The caller gives up one reference.
FIXTOP_EXPORT bool SetTopAttach(FIContext* context, bool follow);
// Opens the log of the open case.
FIXTOP_EXPORT void TestIterator();
FIXTOP_EXPORT void TestIteratorX();
// Writes the seek table to the debug output.
FIXTOP_EXPORT void printECounts();

// ---- For consumers that link or load the module ----

// Installs the host of this process, or takes it out with null, before it goes. Not owned. For the
// handles that are held on the cases of the one before these are gone. A host that somebody
// installs while he is told of that stays.
FIXTOP_EXPORT void FixtopInstallHost(host::HostServices* services);
// An iterator that stands on a top entry. With `history` a repeat of an ancestor is not refused.
FIXTOP_EXPORT FIIteratorBase* FixtopMakeIterator(FIEntry* top, bool history);
// The steps of a path expression as text; false and the parse error when it does not parse.
FIXTOP_EXPORT bool FixtopDescribePath(const FIValue& expression, FIValue& steps, FIValue& error);
// Names the file of the module's log, which lies in the working directory when it has no folder;
// null keeps the one it has. Each line also goes to `listener`, until the next call; null for none.
FIXTOP_EXPORT void FixtopSetLog(const char* file, void (*listener)(void* owner, const char* text),
                                void* owner);
// How many operations of the module were given up since it was loaded because memory ran out. Such
// an operation answers as if there were nothing (false, null, 0, an empty list), or with the text
// "Out of memory" where it has a value to tell it in; whoever got the former compares this number
// with the one before. Nothing is thrown, and what was held before is held as before. A store that
// was given up may have been done.
FIXTOP_EXPORT int FixtopMemoryFailures();
// The module's version, "0.1.0".
FIXTOP_EXPORT const char* FixtopVersion();

// ---- The neutral view ----

// The files of a neutral view, sought beside the module and in the working directory, then among
// the shipped ones. A null text is the shipped file, or "Hovex" for the name of the translation.
struct FixtopModelFiles {
    const char* classes;
    const char* map;
    const char* units;
    const char* translateName;
};

// The root of a neutral view of the tree below `top`, or below the top that the map names when that
// is null. What fails is told in the log. `files` may be null. The view holds its class library,
// which ends with the last object of it.
FIXTOP_EXPORT FIEntry* FixtopOpenModel(FIEntry* top, const FixtopModelFiles* files);
// The same for one node of the application, shown as a class.
FIXTOP_EXPORT FIEntry* FixtopOpenModelOnNode(FIIteratorBase* node, const char* className,
                                             const FixtopModelFiles* files);
// The definitions of a class and what is below it, without an application. A null file is the
// shipped library, a null class its top class.
FIXTOP_EXPORT FIEntry* FixtopOpenPureModel(const char* classes, const char* className);
// All definitions as a tree of their own. Below the root stand "Classes" and "Enumerations". A
// class has its attributes as children and "superclasses", one a line; an attribute has "type",
// "quantity", "array", "keys" and "owner", the class that declares it; an enumeration has
// "options", one a line, and "closed".
FIXTOP_EXPORT FIEntry* FixtopOpenDictionary(const FixtopModelFiles* files);
// The node of the application that a node of a neutral view stands on: face 1 has the calculated
// values, face 2 the specified ones. Null when there is none, or the node is no neutral one. The
// attributes "path" and "converters" of the neutral node tell where it leads and why.
FIXTOP_EXPORT FIIteratorBase* FixtopApplicationNode(FIIteratorBase* node, int face);

}  // namespace fixtop
