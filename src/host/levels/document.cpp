// SPDX-License-Identifier: Apache-2.0
#include "host/levels/document.h"

#include <utility>

#include "fixtop/solver.h"
#include "host/adapter.h"
#include "host/host_access.h"

namespace fixtop {

namespace {

void RefuseHistory(FIErrorRecord& error) {
    error = FIErrorRecord();
    error.code = kSeverityFailure;
    error.text.SetText("History not supported");
}

}  // namespace

HDocumentAgg::HDocumentAgg(host::SimulationCase* simulation_case, HCollectionCalls calls)
    : life_(CaseLife::Of(CaseOrActive(simulation_case))), calls_(calls) {}

HDocumentAgg::~HDocumentAgg() {
    DropCollection();
}

bool HDocumentAgg::IsOf(host::SimulationCase* simulation_case) const {
    return CaseLife::Of(CaseOrActive(simulation_case)).Get() == life_.Get();
}

void HDocumentAgg::DocumentName(FIValue& out) const {
    host::SimulationCase* simulation_case = life_->Case();
    out.Clear();
    if (simulation_case) out.SetText(simulation_case->GetDocumentName().Name().CStr());
}

void HDocumentAgg::ApplicationName(FIValue& out) const {
    out.SetText("Hovex");
}

void HDocumentAgg::SessionText(FIValue& out) const {
    host::HostServices* services = TheAdapter().Services();
    host::Session* session = services ? services->pSession() : nullptr;
    out.Clear();
    if (session) out.SetText(session->SessionText(true).CStr());
}

void* HDocumentAgg::CreateCollection() {
    if (!collection_ && calls_.make) collection_ = calls_.make(life_->Case());
    return collection_;
}

void HDocumentAgg::DropCollection() {
    // Whoever goes with it may ask for another one.
    void* const dropped = std::exchange(collection_, nullptr);
    if (dropped && calls_.drop) calls_.drop(dropped);
}

bool HDocumentAgg::Save() {
    host::SimulationCase* simulation_case = life_->Case();
    return simulation_case && simulation_case->Save();
}

bool HDocumentAgg::SaveAs(const char* path) {
    host::SimulationCase* simulation_case = life_->Case();
    if (!simulation_case || !path || !*path) return false;
    const host::FileName before = simulation_case->GetDocumentName();
    simulation_case->SetDocumentName(host::FileName(host::Text(path), host::TheEmptyText));
    if (simulation_case->Save()) return true;
    if (host::SimulationCase* still = life_->Case()) still->SetDocumentName(before);
    return false;
}

void HDocumentAgg::ReadHistory(FIErrorRecord& error) const {
    RefuseHistory(error);
}
void HDocumentAgg::ClearHistory(FIErrorRecord& error) const {
    RefuseHistory(error);
}

}  // namespace fixtop
