// SPDX-License-Identifier: Apache-2.0
#include "host/levels/case_nodes.h"

#include "framework/nodes/shield.h"
#include "host/levels/flowsheet_nodes.h"
#include "host/levels/key_prefix.h"
#include "host/lists/object_list.h"

namespace fixtop {

namespace {

// Utilities of the case are listed with those of the main flowsheet, whose level takes the rest of
// the prefix.
constexpr KeyPrefix kPrefixes[] = {
    {"/FlowSht.1/", "FlowSheetObjects"},
    {"/FluidPkgMgr.300/", "FlowSheetObjects"},
    {"/Utility.300", 1, "FlowSheetObjects"},
    {"/ProcessDataTable.300", "DataBook"},
};

struct NodeFacts {
    const char* type;
    int has_children;
};

constexpr NodeFacts kFacts[] = {{"Flowsheet", 1}, {"Basis", 1}, {"Basis", 0}};

}  // namespace

HFandBContext::HFandBContext(host::SimulationCase* simulation_case, NodeAbove above)
    : FixedContext(simulation_case, std::move(above)) {
    if (Options() || !Case()) return;
    own_options_ = std::make_unique<HovexOptions>(Case());
    above_.SetOptions(own_options_.get());
}

void HFandBContext::GetKeyValue(const char* path, FIValue& out, const char** rest) {
    FindKeyByPrefix(kPrefixes, path, out, rest);
}

HFandBEntry::HFandBEntry(HFandBContext* context, int index)
    : FixedEntry(context, index), options_(context->Options()) {}

std::span<const AttrRow<HFandBEntry>> HFandBEntry::AttributeRows() {
    using Self = HFandBEntry;
    static const auto rows = FixedRows({
        {"type", [](Self& self, FIValue& out) { out.SetText(kFacts[self.index_].type); }},
        {"has_children",
         [](Self& self, FIValue& out) { out.SetInt(kFacts[self.index_].has_children); }},
        {"status", ReadMainStatus},
    });
    return rows;
}

FIContext* HFandBEntry::GetContext() {
    if (IsGone()) return EmptyContext();
    host::SimulationCase* simulation_case = context_->Case();
    const NodeAbove self(&options_, attachments_, this);
    FIContext* context = nullptr;
    switch (index_) {
        case kFlowSheetObjects:
            context = new Shielded<HSUandUContext>(nullptr, simulation_case, self);
            break;
        case kBasis:
            if (!simulation_case ||
                !basis_.Fill({simulation_case->Basis(), context_->CaseRecord()}, options_)) {
                return EmptyContext();
            }
            return basis_.MakeContext(self);
        default:
            context =
                new Shielded<HFSOContext>(nullptr, simulation_case, HFSOContext::kDataTables, self);
            break;
    }
    return HandOut(context);
}

}  // namespace fixtop
