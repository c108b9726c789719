// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cctype>
#include <filesystem>
#include <fstream>

#include "diagnostics/instance_counts.h"
#include "framework/iterator/iterator.h"
#include "framework/nodes/empties.h"
#include "framework/nodes/top_entry.h"
#include "host/adapter.h"
#include "host/levels/case_nodes.h"
#include "host/levels/flowsheet_nodes.h"
#include "host/levels/model_nodes.h"
#include "host/lists/object_list.h"
#include "support/cursor_harness.h"
#include "support/debug_capture.h"
#include "support/host_reading.h"
#include "support/scripted_host.h"
#include "support/temporary_folder.h"

namespace fixtop {

namespace {

class Levels : public testing::Test {
 protected:
    Ref<HAandCContext> Models() {
        return Ref<HAandCContext>::Share(
            new HAandCContext(nullptr, {"lib.xml", "map.xml", "units.xml", "Hovex"}));
    }
    Ref<FIEntry> AppModel() { return Child(*Models(), "appModel"); }
    Ref<FIEntry> FlowSheetObjects() { return Child(*AppModel(), "FlowSheetObjects"); }

    struct FixedLevel {
        const char* what;
        Ref<FIContext> context;
        Names keys;
        int end_origin;
        int reports_end_at;
    };
    std::vector<FixedLevel> FixedLevels() {
        return {{"models",
                 Ref<FIContext>::Share(Models().Get()),
                 {"appModel", "QSI Published Variables", "Published Variables"},
                 2,
                 3},
                {"case",
                 Ref<FIContext>::Adopt(AppModel()->GetContext()),
                 {"FlowSheetObjects", "Basis", "DataBook"},
                 2,
                 2},
                {"flowsheet",
                 Ref<FIContext>::Adopt(FlowSheetObjects()->GetContext()),
                 {"Streams", "UnitOps", "Utilities", "Reactions"},
                 4,
                 4}};
    }

