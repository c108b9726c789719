#include "host/f_and_b.h"

#include "host/fso.h"
#include "host/host_access.h"
#include "host/host_attributes.h"
#include "host/key_prefix.h"
#include "host/su_and_u.h"

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

HFandBContext::HFandBContext(host::SimulationCase* simulation_case, const HovexOptions* options,
                             bool attachments, FIEntry* parent)
    : case_(CaseOrActive(simulation_case)),
      options_(options),
      attachments_(attachments),
      parent_(Ref<FIEntry>::Share(parent)) {
    if (options_ || !case_) return;
    own_options_ = std::make_unique<HovexOptions>(case_);
    options_ = own_options_.get();
}

FICursorBase* HFandBContext::MakeCursor(int kind) {
    if (kind == kKeyCursor) return EmptyCursor();
    auto* cursor = new HFandBCursorBase(this);
    cursor->AddRef();
    return cursor;
}

void HFandBContext::GetKeyValue(const char* path, FIValue& out, const char** rest) {
    FindKeyByPrefix(kPrefixes, path, out, rest);
}

FIEntry* HFandBContext::MakeEntry(int index) {
    return new HFandBEntry(this, index);
}

HFandBEntry::HFandBEntry(HFandBContext* context, int index)
    : context_(Ref<HFandBContext>::Share(context)),
      case_(context->Case()),
      index_(index),
      attachments_(context->FollowsAttachments()),
      options_(context->Options()) {}

std::span<const AttrRow<HFandBEntry>> HFandBEntry::AttributeRows() {
    using Self = HFandBEntry;
    static const auto rows = HostAttributeRows<Self>({
        {"id", ReadNameRow<Self>},
        {"browser_name", ReadNameRow<Self>},
        {"type", [](Self& self, FIValue& out) { out.SetText(kFacts[self.index_].type); }},
        {"display_name", ReadNameRow<Self>},
        {"isleaf", ReadNumberRow<Self, 0>},
        {"has_children",
         [](Self& self, FIValue& out) { out.SetInt(kFacts[self.index_].has_children); }},
        {"status",
         [](Self& self, FIValue& out) {
             out.SetText(StatusText(FlowSheetStatus(FlowSheetOrMain(nullptr, self.case_))));
         }},
        {"is_container", ReadNumberRow<Self, 0>},
        {kAttachments, NeverShown<Self>},
        {kSkipCorrelations, NeverShown<Self>},
        {kSkipAttachments, NeverShown<Self>},
    });
    return rows;
}

void HFandBEntry::GetName(FIValue& out) {
    out.SetText(HFandBCursorBase::kNodeNames[index_]);
}

void HFandBEntry::SetAttribute(const FIValue& name, const FIValue& value, int, FIValue& out) {
    SetSwitches(*this, attachments_, name, value, kNotSupportedHere, out);
}

FIContext* HFandBEntry::GetContext() {
    FIContext* context = nullptr;
    switch (index_) {
        case kFlowSheetObjects:
            context = new HSUandUContext(nullptr, case_, &options_, attachments_, this);
            break;
        case kBasis:
            if (!case_ || !basis_.Fill(case_->Basis(), options_)) return EmptyContext();
            return basis_.MakeContext(&options_, attachments_, this);
        default:
            context = new HFSOContext(nullptr, case_, HFSOContext::kDataTables, &options_,
                                      attachments_, this);
            break;
    }
    context->AddRef();
    return context;
}
