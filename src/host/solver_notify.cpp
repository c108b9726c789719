#include "host/solver_notify.h"

#include <algorithm>
#include <cstring>
#include <map>

namespace {

constexpr long kNoInterface = static_cast<long>(static_cast<std::int32_t>(0x80004002));

// {00000000-0000-0000-C000-000000000046}
constexpr unsigned char kIdentityInterface[16] = {0,    0, 0, 0, 0, 0, 0, 0,
                                                  0xC0, 0, 0, 0, 0, 0, 0, 0x46};

std::map<host::SimulationCase*, HSolverNotify*>& Notifiers() {
    static std::map<host::SimulationCase*, HSolverNotify*> notifiers;
    return notifiers;
}

}  // namespace

FIErrorRecord SolverRecord(int severity, const char* message) {
    return {severity, 0, 0, FIValue(message)};
}

FIErrorRecord EndRecord(bool incomplete) {
    return incomplete ? SolverRecord(kSeverityFailure, "Solve did not complete")
                      : SolverRecord(kSeverityNote, "Solve is complete");
}

Ref<HSolverNotify> HSolverNotify::ForCase(host::SimulationCase* simulation_case) {
    HSolverNotify*& place = Notifiers()[simulation_case];
    if (place) return Ref<HSolverNotify>::Share(place);
    place = new HSolverNotify(simulation_case);
    return Ref<HSolverNotify>::Adopt(place);
}

HSolverNotify::~HSolverNotify() {
    Notifiers().erase(case_);
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
    return case_ ? case_->OnlineManager() : nullptr;
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
    if (--users_ > 0) return;
    if (host::COnlineConnectivityManager* manager = Manager()) manager->put_ModelCallback(saved_);
    if (saved_) saved_->Release();
    saved_ = nullptr;
    Release();
}

bool HSolverNotify::Subscribe(void* owner, int kind, FISolverCallback callback) {
    if (kind == 2) return false;
    subscribers_.push_back({owner, kind, callback, ++last_number_});
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
    if (raw_callback_ || !callback) return;
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
    const std::vector<Subscriber> round = subscribers_;
    for (const Subscriber& each : round) {
        if (each.kind != kind) continue;
        const bool stays =
            std::any_of(subscribers_.begin(), subscribers_.end(),
                        [&](const Subscriber& present) { return present.number == each.number; });
        if (stays) each.callback(each.owner, kind, report);
    }
}

void HSolverNotify::Forward(void (host::IModelCallback::*slot)(), int raw_event) {
    if (saved_) {
        auto saved = Ref<host::IModelCallback>::Share(saved_);
        (saved.Get()->*slot)();
    } else if (raw_callback_) {
        raw_callback_(raw_event);
    }
}

void HSolverNotify::SimulationStarted() {
    auto self = Ref<HSolverNotify>::Share(this);
    Forward(&host::IModelCallback::SimulationStarted, 0);
}

void HSolverNotify::SimulationStopped() {
    auto self = Ref<HSolverNotify>::Share(this);
    Forward(&host::IModelCallback::SimulationStopped, 0);
}

void HSolverNotify::SimulationStep() {
    auto self = Ref<HSolverNotify>::Share(this);
    if (state_ == kRunning) CheckEnd();
    Tell(kStateChanged, nullptr);
    Forward(&host::IModelCallback::SimulationStep, 0);
}

void HSolverNotify::SimulationEvent() {
    auto self = Ref<HSolverNotify>::Share(this);
    Forward(&host::IModelCallback::SimulationEvent, 1);
}

void HSolverNotify::CheckEnd() {
    host::FlowSheetSolver* solver = case_ ? case_->MainSolver() : nullptr;
    if (!solver || !solver->Finished()) return;
    state_ = kStopped;
    solver->Holding(true);
    const bool incomplete = solver->NeedsToRun();
    const FIErrorList report = {EndRecord(incomplete)};
    Tell(incomplete ? 1 : 0, &report);
}
