// SPDX-License-Identifier: Apache-2.0
#include "collection/step_ids.h"

#include <algorithm>
#include <charconv>

#include "framework/path/path_names.h"

namespace fixtop {

namespace {

using Sought = FICollectionElement::Sought;

bool LeadsTo(const char* name, FIIterator& node) {
    const auto probe = Ref<FIIterator>::Adopt(node.Copy());
    return probe->Up() && probe->SeekChild(name) && probe->Equal(node);
}

// -1 when the list does not show the node any more.
int PlaceAmongSiblings(FIIterator& node) {
    const auto probe = Ref<FIIterator>::Adopt(node.Copy());
    if (!probe->Up() || !probe->DownFirst()) return -1;
    int place = 0;
    while (!probe->Equal(node)) {
        if (!probe->Next()) return -1;
        ++place;
    }
    return place;
}

// With as many zeros in front that nobody is called so.
StepId PlaceId(FIIterator& node, int place) {
    if (place < 0) return {};
    const auto list = Ref<FIIterator>::Adopt(node.Copy());
    list->Up();
    std::string id = std::to_string(place);
    while (Ref<FIIterator>::Adopt(list->Copy())->SeekChild(id.c_str())) id.insert(0, "0");
    return {FIValue(id.c_str()), Sought::kByPlace};
}

// Of several with one name and key the first is found by it.
bool IsFirstOfKey(FIIterator& node, const FIValue& id) {
    const std::string name = NameOfKeyed(id.CStr());
    const auto probe = Ref<FIIterator>::Adopt(node.Copy());
    if (name.empty() || !probe->Up() || !probe->SeekChild(name.c_str())) return false;
    while (!probe->Equal(node)) {
        if (KeyedIdOf(*probe).Compare(id) == 0 || !probe->Next()) return false;
    }
    return true;
}

// Where the key of an id begins: behind a name that may be in quotes.
std::size_t KeyBegin(std::string_view id) {
    if (!id.starts_with('"')) return id.find('(');
    const std::size_t quote = id.find("\"(", 1);
    return quote == id.npos ? quote : quote + 1;
}

}  // namespace

FIValue KeyedIdOf(FIIterator& node) {
    FIValue id;
    node.GetKeyText(node.Depth(), id);
    if (!id.IsNull()) node.GetPathFrom(node.Depth(), id);
    return id;
}

StepId NameIdOf(FIIterator& node) {
    FIValue id = KeyedIdOf(node);
    if (!id.IsNull() && IsFirstOfKey(node, id)) return {std::move(id), Sought::kByKey};
    node.GetListedKey(id);
    if (id.IsText() && id.Length() > 0 && LeadsTo(id.CStr(), node)) {
        return {std::move(id), Sought::kByName};
    }
    return {};
}

StepId IdOf(FIIterator& node) {
    StepId name = NameIdOf(node);
    if (!name.text.IsNull()) return name;
    FIValue place;
    node.GetListedKey(place);
    const bool is_told = place.Kind() == FIValue::kInt;
    return PlaceId(node, is_told ? place.AsInt() : PlaceAmongSiblings(node));
}

bool IsPlaceId(std::string_view id) {
    return !id.empty() && id.find_first_not_of("0123456789") == id.npos;
}

std::string NameOfKeyed(std::string_view id) {
    const std::size_t begin = KeyBegin(id);
    if (begin == id.npos || begin == 0 || !id.ends_with(')')) return {};
    const std::string written(id.substr(0, begin));
    const std::string name = PlainText(FIValue(written.c_str()));
    return WrittenName(name) == written ? name : std::string();
}

int PlaceOf(std::string_view id) {
    int place = -1;
    const auto [stop, error] = std::from_chars(id.data(), id.data() + id.size(), place);
    const bool is_place = stop != id.data() && error == std::errc() && id.front() != '-';
    return is_place ? place : -1;
}

std::string WrittenStep(const FICollectionElement& step) {
    std::string id(step.Id());
    switch (step.sought) {
        case Sought::kByKey:
            return id;
        case Sought::kByPlace:
            return kAnyName + ('#' + std::to_string(PlaceOf(id)));
        case Sought::kUnknown:
            if (!NameOfKeyed(id).empty()) return id;
            break;
        case Sought::kByName:
        case Sought::kByLikelyPlace:
            break;
    }
    return WrittenKey(id);
}

}  // namespace fixtop
