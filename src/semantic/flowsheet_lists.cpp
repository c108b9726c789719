// SPDX-License-Identifier: Apache-2.0
// The lists of a flowsheet, and the way from the top node to the raw tree.

#include "fixtop/semantic_functions.h"
#include "semantic/idioms.h"
#include "semantic/unit_operation_class.h"

namespace fixtop {

using semantic::Exported;

namespace {

// The containers of a flowsheet.
constexpr char kStreams[] = "Streams";
constexpr char kUnitOperations[] = "UnitOps";
constexpr char kUtilities[] = "Utilities";

int TypedList(FIIteratorBase* it, const char* container, const char* type, int index) {
    return Exported([=] { return semantic::CountTypedChildren(*it, container, type, index); });
}

}  // namespace

bool Find1(FIIteratorBase* it, int move) {
    return Exported([=] {
        if (!move) return true;
        it->SeekPath(FIValue("appModel"));
        // Touches the node once, so that it is there; the text is of no use.
        char key[20];
        it->NameText(key, sizeof key);
        return true;
    });
}

int CTFlowsheets(FIIteratorBase* it, FIValue*, int index) {
    return TypedList(it, kUnitOperations, "TemplateOpObject", index);
}

int CTStreams(FIIteratorBase* it, FIValue*, int index) {
    return TypedList(it, kStreams, "MaterialStreamObject", index);
}

int CTHeatStreams(FIIteratorBase* it, FIValue*, int index) {
    return TypedList(it, kStreams, "EnergyStreamObject", index);
}

int CTPhaseEnvelopes(FIIteratorBase* it, FIValue*, int index) {
    return TypedList(it, kUtilities, "EnvelopeUtilityObject", index);
}

int CTDistillationCurves(FIIteratorBase* it, FIValue*, int index) {
    return TypedList(it, kUtilities, "BPTableUtilityObject", index);
}

int CTUnitOperations(FIIteratorBase* it, FIValue* subclass, int index) {
    return Exported([=] {
        const auto classify = [subclass](FIIteratorBase& child) {
            return semantic::ClassifyUnitOperation(child, *subclass);
        };
        return semantic::CountAcceptedChildren(*it, kUnitOperations, classify, index);
    });
}

}  // namespace fixtop
