#include "host/and_c.h"

#include <fstream>

#include "host/f_and_b.h"
#include "host/host_access.h"
#include "host/host_attributes.h"

namespace {

constexpr char kPublishedExtension[] = ".atpub";
constexpr char kPublishedMoniker[] = "RTIVariable.500";

// The file in which a case keeps its published variables.
std::string PublishedFile(host::SimulationCase& simulation_case) {
    const host::FileName& document = simulation_case.GetDocumentName();
    return document.DriveAndPath().Str() + document.Name().Str() + kPublishedExtension;
}

bool HasPublishedVariables(host::SimulationCase& simulation_case) {
    host::COnlineConnectivityManager* manager = simulation_case.OnlineManager();
    if (!manager) return false;
    host::DimInfo bounds;
    manager->GetVariableDimensions(host::VarDescription(kPublishedMoniker, 0), bounds);
    return bounds.low[0] <= bounds.high[0];
}

}  // namespace

HAandCContext::HAandCContext(host::SimulationCase* simulation_case, ModelFiles files)
    : case_(CaseOrActive(simulation_case)), files_(std::move(files)) {}

FICursorBase* HAandCContext::MakeCursor(int kind) {
    if (kind == kKeyCursor) return EmptyCursor();
    auto* cursor = new HAandCCursorBase(this);
    cursor->AddRef();
    return cursor;
}

void HAandCContext::GetKeyValue(const char* path, FIValue& out, const char** rest) {
    out.SetText(HAandCCursorBase::kModelNames[HAandCEntry::kAppModel]);
    *rest = path;
}

FIEntry* HAandCContext::MakeEntry(int index) {
    return new HAandCEntry(this, index);
}

HAandCEntry::HAandCEntry(HAandCContext* context, int index)
    : context_(Ref<HAandCContext>::Share(context)),
      case_(context->Case()),
      index_(index),
      attachments_(context->FollowsAttachments()),
      options_(case_) {}

std::span<const AttrRow<HAandCEntry>> HAandCEntry::AttributeRows() {
    using Self = HAandCEntry;
    static const auto rows = HostAttributeRows<Self>({
        {"id", ReadNameRow<Self>},
        {"browser_name", ReadNameRow<Self>},
        {"type",
         [](Self& self, FIValue& out) {
             constexpr std::array types = {"appModel", "CCDMModel", "oldAppModel"};
             out.SetText(types[self.index_]);
         }},
        {"display_name", ReadNameRow<Self>},
        {"isleaf", ReadNumberRow<Self, 0>},
        {"has_children", [](Self& self, FIValue& out) { out.SetInt(self.HasChildren() ? 1 : 0); }},
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

void HAandCEntry::GetName(FIValue& out) {
    out.SetText(HAandCCursorBase::kModelNames[index_]);
}

void HAandCEntry::SetAttribute(const FIValue& name, const FIValue& value, int, FIValue& out) {
    SetSwitches(*this, attachments_, name, value, "Not supported.", out);
}

bool HAandCEntry::HasChildren() const {
    switch (index_) {
        case kAppModel:
            return true;
        case kPublishedFile:
            return case_ && std::ifstream(PublishedFile(*case_)).good();
        default:
            return case_ && HasPublishedVariables(*case_);
    }
}

FIContext* HAandCEntry::GetContext() {
    if (index_ != kAppModel) return EmptyContext();
    options_.SetVariableView(true);
    auto* context = new HFandBContext(case_, &options_, attachments_, this);
    context->AddRef();
    return context;
}
