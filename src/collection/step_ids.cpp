// SPDX-License-Identifier: Apache-2.0
#include "collection/step_ids.h"

#include <algorithm>
#include <charconv>

#include "collection/keyed_siblings.h"
#include "framework/path/path_names.h"

namespace fixtop {

namespace {

using Sought = FICollectionElement::Sought;

constexpr char kOwnTree[] = "Top";

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

// -1 for none.
int PlaceOf(FIIterator& node) {
    FIValue listed;
    node.GetListedKey(listed);
    return listed.Kind() == FIValue::kInt ? listed.AsInt() : PlaceAmongSiblings(node);
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

// Of the case's own tree, where names have no keys: what looks like one is the end of the name.
bool IsOfOwnTree(const FICollectionElement& step) {
    const FICollectionElement* top = &step;
    while (top->Parent()) top = top->Parent();
    return top->Id() == kOwnTree;
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

StepId NameIdOf(FIIterator& node, KeyedSiblings& siblings) {
    FIValue id = KeyedIdOf(node);
    if (!id.IsNull() && siblings.IsFirst(node, id)) return {std::move(id), Sought::kByKey};
    node.GetListedKey(id);
    if (id.IsText() && id.Length() > 0 && LeadsTo(id.CStr(), node)) {
        return {std::move(id), Sought::kByName};
    }
    return {};
}

StepId IdOf(FIIterator& node, KeyedSiblings& siblings) {
    StepId name = NameIdOf(node, siblings);
    if (!name.text.IsNull()) return name;
    return PlaceId(node, PlaceOf(node));
}

bool IsPlaceId(std::string_view id) {
    return !id.empty() && id.find_first_not_of("0123456789") == id.npos;
}

bool HaveTexts(const std::vector<StepId>& ids) {
    return std::none_of(ids.begin(), ids.end(), [](const StepId& id) { return id.text.IsNull(); });
}

bool HasStepId(const FICollectionElement& step, FIIterator& node, KeyedSiblings& siblings) {
    FIValue listed;
    switch (step.sought) {
        case Sought::kByName:
            node.GetListedKey(listed);
            return listed.IsText() && step.Id() == listed.CStr() && LeadsTo(listed.CStr(), node);
        case Sought::kByKey:
            listed = KeyedIdOf(node);
            return listed.IsText() && step.Id() == listed.CStr() && siblings.IsFirst(node, listed);
        case Sought::kByPlace:
            return PlaceOf(node) == PlaceOf(step.Id());
        default:
            return true;
    }
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

// A key that a path would not read back as it is gets quotes.
std::string WrittenKeyedId(const std::string& id) {
    const std::size_t begin = KeyBegin(id) + 1;
    const std::string key = id.substr(begin, id.size() - begin - 1);
    return id.substr(0, begin) + WrittenKey(PlainText(FIValue(key.c_str()))) + ')';
}

std::string WrittenStep(const FICollectionElement& step) {
    std::string id(step.Id());
    switch (step.sought) {
        case Sought::kByKey:
            return WrittenKeyedId(id);
        case Sought::kByPlace:
            return kAnyName + ('#' + std::to_string(PlaceOf(id)));
        case Sought::kUnknown:
            if (!IsOfOwnTree(step) && !NameOfKeyed(id).empty()) return WrittenKeyedId(id);
            break;
        case Sought::kByName:
        case Sought::kByLikelyPlace:
            break;
    }
    return WrittenKey(id);
}

}  // namespace fixtop
