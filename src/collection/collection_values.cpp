// SPDX-License-Identifier: Apache-2.0
// Collection: values of all items, and the texts in which it is kept.

#include "collection/backup_reader.h"
#include "collection/backup_writer.h"
#include "collection/collection.h"
#include "collection/selection_batch.h"
#include "collection/step_ids.h"
#include "diagnostics/module_log.h"
#include "framework/iterator/shielded_iterator.h"
#include "framework/path/path_names.h"

namespace fixtop {

namespace {

constexpr char kNoSuchUnit[] = "Unable to find unit";

const FICollectionElement* OverNext(const FICollectionElement& item) {
    return item.Next() ? item.Next()->Next() : nullptr;
}

// What the next items are read from lies scattered in memory and is reached step by step: a step
// for every second item on the way here, in which time one comes from afar.
void PrefetchBehind(const FICollectionElement& item) {
    using Ask = void (FIReference::*)() const;
    constexpr Ask steps[] = {&FIReference::PrefetchNode, &FIReference::PrefetchSelf};
    const FICollectionElement* ahead = OverNext(item);
    for (const Ask ask : steps) {
        if (!ahead) return;
        if (ahead->node) (*ahead->node.*ask)();
        ahead = OverNext(*ahead);
    }
    if (ahead) ahead->PrefetchSelf();
}

}  // namespace

// ---- values ----

void Collection::GetValues(const FIValue& attribute, FIValue* values) {
    GetRows(&attribute, 1, values);
}

// A reference that is let go while it is read stays until it has answered. Who hears of an end
// meanwhile may remove items: what is missing then at the end was not read.
void Collection::GetRows(const FIValue* attributes, int count, FIValue* values) {
    const auto self = Ref<Collection>::Share(this);
    FIValue* const end = values + static_cast<std::ptrdiff_t>(Count()) * count;
    if (is_watching_) FindMissing();
    for (ItemPosition at(items_); values != end && at.Next(); values += count) {
        PrefetchBehind(*at.Item());
        if (FIReference* node = at.Item()->node.Get()) {
            node->GetAttributes(attributes, count, values);
        } else {
            for (int i = 0; i < count; ++i) values[i].SetText(kNothingToRead);
        }
    }
    for (; values != end; ++values) values->SetText(kNothingToRead);
}

// In the unit of the values in place of the item's own, for this store.
void Collection::Store(FICollectionElement& item, const FIValue& attribute, const FIValue& value,
                       const FIValue& unit, FIValue& out) {
    const Ref<FIReference> node = NodeOf(item);
    if (!node) return out.SetText(kNothingToWrite);
    if (unit.IsNull()) return node->SetAttribute(attribute, value, 0, out);
    auto& it = *static_cast<FIIterator*>(node->GetIterator());
    const ItemUnits own = item.Units();
    if (node->Rebind() && !ShowIn({unit, unit}, it)) {
        out.SetText(kNoSuchUnit);
    } else {
        node->SetAttribute(attribute, value, 0, out);
    }
    ShowIn(own, it);
}

// Who hears of a store may remove and add items: each value is for the item that was at its place
// at the beginning.
void Collection::SetValues(const FIValue& attribute, const FIValue* values, int count,
                           const FIValue& unit, FIValue* outs) {
    const auto self = Ref<Collection>::Share(this);
    if (is_watching_) FindMissing();
    const std::vector<std::uint32_t> arrivals = items_.FirstArrivals(count);
    const std::uint32_t latest = items_.NextArrival();
    SelectionBatch batch(top_ ? top_->EntryAt(0) : nullptr);
    std::size_t place = 0;
    for (ItemPosition at(items_); at.Next();) {
        const std::uint32_t arrival = at.Item()->Arrival();
        if (arrival >= latest) continue;
        while (place < arrivals.size() && arrivals[place] != arrival) ++place;
        if (place == arrivals.size()) break;
        FIValue out;
        if (!values[place].IsNull()) Store(*at.Item(), attribute, values[place], unit, out);
        if (outs) outs[place] = std::move(out);
    }
    batch.Solve();
}

// ---- texts ----

void Collection::ToXml(FIValue& out) {
    const auto self = Ref<Collection>::Share(this);
    FollowNames();
    WriteBackup(root_.get(), items_, out);
}

// What was read takes the place of everything.
void Collection::Take(ReadSelection read, Ref<FIIterator> top) {
    Clear();
    if (read.form != ReadSelection::Form::kBackup) return;
    root_ = std::move(read.root);
    top_ = std::move(top);
    for (FICollectionElement* each : read.items) items_.Append(*each);
    try {
        const std::uint64_t revision = top_ && top_->Life() ? top_->Life()->Revision() : 0;
        FindMissing();
        named_at_ = revision;
    } catch (...) {
        Clear();
        throw;
    }
}

bool Collection::FromXml(const char* text) {
    const auto self = Ref<Collection>::Share(this);
    ReadSelection read = ReadBackup(text, *this);
    const bool is_backup = read.form == ReadSelection::Form::kBackup;
    Take(std::move(read), top_);
    return is_backup;
}

bool Collection::Load(const char* text, FIIteratorBase& from) {
    return Take(ReadBackup(text, *this), from);
}

bool Collection::LoadPaths(const char* text, FIIteratorBase& from) {
    ReadSelection read = ReadBackup(text, *this);
    if (read.form != ReadSelection::Form::kPaths) read = {};
    return Take(std::move(read), from);
}

bool Collection::Take(ReadSelection read, FIIteratorBase& from) {
    auto* given = dynamic_cast<FIIterator*>(&from);
    const auto self = Ref<Collection>::Share(this);
    if (!given) read = {};
    const bool is_read = read.form != ReadSelection::Form::kNone;
    const std::vector<std::string> paths = std::move(read.paths);
    const auto top = is_read ? TopOf(*given) : Ref<FIIterator>();
    Take(std::move(read), top);
    for (const std::string& path : paths) AddPath(path, *top);
    return is_read;
}

// A whole path begins with the name of the root.
void Collection::AddPath(const std::string& path, FIIterator& root) {
    const auto node = Ref<FIIterator>::Adopt(root.Copy());
    FIValue name;
    root.GetPath(name);
    const std::string lead = name.ToText() + '.';
    if (path.empty()) return;
    const bool is_found =
        path + '.' == lead ||
        (path.starts_with(lead) && node->SeekPath(FIValue(path.c_str() + lead.size()))) ||
        node->SeekPath(FIValue(path.c_str()));
    if (is_found && Add(*node)) return;
    LogMessage(("Selection: no item for the path " + path).c_str());
}

}  // namespace fixtop
