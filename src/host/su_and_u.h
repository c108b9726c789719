#pragma once

// HSUandUContext, HSUandUCursorBase, HSUandUEntry: the nodes of a flowsheet, "Streams", "UnitOps",
// "Utilities" and "Reactions".

#include <array>

#include "framework/attr_map.h"
#include "framework/ref.h"
#include "host/fixed_cursor.h"
#include "host/hovex_options.h"

class HSUandUContext final : public CountedFromZero<FIContext> {
 public:
    // A null flowsheet is the main one.
    HSUandUContext(host::FlowSheet* flowsheet, host::SimulationCase* simulation_case,
                   const HovexOptions* options, bool attachments, FIEntry* parent);

    FICursorBase* MakeCursor(int kind) override;
    void GetKeyValue(const char* path, FIValue& out, const char** rest) override;

    FIEntry* MakeEntry(int index);
    bool IsSameList(const HSUandUContext& other) const { return flowsheet_ == other.flowsheet_; }

    host::FlowSheet* FlowSheet() const { return flowsheet_; }
    host::SimulationCase* Case() const { return case_; }
    const HovexOptions* Options() const { return options_; }
    bool FollowsAttachments() const { return attachments_; }

 private:
    host::SimulationCase* case_;
    host::FlowSheet* flowsheet_;
    const HovexOptions* options_;
    bool attachments_;
    Ref<FIEntry> parent_;
};

class HSUandUCursorBase final : public FixedCursor<HSUandUCursorBase, HSUandUContext> {
 public:
    using FixedCursor::FixedCursor;

    static constexpr std::array<const char*, 4> kNodeNames = {"Streams", "UnitOps", "Utilities",
                                                              "Reactions"};
    static constexpr FixedNames kNames = {kNodeNames, 4, 4};
};

class HSUandUEntry final : public AttrMapEntry<HSUandUEntry> {
 public:
    HSUandUEntry(HSUandUContext* context, int index);

    static std::span<const AttrRow<HSUandUEntry>> AttributeRows();

    void GetName(FIValue& out) override;
    void SetAttribute(const FIValue& name, const FIValue& value, int mode, FIValue& out) override;
    FIContext* GetContext() override;

    bool FollowsAttachments() const { return attachments_; }

 private:
    Ref<HSUandUContext> context_;
    host::SimulationCase* case_;
    int index_;
    bool attachments_;
    HovexOptions options_;
};
