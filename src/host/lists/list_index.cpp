// SPDX-License-Identifier: Apache-2.0
#include "host/lists/list_index.h"

#include <algorithm>
#include <cstring>
#include <functional>
#include <string_view>

#include "host/adapter.h"

namespace fixtop {

namespace {

std::size_t HashOf(const char* name) {
    return std::hash<std::string_view>()(name);
}

}  // namespace

ListIndex* ListIndex::Over(const host::LinkedList& list, int filter, const NameOf& name_of) {
    const std::uint64_t revision = list.Revision();
    if (revision == 0) return nullptr;
    ListIndexTable& table = TheAdapter().ListIndices();
    auto& kept = table.kept;
    const auto serves = [&](const ListIndex& index) {
        return index.Serves(list, filter, revision);
    };
    auto slot = kept.begin() + table.last;
    if (!serves(*slot)) slot = std::find_if(kept.begin(), kept.end(), serves);
    if (slot == kept.end()) {
        slot = std::min_element(kept.begin(), kept.end(), [](const auto& a, const auto& b) {
            return a.last_use_ < b.last_use_;
        });
        slot->Start(list, filter, revision, ++table.uses);
        return nullptr;
    }
    table.last = slot - kept.begin();
    slot->last_use_ = ++table.uses;
    if (!slot->built_) slot->NotePlaces(name_of);
    return &*slot;
}

ListIndex::Answer ListIndex::Find(const NameOf& name_of, const char* name) {
    if (names_.empty()) NoteNames(name_of);
    const auto place = names_.find(HashOf(name));
    if (place == names_.end()) return {true, nullptr};
    const char* found = name_of(place->second->element);
    // Two names with one hash: the walk decides.
    if (!found || std::strcmp(found, name) != 0) return {};
    return {true, place->second};
}

void ListIndex::Start(const host::LinkedList& list, int filter, std::uint64_t revision,
                      std::uint64_t use) {
    list_ = &list;
    filter_ = filter;
    revision_ = revision;
    last_use_ = use;
    built_ = false;
    places_ = {};
    names_ = {};
}

void ListIndex::NotePlaces(const NameOf& name_of) {
    places_.clear();
    for (const host::ListHolder* place = list_->FirstHolder(); place;
         place = list_->HolderAfter(place)) {
        if (name_of(place->element)) places_.push_back(place);
    }
    built_ = true;
}

void ListIndex::NoteNames(const NameOf& name_of) {
    names_.reserve(places_.size());
    try {
        for (const host::ListHolder* place : places_) {
            if (const char* name = name_of(place->element)) names_.emplace(HashOf(name), place);
        }
    } catch (...) {
        names_.clear();
        throw;
    }
}

}  // namespace fixtop
