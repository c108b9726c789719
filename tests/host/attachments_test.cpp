// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "framework/iterator/iterator.h"
#include "framework/nodes/empties.h"
#include "host/levels/model_nodes.h"
#include "host/variables/dimension_node.h"
#include "support/host_reading.h"
#include "support/scripted_host.h"

namespace fixtop {

namespace {

// A vessel whose scalar ":A.1" and elements ":A.2.0" and ":A.2.1" may point at other objects.
class Attachments : public testing::Test {
 protected:
    Attachments()
        : vessel(host.main.Add("Vessel", host.unit_op)),
          feed(host.main.Add("Feed", host.stream)),
          tray(host.main.Add("Tray", host.utility)),
          scalar(vessel.AddAttachment(":A.1", "Link", nullptr)),
          array(vessel.AddAttachment(":A.2.[]", "Links", nullptr)) {
        feed.AddReal(":D.1", "T", 25.0);
        tray.AddReal(":D.1", "Area", 2.0);
        host.monikers[&tray] = "/Main(Main)/Vessel(Vessel)/Tray(Tray)";
        array.offsets = {host::VarDescription(":", 0)};
        array.offset_descriptions = array.offsets.data();
        array.offset_description_count = 1;
        vessel.dimensions[":A.2.[]"].count = 1;
        vessel.dimensions[":A.2.[]"].high[0] = 1;
    }
    void PointAt(host::Viewable* object) {
        vessel.attachments[":A.1"] = vessel.attachments[":A.2.1"] = object;
    }
    // The scalar and the element that point at the same object.
    std::vector<Ref<FIEntry>> Both(bool attachments = true) {
        auto list = Ref<HVarsContext>::Share(new HVarsContext(
            vessel.VariableNames(), &vessel, {&options, attachments, nullptr}, nullptr));
        return {Child(*list, "Link"), Child(*Child(*list, "Links"), "Elem1")};
    }

