// SPDX-License-Identifier: Apache-2.0
#pragma once

// One set of checks for every family of child cursors. A family describes how to make its cursor,
// which elements the list has, and where it departs from the common behaviour:
//
//     CursorFamily family;
//     family.name = "TopCursorBase";
//     family.make = [&] { return context->MakeCursor(kChildCursor); };
//     family.keys = {"Top"};
//     CheckCursorFamily(family);
//
// `make` answers a counted cursor on a list that does not change while the checks run.

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "fixtop/cursor.h"
#include "fixtop/entry.h"
#include "fixtop/ref.h"
#include "framework/nodes/counted.h"
#include "framework/nodes/empties.h"

namespace fixtop {

// What a seek answers and where it leaves the cursor: an index, the count of elements for the end.
// No position: the family does not say.
struct SeekOutcome {
    bool result = false;
    std::optional<int> position;
};

enum class EntryAtEnd { kNull, kEmptyEntry };

struct CursorFamily {
    std::string name;
    std::function<FICursorBase*()> make;
    // Texts of GetKey, in order.
    std::vector<std::string> keys;
    // Names of the entries; the keys when left empty.
    std::vector<std::string> names;
    // A cursor of this family over a list without elements; may be left out.
    std::function<FICursorBase*()> make_empty;
    EntryAtEnd entry_at_end = EntryAtEnd::kNull;
    // The position of a new cursor; left out when the family does not say.
    std::optional<int> new_position = 0;
    // SeekValue finds an element by its entry.
    bool seeks_entries = true;
    // Positions of one list compare by order; otherwise only equality is checked.
    bool ordered = true;
    // The one position at which AtEnd answers true; past the last element when left out.
    std::optional<int> reports_end_at;
    // AtBegin answers true on the first element.
    bool begins_at_first = true;
    // A name that no element has.
    std::string missing_name = "no such element";

    // Departures. Unset ones are as the comment says, n the count of elements.
    std::optional<SeekOutcome> past_end;      // Seek(first, n): false, end
    std::optional<SeekOutcome> before_first;  // Seek(first, -1): false, first
    std::optional<SeekOutcome> to_end;        // Seek(end, 0): false, end
    std::optional<SeekOutcome> to_last;       // Seek(end, -1): true, last
    std::optional<SeekOutcome> off_last;      // Seek(present, 1) on the last: false, end
    std::optional<SeekOutcome> back_again;    // and Seek(present, -1) after it: true, last
    std::optional<SeekOutcome> off_first;     // Seek(present, -1) on the first: false, first
    std::optional<SeekOutcome> missing;       // SeekName(first, missing name): false, end

