// SPDX-License-Identifier: Apache-2.0
#include "semantic/stage_kind.h"

#include <iterator>
#include <string>

#include "semantic/column_inlets.h"
#include "semantic/idioms.h"

namespace fixtop::semantic {

namespace {

constexpr const char* kFlags[] = {"IsCondenser", "IsReboiler", "IsFeed", "IsDraw", "IsReturn"};

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

int SelectStage(FIIteratorBase* it, FIValue*, int stage) {
    return Exported([=] { return SetStageNumber(*it, stage); });
}

}  // namespace

int SetStageNumber(FIIteratorBase& it, int stage) {
    return SetElementIndex(it, "StageElemNo", stage);
}

void SetStageKind(FIIteratorBase& it, int stage) {
    const StageKind kind = ReadStageKind(it, stage);
    const bool flags[] = {kind.is_condenser, kind.is_reboiler, kind.is_feed, kind.is_draw,
                          kind.is_return};
    static_assert(std::size(flags) == std::size(kFlags));
    for (std::size_t i = 0; i < std::size(flags); ++i) {
        it.SetVarText(kFlags[i], FIValue::OfInt(flags[i]));
    }
}

const LateVariables kStageKinds = {kFlags, SelectStage,
                                   [](FIIteratorBase* it, int stage) { SetStageKind(*it, stage); }};

}  // namespace fixtop::semantic
