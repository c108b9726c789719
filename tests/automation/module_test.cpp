// SPDX-License-Identifier: Apache-2.0
// The objects of the built module, on a case of the in-memory host.

#include <gtest/gtest.h>

#include <cmath>
#include <sstream>
#include <utility>

#include "automation/objects.h"
#include "automation/other_thread.h"
#include "casehost/standard_host.h"
#include "front/open_module.h"
#include "live/case.h"
#include "support/host_script.h"
#include "support/temporary_folder.h"

namespace fixtop {

namespace {

constexpr char kStreams[] = "appModel.FlowSheetObjects.Streams";
constexpr char kTemperature[] = "appModel.FlowSheetObjects.Streams.\"Raw Gas\".Temperature";

class AutomationModule : public HostedModule {
 protected:
    void SetUp() override {
        casehost::UseStandardParts(host_);
        ASSERT_TRUE(casehost::OpenCase(host_, "demo"));
        HostedModule::SetUp();
    }
    void TearDown() override {
        top_node_.Reset();
        v_top_.Reset();
        EXPECT_EQ("", LeftBehind());
        HostedModule::TearDown();
    }
    // The classes of which the module still counts objects.
    static std::string LeftBehind() {
        std::string left;
#if defined(__linux__)
        testing::internal::CaptureStderr();
        QSIPrint(0);
        std::istringstream lines(testing::internal::GetCapturedStderr());
        int classes = 0;
        for (std::string line; std::getline(lines, line); ++classes) {
            if (line.find(": count: 0, total: ") == std::string::npos) left += line + "\n";
        }
        EXPECT_EQ(6, classes);
#endif
        return left;
    }
    template <class T>
    static Ref<T> Got(void* (*get)(void*, void**), void* session = nullptr) {
        void* out = nullptr;
        void* const answered = get(session, &out);
        EXPECT_NE(nullptr, answered);
        EXPECT_EQ(answered, out);
        auto got = Ref<T>::Adopt(static_cast<T*>(answered));
        EXPECT_EQ(1u, CountOf(*got)) << "one reference, for the answer and for `out`";
        return got;
    }
    IQSINode& Top() {
        if (!top_node_) top_node_ = Got<IQSINode>(GetQSINode);
        return *top_node_;
    }
    IQSVNode& VTop() {
        if (!v_top_) v_top_ = Got<IQSVNode>(QSVGetTopNode);
        return *v_top_;
    }
    Ref<IQSVNode> VNode(const char* path) {
        auto node = ChildOf(VTop(), path);
        return Ref<IQSVNode>::Adopt(static_cast<IQSVNode*>(node.Detach()));
    }

