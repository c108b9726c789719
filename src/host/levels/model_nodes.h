// SPDX-License-Identifier: Apache-2.0
#pragma once

// HAandCContext, HAandCCursorBase, HAandCEntry: the model nodes of a case, "appModel" with the raw
// tree, "QSI Published Variables" and "Published Variables".

#include <array>
#include <string>

#include "host/hovex_options.h"
#include "host/levels/fixed_cursor.h"
#include "host/levels/fixed_level.h"

namespace fixtop {

class HAandCCursorBase;
class HAandCEntry;

// The files of the neutral view and the application's name, as they were given.
struct NeutralViewNames {
    std::string library;
    std::string map;
    std::string units;
    std::string name;
};

class HAandCContext : public FixedContext<HAandCContext, HAandCCursorBase, HAandCEntry> {
 public:
    HAandCContext(host::SimulationCase* simulation_case, NeutralViewNames files);

    // Every path of the host begins below "appModel".
    void GetKeyValue(const char* path, FIValue& out, const char** rest) override;

    // Every case has the same models.
    bool IsSameList(const HAandCContext&) const { return true; }

    const NeutralViewNames& Files() const { return files_; }
    void FollowAttachments(bool follow) { above_.FollowAttachments(follow); }
    // A tree in which what a file publishes is sought must not lead back into it.
    void HidePublishedFile() { shows_published_file_ = false; }
    bool ShowsPublishedFile() const { return shows_published_file_; }

 private:
    NeutralViewNames files_;
    bool shows_published_file_ = true;
};

class HAandCCursorBase : public FixedCursor<HAandCCursorBase, HAandCContext> {
 public:
    using FixedCursor::FixedCursor;

    static constexpr std::array<const char*, 3> kModelNames = {
        "appModel", "QSI Published Variables", "Published Variables"};
    static constexpr FixedNames kNames = {kModelNames, 2, 3};
};

class HAandCEntry : public FixedEntry<HAandCEntry, HAandCCursorBase, HAandCContext> {
 public:
    enum Model : int { kAppModel = 0, kPublishedFile = 1, kPublishedVariables = 2 };
    static constexpr char kRefusal[] = "Not supported.";

    HAandCEntry(HAandCContext* context, int index);

    static std::span<const AttrRow<HAandCEntry>> AttributeRows();

    FIContext* GetContext() override;

 private:
    bool HasChildren() const;

    HovexOptions options_;
};

}  // namespace fixtop