    scripted::Host host;
    scripted::Plain& vessel;
    scripted::Plain& feed;
    scripted::Plain& tray;
    scripted::Row& scalar;
    scripted::Row& array;
    HovexOptions options{&host.simulation_case};
};

TEST_F(Attachments, switches_decide_what_is_followed) {
    struct Case {
        const char* what;
        host::Viewable* object;
        bool attachments;
        FIValue skip;
        Names children;
    };
    const Case cases[] = {
        {"outside", &feed, true, {}, {"T"}},
        {"outside", &feed, false, {}, {}},
        {"inside", &tray, true, {}, {"Area"}},
        {"inside", &tray, false, {}, {"Area"}},
        {"outside", &feed, true, FIValue::OfInt(1), {}},
        {"inside", &tray, true, FIValue::OfInt(1), {}},
        {"inside", &tray, false, FIValue::OfInt(1), {}},
        {"outside", &feed, true, FIValue::OfInt(0), {"T"}},
        {"outside", &feed, true, FIValue::OfInt(2), {"T"}},
        {"outside", &feed, true, FIValue("1"), {"T"}},
        {"outside", &feed, true, FIValue::OfReal(1.0), {"T"}},
        {"nothing", nullptr, true, {}, {}},
        {"nothing", nullptr, false, {}, {}},
    };
    for (const Case& each : cases) {
        PointAt(each.object);
        for (auto& node : Both(each.attachments)) {
            SCOPED_TRACE(NameOf(*node) + " " + each.what + (each.attachments ? " followed" : "") +
                         " skip " + Shown(each.skip));
            TestVarSet vars;
            node->SetVarSet(&vars);
            if (!each.skip.IsNull()) {
                EXPECT_EQ("(NULL)", Write(*node, "skipattachments", each.skip));
            }
            EXPECT_EQ(each.children, ChildNames(*node));
            const bool some = !each.children.empty();
            EXPECT_EQ(some ? "INT 1" : "INT 0", Read(*node, "has_children"));
            EXPECT_EQ(some, node->IsContainer());
            if (each.object) {
                EXPECT_EQ(some ? "INT 0" : "INT 1", Read(*node, "isleaf"));
            }
            EXPECT_EQ("Attachment", Read(*node, "type"));
            node->SetVarSet(nullptr);
        }
    }
}

TEST_F(Attachments, followed_variables_are_those_of_the_attached_object) {
    PointAt(&feed);
    for (auto& node : Both()) {
        auto temperature = Child(*node, "T");
        ASSERT_TRUE(temperature) << NameOf(*node);
        EXPECT_EQ("REAL 25", Read(*temperature, "value"));
        EXPECT_EQ("/Feed:D.1", Read(*temperature, "moniker"));
        EXPECT_EQ("(NULL)", Write(*temperature, "value", FIValue::OfReal(30.0)));
        EXPECT_EQ(30.0, feed.reals[":D.1"]);
        feed.reals[":D.1"] = 25.0;
    }
}

TEST_F(Attachments, the_switch_is_copied_down) {
    PointAt(&feed);
    feed.AddAttachment(":A.3", "Next", &vessel);
    for (auto& node : Both(false)) EXPECT_EQ("INT 0", Read(*node, "attachments")) << NameOf(*node);
    PointAt(&tray);
    for (auto& node : Both(false)) {
        EXPECT_EQ("INT 0", Read(*Child(*node, "Area"), "attachments")) << NameOf(*node);
    }
    auto element = Both(false)[1];
    PointAt(&feed);
    EXPECT_EQ(Names(), ChildNames(*element));
    EXPECT_EQ("(NULL)", Write(*element, "attachments", FIValue::OfInt(1)));
    EXPECT_EQ(Names({"T", "Next"}), ChildNames(*element));
}

TEST_F(Attachments, only_flowsheet_objects_are_containers) {
    struct Case {
        host::Viewable* object;
        const char* answer;
    };
    for (const Case& each : {Case{&feed, "INT 1"}, Case{&vessel, "INT 1"}, Case{&tray, "INT 0"},
                             Case{nullptr, "INT 0"}}) {
        PointAt(each.object);
        for (auto& node : Both()) {
            EXPECT_EQ(each.answer, Read(*node, "is_container")) << NameOf(*node);
        }
    }
    auto list = Ref<HVarsContext>::Share(
        new HVarsContext(vessel.VariableNames(), &vessel, {&options, true, nullptr}, nullptr));
    EXPECT_EQ("INT 0", Read(*Child(*list, "Links"), "is_container")) << "the array itself";
}

TEST_F(Attachments, full_monikers_are_shown_of_scalars) {
    PointAt(&tray);
    auto both = Both();
    EXPECT_EQ("/Main(Main)/Vessel(Vessel)/Tray(Tray)", Read(*both[0], "fullattachmoniker"));
    EXPECT_EQ("(NULL)", Read(*both[1], "fullattachmoniker"));
    PointAt(nullptr);
    EXPECT_EQ("(NULL)", Read(*Both()[0], "fullattachmoniker"));
}

TEST_F(Attachments, an_attached_object_without_variables_has_no_children) {
    auto& bare = host.main.Add("Bare", host.utility);
    PointAt(&bare);
    EXPECT_EQ("INT 0", Read(*Both()[1], "has_children")) << "an empty list";
    bare.has_rows = false;
    for (auto& node : Both()) {
        EXPECT_EQ(EmptyContext(), node->GetContext()) << NameOf(*node);
        EXPECT_EQ("INT 0", Read(*node, "has_children")) << NameOf(*node);
    }
}

TEST_F(Attachments, correlations_read_and_store_on_the_object_that_the_node_leads_to) {
    auto& correlation = host.main.Add("Corr", host.correlation);
    correlation.AddReal(":D.9", "Density", 1.0);
    correlation.AddText(":T.9", "Name", "Key: x");
    PointAt(&correlation);
    for (auto& node : Both()) {
        SCOPED_TRACE(NameOf(*node));
        auto density = Child(*node, "Density");
        ASSERT_TRUE(density);
        EXPECT_EQ("REAL 1", Read(*density, "value"));
        EXPECT_EQ("Unknown Key", Read(*Child(*node, "Name"), "value"));
        TestVarSet vars;
        density->SetVarSet(&vars);
        EXPECT_EQ("(NULL)", Write(*density, "skipcorrelations", FIValue::OfInt(1)));
        EXPECT_EQ("(NULL)", Read(*density, "value"));
        EXPECT_EQ("Missing", Read(*density, "status"));
        // The attachment is followed to another object: the variables now describe that one.
        auto& other = host.main.Add("Other", host.utility);
        other.reals[":D.9"] = 7.0;
        other.owner = &vessel;
        PointAt(&other);
        EXPECT_EQ("Vessel", Read(*density, "container"));
        EXPECT_EQ("a UnitOpObject", Read(*density, "container_type"));
        EXPECT_EQ("UnitOp", Read(*density, "container_category"));
        EXPECT_EQ("REAL 7", Read(*density, "value"));
        EXPECT_EQ("Specified", Read(*density, "status"));
        EXPECT_EQ("(NULL)", Write(*density, "value", FIValue::OfReal(8.0)));
        EXPECT_EQ(8.0, other.reals[":D.9"]);
        EXPECT_EQ("/Other:D.9", Read(*density, "moniker"));
        PointAt(&correlation);
        density->SetVarSet(nullptr);
    }
    EXPECT_EQ(1.0, correlation.reals[":D.9"]);
}

TEST_F(Attachments, variables_of_other_objects_stay_with_the_object_that_lists_them) {
    PointAt(&feed);
    for (auto& node : Both()) {
        SCOPED_TRACE(NameOf(*node));
        auto temperature = Child(*node, "T");
        ASSERT_TRUE(temperature);
        PointAt(&tray);
        EXPECT_EQ("REAL 25", Read(*temperature, "value"));
        EXPECT_EQ("/Feed:D.1", Read(*temperature, "moniker"));
        PointAt(&feed);
    }
}

TEST_F(Attachments, elements_of_correlations_are_skipped_too) {
    auto& correlation = host.main.Add("Corr", host.correlation);
    auto& row = correlation.AddRow(":D.8.[]", "Factors", host::kReal);
    row.offsets = {host::VarDescription(":", 0)};
    row.offset_descriptions = row.offsets.data();
    row.offset_description_count = 1;
    correlation.dimensions[":D.8.[]"].count = 1;
    correlation.dimensions[":D.8.[]"].high[0] = 0;
    correlation.reals[":D.8.0"] = 3.0;
    PointAt(&correlation);
    auto factor = Child(*Child(*Both()[1], "Factors"), "Elem0");
    ASSERT_TRUE(factor);
    EXPECT_EQ("REAL 3", Read(*factor, "value"));
    TestVarSet vars;
    factor->SetVarSet(&vars);
    EXPECT_EQ("(NULL)", Write(*factor, "skipcorrelations", FIValue::OfInt(1)));
    EXPECT_EQ("(NULL)", Read(*factor, "value"));
    EXPECT_EQ("Missing", Read(*factor, "status"));
}

TEST_F(Attachments, arrays_of_correlations_are_those_of_the_object_that_the_node_leads_to) {
    auto& correlation = host.main.Add("Corr", host.correlation);
    auto& other = host.main.Add("Other", host.utility);
    auto& row = correlation.AddRow(":D.8.[]", "Factors", host::kReal);
    host::VarDescription::Facts names;
    names.moniker = host::Text(":T.9.[]");
    names.kind = host::kPartText;
    row.offsets = {host::VarDescription(names)};
    row.offset_descriptions = row.offsets.data();
    row.offset_description_count = 1;
    correlation.dimensions[":D.8.[]"].count = other.dimensions[":D.8.[]"].count = 1;
    correlation.dimensions[":D.8.[]"].high[0] = 0;
    other.dimensions[":D.8.[]"].high[0] = 1;
    correlation.texts[":T.9.0"] = "own";
    other.texts[":T.9.0"] = "first";
    other.texts[":T.9.1"] = "second";
    PointAt(&correlation);
    for (auto& node : Both()) {
        auto factors = Child(*node, "Factors");
        ASSERT_TRUE(factors);
        EXPECT_EQ(Names({"own"}), ChildNames(*factors));
        PointAt(&other);
        EXPECT_EQ(Names({"first", "second"}), ChildNames(*factors));
        PointAt(&correlation);
    }
}

// ---- The graph that attachments make ----

TEST_F(Attachments, a_walk_through_a_ring_stops_where_it_began) {
    vessel.attachments[":A.2.0"] = &vessel;
    vessel.attachments[":A.2.1"] = &feed;
    vessel.attachments[":A.1"] = &feed;
    feed.AddAttachment(":A.3", "Consumer", &vessel);
    auto models = Ref<HAandCContext>::Share(new HAandCContext(nullptr, {}));
    auto model = Child(*models, "appModel");
    auto it = Ref<FIIteratorBase>::Adopt(new FIIterator(model.Get(), false));
    ASSERT_TRUE(it->SeekPath(FIValue("FlowSheetObjects.UnitOps.Vessel.Links.Elem0")));
    ASSERT_TRUE(it->SeekChild("Links"));
    EXPECT_FALSE(it->CanDescend()) << "the array of the vessel again";
    EXPECT_FALSE(it->Down(0));
    auto ring = Ref<FIIteratorBase>::Adopt(new FIIterator(model.Get(), false));
    EXPECT_TRUE(
        ring->SeekPath(FIValue("FlowSheetObjects.UnitOps.Vessel.Link.Consumer.Links.Elem1")))
        << "another variable of the vessel";
    EXPECT_TRUE(ring->SeekChild("Consumer"));
    EXPECT_FALSE(ring->CanDescend());
    auto free = Ref<FIIteratorBase>::Adopt(new FIIterator(model.Get(), true));
    EXPECT_TRUE(free->SeekPath(FIValue("FlowSheetObjects.UnitOps.Vessel.Links.Elem0.Links.Elem0")))
        << "without the check";
}

TEST_F(Attachments, objects_that_share_a_list_are_no_ring) {
    // The host keeps one list for all objects of a kind.
    auto context_of = [&](scripted::Plain& owner) {
        return Ref<HVarsContext>::Share(
            new HVarsContext(vessel.VariableNames(), &owner, {&options, true, nullptr}, nullptr));
    };
    auto one = ChildrenOf(*context_of(vessel));
    auto same = ChildrenOf(*context_of(vessel));
    auto other = ChildrenOf(*context_of(feed));
    EXPECT_EQ(0, one->Compare(*same));
    EXPECT_EQ(kNotComparable, one->Compare(*other));
}

}  // namespace

}  // namespace fixtop