    Ref<IQSINode> top_node_;
    Ref<IQSVNode> v_top_;
};

TEST_F(AutomationModule, top_node_reads_the_case) {
    EXPECT_EQ("Top", PathOf(Top()));
    EXPECT_EQ("TopNode", ReadOf(Top(), "type"));
    const auto temperature = ChildOf(Top(), kTemperature);
    EXPECT_EQ("30", ReadOf(*temperature, "value"));
    EXPECT_EQ("C", ReadOf(*temperature, "uom"));
    EXPECT_EQ("Top.appModel.FlowSheetObjects.Streams.Raw Gas.Temperature", PathOf(*temperature));
    EXPECT_EQ(kResultFalse, Refused<IQSINode>([&](IQSINode** out) {
                  return Top().GetChild("appModel.Nope", out);
              }));
}

TEST_F(AutomationModule, case_may_be_named_and_out_left_away) {
    const auto node = Got<IQSINode>(GetQSINode, host_.ActiveCase());
    EXPECT_EQ("30", ReadOf(*ChildOf(*node, kTemperature), "value"));
    const auto without_out =
        Ref<IQSINode>::Adopt(static_cast<IQSINode*>(GetQSINode(nullptr, nullptr)));
    EXPECT_EQ("Top", PathOf(*without_out));
}

TEST_F(AutomationModule, without_a_host_there_is_no_node) {
    FixtopInstallHost(nullptr);
    void* out = this;
    EXPECT_EQ(nullptr, GetQSINode(nullptr, &out));
    EXPECT_EQ(nullptr, out);
    EXPECT_EQ(nullptr, GetTopVNode(nullptr, nullptr));
    EXPECT_EQ(nullptr, MakeQSINode(nullptr, nullptr));
}

TEST_F(AutomationModule, type_library_is_there_when_it_was_written) {
    const TemporaryFolder folder;
    const std::string name = folder.File("types");
    void* out = this;
    EXPECT_FALSE(GetCCDMLibrary(name.c_str(), 13, 2, &out));
    EXPECT_EQ(nullptr, out);
    EXPECT_FALSE(GetCCDMLibrary(name.c_str(), 13, 2, nullptr));
#if defined(_WIN32)
    EXPECT_EQ(kResultFail, FixtopWriteTypeLibrary("nowhere.xml", name.c_str(), 13, 2));
    EXPECT_FALSE(folder.Has("types_13_2.tlb"));
    EXPECT_EQ(kResultOk, FixtopWriteTypeLibrary(nullptr, name.c_str(), 13, 2));
    ASSERT_TRUE(GetCCDMLibrary(name.c_str(), 13, 2, &out));
    EXPECT_EQ(0u, static_cast<IUnknown*>(out)->Release());
    EXPECT_FALSE(GetCCDMLibrary(name.c_str(), 13, 3, &out)) << "another version";
    EXPECT_EQ(nullptr, out);
#else
    EXPECT_EQ(kResultNotImplemented, FixtopWriteTypeLibrary(nullptr, name.c_str(), 13, 2));
    EXPECT_FALSE(folder.Has("types_13_2.tlb"));
#endif
}

TEST_F(AutomationModule, objects_belong_to_one_thread) {
    const auto document = Got<IQSIDocument>(
        [](void* session, void** out) { return GetDocumentAgg(session, &kStreams, out); });
    ExpectRefused(&Top(), 3, 14);
    ExpectRefused(document.Get(), 3, 12);
    for (auto* const make : {GetQSINode, QSVGetTopNode}) {
        void* out = this;
        EXPECT_EQ(nullptr, OnOtherThread([&] { return make(nullptr, &out); }));
        EXPECT_EQ(nullptr, out);
    }
    void* out = this;
    EXPECT_EQ(nullptr, OnOtherThread([&] { return GetDocumentAgg(nullptr, &kStreams, &out); }));
    EXPECT_EQ(nullptr, out);
    const std::string text = "<Selection/>";
    EXPECT_EQ(kResultWrongThread, Refused<IQSICollection>([&](IQSICollection** collection) {
                  return OnOtherThread(
                      [&] { return FixtopPasteCollection(&Top(), text.data(), 12, collection); });
              }));
    EXPECT_EQ("Top", PathOf(Top()));
}

#if !defined(_WIN32)
TEST_F(AutomationModule, there_is_no_clipboard_and_no_sibling) {
    EXPECT_EQ(kResultNotImplemented, Refused<IQSICollection>([&](IQSICollection** out) {
                  return PasteCollection(&Top(), out);
              }));
    EXPECT_EQ(kResultNotImplemented, IsSiblingDocument(&Top()));
    EXPECT_EQ(kResultNotImplemented, Refused<IUnknown>([&](IUnknown** out) {
                  return FixtopMakeNodeInDocument(nullptr, nullptr, nullptr, out);
              }));
    FIValue text("before");
    EXPECT_EQ(kResultNotImplemented, FixtopReadClipboard(text));
    EXPECT_TRUE(text.IsNull());
}
#endif

// Lists of the host go back to their first element: the walk does not.
TEST_F(AutomationModule, walk_over_host_objects_ends_behind_the_last) {
    std::vector<std::string> expected;
    const auto entry = Ref<FIEntry>::Adopt(GetCombinedEntry(nullptr));
    const auto it = Ref<FIIteratorBase>::Adopt(FixtopMakeIterator(entry.Get(), false));
    ASSERT_TRUE(it->SeekPath(FIValue(kStreams)));
    for (bool on = it->DownFirst(); on; on = it->Next()) {
        FIValue name;
        it->GetName(name);
        expected.push_back(name.ToText());
    }
    const auto streams = ChildOf(Top(), kStreams);
    const auto walk =
        Take<IQSINodeIterator>([&](IQSINodeIterator** out) { return streams->GetChildren(out); });
    const auto is_at_end = [&] {
        return TakeNumber<bool>([&](bool* out) { return walk->AtEnd(out); });
    };
    std::vector<std::string> names;
    std::int32_t moved = 0;
    for (; !is_at_end() && names.size() <= expected.size(); walk->Move(1, &moved)) {
        names.push_back(TakeText([&](char** out) { return walk->GetName(out); }));
    }
    EXPECT_EQ(expected, names);
    EXPECT_EQ(kResultFalse, walk->Move(1, &moved));
    EXPECT_EQ(0, moved);
    EXPECT_EQ(kResultOk, walk->Move(-1, &moved));
    EXPECT_EQ(expected.back(), TakeText([&](char** out) { return walk->GetName(out); }));
    EXPECT_EQ(kResultFalse, walk->Move(-100, &moved));
    EXPECT_EQ(1 - static_cast<int>(expected.size()), moved);
    EXPECT_EQ(expected.front(), TakeText([&](char** out) { return walk->GetName(out); }));
}

TEST_F(AutomationModule, attributes_are_those_of_the_node_in_its_units) {
    const auto node = VNode(kTemperature);
    EXPECT_EQ("", Stored([&](char** out) { return node->SetDisplayUnit("K", "", out); }));
    const auto rows = Take<IQSIAttributeIterator>(
        [&](IQSIAttributeIterator** out) { return node->GetAttributes(out); });
    // Another node object in the same place has units of its own.
    const auto twin = ChildOf(*node, "");
    EXPECT_EQ("", Stored([&](char** out) {
                  return static_cast<IQSVNode&>(*twin).SetDisplayUnit("F", "", out);
              }));
    const auto rows_of_twin = Take<IQSIAttributeIterator>(
        [&](IQSIAttributeIterator** out) { return twin->GetAttributes(out); });
    std::map<std::string, std::string> read;
    for (HRESULT on = rows->Reset(); on == kResultOk;) {
        const auto row =
            Take<IQSIAttribute>([&](IQSIAttribute** out) { return rows->GetAttribute(out); });
        read[TakeText([&](char** out) { return rows->GetName(out); })] =
            TakeText([&](char** out) { return row->GetString(out); });
        std::int32_t moved = 0;
        on = rows->Next(1, &moved);
    }
    EXPECT_EQ("303.15", read["value"]);
    EXPECT_EQ("K", read["uom"]);
    EXPECT_EQ("Temperature", read["id"]);
    EXPECT_EQ(ReadOf(*node, "status"), read["status"]);
}

TEST_F(AutomationModule, v_node_reads_and_stores_in_units) {
    const auto node = VNode(kTemperature);
    double value = 0;
    EXPECT_EQ(kResultOk, node->GetDouble("value", &value));
    EXPECT_DOUBLE_EQ(30, value);
    EXPECT_EQ(kResultOk, node->GetDoubleInUnit("K", &value));
    EXPECT_DOUBLE_EQ(303.15, value);
    EXPECT_EQ("", Stored([&](char** out) { return node->SetDouble("value", 35, out); }));
    EXPECT_EQ("35", ReadOf(*node, "value"));
    EXPECT_EQ("35", ReadOf(*node, "value")) << "a unit of one read or store does not stay";
    EXPECT_EQ("", Stored([&](char** out) { return node->SetDoubleInUnit(313.15, "K", out); }));
    EXPECT_EQ("40", ReadOf(*node, "value"));
    EXPECT_EQ("Not supported.",
              Stored([&](char** out) { return VNode("appModel")->SetDouble("value", 1, out); }));
}

TEST_F(AutomationModule, node_is_let_go_of_in_the_middle_of_its_store) {
    const auto script = HostScript::Over(host_);
    ASSERT_TRUE(casehost::OpenCase(host_, "demo"));
    const char* names[] = {"value"};
    Variant values[1];
    values[0].type = Variant::kReal;
    values[0].real = 36;
    using Store = std::function<HRESULT(IQSVNode & node, char** error)>;
    const Store stores[] = {
        [](IQSVNode& node, char** error) { return node.SetDouble("value", 35, error); },
        [](IQSVNode& node, char** error) { return node.SetString("value", "34", error); },
        [](IQSVNode& node, char** error) { return node.SetDoubleInUnit(313.15, "K", error); },
        [&](IQSVNode& node, char** error) { return node.SetArrayValues(1, names, values, error); }};
    for (const Store& store : stores) {
        auto node = VNode(kTemperature);
        bool was_let_go = false;
        script->InStore(1, [&] {
            was_let_go = CountOf(*node) == 1;
            node.Reset();
        });
        EXPECT_EQ("", Stored([&](char** out) { return store(*node, out); }));
        EXPECT_TRUE(was_let_go);
    }
    EXPECT_EQ("36", ReadOf(*VNode(kTemperature), "value"));
}

TEST_F(AutomationModule, deleted_object_tells_it_as_the_tree_does) {
    const auto stream = ChildOf(Top(), "appModel.FlowSheetObjects.Streams.\"Raw Gas\"");
    const auto temperature = ChildOf(Top(), kTemperature);
    const auto held = Take<IQSIAttribute>(
        [&](IQSIAttribute** out) { return temperature->GetAttribute("value", out); });
    const auto rows = Take<IQSIAttributeIterator>(
        [&](IQSIAttributeIterator** out) { return temperature->GetAttributes(out); });
    const auto walk =
        Take<IQSINodeIterator>([&](IQSINodeIterator** out) { return stream->GetChildren(out); });
    casehost::Case& open_case = *host_.ActiveLiveCase();
    ASSERT_TRUE(open_case.Delete(open_case.FindByPath("Raw Gas", nullptr)->View()));
    open_case.PurgeDeleted();
    EXPECT_EQ("Node deleted", ReadOf(*temperature, "value"));
    EXPECT_EQ(kResultFalse, Refused<char>([&](char** out) { return temperature->GetPath(out); }));
    EXPECT_EQ(kResultFalse,
              Refused<char>([&](char** out) { return temperature->GetFullName(out); }));
    EXPECT_EQ(kResultFalse, Refused<IQSINodeIterator>(
                                [&](IQSINodeIterator** out) { return stream->GetChildren(out); }));
    EXPECT_EQ("30", TakeText([&](char** out) { return held->GetString(out); }));
    const auto row =
        Take<IQSIAttribute>([&](IQSIAttribute** out) { return rows->GetAttribute(out); });
    EXPECT_EQ("Node deleted", TakeText([&](char** out) { return row->GetString(out); }));
    EXPECT_EQ(kResultFail, walk->Reset());
    EXPECT_EQ("Top.appModel.FlowSheetObjects.Streams",
              PathOf(*Take<IQSINode>([&](IQSINode** out) { return stream->GetParent(out); })));
}

TEST_F(AutomationModule, number_of_a_deleted_object_is_none) {
    const auto stream = VNode("appModel.FlowSheetObjects.Streams.\"Raw Gas\"");
    const auto temperature = VNode(kTemperature);
    const auto spec = Take<IQSIAttribute>(
        [&](IQSIAttribute** out) { return temperature->GetAttribute("value", out); });
    casehost::Case& open_case = *host_.ActiveLiveCase();
    ASSERT_TRUE(open_case.Delete(open_case.FindByPath("Raw Gas", nullptr)->View()));
    open_case.PurgeDeleted();
    std::int32_t number = 99;
    double real = 99;
    bool is = true;
    EXPECT_EQ(kResultFalse, temperature->GetInt("value", &number));
    EXPECT_EQ(0, number);
    EXPECT_EQ(kResultFalse, temperature->GetDouble("value", &real));
    EXPECT_EQ(0.0, real);
    EXPECT_EQ(kResultFalse, temperature->GetDoubleInUnit("K", &real));
    EXPECT_EQ(kResultFalse, temperature->GetBool("value", &is));
    EXPECT_FALSE(is);
    EXPECT_EQ("Node deleted",
              TakeText([&](char** out) { return temperature->GetString("value", out); }));
    const auto is_true = [](IQSVNode& node, HRESULT (FIXTOP_MEMBER IQSVNode::*member)(bool*)) {
        return TakeNumber<bool>([&](bool* out) { return (node.*member)(out); });
    };
    EXPECT_FALSE(is_true(*temperature, &IQSVNode::HasValue));
    EXPECT_FALSE(is_true(*stream, &IQSVNode::IsContainer));
    EXPECT_EQ(0,
              TakeNumber<std::int32_t>([&](std::int32_t* out) { return stream->GetCount(out); }));
    EXPECT_EQ(kResultFalse,
              Refused<IQSVNode>([&](IQSVNode** out) { return stream->GetChildByIndex(0, out); }));
    for (const char* name : {"value", "uom"}) {
        EXPECT_EQ("Node deleted",
                  Stored([&](char** out) { return temperature->SetString(name, "31", out); }))
            << name;
    }
    EXPECT_NE("", Stored([&](char** out) { return temperature->SetDoubleInUnit(1, "K", out); }));
    EXPECT_NE("", Stored([&](char** out) { return temperature->SetSpecDouble(1, out); }));
    EXPECT_NE("", Stored([&](char** out) { return temperature->SetUnit("K", out); }));
    EXPECT_EQ(kResultFalse, Refused<IQSICollection>([&](IQSICollection** out) {
                  return temperature->NewCollection(out);
              }));
    EXPECT_EQ("30", TakeText([&](char** out) { return spec->GetString(out); }));
}

TEST_F(AutomationModule, neutral_nodes_have_class_and_key) {
    const auto top = Ref<FIEntry>::Adopt(GetCombinedEntry(nullptr));
    const auto root = Ref<FIEntry>::Adopt(FixtopOpenModel(top.Get(), nullptr));
    ASSERT_TRUE(root);
    auto place = Ref<FIIteratorBase>::Adopt(FixtopMakeIterator(root.Get(), false));
    void* out = nullptr;
    const auto model = Ref<IQSVNode>::Adopt(static_cast<IQSVNode*>(GetTopVNode(place.Get(), &out)));
    ASSERT_EQ(static_cast<void*>(model.Get()), out);
    place.Reset();
    auto child = ChildOf(*model, "Flowsheet.Stream(Raw Gas)");
    const auto stream = Ref<IQSVNode>::Adopt(static_cast<IQSVNode*>(child.Detach()));
    EXPECT_EQ("QSIMaterialStream",
              TakeText([&](char** name) { return stream->GetClassName(name); }));
    char key[32];
    EXPECT_EQ(kResultOk, stream->GetKey(sizeof key, key));
    EXPECT_STREQ("Raw Gas", key);
    EXPECT_EQ(7, TakeNumber<std::int32_t>(
                     [&](std::int32_t* length) { return stream->GetKeyLength(length); }));
    double flow = 0;
    const auto molar = ChildOf(*stream, "MolarFlow");
    EXPECT_EQ(kResultOk, static_cast<IQSVNode*>(molar.Get())->GetDouble("value", &flow));
    EXPECT_DOUBLE_EQ(1000, flow);
}

// ---- Collections ----

constexpr char kAllTemperatures[] = "appModel.FlowSheetObjects.Streams.*.Temperature";

class CollectionsOfModule : public AutomationModule {
 protected:
    Ref<IQSICollection> Matches(const char* path) {
        return Take<IQSICollection>(
            [&](IQSICollection** out) { return Top().GetAltPath(path, out); });
    }
    static std::vector<double> Values(IQSICollection& collection) {
        std::int32_t count = 0;
        double* values = nullptr;
        EXPECT_EQ(kResultOk, collection.GetValues(&count, &values));
        std::vector<double> read(values, values + count);
        FreeAsClient(values);
        return read;
    }
    // Those that are numbers, and the count of the others.
    static std::pair<std::vector<double>, std::ptrdiff_t> NumbersOf(std::vector<double> values) {
        const auto none = std::erase_if(values, [](double each) { return std::isnan(each); });
        return {values, static_cast<std::ptrdiff_t>(none)};
    }
};

TEST_F(CollectionsOfModule, values_of_all_items_are_read_and_stored) {
    const auto temperatures = Matches(kAllTemperatures);
    std::vector<double> expected;
    const auto entry = Ref<FIEntry>::Adopt(GetCombinedEntry(nullptr));
    const auto it = Ref<FIIteratorBase>::Adopt(FixtopMakeIterator(entry.Get(), false));
    ASSERT_TRUE(it->SeekPath(FIValue(kStreams)));
    for (bool on = it->DownFirst(); on; on = it->Next()) {
        const auto below = Ref<FIIteratorBase>::Adopt(it->Copy());
        if (!below->SeekPath(FIValue("Temperature"))) continue;
        FIValue value;
        below->GetAttribute(FIValue("value"), value);
        expected.push_back(value.AsDouble());
    }
    ASSERT_LT(3u, expected.size());
    EXPECT_EQ(expected, Values(*temperatures));
    const auto raw_gas = Matches(kTemperature);
    const double kelvin[] = {313.15};
    EXPECT_EQ(kResultOk, raw_gas->SetValueReals(1, kelvin, "K"));
    EXPECT_EQ("40", ReadOf(*ChildOf(Top(), kTemperature), "value"));
    const char* texts[] = {"35"};
    EXPECT_EQ(kResultOk, raw_gas->SetValueTexts(1, texts, nullptr));
    EXPECT_EQ(std::vector<double>({35}), Values(*raw_gas));
    const auto products = Matches("appModel.FlowSheetObjects.Streams.\"Sales Gas\".Temperature");
    EXPECT_EQ(kResultFalse, products->SetValueReals(1, kelvin, "K")) << "it is calculated";
}

TEST_F(CollectionsOfModule, backup_form_names_the_way_to_the_node) {
    EXPECT_EQ(
        "<?xml version=\"1.0\" ?>\n<CollectionBackup>\n"
        " <Pathnode id=\"Top\">\n"
        "  <Pathnode id=\"appModel\">\n"
        "   <Pathnode id=\"FlowSheetObjects\">\n"
        "    <Pathnode id=\"Streams\">\n"
        "     <Pathnode id=\"Raw Gas\">\n"
        "      <Pathnode id=\"Temperature\" loc=\"0\"/>\n"
        "     </Pathnode>\n"
        "    </Pathnode>\n"
        "   </Pathnode>\n"
        "  </Pathnode>\n"
        " </Pathnode>\n"
        "</CollectionBackup>\n",
        TakeText([&](char** out) { return Matches(kTemperature)->GetAsXml(out); }));
}

TEST_F(CollectionsOfModule, selection_is_pasted) {
    const std::string selection =
        "<Selection><Items><Item><Path>appModel.FlowSheetObjects.Streams.\"Raw Gas\".Temperature"
        "</Path></Item></Items></Selection>";
    const auto pasted = Take<IQSICollection>([&](IQSICollection** out) {
        return FixtopPasteCollection(&Top(), selection.c_str(), static_cast<int>(selection.size()),
                                     out);
    });
    EXPECT_EQ(std::vector<double>({30}), Values(*pasted));
    EXPECT_EQ(kResultFalse, Refused<IQSICollection>([&](IQSICollection** out) {
                  return FixtopPasteCollection(&Top(), nullptr, 0, out);
              }));
}

TEST_F(CollectionsOfModule, items_without_a_number_are_nan_and_keep_what_they_have) {
    const auto mixed = Matches(kTemperature);
    const auto add = [&](const char* path) { return mixed->AddNode(ChildOf(Top(), path).Get()); };
    constexpr char kDoomed[] = "appModel.FlowSheetObjects.Streams.\"Sales Gas\".Temperature";
    EXPECT_EQ(kResultOk, add("appModel.FlowSheetObjects.Streams"));
    EXPECT_EQ(kResultOk, add(kDoomed));
    const auto doomed = ChildOf(Top(), kDoomed);
    EXPECT_EQ(1, NumbersOf(Values(*mixed)).second) << "a list has no value";
    casehost::Case& open_case = *host_.ActiveLiveCase();
    ASSERT_TRUE(open_case.Delete(open_case.FindByPath("Sales Gas", nullptr)->View()));
    open_case.PurgeDeleted();
    std::vector<double> values = Values(*mixed);
    ASSERT_EQ(3u, values.size());
    EXPECT_EQ(std::make_pair(std::vector<double>({30}), std::ptrdiff_t{2}), NumbersOf(values));
    EXPECT_EQ(kResultFalse, mixed->AddNode(doomed.Get())) << "no node any more";
    values[0] = 33;
    EXPECT_EQ(kResultOk, mixed->SetValueReals(3, values.data(), nullptr));
    EXPECT_EQ("33", ReadOf(*ChildOf(Top(), kTemperature), "value"));
}

TEST_F(CollectionsOfModule, collection_is_loaded_from_what_it_was_kept_in) {
    const auto kept = Matches("appModel.FlowSheetObjects.Streams.*.Pressure");
    const auto text_of = [](IQSICollection& items) {
        return TakeText([&](char** out) { return items.GetAsXml(out); });
    };
    const std::string text = text_of(*kept);
    const auto load = [&](const std::string& from, IQSICollection** out) {
        return FixtopLoadCollection(&Top(), from.c_str(), static_cast<int>(from.size()), out);
    };
    const auto loaded = Take<IQSICollection>([&](IQSICollection** out) { return load(text, out); });
    EXPECT_EQ(Values(*kept), Values(*loaded));
    EXPECT_EQ(text, text_of(*loaded));
    const std::string gone =
        "<CollectionBackup><Pathnode id=\"Top\"><Pathnode id=\"nowhere\" loc=\"0\"/></Pathnode>"
        "</CollectionBackup>";
    const auto lost = Take<IQSICollection>([&](IQSICollection** out) { return load(gone, out); });
    EXPECT_EQ(std::make_pair(std::vector<double>(), std::ptrdiff_t{1}), NumbersOf(Values(*lost)));
    for (const char* broken : {"<CollectionBackup>", "<Other/>", "no text of a collection"}) {
        EXPECT_EQ(kResultFail,
                  Refused<IQSICollection>([&](IQSICollection** out) { return load(broken, out); }));
    }
    EXPECT_EQ(kResultFalse,
              Refused<IQSICollection>([&](IQSICollection** out) { return load("", out); }));
    EXPECT_EQ(kResultPointer, load(text, nullptr));
}

TEST_F(CollectionsOfModule, selection_is_pasted_from_where_an_iterator_stands) {
    const auto entry = Ref<FIEntry>::Adopt(GetCombinedEntry(nullptr));
    const auto place = Ref<FIIteratorBase>::Adopt(FixtopMakeIterator(entry.Get(), false));
    ASSERT_TRUE(place->SeekPath(FIValue(kStreams)));
    const auto node =
        Ref<IQSINode>::Adopt(static_cast<IQSINode*>(MakeQSINode(place.Get(), nullptr)));
    const std::string selection = std::string("<Selection><Items><Item><Path>Top.") +
                                  "appModel.FlowSheetObjects.Streams.\"Raw Gas\".Temperature" +
                                  "</Path></Item></Items></Selection>";
    const auto pasted = Take<IQSICollection>([&](IQSICollection** out) {
        return FixtopPasteCollection(node.Get(), selection.c_str(),
                                     static_cast<int>(selection.size()), out);
    });
    EXPECT_EQ(std::vector<double>({30}), Values(*pasted));
    FIValue name;
    place->GetName(name);
    EXPECT_EQ("Streams", name.ToText()) << "it has not moved";
}

TEST_F(CollectionsOfModule, document_has_one_collection_until_it_is_dropped) {
    const auto document = Ref<IQSIDocument>::Adopt(
        static_cast<IQSIDocument*>(GetDocumentAgg(nullptr, this, nullptr)));
    const auto make = [&] {
        return Take<IQSICollection>(
            [&](IQSICollection** out) { return document->CreateCollection(out); });
    };
    const auto one = make();
    EXPECT_EQ(one.Get(), make().Get());
    EXPECT_EQ(2u, CountOf(*one)) << "the document's, and the test's";
    EXPECT_EQ(kResultOk, one->AddNode(ChildOf(Top(), kTemperature).Get()));
    EXPECT_EQ(kResultOk, document->DropCollection());
    EXPECT_EQ(1u, CountOf(*one));
    EXPECT_EQ(std::vector<double>({30}), Values(*one)) << "who holds it has it still";
    const auto other = make();
    EXPECT_NE(one.Get(), other.Get());
    EXPECT_TRUE(Values(*other).empty());
    EXPECT_EQ(kResultOk, document->DropCollection());
    EXPECT_EQ(kResultOk, document->DropCollection());
}

// Counts what it hears, and does once what it is told to, in a call and when nobody holds it.
class CountingSink final : public IQSISink {
 public:
    HRESULT FIXTOP_MEMBER QueryInterface(const InterfaceId&, void** out) override {
        *out = nullptr;
        return kResultNoInterface;
    }
    std::uint32_t FIXTOP_MEMBER AddRef() override { return ++references_; }
    std::uint32_t FIXTOP_MEMBER Release() override {
        const std::uint32_t left = --references_;
        if (left == 1 && on_left) std::exchange(on_left, nullptr)();
        return left;
    }
    HRESULT FIXTOP_MEMBER Invoke(std::int32_t event, const Variant& detail) override {
        EXPECT_EQ(IQSISink::kChanged, event);
        heard.push_back(detail.type == Variant::kInt ? detail.number : -1);
        if (on_call) std::exchange(on_call, nullptr)();
        return kResultOk;
    }

