// SPDX-License-Identifier: Apache-2.0
// The whole tree of live cases: every variable is reached and answers, and is found again by what
// it says of its place.

#include <cstdio>
#include <random>
#include <set>

#include "../casehost/case_builder.h"
#include "fixtop/reference.h"
#include "host/adapter.h"
#include "live_case.h"

namespace fixtop {

namespace {

using casehost::ObjectData;

struct Counts {
    long nodes = 0;
    long arrays = 0;
    long elements = 0;
    int depth = 0;
    std::set<std::string> variables;  // by their monikers
};

constexpr int kNoLimit = 1000;

class CaseWalk : public LiveCase {
 protected:
    static bool IsVariableType(const std::string& type) {
        static const std::set<std::string> types = {"Real",  "String",      "Attachment", "Message",
                                                    "Array", "2-Dim Array", "3-Dim Array"};
        return types.count(type) > 0;
    }

    // Every node down to a depth, with `visit` on each; false when the limit of nodes is passed.
    template <class Visit>
    bool Walk(FIIteratorBase& node, Counts& counts, const Visit& visit, int depth = kNoLimit,
              bool in_array = false) {
        if (++counts.nodes > kLimit) return false;
        counts.depth = std::max(counts.depth, node.Depth());
        const std::string type = Read(node, "type");
        const bool is_array = type.ends_with("Array");
        counts.arrays += is_array;
        if (IsVariableType(type) && !in_array) counts.variables.insert(Read(node, "moniker"));
        visit(node);
        if (node.Depth() >= depth) return true;
        NodeRef child = NodeRef::Adopt(node.Copy());
        if (!child->DownFirst()) return true;
        do {
            counts.elements += type == "Array";
            if (!Walk(*child, counts, visit, depth, is_array)) return false;
        } while (child->Next());
        return true;
    }
    // Variables and ports of the case as the host has them, and the two links of each stream. A
    // sub-flowsheet shows its objects in place of its own variables, but where an attachment leads
    // to it.
    static long CountVariables(const std::vector<ObjectData>& objects) {
        long count = 0;
        for (const ObjectData& object : objects) {
            if (object.sub_flowsheet) {
                count += CountVariables(object.sub_flowsheet->objects);
            } else {
                const bool is_stream = object.type.find("StreamObject") != std::string::npos;
                count += static_cast<long>(object.variables.size() + object.ports.size());
                if (is_stream) count += 2;
            }
        }
        return count;
    }
    long CountVariables() {
        const casehost::CaseData data = host.ActiveLiveCase()->ToData();
        return CountVariables(data.main.objects) + CountVariables(data.utilities) +
               CountVariables(data.data_tables) + CountVariables(data.reactions);
    }
    // As they stand in a moniker, before a variable.
    std::vector<std::string> SubFlowsheets() {
        std::vector<std::string> marks;
        for (const ObjectData& object : host.ActiveLiveCase()->ToData().main.objects) {
            if (object.sub_flowsheet) marks.push_back("(" + object.name + "):");
        }
        return marks;
    }
    Counts WalkWhole(const std::string& name, bool attachments, bool history, int depth) {
        Counts counts;
        NodeRef model = Model(history);
        EXPECT_EQ("(NULL)", StoreAttribute(*model, "attachments", FIValue::OfInt(attachments)));
        const bool ended = Walk(
            *model, counts,
            [](FIIteratorBase& node) {
                for (const char* row : {"value", "uom", "status", "moniker", "is_container"}) {
                    Read(node, row);
                }
            },
            depth);
        std::printf(
            "%s, attachments %s, history %s: %ld nodes, %zu variables, %ld arrays, "
            "%ld elements, depth %d\n",
            name.c_str(), attachments ? "followed" : "not followed", history ? "on" : "off",
            counts.nodes, counts.variables.size(), counts.arrays, counts.elements, counts.depth);
        EXPECT_TRUE(ended) << name << " is still not at its end";
        return counts;
    }
    // Streams and unit operations lead to each other, so that the ways through a case are without
    // number: followed attachments have a limit. Answers how deep it comes when circles may be gone
    // round.
    int WalkAll(const std::string& name) {
        const long variables = CountVariables();
        EXPECT_LT(100, variables) << name;
        for (const bool attachments : {true, false}) {
            const int depth = attachments ? kDepth : kNoLimit;
            const Counts counts = WalkWhole(name, attachments, false, depth);
            EXPECT_LE(variables, static_cast<long>(counts.variables.size())) << name;
            EXPECT_TRUE(attachments || variables == static_cast<long>(counts.variables.size()));
            EXPECT_LT(20, counts.arrays) << name;
            EXPECT_LT(100, counts.elements) << name;
        }
        const Counts counts = WalkWhole(name, true, true, kDepth);
        EXPECT_LE(variables, static_cast<long>(counts.variables.size())) << name;
        return counts.depth;
    }

