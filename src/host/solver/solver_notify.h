// SPDX-License-Identifier: Apache-2.0
#pragma once

// HSolverNotify: stands between the model callback of a case and the clients: keeps the run state
// of the case's solver, tells solver subscribers, and hands on to whoever was installed before.
//
// Ownership: one object a case, counted; ForCase makes it or adds a reference. While it has users
// (subscribers, a raw callback, or somebody who watches the case) it stands installed in the host's
// manager and keeps itself. When the case is gone it lets go of all of them. Reentrance: a callback
// may subscribe, unsubscribe, or give up the last user. Where the platform marshals calls between
// threads, it may be called from any of them as it stands.

#include <cstdint>
#include <vector>

#include "fixtop/host/simulation_case.h"
#include "fixtop/ref.h"
#include "fixtop/solver.h"
#include "framework/nodes/top_entry.h"
#include "host/case_life.h"
#include "platform/free_threading.h"

namespace fixtop {

// A record of a solver report, and the one that tells how a solve ended.
FIErrorRecord SolverRecord(int severity, const char* message);
FIErrorRecord EndRecord(bool incomplete);

class HSolverNotify final : public host::IModelCallback {
 public:
    enum RunState : int { kStopped = 0, kRunning = 1, kPaused = 2 };
    // Subscription kind of the changes of the run state.
    static constexpr int kStateChanged = 3;

    // The object of a case that is there; null is a case of its own.
    static Ref<HSolverNotify> ForCase(host::SimulationCase* simulation_case);
    // A new one, for the record of a case that has none.
    static Ref<HSolverNotify> Make(CaseLife& life);

    // 0, and a counted pointer, for the identity that all counted interfaces share and for the
    // platform's marshaling; a negative code, and null, for any other.
    long QueryInterface(const void* interface_id, void** out) override;
    unsigned long AddRef() override;
    unsigned long Release() override;
    void SimulationStarted() override;
    void SimulationStopped() override;
    void SimulationStep() override;
    void SimulationEvent() override;

    // Kind 2 is refused, and every kind when the case is gone.
    bool Subscribe(void* owner, int kind, FISolverCallback callback);
    bool Unsubscribe(void* owner, int kind);

    // The plain function that is called when no callback stood installed before. Only the first one
    // is taken.
    void SetRawCallback(FINotify callback);
    void ClearRawCallback();

    RunState State() const { return state_; }
    // Moves the run state and tells the subscribers.
    void ChangeState(RunState state);

    // Whoever needs it installed, beside subscribers and the raw callback.
    void AddUser();
    void DropUser();
    // The case is over for this side; `is_there`: the host has it still, and its manager.
    void End(bool is_there);

 private:
    struct Subscriber {
        void* owner;
        int kind;
        FISolverCallback callback;
        std::uint64_t number;
    };

    explicit HSolverNotify(CaseLife& life) : life_(Ref<CaseLife>::Share(&life)) {}
    virtual ~HSolverNotify();

    void TakeOut(host::COnlineConnectivityManager* manager);
    void Tell(int kind, const FIErrorList* report);
    void CheckEnd();
    // To the callback that stood installed before, or else to the raw callback, which gets a number
    // in place of the slot.
    void Forward(void (host::IModelCallback::*slot)(), int raw_event);
    host::COnlineConnectivityManager* Manager() const;
    host::FlowSheetSolver* MainSolver() const;
    host::SimulationCase* Case() const;
    bool IsOver() const { return life_->IsTracked() && !life_->IsLive(); }

    const Ref<CaseLife> life_;
    host::IModelCallback* saved_ = nullptr;
    FINotify raw_callback_ = nullptr;
    RunState state_ = kStopped;
    std::vector<Subscriber> subscribers_;
    std::uint64_t last_number_ = 0;
    int users_ = 0;
    unsigned long references_ = 1;
    FreeThreadedMarshaler marshaler_;
};

}  // namespace fixtop