    std::vector<int> heard;
    std::function<void()> on_call;
    std::function<void()> on_left;

 private:
    std::uint32_t references_ = 1;
};

class SinksOfModule : public CollectionsOfModule {
 protected:
    void SetUp() override {
        CollectionsOfModule::SetUp();
        collection_ = Matches(kTemperature);
        EXPECT_EQ(kResultOk, collection_->AddNode(
                                 ChildOf(Top(), "appModel.FlowSheetObjects.UnitOps.E-100").Get()));
        point_ = Take<IQSIConnectionPoint>(
            [&](IQSIConnectionPoint** out) { return collection_->GetConnectionPoints(out); });
        EXPECT_EQ(kResultOk, point_->Advise(&sink_, &cookie_));
    }
    void TearDown() override {
        point_.Reset();
        collection_.Reset();
        EXPECT_EQ(1u, CountOf(sink_));
        CollectionsOfModule::TearDown();
    }
    // One change of the case that the host tells.
    void Step() {
        host::IModelCallback* callback = host_.ActiveCase()->OnlineManager()->ModelCallback();
        ASSERT_NE(nullptr, callback);
        callback->SimulationStep();
    }

    Ref<IQSICollection> collection_;
    Ref<IQSIConnectionPoint> point_;
    CountingSink sink_;
    std::uint32_t cookie_ = 0;
};

TEST_F(SinksOfModule, change_reaches_a_sink_once_for_each_item) {
    Step();
    EXPECT_EQ(std::vector<int>({0, 1}), sink_.heard);
    EXPECT_EQ(kResultOk, point_->Unadvise(cookie_));
    sink_.heard.clear();
    if (host::IModelCallback* callback = host_.ActiveCase()->OnlineManager()->ModelCallback()) {
        callback->SimulationStep();
    }
    EXPECT_TRUE(sink_.heard.empty());
}

TEST_F(SinksOfModule, sink_leaves_within_its_call_and_hears_no_more) {
    sink_.on_call = [&] { EXPECT_EQ(kResultOk, point_->Unadvise(cookie_)); };
    Step();
    EXPECT_EQ(1u, sink_.heard.size());
}

TEST_F(SinksOfModule, collection_and_nodes_are_let_go_of_within_a_call) {
    sink_.on_call = [&] {
        point_.Reset();
        collection_.Reset();
        top_node_.Reset();
    };
    Step();
    EXPECT_EQ(1u, sink_.heard.size());
}

TEST_F(SinksOfModule, collection_is_let_go_of_in_the_middle_of_its_store) {
    const auto script = HostScript::Over(host_);
    ASSERT_TRUE(casehost::OpenCase(host_, "demo"));
    top_node_.Reset();
    const char* texts[] = {"34"};
    const std::int32_t ints[] = {35};
    const double reals[] = {309.15};
    using Store = std::function<HRESULT(IQSICollection&)>;
    const Store stores[] = {
        [&](IQSICollection& items) { return items.SetValueTexts(1, texts, nullptr); },
        [&](IQSICollection& items) { return items.SetValueInts(1, ints, nullptr); },
        [&](IQSICollection& items) { return items.SetValueReals(1, reals, "K"); }};
    for (const Store& store : stores) {
        auto items = Matches(kTemperature);
        bool was_let_go = false;
        script->InStore(1, [&] {
            was_let_go = CountOf(*items) == 1;
            items.Reset();
        });
        EXPECT_EQ(kResultOk, store(*items));
        EXPECT_TRUE(was_let_go);
    }
    EXPECT_EQ("36", ReadOf(*ChildOf(Top(), kTemperature), "value"));
}

// The document's collection is the last to hold the sink.
TEST_F(SinksOfModule, document_is_asked_for_another_collection_while_one_is_dropped) {
    const auto document = Ref<IQSIDocument>::Adopt(
        static_cast<IQSIDocument*>(GetDocumentAgg(nullptr, this, nullptr)));
    CountingSink sink;
    {
        const auto items = Take<IQSICollection>(
            [&](IQSICollection** out) { return document->CreateCollection(out); });
        const auto point = Take<IQSIConnectionPoint>(
            [&](IQSIConnectionPoint** out) { return items->GetConnectionPoints(out); });
        std::uint32_t cookie = 0;
        EXPECT_EQ(kResultOk, point->Advise(&sink, &cookie));
    }
    Ref<IQSICollection> another;
    sink.on_left = [&] {
        EXPECT_EQ(kResultOk, document->DropCollection());
        another = Take<IQSICollection>(
            [&](IQSICollection** out) { return document->CreateCollection(out); });
    };
    EXPECT_EQ(kResultOk, document->DropCollection());
    EXPECT_EQ(1u, CountOf(sink));
    ASSERT_TRUE(another);
    EXPECT_EQ(2u, CountOf(*another)) << "the document's, and the test's";
    EXPECT_EQ(kResultOk, another->AddNode(ChildOf(Top(), kTemperature).Get()));
    EXPECT_EQ(std::vector<double>({30}), Values(*another));
}

TEST_F(SinksOfModule, case_is_closed_within_a_call) {
    sink_.on_call = [&] { host_.Close(*host_.ActiveLiveCase()); };
    Step();
    EXPECT_LE(1u, sink_.heard.size());
    EXPECT_EQ(2, NumbersOf(Values(*collection_)).second) << "no numbers any more";
    const auto items = Take<IQSICollectionIterator>(
        [&](IQSICollectionIterator** out) { return collection_->GetIterator(out); });
    EXPECT_EQ(kResultOk, items->Reset());
    EXPECT_EQ("Node deleted", TakeText([&](char** out) { return items->GetId(out); }));
}

// ---- Documents ----

class DocumentsOfModule : public AutomationModule {
 protected:
    using Get = void* (*)(void*, const void*, void**);

