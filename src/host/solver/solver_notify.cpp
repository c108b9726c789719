// SPDX-License-Identifier: Apache-2.0
#include "host/solver/solver_notify.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "diagnostics/memory_guard.h"
#include "framework/nodes/change_round.h"

namespace fixtop {

namespace {

constexpr long kNoInterface = static_cast<long>(static_cast<std::int32_t>(0x80004002));

// {00000000-0000-0000-C000-000000000046}
constexpr unsigned char kIdentityInterface[16] = {0,    0, 0, 0, 0, 0, 0, 0,
                                                  0xC0, 0, 0, 0, 0, 0, 0, 0x46};

}  // namespace

FIErrorRecord SolverRecord(int severity, const char* message) {
    return {severity, 0, 0, FIValue(message)};
}

FIErrorRecord EndRecord(bool incomplete) {
    return incomplete ? SolverRecord(kSeverityFailure, "Solve did not complete")
                      : SolverRecord(kSeverityNote, "Solve is complete");
}

Ref<HSolverNotify> HSolverNotify::ForCase(host::SimulationCase* simulation_case) {
    return CaseLife::Of(simulation_case)->Notifier();
}

Ref<HSolverNotify> HSolverNotify::Make(CaseLife& life) {
    life.notifier_ = new HSolverNotify(life);
    return Ref<HSolverNotify>::Adopt(life.notifier_);
}

HSolverNotify::~HSolverNotify() {
    life_->notifier_ = nullptr;
}

long HSolverNotify::QueryInterface(const void* interface_id, void** out) {
    auto* self = static_cast<host::IModelCallback*>(this);
    if (interface_id && std::memcmp(interface_id, kIdentityInterface, 16) == 0) {
        AddRef();
        *out = self;
        return 0;
    }
    return marshaler_.Query(self, interface_id, out) ? 0 : kNoInterface;
}

unsigned long HSolverNotify::AddRef() {
    return ++references_;
}

unsigned long HSolverNotify::Release() {
    const unsigned long left = --references_;
    if (left == 0) delete this;
    return left;
}

host::COnlineConnectivityManager* HSolverNotify::Manager() const {
    host::SimulationCase* simulation_case = Case();
    return simulation_case ? simulation_case->OnlineManager() : nullptr;
}

// Of a host that keeps no track the case is there as long as the host calls.
host::SimulationCase* HSolverNotify::Case() const {
    return life_->IsTracked() ? life_->Case() : life_->case_;
}

host::FlowSheetSolver* HSolverNotify::MainSolver() const {
    host::SimulationCase* simulation_case = Case();
    return simulation_case ? simulation_case->MainSolver() : nullptr;
}

void HSolverNotify::AddUser() {
    if (users_++ > 0) return;
    AddRef();
    host::COnlineConnectivityManager* manager = Manager();
    if (!manager) return;
    if (saved_) saved_->Release();
    saved_ = manager->ModelCallback();
    if (saved_) saved_->AddRef();
    manager->put_ModelCallback(this);
}

void HSolverNotify::DropUser() {
    if (users_ > 0 && --users_ == 0) TakeOut(Manager());
}

// Gives the manager, where it is still there, to whom it had before.
void HSolverNotify::TakeOut(host::COnlineConnectivityManager* manager) {
    if (manager) manager->put_ModelCallback(saved_);
    if (saved_) saved_->Release();
    saved_ = nullptr;
    Release();
}

void HSolverNotify::End(bool is_there) {
    auto self = Ref<HSolverNotify>::Share(this);
    subscribers_.clear();
    raw_callback_ = nullptr;
    state_ = kStopped;
    if (std::exchange(users_, 0) == 0) return;
    host::SimulationCase* simulation_case = is_there ? life_->case_ : nullptr;
    TakeOut(simulation_case ? simulation_case->OnlineManager() : nullptr);
}

bool HSolverNotify::Subscribe(void* owner, int kind, FISolverCallback callback) {
    if (kind == 2 || IsOver()) return false;
    subscribers_.push_back({owner, kind, callback, last_number_ + 1});
    ++last_number_;
    AddUser();
    return true;
}

bool HSolverNotify::Unsubscribe(void* owner, int kind) {
    const auto found = std::find_if(
        subscribers_.begin(), subscribers_.end(),
        [&](const Subscriber& each) { return each.owner == owner && each.kind == kind; });
    if (found == subscribers_.end()) return false;
    subscribers_.erase(found);
    DropUser();
    return true;
}

void HSolverNotify::SetRawCallback(FINotify callback) {
    if (raw_callback_ || !callback || IsOver()) return;
    raw_callback_ = callback;
    AddUser();
}

void HSolverNotify::ClearRawCallback() {
    if (!raw_callback_) return;
    raw_callback_ = nullptr;
    DropUser();
}

void HSolverNotify::ChangeState(RunState state) {
    auto self = Ref<HSolverNotify>::Share(this);
    state_ = state;
    Tell(kStateChanged, nullptr);
}

void HSolverNotify::Tell(int kind, const FIErrorList* report) {
    // Those who leave during the round are not told any more, those who come are told next time.
    const std::uint64_t last = last_number_;
    std::uint64_t told = 0;
    const auto is_next = [&](const Subscriber& each) {
        return each.kind == kind && each.number > told && each.number <= last;
    };
    while (true) {
        const auto next = std::find_if(subscribers_.begin(), subscribers_.end(), is_next);
        if (next == subscribers_.end()) return;
        const Subscriber each = *next;
        told = each.number;
        memory::Outside([&] { each.callback(each.owner, kind, report); });
    }
}

void HSolverNotify::Forward(void (host::IModelCallback::*slot)(), int raw_event) {
    life_->AsEvent([&] {
        if (saved_) {
            auto saved = Ref<host::IModelCallback>::Share(saved_);
            memory::Outside([&] { (saved.Get()->*slot)(); });
        } else if (raw_callback_) {
            memory::Outside([&] { raw_callback_(raw_event); });
        }
    });
}

void HSolverNotify::SimulationStarted() {
    auto self = Ref<HSolverNotify>::Share(this);
    memory::Contain([this] { Forward(&host::IModelCallback::SimulationStarted, 0); });
}

void HSolverNotify::SimulationStopped() {
    auto self = Ref<HSolverNotify>::Share(this);
    memory::Contain([this] { Forward(&host::IModelCallback::SimulationStopped, 0); });
}

// Who stands in no list that the raw callback serves hears of the change from the case's record.
void HSolverNotify::SimulationStep() {
    auto self = Ref<HSolverNotify>::Share(this);
    const ChangeRound::Announced change;
    life_->BeginChange();
    memory::Contain([this] {
        if (state_ == kRunning) CheckEnd();
        Tell(kStateChanged, nullptr);
        Forward(&host::IModelCallback::SimulationStep, 0);
    });
    life_->TellChange();
}

void HSolverNotify::SimulationEvent() {
    auto self = Ref<HSolverNotify>::Share(this);
    const ChangeRound::Announced end;
    memory::Contain([this] { Forward(&host::IModelCallback::SimulationEvent, 1); });
    life_->End();
}

void HSolverNotify::CheckEnd() {
    host::FlowSheetSolver* solver = MainSolver();
    if (!solver || !solver->Finished()) return;
    state_ = kStopped;
    solver->Holding(true);
    const bool incomplete = solver->NeedsToRun();
    // Whoever waits for the end is told of it even when there is no memory to say more.
    FIErrorList report;
    memory::Contain([&] { report = {EndRecord(incomplete)}; });
    Tell(incomplete ? 1 : 0, report.empty() ? nullptr : &report);
}

}  // namespace fixtop
