// SPDX-License-Identifier: Apache-2.0
// The components of the phases in condenser and reboiler of a column.

#include "fixtop/semantic_functions.h"
#include "semantic/idioms.h"

namespace fixtop {

namespace {

using semantic::Exported;
using semantic::IndexList;
using semantic::NestedStep;

constexpr char kVesselRow[] = "FlashPhaseCmpCnt";
constexpr char kVesselFractions[] = "Vessel Mole Frac";
constexpr char kVapourFractions[] = "Vapour Mole Fraction";
constexpr char kLiquidFractions[] = "Liquid Mole Fraction";

}  // namespace

int CTCondRebVesselComponentArray(FIIteratorBase* it, FIValue*, int index) {
    return Exported([=] { return IndexList(*it, index, kVesselRow, {kVesselFractions}); });
}

int CTCondRebVaporComponentArray(FIIteratorBase* it, FIValue*, int index) {
    return Exported([=] { return IndexList(*it, index, kVesselRow, {kVapourFractions}); });
}

int CTCondRebLiquidComponentArray(FIIteratorBase* it, FIValue*, int index) {
    return Exported([=] { return IndexList(*it, index, kVesselRow, {kLiquidFractions}); });
}

bool CTCondRebVesselComponent(FIIteratorBase* it, int move) {
    return Exported([=] { return NestedStep(*it, move, kVesselRow, {kVesselFractions}); });
}

bool CTCondRebVaporComponent(FIIteratorBase* it, int move) {
    return Exported([=] { return NestedStep(*it, move, kVesselRow, {kVapourFractions}); });
}

bool CTCondRebLiquidComponent(FIIteratorBase* it, int move) {
    return Exported([=] { return NestedStep(*it, move, kVesselRow, {kLiquidFractions}); });
}

}  // namespace fixtop
