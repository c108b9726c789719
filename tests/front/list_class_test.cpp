// SPDX-License-Identifier: Apache-2.0
// Lists that a map reaches by a path, of owners whose class a function has named: a unit operation
// or a reaction. Their elements are of the class of the list and not of that of the owner.

#include <gtest/gtest.h>

#include <string>

#include "open_module.h"

namespace fixtop {

namespace {

using Iterator = Ref<FIIteratorBase>;

std::string ReadText(FIIteratorBase& it, const char* name) {
    FIValue value;
    it.GetAttribute(FIValue(name), value);
    return value.IsNull() ? "(NULL)" : value.ToText();
}

std::string NameOf(FIIteratorBase& it) {
    FIValue name;
    it.GetName(name);
    return name.ToText();
}

struct ListRow {
    const char* unit;   // or reaction, whose class is named by a function
    const char* owner;  // below it
    const char* list;
    const char* element_class;
    // An attribute of that class that every element shows.
    const char* attribute;
};

const ListRow kLists[] = {
    {"T-100", "", "Section", "QSIColumnSection", "SectionFunction"},
    {"T-100", "", "SideColumn", "QSISideColumn", "DrawStage"},
    {"T-100", "", "PumpAround", "QSIPumpAround", "ReturnStage"},
    {"T-100", "", "Specification", "QSIColumnSpecification", "SpecificationType"},
    {"T-100", "", "Duty", "QSIColumnDuty", "StageNumber"},
    {"T-100", ".Stage#1.VaporFrom", "Composition", "QSISimpleComposition", "MoleFraction"},
    {"T-100", ".Section.Tray", "Panel", "QSITrayPanel", "FlowPathLength"},
    {"T-100", ".Condenser.Decanter", "Return", "QSIDecanterReturn", "ReturnFraction"},
    {"T-100", ".Feed.Fluid", "Composition", "QSISimpleComposition", "MoleFraction"},
    {"MIX-100", "", "MaterialFeed", "QSIMaterialPort", "PortName"},
    {"MIX-100", "", "MaterialProduct", "QSIMaterialPort", "PortName"},
    {"E-100", "", "EnergyProduct", "QSIEnergyPort", "PortName"},
    {"K-100", "", "EnergyFeed", "QSIEnergyPort", "PortName"},
    {"K-100", ".CurveSet", "Curve", "QSIComprPerformanceCurve", "Speed"},
    {"EX-100", ".CurveSet", "Curve", "QSIComprPerformanceCurve", "Speed"},
    {"E-101", "", "Nozzle", "QSIExchangeNozzle", "Diameter"},
    {"E-101", "", "Zone", "QSIExchangeZone", "UA"},
    {"CRV-100", ".FeedFluid", "Composition", "QSISimpleComposition", "MoleFraction"},
    {"CRV-100", ".VesselFluid.Composition", "Component", "QSIComponentProperties", "MoleFraction"},
    {"GBR-100", "", "Formula", "QSIGibbsReactorFormula", "ChemicalFormula"},
    {"Reforming", "", "Reactant", "QSIReactant", "StoichiometricCoefficient"},
    {"Shift", "", "EquilibriumVsTemperature", "QSIEquilibriumVsTemperature", "Temperature"},
};

class ListByPath : public NeutralModule {
 protected:
    void SetUp() override {
        NeutralModule::SetUp();
        OpenNeutral("demo");
    }
    Iterator At(const std::string& path) {
        auto it = Iterator::Adopt(FixtopMakeIterator(root_.Get(), false));
        EXPECT_TRUE(it->SeekPath(FIValue(path.c_str()))) << path;
        return it;
    }
    // A unit operation, or the reaction of that name.
    std::string PathOf(const std::string& unit) {
        const std::string named = "[Name=\"" + unit + "\"]";
        auto it = Iterator::Adopt(FixtopMakeIterator(root_.Get(), false));
        const std::string path = "Flowsheet.UnitOperation" + named;
        return it->SeekPath(FIValue(path.c_str())) ? path : "ReactionPackage.Reaction" + named;
    }
};

TEST_F(ListByPath, below_a_unit_of_a_named_class_shows_its_own_class) {
    for (const ListRow& row : kLists) {
        const std::string unit = PathOf(row.unit);
        const std::string class_of_unit = ReadText(*At(unit), "type");
        EXPECT_NE("Object(QSIUnitOperation)", class_of_unit) << unit;
        EXPECT_NE("Object(QSIReaction)", class_of_unit) << unit;
        const std::string list = unit + row.owner + "." + row.list;
        const std::string shown = std::string("Object(") + row.element_class + ")";
        int elements = 0;
        const Iterator it = At(list);
        do {
            if (NameOf(*it) != row.list) continue;
            ++elements;
            EXPECT_EQ(shown, ReadText(*it, "type")) << list;
            EXPECT_EQ(row.element_class, ReadText(*it, "container_type")) << list;
            EXPECT_TRUE(Iterator::Adopt(it->Copy())->SeekChild(row.attribute)) << list;
        } while (it->Next());
        EXPECT_LT(0, elements) << list;
    }
}

}  // namespace

}  // namespace fixtop
