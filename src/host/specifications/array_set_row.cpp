// SPDX-License-Identifier: Apache-2.0
#include "host/specifications/array_set_row.h"

#include "framework/nodes/shield.h"
#include "host/host_attributes.h"

namespace fixtop {

HArraySetElemContext::HArraySetElemContext(HArraySetContext* table, int row, FIEntry* parent)
    : table_(Ref<HArraySetContext>::Share(table)),
      row_(row),
      parent_(Ref<FIEntry>::Share(parent)) {}

FICursorBase* HArraySetElemContext::MakeCursor(int kind) {
    if (kind == kKeyCursor || IsGone()) return EmptyCursor();
    return HandOut(new Shielded<HArraySetElemCursorBase>(this));
}

FIEntry* HArraySetElemContext::MakeEntry(int column) {
    return new Shielded<HArraySetElemEntry>(this, column);
}

const host::Text* HArraySetElemContext::TextAt(int column) const {
    const auto& texts = table_->Block().columns[column];
    return row_ < texts.Size() ? &texts[row_] : nullptr;
}

bool HArraySetElemCursorBase::SeekName(int origin, const char* name) {
    for (bool on = name && Seek(origin, 0); on; on = Seek(kFromPresent, 1)) {
        if (List().ColumnName(position_) == name) return true;
    }
    return false;
}

void HArraySetElemCursorBase::ReadKey(int position, FIValue& out) const {
    out.SetText(List().ColumnName(position).Str());
}

HArraySetElemEntry::HArraySetElemEntry(HArraySetElemContext* context, int column)
    : context_(Ref<HArraySetElemContext>::Share(context)), column_(column) {}

bool HArraySetElemEntry::StandsWith(const LivingNode& other) const {
    const auto* that = dynamic_cast<const HArraySetElemEntry*>(&other);
    return that && context_->IsSameList(*that->context_) && column_ == that->column_;
}

void HArraySetElemEntry::SetAttribute(const FIValue& name, const FIValue& value, int mode,
                                      FIValue& out) {
    WriteAttribute(*this, name, value, mode, kNotSupportedHere, out);
}

std::span<const AttrRow<HArraySetElemEntry>> HArraySetElemEntry::AttributeRows() {
    using Self = HArraySetElemEntry;
    static const auto rows = HostAttributeRows<Self>({
        {"id", ReadNameRow<Self>},
        {"value",
         [](Self& self, FIValue& out) { out.SetText(self.context_->TextAt(self.column_)->Str()); },
         [](Self& self, std::intptr_t) { return self.context_->TextAt(self.column_) != nullptr; }},
        {"can_enter", ReadNumberRow<Self, 0>},
        {"browser_name", ReadNameRow<Self>},
        {"type", [](Self&, FIValue& out) { out.SetText("ArraySetElement"); }},
        {"display_name", ReadNameRow<Self>},
        {"isleaf", ReadNumberRow<Self, 1>},
        {"has_children", ReadNumberRow<Self, 0>},
        AttachmentsRow<Self>(NeverShown<Self>),
        SkipCorrelationsRow<Self>(NeverShown<Self>),
        SkipAttachmentsRow<Self>(NeverShown<Self>),
    });
    return rows;
}

}  // namespace fixtop