    scripted::Host host;
};

const Names kThreeSwitches = {"attachments", "skipcorrelations", "skipattachments"};
const Names kLevelRows = SplitNames(
    "id browser_name type display_name isleaf has_children status "
    "is_container");

// ---- The cursors over fixed names ----

CursorFamily FixedFamily(const char* name, FIContext& context, Names keys) {
    CursorFamily family = HostFamily(name, context, std::move(keys));
    // The position is where a search from the first begins.
    family.missing = SeekOutcome{false, 0};
    // Clamped to the first, which is an element.
    family.before_first = SeekOutcome{true, 0};
    family.off_first = SeekOutcome{true, 0};
    return family;
}

TEST_F(Levels, cursor_of_models_is_a_cursor) {
    auto context = Models();
    CursorFamily family =
        FixedFamily("HAandCCursorBase", *context,
                    {"appModel", "QSI Published Variables", "Published Variables"});
    family.to_end = SeekOutcome{true, 2};
    family.to_last = SeekOutcome{true, 1};
    CheckCursorFamily(family);
}

TEST_F(Levels, cursor_of_a_flowsheet_is_a_cursor) {
    auto context = Ref<FIContext>::Adopt(FlowSheetObjects()->GetContext());
    CheckCursorFamily(FixedFamily("HSUandUCursorBase", *context,
                                  {"Streams", "UnitOps", "Utilities", "Reactions"}));
}

TEST_F(Levels, cursor_of_a_case_is_a_cursor) {
    auto context = Ref<FIContext>::Adopt(AppModel()->GetContext());
    CursorFamily family =
        FixedFamily("HFandBCursorBase", *context, {"FlowSheetObjects", "Basis", "DataBook"});
    family.to_end = SeekOutcome{true, 2};
    family.to_last = SeekOutcome{true, 1};
    family.reports_end_at = 2;
    CheckCursorFamily(family);
}

TEST_F(Levels, cursor_of_a_case_reports_its_end_on_the_data_book) {
    auto cursor = ChildrenOf(*AppModel());
    struct Step {
        int origin;
        int delta;
        bool answer;
        bool at_end;
        const char* key;
    };
    const Step steps[] = {
        {0, 0, true, false, "FlowSheetObjects"}, {1, 1, true, false, "Basis"},
        {1, 1, true, true, "DataBook"},          {1, 1, false, false, "(NULL)"},
        {1, 1, false, false, "(NULL)"},          {1, -1, true, true, "DataBook"},
        {2, 0, true, true, "DataBook"},          {2, 1, false, false, "(NULL)"},
        {2, -1, true, false, "Basis"},           {0, -5, true, false, "FlowSheetObjects"},
        {0, 100, false, false, "(NULL)"},        {2, 2147483647, false, false, "(NULL)"},
    };
    for (const Step& step : steps) {
        SCOPED_TRACE(testing::Message() << "Seek(" << step.origin << ", " << step.delta << ")");
        EXPECT_EQ(step.answer, cursor->Seek(step.origin, step.delta));
        EXPECT_EQ(step.at_end, cursor->AtEnd());
        FIValue key;
        cursor->GetKey(key);
        EXPECT_EQ(step.key, Shown(key));
        auto entry = Ref<FIEntry>::Adopt(cursor->GetEntry());
        EXPECT_EQ(std::string(step.key), NameOf(*entry));
    }
    EXPECT_FALSE(cursor->SeekName(kFromFirst, "databook"));
    EXPECT_TRUE(cursor->SeekName(kFromFirst, "DataBook"));
    EXPECT_TRUE(cursor->AtEnd());
}

TEST_F(Levels, fixed_cursors_stay_within_their_bounds) {
    for (const FixedLevel& level : FixedLevels()) {
        const int end = static_cast<int>(level.keys.size());
        struct Step {
            int origin;
            int delta;
            int stands_at;
        };
        const Step steps[] = {{0, 100, end},
                              {1, -1, end - 1},
                              {1, 100, end},
                              {1, -1, end - 1},
                              {0, -100, 0},
                              {1, 1, 1},
                              {2, 0, level.end_origin},
                              {2, 100, end},
                              {2, -1, level.end_origin - 1},
                              {2, -100, 0},
                              {1, -100, 0}};
        auto cursor = ChildrenOf(*level.context);
        for (const Step& step : steps) {
            SCOPED_TRACE(testing::Message()
                         << level.what << " Seek(" << step.origin << ", " << step.delta << ")");
            EXPECT_EQ(step.stands_at < end, cursor->Seek(step.origin, step.delta));
            EXPECT_EQ(step.stands_at < end ? level.keys[step.stands_at] : "(NULL)",
                      cursor_harness::KeyOf(*cursor));
            EXPECT_EQ(step.stands_at == level.reports_end_at, cursor->AtEnd());
        }
    }
}

TEST_F(Levels, a_search_for_a_fixed_name_stays_where_it_began) {
    for (const FixedLevel& level : FixedLevels()) {
        const int end = static_cast<int>(level.keys.size());
        const std::pair<int, int> searches[] = {
            {kFromFirst, 0}, {kFromPresent, 1}, {kFromEnd, level.end_origin}};
        for (const auto& [origin, stands_at] : searches) {
            SCOPED_TRACE(testing::Message() << level.what << " from " << origin);
            auto cursor = ChildrenOf(*level.context);
            ASSERT_TRUE(cursor->Seek(kFromFirst, 1));
            EXPECT_FALSE(cursor->SeekName(origin, "nobody"));
            EXPECT_EQ(stands_at < end ? level.keys[stands_at] : "(NULL)",
                      cursor_harness::KeyOf(*cursor));
            EXPECT_TRUE(cursor->SeekName(origin, level.keys[0].c_str())) << "before it too";
            EXPECT_EQ(level.keys[0], cursor_harness::KeyOf(*cursor));
        }
    }
}

TEST_F(Levels, fixed_names_are_found_as_they_are_written_alone) {
    for (const FixedLevel& level : FixedLevels()) {
        for (const std::string& key : level.keys) {
            std::string lower = key;
            std::string upper = key;
            for (char& c : lower) c = static_cast<char>(std::tolower(c));
            for (char& c : upper) c = static_cast<char>(std::toupper(c));
            auto cursor = ChildrenOf(*level.context);
            EXPECT_TRUE(cursor->SeekName(kFromFirst, key.c_str())) << key;
            for (const std::string& other : {lower, upper, key + " ", key.substr(1)}) {
                EXPECT_FALSE(cursor->SeekName(kFromFirst, other.c_str())) << other;
            }
        }
    }
}

TEST_F(Levels, models_of_two_cases_compare_by_position) {
    scripted::Case other;
    auto models = Models();
    auto others = Ref<HAandCContext>::Share(new HAandCContext(&other, {}));
    auto one = ChildrenOf(*models);
    auto another = ChildrenOf(*others);
    EXPECT_EQ(0, one->Compare(*another));
    ASSERT_TRUE(another->Seek(kFromFirst, 1));
    EXPECT_EQ(-1, one->Compare(*another));
    EXPECT_EQ(1, another->Compare(*one));
}

TEST_F(Levels, cursors_of_different_flowsheets_do_not_compare) {
    scripted::FlowSheet inner;
    inner.type = &host.simulation_object;
    auto one =
        Ref<HSUandUContext>::Share(new HSUandUContext(nullptr, nullptr, {nullptr, true, nullptr}));
    auto other =
        Ref<HSUandUContext>::Share(new HSUandUContext(&inner, nullptr, {nullptr, true, nullptr}));
    EXPECT_EQ(kNotComparable, ChildrenOf(*one)->Compare(*ChildrenOf(*other)));
    EXPECT_EQ(0, ChildrenOf(*one)->Compare(*ChildrenOf(*one)));
}

TEST_F(Levels, contexts_have_no_key_cursor) {
    auto case_level = Ref<FIContext>::Adopt(AppModel()->GetContext());
    auto flowsheet_level = Ref<FIContext>::Adopt(FlowSheetObjects()->GetContext());
    auto models = Models();
    EXPECT_EQ(EmptyCursor(), models->MakeCursor(kKeyCursor));
    EXPECT_EQ(EmptyCursor(), case_level->MakeCursor(kKeyCursor));
    EXPECT_EQ(EmptyCursor(), flowsheet_level->MakeCursor(kKeyCursor));
}

// ---- Tables of attributes ----

void ExpectNames(const char* name, FIEntry& entry) {
    EXPECT_EQ(name, NameOf(entry));
    for (const char* row : {"id", "browser_name", "display_name"}) {
        EXPECT_EQ(name, Read(entry, row)) << row;
    }
}

TEST_F(Levels, tables_have_the_standard_rows_and_three_switches) {
    EXPECT_EQ(StandardRowsAnd(kThreeSwitches), AllRows<HAandCEntry>());
    EXPECT_EQ(StandardRowsAnd(kThreeSwitches), AllRows<HFandBEntry>());
    EXPECT_EQ(StandardRowsAnd(kThreeSwitches), AllRows<HSUandUEntry>());
    EXPECT_EQ(30u, HSUandUEntry::AttributeRows().size());
}

TEST_F(Levels, models_show_their_rows) {
    host.simulation_case.manager = nullptr;
    struct Case {
        const char* name;
        const char* type;
        const char* has_children;
    };
    const Case cases[] = {{"appModel", "appModel", "INT 1"},
                          {"QSI Published Variables", "CCDMModel", "INT 0"},
                          {"Published Variables", "oldAppModel", "INT 0"}};
    auto context = Models();
    for (const Case& each : cases) {
        SCOPED_TRACE(each.name);
        Ref<FIEntry> entry = Child(*context, each.name);
        ASSERT_TRUE(entry);
        EXPECT_EQ(kLevelRows, ShownRows(*entry));
        ExpectNames(each.name, *entry);
        EXPECT_EQ(each.type, Read(*entry, "type"));
        EXPECT_EQ(each.has_children, Read(*entry, "has_children"));
        EXPECT_EQ("INT 0", Read(*entry, "isleaf"));
        EXPECT_EQ("INT 0", Read(*entry, "is_container"));
        EXPECT_EQ("OK", Read(*entry, "status"));
        EXPECT_EQ("(NULL)", Read(*entry, "value"));
        EXPECT_TRUE(entry->IsContainer());
    }
}

TEST_F(Levels, published_variables_have_children_when_the_range_is_not_empty) {
    Ref<FIEntry> entry = Child(*Models(), "Published Variables");
    struct Case {
        int low;
        int high;
        const char* answer;
    };
    for (const Case& each : {Case{5, 7, "INT 1"}, Case{0, 0, "INT 1"}, Case{0, -1, "INT 0"}}) {
        host.manager.SetPublishedRange(each.low, each.high);
        EXPECT_EQ(each.answer, Read(*entry, "has_children")) << each.low << ".." << each.high;
    }
}

TEST_F(Levels, published_file_has_children_when_it_lies_beside_the_document) {
    // The folder is the working directory, which the document's is not.
    TemporaryFolder folder;
    std::filesystem::create_directory(folder.Path() / "cases");
    folder.Write("plant.atpub", "x");
    const std::string plant = folder.File("cases/plant");
    host.simulation_case.document = host::FileName(host::Text(plant + ".case"), host::Text());
    Ref<FIEntry> entry = Child(*Models(), "QSI Published Variables");
    EXPECT_EQ("INT 0", Read(*entry, "has_children"));
    std::ofstream(plant + ".atpub") << "x";
    EXPECT_EQ("INT 1", Read(*entry, "has_children"));
    std::filesystem::create_directory(folder.Path() / "folder.atpub");
    host.simulation_case.document =
        host::FileName(host::Text(folder.File("folder.case")), host::Text());
    EXPECT_EQ("INT 0", Read(*entry, "has_children")) << "a folder is no file";
}

TEST_F(Levels, published_file_is_found_under_any_name) {
    TemporaryFolder folder;
    const std::filesystem::path file = folder.Path() / u8"Anl\u00e4ge \u03b2.atpub";
    std::ofstream(file) << "x";
    std::u8string document = file.u8string();
    document.replace(document.rfind(u8'.'), std::u8string::npos, u8".case");
    host.simulation_case.document =
        host::FileName(host::Text(std::string(document.begin(), document.end())), host::Text());
    Ref<FIEntry> entry = Child(*Models(), "QSI Published Variables");
    EXPECT_EQ("INT 1", Read(*entry, "has_children"));
}

TEST_F(Levels, nodes_of_a_case_show_their_rows) {
    struct Case {
        const char* name;
        const char* type;
        const char* has_children;
    };
    const Case cases[] = {{"FlowSheetObjects", "Flowsheet", "INT 1"},
                          {"Basis", "Basis", "INT 1"},
                          {"DataBook", "Basis", "INT 0"}};
    for (const Case& each : cases) {
        SCOPED_TRACE(each.name);
        Ref<FIEntry> entry = Child(*AppModel(), each.name);
        ASSERT_TRUE(entry);
        EXPECT_EQ(kLevelRows, ShownRows(*entry));
        ExpectNames(each.name, *entry);
        EXPECT_EQ(each.type, Read(*entry, "type"));
        EXPECT_EQ(each.has_children, Read(*entry, "has_children"));
        EXPECT_EQ("INT 0", Read(*entry, "isleaf"));
        EXPECT_EQ("INT 0", Read(*entry, "is_container"));
    }
}

TEST_F(Levels, nodes_of_a_flowsheet_show_their_rows) {
    struct Case {
        const char* name;
        const char* has_children;
    };
    const Names rows = SplitNames(
        "id browser_name type container container_category container_type "
        "display_name isleaf has_children status is_container");
    for (const Case& each : {Case{"Streams", "INT 1"}, Case{"UnitOps", "INT 1"},
                             Case{"Utilities", "INT 1"}, Case{"Reactions", "INT 0"}}) {
        SCOPED_TRACE(each.name);
        Ref<FIEntry> entry = Child(*FlowSheetObjects(), each.name);
        ASSERT_TRUE(entry);
        EXPECT_EQ(rows, ShownRows(*entry));
        ExpectNames(each.name, *entry);
        EXPECT_EQ(each.name, Read(*entry, "type"));
        EXPECT_EQ(each.has_children, Read(*entry, "has_children"));
        EXPECT_EQ("INT 0", Read(*entry, "isleaf"));
        EXPECT_EQ("INT 0", Read(*entry, "is_container"));
        EXPECT_EQ("(NULL)", Read(*entry, "container"));
    }
}

TEST_F(Levels, status_is_the_worst_of_the_flowsheet_shown) {
    host.main.Add("Feed", host.stream).status = 2;
    scripted::Plain& column = host.main.Add("T-100", host.template_op);
    scripted::FlowSheet inner;
    column.inner = &inner;
    inner.Add("Reflux", host.stream).status = 1;
    auto models = Models();
    for (const char* name : {"appModel", "QSI Published Variables", "Published Variables"}) {
        EXPECT_EQ("Warning", Read(*Child(*models, name), "status")) << name;
    }
    for (const char* name : {"FlowSheetObjects", "Basis", "DataBook"}) {
        EXPECT_EQ("Warning", Read(*Child(*AppModel(), name), "status")) << name;
    }
    auto operation = Child(*Child(*FlowSheetObjects(), "UnitOps"), "T-100");
    for (const char* name : {"Streams", "UnitOps", "Utilities", "Reactions"}) {
        EXPECT_EQ("Warning", Read(*Child(*FlowSheetObjects(), name), "status")) << name;
        EXPECT_EQ("Not Solved", Read(*Child(*operation, name), "status")) << name;
    }
}

TEST_F(Levels, a_flowsheet_tells_the_owners_of_its_flowsheet) {
    scripted::Plain& column = host.main.Add("T-100", host.template_op);
    scripted::FlowSheet inner;
    inner.type = &host.simulation_object;
    inner.owner = &column;
    column.inner = &inner;
    Ref<FIEntry> operation = Child(*Child(*FlowSheetObjects(), "UnitOps"), "T-100");
    ASSERT_TRUE(operation);
    Ref<FIEntry> streams = Child(*operation, "Streams");
    ASSERT_TRUE(streams);
    EXPECT_EQ("T-100", Read(*streams, "container"));
    EXPECT_EQ("a TemplateOpObject", Read(*streams, "container_type"));
    EXPECT_EQ("UnitOp", Read(*streams, "container_category"));
}

// ---- Writes ----

TEST_F(Levels, writes_take_the_switches_alone) {
    struct Case {
        const char* what;
        Ref<FIEntry> entry;
        const char* refusal;
    };
    const Case cases[] = {{"model", AppModel(), "Not supported."},
                          {"case", FlowSheetObjects(), "Not supported"},
                          {"flowsheet", Child(*FlowSheetObjects(), "Streams"), "Not supported"}};
    for (const Case& each : cases) {
        SCOPED_TRACE(each.what);
        EXPECT_EQ(each.refusal, Write(*each.entry, "value", FIValue::OfInt(1)));
        EXPECT_EQ(each.refusal, Write(*each.entry, "skipattachments", FIValue::OfInt(1)));
        EXPECT_EQ("(NULL)", Write(*each.entry, "attachments", FIValue::OfInt(0)));
        TestVarSet vars;
        each.entry->SetVarSet(&vars);
        for (const char* name : {"skipattachments", "skipcorrelations"}) {
            EXPECT_EQ("(NULL)", Write(*each.entry, name, FIValue::OfInt(1)));
            FIValue stored;
            EXPECT_TRUE(vars.GetVar(FIValue(name), stored));
            EXPECT_EQ("INT 1", Shown(stored));
        }
        each.entry->SetVarSet(nullptr);
    }
}

TEST_F(Levels, attachments_switch_goes_down_to_new_nodes) {
    host.main.Add("Feed", host.stream).AddReal(":D.1", "T", 1.0);
    const Names path = {"appModel", "FlowSheetObjects", "Streams", "Feed", "T"};
    for (std::size_t written = 0; written + 1 < path.size(); ++written) {
        for (const int follow : {0, 1}) {
            SCOPED_TRACE(path[written] + " " + std::to_string(follow));
            auto node = Child(*Models(), path[0].c_str());
            for (std::size_t i = 0; i + 1 < path.size(); ++i) {
                if (i == written) {
                    EXPECT_EQ("(NULL)", Write(*node, "attachments", FIValue::OfInt(follow)));
                }
                node = Child(*node, path[i + 1].c_str());
                ASSERT_TRUE(node);
            }
            EXPECT_EQ(follow ? "INT 1" : "INT 0", Read(*node, "attachments"));
        }
    }
}

// ---- Paths in the host's notation ----

TEST_F(Levels, host_paths_lead_to_the_fixed_nodes) {
    auto of_case = Ref<FIContext>::Adopt(AppModel()->GetContext());
    ExpectKeys(*of_case,
               {
                   {"/FlowSht.1/StreamObject.400(Feed)", "FlowSheetObjects|StreamObject.400(Feed)"},
                   {"/FluidPkgMgr.300/x", "FlowSheetObjects|x"},
                   {"/Utility.300(Env)", "FlowSheetObjects|Utility.300(Env)"},
                   {"/ProcessDataTable.300(T1)/x", "DataBook|(T1)/x"},
                   {"/FlowSht.1", "(NULL)|/FlowSht.1"},
                   {"/FlowSht.1/", "FlowSheetObjects|"},
                   {"/flowsht.1/x", "(NULL)|/flowsht.1/x"},
                   {"/fluidpkgmgr.300/x", "(NULL)|/fluidpkgmgr.300/x"},
                   {"/utility.300", "(NULL)|/utility.300"},
                   {"/processdatatable.300", "(NULL)|/processdatatable.300"},
                   {"Utility.300(Env)", "(NULL)|Utility.300(Env)"},
                   {"FlowSht.1/", "(NULL)|FlowSht.1/"},
                   {"", "(NULL)|"},
               });
    auto of_flowsheet = Ref<FIContext>::Adopt(FlowSheetObjects()->GetContext());
    ExpectKeys(*of_flowsheet,
               {
                   {"UnitOpObject.400(E-100)/:x", "UnitOps|(E-100)/:x"},
                   {"StreamObject.400(Feed)/:x", "Streams|(Feed)/:x"},
                   {"Utility.300(Env)", "Utilities|(Env)"},
                   {"RxnPackageManager.300/Rxn.300(R)", "Reactions|(R)"},
                   {"unitopobject.400x", "(NULL)|unitopobject.400x"},
                   {"streamobject.400x", "(NULL)|streamobject.400x"},
                   {"utility.300x", "(NULL)|utility.300x"},
                   {"RxnPackageManager.300/rxn.300", "(NULL)|RxnPackageManager.300/rxn.300"},
                   {"RxnPackageManager.300", "(NULL)|RxnPackageManager.300"},
                   {"/Utility.300", "(NULL)|/Utility.300"},
                   {"Solver.400", "(NULL)|Solver.400"},
               });
    EXPECT_EQ("appModel|/FlowSht.1/x", KeyAndRest(*Models(), "/FlowSht.1/x"));
}

// The scripted host never says that a number is none of a living object.
TEST_F(Levels, numbers_that_the_host_does_not_answer_for_count_as_none) {
    struct Numbered {
        std::uint64_t Identity() const { return 7; }
    };
    EXPECT_EQ(0u, IdentityOf(Numbered()));
}

TEST_F(Levels, a_host_path_opens_its_node_from_the_top) {
    host.main.Add("Feed", host.stream).AddReal(":Double.501", "Mass Flow", 7.0);
    auto top = Ref<FIEntry>::Share(new FITopEntry(Models().Get(), nullptr, nullptr));
    auto it = Ref<FIIterator>::Adopt(new FIIterator(top.Get(), false));
    auto opened = Ref<FIIterator>::Adopt(
        it->OpenAttribute(FIValue("/FlowSht.1/StreamObject.400(Feed/:Double.501")));
    ASSERT_TRUE(opened);
    FIValue out;
    opened->GetPath(out);
    EXPECT_EQ("Top.appModel.FlowSheetObjects.Streams.Feed.Mass Flow", Shown(out));
    opened->GetAttribute(FIValue("value"), out);
    EXPECT_EQ("REAL 7", Shown(out));
    EXPECT_FALSE(it->OpenAttribute(FIValue("/FlowSht.1/StreamObject.400(Nobody/:Double.501")));
}

TEST_F(Levels, a_host_path_opens_nodes_whose_names_need_quotes) {
    auto& feed = host.main.Add("Feed.1 (wet)", host.stream);
    feed.AddReal(":Double.501", "Flow.total", 7.0);
    feed.AddReal(":Double.502", "say \"x\"", 8.0);
    feed.dimensions[":D.9.[].[]"].count = 2;
    feed.dimensions[":D.9.[].[]"].high[0] = feed.dimensions[":D.9.[].[]"].high[1] = 4;
    auto& row = feed.AddRow(":D.9.[].[]", "Comp.Fraction", host::kReal, {});
    row.offsets = {host::VarDescription(":", 0), host::VarDescription(":", 0)};
    row.offset_descriptions = row.offsets.data();
    row.offset_description_count = 2;
    feed.reals[":D.9.3.2"] = 0.25;
    auto top = Ref<FIEntry>::Share(new FITopEntry(Models().Get(), nullptr, nullptr));
    auto it = Ref<FIIterator>::Adopt(new FIIterator(top.Get(), false));
    struct Case {
        const char* variable;
        const char* path;
        const char* value;
    };
    const Case cases[] = {
        {":Double.501", "\"Flow.total\"", "REAL 7"},
        {":Double.502", "\"say &quot;x&quot;\"", "REAL 8"},
        {":D.9.3.2", "\"Comp.Fraction\".Elem3.Elem2", "REAL 0.25"},
    };
    for (const Case& each : cases) {
        const std::string moniker =
            std::string("/FlowSht.1/StreamObject.400(Feed.1 (wet))/") + each.variable;
        auto opened = Ref<FIIterator>::Adopt(it->OpenAttribute(FIValue(moniker.c_str())));
        ASSERT_TRUE(opened) << moniker;
        FIValue out;
        opened->GetPath(out);
        EXPECT_EQ(
            std::string("Top.appModel.FlowSheetObjects.Streams.\"Feed.1 (wet)\".") + each.path,
            Shown(out));
        opened->GetAttribute(FIValue("value"), out);
        EXPECT_EQ(each.value, Shown(out));
    }
}

// ---- What lies below ----

TEST_F(Levels, basis_shows_what_its_specification_has) {
    Ref<FIEntry> basis = Child(*AppModel(), "Basis");
    EXPECT_EQ(EmptyContext(), basis->GetContext());
    scripted::Basis manager;
    manager.type = &host.viewable;
    host.simulation_case.basis = &manager;
    EXPECT_EQ(EmptyContext(), basis->GetContext());
    scripted::SpecSource source;
    manager.spec_source = &source;
    host.simulation_case.case_dynamic = true;
    // The options know the case as it was when their model node was made.
    basis = Child(*AppModel(), "Basis");
    source.fills_well = false;
    basis->GetContext()->Release();
    EXPECT_EQ(1, source.fills);
    EXPECT_EQ(0, host.spec_infos);
    source.fills_well = true;
    basis->GetContext()->Release();
    basis->GetContext()->Release();
    EXPECT_EQ(2, source.fills) << "filled once";
    EXPECT_EQ(1, host.spec_infos);
    EXPECT_EQ(&manager, source.last->owner);
    ASSERT_TRUE(source.last->options);
    EXPECT_TRUE(source.last->options->dynamics);
    EXPECT_TRUE(source.last->options->first);
    EXPECT_TRUE(source.last->options->second);
    EXPECT_FALSE(source.last->options->third);
    basis.Reset();
    EXPECT_EQ(0, host.spec_infos);
}

TEST_F(Levels, each_node_lists_its_own_objects) {
    host.main.Add("S", host.stream);
    host.main.Add("U", host.unit_op);
    host.main.Add("X", host.utility);
    scripted::Plain table, reaction, of_case;
    table.name = host::Text("T");
    reaction.name = host::Text("R");
    of_case.name = host::Text("Y");
    scripted::List tables, utilities;
    tables.Add(static_cast<host::Viewable*>(&table));
    utilities.Add(static_cast<host::Viewable*>(&of_case));
    scripted::Basis basis;
    scripted::Reactions reactions;
    reactions.reactions.push_back(&reaction);
    basis.reactions = &reactions;
    host.simulation_case.tables = &tables;
    host.simulation_case.utilities = &utilities;
    host.simulation_case.basis = &basis;
    EXPECT_EQ(Names({"T"}), ChildNames(*Child(*AppModel(), "DataBook")));
    EXPECT_EQ(Names({"S"}), ChildNames(*Child(*FlowSheetObjects(), "Streams")));
    EXPECT_EQ(Names({"U"}), ChildNames(*Child(*FlowSheetObjects(), "UnitOps")));
    EXPECT_EQ(Names({"X", "Y"}), ChildNames(*Child(*FlowSheetObjects(), "Utilities")));
    EXPECT_EQ(Names({"R"}), ChildNames(*Child(*FlowSheetObjects(), "Reactions")))
        << "although has_children is 0";
    scripted::FlowSheet inner;
    inner.Add("Inner", host.stream);
    auto& column = host.main.Add("C", host.template_op);
    column.inner = &inner;
    auto operation = Child(*Child(*FlowSheetObjects(), "UnitOps"), "C");
    EXPECT_EQ(Names({"Inner"}), ChildNames(*Child(*operation, "Streams")));
}

TEST_F(Levels, without_a_connection_no_published_variables_are_listed) {
    host.simulation_case.manager = nullptr;
    auto published = Child(*Models(), "Published Variables");
    EXPECT_EQ(EmptyContext(), published->GetContext());
}

TEST_F(Levels, what_lies_below_a_node_keeps_it) {
    host.main.Add("Feed", host.stream).AddReal(":D.1", "T", 1.0);
    scripted::Basis basis;
    scripted::SpecSource source;
    basis.type = &host.viewable;
    basis.spec_source = &source;
    host.simulation_case.basis = &basis;
    for (const char* path :
         {"appModel", "appModel FlowSheetObjects", "appModel Basis", "appModel DataBook",
          "appModel FlowSheetObjects Streams", "appModel FlowSheetObjects Reactions",
          "appModel FlowSheetObjects Streams Feed"}) {
        Ref<FIEntry> node;
        for (const std::string& name : SplitNames(path)) {
            node = node ? Child(*node, name.c_str()) : Child(*Models(), name.c_str());
            ASSERT_TRUE(node) << path;
        }
        auto below = Ref<FIContext>::Adopt(node->GetContext());
        EXPECT_EQ(3, node->AddRef()) << path << ": the test's, the context's, and one more";
        node->Release();
        below.Reset();
        EXPECT_EQ(2, node->AddRef()) << path;
        node->Release();
    }
}

TEST_F(Levels, nodes_of_the_host_are_not_counted) {
    auto& feed = host.main.Add("Feed", host.stream);
    feed.AddReal(":D.1", "T", 1.0);
    auto node = Child(*Child(*Child(*FlowSheetObjects(), "Streams"), "Feed"), "T");
    ASSERT_TRUE(node);
    const DebugCapture capture;
    ReportInstances(CountGroup::kHostEntries, 0);
    EXPECT_EQ(18u, capture.Pieces().size());
    for (const std::string& line : capture.Pieces()) {
        EXPECT_NE(std::string::npos, line.find(": count: 0, total: 0\n")) << line;
    }
    EXPECT_EQ("  HovexOptions: count: 0, total: 0\n", capture.Pieces().front());
}

TEST_F(Levels, missing_lists_are_empty) {
    EXPECT_EQ(Names(), ChildNames(*Child(*AppModel(), "DataBook")));
    for (const char* name : {"Streams", "UnitOps", "Utilities", "Reactions"}) {
        EXPECT_EQ(Names(), ChildNames(*Child(*FlowSheetObjects(), name))) << name;
    }
}

TEST_F(Levels, a_session_without_a_case_shows_nothing) {
    host.session.active = nullptr;
    auto model = AppModel();
    EXPECT_EQ("OK", Read(*model, "status"));
    EXPECT_EQ("INT 0", Read(*Child(*Models(), "Published Variables"), "has_children"));
    EXPECT_EQ("INT 0", Read(*Child(*Models(), "QSI Published Variables"), "has_children"));
    auto flowsheet = Child(*model, "FlowSheetObjects");
    for (const char* name : {"Streams", "UnitOps", "Utilities", "Reactions"}) {
        EXPECT_EQ(Names(), ChildNames(*Child(*flowsheet, name))) << name;
    }
    EXPECT_EQ(Names(), ChildNames(*Child(*model, "DataBook")));
    EXPECT_EQ(EmptyContext(), Child(*model, "Basis")->GetContext());
}

TEST_F(Levels, a_case_context_without_options_makes_its_own) {
    host.main.Add("Feed", host.stream).AddReal(":D.1", "T", 1.0);
    auto context = Ref<HFandBContext>::Share(new HFandBContext(nullptr, {nullptr, true, nullptr}));
    ASSERT_TRUE(context->Options());
    EXPECT_TRUE(context->Options()->VariableView());
    EXPECT_TRUE(context->Options()->ReaderOptions());
    host.session.active = nullptr;
    auto without_case =
        Ref<HFandBContext>::Share(new HFandBContext(nullptr, {nullptr, true, nullptr}));
    EXPECT_FALSE(without_case->Options());
}

TEST_F(Levels, a_null_case_is_the_active_one) {
    scripted::Case other;
    for (host::SimulationCase* given : {static_cast<host::SimulationCase*>(nullptr),
                                        static_cast<host::SimulationCase*>(&other)}) {
        host::SimulationCase* expected = given ? given : &host.simulation_case;
        EXPECT_EQ(expected, HovexOptions(given).Case());
        EXPECT_EQ(expected, Ref<HAandCContext>::Share(new HAandCContext(given, {}))->Case());
        auto of_case =
            Ref<HFandBContext>::Share(new HFandBContext(given, {nullptr, true, nullptr}));
        EXPECT_EQ(expected, of_case->Case());
        EXPECT_EQ(expected, of_case->Options()->Case());
        auto of_flowsheet = Ref<HSUandUContext>::Share(
            new HSUandUContext(nullptr, given, {nullptr, true, nullptr}));
        EXPECT_EQ(expected, of_flowsheet->Case());
        EXPECT_EQ(expected->MainFlowSheet(), of_flowsheet->FlowSheet());
        auto of_objects = Ref<HFSOContext>::Share(
            new HFSOContext(nullptr, given, HFSOContext::kStreams, {nullptr, true, nullptr}));
        EXPECT_EQ(expected, of_objects->CaseRecord()->Case());
    }
}

TEST_F(Levels, a_list_of_objects_is_shared_while_it_is_held_and_shows_what_a_new_one_would) {
    auto flowsheet =
        Ref<HSUandUContext>::Share(new HSUandUContext(nullptr, nullptr, {nullptr, true, nullptr}));
    auto streams = Ref<FIEntry>::Share(flowsheet->MakeEntry(0));
    const auto list = [&] { return Ref<FIContext>::Adopt(streams->GetContext()); };
    const auto follows = [](const Ref<FIContext>& context) {
        return static_cast<HFSOContext&>(*context).FollowsAttachments();
    };
    auto held = list();
    EXPECT_EQ(held.Get(), list().Get());
    EXPECT_TRUE(follows(held));
    // The switch of the node counts from then on; who holds the list keeps his.
    Write(*streams, "attachments", FIValue::OfInt(0));
    auto other = list();
    EXPECT_NE(held.Get(), other.Get());
    EXPECT_FALSE(follows(other));
    EXPECT_TRUE(follows(held));
    // The older one goes and leaves the newer in its place; after both a new one is made.
    held.Reset();
    EXPECT_EQ(other.Get(), list().Get());
    other.Reset();
    EXPECT_FALSE(follows(list()));
    Write(*streams, "attachments", FIValue::OfInt(1));
    EXPECT_TRUE(follows(list()));
}

TEST_F(Levels, options_at_the_top_know_whether_the_case_is_in_dynamics) {
    for (const bool dynamic : {false, true}) {
        for (const bool case_dynamic : {false, true}) {
            host.simulation_case.dynamic = dynamic;
            host.simulation_case.case_dynamic = case_dynamic;
            const HovexOptions options(&host.simulation_case);
            EXPECT_EQ(dynamic || case_dynamic, options.ReaderOptions()->dynamics)
                << dynamic << case_dynamic;
            EXPECT_TRUE(options.ReaderOptions()->first);
            EXPECT_TRUE(options.ReaderOptions()->second);
            EXPECT_FALSE(options.ReaderOptions()->third);
        }
    }
}

TEST_F(Levels, options_take_what_they_lack_from_above) {
    HovexOptions top(&host.simulation_case);
    HovexOptions middle(&top);
    HovexOptions low(&middle);
    EXPECT_EQ(top.ReaderOptions(), low.ReaderOptions());
    EXPECT_EQ(&host.simulation_case, low.Case());
    EXPECT_TRUE(low.VariableView());
    middle.SetVariableView(false);
    EXPECT_FALSE(low.VariableView());
    EXPECT_TRUE(top.VariableView());
    HovexOptions alone(static_cast<const HovexOptions*>(nullptr));
    EXPECT_TRUE(alone.VariableView());
    EXPECT_FALSE(alone.ReaderOptions());
    EXPECT_FALSE(alone.Case());
}

}  // namespace

}  // namespace fixtop
