// SPDX-License-Identifier: Apache-2.0
// The operations stand in their classes at the places that clients compiled elsewhere call.

#include <gtest/gtest.h>

#include "fixtop/cursor.h"
#include "fixtop/entry.h"
#include "fixtop/iterator.h"
#include "fixtop/reference.h"
#include "fixtop/var_set.h"
#include "support/vtable_slot.h"

namespace fixtop {

namespace {

// The destructor is operation 0 but takes two places.
template <class Member>
int Slot(Member member) {
    return VtableSlot(member) - kDestructorSlots + 1;
}

#define EXPECT_SLOT(number, Class, operation) \
    EXPECT_EQ(number, Slot(&Class::operation)) << #Class "::" #operation

TEST(SlotOrder, entry_has_its_31_operations_in_order) {
    int slot = 1;
#define ROW(operation)                     \
    EXPECT_SLOT(slot, FIEntry, operation); \
    ++slot
    ROW(AddRef);
    ROW(Release);
    ROW(GetName);
    ROW(GetAttribute);
    ROW(SetAttribute);
    ROW(GetAttributeSource);
    ROW(IsContainer);
    ROW(GetContext);
    ROW(Subscribe);
    ROW(Unsubscribe);
    ROW(Compare);
    ROW(SetUnit);
    ROW(SetSpecUnit);
    ROW(SetValue);
    ROW(SetValueInUnit);
    ROW(SetSpecValue);
    ROW(SetSpecValueInUnit);
    ROW(SetDisplayUnit);
    ROW(SetDisplaySpecUnit);
    ROW(SetVarSet);
    ROW(GetVarSet);
    ROW(QueryService);
    ROW(ReleaseService);
    ROW(CanHold);
    ROW(BeginBatch);
    ROW(EndBatch);
    ROW(GetCaps);
    ROW(DoAction);
    ROW(DoActionEx);
    ROW(DoCommand);
#undef ROW
    EXPECT_EQ(31, slot);
}

TEST(SlotOrder, context_has_its_5_operations_in_order) {
    EXPECT_SLOT(1, FIContext, AddRef);
    EXPECT_SLOT(2, FIContext, Release);
    EXPECT_SLOT(3, FIContext, MakeCursor);
    EXPECT_SLOT(4, FIContext, GetKeyValue);
}

TEST(SlotOrder, attribute_source_has_its_4_operations_in_order) {
    EXPECT_SLOT(1, FIAttributeSource, AddRef);
    EXPECT_SLOT(2, FIAttributeSource, Release);
    EXPECT_SLOT(3, FIAttributeSource, MakeCursor);
}

template <class Cursor>
void ExpectPositionOperations() {
    int slot = 1;
#define ROW(operation)                              \
    EXPECT_SLOT(slot, FICursorPosition, operation); \
    ++slot
    ROW(TypeId);
    ROW(AddRef);
    ROW(Release);
    ROW(Clone);
    ROW(Seek);
    ROW(SeekName);
    ROW(SeekValue);
    ROW(AtBegin);
    ROW(AtEnd);
    ROW(Compare);
    ROW(GetKey);
#undef ROW
    EXPECT_EQ(12, slot);
}

TEST(SlotOrder, child_cursor_has_its_14_operations_in_order) {
    ExpectPositionOperations<FICursorBase>();
    EXPECT_SLOT(12, FICursorBase, GetEntry);
    EXPECT_SLOT(13, FICursorBase, IsHidden);
}

TEST(SlotOrder, attribute_cursor_has_its_15_operations_in_order) {
    ExpectPositionOperations<FIAttributeCursorBase>();
    EXPECT_SLOT(12, FIAttributeCursorBase, GetValue);
    EXPECT_SLOT(13, FIAttributeCursorBase, GetVarSet);
    EXPECT_SLOT(14, FIAttributeCursorBase, SetVarSet);
}

TEST(SlotOrder, var_set_has_its_8_operations_in_order) {
    int slot = 1;
#define ROW(operation)                      \
    EXPECT_SLOT(slot, FIVarSet, operation); \
    ++slot
    ROW(SetUnit);
    ROW(GetUnit);
    ROW(SetSpecUnit);
    ROW(GetSpecUnit);
    ROW(GetPath);
    ROW(SetVar);
    ROW(GetVar);
#undef ROW
    EXPECT_EQ(8, slot);
}

TEST(SlotOrder, iterator_has_its_77_operations_in_order) {
    using It = FIIteratorBase;
    using SetText = void (It::*)(const char*, const char*);
    using SetTextValue = void (It::*)(const char*, const FIValue&);
    int slot = 1;
#define ROW(operation)                \
    EXPECT_SLOT(slot, It, operation); \
    ++slot
    ROW(Copy);
    ROW(MakeReference);
    ROW(CanDescend);
    ROW(Down);
    ROW(SeekPath);
    ROW(Walk);
    ROW(WalkFrom);
    ROW(DownFirst);
    ROW(Next);
    ROW(First);
    ROW(Prev);
    ROW(Last);
    ROW(DownLast);
    ROW(Up);
    ROW(Step);
    ROW(NextMatch);
    ROW(Depth);
    ROW(GetName);
    ROW(NameText);
    ROW(NameLength);
    ROW(GetPath);
    ROW(PathText);
    ROW(PathLength);
    ROW(KeyText);
    ROW(KeyLength);
    ROW(DumpVars);
    ROW(GetAttribute);
    ROW(SetAttribute);
    ROW(TypeId);
    ROW(GetAttributeSource);
    // Compilers differ in the order of overloads that stand together; the pair has its two places.
    const int one = Slot(static_cast<SetText>(&It::SetVarText));
    const int other = Slot(static_cast<SetTextValue>(&It::SetVarText));
    EXPECT_EQ(31 + 32, one + other);
    EXPECT_EQ(1, one < other ? other - one : one - other);
    slot = 33;
    ROW(SetVar);
    ROW(GetVarText);
    ROW(GetVar);
    ROW(RemoveVarText);
    ROW(RemoveVar);
    ROW(AtFirst);
    ROW(AtLast);
    ROW(Compare);
    ROW(Less);
    ROW(Greater);
    ROW(Equal);
    ROW(NotEqual);
    ROW(DumpXml);
    ROW(DumpXmlDefault);
    ROW(SetDisplayUnit);
    ROW(SetDisplaySpecUnit);
    ROW(SetUnit);
    ROW(SetSpecUnit);
    ROW(SetValue);
    ROW(SetValueInUnit);
    ROW(SetSpecValue);
    ROW(SetSpecValueInUnit);
    ROW(OpenAttribute);
    ROW(IsKeyName);
    ROW(Locate);
    ROW(LocateChain);
    ROW(DumpAttributes);
    ROW(DumpNodeFlat);
    ROW(DumpNode);
    ROW(DumpNodeDeep);
    ROW(AddRef);
    ROW(Release);
    ROW(GetVarSet);
    ROW(GetCaps);
    ROW(DoAction);
    ROW(DoActionEx);
    ROW(DoCommand);
    ROW(SeekChildFrom);
    ROW(SeekChild);
    ROW(EvalClause);
    ROW(WalkSteps);
    ROW(Filter);
    ROW(Freeze);
    ROW(Thaw);
#undef ROW
    EXPECT_EQ(77, slot);
}

TEST(SlotOrder, reference_has_51_operations) {
    EXPECT_SLOT(1, FIReferenceBase, AddRef);
    EXPECT_SLOT(3, FIReferenceBase, Copy);
    EXPECT_SLOT(15, FIReferenceBase, GetAttribute);
    EXPECT_SLOT(25, FIReferenceBase, GetVarText);
    EXPECT_SLOT(30, FIReferenceBase, DumpXml);
    EXPECT_SLOT(35, FIReferenceBase, Compare);
    EXPECT_SLOT(40, FIReferenceBase, Subscribe);
    EXPECT_SLOT(45, FIReferenceBase, MarkStale);
    EXPECT_SLOT(50, FIReferenceBase, OnDeleted);
}

}  // namespace

}  // namespace fixtop
