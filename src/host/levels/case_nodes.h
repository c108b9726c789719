// SPDX-License-Identifier: Apache-2.0
#pragma once

// HFandBContext, HFandBCursorBase, HFandBEntry: the nodes of a case, "FlowSheetObjects", "Basis"
// and "DataBook".

#include <array>
#include <memory>

#include "host/hovex_options.h"
#include "host/levels/fixed_cursor.h"
#include "host/levels/fixed_level.h"
#include "host/specifications/spec_view.h"

namespace fixtop {

class HFandBCursorBase;
class HFandBEntry;

class HFandBContext : public FixedContext<HFandBContext, HFandBCursorBase, HFandBEntry> {
 public:
    // Without options, and with a case, the context makes options of its own.
    HFandBContext(host::SimulationCase* simulation_case, NodeAbove above);

    void GetKeyValue(const char* path, FIValue& out, const char** rest) override;

    bool IsSameList(const HFandBContext& other) const { return life_.Get() == other.life_.Get(); }

 private:
    std::unique_ptr<HovexOptions> own_options_;
};

// Reports the end while it still stands on "DataBook": a walk that stops there does not see it.
class HFandBCursorBase : public FixedCursor<HFandBCursorBase, HFandBContext> {
 public:
    using FixedCursor::FixedCursor;

    static constexpr std::array<const char*, 3> kNodeNames = {"FlowSheetObjects", "Basis",
                                                              "DataBook"};
    static constexpr FixedNames kNames = {kNodeNames, 2, 2};
};

class HFandBEntry : public FixedEntry<HFandBEntry, HFandBCursorBase, HFandBContext> {
 public:
    enum Node : int { kFlowSheetObjects = 0, kBasis = 1, kDataBook = 2 };

    static constexpr auto& kRefusal = kNotSupportedHere;

    HFandBEntry(HFandBContext* context, int index);

    static std::span<const AttrRow<HFandBEntry>> AttributeRows();

    FIContext* GetContext() override;

 private:
    HovexOptions options_;
    HSpecView basis_;
};

}  // namespace fixtop
