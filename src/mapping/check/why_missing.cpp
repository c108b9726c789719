// SPDX-License-Identifier: Apache-2.0
#include "mapping/check/why_missing.h"

#include <set>

#include "fixtop/near_names.h"
#include "framework/nodes/shield.h"
#include "framework/path/child_steps.h"
#include "framework/path/path_match.h"
#include "mapping/nodes/class_entry.h"
#include "mapping/translators/find_translator.h"
#include "mapping/translators/function_translator.h"
#include "mapping/translators/scalar_translators.h"
#include "mapping/translators/unit_and_enum_converter.h"
#include "model/attribute_walker.h"

namespace fixtop {

namespace {

const FIValue kValue("value");
const FIValue kUom("uom");
const FIValue kStatus("status");

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

std::string Joined(const std::set<std::string>& texts, const char* separator) {
    std::string joined;
    for (const std::string& text : texts) joined += (joined.empty() ? "" : separator) + text;
    return joined;
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
    return Joined(reasons, "; ");
}

// ---- paths

// A variable stands for its value.
std::string NameOfStep(const PathEnd& end) {
    FIValue value;
    const bool is_variable = end.step.starts_with('%');
    if (is_variable && end.node->GetVarText(end.name.c_str(), value)) return value.ToText();
    return end.name;
}

std::string NearChildren(FIIterator& node, const std::string& wanted) {
    std::vector<std::string> names;
    ForEachChild(node, [&](FIIterator&, const ChildStep& step) {
        names.push_back(step.name);
        return true;
    });
    std::string near;
    for (const std::string& name : NearNames(wanted, names)) {
        near += (near.empty() ? "; near: " : ", ") + name;
    }
    return near;
}

std::string WhyPathFails(const std::string& text, FIReference& from) {
    std::string told = "path " + text + " leads nowhere";
    FIValue source;
    source.SetText(text);
    const PreparedPath path(source);
    if (!path.Error().IsNull()) return path.Error().ToText();
    const Ref<FIReference> start = from.UnboundCopy();
    if (!start) return told;
    const PathEnd end = EndOf(static_cast<FIIterator&>(*start->GetIterator()), path);
    const std::string name = NameOfStep(end);
    const std::string value = name == end.name ? "" : " (" + name + ")";
    return told +
           (end.found.empty() ? "; nothing of it was found"
                              : "; found: " + end.found + ", then no " + end.step + value) +
           NearChildren(*end.node, name);
}

// Why the translator that was chosen leads to no node.
std::string WhyFails(const CCDMTranslator& translator, FIReference& from) {
    if (const auto* map = dynamic_cast<const CCDMMapTranslator*>(&translator)) {
        return WhyPathFails(map->Text(), from);
    }
    if (const auto* function = dynamic_cast<const CCDMFunctionTranslator*>(&translator)) {
        return "function " + function->FunctionName() + " finds no node";
    }
    return "its translator leads to no node";
}

std::string WhyNoNode(const FaceQuery& query) {
    std::string reason;
    FIReference* from = query.parent.First();
    if (!from) return reason;
    for (const TranslatorMap* each :
         {&query.attribute.translators, &query.attribute.arrayTranslators}) {
        for (const BranchRequest request : {BranchRequest::kCalc, BranchRequest::kSpec}) {
            const CCDMTranslator* chosen =
                FindTranslator(query.library.translateName, query.path, *each, from, request);
            if (!chosen) continue;
            const Ref<FIReference> tried = from->UnboundCopy();
            if (tried && !chosen->Apply(*tried)) return WhyFails(*chosen, *from);
        }
    }
    return "the node is gone";
}

// ---- values

Absence Tell(Absence absence, std::string text, std::string& reason) {
    reason = std::move(text);
    return absence;
}

Absence JudgeList(CCDMClassContext& place, const CCDMAttribute& attribute, std::string& reason) {
    const auto cursor = Ref<FICursorBase>::Adopt(place.MakeCursor(kChildCursor));
    bool has_element = false;
    for (bool on = cursor->SeekName(kFromFirst, attribute.name.c_str()); on;
         on = cursor->Seek(kFromPresent, 1)) {
        FIValue name;
        FIValue value;
        const auto entry = Ref<FIEntry>::Adopt(cursor->GetEntry());
        entry->GetName(name);
        if (name.ToText() != attribute.name) break;
        has_element = true;
        if (attribute.type == CCDMAttrType::kObject) return Absence::kHasValue;
        entry->GetAttribute(kValue, value);
        if (!value.IsNull()) return Absence::kHasValue;
    }
    return Tell(Absence::kNoValue,
                has_element ? "no element of the list has a value"
                            : "the list is empty, or no element of it has a key",
                reason);
}

Absence JudgeValue(CCDMClassContext& place, const CCDMAttribute& attribute, std::string& reason) {
    const auto entry = Ref<CCDMClassEntry>::Share(new Shielded<CCDMClassEntry>(place, attribute));
    FIValue value;
    entry->GetAttribute(kValue, value);
    if (value.IsNull()) {
        entry->GetAttribute(kStatus, value);
        const std::string status = value.ToText();
        return Tell(Absence::kNoValue,
                    "the node has no value" + (status.empty() ? "" : " (" + status + ")"), reason);
    }
    FIValue unit;
    if (FIReference* node = entry->Faces().First().reference.Get()) node->GetAttribute(kUom, unit);
    UnitAndEnumConverter converter(place.Library(), attribute, nullptr, false);
    reason = converter.WhyRefused(unit, value);
    return reason.empty() ? Absence::kHasValue : Absence::kRefused;
}

}  // namespace

Absence WhyMissing(CCDMClassContext& place, const std::string& name, std::string& reason) {
    reason.clear();
    const CCDMAttribute* attribute = FindAttribute(*place.Place().shown, name);
    if (!attribute) return Absence::kUnmapped;
    const AncestorPath path = place.PathOf(*attribute);
    const FaceQuery query = place.QueryFor(*attribute, path);
    if (!IsMapped(query)) return Absence::kUnmapped;
    if (!HasFace(query)) return Tell(Absence::kNoTranslator, WhyAllLeft(query), reason);
    if (ChooseFaces(query).IsEmpty()) return Tell(Absence::kNoNode, WhyNoNode(query), reason);
    if (attribute->isArray) return JudgeList(place, *attribute, reason);
    if (attribute->type == CCDMAttrType::kObject) return Absence::kHasValue;
    return JudgeValue(place, *attribute, reason);
}

}  // namespace fixtop
