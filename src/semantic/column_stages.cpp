// SPDX-License-Identifier: Apache-2.0
// The stages of a column and of its sections. The host has an array of all stages for each
// property.

#include "fixtop/semantic_functions.h"
#include "semantic/column_summary.h"
#include "semantic/idioms.h"
#include "semantic/stage_kind.h"

namespace fixtop {

namespace {

using semantic::CopyOf;
using semantic::Exported;

// Condenser and reboiler are stages too.
constexpr int kVesselCount = 2;

int CountStages(FIIteratorBase& it) {
    const auto trays = semantic::CountTrays(*CopyOf(it));
    return trays ? static_cast<int>(*trays + kVesselCount) : 0;
}

}  // namespace

int CTColumnStages(FIIteratorBase* it, FIValue*, int index) {
    return Exported([=] {
        if (index == kCountIndex) return CountStages(*it);
        semantic::SetStageNumber(*it, index);
        semantic::SetStageKind(*it, index);
        return index;
    });
}

int CTSectionTray(FIIteratorBase* it, FIValue*, int index) {
    return Exported([=] {
        if (index == kCountIndex) {
            return semantic::ReadChildValue(*CopyOf(*it), "Number of Stages").AsInt();
        }
        semantic::SetElementName(*it, "Element", index);
        return semantic::SetElementIndex(*it, "Elemno", index);
    });
}

}  // namespace fixtop
