// SPDX-License-Identifier: Apache-2.0
#pragma once

// What libfixtop.so / fixtop.dll exports: all of it, nothing else is visible. The functions that
// map files name come with fixtop/semantic_functions.h, the rest is below.
//
// Every function runs on the caller's thread, which is the thread that runs the simulation. A
// `session` is the open case, a host::SimulationCase*, or null for the active case of the installed
// host. Objects that are answered carry one reference for the caller; null means that a feature, or
// the host, is not present.

#include "fixtop/automation/node.h"
#include "fixtop/automation/unknown.h"
#include "fixtop/collection.h"
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
// Automation objects (fixtop/automation.h) of a case: an IQSINode and, by QSVGetTopNode, an
// IQSVNode at its top; an IQSIDocument, of which there is one for a case and an identity as long as
// somebody holds it. The one reference is answered and written through `out`, which may be null;
// both are null when there is no host or no provider of such objects.
FIXTOP_EXPORT void* GetQSINode(void* session, void** out);
FIXTOP_EXPORT void* GetDocumentAgg(void* session, const void* identity, void** out);
FIXTOP_EXPORT void* QSVGetTopNode(void* session, void** out);
FIXTOP_EXPORT void* QSVGetDocumentAgg(void* session, const void* identity, void** out);
// What the four above find by name: a node object at the place of an iterator, which it shares and
// nobody moves any more; the document that there is, or null; a new one on a top.
FIXTOP_EXPORT void* MakeQSINode(FIIteratorBase* place, void** out);
FIXTOP_EXPORT void* GetTopVNode(FIIteratorBase* place, void** out);
FIXTOP_EXPORT void* FindDocumentAgg(void* session, const void* identity, void** out);
FIXTOP_EXPORT void* FindVDocumentAgg(void* session, const void* identity, void** out);
FIXTOP_EXPORT void* MakeDocumentAgg(FIEntry* top, void* session, const void* identity, void** out);
FIXTOP_EXPORT void* MakeVDocumentAgg(FIEntry* top, void* session, const void* identity, void** out);
// Whether a document object of another program is of the class that is registered under the name
// "Tovan.Document.13.1", as its persist interface tells: kResultOk or kResultFalse;
// kResultNotImplemented where the system has no classes.
FIXTOP_EXPORT HRESULT IsSiblingDocument(IUnknown* document);
// A node object at the top of a case as a part of a document object of another program, `outer`, by
// the system's rules of aggregation; null for an object of its own. `part` gets the node's own
// IUnknown, one reference, which the document gives up when it ends, and which answers to the id of
// IQSINode with what counts for the document. `document`, an interface of the document or null, is
// held unless it is `outer` itself; where it is of the class that IsSiblingDocument looks for, the
// node shows the tree as the host does, without what the case as a whole tells. The thread must
// have begun with the system's components. kResultFalse when there is no case,
// kResultNotImplemented where the system has no such objects.
FIXTOP_EXPORT HRESULT FixtopMakeNodeInDocument(void* session, IUnknown* outer, IUnknown* document,
                                               IUnknown** part);
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
// Writes how many automation objects of each class there are and were to the debug output, each
// line behind so many blanks.
FIXTOP_EXPORT void QSIPrint(int indent);

// ---- For consumers that link or load the module ----

// Installs the host of this process, or takes it out with null, before it goes. Not owned. For the
// handles that are held on the cases of the one before these are gone. A host that somebody
// installs while he is told of that stays.
FIXTOP_EXPORT void FixtopInstallHost(host::HostServices* services);
// An iterator at a top entry. With `history` a repeat of an ancestor is not refused.
FIXTOP_EXPORT FIIteratorBase* FixtopMakeIterator(FIEntry* top, bool history);
// The steps of a path expression as text; false and the parse error when it does not parse.
FIXTOP_EXPORT bool FixtopDescribePath(const FIValue& expression, FIValue& steps, FIValue& error);
// A new collection of the nodes that a selection names, which another process has put on the
// clipboard: `text` has `size` bytes, which need not end with NUL, and its paths are sought from
// the top of the tree of `node`, a node object. kResultFalse when there is no text, kResultFail
// when it is no selection.
FIXTOP_EXPORT HRESULT FixtopPasteCollection(IUnknown* node, const char* text, int size,
                                            IQSICollection** collection);
// The same of what is on the system's clipboard in the format "QSI Format". kResultFalse when
// nothing is there, or it can't be had; kResultNotImplemented where the system has no clipboard.
FIXTOP_EXPORT HRESULT PasteCollection(IUnknown* node, IQSICollection** collection);
// The text itself of what is there, for who looks for its nodes with other means.
FIXTOP_EXPORT HRESULT FixtopReadClipboard(FIValue& text);
// The same of what IQSICollection::GetAsXml has answered, whose items stay also where their nodes
// are not found; a selection is read as well.
FIXTOP_EXPORT HRESULT FixtopLoadCollection(IUnknown* node, const char* text, int size,
                                           IQSICollection** collection);
