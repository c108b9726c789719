#include "mapping/model_top.h"

#include "mapping/class_entry.h"

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

bool CCDMTopEntry::Subscribe(void* owner, int kind, FICallback callback) {
    const auto& node = context_->Place().references.primary;
    return node && node->Subscribe(owner, kind, callback);
}

bool CCDMTopEntry::Unsubscribe(void* owner, int kind) {
    const auto& node = context_->Place().references.primary;
    return node && node->Unsubscribe(owner, kind);
}
