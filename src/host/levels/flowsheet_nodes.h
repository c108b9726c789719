// SPDX-License-Identifier: Apache-2.0
#pragma once

// HSUandUContext, HSUandUCursorBase, HSUandUEntry: the nodes of a flowsheet, "Streams", "UnitOps",
// "Utilities" and "Reactions".

#include <array>

#include "host/host_object.h"
#include "host/hovex_options.h"
#include "host/levels/fixed_cursor.h"
#include "host/levels/fixed_level.h"

namespace fixtop {

class HFSOContext;
class HSUandUCursorBase;
class HSUandUEntry;

class HSUandUContext : public FixedContext<HSUandUContext, HSUandUCursorBase, HSUandUEntry> {
 public:
    // A null flowsheet is the main one.
    HSUandUContext(host::FlowSheet* flowsheet, host::SimulationCase* simulation_case,
                   NodeAbove above);

    void GetKeyValue(const char* path, FIValue& out, const char** rest) override;

    bool IsSameList(const HSUandUContext& other) const {
        return flowsheet_.Number() == other.flowsheet_.Number();
    }

    // Null when it is gone.
    host::FlowSheet* FlowSheet() const { return flowsheet_.Get(); }
    bool IsGone() const final { return FixedContext::IsGone() || flowsheet_.IsGone(); }

 private:
    HostObject<host::FlowSheet> flowsheet_;
};

class HSUandUCursorBase : public FixedCursor<HSUandUCursorBase, HSUandUContext> {
 public:
    using FixedCursor::FixedCursor;

    static constexpr std::array<const char*, 4> kNodeNames = {"Streams", "UnitOps", "Utilities",
                                                              "Reactions"};
    static constexpr FixedNames kNames = {kNodeNames, 4, 4};
};

class HSUandUEntry : public FixedEntry<HSUandUEntry, HSUandUCursorBase, HSUandUContext> {
 public:
    static constexpr auto& kRefusal = kNotSupportedHere;

    HSUandUEntry(HSUandUContext* context, int index);

    static std::span<const AttrRow<HSUandUEntry>> AttributeRows();

    FIContext* GetContext() override;

 private:
    HovexOptions options_;
    // The list that somebody holds, which whoever asks next shares; null when nobody does.
    HFSOContext* list_ = nullptr;
};

}  // namespace fixtop
