// SPDX-License-Identifier: Apache-2.0
// The rows of the K values of a stream, which has an array for each pair of phases.

#include "fixtop/semantic_functions.h"
#include "semantic/idioms.h"

namespace fixtop {

namespace {

using semantic::CompositionStep;
using semantic::Exported;
using semantic::IndexList;

constexpr char kMixedLiquid[] = "Comp K Value - Mixed Liquid";
constexpr char kLightLiquid[] = "Comp K Value - Light Liquid";
constexpr char kHeavyLiquid[] = "Comp K Value - Heavy Liquid";
constexpr char kLiquids[] = "Comp K Value - Liq1 / Liq2";
constexpr char kRow[] = "CmpCnt";

}  // namespace

int CTKVMLArray(FIIteratorBase* it, FIValue*, int index) {
    return Exported([=] { return IndexList(*it, index, kRow, {kMixedLiquid}); });
}

int CTKVLArray(FIIteratorBase* it, FIValue*, int index) {
    return Exported([=] { return IndexList(*it, index, kRow, {kLightLiquid}); });
}

int CTKVL2Array(FIIteratorBase* it, FIValue*, int index) {
    return Exported([=] { return IndexList(*it, index, kRow, {kHeavyLiquid}); });
}

int CTKL1L2Array(FIIteratorBase* it, FIValue*, int index) {
    return Exported([=] { return IndexList(*it, index, kRow, {kLiquids}); });
}

bool CTKVML(FIIteratorBase* it, int move) {
    return Exported([=] { return CompositionStep(*it, move, kMixedLiquid, kRow); });
}

bool CTKVL(FIIteratorBase* it, int move) {
    return Exported([=] { return CompositionStep(*it, move, kLightLiquid, kRow); });
}

bool CTKVL2(FIIteratorBase* it, int move) {
    return Exported([=] { return CompositionStep(*it, move, kHeavyLiquid, kRow); });
}

bool CTKL1L2(FIIteratorBase* it, int move) {
    return Exported([=] { return CompositionStep(*it, move, kLiquids, kRow); });
}

}  // namespace fixtop
