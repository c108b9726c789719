// SPDX-License-Identifier: Apache-2.0
#include "mapping/nodes/application_faces.h"

#include "mapping/translators/find_translator.h"
#include "model/class_library.h"

namespace fixtop {

namespace {

const CCDMTranslator* Find(const FaceQuery& query, const TranslatorMap& translators,
                           BranchRequest request, FIReference* reference) {
    if (translators.empty()) return nullptr;
    return FindTranslator(query.library.translateName, query.path, translators, reference, request);
}

bool HasTranslator(const FaceQuery& query, BranchRequest request, FIReference* reference) {
    const auto has = [&](const TranslatorMap& translators) {
        return !translators.empty() && HasTranslator(query.library.translateName, query.path,
                                                     translators, reference, request);
    };
    return has(query.attribute.translators) || has(query.attribute.arrayTranslators);
}

struct Requests {
    BranchRequest primary = BranchRequest::kAny;
    BranchRequest secondary = BranchRequest::kNone;
    bool is_split = false;  // the secondary face comes from the primary reference
};

// One reference serves both faces when the map has a translator for one face alone.
Requests SplitRequests(const FaceQuery& query) {
    OwnFaces own;
    for (const TranslatorMap* each :
         {&query.attribute.translators, &query.attribute.arrayTranslators}) {
        if (each->empty()) continue;
        const OwnFaces found = FindOwnFaces(query.library.translateName, query.path, *each,
                                            query.parent.primary.Get());
        own.spec |= found.spec;
        own.calc |= found.calc;
    }
    if (own.spec) return {BranchRequest::kCalc, BranchRequest::kSpec, true};
    if (own.calc) return {BranchRequest::kSpec, BranchRequest::kCalc, true};
    return {};
}

Requests RequestsOf(const FaceQuery& query) {
    if (query.branch == BranchRequest::kCalc || query.branch == BranchRequest::kSpec) {
        return {query.branch, MirrorRequest(query.branch), false};
    }
    if (query.branch != BranchRequest::kBoth) return {};
    if (query.parent.secondary) return {BranchRequest::kCalc, BranchRequest::kSpec, false};
    return query.parent.primary ? SplitRequests(query) : Requests();
}

void SetVariables(const CCDMTranslator& translator, FIReference& reference, AppFace& face) {
    if (!translator.setVars) return;
    for (const auto& [name, value] : translator.setVars->pairs) {
        reference.GetIterator()->SetVarText(name.c_str(), value);
        if (name == kSubclassVariable) face.names_class = true;
    }
}

// Both kinds may apply: the plain translator leads to where the elements are walked from.
void BindFace(AppFace& face, const FaceQuery& query, FIReference* parent) {
    const CCDMTranslator* plain = Find(query, query.attribute.translators, face.request, parent);
    const auto* array = static_cast<const CCDMArrayTranslator*>(
        Find(query, query.attribute.arrayTranslators, face.request, parent));
    if (!plain && !array) return;
    if (query.attribute.isArray) face.array = array;
    Ref<FIReference> moved = parent->UnboundCopy();
    if (!moved || (plain && !plain->Apply(*moved))) return;
    for (const CCDMTranslator* each : {plain, static_cast<const CCDMTranslator*>(array)}) {
        if (!each) continue;
        SetVariables(*each, *moved, face);
        if (!each->nodeAttributes.empty()) face.overrides = &each->nodeAttributes;
    }
    if (array && !face.array && !array->Apply(*moved)) return;
    face.reference = std::move(moved);
}

}  // namespace

bool AppReferences::AreGone() const {
    if (IsEmpty()) return false;
    return (!primary || primary->IsGone()) && (!secondary || secondary->IsGone());
}

Liveness* AppReferences::Life() const {
    return First() ? First()->Life() : nullptr;
}

BranchRequest MirrorRequest(BranchRequest request) {
    switch (request) {
        case BranchRequest::kCalc:
        case BranchRequest::kCalcOnly:
            return BranchRequest::kSpec;
        case BranchRequest::kSpec:
        case BranchRequest::kSpecOnly:
            return BranchRequest::kCalc;
        default:
            return BranchRequest::kNone;
    }
}

AppReferences AppFaces::ByFace() const {
    if (IsSwapped()) return {secondary.reference, primary.reference};
    return {primary.reference, secondary.reference};
}

AppFaces ChooseFaces(const FaceQuery& query) {
    const Requests requests = RequestsOf(query);
    AppFaces faces;
    faces.primary.request = requests.primary;
    faces.secondary.request = requests.secondary;
    if (FIReference* parent = query.parent.primary.Get()) BindFace(faces.primary, query, parent);
    FIReference* other =
        requests.is_split ? query.parent.primary.Get() : query.parent.secondary.Get();
    if (!other) return faces;
    BindFace(faces.secondary, query, other);
    // A second node that was given is kept where the map says nothing about it.
    const bool is_given = !requests.is_split;
    if (is_given && !HasTranslator(query, requests.secondary, other)) {
        faces.secondary.reference = other->UnboundCopy();
    }
    return faces;
}

bool HasFace(const FaceQuery& query) {
    if (query.parent.IsEmpty()) return true;
    const bool may_split = query.branch == BranchRequest::kBoth && !query.parent.secondary;
    const Requests requests = may_split ? Requests() : RequestsOf(query);
    return (query.parent.primary &&
            HasTranslator(query, requests.primary, query.parent.primary.Get())) ||
           (query.parent.secondary &&
            HasTranslator(query, requests.secondary, query.parent.secondary.Get()));
}

void DumpChoice(const FaceQuery& query, const AppFace& face, FIReference* parent,
                std::string& out) {
    for (const TranslatorMap* each :
         {&query.attribute.translators, &query.attribute.arrayTranslators}) {
        FindTranslator(query.library.translateName, query.path, *each, parent, face.request, &out);
    }
}

}  // namespace fixtop
