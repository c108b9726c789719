// SPDX-License-Identifier: Apache-2.0
#pragma once

// The case, its flowsheets and its solver; the session and the documents around them.

#include "fixtop/host/list.h"
#include "fixtop/host/text.h"
#include "fixtop/host/viewable.h"

namespace fixtop::host {

class FlowSheetSolver;
class SimulationCase;

class FlowSheet : public Viewable {
 public:
    // In the host's own list order, off the list at first.
    virtual FlowSheetObjectIterator Objects() = 0;
    // The solver that computes this flowsheet, which may be that of the whole case; null when there
    // is none.
    virtual FlowSheetSolver* Solver() = 0;

 protected:
    ~FlowSheet() = default;
};

// The solver of a flowsheet. Its variables ":Boolean.302" (0 while running), ":Boolean.300" (0 when
// ready) and "ConsistencyVariable" (text, "Unknown.0" when nothing is inconsistent) are read as
// those of any object.
class FlowSheetSolver : public Viewable {
 public:
    // Sets the hold state: a holding solver starts nothing by itself.
    virtual void Holding(bool hold) = 0;
    // Values are stale, or the last solve did not complete.
    virtual bool NeedsToRun() = 0;
    // A solve has begun and not ended; a queued one has not begun.
    virtual bool IsSolving() = 0;
    // Starts a solve and returns; it goes on in later turns. NeedsToRun tells how it ended.
    virtual void SolveTask() = 0;
    // One blocking pass.
    virtual void SolveOnce() = 0;

    virtual bool IsHolding() = 0;
    // The user wants it stopped: the wait loops give up.
    virtual bool Stop() = 0;
    // Something of a solve is still to be done, its end included.
    virtual bool Busy() = 0;
    // A solve is queued.
    virtual bool Pending() = 0;
    // The user wants it paused.
    virtual bool PauseRequested() = 0;
    // A solve has just ended.
    virtual bool Finished() = 0;

 protected:
    ~FlowSheetSolver() = default;
};

// A reaction; its properties are variables.
using Reaction = Viewable;

class ReactionPackageManager {
 public:
    virtual int ReactionCount() = 0;
    // Null out of range.
    virtual Reaction* RxnNumber(int number) = 0;

 protected:
    ~ReactionPackageManager() = default;
};

class BasisManager : public Viewable {
 public:
    // Null when the basis has no reactions.
    virtual ReactionPackageManager* ReactionPackages() = 0;

 protected:
    ~BasisManager() = default;
};

// Notifications of the running model, implemented by the module in the manner of a component
// interface: counted, slots in this order. QueryInterface answers 0 and a counted pointer, or a
// negative code and null.
class IModelCallback {
 public:
    virtual long QueryInterface(const void* interface_id, void** out) = 0;
    virtual unsigned long AddRef() = 0;
    virtual unsigned long Release() = 0;
    virtual void SimulationStarted() = 0;
    virtual void SimulationStopped() = 0;
    // A value or the structure of the case changed.
    virtual void SimulationStep() = 0;
    // The case is going away.
    virtual void SimulationEvent() = 0;

 protected:
    ~IModelCallback() = default;
};

// A published real-time variable.
class RTIVariable : public Viewable {
 public:
    // In internal units; the empty real when it has none. The host may refuse a store silently.
    virtual double GetValue() = 0;
    virtual void SetValue(double value) = 0;
    // Name of a unit of its quantity, by which GetVarTypeFromUnitString finds the quantity; empty
    // when it has none, or none that no other quantity is found by.
    virtual Text UnitText() = 0;

 protected:
    ~RTIVariable() = default;
};

// The published variables of a connected case: "RTIVariable.500" has their index range, and
// ResolveVariableOwner on "RTIVariable.500.<n>" gives the RTIVariable.
class COnlineConnectivityManager : public Viewable {
 public:
    // Installs a callback, counted by the manager; null takes the present one out.
    virtual void put_ModelCallback(IModelCallback* callback) = 0;
    // The callback now installed, not counted for the caller; null when there is none.
    virtual IModelCallback* ModelCallback() = 0;
    // A published variable from what ResolveVariableOwner answered; null for any other object.
    virtual RTIVariable* AsPublished(Viewable* object) = 0;

 protected:
    ~COnlineConnectivityManager() = default;
};

class Document {
 public:
    // Valid until the name is set again.
    virtual const FileName& GetDocumentName() = 0;
    virtual void SetDocumentName(const FileName& name) = 0;
    // Writes the document under its name; false when it was not written, the file on the disk being
    // what it was.
    virtual bool Save() = 0;
    // Whether the document is shown by the application.
    virtual bool IsVisible() = 0;

 protected:
    ~Document() = default;
};

class SimulationCase : public Viewable, public Document {
 public:
    // Null while the case has none.
    virtual FlowSheet* MainFlowSheet() = 0;
    // Null when the case has no basis.
    virtual BasisManager* Basis() = 0;
    // Process data tables (Viewable*); null when the case has none.
    virtual const LinkedList* ProcessDataTables() = 0;
    // Utilities at case level (Viewable*); null when there are none.
    virtual const LinkedList* CaseUtilities() = 0;
    // The case is in dynamics when either of the two answers true.
    virtual bool Dynamic() = 0;
    virtual bool SimCaseDynamic() = 0;
    // The solver of the main flowsheet, and the one that is at work or would be. Null for none.
    virtual FlowSheetSolver* MainSolver() = 0;
    virtual FlowSheetSolver* ActiveSolver() = 0;
    // Null when the case is not connected.
    virtual COnlineConnectivityManager* OnlineManager() = 0;

 protected:
    ~SimulationCase() = default;
};

struct WindowPlacement {
    // 0 is hidden, 4 shown.
    int show_state = 0;
};

// The application's main window.
class ApplicationForm {
 public:
    virtual void GetWindowPlacement(WindowPlacement& out) = 0;
    virtual void SetWindowPlacement(const WindowPlacement& placement) = 0;

 protected:
    ~ApplicationForm() = default;
};

class Session {
 public:
    // The current case; null when none is open.
    virtual SimulationCase* ActiveCase() = 0;
    // Null when the application has no window.
    virtual ApplicationForm* GetAppForm() = 0;
    // Hides or shows a document; a hidden document is no longer the active case. False when it is
    // none of the session's.
    virtual bool HideDocument(Document* document, bool hide) = 0;
    // What the session calls itself; `full` adds its documents.
    virtual Text SessionText(bool full) = 0;

 protected:
    ~Session() = default;
};

}  // namespace fixtop::host
