// SPDX-License-Identifier: Apache-2.0
// The specification of a live case's basis, as a client fills it.

#include <gtest/gtest.h>

#include "case_builder.h"
#include "casehost/case_host.h"
#include "fixtop/host/array_set.h"
#include "live/case.h"
#include "support/host_script.h"

namespace fixtop::casehost {
namespace {

using test::Element;

using Kind = BasisElement::Kind;

class Basis : public ::testing::Test {
 protected:
    ~Basis() override { Drop(); }

    void Open(std::vector<BasisElement> elements, unsigned unit_set = 0) {
        CaseData data = test::SmallCase();
        data.basis = std::move(elements);
        data.unit_set = unit_set;
        opened_ = host_.Open(data).opened;
        Fill();
    }
    void Fill() {
        Drop();
        host::Viewable* basis = opened_->Basis();
        info_ = host_.Services().NewSpecInfo();
        info_->SetOwner(basis);
        ASSERT_TRUE(basis->GetSpecSource()->FillSpecInfo(info_));
    }
    void Drop() {
        if (info_) host_.Services().DeleteSpecInfo(info_);
        info_ = nullptr;
    }
    const host::CSpecElement* Find(const char* tag) { return Find(*info_, tag); }
    static const host::CSpecElement* Find(const host::CSpecInfo& info, const char* tag) {
        host::TypedListIterator<host::CSpecElement> elements(info.Elements());
        for (auto* each = elements.Reset(); each; each = elements.Next()) {
            if (each->tag == tag) return each;
        }
        return nullptr;
    }
    host::Viewable* Object(const char* name) { return opened_->FindByPath(name, nullptr)->View(); }

