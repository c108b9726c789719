#pragma once

// What every store does with the solver: start it and wait, unless a batch is open.

#include <set>

#include "host/interface/simulation_case.h"

// The streams under composition edit. While there is one, stores start no solve.
class HEditBatch {
 public:
    // True when the stream was not in the batch yet.
    bool Add(host::Viewable* stream) { return streams_.insert(stream).second; }
    // True when it was in the batch.
    bool Remove(host::Viewable* stream) { return streams_.erase(stream) != 0; }
    bool IsOpen() const { return !streams_.empty(); }

 private:
    std::set<host::Viewable*> streams_;
};

// The batch of the process.
HEditBatch& EditBatch();

// Whether stores wait for the solver to end; true at first.
bool WaitsForSolve();
void SetWaitsForSolve(bool wait);

// Starts the solver of the main flowsheet and lets the host's loop run until it has ended or its
// stop flag is set. Callbacks arrive in the meantime. `always_wait` waits even where stores don't.
void SolveAndWait(host::SimulationCase* simulation_case, bool always_wait = false);
