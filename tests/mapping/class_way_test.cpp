// SPDX-License-Identifier: Apache-2.0
// What is remembered of the ways through the class library.

#include "mapping/nodes/class_way.h"

#include <gtest/gtest.h>

#include "mapping/translators/scalar_translators.h"
#include "model/class_library.h"

namespace fixtop {

namespace {

class Ways : public testing::Test {
 protected:
    ClassWay::Request RequestOf(BranchRequest branch, bool has_secondary = false) const {
        return {&attribute_, branch, true, has_secondary};
    }
    static FacesChoice ChoiceOf(const CCDMTranslator& translator) {
        FacesChoice choice;
        choice.primary.plain.translator = &translator;
        return choice;
    }

    CCDMClassLibrary library_;
    CCDMClass& class_{*library_.GetOrCreateClass("Vessel")};
    CCDMClass& other_{*library_.GetOrCreateClass("Reactor")};
    CCDMAttribute& attribute_{*class_.GetOrCreateAttribute("Heat")};
    CCDMMapTranslator one_;
    CCDMMapTranslator two_;
};

TEST_F(Ways, are_told_apart_by_attribute_and_class) {
    ClassWay top;
    ClassWay* vessel = top.Below(attribute_, class_);
    ASSERT_NE(vessel, nullptr);
    EXPECT_EQ(top.Below(attribute_, class_), vessel);
    EXPECT_NE(top.Below(attribute_, other_), vessel);
    EXPECT_NE(top.Below(*other_.GetOrCreateAttribute("Heat"), class_), vessel);
    EXPECT_NE(vessel->Below(attribute_, class_), vessel);
}

TEST_F(Ways, keep_a_choice_for_its_request_alone) {
    ClassWay top;
    const auto found = [&](const ClassWay& way, const ClassWay::Request& request) {
        const FacesChoice* choice = way.Find(request);
        return choice ? choice->primary.plain.translator : nullptr;
    };
    top.Keep(RequestOf(BranchRequest::kBoth), ChoiceOf(one_));
    top.Keep(RequestOf(BranchRequest::kBoth, true), ChoiceOf(two_));
    EXPECT_EQ(found(top, RequestOf(BranchRequest::kBoth)), &one_);
    EXPECT_EQ(found(top, RequestOf(BranchRequest::kBoth, true)), &two_);
    EXPECT_EQ(top.Find(RequestOf(BranchRequest::kCalc)), nullptr);
    EXPECT_EQ(top.Below(attribute_, class_)->Find(RequestOf(BranchRequest::kBoth)), nullptr);
}

TEST_F(Ways, of_a_tree_without_end_are_remembered_up_to_a_limit) {
    ClassWay top;
    ClassWay* way = &top;
    std::size_t known = 0;
    for (; way; ++known) way = way->Below(attribute_, class_);
    EXPECT_EQ(known, ClassWay::kMost);
    EXPECT_EQ(top.Below(attribute_, other_), nullptr) << "one limit for the whole tree";
    EXPECT_NE(top.Below(attribute_, class_), nullptr) << "what is known stays known";
}

}  // namespace

}  // namespace fixtop