// Loads a type library of the typed interfaces, the system's ITypeLib, counted: the file
// "<name>_<major>_<minor>.tlb", of the name "qsiccdm" for null. It is sought beside the module and
// where the system seeks such files, unless the name has a folder. False and null when it is not
// there, and where the system has no type libraries.
FIXTOP_EXPORT bool GetCCDMLibrary(const char* name, int major, int minor, void** out);
// Writes that file, of the classes of a file or, for null, of the shipped ones; their version is
// 13.2. kResultNotImplemented where the system has no type libraries, kResultFail when the classes
// can't be read or the file not be written.
FIXTOP_EXPORT HRESULT FixtopWriteTypeLibrary(const char* classes, const char* name, int major,
                                             int minor);
// Names the file of the module's log, which lies in the working directory when it has no folder;
// null keeps the one it has, and with an
// empty name none is written. Each line also goes to `listener`, until the next call; null for
// none.
FIXTOP_EXPORT void FixtopSetLog(const char* file, void (*listener)(void* owner, const char* text),
                                void* owner);
// How many operations of the module were given up since it was loaded because memory ran out. Such
// an operation answers as if there were nothing (false, null, 0, an empty list), or with the text
// "Out of memory" where it has a value to tell it in; whoever got the former compares this number
// with the one before. Nothing is thrown, and what was held before is held as before. A store that
// was given up may have been done.
FIXTOP_EXPORT int FixtopMemoryFailures();
// The module's version, "0.2.0".
FIXTOP_EXPORT const char* FixtopVersion();

// ---- Paths ----

// A path expression that was parsed once, for any number of walks on any trees. Owned by whoever
// prepared it.
struct FixtopPath;
// Null when the expression does not parse; `error` then tells why, as FixtopDescribePath does.
FIXTOP_EXPORT FixtopPath* FixtopPreparePath(const FIValue& expression, FIValue& error);
FIXTOP_EXPORT void FixtopFreePath(FixtopPath* path);
// Moves an iterator to the first node that the path leads to, as SeekPath does: false, and back
// where it was, when there is none. `attribute` is the one in which the path ends, or NULL.
FIXTOP_EXPORT bool FixtopWalkPath(const FixtopPath* path, FIIteratorBase* node, FIValue& attribute);

// A node that a path leads to. All is lent for the call.
struct FixtopMatch {
    FIIteratorBase* node;
    const char* path;       // from the root of the tree, to this node and no other
    const char* attribute;  // in which the path ends; null without one
};
// False ends the visits. Nothing may be thrown.
using FixtopMatchVisitor = bool (*)(void* owner, const FixtopMatch* match);
// Visits all nodes that the path leads to from a node, in the order of the tree; a path that ends
// in an attribute leads to nodes where that is not NULL. Answers how many were visited.
FIXTOP_EXPORT int FixtopMatchPath(const FixtopPath* path, FIIteratorBase* start,
                                  FixtopMatchVisitor visit, void* owner);
// The same with the paths from `start`. The way back to the root takes a look at the nodes that
// stand beside each on it, which adds up where a path is followed from each node of a long list.
FIXTOP_EXPORT int FixtopMatchPathBelow(const FixtopPath* path, FIIteratorBase* start,
                                       FixtopMatchVisitor visit, void* owner);

// Where a path ends that leads nowhere.
struct FixtopPathEnd {
    FIValue found;             // the part of it that leads somewhere, as it was written
    FIValue name;              // of the next step, plainly
    FIValue step;              // the next step, without its parentheses
    FIValue parentheses;       // what that step is not found with, NULL when it is not there at all
    bool moreFollows = false;  // behind that step, so that its parentheses hold a key
};
// An iterator on the node that a path leads to as far as it leads anywhere; its end otherwise.
FIXTOP_EXPORT FIIteratorBase* FixtopEndOfPath(const FixtopPath* path, FIIteratorBase* start,
                                              FixtopPathEnd& end);

// A child of a node. All is lent for the call.
struct FixtopChild {
    FIIteratorBase* node;
    const char* name;  // by which the child is sought; its own name may show entities
    const char* step;  // of a path, to this child and no other
    int index;         // count of the siblings before it
};
// False ends the visits. Nothing may be thrown.
using FixtopChildVisitor = bool (*)(void* owner, const FixtopChild* child);
// Visits the children of a node in their order.
FIXTOP_EXPORT void FixtopVisitChildren(FIIteratorBase* node, FixtopChildVisitor visit, void* owner);
// The path that leads from the root to the iterator's node and no other; empty for the root.
FIXTOP_EXPORT void FixtopPathTo(FIIteratorBase* node, FIValue& path);
// A name, or a key in parentheses, as it is written in a path: in quotes where it needs them.
FIXTOP_EXPORT void FixtopWriteName(const FIValue& name, FIValue& written);
FIXTOP_EXPORT void FixtopWriteKey(const FIValue& key, FIValue& written);
// What tells the node from siblings of its name, as plain text; NULL when nothing does.
FIXTOP_EXPORT void FixtopKeyOf(FIIteratorBase* node, FIValue& key);
// The entry of the node, for clients that take a hold of their own over several writes (CanHold,
// BeginBatch), where each write of an iterator takes one and gives it back. One reference.
FIXTOP_EXPORT FIEntry* FixtopEntryOf(FIIteratorBase* node);

