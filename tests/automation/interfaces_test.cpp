// SPDX-License-Identifier: Apache-2.0
// The members stand at the places that clients compiled elsewhere call, and interfaces are told
// apart by their ids.

#include <gtest/gtest.h>

#include <set>

#include "automation/held_node.h"
#include "automation/objects.h"
#include "automation/script_nodes.h"
#include "support/vtable_slot.h"

namespace fixtop {

namespace {

template <class... Members>
std::vector<int> Slots(Members... members) {
    return {VtableSlot(members)...};
}

// Behind the three of IUnknown.
std::vector<int> From(int first, int count) {
    std::vector<int> slots;
    for (int i = 0; i < count; ++i) slots.push_back(first + i);
    return slots;
}

TEST(Interfaces, unknown_has_three_members_and_no_destructor_among_them) {
    EXPECT_EQ(From(0, 3), Slots(&IUnknown::QueryInterface, &IUnknown::AddRef, &IUnknown::Release));
    EXPECT_EQ(sizeof(void*), sizeof(IUnknown));
    EXPECT_EQ(16u, sizeof(InterfaceId));
}

TEST(Interfaces, node_has_its_12_members_in_order) {
    using T = IQSINode;
    EXPECT_EQ(From(3, 12),
              Slots(&T::GetChild, &T::GetChildren, &T::GetAttribute, &T::GetAttributes, &T::GetPath,
                    &T::GetParent, &T::NewCollection, &T::GetAltPath, &T::GetDocument,
                    &T::SetVariable, &T::GetFullName, &T::GetClassName));
}

TEST(Interfaces, v_node_has_39_slots_that_begin_with_those_of_the_node) {
    using T = IQSVNode;
    EXPECT_EQ(3, VtableSlot(&T::GetChild));
    EXPECT_EQ(14, VtableSlot(&T::GetClassName));
    EXPECT_EQ(From(15, 14),
              Slots(&T::GetInt, &T::GetDouble, &T::GetString, &T::GetBool, &T::SetInt,
                    &T::SetDouble, &T::SetString, &T::SetBool, &T::GetChildByIndex, &T::GetCount,
                    &T::GetKeyLength, &T::GetKey, &T::IsContainer, &T::HasValue));
    EXPECT_EQ(From(29, 10),
              Slots(&T::GetArrayValues, &T::SetArrayValues, &T::GetDoubleInUnit,
                    &T::SetDoubleInUnit, &T::SetSpecDouble, &T::SetSpecDoubleInUnit, &T::SetUnit,
                    &T::SetSpecUnit, &T::SetDisplayUnit, &T::SetDisplaySpecUnit));
    EXPECT_EQ(39, VtableSlot(&T::SetDisplaySpecUnit) + 1);
}

TEST(Interfaces, attribute_and_iterators_have_their_members_in_order) {
    EXPECT_EQ(From(3, 5),
              Slots(&IQSIAttribute::GetType, &IQSIAttribute::GetValue, &IQSIAttribute::GetString,
                    &IQSIAttribute::GetInt, &IQSIAttribute::GetDouble));
    using A = IQSIAttributeIterator;
    EXPECT_EQ(From(3, 7), Slots(&A::GetNameBuffer, &A::GetName, &A::GetAttribute, &A::Next,
                                &A::Reset, &A::ToEnd, &A::AtEnd));
    using N = IQSINodeIterator;
    EXPECT_EQ(From(3, 8), Slots(&N::GetNameBuffer, &N::GetName, &N::GetNode, &N::Move, &N::Reset,
                                &N::ToEnd, &N::AtEnd, &N::Close));
}

TEST(Interfaces, collection_and_its_iterator_have_their_members_in_order) {
    using C = IQSICollection;
    EXPECT_EQ(From(3, 10), Slots(&C::GetIterator, &C::AddNode, &C::AddAttribute, &C::SetValueTexts,
                                 &C::SetValueInts, &C::SetValueReals, &C::GetValues,
                                 &C::GetValueVariant, &C::GetAsXml, &C::GetConnectionPoints));
    using I = IQSICollectionIterator;
    EXPECT_EQ(From(3, 10),
              Slots(&I::GetIdBuffer, &I::GetId, &I::GetNode, &I::AtEnd, &I::Move, &I::Reset,
                    &I::ToEnd, &I::AddNode, &I::AddAttribute, &I::GetValue));
    EXPECT_EQ(3, VtableSlot(&IQSISink::Invoke));
    EXPECT_EQ(From(3, 2), Slots(&IQSIConnectionPoint::Advise, &IQSIConnectionPoint::Unadvise));
}

TEST(Interfaces, document_has_its_members_in_order) {
    using T = IQSIDocument;
    EXPECT_EQ(From(3, 10), Slots(&T::GetName, &T::GetApplicationName, &T::GetSessionText,
                                 &T::CreateCollection, &T::DropCollection, &T::Save, &T::SaveAs,
                                 &T::ReadHistory, &T::ClearHistory, &T::GetTopNode));
}

TEST(Interfaces, ids_differ) {
    const InterfaceId ids[] = {IUnknown::kId,
                               IQSINode::kId,
                               IQSIAttribute::kId,
                               IQSIAttributeIterator::kId,
                               IQSINodeIterator::kId,
                               IQSICollection::kId,
                               IQSICollectionIterator::kId,
                               IQSISink::kId,
                               IQSIConnectionPoint::kId,
                               IQSVNode::kId,
                               IQSIDocument::kId,
                               kHeldNodeId,
                               kHeldAttributeId};
    std::set<std::string> seen;
    for (const InterfaceId& id : ids) {
        seen.insert(std::string(reinterpret_cast<const char*>(&id), sizeof id));
    }
    EXPECT_EQ(std::size(ids), seen.size());
}

// What an object answers to each id, and that each answer is counted.
class Asked : public testing::Test {
 protected:
    ScriptNode root_{"Root"};
    Ref<IQSINode> q_ = NodeAt(root_);
    Ref<IQSVNode> v_ = VNodeAt(root_);

