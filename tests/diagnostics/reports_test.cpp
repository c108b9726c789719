// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "diagnostics/instance_counts.h"
#include "diagnostics/seek_table.h"
#include "support/debug_capture.h"

namespace fixtop {

namespace {

struct Sample : private Counted<CountedClass::CDTVariable> {
    int payload = 0;
};

std::vector<std::string> Report(CountGroup group, int indent) {
    const DebugCapture capture;
    ReportInstances(group, indent);
    return capture.Pieces();
}

TEST(InstanceCounts, follow_the_objects) {
    InstanceCount& count = CountOf(CountedClass::CDTVariable);
    const int total = count.total;
    ASSERT_EQ(count.alive, 0);
    {
        Sample first;
        Sample copy(first);
        Sample moved(std::move(first));
        EXPECT_EQ(count.alive, 3);
        EXPECT_EQ(count.total, total + 3);
        copy = moved;
        EXPECT_EQ(count.alive, 3) << "assignment makes no object";
    }
    EXPECT_EQ(count.alive, 0);
    EXPECT_EQ(count.total, total + 3);
    static_assert(sizeof(Sample) == sizeof(int), "counting costs no room");
}

TEST(InstanceCounts, groups_print_their_classes_in_order) {
    const std::pair<CountGroup, std::vector<std::string>> groups[] = {
        {CountGroup::kHostEntries,
         {"HovexOptions", "HSpecFilter", "HSpecContext", "HSpecCursorBase", "HSpecType",
          "HSpecEntry", "HArraySetContext", "HArraySetCursorBase", "HArraySetEntry",
          "HArraySetElemContext", "HArraySetElemCursorBase", "HArraySetElemEntry", "HVarsContext",
          "HVarsCursorBase", "HVarsEntry", "HVarDimsContext", "HVarDimsCursorBase",
          "HVarDimsEntry"}},
        {CountGroup::kFramework,
         {"FIIterator", "FIReference", "FICollectionBase", "FICollectionIteratorBase",
          "FICollectionElement", "FIVarSet"}},
        {CountGroup::kAutomation,
         {"CQSINode", "CQSINodeIterator", "CQSIAttribute", "CQSIAttributeIterator",
          "CQSICollection", "CQSICollectionIterator"}},
        {CountGroup::kMapping,
         {"AncestorPath", "CDTBase", "CDTFilter", "CDTClassList", "CDTVariableIterator",
          "CDTVariable", "CDTVariableFilter", "CFilteredVariables", "CCDMClassLibrary", "CCDMClass",
          "CCDMAttribute", "CCDMEnumeration"}},
    };
    for (const auto& [group, names] : groups) {
        const std::vector<std::string> lines = Report(group, 0);
        ASSERT_EQ(lines.size(), names.size());
        for (std::size_t i = 0; i < names.size(); ++i)
            EXPECT_EQ(lines[i].substr(0, lines[i].find(':')), "  " + names[i]);
    }
}

TEST(InstanceCounts, lines_have_indent_count_and_total) {
    const int total = CountOf(CountedClass::CDTVariable).total;
    const Sample a, b;
    const std::string counts = " CDTVariable: count: 2, total: " + std::to_string(total + 2) + "\n";
    EXPECT_EQ(Report(CountGroup::kMapping, 0)[5], " " + counts);
    EXPECT_EQ(Report(CountGroup::kMapping, 3)[5], "    " + counts);
    EXPECT_EQ(Report(CountGroup::kMapping, -1)[5], " " + counts);
    EXPECT_EQ(Report(CountGroup::kMapping, 1000)[5], " " + std::string(80, ' ') + counts);
}

TEST(SeekTable, counts_by_holders_and_caps_at_nineteen) {
    struct {
        int refcount, row;
    } rows[] = {{0, 0}, {1, 1}, {18, 18}, {19, 19}, {20, 19}, {1000, 19}, {-1, 0}};
    for (const auto& [refcount, row] : rows) {
        const int before = SeekCount(row);
        RecordSeek(refcount);
        EXPECT_EQ(SeekCount(row), before + 1) << refcount;
    }
    EXPECT_EQ(SeekCount(-1), 0);
    EXPECT_EQ(SeekCount(20), 0);
}

TEST(SeekTable, prints_a_heading_and_twenty_rows) {
    RecordSeek(3);
    const DebugCapture capture;
    PrintSeekTable();
    ASSERT_EQ(capture.Pieces().size(), 21u);
    EXPECT_EQ(capture.Pieces()[0], " refcnt   number of seeks with\n");
    for (int row = 0; row < 20; ++row)
        EXPECT_EQ(capture.Pieces()[row + 1],
                  "  " + std::to_string(row) + "        " + std::to_string(SeekCount(row)) + "\n");
}

}  // namespace

}  // namespace fixtop
