// SPDX-License-Identifier: Apache-2.0
#include "host/levels/model_nodes.h"

#include "framework/nodes/shield.h"
#include "host/levels/case_nodes.h"
#include "host/published/published_file.h"
#include "host/published/published_variables.h"

namespace fixtop {

namespace {

// Null when the case is not connected.
host::COnlineConnectivityManager* ManagerOf(host::SimulationCase* simulation_case) {
    return simulation_case ? simulation_case->OnlineManager() : nullptr;
}

}  // namespace

HAandCContext::HAandCContext(host::SimulationCase* simulation_case, NeutralViewNames files)
    : FixedContext(simulation_case, {nullptr, true, nullptr}), files_(std::move(files)) {}

void HAandCContext::GetKeyValue(const char* path, FIValue& out, const char** rest) {
    out.SetText(HAandCCursorBase::kModelNames[HAandCEntry::kAppModel]);
    *rest = path;
}

HAandCEntry::HAandCEntry(HAandCContext* context, int index)
    : FixedEntry(context, index), options_(context->Case()) {}

std::span<const AttrRow<HAandCEntry>> HAandCEntry::AttributeRows() {
    using Self = HAandCEntry;
    static const auto rows = FixedRows({
        {"type",
         [](Self& self, FIValue& out) {
             constexpr std::array types = {"appModel", "CCDMModel", "oldAppModel"};
             out.SetText(types[self.index_]);
         }},
        {"has_children", [](Self& self, FIValue& out) { out.SetInt(self.HasChildren() ? 1 : 0); }},
        {"status", ReadMainStatus},
    });
    return rows;
}

bool HAandCEntry::HasChildren() const {
    host::SimulationCase* simulation_case = context_->Case();
    switch (index_) {
        case kAppModel:
            return true;
        case kPublishedFile:
            return simulation_case && HasPublishedFile(*simulation_case);
        default: {
            host::COnlineConnectivityManager* manager = ManagerOf(simulation_case);
            return manager && HPublishContext::CountOf(*manager) > 0;
        }
    }
}

FIContext* HAandCEntry::GetContext() {
    if (IsGone()) return EmptyContext();
    switch (index_) {
        case kAppModel:
            options_.SetVariableView(true);
            return HandOut(new Shielded<HFandBContext>(context_->Case(),
                                                       NodeAbove(&options_, attachments_, this)));
        case kPublishedFile:
            return MakePublishedList(*context_);
        case kPublishedVariables:
            if (auto* manager = ManagerOf(context_->Case())) {
                return HandOut(
                    new Shielded<HPublishContext>(*manager, this, context_->CaseRecord()));
            }
            break;
        default:
            break;
    }
    return EmptyContext();
}

}  // namespace fixtop
