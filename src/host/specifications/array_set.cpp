// SPDX-License-Identifier: Apache-2.0
#include "host/specifications/array_set.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>

#include "framework/nodes/shield.h"
#include "host/adapter.h"
#include "host/host_attributes.h"
#include "host/specifications/array_set_row.h"
#include "host/specifications/spec_context.h"

namespace fixtop {

namespace {

// The columns of this name hold objects, all others numbers.
constexpr char kObjectColumn[] = "Attachment";

using TextColumn = host::GrowableArray<host::Text>;

template <class T, class ToText>
TextColumn TextsOf(const host::GrowableArray<host::GrowableArray<T>>& source, int& next,
                   ToText to_text) {
    TextColumn texts;
    if (next >= source.Size()) return texts;
    const host::GrowableArray<T>& column = source[next++];
    for (int i = 0; i < column.Size(); ++i) texts.Append(to_text(column[i]));
    return texts;
}

void ConvertColumns(host::ArraySetBlock& block, bool objects_are_there) {
    if (block.source_numbers.Size() == 0 && block.source_objects.Size() == 0) return;
    int next_numbers = 0;
    int next_objects = 0;
    for (int i = 0; i < block.source_names.Size(); ++i) {
        block.names.Append(block.source_names[i]);
        if (block.source_names[i] == kObjectColumn) {
            block.columns.Append(
                TextsOf(block.source_objects, next_objects, [&](host::Viewable* object) {
                    return object && objects_are_there ? object->GetName() : host::TheEmptyText;
                }));
        } else {
            block.columns.Append(TextsOf(block.source_numbers, next_numbers, [](double number) {
                return TheAdapter().Services()->NumToText(number);
            }));
        }
    }
    block.source_numbers.Clear();
    block.source_objects.Clear();
}

constexpr std::array<const char*, 3> kParentRows = {"container", "container_category",
                                                    "container_type"};

}  // namespace

HArraySetContext::HArraySetContext(host::ArraySetBlock* block, FIEntry* parent,
                                   bool objects_are_there)
    : block_(block),
      parent_(Ref<FIEntry>::Share(parent)),
      living_(dynamic_cast<const LivingNode*>(parent)) {
    ConvertColumns(*block, objects_are_there);
    column_count_ = std::min(block->names.Size(), block->columns.Size());
    for (int i = 0; i < column_count_; ++i) {
        const int length = block->columns[i].Size();
        row_count_ = i == 0 ? length : std::min(row_count_, length);
    }
}

bool HArraySetContext::IsSameList(const HArraySetContext& other) const {
    if (block_ == other.block_) return true;
    return parent_ && other.parent_ && IsSameElement(*parent_, *other.parent_);
}

FICursorBase* HArraySetContext::MakeCursor(int kind) {
    if (kind == kKeyCursor || IsGone()) return EmptyCursor();
    return HandOut(new Shielded<HArraySetCursorBase>(this));
}

FIEntry* HArraySetContext::MakeEntry(int row) {
    return new Shielded<HArraySetEntry>(this, row);
}

bool HArraySetCursorBase::SeekName(int, const char* name) {
    constexpr std::size_t kPrefixLength = 3;
    if (!name) return false;
    const bool has_digits = std::strlen(name) > kPrefixLength;
    return StandAt(has_digits ? std::strtol(name + kPrefixLength, nullptr, 10) : 0);
}

void HArraySetCursorBase::ReadKey(int position, FIValue& out) const {
    out.SetText(HArraySetEntry::RowName(position));
}

HArraySetEntry::HArraySetEntry(HArraySetContext* context, int row)
    : context_(Ref<HArraySetContext>::Share(context)), row_(row) {}

FIContext* HArraySetEntry::GetContext() {
    if (IsGone()) return EmptyContext();
    return HandOut(new Shielded<HArraySetElemContext>(context_.Get(), row_, this));
}

bool HArraySetEntry::StandsWith(const LivingNode& other) const {
    const auto* that = dynamic_cast<const HArraySetEntry*>(&other);
    return that && context_->IsSameList(*that->context_) && row_ == that->row_;
}

void HArraySetEntry::SetAttribute(const FIValue& name, const FIValue& value, int mode,
                                  FIValue& out) {
    WriteAttribute(*this, name, value, mode, kNotSupportedHere, out);
}

std::span<const AttrRow<HArraySetEntry>> HArraySetEntry::AttributeRows() {
    using Self = HArraySetEntry;
    const auto from_parent = [](std::intptr_t row) {
        return AttrRow<Self>(
            kParentRows[row],
            [](Self& self, FIValue& out, std::intptr_t which) {
                self.context_->Parent().GetAttribute(FIValue(kParentRows[which]), out);
            },
            row, NeverShown<Self>);
    };
    static const auto rows = HostAttributeRows<Self>({
        {"id", ReadNameRow<Self>},
        {"can_enter", ReadNumberRow<Self, 0>},
        {"browser_name", ReadNameRow<Self>},
        {"type", [](Self&, FIValue& out) { out.SetText("ArraySetRow"); }},
        from_parent(0),
        from_parent(1),
        from_parent(2),
        {"display_name", ReadNameRow<Self>},
        {"isleaf", ReadNumberRow<Self, 0>},
        {"has_children",
         [](Self& self, FIValue& out) { out.SetInt(self.context_->ColumnCount() > 0 ? 1 : 0); }},
        AttachmentsRow<Self>(NeverShown<Self>),
        SkipCorrelationsRow<Self>(NeverShown<Self>),
        SkipAttachmentsRow<Self>(NeverShown<Self>),
    });
    return rows;
}

}  // namespace fixtop
