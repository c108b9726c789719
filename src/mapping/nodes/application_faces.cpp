// SPDX-License-Identifier: Apache-2.0
#include "mapping/nodes/application_faces.h"

#include <algorithm>

#include "model/class_library.h"

namespace fixtop {

namespace {

// Both forms of an attribute's translators, weighed from one node.
struct Weighed {
    Weighed(const FaceQuery& query, FIReference* from)
        : plain(query.library.translateName, query.path, query.attribute.translators, from),
          array(query.library.translateName, query.path, query.attribute.arrayTranslators, from) {}

    bool Has(BranchRequest request) const { return plain.Has(request) || array.Has(request); }
    FaceChoice For(BranchRequest request) const {
        return {request, plain.Choose(request), array.Choose(request)};
    }

    WeighedTranslators plain;
    WeighedTranslators array;
};

// One reference serves both faces when the map has a translator for one face alone.
FacesChoice Split(const Weighed& weighed) {
    using enum BranchRequest;
    if (weighed.Has(kSpecOnly)) return {weighed.For(kCalc), weighed.For(kSpec), true};
    if (weighed.Has(kCalcOnly)) return {weighed.For(kSpec), weighed.For(kCalc), true};
    return {weighed.For(kAny), {kNone, {}, {}}};
}

struct Requests {
    BranchRequest primary;
    BranchRequest secondary;
};

Requests RequestsOf(const FaceQuery& query) {
    using enum BranchRequest;
    if (query.branch == kCalc || query.branch == kSpec) {
        return {query.branch, MirrorRequest(query.branch)};
    }
    const bool has_both = query.branch == kBoth && query.parent.secondary;
    return has_both ? Requests{kCalc, kSpec} : Requests{kAny, kNone};
}

FaceChoice ChooseFrom(const FaceQuery& query, FIReference* from, BranchRequest request) {
    if (!from) return {request, {}, {}};
    return Weighed(query, from).For(request);
}

void LogTies(const FaceQuery& query, const FaceChoice& choice) {
    LogTie(choice.plain, query.path);
    LogTie(choice.array, query.path);
}

void SetVariables(const CCDMTranslator* translator, FIReference& reference) {
    if (!translator || !translator->setVars) return;
    for (const auto& [name, value] : translator->setVars->pairs) {
        reference.GetIterator()->SetVarText(name.c_str(), value);
    }
}

bool NamesClass(const CCDMTranslator& translator) {
    if (!translator.setVars) return false;
    const auto& pairs = translator.setVars->pairs;
    return std::any_of(pairs.begin(), pairs.end(),
                       [](const auto& pair) { return pair.first == kSubclassVariable; });
}

}  // namespace

// Both forms may apply: the plain translator leads to where the elements are walked from.
AppFace::AppFace(const FaceChoice& choice, const FaceQuery& query, FIReference* parent)
    : request(choice.request),
      parent_(choice.IsEmpty() ? nullptr : parent),
      plain_(choice.plain.translator),
      array_(static_cast<const CCDMArrayTranslator*>(choice.array.translator)),
      last_(query.last) {
    if (query.attribute.isArray) array = array_;
    for (const CCDMTranslator* each : {plain_, static_cast<const CCDMTranslator*>(array_)}) {
        if (!each) continue;
        names_class |= NamesClass(*each);
        if (!each->nodeAttributes.empty()) overrides = &each->nodeAttributes;
    }
}

void AppFace::StandOn(Ref<FIReference> node) {
    node_ = std::move(node);
    beside_.Reset();
    parent_ = nullptr;
}

void AppFace::Bind() const {
    node_ = beside_ && beside_->IsGone() ? beside_ : MovedCopy();
    beside_.Reset();
    parent_ = nullptr;
}

const CCDMMapTranslator* AppFace::PathAlone() const {
    const bool is_alone = plain_ && plain_->followsPath && !plain_->setVars && !array_;
    return is_alone ? static_cast<const CCDMMapTranslator*>(plain_) : nullptr;
}

Ref<FIReference> AppFace::MovedCopy() const {
    const CCDMMapTranslator* path = last_ ? PathAlone() : nullptr;
    if (path) return last_->Lead(*parent_, *path);
    Ref<FIReference> moved = parent_->UnboundCopy();
    if (!moved || (plain_ && !plain_->Apply(*moved))) return {};
    SetVariables(plain_, *moved);
    SetVariables(array_, *moved);
    if (array_ && !array && !array_->Apply(*moved)) return {};
    return moved;
}

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
    if (IsSwapped()) return {secondary.SharedNode(), primary.SharedNode()};
    return {primary.SharedNode(), secondary.SharedNode()};
}

void AppFaces::Bind(bool is_split) {
    const AppFace& of_value = OfValue();
    AppFace& other = &of_value == &primary ? secondary : primary;
    if (of_value.Node() && is_split) {
        other.BindLate(of_value.SharedNode());
    } else {
        other.Node();
    }
}

FacesChoice ChooseTranslators(const FaceQuery& query) {
    FIReference* primary = query.parent.primary.Get();
    FIReference* secondary = query.parent.secondary.Get();
    if (query.branch == BranchRequest::kBoth && primary && !secondary) {
        return Split(Weighed(query, primary));
    }
    const Requests requests = RequestsOf(query);
    return {ChooseFrom(query, primary, requests.primary),
            ChooseFrom(query, secondary, requests.secondary)};
}

bool DependsOnVariables(const FaceQuery& query) {
    const auto has_condition = [&](const TranslatorMap& translators) {
        const auto [first, last] = translators.equal_range(query.library.translateName);
        return std::any_of(first, last, [](const auto& row) {
            return static_cast<const CCDMTranslator&>(*row.second).conditions != nullptr;
        });
    };
    return has_condition(query.attribute.translators) ||
           has_condition(query.attribute.arrayTranslators);
}

AppFaces BindFaces(const FaceQuery& query, const FacesChoice& choice) {
    LogTies(query, choice.primary);
    LogTies(query, choice.secondary);
    FIReference* primary = query.parent.primary.Get();
    FIReference* secondary = query.parent.secondary.Get();
    AppFaces faces = {AppFace(choice.primary, query, primary),
                      AppFace(choice.secondary, query, choice.is_split ? primary : secondary)};
    // A second node that was given is kept where the map says nothing about it.
    const bool keeps_given = secondary && !choice.is_split && choice.secondary.IsEmpty();
    if (keeps_given) faces.secondary.StandOn(secondary->UnboundCopy());
    faces.Bind(choice.is_split);
    return faces;
}

void DumpChoice(const FaceQuery& query, const AppFace& face, FIReference* parent,
                std::string& out) {
    for (const TranslatorMap* each :
         {&query.attribute.translators, &query.attribute.arrayTranslators}) {
        FindTranslator(query.library.translateName, query.path, *each, parent, face.request, &out);
    }
}

}  // namespace fixtop
