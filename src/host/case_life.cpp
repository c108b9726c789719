#include "host/case_life.h"

#include <map>
#include <vector>

#include "host/solver_notify.h"

namespace {

std::map<host::SimulationCase*, CaseLife*>& Records() {
    // Never destroyed: handles may go while the process ends.
    static auto* const records = new std::map<host::SimulationCase*, CaseLife*>;
    return *records;
}

// Held, since whoever is told may let go of others.
std::vector<Ref<CaseLife>> AllRecords() {
    std::vector<Ref<CaseLife>> all;
    for (const auto& [simulation_case, record] : Records()) {
        all.push_back(Ref<CaseLife>::Share(record));
    }
    return all;
}

const std::uint64_t* HostRevision() {
    host::HostServices* services = host::InstalledServices();
    return services ? services->StructureRevision() : nullptr;
}

}  // namespace

CaseLife::CaseLife(host::SimulationCase* simulation_case)
    : Liveness(HostRevision()),
      case_(simulation_case),
      identity_(simulation_case ? simulation_case->Identity() : 0),
      installation_(host::ServicesInstallation()) {}

CaseLife::~CaseLife() {
    if (Find(case_) == this) Records().erase(case_);
}

bool CaseLife::IsSameCase() const {
    return installation_ == host::ServicesInstallation() &&
           (!case_ || identity_ == case_->Identity());
}

Ref<CaseLife> CaseLife::Of(host::SimulationCase* simulation_case) {
    CaseLife* known = Find(simulation_case);
    // The address may be that of a case which went without a word.
    if (known && !known->IsSameCase()) {
        known->EndUntold();
        known = nullptr;
    }
    if (!known) known = Records()[simulation_case] = new CaseLife(simulation_case);
    return Ref<CaseLife>::Share(known);
}

CaseLife* CaseLife::Find(host::SimulationCase* simulation_case) {
    const auto found = Records().find(simulation_case);
    return found == Records().end() ? nullptr : found->second;
}

void CaseLife::EndAll() {
    for (const Ref<CaseLife>& record : AllRecords()) {
        record->End();
        if (record->notifier_) record->notifier_->End(record->IsThere());
    }
}

void CaseLife::TellAllForgotten() {
    for (const Ref<CaseLife>& record : AllRecords()) record->TellForgotten();
}

// Not asked of the case itself, which may be gone.
bool CaseLife::IsThere() const {
    host::HostServices* services = host::InstalledServices();
    if (installation_ != host::ServicesInstallation() || (case_ && !services)) return false;
    return identity_ == 0 || services->Lives(identity_);
}

bool CaseLife::IsLive() const {
    if (!IsCurrent(seen_)) {
        const_cast<CaseLife*>(this)->Look();
        seen_ = Revision();
    }
    return !HasEnded();
}

Ref<HSolverNotify> CaseLife::Notifier() {
    if (HasEnded()) return {};
    if (notifier_) return Ref<HSolverNotify>::Share(notifier_);
    return HSolverNotify::Make(*this);
}

// Who watches hears of the case as long as it does, whoever else leaves.
void CaseLife::OnFirstWatcher() {
    watched_ = Notifier();
    if (watched_) watched_->AddUser();
}

void CaseLife::OnNoWatcher() {
    const Ref<HSolverNotify> watched = std::move(watched_);
    if (watched && Look()) watched->DropUser();
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
