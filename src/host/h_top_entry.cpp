#include "host/h_top_entry.h"

#include "framework/empties.h"
#include "host/fso.h"
#include "host/h_vars_context.h"
#include "host/host_access.h"
#include "host/host_attributes.h"
#include "host/solve_wait.h"
#include "host/su_and_u.h"

HTopEntry::HTopEntry(HFSOContext* context, host::Viewable* object)
    : context_(Ref<HFSOContext>::Share(context)),
      object_(object),
      options_(context->Options()),
      attachments_(context->FollowsAttachments()) {}

std::span<const AttrRow<HTopEntry>> HTopEntry::AttributeRows() {
    using Self = HTopEntry;
    static const auto rows = HostAttributeRows<Self>({
        {"id", ReadNameRow<Self>},
        {"browser_name", ReadNameRow<Self>},
        {"type",
         [](Self& self, FIValue& out) {
             const auto* type = self.object_ ? self.object_->Type() : nullptr;
             out.Clear();
             if (type) out.SetText(type->DisplayName().CStr());
         }},
        {"container", [](Self& self, FIValue& out) { ReadContainer(self.object_, out); }},
        {"container_category",
         [](Self& self, FIValue& out) { ReadContainerCategory(self.object_, out); }},
        {"container_type", [](Self& self, FIValue& out) { ReadContainerType(self.object_, out); }},
        {"display_name", ReadNameRow<Self>},
        {"isleaf", ReadNumberRow<Self, 0>},
        {"has_children",
         [](Self& self, FIValue& out) { out.SetInt(self.FindBelow() != Below::kNothing ? 1 : 0); }},
        {"path", ReadPathRow<Self>},
        {"status",
         [](Self& self, FIValue& out) { out.SetText(StatusText(ObjectStatus(self.object_))); }},
        {"is_container", ReadNumberRow<Self, 1>},
        {"no_containers_below",
         [](Self& self, FIValue& out) { out.SetInt(IsExactlyTemplateOp(self.object_) ? 0 : 1); }},
        {kAttachments, ReadAttachmentsRow<Self>},
        {kSkipCorrelations, ReadSkipCorrelationsRow<Self>},
        {kSkipAttachments, ReadSkipAttachmentsRow<Self>},
        {"isObject", ReadNumberRow<Self, 1>},
        {"isHierarchy", ReadNumberRow<Self, 1>,
         [](Self& self, std::intptr_t) { return IsTemplateOp(self.object_); }},
        {"noObjectsBelow", ReadNumberRow<Self, 1>,
         [](Self& self, std::intptr_t) { return !IsTemplateOp(self.object_); }},
    });
    return rows;
}

void HTopEntry::GetName(FIValue& out) {
    out.Clear();
    if (object_) out.SetText(object_->GetName().CStr());
}

void HTopEntry::SetAttribute(const FIValue& name, const FIValue& value, int, FIValue& out) {
    SetSwitches(*this, attachments_, name, value, kNotSupportedHere, out);
}

HTopEntry::Below HTopEntry::FindBelow() {
    if (!object_) return Below::kNothing;
    if (IsTemplateOp(object_)) {
        return object_->SubFlowSheet() ? Below::kFlowSheet : Below::kNothing;
    }
    if (!options_.VariableView()) {
        return specification_.Fill(object_, options_) ? Below::kSpecification : Below::kNothing;
    }
    if (!variables_) variables_ = object_->VariableNames();
    return variables_ ? Below::kVariables : Below::kNothing;
}

FIContext* HTopEntry::GetContext() {
    FIContext* context = nullptr;
    switch (FindBelow()) {
        case Below::kNothing:
            return EmptyContext();
        case Below::kSpecification:
            return specification_.MakeContext(&options_, attachments_, this);
        case Below::kFlowSheet:
            context = new HSUandUContext(object_->SubFlowSheet(), context_->Case(), &options_,
                                         attachments_, this);
            break;
        case Below::kVariables:
            context = new HVarsContext(variables_, object_, &options_, attachments_, this, nullptr);
            break;
    }
    return HandOut(context);
}

bool HTopEntry::CanHold() {
    if (!IsStream(object_)) return false;
    if (EditBatch().Add(object_)) {
        if (host::ProcessStream* stream = object_->AsProcessStream()) {
            stream->BeginDeferCompNormalize();
            stream->StartCompositionEditSession();
        }
    }
    return true;
}

void HTopEntry::BeginBatch() {
    auto self = Ref<HTopEntry>::Share(this);
    EditBatch().Remove(object_);
    if (EditBatch().IsOpen() || !IsStream(object_)) return;
    if (host::ProcessStream* stream = object_->AsProcessStream()) stream->EndDeferCompNormalize();
    SolveAndWait(context_->Case());
}
