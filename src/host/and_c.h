#pragma once

// HAandCContext, HAandCCursorBase, HAandCEntry: the model nodes of a case, "appModel" with the raw
// tree, "QSI Published Variables" and "Published Variables".

#include <array>
#include <string>

#include "framework/attr_map.h"
#include "framework/ref.h"
#include "host/fixed_cursor.h"
#include "host/hovex_options.h"

class HAandCEntry;

// The files of the neutral view and the application's name, as they were given.
struct ModelFiles {
    std::string library;
    std::string map;
    std::string units;
    std::string name;
};

class HAandCContext final : public CountedFromZero<FIContext> {
 public:
    // A null case is the active one.
    HAandCContext(host::SimulationCase* simulation_case, ModelFiles files);

    FICursorBase* MakeCursor(int kind) override;
    // Every path of the host begins below "appModel".
    void GetKeyValue(const char* path, FIValue& out, const char** rest) override;

    FIEntry* MakeEntry(int index);
    bool IsSameList(const HAandCContext& other) const { return case_ == other.case_; }

    host::SimulationCase* Case() const { return case_; }
    const ModelFiles& Files() const { return files_; }
    bool FollowsAttachments() const { return attachments_; }
    void FollowAttachments(bool follow) { attachments_ = follow; }

 private:
    host::SimulationCase* case_;
    ModelFiles files_;
    bool attachments_ = true;
};

class HAandCCursorBase final : public FixedCursor<HAandCCursorBase, HAandCContext> {
 public:
    using FixedCursor::FixedCursor;

    static constexpr std::array<const char*, 3> kModelNames = {
        "appModel", "QSI Published Variables", "Published Variables"};
    static constexpr FixedNames kNames = {kModelNames, 2, 3};
};

class HAandCEntry final : public AttrMapEntry<HAandCEntry> {
 public:
    enum Model : int { kAppModel = 0, kPublishedFile = 1, kPublishedVariables = 2 };

    HAandCEntry(HAandCContext* context, int index);

    static std::span<const AttrRow<HAandCEntry>> AttributeRows();

    void GetName(FIValue& out) override;
    void SetAttribute(const FIValue& name, const FIValue& value, int mode, FIValue& out) override;
    FIContext* GetContext() override;

    bool FollowsAttachments() const { return attachments_; }

 private:
    bool HasChildren() const;

    Ref<HAandCContext> context_;
    host::SimulationCase* case_;
    int index_;
    bool attachments_;
    HovexOptions options_;
};
