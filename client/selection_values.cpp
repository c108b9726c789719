// SPDX-License-Identifier: Apache-2.0
// Selection: values of all items.

#include <algorithm>
#include <string_view>

#include "fixtop/client/selection.h"
#include "selection_items.h"
#include "texts.h"
#include "unit_names.h"

namespace fixtop::client {

namespace {

constexpr char kNoNode[] = "No element under this node";
constexpr char kNoNodeToWrite[] = "No element exists under this node";

// Reads the items one after the other into the places of the same number.
class BulkRead {
 public:
    explicit BulkRead(const SelectedValues& into) : into_(into) {}

    // Of an item without a node.
    void Skip(std::size_t index) {
        for (const std::span<FIValue>& each : {into_.values, into_.units, into_.statuses}) {
            if (index < each.size()) each[index].SetText(kNoNode);
        }
        if (index < into_.freshness.size()) into_.freshness[index] = Freshness::kUnknown;
    }
    void Take(FICollectionIteratorBase& item, std::size_t index) {
        if (index < into_.values.size()) item.GetAttribute(value_, into_.values[index]);
        if (index < into_.units.size()) item.GetAttribute(uom_, into_.units[index]);
        const bool is_dated = index < into_.freshness.size();
        if (index < into_.statuses.size()) {
            FIValue& status = into_.statuses[index];
            item.GetAttribute(status_, status);
            if (is_dated) into_.freshness[index] = FreshnessOf(item, status);
        } else if (is_dated) {
            item.GetAttribute(status_, scratch_);
            into_.freshness[index] = FreshnessOf(item, scratch_);
        }
    }

 private:
    Freshness FreshnessOf(FICollectionIteratorBase& item, const FIValue& status) {
        if (!status.IsText()) return Freshness::kUnknown;
        const std::string_view word = status.CStr();
        if (word == "Specified" || word == "Default") return Freshness::kSpecified;
        if (word != "Calculated") return Freshness::kUnknown;
        item.GetAttribute(stale_, is_old_);
        return is_old_.AsInt() == 1 ? Freshness::kOld : Freshness::kCalculated;
    }

    const SelectedValues into_;
    const FIValue value_{"value"}, uom_{"uom"}, status_{"status"}, stale_{"stale"};
    FIValue scratch_, is_old_;
};

// What would go to another node than the one that was chosen is not stored; whether it was to be.
std::vector<bool> LeaveOutUnknown(FICollectionBase& collection, std::vector<FIValue>& values) {
    std::vector<bool> left_out(values.size());
    const auto at = FirstOf(collection);
    for (std::size_t i = 0; i < values.size() && at->IsValid(); ++i, at->Next()) {
        left_out[i] = !values[i].IsNull() && !IsKnown(*at);
        if (left_out[i]) values[i].Clear();
    }
    return left_out;
}

// A number would go to the node as one in another unit than it is meant in.
void LeaveOutWithoutUnit(FICollectionBase& collection, std::vector<FIValue>& values,
                         std::vector<std::string>& why) {
    const auto at = FirstOf(collection);
    for (std::size_t i = 0; i < values.size() && at->IsValid(); ++i, at->Next()) {
        if (values[i].IsNull() || !LacksUnit(*at)) continue;
        why[i] = "the unit that the selection has for it is none of it: " + UnitOf(*at);
        values[i].Clear();
    }
}

// What the items to be stored call a unit.
FIValue UnitFor(FICollectionBase& collection, const std::vector<FIValue>& values,
                const std::string& unit) {
    if (unit.empty()) return {};
    FIValue options;
    const auto at = FirstOf(collection);
    for (std::size_t i = 0; i < values.size() && at->IsValid(); ++i, at->Next()) {
        if (values[i].IsNull()) continue;
        at->GetAttribute(FIValue("uom_options"), options);
        const std::string meant = UnitMeant(unit, UnitsIn(options.ToText()));
        if (!meant.empty()) return FIValue(meant.c_str());
    }
    return FIValue(unit.c_str());
}

}  // namespace

void Selection::Read(const SelectedValues& into) const {
    BulkRead read(into);
    std::size_t index = 0;
    for (const auto at = FirstOf(*collection_); at->IsValid(); at->Next()) {
        IsKnown(*at) ? read.Take(*at, index++) : read.Skip(index++);
    }
}

std::vector<std::string> Selection::Store(std::span<const std::string> typed,
                                          const std::string& unit) {
    std::vector<FIValue> values(std::min(typed.size(), Size()));
    std::vector<std::string> wrong(values.size());
    FIValue type;
    std::size_t index = 0;
    for (const auto at = FirstOf(*collection_); index < values.size(); at->Next(), ++index) {
        const std::string& text = typed[index];
        if (text.empty()) continue;
        at->GetAttribute(FIValue("type"), type);
        auto value = TypedValue(type.ToText(), text);
        if (!value) wrong[index] = NoNumber(text);
        if (value) values[index] = std::move(*value);
    }
    std::vector<std::string> refused = Store(std::span<const FIValue>(values), unit);
    for (std::size_t i = 0; i < refused.size(); ++i) {
        if (refused[i].empty()) refused[i] = std::move(wrong[i]);
    }
    return refused;
}

std::vector<std::string> Selection::Store(std::span<const FIValue> values,
                                          const std::string& unit) {
    const std::size_t count = std::min(values.size(), Size());
    std::vector<FIValue> stored(values.begin(),
                                values.begin() + static_cast<std::ptrdiff_t>(count));
    std::vector<FIValue> refused(count);
    const std::vector<bool> unknown = LeaveOutUnknown(*collection_, stored);
    std::vector<std::string> misread(count);
    if (unit.empty()) LeaveOutWithoutUnit(*collection_, stored, misread);
    const FIValue in_unit = UnitFor(*collection_, stored, unit);
    collection_->SetValues(FIValue("value"), stored.data(), static_cast<int>(count), in_unit,
                           refused.data());
    std::vector<std::string> texts;
    texts.reserve(count);
    for (std::size_t i = 0; i < count; ++i) {
        if (misread[i].empty()) misread[i] = unknown[i] ? kNoNodeToWrite : refused[i].ToText();
        texts.push_back(std::move(misread[i]));
    }
    return texts;
}

}  // namespace fixtop::client
