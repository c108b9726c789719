// SPDX-License-Identifier: Apache-2.0
#include "host/case_life.h"

#include "diagnostics/memory_guard.h"
#include "host/adapter.h"
#include "host/solver/solver_notify.h"

namespace fixtop {

namespace {

HostAdapter::CaseRecords& Records() {
    return TheAdapter().Cases();
}

// Each is held meanwhile, and the next one sought by its place, since whoever is told may let go of
// others.
template <class Tell>
void ForEachRecord(Tell tell) {
    auto at = Records().begin();
    while (at != Records().end()) {
        host::SimulationCase* const place = at->first;
        const auto record = Ref<CaseLife>::Share(at->second);
        tell(*record);
        at = Records().upper_bound(place);
    }
}

const std::uint64_t* HostRevision() {
    host::HostServices* services = TheAdapter().Services();
    return services ? services->StructureRevision() : nullptr;
}

}  // namespace

CaseLife::CaseLife(host::SimulationCase* simulation_case)
    : Liveness(HostRevision()),
      case_(simulation_case),
      identity_(simulation_case ? IdentityOf(*simulation_case) : 0),
      installation_(TheAdapter().Installation()) {}

CaseLife::~CaseLife() {
    if (Find(case_) == this) Records().erase(case_);
}

bool CaseLife::IsSameCase() const {
    return installation_ == TheAdapter().Installation() &&
           (!case_ || identity_ == IdentityOf(*case_));
}

Ref<CaseLife> CaseLife::Of(host::SimulationCase* simulation_case) {
    CaseLife* known = Find(simulation_case);
    // The address may be that of a case which went without a word.
    if (known && !known->IsSameCase()) {
        known->EndUntold();
        known = nullptr;
    }
    if (known) return Ref<CaseLife>::Share(known);
    auto made = Ref<CaseLife>::Share(new CaseLife(simulation_case));
    Records()[simulation_case] = made.Get();
    return made;
}

CaseLife* CaseLife::Find(host::SimulationCase* simulation_case) {
    const auto found = Records().find(simulation_case);
    return found == Records().end() ? nullptr : found->second;
}

void CaseLife::EndAll() {
    ForEachRecord([](CaseLife& record) {
        record.End();
        if (record.notifier_) record.notifier_->End(record.IsThere());
    });
}

void CaseLife::TellAllForgotten() {
    ForEachRecord([](CaseLife& record) { record.TellForgotten(); });
}

// Not asked of the case itself, which may be gone.
bool CaseLife::IsThere() const {
    host::HostServices* services = TheAdapter().Services();
    if (installation_ != TheAdapter().Installation() || (case_ && !services)) return false;
    return identity_ == 0 || services->Lives(identity_);
}

void CaseLife::LookAgain() const {
    const_cast<CaseLife*>(this)->Look();
    seen_ = Revision();
}

Ref<HSolverNotify> CaseLife::Notifier() {
    if (HasEnded()) return {};
    if (notifier_) return Ref<HSolverNotify>::Share(notifier_);
    return HSolverNotify::Make(*this);
}

// Who watches hears of the case as long as it does, whoever else leaves.
void CaseLife::OnFirstWatcher() {
    Ref<HSolverNotify> notifier = Notifier();
    if (notifier) notifier->AddUser();
    watched_ = std::move(notifier);
}

void CaseLife::OnNoWatcher() {
    const Ref<HSolverNotify> watched = std::move(watched_);
    memory::Contain([&] {
        if (watched && Look()) watched->DropUser();
    });
}

// A host that keeps no track may go on calling the notification of the case whose end it told,
// until it or a client takes it out.
void CaseLife::OnEnded(bool told) {
    if (Find(case_) == this) Records().erase(case_);
    const Ref<HSolverNotify> watched = std::move(watched_);
    if (IsTracked() || !told) {
        if (notifier_) notifier_->End(told && IsThere());
    } else if (watched) {
        watched->DropUser();
    }
}

}  // namespace fixtop
