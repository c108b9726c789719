// SPDX-License-Identifier: Apache-2.0
#include "mapping/check/why_missing.h"

#include <set>

#include "mapping/check/listed_names.h"
#include "mapping/check/why_no_node.h"
#include "mapping/check/why_no_value.h"
#include "mapping/translators/find_translator.h"
#include "model/attribute_walker.h"

namespace fixtop {

namespace {

// One that a class declares again is meant as it is declared last.
const CCDMAttribute* FindAttribute(const CCDMClass& shown, const std::string& name) {
    const CCDMAttribute* found = nullptr;
    CCDMAttributeWalker walker(shown);
    for (bool on = walker.First(); on; on = walker.Next()) {
        if (walker.Current()->name == name) found = walker.Current();
    }
    return found;
}

// Visits the translators of both forms under the name that is in force.
template <class Visit>
void ForEachTranslator(const FaceQuery& query, Visit visit) {
    for (const TranslatorMap* each :
         {&query.attribute.translators, &query.attribute.arrayTranslators}) {
        const auto [first, last] = each->equal_range(query.library.translateName);
        for (auto row = first; row != last; ++row) {
            visit(static_cast<const CCDMTranslator&>(*row->second));
        }
    }
}

bool IsMapped(const FaceQuery& query) {
    bool is_mapped = false;
    ForEachTranslator(query, [&](const CCDMTranslator&) { is_mapped = true; });
    return is_mapped;
}

// Those of the wrong branch can't be left for another reason: they are passed over.
std::string WhyAllLeft(const FaceQuery& query) {
    std::set<std::string> reasons;
    ForEachTranslator(query, [&](const CCDMTranslator& each) {
        const std::string why = WhyLeft(each, query.path, query.parent.First());
        reasons.insert(why.empty() ? "its translators are of another branch" : why);
    });
    return Listed("", reasons, "; ");
}

}  // namespace

Absence WhyMissing(CCDMClassContext& place, const std::string& name, std::string& reason) {
    reason.clear();
    const CCDMAttribute* attribute = FindAttribute(*place.Place().shown, name);
    if (!attribute) return Absence::kUnmapped;
    const AncestorPath path = place.PathOf(*attribute);
    const FaceQuery query = place.QueryFor(*attribute, path);
    if (!IsMapped(query)) return Absence::kUnmapped;
    const FacesChoice choice = ChooseTranslators(query);
    if (!query.parent.IsEmpty() && choice.IsEmpty()) {
        reason = WhyAllLeft(query);
        return Absence::kNoTranslator;
    }
    if (BindFaces(query, choice).IsEmpty()) {
        reason = WhyNoNode(query);
        return Absence::kNoNode;
    }
    return WhyNoValue(place, *attribute, reason);
}

}  // namespace fixtop