    CaseHost host_;
    std::shared_ptr<HostScript> script_ = HostScript::Over(host_);
    Case* opened_ = nullptr;
    host::CSpecInfo* info_ = nullptr;
};

TEST_F(Basis, EachKindFillsItsOwnFields) {
    BasisElement group = Element("group", Kind::group);
    group.elements = {Element("inside", Kind::number, 7)};
    BasisElement table = Element("table", Kind::table);
    table.columns = {{"Kij", {1, 2}, {}}, {kObjectColumn, {}, {"Feed", ""}}};
    Open({group, table, Element("number", Kind::number, 3),
          Element("words", Kind::text, kEmpty, "w"), Element("own", Kind::custom, 4, "c"),
          Element("status", Kind::status), Element("document", Kind::document, kEmpty, "<x/>"),
          Element("object", Kind::object, kEmpty, "Feed"), Element("variable", Kind::variable, 5)});
    ASSERT_NE(Find("group")->child, nullptr);
    EXPECT_EQ(Find("group")->child->CollectionCount(), 1u);
    EXPECT_EQ(Find(*Find("group")->child, "inside")->number, 7);
    const host::ArraySetBlock& block = *Find("table")->array_set;
    EXPECT_EQ(block.source_names[0].Str(), "Kij");
    EXPECT_EQ(block.source_numbers[0][1], 2);
    EXPECT_EQ(block.source_objects[0][0], Object("Feed"));
    EXPECT_EQ(block.source_objects[0][1], nullptr);
    EXPECT_EQ(Find("number")->number, 3);
    EXPECT_EQ(Find("words")->value_text.Str(), "w");
    EXPECT_TRUE(Find("own")->custom);
    EXPECT_EQ(Find("own")->number, 4);
    EXPECT_EQ(Find("own")->value_text.Str(), "c");
    EXPECT_NE(Find("status")->status_holder, nullptr);
    EXPECT_EQ(Find("document")->extra_text.Str(), "<x/>");
    EXPECT_TRUE(Find("document")->value_text.IsEmpty());
    EXPECT_EQ(Find("object")->attached_object, Object("Feed"));
    ASSERT_NE(Find("variable")->process_variable, nullptr);
    EXPECT_EQ(Find("variable")->process_variable->value, 5);
    for (const char* tag : {"number", "words", "own", "status", "object", "variable"}) {
        const host::CSpecElement& each = *Find(tag);
        EXPECT_EQ(each.process_variable != nullptr, std::string(tag) == "variable") << tag;
        EXPECT_EQ(each.attached_object != nullptr, std::string(tag) == "object") << tag;
        EXPECT_EQ(each.status_holder != nullptr, std::string(tag) == "status") << tag;
        EXPECT_EQ(each.custom, std::string(tag) == "own") << tag;
    }
}

TEST_F(Basis, BitsOfAVariableTellItsState) {
    const auto make = [](const char* tag, VariableState state, bool adjustable, double number) {
        BasisElement element = Element(tag, Kind::variable, number);
        element.state = state;
        element.adjustable = adjustable;
        return element;
    };
    Open({make("given", VariableState::specified, false, 1),
          make("found", VariableState::calculated, false, 1),
          make("tuned", VariableState::specified, true, 1),
          make("unset", VariableState::missing, false, kEmpty)});
    const std::pair<const char*, unsigned> cases[] = {
        {"given", 0x14}, {"found", 0x10}, {"tuned", 0x15}, {"unset", 0x00}};
    for (const auto& [tag, bits] : cases) {
        EXPECT_EQ(Find(tag)->process_variable->status_bits, bits) << tag;
    }
}

TEST_F(Basis, StoredVariablesStayInTheCase) {
    BasisElement fixed = Element("fixed", Kind::variable, 1);
    fixed.fixed = true;
    BasisElement group = Element("group", Kind::group);
    group.elements = {Element("v", Kind::variable)};
    Open({group, fixed});
    EXPECT_FALSE(Find("fixed")->process_variable->CanSpecify());
    host::ProcessVariable* variable = Find(*Find("group")->child, "v")->process_variable;
    EXPECT_TRUE(variable->CanSpecify());
    variable->SetSpecified(12);
    Fill();
    variable = Find(*Find("group")->child, "v")->process_variable;
    EXPECT_EQ(variable->value, 12);
    EXPECT_EQ(variable->status_bits, 0x14u);
    BasisElement stored = opened_->ToData().basis[0].elements[0];
    EXPECT_EQ(stored.number, 12);
    EXPECT_EQ(stored.state, VariableState::specified);
    variable->SetCalculated(13);
    stored = opened_->ToData().basis[0].elements[0];
    EXPECT_EQ(stored.number, 13);
    EXPECT_EQ(stored.state, VariableState::calculated);
    variable->SetSpecified(kEmpty);
    EXPECT_EQ(variable->status_bits, 0u);
    EXPECT_EQ(opened_->ToData().basis[0].elements[0].state, VariableState::missing);
}

TEST_F(Basis, AStoreMakesAllCalculatedValuesStale) {
    Open({Element("v", Kind::variable, 1)});
    Node* hot = opened_->FindByPath("Hot", nullptr);
    const auto& temperature = hot->GetShape()->ByName(names::kTemperature)->description;
    EXPECT_EQ(hot->ReadReal(temperature), 60);
    Find("v")->process_variable->SetSpecified(2);
    EXPECT_EQ(hot->ReadReal(temperature), kEmpty);
    EXPECT_TRUE(opened_->MainSolver()->NeedsToRun());
}

TEST_F(Basis, AStoreOfWhatStandsThereMakesNothingStale) {
    BasisElement given = Element("v", Kind::variable, 1);
    given.state = VariableState::specified;
    Open({given, Element("open", Kind::variable)});
    Find("v")->process_variable->SetSpecified(1);
    Find("open")->process_variable->SetSpecified(kEmpty);
    EXPECT_FALSE(opened_->FindByPath("Hot", nullptr)->IsStale());
    EXPECT_FALSE(opened_->MainSolver()->NeedsToRun());
    Find("v")->process_variable->SetCalculated(1);
    EXPECT_EQ(Find("v")->process_variable->status_bits, 0x10u) << "it is no longer given";
    EXPECT_TRUE(opened_->FindByPath("Hot", nullptr)->IsStale());
}

TEST_F(Basis, ARefusedStoreChangesNothing) {
    Open({Element("v", Kind::variable, 1)});
    script_->RefuseStore(1);
    Find("v")->process_variable->SetSpecified(2);
    EXPECT_EQ(Find("v")->process_variable->value, 1);
    Find("v")->process_variable->SetSpecified(3);
    EXPECT_EQ(Find("v")->process_variable->value, 3);
}

TEST_F(Basis, ObjectsAreFollowedWhenTheyAreRenamedOrDeleted) {
    BasisElement table = Element("table", Kind::table);
    table.columns = {{kObjectColumn, {}, {"/Feed", "/Other"}}};
    Open({Element("object", Kind::object, kEmpty, "Feed"), table});
    ASSERT_TRUE(opened_->Rename(Object("Feed"), "Gas"));
    EXPECT_EQ(opened_->ToData().basis[0].text, "/Gas");
    EXPECT_EQ(opened_->ToData().basis[1].columns[0].objects,
              (std::vector<std::string>{"/Gas", "/Other"}));
    ASSERT_TRUE(opened_->Delete(Object("Gas")));
    EXPECT_EQ(opened_->ToData().basis[0].text, "");
    opened_->PurgeDeleted();
    Fill();
    EXPECT_EQ(Find("object")->attached_object, nullptr);
    EXPECT_EQ(Find("table")->array_set->source_objects[0][0], nullptr);
    EXPECT_EQ(Find("table")->array_set->source_objects[0][1], Object("Other"));
}

TEST_F(Basis, PathsWithoutAnObjectAreTold) {
    Open({Element("object", Kind::object, kEmpty, "Gone")});
    ASSERT_EQ(opened_->Problems().size(), 1u);
    EXPECT_EQ(opened_->Problems()[0].Text(), "Basis: object: object \"Gone\" names no object");
    EXPECT_EQ(Find("object")->attached_object, nullptr);
}

TEST_F(Basis, AddressesTellTheUnit) {
    BasisElement number = Element("t", Kind::number, 3);
    number.quantity = "Temperature";
    BasisElement group = Element("group", Kind::group);
    group.elements = {Element("plain", Kind::number, 1), number};
    Open({group, Element("last", Kind::text, kEmpty, "x")});
    const host::CSpecElement& temperature = *Find(*Find("group")->child, "t");
    EXPECT_EQ(temperature.moniker.Str(), ":Spec.2");
    const host::VarDescription description(temperature.moniker.CStr(), 0);
    host::VariableInfo* known = host_.Services().pVarTypes()->FindVarInfo(description.Type());
    ASSERT_NE(known, nullptr);
    const host::VarType type = host_.Services().GetUnitConvTypeFromVarType(known->UnitLookupType());
    EXPECT_STREQ(host_.Services().def_unit(type, 0)->name, "C");
    for (const char* other : {":Spec.1", ":Spec.3", ":Spec.99", ":Spec.", ":Spec.2x"}) {
        host::VarDescription::Facts facts;
        EXPECT_FALSE(opened_->DescribeMoniker(other, facts)) << other;
    }
}

// 101.325 kPa are 14.6959487755 psia, 25 C are 77 F or 298.15 K.
TEST_F(Basis, NumbersAreToldInTheDefaultUnits) {
    BasisElement pressure = Element("p", Kind::number, 101.325);
    pressure.quantity = "Pressure";
    BasisElement temperature = Element("t", Kind::variable, 25);
    temperature.quantity = "Temperature";
    BasisElement unset = Element("unset", Kind::variable);
    unset.quantity = "Temperature";
    const std::vector<BasisElement> elements = {pressure, temperature, unset,
                                                Element("plain", Kind::number, 3)};
    const std::pair<double, double> cases[] = {
        {101.325, 25}, {101325, 298.15}, {14.6959487755, 77}};
    for (unsigned set = 0; set < 3; ++set) {
        Open(elements, set);
        EXPECT_NEAR(Find("p")->number, cases[set].first, 1e-9) << set;
        EXPECT_NEAR(Find("t")->process_variable->value, cases[set].second, 1e-9) << set;
        EXPECT_EQ(Find("unset")->process_variable->value, kEmpty) << set;
        EXPECT_EQ(Find("plain")->number, 3) << set;
        EXPECT_EQ(opened_->ToData().basis[0].number, 101.325) << "in the file as before";
        EXPECT_EQ(opened_->ToData().basis[1].number, 25);
    }
}

// 212 F are 100 C, 50 F are 10 C.
TEST_F(Basis, StoresAreInTheDefaultUnits) {
    BasisElement temperature = Element("t", Kind::variable, 25);
    temperature.quantity = "Temperature";
    Open({temperature}, 2);
    host::ProcessVariable* variable = Find("t")->process_variable;
    variable->SetSpecified(212);
    EXPECT_NEAR(variable->value, 212, 1e-9);
    EXPECT_NEAR(opened_->ToData().basis[0].number, 100, 1e-9);
    variable->SetCalculated(50);
    EXPECT_NEAR(opened_->ToData().basis[0].number, 10, 1e-9);
    variable->SetSpecified(kEmpty);
    EXPECT_EQ(variable->value, kEmpty);
    EXPECT_EQ(opened_->ToData().basis[0].number, kEmpty);
}

// Both cases are shown in the units of the active one, whose set labels are taken from.
TEST_F(Basis, NumbersOfACaseInTheBackgroundAreToldInTheUnitsInUse) {
    BasisElement temperature = Element("t", Kind::variable, 25);
    temperature.quantity = "Temperature";
    Open({temperature}, 2);
    host_.Open(test::SmallCase());
    Fill();
    EXPECT_EQ(Find("t")->process_variable->value, 25);
    host_.Activate(*opened_);
    Fill();
    EXPECT_NEAR(Find("t")->process_variable->value, 77, 1e-9);
}

TEST_F(Basis, ACaseWithoutAnythingHasNoSpecification) {
    CaseData data;
    opened_ = host_.Open(data).opened;
    host::CSpecInfo* info = host_.Services().NewSpecInfo();
    EXPECT_FALSE(opened_->Basis()->GetSpecSource()->FillSpecInfo(info));
    host_.Services().DeleteSpecInfo(info);
}

}  // namespace
}  // namespace fixtop::casehost
