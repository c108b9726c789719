// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "fixtop/entry.h"
#include "framework/iterator/var_map.h"
#include "framework/nodes/counted.h"
#include "framework/nodes/empties.h"
#include "framework/nodes/small_object.h"
#include "support/scripted_tree.h"

namespace fixtop {

namespace {

// Only what every entry must have.
class BareEntry final : public CountedFromZero<FIEntry> {
 public:
    void GetName(FIValue& out) override { out = Text("bare"); }
    void GetAttribute(const FIValue&, FIValue& out) override { out.Clear(); }
    FIAttributeSource* GetAttributeSource() override { return EmptyEntry()->GetAttributeSource(); }
    FIContext* GetContext() override { return EmptyContext(); }
};

TEST(BaseEntry, writes_and_actions_answer_their_messages) {
    const Ref<FIEntry> entry = Ref<FIEntry>::Share(new BareEntry);
    const FIValue any = Text("any");
    struct Case {
        const char* operation;
        std::function<void(FIValue&)> call;
        const char* message;
    };
    const Case cases[] = {
        {"SetAttribute", [&](FIValue& out) { entry->SetAttribute(any, any, 0, out); },
         "Not Supported"},
        {"SetUnit", [&](FIValue& out) { entry->SetUnit(any, out); }, "Not Supported"},
        {"SetSpecUnit", [&](FIValue& out) { entry->SetSpecUnit(any, out); }, "Not Supported"},
        {"SetValue", [&](FIValue& out) { entry->SetValue(any, 0, out); }, "Not Supported"},
        {"SetValueInUnit", [&](FIValue& out) { entry->SetValueInUnit(any, any, 0, out); },
         "Not Supported"},
        {"SetSpecValue", [&](FIValue& out) { entry->SetSpecValue(any, 0, out); }, "Not Supported"},
        {"SetSpecValueInUnit", [&](FIValue& out) { entry->SetSpecValueInUnit(any, any, 0, out); },
         "Not Supported"},
        {"SetDisplayUnit", [&](FIValue& out) { entry->SetDisplayUnit(any, any, out); },
         "Not Supported"},
        {"SetDisplaySpecUnit", [&](FIValue& out) { entry->SetDisplaySpecUnit(any, any, out); },
         "Not Supported"},
        {"DoAction", [&](FIValue& out) { entry->DoAction(out, 1, 2); }, "Action is not valid"},
        {"DoActionEx", [&](FIValue& out) { entry->DoActionEx(out, 1, 2, 3, 4); },
         "Action not supported"},
    };
    for (const Case& each : cases) {
        FIValue out;
        each.call(out);
        EXPECT_EQ(each.message, out.ToText()) << each.operation;
    }
}

TEST(BaseEntry, commands_answer_a_record_with_code_2) {
    const FIErrorRecord fresh;
    EXPECT_EQ(-2, fresh.code);
    EXPECT_EQ(-1, fresh.first);
    EXPECT_EQ(-1, fresh.second);

    const Ref<FIEntry> entry = Ref<FIEntry>::Share(new BareEntry);
    FIErrorRecord record = {7, 8, 9, Text("before")};
    entry->DoCommand(1, record);
    EXPECT_EQ(2, record.code);
    EXPECT_EQ(-1, record.first);
    EXPECT_EQ(-1, record.second);
    EXPECT_EQ("Action is not supported", record.text.ToText());
}

TEST(BaseEntry, defaults_of_the_other_operations) {
    const Ref<FIEntry> entry = Ref<FIEntry>::Share(new BareEntry);
    EXPECT_TRUE(entry->IsContainer());
    EXPECT_TRUE(entry->CanHold());
    EXPECT_EQ(0, entry->GetCaps(1, 2));
    EXPECT_EQ(0, entry->Compare(*entry));
    entry->BeginBatch();
    entry->EndBatch(0);
    int target = 0;
    void* service = &target;
    EXPECT_FALSE(entry->QueryService(1, &service));
    EXPECT_EQ(nullptr, service);
    service = &target;
    EXPECT_FALSE(entry->ReleaseService(&service));
    EXPECT_EQ(nullptr, service);
    EXPECT_EQ(nullptr, entry->GetVarSet());
}

TEST(BaseEntry, compares_by_name) {
    ScriptNode a("a");
    ScriptNode b("b");
    ScriptNode also_a("a");
    EXPECT_LT(a.Entry()->Compare(*b.Entry()), 0);
    EXPECT_GT(b.Entry()->Compare(*a.Entry()), 0);
    EXPECT_EQ(0, a.Entry()->Compare(*also_a.Entry()));
}

TEST(BaseEntry, subscribing_is_refused) {
    const Ref<FIEntry> entry = Ref<FIEntry>::Share(new BareEntry);
    int owner = 0;
    for (int kind : {kNodeDeleted, kValueChanged, kStructureChanged}) {
        EXPECT_FALSE(entry->Subscribe(&owner, kind, [](void*, int) { FAIL(); }));
        EXPECT_FALSE(entry->Unsubscribe(&owner, kind));
    }
}

TEST(BaseContext, names_no_child_and_leaves_the_whole_path) {
    const char* const path = "A/B";
    const char* rest = nullptr;
    FIValue key = Text("before");
    EmptyContext()->GetKeyValue(path, key, &rest);
    EXPECT_TRUE(key.IsNull());
    EXPECT_EQ(path, rest);
}

TEST(Empties, are_not_counted) {
    EXPECT_EQ(1, EmptyEntry()->AddRef());
    EXPECT_EQ(1, EmptyEntry()->AddRef());
    EXPECT_EQ(0, EmptyEntry()->Release());
    EXPECT_EQ(1, EmptyContext()->AddRef());
    EXPECT_EQ(0, EmptyContext()->Release());
    EXPECT_EQ(1, EmptyCursor()->AddRef());
    EXPECT_EQ(0, EmptyCursor()->Release());
    EXPECT_EQ(EmptyEntry(), EmptyEntry());
}

TEST(Empties, entry_shows_nothing) {
    for (const char* name : {"value", "id", "type", ""}) {
        FIValue out = Text("before");
        EmptyEntry()->GetAttribute(Text(name), out);
        EXPECT_TRUE(out.IsNull()) << name;
    }
    FIValue name = Text("before");
    EmptyEntry()->GetName(name);
    EXPECT_TRUE(name.IsNull());
    EXPECT_FALSE(EmptyEntry()->IsContainer());
    EXPECT_EQ(EmptyContext(), EmptyEntry()->GetContext());
    EXPECT_EQ(EmptyCursor(), EmptyContext()->MakeCursor(kChildCursor));
    EXPECT_EQ(EmptyCursor(), EmptyContext()->MakeCursor(kKeyCursor));
    FIAttributeCursorBase* attributes = EmptyEntry()->GetAttributeSource()->MakeCursor();
    EXPECT_EQ(EmptyAttributeCursor(), attributes);
    FIValue value = Text("before");
    attributes->GetValue(value);
    EXPECT_TRUE(value.IsNull());
    attributes->SetVarSet(nullptr);
    EXPECT_EQ(nullptr, attributes->GetVarSet());
    EXPECT_EQ(attributes, attributes->Clone(true));
}

TEST(Empties, cursor_stands_nowhere) {
    FICursorBase* cursor = EmptyCursor();
    for (int origin : {kFromFirst, kFromPresent, kFromEnd}) EXPECT_FALSE(cursor->Seek(origin, 0));
    EXPECT_FALSE(cursor->SeekName(kFromFirst, "a"));
    EXPECT_FALSE(cursor->SeekValue(kFromFirst, *EmptyEntry()));
    EXPECT_TRUE(cursor->AtBegin());
    EXPECT_TRUE(cursor->AtEnd());
    EXPECT_EQ(0, cursor->Compare(*cursor));
    ScriptNode parent("parent");
    EXPECT_EQ(0, cursor->Compare(*parent.Children())) << "whatever it is compared with";
    FIValue key = Text("before");
    cursor->GetKey(key);
    EXPECT_TRUE(key.IsNull());
    EXPECT_EQ(EmptyEntry(), cursor->GetEntry());
    EXPECT_EQ(cursor, cursor->Clone(true));
    EXPECT_EQ(cursor, cursor->Clone(false));
    EXPECT_FALSE(cursor->IsHidden());
    EXPECT_NE(cursor->TypeId(), EmptyAttributeCursor()->TypeId());
}

TEST(VarMap, keeps_the_order_of_names_and_replaces) {
    VarMap map;
    for (const char* name : {"b", "c", "a"}) map.Set(Text(name), Text(name));
    map.Set(Text("b"), FIValue::OfInt(2));
    ASSERT_EQ(3u, map.Variables().size());
    EXPECT_EQ("a", map.Variables()[0].name.ToText());
    EXPECT_EQ("b", map.Variables()[1].name.ToText());
    EXPECT_EQ("c", map.Variables()[2].name.ToText());
    EXPECT_EQ(2, map.Find(Text("b"))->AsInt());
    EXPECT_EQ(nullptr, map.Find(Text("d")));
    EXPECT_TRUE(map.Remove(Text("b")));
    EXPECT_FALSE(map.Remove(Text("b")));
    EXPECT_EQ(nullptr, map.Find(Text("b")));
    EXPECT_EQ(2u, map.Variables().size());
}

TEST(VarMap, copy_and_original_change_alone) {
    VarMap map;
    map.Set(Text("a"), FIValue::OfInt(1));
    VarMap copy = map;
    const VarMap untouched = map;
    copy.Set(Text("a"), FIValue::OfInt(2));
    copy.Set(Text("b"), *map.Find(Text("a")));
    EXPECT_TRUE(map.Remove(Text("a")));
    EXPECT_EQ(nullptr, map.Find(Text("a")));
    EXPECT_EQ(2, copy.Find(Text("a"))->AsInt());
    EXPECT_EQ(1, copy.Find(Text("b"))->AsInt());
    ASSERT_EQ(1u, untouched.Variables().size());
    EXPECT_EQ(1, untouched.Find(Text("a"))->AsInt());
}

TEST(VarMap, numbers_and_texts_are_different_names) {
    VarMap map;
    map.Set(Text("1"), Text("text"));
    map.Set(FIValue::OfInt(1), Text("number"));
    EXPECT_EQ("text", map.Find(Text("1"))->ToText());
    EXPECT_EQ("number", map.Find(FIValue::OfReal(1.0))->ToText());
}

template <std::size_t size>
struct Block final : SmallObject {
    unsigned char bytes[size];
};

// More of them than are kept for later, each with bytes of its own, and the same again.
template <std::size_t size>
void MakeAndDropBlocks() {
    for (int round = 0; round < 2; ++round) {
        std::vector<std::unique_ptr<Block<size>>> blocks;
        for (std::size_t i = 0; i < SmallObject::kKeptBlocks + 44; ++i) {
            blocks.push_back(std::make_unique<Block<size>>());
            std::memset(blocks[i]->bytes, static_cast<int>(i % 251), size);
        }
        for (std::size_t i = 0; i < blocks.size(); ++i) {
            const auto own = static_cast<unsigned char>(i % 251);
            const auto count = std::count(blocks[i]->bytes, blocks[i]->bytes + size, own);
            ASSERT_EQ(size, static_cast<std::size_t>(count)) << "block " << i;
        }
    }
}

TEST(SmallObjects, of_every_size_have_memory_of_their_own) {
    MakeAndDropBlocks<1>();
    MakeAndDropBlocks<31>();
    MakeAndDropBlocks<32>();
    MakeAndDropBlocks<33>();
    MakeAndDropBlocks<64>();
    MakeAndDropBlocks<511>();
    MakeAndDropBlocks<512>();
    MakeAndDropBlocks<513>();
    MakeAndDropBlocks<4096>();
}

}  // namespace

}  // namespace fixtop
