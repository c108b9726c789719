// SPDX-License-Identifier: Apache-2.0
// The rows of the compositions of streams. The host holds them as parallel arrays, the neutral
// model wants an object for each component: a list counts the array and leaves the number of the
// row in a variable, and each attribute of the row steps to that element of its own array.

#include "fixtop/semantic_functions.h"
#include "semantic/idioms.h"

namespace fixtop {

namespace {

using semantic::CompositionStep;
using semantic::Exported;
using semantic::IndexList;
using semantic::PhaseComponentStep;

constexpr char kMoleFractions[] = "Comp Mole Frac";
constexpr char kPhaseMoleFractions[] = "Phase Comp Mole Frac";
constexpr char kRow[] = "CmpCnt";  // number of the row

}  // namespace

// ---- A stream

int CTComponentArray(FIIteratorBase* it, FIValue*, int index) {
    return Exported([=] { return IndexList(*it, index, kRow, {kMoleFractions}); });
}

bool CTComponent(FIIteratorBase* it, int move) {
    return Exported([=] { return CompositionStep(*it, move, kMoleFractions, kRow); });
}

// One node has the component as its key and the fraction as its value.
bool CTMoleFraction(FIIteratorBase* it, int move) {
    return Exported([=] { return CTComponent(it, move); });
}

bool CTMassFraction(FIIteratorBase* it, int move) {
    return Exported([=] { return CompositionStep(*it, move, "Master Comp Mass Frac", kRow); });
}

bool CTVolumeFraction(FIIteratorBase* it, int move) {
    return Exported([=] { return CompositionStep(*it, move, "Master Comp Volume Frac", kRow); });
}

// ---- One phase of a stream, named by the variable PhaseName

// Every phase has a row for each component, so the vapour's list serves them all.
int CTPhaseComponentArray(FIIteratorBase* it, FIValue*, int index) {
    return Exported([=] {
        return IndexList(*it, index, "PhaseCmpCnt", {kPhaseMoleFractions, "Vapour Phase"});
    });
}

bool CTPhaseComponent(FIIteratorBase* it, int move) {
    return Exported([=] { return PhaseComponentStep(*it, move, kPhaseMoleFractions); });
}

bool CTPhaseMoleFraction(FIIteratorBase* it, int move) {
    return Exported([=] { return PhaseComponentStep(*it, move, kPhaseMoleFractions); });
}

bool CTPhaseMassFraction(FIIteratorBase* it, int move) {
    return Exported([=] { return PhaseComponentStep(*it, move, "Phase Comp Mass Frac"); });
}

bool CTPhaseVolumeFraction(FIIteratorBase* it, int move) {
    return Exported([=] { return PhaseComponentStep(*it, move, "Phase Comp Volume Frac"); });
}

}  // namespace fixtop
