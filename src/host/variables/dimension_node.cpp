// SPDX-License-Identifier: Apache-2.0
#include "host/variables/dimension_node.h"

#include "framework/nodes/empties.h"
#include "framework/nodes/shield.h"
#include "host/adapter.h"
#include "host/solver/solve_wait.h"
#include "host/variables/variable_rows.h"

namespace fixtop {

namespace {

// The next level shows itself only when it has more than one index.
bool HasNextLevel(const HVariable& array, int next) {
    host::DimInfo bounds;
    if (!array.object || next >= 3) return false;
    const HVariablePlace place = FindPlace(array.object, *array.description);
    place.object->GetVariableDimensions(*place.description, bounds);
    return bounds.low[next] < bounds.high[next];
}

}  // namespace

HVarDimsEntry::HVarDimsEntry(HVarDimsContext* context, int index)
    : context_(Ref<HVarDimsContext>::Share(context)),
      index_(index),
      address_(context->Address()),
      attachments_(context->FollowsAttachments()) {
    address_.SetOffset(context->Dimension(), index, false);
    if (!context->Names().AreCounted()) context->Names().Read(index, name_);
}

const host::LinkedList* HVarDimsEntry::FollowedVariables() {
    if (!IsScalar(*this) || IsSkippingAttachments(GetVarSet())) return nullptr;
    if (!Array().FollowsAt(address_, attachments_)) return nullptr;
    return attached_.Of(*this, *Array().CaseRecord());
}

bool HVarDimsEntry::IsContainer() {
    if (IsGone()) return false;
    if (!IsScalar(*this)) return HasNextLevel(Variable(), context_->Dimension() + 1);
    const host::LinkedList* variables = FollowedVariables();
    return variables && variables->EntryAt(0);
}

FIContext* HVarDimsEntry::GetContext() {
    if (IsGone()) return EmptyContext();
    NodeAbove self(context_->Options(), attachments_, this);
    FIContext* context = nullptr;
    if (!IsScalar(*this)) {
        context = new Shielded<HVarDimsContext>(&Array(), context_->Dimension() + 1, address_,
                                                std::move(self));
    } else if (const host::LinkedList* variables = FollowedVariables()) {
        context = new Shielded<HVarsContext>(variables, Holder(), self, this);
    } else {
        return EmptyContext();
    }
    return HandOut(context);
}

bool HVarDimsEntry::StandsWith(const LivingNode& other) const {
    const auto* that = dynamic_cast<const HVarDimsEntry*>(&other);
    return that && Array().StandsWith(that->Array()) && address_.IsEqual(that->address_, false);
}

int HVarDimsEntry::Compare(FIEntry& other) {
    const int by_name = FIEntry::Compare(other);
    if (by_name != 0) return by_name;
    const auto* element = dynamic_cast<HVarDimsEntry*>(&other);
    if (!element || Array().OwnerNumber() != element->Array().OwnerNumber()) return kNotComparable;
    return (index_ > element->index_) - (index_ < element->index_);
}

HostObject<host::Viewable> HVarDimsEntry::Stream() const {
    host::Viewable* object = EffectiveOwner();
    if (object) object = FindPlace(object, address_).object;
    return {IsStream(object) ? object : nullptr, Array().CaseRecord()};
}

bool HVarDimsEntry::CanHold() {
    if (IsGone() || Array().IsCompositionVariable()) return false;
    const HostObject<host::Viewable> stream = Stream();
    if (stream.Get() && TheAdapter().EditBatch().Add(stream)) {
        if (auto* process = stream.Get()->AsProcessStream()) process->BeginDeferCompNormalize();
    }
    return true;
}

void HVarDimsEntry::BeginBatch() {
    auto self = Ref<HVarDimsEntry>::Share(this);
    if (IsGone() || Array().IsCompositionVariable()) return;
    const HostObject<host::Viewable> stream = Stream();
    if (!stream.Get()) return;
    TheAdapter().EditBatch().Remove(stream);
    if (TheAdapter().EditBatch().IsOpen()) return;
    if (auto* process = stream.Get()->AsProcessStream()) {
        memory::Outside([&] { process->EndDeferCompNormalize(); });
    }
    SolveAndWait(*Array().CaseRecord(), true);
}

void HVarDimsEntry::GetAttribute(const FIValue& name, FIValue& out) {
    ReadVariableAttribute(*this, name, out);
}

void HVarDimsEntry::SetAttribute(const FIValue& name, const FIValue& value, int mode,
                                 FIValue& out) {
    WriteAttribute(*this, name, value, mode, kNotSupportedHere, out);
}

void HVarDimsEntry::ReadMoniker(FIValue& out) const {
    out.Clear();
    host::HostServices* services = TheAdapter().Services();
    if (!services) return;
    out.SetText(services->RelativeMoniker(nullptr, EffectiveOwner(), false).Str() +
                address_.GetFilledMoniker().Str());
}

std::span<const AttrRow<HVarDimsEntry>> HVarDimsEntry::AttributeRows() {
    using Self = HVarDimsEntry;
    static const auto rows = VariableRows<Self>({
        {"can_enter", [](Self& self, FIValue& out) { out.SetInt(IsScalar(self) ? 1 : 0); }},
        {"isleaf", [](Self& self, FIValue& out) { out.SetInt(self.IsContainer() ? 0 : 1); }},
        {"moniker", [](Self& self, FIValue& out) { self.ReadMoniker(out); }},
        AttachmentsRow<Self>(),
        SkipCorrelationsRow<Self>(),
        SkipAttachmentsRow<Self>(),
    });
    return rows;
}

}  // namespace fixtop
