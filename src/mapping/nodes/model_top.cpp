// SPDX-License-Identifier: Apache-2.0
#include "mapping/nodes/model_top.h"

#include "mapping/nodes/class_entry.h"

namespace fixtop {

namespace {

void ReadName(CCDMTopEntry& owner, FIValue& out) {
    owner.GetName(out);
}

void ReadType(CCDMTopEntry& owner, FIValue& out) {
    out.SetText("Object(" + owner.Context().Place().shown->name + ")");
}

void ReadPath(CCDMTopEntry& owner, FIValue& out) {
    out.Clear();
    if (const auto& node = owner.Context().Place().references.primary) node->GetPath(out);
}

template <int kNumber>
void ReadNumber(CCDMTopEntry&, FIValue& out) {
    out.SetInt(kNumber);
}

}  // namespace

std::span<const AttrRow<CCDMTopEntry>> CCDMTopEntry::AttributeRows() {
    static constexpr AttrRow<CCDMTopEntry> rows[] = {
        {"id", &ReadName},           {"browser_name", &ReadName}, {"type", &ReadType},
        {"display_name", &ReadName}, {"isleaf", &ReadNumber<0>},  {"has_children", &ReadNumber<1>},
        {"path", &ReadPath},
    };
    return rows;
}

void CCDMTopEntry::GetName(FIValue& out) {
    out.SetText(context_->Place().shown->name);
}

// What an entry below would ask of its node is told of the node here.
void CCDMTopEntry::GetAttribute(const FIValue& name, FIValue& out) {
    if (const AttrRow<CCDMTopEntry>* row = FindAttrRow(*this, name)) {
        row->Read(*this, out);
    } else if (IsGone() && !CCDMClassEntry::IsAnsweredByModel(name.CStr())) {
        context_->Place().references.First()->GetAttribute(name, out);
    } else {
        out.Clear();
    }
}

void CCDMTopEntry::SetAttribute(const FIValue& name, const FIValue& value, int mode, FIValue& out) {
    if (IsGone()) return context_->Place().references.First()->SetAttribute(name, value, mode, out);
    FIEntry::SetAttribute(name, value, mode, out);
}

bool CCDMTopEntry::StandsWith(const LivingNode& other) const {
    const auto* that = dynamic_cast<const CCDMTopEntry*>(&other);
    return that && context_->IsSameList(*that->context_);
}

bool CCDMTopEntry::Subscribe(void* owner, int kind, FICallback callback) {
    FIReference* node = context_->Place().references.First();
    return node && node->Subscribe(owner, kind, callback);
}

bool CCDMTopEntry::Unsubscribe(void* owner, int kind) {
    FIReference* node = context_->Place().references.First();
    return node && node->Unsubscribe(owner, kind);
}

bool CCDMTopEntry::QueryService(int kind, void** out) {
    FIReference* node = context_->Place().references.First();
    if (node && !IsGone()) return node->Place().EntryAt(0)->QueryService(kind, out);
    return AttrMapEntry::QueryService(kind, out);
}

}  // namespace fixtop