    static constexpr int kDepth = 9;
    static constexpr long kLimit = 5000000;
};

TEST_F(CaseWalk, a_walk_over_the_built_in_case_ends) {
    Open("demo");
    // A vessel points back at its column.
    EXPECT_EQ(kDepth, WalkAll("demo"));
}

TEST_F(CaseWalk, a_walk_over_every_recorded_case_ends) {
    if (!std::filesystem::is_directory(RecordedCases())) {
        GTEST_SKIP() << "no sample cases in " << RecordedCases();
    }
    for (const auto& file : std::filesystem::directory_iterator(RecordedCases())) {
        if (file.path().extension() != ".dwxmz") continue;
        Open(file.path().string());
        WalkAll(file.path().filename().string());
    }
}

TEST_F(CaseWalk, monikers_lead_back_to_their_variables_and_elements) {
    Open("demo");
    NodeRef flowsheet = At("FlowSheetObjects");
    const std::vector<std::string> sub_flowsheets = SubFlowsheets();
    Counts counts;
    long opened = 0;
    EXPECT_TRUE(Walk(
        *flowsheet, counts,
        [&](FIIteratorBase& node) {
            const std::string moniker = Read(node, "moniker");
            // Below attachments a moniker names the object itself.
            if (moniker == "(NULL)" || node.Depth() < 4) return;
            // A key is not quoted: behind a dot in a name another step begins.
            FIValue path;
            node.GetPath(path);
            if (path.ToText().find('"') != std::string::npos) return;
            // The host's path of a sub-flowsheet leads to its objects, not to its own variables.
            const auto is_named = [&](const std::string& mark) {
                return moniker.find(mark) != std::string::npos;
            };
            if (std::ranges::any_of(sub_flowsheets, is_named)) return;
            NodeRef model = Model();
            NodeRef found = NodeRef::Adopt(model->OpenAttribute(FIValue(moniker.c_str())));
            ASSERT_TRUE(found) << moniker;
            if (moniker.find("[]") != std::string::npos) return;
            EXPECT_EQ(NameAt(node), NameAt(*found)) << moniker;
            EXPECT_EQ(Read(node, "value"), Read(*found, "value")) << moniker;
            ++opened;
        },
        kDepth));
    EXPECT_LT(1000, opened);
}

TEST_F(CaseWalk, host_paths_open_elements_by_name_and_by_index) {
    Open("demo");
    struct Case {
        const char* path;
        const char* name;
    };
    const Case cases[] = {
        {"/FlowSht.1/StreamObject.400(Raw Gas):Double.501.2", "Methane"},
        {"/FlowSht.1/StreamObject.400(Raw Gas)/:Double.501.2", "Methane"},
        {"/FlowSht.1/StreamObject.400(Raw Gas)/:Double.501(Methane)", "Methane"},
        {"/FlowSht.1/StreamObject.400(Raw Gas):Double.501(Methane)", "Methane"},
        {"/FlowSht.1/StreamObject.400Raw Gas:Double.501(Elem2)", "Methane"},
        {"/FlowSht.1/StreamObject.400(Raw Gas):Double.201", "Temperature"},
        {"/FlowSht.1/StreamObject.400(Raw Gas):Double.501.99", nullptr},
        {"/FlowSht.1/StreamObject.400(Raw Gas):Double.501(Water)", nullptr},
        {"/FlowSht.1/StreamObject.400(No Gas):Double.501.2", nullptr},
    };
    for (const Case& each : cases) {
        NodeRef model = Model();
        NodeRef found = NodeRef::Adopt(model->OpenAttribute(FIValue(each.path)));
        ASSERT_EQ(each.name != nullptr, static_cast<bool>(found)) << each.path;
        if (found) {
            EXPECT_EQ(each.name, NameAt(*found)) << each.path;
        }
    }
}

TEST_F(CaseWalk, host_paths_open_the_same_node_from_the_model_and_from_the_top) {
    Open("demo");
    const char* const paths[] = {
        "FlowSheetObjects.Streams.Raw Gas.Temperature",
        "FlowSheetObjects.Streams.Raw Gas.Comp Mole Frac.Ethane",
        "FlowSheetObjects.Streams.Raw Gas.Phase Comp Mole Frac.Overall.Ethane",
        "FlowSheetObjects.UnitOps.E-100.Notes",
        "FlowSheetObjects.UnitOps.E-100.Inlet 1",
        "FlowSheetObjects.UnitOps.T-100.Vessels.Elem1",
        "FlowSheetObjects.UnitOps.Stabiliser.Streams.Overhead.Pressure",
        "FlowSheetObjects.UnitOps.Stabiliser.UnitOps.E-201.Duty",
        "FlowSheetObjects.UnitOps.T-100 Flowsheet.UnitOps.Condenser.Reflux Molar Flow",
        "FlowSheetObjects.Utilities.Condensate Curve.Number of Points",
    };
    for (const char* path : paths) {
        const FIValue moniker(Read(*At(path), "moniker").c_str());
        for (const NodeRef& start : {Model(), Top(), At("FlowSheetObjects.Streams")}) {
            const bool is_above = start->Depth() == 0;
            NodeRef found = NodeRef::Adopt(start->OpenAttribute(moniker));
            ASSERT_EQ(is_above, static_cast<bool>(found))
                << moniker.ToText() << " from " << NameAt(*start);
            if (!found) continue;
            FIValue place;
            found->GetPath(place);
            const std::string wanted = NameAt(*start) == "Top" ? "Top.appModel." : "appModel.";
            EXPECT_EQ(wanted + path, std::string(place.CStr())) << moniker.ToText();
            EXPECT_EQ(Read(*At(path), "value"), Read(*found, "value")) << path;
        }
    }
    for (const char* path : {"/FlowSht.1/StreamObject.400(No Gas):Double.201", "/Nonsense", "/",
                             "/FlowSht.1/StreamObject.400(Raw Gas):Double.99999"}) {
        for (const NodeRef& start : {Model(), Top()}) {
            EXPECT_FALSE(NodeRef::Adopt(start->OpenAttribute(FIValue(path)))) << path;
        }
    }
}

TEST_F(CaseWalk, published_variables_are_read_and_stored) {
    Open("demo");
    NodeRef node = Top();
    ASSERT_TRUE(node->SeekPath(FIValue("Published Variables.Chiller Setpoint")));
    EXPECT_EQ("REAL -20", Read(*node, "value"));
    EXPECT_EQ("C", Read(*node, "uom"));
    EXPECT_EQ("(NULL)", StoreAttribute(*node, "uom", FIValue("K")));
    EXPECT_EQ("(NULL)", Store(*node, FIValue::OfReal(263.15)));
    NodeRef other = Top();
    ASSERT_TRUE(other->SeekPath(FIValue("Published Variables.Chiller Setpoint")));
    EXPECT_DOUBLE_EQ(-10.0, Number(*other));
    ASSERT_TRUE(other->Prev());
    EXPECT_EQ("Sales Gas Target", NameAt(*other));
    EXPECT_EQ("MolarFlow", Read(*other, "dimension"));
}

TEST_F(CaseWalk, nodes_of_a_basis_that_is_gone_compare_with_those_of_the_same_place_alone) {
    for (const auto& [path, other_path] :
         std::initializer_list<std::pair<const char*, const char*>>{
             {"Basis.FluidPackage.Name", "Basis.FluidPackage.Interaction Parameters"},
             {"Basis.FluidPackage.Interaction Parameters", "Basis.FluidPackage.Name"},
             {"Basis.FluidPackage.Interaction Parameters.Set1",
              "Basis.FluidPackage.Interaction Parameters.Set0"},
             {"Basis.FluidPackage.Interaction Parameters.Set1.Kij",
              "Basis.FluidPackage.Interaction Parameters.Set0.Kij"}}) {
        SCOPED_TRACE(path);
        Open("demo");
        const NodeRef one = At(path);
        const NodeRef copy = NodeRef::Adopt(one->Copy());
        const NodeRef twin = At(path);
        const NodeRef other = At(other_path);
        EXPECT_EQ(0, one->Compare(*twin));
        host.Close(*host.ActiveLiveCase());
        host.RunHostLoop();
        EXPECT_EQ(0, one->Compare(*one));
        EXPECT_EQ(0, one->Compare(*copy));
        EXPECT_EQ(0, one->Compare(*twin));
        EXPECT_EQ(kNotComparable, one->Compare(*other));
    }
}

TEST_F(CaseWalk, a_reference_keeps_to_its_own_of_several_elements_of_one_name) {
    using casehost::BasisElement;
    using casehost::test::Element;
    const auto variable = [](const char* tag, double number) {
        return Element(tag, BasisElement::Kind::variable, number);
    };
    BasisElement group = Element("Group", BasisElement::Kind::group);
    group.elements = {variable("Tuned", 25), variable("Other", 50), variable("Tuned", 75)};
    BasisElement table = Element("Table", BasisElement::Kind::table);
    table.columns = {{"k", {1, 2}, {}}, {"k", {3, 4}, {}}};
    casehost::CaseData data;
    data.main.objects = {casehost::test::Object("S1", "MaterialStreamObject")};
    data.basis = {group, table};
    TheAdapter().Install(&host.Services());
    const casehost::OpenResult opened = host.Open(data);
    ASSERT_TRUE(opened);
    casehost::Case& live = *opened.opened;
    const auto last = [this](const char* parent) {
        const NodeRef node = At(parent);
        EXPECT_TRUE(node->DownLast());
        return node;
    };
    const auto tuned = Ref<FIReferenceBase>::Adopt(last("Basis.Group")->MakeReference());
    const auto column = Ref<FIReferenceBase>::Adopt(last("Basis.Table.Set0")->MakeReference());
    const auto value = [](FIReferenceBase& node) {
        FIValue out;
        node.GetAttribute(FIValue("value"), out);
        return Shown(out);
    };
    EXPECT_EQ("REAL 75", value(*tuned));
    const std::string third = value(*column);
    EXPECT_NE(third,
              value(*Ref<FIReferenceBase>::Adopt(At("Basis.Table.Set0.k")->MakeReference())));
    live.Add(nullptr, casehost::test::Object("S2", "MaterialStreamObject"));
    EXPECT_EQ("REAL 75", value(*tuned));
    EXPECT_EQ(third, value(*column));
    FIValue out;
    tuned->SetAttribute(FIValue("value"), FIValue::OfReal(99), 0, out);
    EXPECT_EQ("REAL 25", Read(*At("Basis.Group.Tuned"), "value"));
    EXPECT_EQ("REAL 99", value(*tuned));
}

TEST_F(CaseWalk, an_attribute_cursor_reads_without_the_units_of_a_reader_that_has_gone) {
    Open("demo");
    NodeRef node = At("FlowSheetObjects.Streams.Raw Gas.Temperature");
    const auto source = Ref<FIAttributeSource>::Adopt(node->GetAttributeSource());
    const auto cursor = Ref<FIAttributeCursorBase>::Adopt(source->MakeCursor());
    const auto read = [&](const char* name) {
        FIValue out;
        EXPECT_TRUE(cursor->SeekName(kFromFirst, name));
        cursor->GetValue(out);
        return Shown(out);
    };
    NodeRef reader = NodeRef::Adopt(node->Copy());
    EXPECT_EQ("(NULL)", StoreAttribute(*reader, "uom", FIValue("K")));
    cursor->SetVarSet(reader->GetVarSet());
    EXPECT_EQ("K", read("uom"));
    EXPECT_EQ("REAL 303.15", read("value"));
    reader.Reset();
    EXPECT_EQ("C", read("uom"));
    EXPECT_EQ("REAL 30", read("value"));
}

TEST_F(CaseWalk, fractions_are_stored_where_they_are_meant) {
    Open("demo");
    NodeRef ethane = At("FlowSheetObjects.Streams.Raw Gas.Comp Mole Frac.Ethane");
    NodeRef methane = At("FlowSheetObjects.Streams.Raw Gas.Comp Mole Frac.Methane");
    ASSERT_EQ("REAL 0.1", Read(*ethane, "value"));
    ASSERT_EQ("REAL 0.75", Read(*methane, "value"));
    EXPECT_EQ("(NULL)", Store(*ethane, FIValue::OfReal(1.1)));
    // The others make 0.9, so that all were divided by two.
    FIValue value;
    ethane->GetAttribute(FIValue("value"), value);
    EXPECT_DOUBLE_EQ(0.55, value.AsDouble());
    methane->GetAttribute(FIValue("value"), value);
    EXPECT_DOUBLE_EQ(0.375, value.AsDouble());
    EXPECT_EQ("Specified", Read(*ethane, "status"));
    NodeRef sales = At("FlowSheetObjects.Streams.Sales Gas.Comp Mole Frac.Ethane");
    EXPECT_EQ("Calculated", Read(*sales, "status"));
    EXPECT_NE("(NULL)", Read(*sales, "value")) << "the case was solved inside the store";
}

// ---- A random walk ----

// Steps of a walk; more of them are asked for by the environment.
long WalkSteps() {
    const char* given = std::getenv("FIXTOP_WALK_STEPS");
    return given ? std::atol(given) : 20000;
}

// Walks, stores, deletes, adds, renames and holds references at random, and does the same in the
// middle of the host's own work.
class RandomWalk : public CaseWalk {
 protected:
    void SetUp() override {
        Open("demo");
        if (HasFatalFailure()) return;
        originals_ = host.ActiveLiveCase()->ToData().main.objects;
        it_ = Model();
    }
    int OneOf(int count) { return static_cast<int>(random_() % static_cast<unsigned>(count)); }

