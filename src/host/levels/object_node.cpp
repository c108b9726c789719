// SPDX-License-Identifier: Apache-2.0
#include "host/levels/object_node.h"

#include "framework/nodes/empties.h"
#include "framework/nodes/shield.h"
#include "host/adapter.h"
#include "host/host_access.h"
#include "host/host_attributes.h"
#include "host/levels/flowsheet_nodes.h"
#include "host/lists/object_list.h"
#include "host/solver/solve_wait.h"
#include "host/variables/variable_context.h"

namespace fixtop {

HTopEntry::HTopEntry(HFSOContext* context, host::Viewable* object, ListSpot spot)
    : context_(Ref<HFSOContext>::Share(context)),
      object_(object, object ? IdentityOf(*object) : 0, *context->CaseRecord()),
      spot_(spot) {
    FollowAttachments(context->FollowsAttachments());
}

bool HTopEntry::Remakes(FICursorBase& cursor) const {
    return context_->Remakes(cursor, object_, spot_);
}

Ref<FICursorBase> HTopEntry::RemakeCursor() const {
    return context_->RemakeCursor(object_, spot_);
}

const Ref<CaseLife>& HTopEntry::CaseRecord() const {
    return context_->CaseRecord();
}

const HovexOptions& HTopEntry::Options() const {
    if (const HovexOptions* options = context_->Options()) return *options;
    static const HovexOptions defaults(static_cast<const HovexOptions*>(nullptr));
    return defaults;
}

std::span<const AttrRow<HTopEntry>> HTopEntry::AttributeRows() {
    using Self = HTopEntry;
    static const auto rows = HostAttributeRows<Self>({
        {"id", ReadNameRow<Self>},
        {"browser_name", ReadNameRow<Self>},
        {"type",
         [](Self& self, FIValue& out) {
             const auto* type = self.Object() ? self.Object()->Type() : nullptr;
             out.Clear();
             if (type) out.SetText(type->DisplayName().CStr());
         }},
        {"container", [](Self& self, FIValue& out) { ReadContainer(self.Object(), out); }},
        {"container_category",
         [](Self& self, FIValue& out) { ReadContainerCategory(self.Object(), out); }},
        {"container_type", [](Self& self, FIValue& out) { ReadContainerType(self.Object(), out); }},
        {"display_name", ReadNameRow<Self>},
        {"isleaf", ReadNumberRow<Self, 0>},
        {"has_children",
         [](Self& self, FIValue& out) { out.SetInt(self.FindBelow() != Below::kNothing ? 1 : 0); }},
        {"path", ReadPathRow<Self>},
        {"status",
         [](Self& self, FIValue& out) { out.SetText(StatusText(ObjectStatus(self.Object()))); }},
        {"is_container", ReadNumberRow<Self, 1>},
        {"no_containers_below",
         [](Self& self, FIValue& out) { out.SetInt(IsExactlyTemplateOp(self.Object()) ? 0 : 1); }},
        AttachmentsRow<Self>(),
        SkipCorrelationsRow<Self>(),
        SkipAttachmentsRow<Self>(),
        {"isObject", ReadNumberRow<Self, 1>},
        {"isHierarchy", ReadNumberRow<Self, 1>,
         [](Self& self, std::intptr_t) { return IsTemplateOp(self.Object()); }},
        {"noObjectsBelow", ReadNumberRow<Self, 1>,
         [](Self& self, std::intptr_t) { return !IsTemplateOp(self.Object()); }},
    });
    return rows;
}

void HTopEntry::GetName(FIValue& out) {
    host::Viewable* object = Object();
    out.Clear();
    if (object) out.SetText(object->GetName().CStr());
}

void HTopEntry::SetAttribute(const FIValue& name, const FIValue& value, int mode, FIValue& out) {
    WriteAttribute(*this, name, value, mode, kNotSupportedHere, out);
}

HTopEntry::Below HTopEntry::FindBelow() {
    host::Viewable* object = Object();
    if (!object) return Below::kNothing;
    if (IsTemplateOp(object)) {
        return object->SubFlowSheet() ? Below::kFlowSheet : Below::kNothing;
    }
    if (!Options().VariableView()) {
        return specification_.Fill(Handle(), Options()) ? Below::kSpecification : Below::kNothing;
    }
    if (!variables_) variables_ = object->VariableNames();
    return variables_ ? Below::kVariables : Below::kNothing;
}

FIContext* HTopEntry::GetContext() {
    NodeAbove self(&Options(), FollowsAttachments(), this);
    FIContext* context = nullptr;
    switch (FindBelow()) {
        case Below::kNothing:
            return EmptyContext();
        case Below::kSpecification:
            return specification_.MakeContext(self);
        case Below::kFlowSheet:
            context = new Shielded<HSUandUContext>(Object()->SubFlowSheet(), CaseRecord()->Case(),
                                                   std::move(self));
            break;
        case Below::kVariables:
            context =
                new Shielded<HVarsContext>(variables_, object_, CaseRecord(), std::move(self));
            break;
    }
    return HandOut(context);
}

bool HTopEntry::CanHold() {
    host::Viewable* object = Object();
    if (!IsStream(object)) return false;
    if (TheAdapter().EditBatch().Add(Handle())) {
        if (host::ProcessStream* stream = object->AsProcessStream()) {
            stream->BeginDeferCompNormalize();
            stream->StartCompositionEditSession();
        }
    }
    return true;
}

void HTopEntry::BeginBatch() {
    auto self = Ref<HTopEntry>::Share(this);
    TheAdapter().EditBatch().Remove(Handle());
    host::Viewable* object = Object();
    if (TheAdapter().EditBatch().IsOpen() || !IsStream(object)) return;
    if (host::ProcessStream* stream = object->AsProcessStream()) {
        memory::Outside([&] { stream->EndDeferCompNormalize(); });
    }
    SolveAndWait(*CaseRecord());
}

}  // namespace fixtop
