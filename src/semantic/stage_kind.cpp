// SPDX-License-Identifier: Apache-2.0
#include "semantic/stage_kind.h"

#include <string>
#include <utility>

#include "semantic/column_inlets.h"
#include "semantic/idioms.h"

namespace fixtop::semantic {

namespace {

// Of a stage's name, with the NUL.
constexpr int kNameSize = 256;

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
    if (!SeekNames(*profiles, {"My SubFlowsheet"})) return kind;
    char buffer[kNameSize];
    ReadElementValue(*profiles, "Stage Name", stage).CopyText(buffer, kNameSize);
    const std::string name = buffer;
    kind.is_condenser = name == "Condenser";
    kind.is_reboiler = name == "Reboiler";
    if (!ReadElementValue(*profiles, "Stage Net Molar Feed", stage).IsNull()) {
        kind.is_feed = IsInletStage(column, name);
        kind.is_return = !kind.is_feed;
    }
    kind.is_draw = !ReadElementValue(*profiles, "Stage Net Molar Draw", stage).IsNull();
    return kind;
}

}  // namespace

void SetStageKind(FIIteratorBase& it, int stage) {
    const StageKind kind = ReadStageKind(it, stage);
    const std::pair<const char*, bool> flags[] = {{"IsCondenser", kind.is_condenser},
                                                  {"IsReboiler", kind.is_reboiler},
                                                  {"IsFeed", kind.is_feed},
                                                  {"IsDraw", kind.is_draw},
                                                  {"IsReturn", kind.is_return}};
    for (const auto& [variable, flag] : flags) it.SetVarText(variable, FIValue::OfInt(flag));
}

}  // namespace fixtop::semantic
