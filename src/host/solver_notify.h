#pragma once

// HSolverNotify: stands between the model callback of a case and the clients: keeps the run state
// of the case's solver, tells solver subscribers, and hands on to whoever was installed before.
//
// Ownership: one object a case, counted; ForCase makes it or adds a reference, the last Release
// takes it out of the map. While it has users (subscribers, or a raw callback) it stands installed
// in the host's manager and keeps itself. Reentrance: a callback may subscribe, unsubscribe, or
// give up the last user. Where the platform marshals calls between threads, it may be called from
// any of them as it stands.

#include <cstdint>
#include <vector>

#include "framework/ref.h"
#include "framework/solver.h"
#include "framework/top_entry.h"
#include "host/interface/simulation_case.h"
#include "platform/free_threading.h"

// A record of a solver report, and the one that tells how a solve ended.
FIErrorRecord SolverRecord(int severity, const char* message);
FIErrorRecord EndRecord(bool incomplete);

class HSolverNotify final : public host::IModelCallback {
 public:
    enum RunState : int { kStopped = 0, kRunning = 1, kPaused = 2 };
    // Subscription kind of the changes of the run state.
    static constexpr int kStateChanged = 3;

    // The object of a case; null is a case of its own.
    static Ref<HSolverNotify> ForCase(host::SimulationCase* simulation_case);

    // 0, and a counted pointer, for the identity that all counted interfaces share and for the
    // platform's marshaling; a negative code, and null, for any other.
    long QueryInterface(const void* interface_id, void** out) override;
    unsigned long AddRef() override;
    unsigned long Release() override;
    void SimulationStarted() override;
    void SimulationStopped() override;
    void SimulationStep() override;
    void SimulationEvent() override;

    // Kind 2 is refused.
    bool Subscribe(void* owner, int kind, FISolverCallback callback);
    bool Unsubscribe(void* owner, int kind);

    // The plain function that is called when no callback stood installed before. Only the first one
    // is taken.
    void SetRawCallback(FINotify callback);
    void ClearRawCallback();

    RunState State() const { return state_; }
    // Moves the run state and tells the subscribers.
    void ChangeState(RunState state);

 private:
    struct Subscriber {
        void* owner;
        int kind;
        FISolverCallback callback;
        std::uint64_t number;
    };

    explicit HSolverNotify(host::SimulationCase* simulation_case) : case_(simulation_case) {}
    virtual ~HSolverNotify();

    void AddUser();
    void DropUser();
    void Tell(int kind, const FIErrorList* report);
    void CheckEnd();
    // To the callback that stood installed before, or else to the raw callback, which gets a number
    // in place of the slot.
    void Forward(void (host::IModelCallback::*slot)(), int raw_event);
    host::COnlineConnectivityManager* Manager() const;

    host::SimulationCase* case_;
    host::IModelCallback* saved_ = nullptr;
    FINotify raw_callback_ = nullptr;
    RunState state_ = kStopped;
    std::vector<Subscriber> subscribers_;
    std::uint64_t last_number_ = 0;
    int users_ = 0;
    unsigned long references_ = 1;
    FreeThreadedMarshaler marshaler_;
};
