// SPDX-License-Identifier: Apache-2.0
// The stages of a column and of its sections. The host has an array of all stages for each property
// and says nothing of the kind of a stage: that is told by names and by what flows in and out.

#include <string>
#include <utility>

#include "fixtop/semantic_functions.h"
#include "semantic/column_inlets.h"
#include "semantic/column_summary.h"
#include "semantic/idioms.h"

namespace fixtop {

namespace {

using semantic::CopyOf;
using semantic::Exported;
using semantic::ReadElementValue;

// Of a stage's name, with the NUL.
constexpr int kNameSize = 256;
// Condenser and reboiler are stages too.
constexpr int kVesselCount = 2;

struct StageKind {
    bool is_condenser = false;
    bool is_reboiler = false;
    bool is_feed = false;
    bool is_draw = false;
    bool is_return = false;
};

// What enters a stage that is no inlet comes back from a pump-around or a side column.
StageKind ReadStageKind(FIIteratorBase& column, int stage) {
    StageKind kind;
    const Ref<FIIteratorBase> profiles = CopyOf(column);
    if (!semantic::SeekNames(*profiles, {"My SubFlowsheet"})) return kind;
    char buffer[kNameSize];
    ReadElementValue(*profiles, "Stage Name", stage).CopyText(buffer, kNameSize);
    const std::string name = buffer;
    kind.is_condenser = name == "Condenser";
    kind.is_reboiler = name == "Reboiler";
    if (!ReadElementValue(*profiles, "Stage Net Molar Feed", stage).IsNull()) {
        kind.is_feed = semantic::IsInletStage(column, name);
        kind.is_return = !kind.is_feed;
    }
    kind.is_draw = !ReadElementValue(*profiles, "Stage Net Molar Draw", stage).IsNull();
    return kind;
}

void SetStageKind(FIIteratorBase& it, int stage) {
    const StageKind kind = ReadStageKind(it, stage);
    const std::pair<const char*, bool> flags[] = {{"IsCondenser", kind.is_condenser},
                                                  {"IsReboiler", kind.is_reboiler},
                                                  {"IsFeed", kind.is_feed},
                                                  {"IsDraw", kind.is_draw},
                                                  {"IsReturn", kind.is_return}};
    for (const auto& [variable, flag] : flags) it.SetVarText(variable, FIValue::OfInt(flag));
}

int CountStages(FIIteratorBase& it) {
    const auto trays = semantic::CountTrays(*CopyOf(it));
    return trays ? static_cast<int>(*trays + kVesselCount) : 0;
}

}  // namespace

int CTColumnStages(FIIteratorBase* it, FIValue*, int index) {
    return Exported([=] {
        if (index == kCountIndex) return CountStages(*it);
        semantic::SetElementIndex(*it, "StageElemNo", index);
        SetStageKind(*it, index);
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
