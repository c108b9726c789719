#pragma once

// HFandBContext, HFandBCursorBase, HFandBEntry: the nodes of a case, "FlowSheetObjects", "Basis"
// and "DataBook".

#include <array>
#include <memory>

#include "framework/attr_map.h"
#include "framework/ref.h"
#include "host/fixed_cursor.h"
#include "host/hovex_options.h"
#include "host/spec_view.h"

class HFandBContext final : public CountedFromZero<FIContext> {
 public:
    // Without options, and with a case, the context makes options of its own.
    HFandBContext(host::SimulationCase* simulation_case, const HovexOptions* options,
                  bool attachments, FIEntry* parent);

    FICursorBase* MakeCursor(int kind) override;
    void GetKeyValue(const char* path, FIValue& out, const char** rest) override;

    FIEntry* MakeEntry(int index);
    bool IsSameList(const HFandBContext& other) const { return case_ == other.case_; }

    host::SimulationCase* Case() const { return case_; }
    const HovexOptions* Options() const { return options_; }
    bool FollowsAttachments() const { return attachments_; }

 private:
    host::SimulationCase* case_;
    std::unique_ptr<HovexOptions> own_options_;
    const HovexOptions* options_;
    bool attachments_;
    Ref<FIEntry> parent_;
};

// Reports the end while it still stands on "DataBook": a walk that stops there does not see it.
class HFandBCursorBase final : public FixedCursor<HFandBCursorBase, HFandBContext> {
 public:
    using FixedCursor::FixedCursor;

    static constexpr std::array<const char*, 3> kNodeNames = {"FlowSheetObjects", "Basis",
                                                              "DataBook"};
    static constexpr FixedNames kNames = {kNodeNames, 2, 2};
};

class HFandBEntry final : public AttrMapEntry<HFandBEntry> {
 public:
    enum Node : int { kFlowSheetObjects = 0, kBasis = 1, kDataBook = 2 };

    HFandBEntry(HFandBContext* context, int index);

    static std::span<const AttrRow<HFandBEntry>> AttributeRows();

    void GetName(FIValue& out) override;
    void SetAttribute(const FIValue& name, const FIValue& value, int mode, FIValue& out) override;
    FIContext* GetContext() override;

    bool FollowsAttachments() const { return attachments_; }

 private:
    Ref<HFandBContext> context_;
    host::SimulationCase* case_;
    int index_;
    bool attachments_;
    HovexOptions options_;
    HSpecView basis_;
};
