// SPDX-License-Identifier: Apache-2.0
#include "mapping/nodes/last_place.h"

#include "mapping/translators/reference_move.h"

namespace fixtop {

namespace {

// Goes one level down, to the first child of its name, whatever the variables.
bool IsPlain(const PathStep& step) {
    return !step.name.empty() && !step.isVariable && step.count.IsNull() && step.filters.empty();
}

// The steps with which both begin, as a count of levels; `rest` becomes what follows them in the
// second, null for nothing.
int SharedSteps(const PathStep* one, const PathStep* other, const PathStep** rest) {
    int shared = 0;
    while (one && other && IsPlain(*one) && IsPlain(*other) && one->name == other->name) {
        one = one->Next();
        other = other->Next();
        ++shared;
    }
    *rest = other;
    return shared;
}

}  // namespace

// The one of before, if it is still where it was left and nobody else has it.
Ref<FIReference> LastPlace::Take(const FIReference& node) {
    Ref<FIReference> place = std::move(place_);
    const bool may_go_on =
        place && node_ == &node && place->MayBeLedOn() && place->Depth() == depth_;
    return may_go_on ? place : Ref<FIReference>();
}

Ref<FIReference> LastPlace::Lead(FIReference& node, const CCDMMapTranslator& translator) {
    const PathStep* rest = translator.Path();
    if (!rest) return {};
    Ref<FIReference> place = Take(node);
    if (place) {
        const int shared = SharedSteps(path_, translator.Path(), &rest);
        PopTo(*place, node_depth_ + shared);
    } else {
        place = node.UnboundCopy();
        if (!place) return {};
        node_depth_ = place->Depth();
    }
    const bool leads =
        MoveReference(*place, [&](FIIteratorBase& it) { return !rest || it.WalkFrom(*rest); });
    if (!leads) return {};
    node_ = &node;
    path_ = translator.Path();
    depth_ = place->Depth();
    place_ = place;
    return place;
}

}  // namespace fixtop