    int Count() const { return static_cast<int>(keys.size()); }
    bool ReportsEndAt(int position) const { return position == reports_end_at.value_or(Count()); }
};

// A family of the host adapter, made by the context of its list: the entry at its end is the shared
// empty one.
inline CursorFamily HostFamily(const char* name, FIContext& context, std::vector<std::string> keys,
                               FIContext* empty = nullptr) {
    CursorFamily family;
    family.name = name;
    family.make = [&context] { return context.MakeCursor(kChildCursor); };
    if (empty) family.make_empty = [empty] { return empty->MakeCursor(kChildCursor); };
    family.keys = std::move(keys);
    family.entry_at_end = EntryAtEnd::kEmptyEntry;
    return family;
}

// One that walks a list of the host's: off the list it goes back to the first.
inline CursorFamily HostListFamily(const char* name, FIContext& context,
                                   std::vector<std::string> keys, FIContext* empty = nullptr) {
    CursorFamily family = HostFamily(name, context, std::move(keys), empty);
    const int last = family.Count() - 1;
    family.past_end = family.off_last = family.back_again = SeekOutcome{false, 0};
    family.to_end = SeekOutcome{true, last};
    family.to_last = SeekOutcome{true, last - 1};
    return family;
}

namespace cursor_harness {

// A cursor class of its own, with which no other compares.
class ForeignCursor final : public CountedFromZero<FICursorBase> {
 public:
    const void* TypeId() const override {
        static const char type_id = 0;
        return &type_id;
    }
    FICursorBase* Clone(bool) override {
        AddRef();
        return this;
    }
    bool Seek(int, int) override { return false; }
    bool SeekName(int, const char*) override { return false; }
    bool AtBegin() override { return true; }
    bool AtEnd() override { return true; }
    int Compare(FICursorPosition&) override { return kNotComparable; }
    void GetKey(FIValue& out) override { out.Clear(); }
    FIEntry* GetEntry() override { return EmptyEntry(); }
};

inline std::string KeyOf(FICursorBase& cursor) {
    FIValue key;
    cursor.GetKey(key);
    return key.IsNull() ? "(NULL)" : key.ToText();
}

inline Ref<FICursorBase> Make(const CursorFamily& family) {
    return Ref<FICursorBase>::Adopt(family.make());
}

inline Ref<FICursorBase> MakeAt(const CursorFamily& family, int index) {
    Ref<FICursorBase> cursor = Make(family);
    EXPECT_TRUE(cursor->Seek(kFromFirst, index)) << family.name << " Seek(first, " << index << ")";
    return cursor;
}

inline void ExpectAtEnd(const CursorFamily& family, FICursorBase& cursor, const std::string& what) {
    EXPECT_EQ(family.ReportsEndAt(family.Count()), cursor.AtEnd()) << family.name << " " << what;
    EXPECT_EQ("(NULL)", KeyOf(cursor)) << family.name << " " << what;
    Ref<FIEntry> entry = Ref<FIEntry>::Adopt(cursor.GetEntry());
    FIEntry* expected = family.entry_at_end == EntryAtEnd::kNull ? nullptr : EmptyEntry();
    EXPECT_EQ(expected, entry.Get()) << family.name << " " << what;
}

inline void ExpectAtElement(const CursorFamily& family, FICursorBase& cursor, int index,
                            const std::string& what) {
    EXPECT_EQ(family.ReportsEndAt(index), cursor.AtEnd()) << family.name << " " << what;
    EXPECT_EQ(index == 0 && family.begins_at_first, cursor.AtBegin()) << family.name << " " << what;
    EXPECT_EQ(family.keys[index], KeyOf(cursor)) << family.name << " " << what;
    Ref<FIEntry> entry = Ref<FIEntry>::Adopt(cursor.GetEntry());
    ASSERT_NE(nullptr, entry.Get()) << family.name << " " << what;
    FIValue name;
    entry->GetName(name);
    const auto& names = family.names.empty() ? family.keys : family.names;
    EXPECT_EQ(names[index], name.ToText()) << family.name << " " << what;
    EXPECT_FALSE(cursor.IsHidden()) << family.name << " " << what;
}

inline void ExpectOutcome(const CursorFamily& family, FICursorBase& cursor, bool result,
                          const SeekOutcome& expected, const std::string& what) {
    EXPECT_EQ(expected.result, result) << family.name << " " << what;
    if (!expected.position) return;
    if (*expected.position >= family.Count()) {
        ExpectAtEnd(family, cursor, what);
    } else {
        ExpectAtElement(family, cursor, *expected.position, what);
    }
}

inline void CheckSeek(const CursorFamily& family) {
    const int n = family.Count();
    if (family.new_position && n > 0) {
        ExpectAtElement(family, *Make(family), *family.new_position, "new cursor");
    }
    for (int i = 0; i < n; ++i) {
        Ref<FICursorBase> cursor = MakeAt(family, i);
        ExpectAtElement(family, *cursor, i, "Seek(first, " + std::to_string(i) + ")");
    }
    if (n == 0) return;
    Ref<FICursorBase> walker = MakeAt(family, 0);
    for (int i = 1; i < n; ++i) {
        EXPECT_TRUE(walker->Seek(kFromPresent, 1)) << family.name << " step to " << i;
        ExpectAtElement(family, *walker, i, "step forward to " + std::to_string(i));
    }
    for (int i = n - 2; i >= 0; --i) {
        EXPECT_TRUE(walker->Seek(kFromPresent, -1)) << family.name << " step back to " << i;
        ExpectAtElement(family, *walker, i, "step back to " + std::to_string(i));
    }
    EXPECT_TRUE(walker->Seek(kFromPresent, 0)) << family.name << " stay";
    ExpectAtElement(family, *walker, 0, "Seek(present, 0)");
}

inline void CheckSeekPastBounds(const CursorFamily& family) {
    const int n = family.Count();
    if (n == 0) return;
    struct Case {
        const char* what;
        int start;
        int origin;
        int delta;
        SeekOutcome expected;
    };
    const Case cases[] = {
        {"Seek(first, n)", 0, kFromFirst, n, family.past_end.value_or(SeekOutcome{false, n})},
        {"Seek(first, -1)", 0, kFromFirst, -1, family.before_first.value_or(SeekOutcome{false, 0})},
        {"Seek(end, 0)", 0, kFromEnd, 0, family.to_end.value_or(SeekOutcome{false, n})},
        {"Seek(end, -1)", 0, kFromEnd, -1, family.to_last.value_or(SeekOutcome{true, n - 1})},
        {"Seek(present, 1) on the last", n - 1, kFromPresent, 1,
         family.off_last.value_or(SeekOutcome{false, n})},
        {"Seek(present, -1) on the first", 0, kFromPresent, -1,
         family.off_first.value_or(SeekOutcome{false, 0})},
    };
    for (const Case& each : cases) {
        Ref<FICursorBase> cursor = MakeAt(family, each.start);
        const bool result = cursor->Seek(each.origin, each.delta);
        ExpectOutcome(family, *cursor, result, each.expected, each.what);
    }
    Ref<FICursorBase> cursor = MakeAt(family, n - 1);
    cursor->Seek(kFromPresent, 1);
    const bool result = cursor->Seek(kFromPresent, -1);
    ExpectOutcome(family, *cursor, result, family.back_again.value_or(SeekOutcome{true, n - 1}),
                  "Seek(present, -1) from past the last");
}

inline void CheckSeekName(const CursorFamily& family) {
    for (int i = 0; i < family.Count(); ++i) {
        const auto first = std::find(family.keys.begin(), family.keys.end(), family.keys[i]);
        const int expected = static_cast<int>(first - family.keys.begin());
        Ref<FICursorBase> cursor = MakeAt(family, i);
        EXPECT_TRUE(cursor->SeekName(kFromFirst, family.keys[i].c_str()))
            << family.name << " SeekName " << family.keys[i];
        ExpectAtElement(family, *cursor, expected, "SeekName " + family.keys[i]);
        if (!family.seeks_entries) continue;
        Ref<FIEntry> entry = Ref<FIEntry>::Adopt(MakeAt(family, i)->GetEntry());
        Ref<FICursorBase> by_value = MakeAt(family, 0);
        EXPECT_TRUE(by_value->SeekValue(kFromFirst, *entry))
            << family.name << " SeekValue " << family.keys[i];
        ExpectAtElement(family, *by_value, expected, "SeekValue " + family.keys[i]);
    }
    if (family.Count() == 0) return;
    Ref<FICursorBase> cursor = MakeAt(family, 0);
    const bool result = cursor->SeekName(kFromFirst, family.missing_name.c_str());
    ExpectOutcome(family, *cursor, result,
                  family.missing.value_or(SeekOutcome{false, family.Count()}),
                  "SeekName of a missing name");
}

inline void CheckCompare(const CursorFamily& family) {
    Ref<FICursorBase> foreign = Ref<FICursorBase>::Share(new ForeignCursor);
    for (int i = 0; i < family.Count(); ++i) {
        Ref<FICursorBase> one = MakeAt(family, i);
        EXPECT_EQ(0, one->Compare(*one)) << family.name << " with itself";
        EXPECT_EQ(kNotComparable, one->Compare(*foreign)) << family.name << " with another class";
        for (int j = 0; j < family.Count(); ++j) {
            Ref<FICursorBase> other = MakeAt(family, j);
            EXPECT_EQ(one->TypeId(), other->TypeId()) << family.name;
            const int result = one->Compare(*other);
            if (family.ordered) {
                EXPECT_EQ((i > j) - (i < j), (result > 0) - (result < 0))
                    << family.name << " Compare " << i << " with " << j;
            } else {
                EXPECT_EQ(i == j, result == 0) << family.name << " Compare " << i << " with " << j;
            }
        }
    }
}

inline void CheckClone(const CursorFamily& family) {
    for (int i = 0; i < family.Count(); ++i) {
        Ref<FICursorBase> cursor = MakeAt(family, i);
        const int before = cursor->AddRef();
        cursor->Release();
        Ref<FICursorBase> shallow = Ref<FICursorBase>::Adopt(cursor->Clone(false));
        EXPECT_EQ(cursor.Get(), shallow.Get()) << family.name << " shallow clone";
        EXPECT_EQ(before + 1, cursor->AddRef()) << family.name << " count after a shallow clone";
        cursor->Release();

        Ref<FICursorBase> deep = Ref<FICursorBase>::Adopt(cursor->Clone(true));
        EXPECT_NE(cursor.Get(), deep.Get()) << family.name << " deep clone";
        EXPECT_EQ(2, deep->AddRef()) << family.name << " a deep clone is counted once";
        deep->Release();
        ExpectAtElement(family, *deep, i, "deep clone");
        EXPECT_EQ(0, cursor->Compare(*deep)) << family.name << " deep clone";
        deep->Seek(kFromFirst, family.Count() - 1 - i);
        ExpectAtElement(family, *cursor, i, "original after its clone moved");
    }
}

inline void CheckEmptyList(const CursorFamily& family) {
    if (!family.make_empty) return;
    Ref<FICursorBase> cursor = Ref<FICursorBase>::Adopt(family.make_empty());
    for (int origin : {kFromFirst, kFromPresent, kFromEnd}) {
        for (int delta : {-1, 0, 1}) {
            EXPECT_FALSE(cursor->Seek(origin, delta))
                << family.name << " empty, Seek(" << origin << ", " << delta << ")";
        }
    }
    EXPECT_FALSE(cursor->SeekName(kFromFirst, family.missing_name.c_str())) << family.name;
    EXPECT_FALSE(cursor->SeekValue(kFromFirst, *EmptyEntry())) << family.name;
    EXPECT_TRUE(cursor->AtEnd()) << family.name << " empty";
    EXPECT_EQ("(NULL)", KeyOf(*cursor)) << family.name << " empty";
}

}  // namespace cursor_harness

inline void CheckCursorFamily(const CursorFamily& family) {
    SCOPED_TRACE("cursor family " + family.name);
    cursor_harness::CheckSeek(family);
    cursor_harness::CheckSeekPastBounds(family);
    cursor_harness::CheckSeekName(family);
    cursor_harness::CheckCompare(family);
    cursor_harness::CheckClone(family);
    cursor_harness::CheckEmptyList(family);
}

}  // namespace fixtop
