// SPDX-License-Identifier: Apache-2.0
#include "framework/nodes/living_of.h"

#include <gtest/gtest.h>

#include <array>
#include <memory>
#include <utility>
#include <vector>

#include "framework/nodes/counted.h"
#include "framework/nodes/empties.h"

namespace fixtop {

namespace {

class BareEntry : public CountedFromZero<FIEntry> {
 public:
    void GetName(FIValue& out) override { out.Clear(); }
    void GetAttribute(const FIValue&, FIValue& out) override { out.Clear(); }
    FIAttributeSource* GetAttributeSource() override { return EmptyEntry()->GetAttributeSource(); }
    FIContext* GetContext() override { return EmptyContext(); }
};

// Classes of entries that differ in where their node lies, and as many that have none.
template <int kSize>
struct Ballast {
    virtual ~Ballast() = default;
    std::array<long, kSize + 1> bytes{};
};
template <int kSize>
class LivingEntry final : public BareEntry, public Ballast<kSize>, public LivingNode {
 public:
    Liveness* Life() const override { return nullptr; }
    bool IsGone() const override { return false; }
    std::uint64_t ObjectNumber() const override { return kSize; }
};
template <int kSize>
class StoneEntry final : public BareEntry, public Ballast<kSize> {};

using Entries = std::vector<Ref<FIEntry>>;

template <int... kSizes>
Entries OfAllSizes(std::integer_sequence<int, kSizes...>) {
    Entries entries;
    (entries.push_back(Ref<FIEntry>::Share(new LivingEntry<kSizes>)), ...);
    (entries.push_back(Ref<FIEntry>::Share(new StoneEntry<kSizes>)), ...);
    return entries;
}

// More classes than are remembered, in turns and again.
TEST(LivingOf, is_the_cast_of_every_class) {
    const Entries entries = OfAllSizes(std::make_integer_sequence<int, 40>());
    for (int round = 0; round < 3; ++round) {
        for (std::size_t i = 0; i < entries.size(); ++i) {
            FIEntry& entry = *entries[i];
            ASSERT_EQ(dynamic_cast<const LivingNode*>(&entry), LivingOf(entry)) << i;
            ASSERT_EQ(LivingOf(entry), LivingOf(entry)) << i;
            ASSERT_EQ(i < entries.size() / 2, LivingOf(entry) != nullptr) << i;
            if (const LivingNode* living = LivingOf(entry)) {
                EXPECT_EQ(i, living->ObjectNumber());
            }
        }
    }
}

TEST(LivingOf, tells_entries_of_one_class_apart) {
    const Ref<FIEntry> one = Ref<FIEntry>::Share(new LivingEntry<1>);
    const Ref<FIEntry> other = Ref<FIEntry>::Share(new LivingEntry<1>);
    EXPECT_NE(LivingOf(*one), LivingOf(*other));
    EXPECT_EQ(dynamic_cast<const LivingNode*>(other.Get()), LivingOf(*other));
}

TEST(LivingOf, is_null_for_the_empty_entry) {
    EXPECT_EQ(nullptr, LivingOf(*EmptyEntry()));
    EXPECT_EQ(nullptr, LivingOf(*EmptyEntry()));
}

}  // namespace

}  // namespace fixtop