    static bool Has(IUnknown& object, const InterfaceId& id) {
        const std::uint32_t before = CountOf(object);
        void* out = NoPointer<void>();
        const HRESULT result = object.QueryInterface(id, &out);
        EXPECT_EQ(out ? kResultOk : kResultNoInterface, result);
        EXPECT_EQ(out ? before + 1 : before, CountOf(object));
        if (out) object.Release();
        return out != nullptr;
    }
};

TEST_F(Asked, a_node_starts_at_one_reference_and_answers_its_own_ids) {
    EXPECT_EQ(1u, CountOf(*q_));
    EXPECT_EQ(2u, q_->AddRef());
    EXPECT_EQ(1u, q_->Release());
    EXPECT_TRUE(Has(*q_, IUnknown::kId));
    EXPECT_TRUE(Has(*q_, IQSINode::kId));
    for (const InterfaceId& id : {IQSVNode::kId, IQSIAttribute::kId, IQSICollection::kId,
                                  InterfaceId{1, 2, 3, {4, 5, 6, 7, 8, 9, 10, 11}}}) {
        EXPECT_FALSE(Has(*q_, id));
    }
    EXPECT_EQ(kResultPointer, q_->QueryInterface(IUnknown::kId, nullptr));
}

TEST_F(Asked, a_v_node_is_a_node_too) {
    EXPECT_TRUE(Has(*v_, IUnknown::kId));
    EXPECT_TRUE(Has(*v_, IQSINode::kId));
    EXPECT_TRUE(Has(*v_, IQSVNode::kId));
    void* as_v = nullptr;
    ASSERT_EQ(kResultOk, v_->QueryInterface(IQSVNode::kId, &as_v));
    EXPECT_EQ(static_cast<void*>(v_.Get()), as_v);
    v_->Release();
}

TEST_F(Asked, the_inside_of_a_node_is_reached_by_its_own_id_alone) {
    EXPECT_TRUE(Has(*q_, kHeldNodeId));
    EXPECT_TRUE(Has(*v_, kHeldNodeId));
    EXPECT_FALSE(Has(*q_, kHeldAttributeId));
    Ref<FIIteratorBase> inside;
    ASSERT_EQ(kResultOk, FindHeldNode(q_.Get(), kHeldNodeId, inside));
    FIValue name;
    inside->GetName(name);
    EXPECT_EQ("Root", name.ToText());
    EXPECT_EQ(1u, CountOf(*q_));
}

TEST_F(Asked, every_object_answers_its_own_id_and_that_of_unknown_alone) {
    root_.Set("value", 1);
    root_.Add("Feed");
    const auto attribute =
        Take<IQSIAttribute>([&](IQSIAttribute** out) { return q_->GetAttribute("value", out); });
    const auto attributes = Take<IQSIAttributeIterator>(
        [&](IQSIAttributeIterator** out) { return q_->GetAttributes(out); });
    const auto children =
        Take<IQSINodeIterator>([&](IQSINodeIterator** out) { return q_->GetChildren(out); });
    const auto collection =
        Take<IQSICollection>([&](IQSICollection** out) { return q_->NewCollection(out); });
    const auto items = Take<IQSICollectionIterator>(
        [&](IQSICollectionIterator** out) { return collection->GetIterator(out); });
    const auto point = Take<IQSIConnectionPoint>(
        [&](IQSIConnectionPoint** out) { return collection->GetConnectionPoints(out); });
    struct Case {
        IUnknown* object;
        InterfaceId id;
    };
    const Case cases[] = {
        {attribute.Get(), IQSIAttribute::kId},      {attributes.Get(), IQSIAttributeIterator::kId},
        {children.Get(), IQSINodeIterator::kId},    {collection.Get(), IQSICollection::kId},
        {items.Get(), IQSICollectionIterator::kId}, {point.Get(), IQSIConnectionPoint::kId}};
    for (const Case& each : cases) {
        EXPECT_TRUE(Has(*each.object, IUnknown::kId));
        for (const Case& other : cases) {
            EXPECT_EQ(each.object == other.object, Has(*each.object, other.id)) << &each - cases;
        }
        EXPECT_FALSE(Has(*each.object, IQSINode::kId));
        EXPECT_FALSE(Has(*each.object, kHeldNodeId));
        EXPECT_EQ(each.object == attribute.Get(), Has(*each.object, kHeldAttributeId));
    }
}

TEST_F(Asked, members_are_called_by_their_place) {
    root_.Add("Feed");
    void* child = nullptr;
    ASSERT_EQ(kResultOk, CallSlot(q_.Get(), 3, static_cast<const char*>("Feed"), &child));
    char* path = nullptr;
    ASSERT_EQ(kResultOk, CallSlot(child, 7, &path));
    EXPECT_STREQ("Root.Feed", path);
    FreeAsClient(path);
    void* unknown = nullptr;
    const InterfaceId id = IUnknown::kId;
    ASSERT_EQ(kResultOk, CallSlot(child, 0, &id, &unknown));
    EXPECT_EQ(child, unknown);
    EXPECT_EQ(1, CallSlot(child, 2));
    EXPECT_EQ(0, CallSlot(child, 2));
}

}  // namespace

}  // namespace fixtop
