#include "host/su_and_u.h"

#include "host/fso.h"
#include "host/host_access.h"
#include "host/host_attributes.h"
#include "host/key_prefix.h"

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
                               const HovexOptions* options, bool attachments, FIEntry* parent)
    : case_(CaseOrActive(simulation_case)),
      flowsheet_(FlowSheetOrMain(flowsheet, case_)),
      options_(options),
      attachments_(attachments),
      parent_(Ref<FIEntry>::Share(parent)) {}

FICursorBase* HSUandUContext::MakeCursor(int kind) {
    if (kind == kKeyCursor) return EmptyCursor();
    auto* cursor = new HSUandUCursorBase(this);
    cursor->AddRef();
    return cursor;
}

void HSUandUContext::GetKeyValue(const char* path, FIValue& out, const char** rest) {
    FindKeyByPrefix(kPrefixes, path, out, rest);
}

FIEntry* HSUandUContext::MakeEntry(int index) {
    return new HSUandUEntry(this, index);
}

HSUandUEntry::HSUandUEntry(HSUandUContext* context, int index)
    : context_(Ref<HSUandUContext>::Share(context)),
      case_(context->Case()),
      index_(index),
      attachments_(context->FollowsAttachments()),
      options_(context->Options()) {}

std::span<const AttrRow<HSUandUEntry>> HSUandUEntry::AttributeRows() {
    using Self = HSUandUEntry;
    static const auto rows = HostAttributeRows<Self>({
        {"id", ReadNameRow<Self>},
        {"browser_name", ReadNameRow<Self>},
        {"type", ReadNameRow<Self>},
        {"container",
         [](Self& self, FIValue& out) { ReadContainer(self.context_->FlowSheet(), out); }},
        {"container_category",
         [](Self& self, FIValue& out) { ReadContainerCategory(self.context_->FlowSheet(), out); }},
        {"container_type",
         [](Self& self, FIValue& out) { ReadContainerType(self.context_->FlowSheet(), out); }},
        {"display_name", ReadNameRow<Self>},
        {"isleaf", ReadNumberRow<Self, 0>},
        {"has_children",
         [](Self& self, FIValue& out) { out.SetInt(kFacts[self.index_].has_children); }},
        {"status",
         [](Self& self, FIValue& out) {
             out.SetText(StatusText(FlowSheetStatus(self.context_->FlowSheet())));
         }},
        {"is_container", ReadNumberRow<Self, 0>},
        {kAttachments, NeverShown<Self>},
        {kSkipCorrelations, NeverShown<Self>},
        {kSkipAttachments, NeverShown<Self>},
    });
    return rows;
}

void HSUandUEntry::GetName(FIValue& out) {
    out.SetText(HSUandUCursorBase::kNodeNames[index_]);
}

void HSUandUEntry::SetAttribute(const FIValue& name, const FIValue& value, int, FIValue& out) {
    SetSwitches(*this, attachments_, name, value, kNotSupportedHere, out);
}

FIContext* HSUandUEntry::GetContext() {
    auto* context = new HFSOContext(context_->FlowSheet(), case_, kFacts[index_].list, &options_,
                                    attachments_, this);
    context->AddRef();
    return context;
}
