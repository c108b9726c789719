// SPDX-License-Identifier: Apache-2.0
#pragma once

// FISolver: starts, pauses, stops and watches a simulation's solver.
//
// Ownership: a top entry owns it, lends it through QueryService and frees it. A subscriber has to
// leave before that: the case may go on calling it.
// Errors: what is refused answers false, or a message in an out value or a record.

#include <vector>

#include "fixtop/entry.h"

namespace fixtop::inline FI {

// Severities of the records of a solver report.
enum FISeverity : int { kSeverityNotSupported = -1, kSeverityFailure = 2, kSeverityNote = 4 };

// One record an observation: code is the severity, the two integers are 0.
using FIErrorList = std::vector<FIErrorRecord>;

// Subscription kinds of a solver: 0 the solve is complete, 1 it ended incomplete, 3 the run state
// changed. `report` is null or lives for the call.
using FISolverCallback = void (*)(void* owner, int kind, const FIErrorList* report);

class FISolver {
 public:
    virtual ~FISolver() = default;
    // Nothing is needed before the first use; kept for its place in the table, like the Reserved.
    virtual void Initialize() = 0;
    // 1 steady state, 4 dynamic.
    virtual int Kind() = 0;
    // Adds a record for each thing that prevents a solve. A dynamic solver answers the host's
    // solver object, a steady-state solver null.
    virtual void* CheckSolve(FIErrorList& errors) = 0;
    virtual void Options(FIErrorList& errors) = 0;
    // One blocking pass, then a record that says whether the solve is complete.
    virtual void SolveOnceNow(FIErrorList& errors) = 0;
    virtual bool Reserved6() = 0;
    // Starts a solve and returns; false when there is nothing to run.
    virtual bool Run() = 0;
    virtual void Pause() = 0;
    virtual void Resume() = 0;
    virtual void Stop() = 0;
    virtual void Reserved11() = 0;
    virtual double Reserved12() = 0;
    virtual void* Reserved13() = 0;
    virtual void* Reserved14() = 0;
    virtual bool Reserved15() = 0;
    // Kind 2 is refused.
    virtual bool Subscribe(void* owner, int kind, FISolverCallback callback) = 0;
    virtual bool Unsubscribe(void* owner, int kind) = 0;
    virtual void GetAttribute(const FIValue& name, FIValue& out) = 0;
    // `out` is NULL on success, else the message.
    virtual void SetAttribute(const FIValue& name, const FIValue& value, FIValue& out) = 0;
    virtual FIAttributeSource* GetAttributeSource() = 0;
    virtual void SetVarSet(FIVarSet* vars) = 0;
    virtual FIVarSet* GetVarSet() = 0;
};

}  // namespace fixtop::inline FI