    static Ref<IQSIDocument> Document(Get get, void* session, const void* identity) {
        void* out = nullptr;
        void* const answered = get(session, identity, &out);
        EXPECT_NE(nullptr, answered);
        EXPECT_EQ(answered, out);
        return Ref<IQSIDocument>::Adopt(static_cast<IQSIDocument*>(answered));
    }
};

TEST_F(DocumentsOfModule, one_context_has_one_document) {
    for (const Get get : {GetDocumentAgg, QSVGetDocumentAgg}) {
        auto one = Document(get, nullptr, this);
        EXPECT_EQ(1u, CountOf(*one));
        auto again = Document(get, host_.ActiveCase(), this);
        EXPECT_EQ(one.Get(), again.Get()) << "null is the active case";
        EXPECT_EQ(2u, CountOf(*one));
        const auto other = Document(get, nullptr, nullptr);
        EXPECT_NE(one.Get(), other.Get()) << "another identity";
        again.Reset();
        one.Reset();
        EXPECT_EQ(1u, CountOf(*Document(get, nullptr, this))) << "made anew";
    }
}

TEST_F(DocumentsOfModule, families_have_documents_of_their_own) {
    const auto q = Document(GetDocumentAgg, nullptr, this);
    const auto v = Document(QSVGetDocumentAgg, nullptr, this);
    EXPECT_NE(q.Get(), v.Get());
    const auto is_v = [](IQSIDocument& document) {
        const auto top = Take<IQSINode>([&](IQSINode** out) { return document.GetTopNode(out); });
        EXPECT_EQ("Top", PathOf(*top));
        void* as_v = nullptr;
        const bool is = top->QueryInterface(IQSVNode::kId, &as_v) == kResultOk;
        if (is) top->Release();
        return is;
    };
    EXPECT_FALSE(is_v(*q));
    EXPECT_TRUE(is_v(*v));
}

TEST_F(DocumentsOfModule, document_answers_as_its_case) {
    const auto document = Document(GetDocumentAgg, nullptr, this);
    EXPECT_EQ("Hovex", TakeText([&](char** out) { return document->GetApplicationName(out); }));
    EXPECT_EQ(host_.ActiveCase()->GetDocumentName().Name().CStr(),
              TakeText([&](char** out) { return document->GetName(out); }));
    EXPECT_EQ(host_.Services().pSession()->SessionText(true).CStr(),
              TakeText([&](char** out) { return document->GetSessionText(out); }));
    const std::string refused = "History not supported";
    EXPECT_EQ(refused, Stored([&](char** out) { return document->ReadHistory(out); }));
    EXPECT_EQ(refused, Stored([&](char** out) { return document->ClearHistory(out); }));
    EXPECT_EQ(kResultPointer, document->GetName(nullptr));
    EXPECT_EQ(kResultPointer, document->GetTopNode(nullptr));
    EXPECT_EQ(kResultPointer, document->SaveAs(nullptr));
    EXPECT_EQ(kResultPointer, document->ReadHistory(nullptr));
    EXPECT_EQ(kResultPointer, document->CreateCollection(nullptr));
}

// By their places, as a client calls that has no header of these.
TEST_F(DocumentsOfModule, members_are_called_by_their_place) {
    const TemporaryFolder folder;
    const auto document = Document(GetDocumentAgg, nullptr, this);
    const auto text_at = [&](int slot, HRESULT expected) {
        char* text = nullptr;
        EXPECT_EQ(expected, CallSlot(document.Get(), slot, &text)) << slot;
        const std::string taken = text ? text : "(null)";
        FreeAsClient(text);
        return taken;
    };
    EXPECT_EQ(host_.ActiveCase()->GetDocumentName().Name().CStr(), text_at(3, kResultOk));
    EXPECT_EQ("Hovex", text_at(4, kResultOk));
    EXPECT_EQ(host_.Services().pSession()->SessionText(true).CStr(), text_at(5, kResultOk));
    void* one = nullptr;
    void* other = nullptr;
    EXPECT_EQ(kResultOk, CallSlot(document.Get(), 6, &one));
    EXPECT_EQ(1, CallSlot(one, 2)) << "the document's is left";
    EXPECT_EQ(2, CallSlot(one, 1));
    EXPECT_EQ(kResultOk, CallSlot(document.Get(), 7));
    EXPECT_EQ(kResultOk, CallSlot(document.Get(), 6, &other));
    EXPECT_NE(one, other);
    EXPECT_EQ(0, CallSlot(one, 2));
    EXPECT_EQ(1, CallSlot(other, 2));
    const std::string file = folder.File("saved.json");
    EXPECT_EQ(kResultOk, CallSlot(document.Get(), 9, file.c_str()));
    EXPECT_TRUE(folder.Has("saved.json"));
    EXPECT_EQ(kResultOk, CallSlot(document.Get(), 8));
    EXPECT_EQ("History not supported", text_at(10, kResultFalse));
    EXPECT_EQ("History not supported", text_at(11, kResultFalse));
    void* top = nullptr;
    EXPECT_EQ(kResultOk, CallSlot(document.Get(), 12, &top));
    const auto node = Ref<IQSINode>::Adopt(static_cast<IQSINode*>(top));
    EXPECT_EQ("Top", PathOf(*node));
}

TEST_F(DocumentsOfModule, document_is_saved) {
    const TemporaryFolder folder;
    const auto document = Document(GetDocumentAgg, nullptr, this);
    const std::string file = folder.File("saved.json");
    EXPECT_EQ(kResultOk, document->SaveAs(file.c_str()));
    EXPECT_TRUE(folder.Has("saved.json"));
    EXPECT_EQ(kResultOk, document->Save());
    EXPECT_EQ(kResultFail, document->SaveAs(folder.File("none/saved.json").c_str()));
}

TEST_F(DocumentsOfModule, a_save_that_fails_leaves_the_document_its_name) {
    const TemporaryFolder folder;
    const auto document = Document(GetDocumentAgg, nullptr, this);
    const auto name = [&] { return TakeText([&](char** out) { return document->GetName(out); }); };
    const std::string before = name();
    for (const std::string& file : {std::string(), folder.File("none/other.json")}) {
        EXPECT_EQ(kResultFail, document->SaveAs(file.c_str())) << file;
        EXPECT_EQ(before, name());
    }
}

TEST_F(DocumentsOfModule, document_ends_with_its_case) {
    const auto before = Document(GetDocumentAgg, nullptr, this);
    const auto top = Take<IQSINode>([&](IQSINode** out) { return before->GetTopNode(out); });
    host_.Close(*host_.ActiveLiveCase());
    ASSERT_TRUE(casehost::OpenCase(host_, "demo"));
    const auto after = Document(GetDocumentAgg, nullptr, this);
    EXPECT_NE(before.Get(), after.Get());
    EXPECT_EQ(kResultFalse, Refused<char>([&](char** out) { return before->GetName(out); }));
    EXPECT_EQ(kResultFail, before->Save());
    EXPECT_EQ("Node deleted", ReadOf(*top, "status"));
    EXPECT_EQ(after.Get(), Document(GetDocumentAgg, nullptr, this).Get());
}

TEST_F(DocumentsOfModule, document_ends_when_the_host_is_taken_out) {
    const auto before = Document(GetDocumentAgg, nullptr, this);
    FixtopInstallHost(nullptr);
    EXPECT_EQ(kResultFalse, Refused<char>([&](char** out) { return before->GetName(out); }));
    EXPECT_EQ(kResultFalse, Refused<char>([&](char** out) { return before->GetSessionText(out); }));
    EXPECT_EQ(kResultFail, before->Save());
    EXPECT_EQ(nullptr, GetDocumentAgg(nullptr, this, nullptr));
    FixtopInstallHost(&host_.Services());
    EXPECT_NE(before.Get(), Document(GetDocumentAgg, nullptr, this).Get());
}

TEST_F(DocumentsOfModule, documents_are_found_by_their_own_exports) {
    void* out = this;
    EXPECT_EQ(nullptr, FindDocumentAgg(nullptr, this, &out));
    EXPECT_EQ(nullptr, out);
    EXPECT_EQ(nullptr, MakeDocumentAgg(nullptr, nullptr, this, &out));
    const auto top = Ref<FIEntry>::Adopt(GetCombinedEntry(nullptr));
    const auto made = Ref<IQSIDocument>::Adopt(
        static_cast<IQSIDocument*>(MakeVDocumentAgg(top.Get(), nullptr, this, nullptr)));
    EXPECT_EQ(nullptr, FindDocumentAgg(nullptr, this, nullptr)) << "of the other family";
    const auto found = Ref<IQSIDocument>::Adopt(
        static_cast<IQSIDocument*>(FindVDocumentAgg(nullptr, this, nullptr)));
    EXPECT_EQ(made.Get(), found.Get());
}

}  // namespace

}  // namespace fixtop
