// SPDX-License-Identifier: Apache-2.0
#include "host/levels/case_top.h"

#include <cstring>

#include "framework/nodes/empties.h"
#include "framework/nodes/shield.h"
#include "framework/nodes/subscribers.h"
#include "host/adapter.h"
#include "host/host_access.h"

namespace fixtop {

namespace {

using Self = FIXTopEntry;

constexpr char kBooleanExpected[] = "Argument mismatch, boolean value required.";
constexpr int kHidden = 0;
constexpr int kShown = 4;

SubscriberList& Subscribers() {
    return TheAdapter().Subscribers();
}

// Brings the application's window to `state` when it is, or is not, hidden.
void ChangeWindow(host::Session& session, bool when_hidden, int state) {
    host::ApplicationForm* form = session.GetAppForm();
    if (!form) return;
    host::WindowPlacement placement;
    form->GetWindowPlacement(placement);
    if ((placement.show_state == kHidden) != when_hidden) return;
    placement.show_state = state;
    form->SetWindowPlacement(placement);
}

void HideCase(host::SimulationCase& simulation_case, host::Session& session) {
    session.HideDocument(&simulation_case, true);
    if (!session.ActiveCase()) ChangeWindow(session, false, kHidden);
}

void ShowCase(host::SimulationCase& simulation_case, host::Session& session) {
    ChangeWindow(session, true, kShown);
    session.HideDocument(&simulation_case, false);
    TheAdapter().Services()->UpdateViews(nullptr);
}

host::VarDescription Variable(const char* moniker) {
    return host::VarDescription(moniker, 0);
}

}  // namespace

FIXTopEntry::FIXTopEntry(FIContext* context, host::SimulationCase* simulation_case,
                         FINotify* notify_slot, FISolver* solver)
    : FITopEntry(context, nullptr, solver),
      life_(CaseLife::Of(CaseOrActive(simulation_case))),
      has_subscriptions_(notify_slot != nullptr) {
    if (host::HostServices* services = TheAdapter().Services()) {
        services->SetConfigData("ErrorsToTrace", 1.0, false);
        services->SetConfigData("NumErrsToTrace", 1.0, false);
    }
    if (notify_slot) *notify_slot = &FIXTopEntry::Dispatch;
}

FIXTopEntry::~FIXTopEntry() {
    memory::Contain([this] {
        life_->Leave(*this);
        Subscribers().Clear();
        CaseLife::TellAllForgotten();
    });
}

// The host's callback has told the subscribers of this case already, where it came this way.
void FIXTopEntry::OnEnd() {
    Subscribers().TellEnd(life_.Get());
}

std::span<const AttrRow<FIXTopEntry>> FIXTopEntry::AttributeRows() {
    static const AttrRow<Self> rows[] = {
        {"id", [](Self&, FIValue& out) { out.SetText("Top"); }},
        {"type", [](Self&, FIValue& out) { out.SetText("TopNode"); }},
        {"status", [](Self& self, FIValue& out) { self.ReadStatus(out); }},
        {"server",
         [](Self& self, FIValue& out) { ReadAttribute<FITopEntry>(self, FIValue("server"), out); }},
        {"visible",
         [](Self& self, FIValue& out) {
             host::SimulationCase* simulation_case = self.life_->Case();
             out.Clear();
             if (simulation_case) out.SetText(simulation_case->IsVisible() ? "true" : "false");
         },
         [](Self& self, const FIValue& value, int, FIValue& out) {
             self.SetVisible(value, out);
             return true;
         }},
        {"attachments", [](Self& self, FIValue& out) { out.SetInt(self.attachments_ ? 1 : 0); },
         [](Self& self, const FIValue& value, int, FIValue& out) {
             self.SetAttachments(value, out);
             return true;
         }},
    };
    return rows;
}

void FIXTopEntry::GetAttribute(const FIValue& name, FIValue& out) {
    ReadAttribute(*this, name, out);
}

FIAttributeCursorBase* FIXTopEntry::MakeCursor() {
    return HandOut(new Shielded<AttrMapCursorBase<FIXTopEntry>>(this));
}

void FIXTopEntry::ReadStatus(FIValue& out) const {
    host::SimulationCase* simulation_case = life_->Case();
    out.Clear();
    if (!simulation_case) return;
    host::Viewable* solver =
        simulation_case->ResolveVariableOwner(Variable("FlowSht.1/Solver.400"));
    if (!solver) {
        out.SetText("Severe error, no solver found.");
    } else if (solver->GetRealValue(Variable(":Boolean.302")) == 0.0) {
        out.SetText("Solver running.");
    } else if (solver->GetRealValue(Variable(":Boolean.300")) == 0.0) {
        out.SetText("Ready");
    } else if (solver->GetTextValue(Variable("ConsistencyVariable")) == "Unknown.0") {
        out.SetText("Holding");
    } else {
        out.SetText("Holding, consistency error.");
    }
}

void FIXTopEntry::SetAttribute(const FIValue& name, const FIValue& value, int mode, FIValue& out) {
    const bool is_named = name.IsText() && *name.CStr() != '\0';
    WriteAttribute(*this, name, value, mode,
                   is_named ? "Attribute not supported." : "No attribute name supplied", out);
}

void FIXTopEntry::SetAttachments(const FIValue& value, FIValue& out) {
    attachments_ = value.AsInt() != 0;
    out.Clear();
    const HostAdapter::AttachCall attach = TheAdapter().Attach();
    if (!attach || !attach(GetContext(), attachments_)) {
        out = FIValue("Unable to set attachments");
    }
}

void FIXTopEntry::SetVisible(const FIValue& value, FIValue& out) {
    host::HostServices* services = TheAdapter().Services();
    host::Session* session = services ? services->pSession() : nullptr;
    host::SimulationCase* simulation_case = life_->Case();
    if (!simulation_case || !session) {
        out = FIValue("Application Interface is not available.");
        return;
    }
    const std::string text = value.ToText();
    const bool hide = text == "false" || text == "0";
    if (value.IsNull() || (!hide && text != "true" && text != "1")) {
        out = FIValue(kBooleanExpected);
        return;
    }
    memory::Outside([&] {
        if (hide) {
            HideCase(*simulation_case, *session);
        } else {
            ShowCase(*simulation_case, *session);
        }
    });
    out.Clear();
    Dispatch(0);
}

bool FIXTopEntry::Subscribe(void* owner, int kind, FICallback callback) {
    const bool accepts = has_subscriptions_ && !IsGone();
    if (!accepts) return false;
    life_->Watch(*this);
    Subscribers().Add(owner, kind, callback, life_.Get());
    return true;
}

bool FIXTopEntry::Unsubscribe(void* owner, int kind) {
    return has_subscriptions_ && Subscribers().Remove(owner, kind);
}

void FIXTopEntry::Dispatch(int event) {
    memory::Contain([event] { Subscribers().Dispatch(event, Liveness::OfEvent()); });
}

}  // namespace fixtop
