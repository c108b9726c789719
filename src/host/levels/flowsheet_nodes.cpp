// SPDX-License-Identifier: Apache-2.0
#include "host/levels/flowsheet_nodes.h"

#include "framework/nodes/shield.h"
#include "host/host_access.h"
#include "host/levels/key_prefix.h"
#include "host/lists/object_list.h"

namespace fixtop {

namespace {

constexpr KeyPrefix kPrefixes[] = {
    {"UnitOpObject.400", "UnitOps"},
    {"StreamObject.400", "Streams"},
    {"Utility.300", "Utilities"},
    {"RxnPackageManager.300/Rxn.300", "Reactions"},
};

struct NodeFacts {
    int has_children;
    HFSOContext::Kind list;
};

constexpr NodeFacts kFacts[] = {{1, HFSOContext::kStreams},
                                {1, HFSOContext::kUnitOps},
                                {1, HFSOContext::kUtilities},
                                {0, HFSOContext::kReactions}};

}  // namespace

HSUandUContext::HSUandUContext(host::FlowSheet* flowsheet, host::SimulationCase* simulation_case,
                               NodeAbove above)
    : FixedContext(simulation_case, std::move(above)),
      flowsheet_(FlowSheetOrMain(flowsheet, Case()), life_) {}

void HSUandUContext::GetKeyValue(const char* path, FIValue& out, const char** rest) {
    FindKeyByPrefix(kPrefixes, path, out, rest);
}

HSUandUEntry::HSUandUEntry(HSUandUContext* context, int index)
    : FixedEntry(context, index), options_(context->Options()) {}

std::span<const AttrRow<HSUandUEntry>> HSUandUEntry::AttributeRows() {
    using Self = HSUandUEntry;
    static const auto rows = FixedRows({
        {"type", ReadNameRow<Self>},
        {"container",
         [](Self& self, FIValue& out) { ReadContainer(self.context_->FlowSheet(), out); }},
        {"container_category",
         [](Self& self, FIValue& out) { ReadContainerCategory(self.context_->FlowSheet(), out); }},
        {"container_type",
         [](Self& self, FIValue& out) { ReadContainerType(self.context_->FlowSheet(), out); }},
        {"has_children",
         [](Self& self, FIValue& out) { out.SetInt(kFacts[self.index_].has_children); }},
        {"status",
         [](Self& self, FIValue& out) {
             out.SetText(StatusText(FlowSheetStatus(self.context_->FlowSheet())));
         }},
    });
    return rows;
}

FIContext* HSUandUEntry::GetContext() {
    if (IsGone()) return EmptyContext();
    host::FlowSheet* flowsheet = context_->FlowSheet();
    if (!list_ || !list_->Serves(flowsheet, attachments_)) {
        auto* list = new Shielded<HFSOContext>(flowsheet, context_->Case(), kFacts[index_].list,
                                               NodeAbove(&options_, attachments_, this));
        list->StandAt(list_);
    }
    return HandOut(static_cast<FIContext*>(list_));
}

}  // namespace fixtop
