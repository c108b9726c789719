// SPDX-License-Identifier: Apache-2.0
#include "host/specifications/spec_node.h"

#include <cmath>

#include "framework/nodes/shield.h"
#include "host/host_access.h"
#include "host/host_attributes.h"
#include "host/solver/solve_wait.h"
#include "host/specifications/array_set.h"
#include "host/variables/variable_values.h"

namespace fixtop {

namespace {

constexpr char kStoreNotSupported[] = "Store not supported for this attribute.";

enum StoreMode : int { kSpecify = 0, kRespecify = 1, kCalculate = 2 };

template <class T>
bool HasFilledColumn(const host::GrowableArray<host::GrowableArray<T>>& columns) {
    for (int i = 0; i < columns.Size(); ++i) {
        if (columns[i].Size() != 0) return true;
    }
    return false;
}

// Whether the block was converted already or not.
bool HasContent(const host::ArraySetBlock& block) {
    return HasFilledColumn(block.columns) || HasFilledColumn(block.source_numbers) ||
           HasFilledColumn(block.source_objects);
}

}  // namespace

HSpecEntry::HSpecEntry(HSpecContext* context, host::CSpecElement& element)
    : context_(Ref<HSpecContext>::Share(context)),
      element_(element),
      place_(context->Elements().PlaceOf(element)),
      ordinal_(context->Elements().NamesakesBefore(element)),
      type_(element, context->Owner(), context->CaseRecord()),
      options_(context->Options()),
      attachments_(context->FollowsAttachments()) {}

void HSpecEntry::GetName(FIValue& out) {
    if (IsGone()) return out.Clear();
    out.SetText(element_.tag.Str());
}

bool HSpecEntry::StandsWith(const LivingNode& other) const {
    const auto* that = dynamic_cast<const HSpecEntry*>(&other);
    return that && place_ == that->place_ && context_->IsSameList(*that->context_);
}

bool HSpecEntry::IsSameElement(const HSpecEntry& other) const {
    if (this == &other) return true;
    if (IsGone() || other.IsGone()) return StandsWith(other);
    if (!context_->IsSameList(*other.context_)) return false;
    const SpecWalk others = other.context_->Elements();
    return context_->Elements().CompareElements(element_, others, other.element_) == 0;
}

std::string HSpecEntry::UniqueName() const {
    const std::string tag = element_.tag.Str();
    const auto has_tag = [&](const host::CSpecElement* other) {
        return other && other->tag == element_.tag;
    };
    SpecWalk walk = context_->Elements();
    int before = 0;
    for (auto* each = walk.First(); each && each != &element_; each = walk.Next()) {
        if (has_tag(each)) ++before;
    }
    if (before > 0) return tag + "-" + std::to_string(before + 1);
    // A first one is numbered only when its namesake follows at once.
    return has_tag(walk.Next()) ? tag + "-1" : tag;
}

bool HSpecEntry::HasChildren() const {
    if (element_.child) return SpecWalk(element_.child->Elements()).First() != nullptr;
    return element_.array_set && HasContent(*element_.array_set);
}

FIContext* HSpecEntry::GetContext() {
    FIContext* context = nullptr;
    if (IsGone()) return EmptyContext();
    const Ref<HSpecFill>& fill = context_->Fill();
    if (element_.child) {
        context = new Shielded<HSpecContext>(element_.child, context_->Owner(),
                                             NodeAbove(&options_, attachments_, this), fill);
    } else if (element_.array_set) {
        context =
            new Shielded<HArraySetContext>(element_.array_set, this, !fill || fill->IsCurrent());
    } else {
        return EmptyContext();
    }
    return HandOut(context);
}

const char* HSpecEntry::Store(double value, int mode) {
    if (std::isnan(value)) return kNotStored;
    auto self = Ref<HSpecEntry>::Share(this);
    host::ProcessVariable& variable = *element_.process_variable;
    switch (mode) {
        case kSpecify:
            if (!variable.CanSpecify()) return "Cannot specify this value.";
            break;
        case kRespecify:
            if (!IsSpecified(variable)) return nullptr;
            break;
        case kCalculate:
            variable.SetCalculated(value);
            return nullptr;
        default:
            return nullptr;
    }
    variable.SetSpecified(value);
    SolveAndWait(*context_->CaseRecord());
    return IsGone() ? kNodeDeletedText : nullptr;
}

void HSpecEntry::SetAttribute(const FIValue& name, const FIValue& value, int mode, FIValue& out) {
    WriteAttribute(*this, name, value, mode, kStoreNotSupported, out);
}

// Of process variables alone.
bool HSpecEntry::WriteValue(HSpecEntry& self, const FIValue& value, int mode, FIValue& out) {
    if (self.type_.Get() != HSpecType::kProcVar) return false;
    const char* message = self.Store(value.IsNull() ? host::kEmptyReal : value.AsDouble(), mode);
    out.Clear();
    if (message) out.SetText(message);
    return true;
}

template <HSpecType::Row row>
AttrRow<HSpecEntry> HSpecEntry::TypeRow(const char* name, AttrRow<HSpecEntry>::Writer writer) {
    return {name, [](HSpecEntry& self, FIValue& out) { self.type_.Read(row, out); },
            [](HSpecEntry& self, std::intptr_t) { return self.type_.Shows(row); }, writer};
}

std::span<const AttrRow<HSpecEntry>> HSpecEntry::AttributeRows() {
    using Self = HSpecEntry;
    constexpr auto read_unique_name = [](Self& self, FIValue& out) {
        out.SetText(self.UniqueName());
    };
    static const auto rows = HostAttributeRows<Self>({
        {"id", read_unique_name},
        TypeRow<HSpecType::kValue>("value", WriteValue),
        TypeRow<HSpecType::kUom>("uom"),
        {"browser_name", read_unique_name},
        TypeRow<HSpecType::kType>("type"),
        {"container", [](Self& self, FIValue& out) { ReadContainer(self.type_.Owner(), out); }},
        {"container_category",
         [](Self& self, FIValue& out) { ReadContainerCategory(self.type_.Owner(), out); }},
        {"container_type",
         [](Self& self, FIValue& out) { ReadContainerType(self.type_.Owner(), out); }},
        {"display_name", read_unique_name},
        {"isleaf", [](Self& self, FIValue& out) { out.SetInt(self.IsContainer() ? 0 : 1); }},
        {"has_children", [](Self& self, FIValue& out) { out.SetInt(self.HasChildren() ? 1 : 0); }},
        TypeRow<HSpecType::kStatus>("status"),
        TypeRow<HSpecType::kMoniker>("moniker"),
        AttachmentsRow<Self>(),
        SkipCorrelationsRow<Self>(),
        SkipAttachmentsRow<Self>(),
        {"noObjectsBelow", ReadNumberRow<Self, 1>},
    });
    return rows;
}

}  // namespace fixtop