    void Step() {
        switch (OneOf(8)) {
            case 0:
            case 1:
                it_->Down(OneOf(9));
                break;
            case 2:
                it_->Next();
                break;
            case 3:
                if (it_->Depth() > 8 || OneOf(3) == 0) it_->Up();
                break;
            case 4:
                if (OneOf(2) == 0) StoreHere(NodeRef(it_));
                break;
            case 5:
                if (OneOf(8) == 0) Hold();
                break;
            case 6:
                if (OneOf(10) == 0) JumpToAVariable();
                break;
            default:
                if (OneOf(30) == 0) ChangeStructure();
                break;
        }
        ReadHere(*it_);
        ReadAReference();
        // What was deleted goes away when no call of ours is on the stack.
        if (OneOf(100) == 0) {
            it_.Reset();
            host.RunHostLoop();
            it_ = Model();
        }
    }
    static void ReadHere(FIIteratorBase& node) {
        FIValue path;
        node.GetPath(path);
        for (const char* row : {"value", "status", "type", "has_children", "moniker"}) {
            Read(node, row);
        }
    }
    void JumpToAVariable() {
        it_ = Model();
        it_->SeekPath(FIValue("FlowSheetObjects"));
        it_->Down(OneOf(2));
        it_->Down(OneOf(30));
        it_->Down(OneOf(15));
    }
    // The node is kept, though the walk may leave it inside of the store.
    void StoreHere(const NodeRef& kept) {
        FIIteratorBase& node = *kept;
        FIValue value;
        node.GetAttribute(FIValue("value"), value);
        if (value.Kind() == FIValue::kReal)
            value.SetReal(value.AsDouble() * (0.9 + 0.1 * OneOf(3)));
        if (value.IsNull()) return;
        if (OneOf(4) == 0) script->InStore(1, [this] { Interrupt(); });
        if (OneOf(4) == 0) script->AtTurn(1 + OneOf(2), [this] { Interrupt(); });
        if (OneOf(16) == 0) script->RefuseStore(1);
        stored_ += Store(node, value) == "(NULL)";
    }
    // What a client may do when the host calls it inside of its own store.
    void Interrupt() {
        if (!it_ || nested_ == 3) return;
        ++nested_;
        ++interrupted_;
        switch (OneOf(5)) {
            case 0:
                ChangeStructure();
                break;
            case 1:
                it_->Up();
                it_->Down(OneOf(9));
                break;
            case 2:
                references_.clear();
                break;
            case 3:
                JumpToAVariable();
                break;
            default:
                StoreHere(NodeRef::Adopt(it_->Copy()));
                break;
        }
        ReadHere(*it_);
        ReadAReference();
        --nested_;
    }
    void ChangeStructure() {
        casehost::Case& live = *host.ActiveLiveCase();
        host::FlowSheetObjectIterator objects = Main().Objects();
        host::Viewable* object = objects.EntryAt(OneOf(60));
        switch (OneOf(3)) {
            case 0:
                deleted_ += object && live.Delete(object);
                break;
            case 1:
                renamed_ += object && live.Rename(object, "Object " + std::to_string(OneOf(1000)));
                break;
            default:
                added_ += !objects.EntryAt(80) && AddOneBack();
                break;
        }
    }
    bool AddOneBack() {
        for (int attempt = 0; attempt < 20; ++attempt) {
            const int place = OneOf(static_cast<int>(originals_.size()));
            const ObjectData& object = originals_[static_cast<std::size_t>(place)];
            if (host.ActiveLiveCase()->Add(&Main(), object)) return true;
        }
        return false;
    }
    void Hold() {
        if (references_.size() >= 16) references_.erase(references_.begin() + OneOf(16));
        references_.push_back(Ref<FIReferenceBase>::Adopt(it_->MakeReference()));
    }
    void ReadAReference() {
        if (references_.empty()) return;
        const Ref<FIReferenceBase> held =
            references_[static_cast<std::size_t>(OneOf(static_cast<int>(references_.size())))];
        Read(*held, "value");
    }

    std::mt19937 random_{7};
    std::vector<ObjectData> originals_;
    std::vector<Ref<FIReferenceBase>> references_;
    NodeRef it_;
    int nested_ = 0;
    long stored_ = 0;
    long deleted_ = 0;
    long renamed_ = 0;
    long added_ = 0;
    long interrupted_ = 0;
};

TEST_F(RandomWalk, with_stores_deletions_and_callbacks_stays_whole) {
    const long steps = WalkSteps();
    for (long step = 0; step < steps; ++step) Step();
    std::printf(
        "%ld steps: %ld values stored, %ld objects deleted, %ld renamed, %ld added, "
        "%ld callbacks\n",
        steps, stored_, deleted_, renamed_, added_, interrupted_);
    EXPECT_LE(steps / 500, stored_);
    EXPECT_LE(steps / 5000, deleted_);
    EXPECT_LE(steps / 5000, renamed_);
    EXPECT_LE(steps / 5000, added_);
    EXPECT_LE(steps / 1000, interrupted_);
}

}  // namespace

}  // namespace fixtop