// ---- Collections ----

// A selection of nodes, empty; fixtop/collection.h tells what it does.
FIXTOP_EXPORT FICollectionBase* FixtopMakeCollection();

// ---- The neutral view ----

// The files of a neutral view, sought beside the module and in the working directory, then among
// the shipped ones. A null text is the shipped file, or "Hovex" for the name of the translation.
struct FixtopModelFiles {
    const char* classes;
    const char* map;
    const char* units;
    const char* translateName;
    // Of a list with n elements n modulo 256 are shown, as map files have it; or else all.
    bool wholeLists = false;
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
// The typed interface of a class and its members. Each class has one, and its one base is that of
// the first of its superclasses, by name, that the library has. Members are numbered over the
// bases, the farthest first, at most 100 an interface. All is lent for the call.
struct FixtopMember {
    enum Kind : int {
        kInterface = 0,  // the interface itself, ahead of its members
        kValue = 1,      // leads to a node without a class: a number, a text, a choice
        kObject = 2,     // to a node of a class
        kArray = 3,      // to the elements of a list, nodes of a class
    };
    int kind;
    int number;                 // of an interface how many members its bases have
    const char* className;      // "QSIMaterialStream"
    const char* interfaceName;  // "IQSIMaterialStream"
    const char* baseName;       // the class of the base; null for none
    // The following are null for an interface.
    const char* name;      // the step of a path that leads there, plainly
    const char* owner;     // the class that declares it
    const char* type;      // "Real", "Object" ..., as the class library has it
    const char* typeName;  // the class of an object, the enumeration of a choice; else empty
    const char* quantity;  // empty for none, and where the units can't be had
    bool isArray;          // a value of which the class library says so leads to the first element
};
// False ends the visits. Nothing may be thrown.
using FixtopMemberVisitor = bool (*)(void* owner, const FixtopMember* member);
// Reads a class library and visits the interface of a class: that of its farthest base and the
// members of that, and so on, so that the numbers rise from 0. With a null class it visits the
// interfaces of all classes, each once and behind its base. Answers how many were visited, 0 when
// there is no such class or the library can't be read, which is told in the log.
FIXTOP_EXPORT int FixtopVisitMembers(const FixtopModelFiles* files, const char* className,
                                     FixtopMemberVisitor visit, void* owner);
// The id of an interface in the type library of a version: version 5 of RFC 4122 of the text
// "<name> <major>.<minor>" in the namespace {6f0b1c60-3a47-4d0e-9b21-5c7e1064d802}.
FIXTOP_EXPORT void FixtopInterfaceId(const char* name, int major, int minor, InterfaceId* id);
// What is wrong in class and map files, for those who write them. All is lent for the call.
struct FixtopFinding {
    // A mistake makes the readers leave something out, or do what nobody can have meant. An
    // attribute without a translator is there for its author to know.
    enum Kind : int { kMistake = 1, kUnmapped = 2 };
    int kind;
    const char* file;  // its path, or the name of a shipped one
    int line;          // where the tag ends that it is about; 0 for the file as a whole
    const char* text;  // what is wrong and, where that can be said, what would be right
};
// False ends the visits. Nothing may be thrown.
using FixtopFindingVisitor = bool (*)(void* owner, const FixtopFinding* finding);
// Reads the files as an open would, without opening anything, and visits what it finds, by file and
// line. Answers how many were visited.
FIXTOP_EXPORT int FixtopCheckModel(const FixtopModelFiles* files, FixtopFindingVisitor visit,
                                   void* owner);
// Whether an attribute of its class has a value on an object of a neutral view, and if not, why.
enum FixtopAbsence : int {
    kFixtopNotNeutral = -1,   // the node is no object of a neutral view
    kFixtopHasValue = 0,      // or is an object that is there, or a list that shows an element
    kFixtopUnmapped = 1,      // the map has no translator for it at all, or the class no such
                              // attribute
    kFixtopNoTranslator = 2,  // none of its translators applies here
    kFixtopNoNode = 3,        // the one that does leads to no node
    kFixtopNoValue = 4,       // the node has no value, or the list no element
    kFixtopRefused = 5,       // the value has a unit, or an option, that the class library lacks
};
// One of these; `reason` says more, in the same words wherever the reason is the same.
FIXTOP_EXPORT int FixtopWhyMissing(FIIteratorBase* node, const char* attribute, FIValue& reason);
// What the nodes of one object of the case have in common, in either view; 0 for a node that stands
// on none.
FIXTOP_EXPORT unsigned long long FixtopObjectNumber(FIIteratorBase* node);
// The node of the application that a node of a neutral view is mapped to: face 1 has the calculated
// values, face 2 the specified ones. Null when there is none, or the node is no neutral one. The
// attributes "path" and "converters" of the neutral node tell where it leads and why.
FIXTOP_EXPORT FIIteratorBase* FixtopApplicationNode(FIIteratorBase* node, int face);

}  // namespace fixtop
