// SPDX-License-Identifier: Apache-2.0
// Small flowsheets with what solved ones rarely have: failed objects, empty numbers, given duties.

#include <gtest/gtest.h>

#include "case_reading.h"
#include "casehost/importer.h"

namespace fixtop::casehost::test {

namespace {

std::unique_ptr<CaseData> Read(const std::string& xml) {
    ReadResult result = ReadDwxmzBytes(ZipOf(xml), "folder/small.dwxmz");
    EXPECT_NE(result.data, nullptr) << Lines(result);
    return result.data ? std::move(result.data) : std::make_unique<CaseData>();
}

double NumberOf(const CaseData& data, const char* object, const char* name,
                const char* label = "") {
    const ValueData* value = FindValue(FindObject(data, object), name, label);
    EXPECT_NE(value, nullptr) << object << " " << name << " " << label;
    return value ? value->number : 0.0;
}

TEST(SmallFlowsheetFile, HasCaseNamesAndCompounds) {
    const auto data = Read(SmallFlowsheet());
    EXPECT_EQ(data->name, "Small");
    EXPECT_EQ(data->property_package, "Ideal");
    ASSERT_EQ(data->compounds.size(), 2u);
    EXPECT_EQ(data->compounds[0].formula, "AH");
    EXPECT_DOUBLE_EQ(data->compounds[0].critical_pressure_kPa, 5000);
    EXPECT_EQ(data->compounds[0].cp, (std::vector<double>{30, 0.025, 0, 0, 0}));
    EXPECT_EQ(data->compounds[1].critical_pressure_kPa, kEmpty);
    EXPECT_TRUE(data->compounds[1].cp.empty());
}

TEST(SmallFlowsheetFile, WithoutANameIsCalledAfterItsFile) {
    const auto data = Read(SmallFlowsheetWith("<SimulationName>Small</SimulationName>", ""));
    EXPECT_EQ(data->name, "small");
}

TEST(SmallFlowsheetFile, ListsObjectsInTheOrderOfTheFile) {
    const auto data = Read(SmallFlowsheet());
    std::vector<std::string> names, types;
    for (const ObjectData& object : data->main.objects) {
        names.push_back(object.name);
        types.push_back(object.type);
    }
    EXPECT_EQ(names, (std::vector<std::string>{"feed", "H", "product", "Q"}));
    EXPECT_EQ(types, (std::vector<std::string>{"MaterialStreamObject", "HeaterOpObject",
                                               "MaterialStreamObject", "EnergyStreamObject"}));
}

TEST(SmallFlowsheetFile, PortsComeFromOutletsWithTheirPositions) {
    const auto data = Read(SmallFlowsheet());
    using Role = PortData::Role;
    EXPECT_EQ(FindObject(*data, "H")->ports, (std::vector<PortData>{{Role::feed, 0, "feed"},
                                                                    {Role::product, 1, "product"},
                                                                    {Role::energy_in, 1, "Q"}}));
    EXPECT_TRUE(FindObject(*data, "feed")->ports.empty());
}

TEST(SmallFlowsheetFile, NumbersAreInInternalUnits) {
    const auto data = Read(SmallFlowsheet());
    EXPECT_NEAR(NumberOf(*data, "feed", "Temperature"), 26.85, 1e-12);
    EXPECT_DOUBLE_EQ(NumberOf(*data, "feed", "Pressure"), 101.325);
    EXPECT_DOUBLE_EQ(NumberOf(*data, "feed", "Molar Flow"), 36);
    EXPECT_DOUBLE_EQ(NumberOf(*data, "feed", "Mass Flow"), 1800);
    EXPECT_DOUBLE_EQ(NumberOf(*data, "H", "Duty"), 45000);
    EXPECT_DOUBLE_EQ(NumberOf(*data, "H", "Pressure Drop"), 1);
    EXPECT_NEAR(NumberOf(*data, "H", "Product Temperature"), 76.85, 1e-12);
    EXPECT_DOUBLE_EQ(NumberOf(*data, "H", "Efficiency"), 90);
    EXPECT_DOUBLE_EQ(NumberOf(*data, "Q", "Heat Flow"), 45000);
}

TEST(SmallFlowsheetFile, CompositionIsTheHostsVariable501) {
    const auto data = Read(SmallFlowsheet());
    const VariableSpec& spec = *FindVariable(FindObject(*data, "feed"), "Comp Mole Frac")->spec;
    EXPECT_EQ(spec.number, 501);
    EXPECT_EQ(spec.variable_type, 9);
    ASSERT_EQ(spec.dimensions.size(), 1u);
    EXPECT_EQ(spec.dimensions[0].naming, ElementNaming::text);
    EXPECT_EQ(spec.dimensions[0].labels, (std::vector<std::string>{"A", "B"}));
    EXPECT_EQ(NumberOf(*data, "feed", "Comp Mole Frac", "B"), 0.75);
}

TEST(SmallFlowsheetFile, EqualDescriptionsAreShared) {
    const auto data = Read(SmallFlowsheet());
    EXPECT_EQ(FindVariable(FindObject(*data, "feed"), "Comp Mole Frac")->spec,
              FindVariable(FindObject(*data, "product"), "Comp Mole Frac")->spec);
}

TEST(SmallFlowsheetFile, OnlyPhasesWithAFractionExist) {
    const auto data = Read(SmallFlowsheet());
    const VariableData& x = *FindVariable(FindObject(*data, "feed"), "Phase Comp Mole Frac");
    ASSERT_EQ(x.spec->dimensions.size(), 2u);
    EXPECT_EQ(x.spec->dimensions[0].labels,
              (std::vector<std::string>{"Vapour Phase", "Total Liquid Phase", "Liquid Phase"}));
    EXPECT_EQ(x.values[0 * 2 + 1].number, 0.65);
    EXPECT_EQ(x.values[2 * 2 + 0].number, 0.1);
    EXPECT_EQ(NumberOf(*data, "feed", "Phase Mass Density", "Vapour Phase"), 2);
    EXPECT_EQ(NumberOf(*data, "feed", "Phase Fraction", "Total Liquid Phase"), 0.4);
    EXPECT_EQ(NumberOf(*data, "feed", "Vapour Fraction"), 0.6);
}

// The fraction of the vapour, and what becomes of it and of the phases.
struct FractionCase {
    const char* vapour;
    const char* liquid;
    double vapour_fraction;
    std::size_t phases;
};

TEST(SmallFlowsheetFile, PhaseFractionsDecideWhatExists) {
    const FractionCase cases[] = {
        {"<molarfraction>1</molarfraction>", "<molarfraction>0</molarfraction>", 1, 1},
        {"", "<molarfraction>1</molarfraction>", 0, 2},
        {"<molarfraction>NaN</molarfraction>", "<molarfraction>1</molarfraction>", 0, 2},
        {"", "", kEmpty, 0},
        {"", "<molarfraction>0</molarfraction>", kEmpty, 0},
        {"<molarfraction>Infinity</molarfraction>", "", kEmpty, 0},
    };
    for (const FractionCase& expected : cases) {
        SCOPED_TRACE(std::string(expected.vapour) + expected.liquid);
        std::string xml = SmallFlowsheet();
        const std::string liquid = "<molarfraction>0.4</molarfraction>";
        const std::string vapour = "<molarfraction>0.6</molarfraction>";
        for (int i = 0; i < 2; ++i) xml.replace(xml.find(liquid), liquid.size(), expected.liquid);
        xml.replace(xml.find(vapour), vapour.size(), expected.vapour);
        const auto data = Read(xml);
        EXPECT_EQ(NumberOf(*data, "feed", "Vapour Fraction"), expected.vapour_fraction);
        const VariableData* fractions = FindVariable(FindObject(*data, "feed"), "Phase Fraction");
        ASSERT_NE(fractions, nullptr);
        EXPECT_EQ(fractions->values.size(), expected.phases);
    }
}

// The ratio of vapour to liquid means something in streams of two phases alone.
TEST(SmallFlowsheetFile, KValuesNeedBothPhases) {
    const struct {
        const char* vapour;
        const char* liquid;
        double k;
    } cases[] = {{"0.6", "0.4", 2.5}, {"1", "0", kEmpty}, {"0", "1", kEmpty}};
    for (const auto& expected : cases) {
        SCOPED_TRACE(std::string(expected.vapour) + " and " + expected.liquid);
        std::string xml =
            SmallFlowsheetWith("<Name>A</Name>", "<Name>A</Name><Kvalue>2.5</Kvalue>");
        for (int phase = 0; phase < 3; ++phase) {
            const std::string fraction = phase == 1 ? "0.6" : "0.4";
            const std::string place = "<molarfraction>" + fraction + "</molarfraction><density>";
            const std::string value = phase == 1 ? expected.vapour : expected.liquid;
            xml.replace(xml.find(place), place.size(),
                        "<molarfraction>" + value + "</molarfraction><density >");
        }
        const auto data = Read(xml);
        EXPECT_EQ(NumberOf(*data, "feed", "Comp K Value - Mixed Liquid", "A"), expected.k);
        EXPECT_EQ(NumberOf(*data, "feed", "Comp K Value - Mixed Liquid", "B"), kEmpty);
    }
}

TEST(SmallFlowsheetFile, NumbersWithoutAValueAreMissing) {
    for (const char* word : {"NaN", "Infinity", "-Infinity"}) {
        const auto data = Read(SmallFlowsheetWith(">101325<", std::string(">") + word + "<"));
        const ValueData* pressure = FindValue(FindObject(*data, "feed"), "Pressure");
        EXPECT_EQ(pressure->number, kEmpty) << word;
        EXPECT_EQ(pressure->state, VariableState::missing) << word;
    }
    const auto data = Read(SmallFlowsheetWith("<EnergyFlow>12.5</EnergyFlow>", ""));
    const ValueData* heat = FindValue(FindObject(*data, "Q"), "Heat Flow");
    EXPECT_EQ(heat->number, kEmpty);
    EXPECT_EQ(heat->state, VariableState::missing);
}

TEST(SmallFlowsheetFile, NumbersKeepTheirPlaces) {
    struct Spelling {
        const char* text;
        double value;
    };
    for (const Spelling& spelling : {Spelling{"0.30000000000000004", 0.30000000000000004},
                                     {"9.72238E-05", 9.72238e-05},
                                     {"1E+1", 10.0},
                                     {"-0", 0.0},
                                     {" 7 \r\n", 7.0}}) {
        const auto data =
            Read(SmallFlowsheetWith(">0.25<", std::string(">") + spelling.text + "<"));
        EXPECT_EQ(NumberOf(*data, "feed", "Comp Mole Frac", "A"), spelling.value) << spelling.text;
    }
}

struct StandingCase {
    const char* from;
    const char* to;
    ObjectStatus status;
    const char* text;
};

TEST(SmallFlowsheetFile, UnsolvedObjectsAreMarked) {
    const char* solved = "<Calculated>true</Calculated><ErrorMessage></ErrorMessage>";
    const StandingCase cases[] = {
        {solved, "<Calculated>True</Calculated>", ObjectStatus::ok, ""},
        {solved, "<Calculated>true</Calculated><ErrorMessage>no root found</ErrorMessage>",
         ObjectStatus::error, "no root found"},
        {solved, "<Calculated>false</Calculated><ErrorMessage></ErrorMessage>",
         ObjectStatus::not_solved, "NotCalculated"},
        {"<Status>Calculated<", "<Status>ErrorCalculating<", ObjectStatus::error,
         "ErrorCalculating"},
        {"<Status>Calculated<", "<Status>Calculating<", ObjectStatus::not_solved, "Calculating"},
        {"<Status>Calculated<", "<Status>Inactive<", ObjectStatus::not_solved, "Inactive"},
        {"<Status>Calculated<", "<Status>Idle<", ObjectStatus::not_solved, "Idle"},
        {"<Status>Calculated<", "<Status>NotCalculated<", ObjectStatus::not_solved,
         "NotCalculated"},
        {"<Status>Calculated<", "<Status>Modified<", ObjectStatus::not_solved, "Modified"},
    };
    for (const StandingCase& expected : cases) {
        const auto data = Read(SmallFlowsheetWith(expected.from, expected.to));
        const ObjectData* feed = FindObject(*data, "feed");
        ASSERT_NE(feed, nullptr);
        EXPECT_EQ(feed->status, expected.status) << expected.to;
        EXPECT_EQ(feed->status_text, expected.text) << expected.to;
        EXPECT_EQ(FindObject(*data, "product")->status, ObjectStatus::ok);
    }
}

struct GivenCase {
    const char* from;
    const char* to;
    std::vector<const char*> specified;
};

TEST(SmallFlowsheetFile, SpecTypeTellsWhatIsGivenInAFeed) {
    const GivenCase cases[] = {
        {"<DefinedFlow>Mole",
         "<DefinedFlow>Mass",
         {"Temperature", "Pressure", "Mass Flow", "Comp Mole Frac"}},
        {">Temperature_and_Pressure<",
         ">Temperature_and_Pressure<",
         {"Temperature", "Pressure", "Molar Flow", "Comp Mole Frac"}},
        {">Temperature_and_Pressure<",
         ">Temperature_and_VaporFraction<",
         {"Temperature", "Vapour Fraction", "Molar Flow", "Comp Mole Frac"}},
        {">Temperature_and_Pressure<",
         ">Pressure_and_VaporFraction<",
         {"Pressure", "Vapour Fraction", "Molar Flow", "Comp Mole Frac"}},
        {"<StreamType>Feed<",
         "<StreamType>Recycle_Out<",
         {"Temperature", "Pressure", "Molar Flow", "Comp Mole Frac"}},
        {"<StreamType>Feed<", "<StreamType>Inner<", {}},
        {"<StreamType>Feed<", "<StreamType>Recycle_In<", {}},
    };
    for (const GivenCase& expected : cases) {
        const auto data = Read(SmallFlowsheetWith(expected.from, expected.to));
        std::vector<std::string> specified;
        for (const char* name : {"Temperature", "Pressure", "Vapour Fraction", "Molar Flow",
                                 "Mass Flow", "Comp Mole Frac"}) {
            const VariableData* variable = FindVariable(FindObject(*data, "feed"), name);
            if (variable->values[0].state == VariableState::specified) specified.push_back(name);
        }
        EXPECT_EQ(specified,
                  std::vector<std::string>(expected.specified.begin(), expected.specified.end()))
            << expected.to;
    }
}

TEST(SmallFlowsheetFile, EnergyStreamIsGivenWhenAUnitTakesItsDutyFromIt) {
    const auto plain = Read(SmallFlowsheet());
    EXPECT_EQ(FindValue(FindObject(*plain, "Q"), "Heat Flow")->state, VariableState::calculated);
    const auto given =
        Read(SmallFlowsheetWith("<CalcMode>OutletTemperature", "<CalcMode>EnergyStream"));
    EXPECT_EQ(FindValue(FindObject(*given, "Q"), "Heat Flow")->state, VariableState::specified);
    EXPECT_EQ(FindValue(FindObject(*given, "H"), "Product Temperature")->state,
              VariableState::calculated);
}

TEST(SmallFlowsheetFile, UnknownClassKeepsNameTypePortsAndNumbers) {
    const ReadResult result = ReadDwxmzBytes(
        ZipOf(SmallFlowsheetWith("Some.UnitOperations.Heater", "Some.UnitOperations.Teleporter")),
        "odd.dwxmz");
    ASSERT_NE(result.data, nullptr) << Lines(result);
    const ObjectData* unit = FindObject(*result.data, "H");
    EXPECT_EQ(unit->type, "Teleporter");
    EXPECT_EQ(unit->ports.size(), 3u);
    const VariableData* temperature = FindVariable(unit, "OutletTemperature");
    ASSERT_NE(temperature, nullptr);
    EXPECT_EQ(temperature->spec->quantity, "");
    EXPECT_EQ(temperature->values[0].number, 350);
    EXPECT_EQ(unit->variables.size(), 4u);  // the words are not numbers
    ASSERT_EQ(result.problems.size(), 1u);
    EXPECT_NE(Lines(result).find("unknown class 'Teleporter'"), std::string::npos);
}

TEST(SmallFlowsheetFile, UnknownClassTakesNamesForWords) {
    const std::string duty = "<OutletTemperature>350";
    for (const char* name :
         {"nan", "Nan", "NAN", "inf", "Inf", "infinity", "1e999", "0x10", "1 2"}) {
        std::string file =
            SmallFlowsheetWith("Some.UnitOperations.Heater", "Some.UnitOperations.Teleporter");
        file.replace(file.find(duty), duty.size(), std::string("<OutletTemperature>") + name);
        const auto data = Read(file);
        ASSERT_NE(data, nullptr) << name;
        EXPECT_EQ(FindVariable(FindObject(*data, "H"), "OutletTemperature"), nullptr) << name;
    }
    for (const char* word : {"NaN", "Infinity", "-Infinity"}) {
        std::string file =
            SmallFlowsheetWith("Some.UnitOperations.Heater", "Some.UnitOperations.Teleporter");
        file.replace(file.find(duty), duty.size(), std::string("<OutletTemperature>") + word);
        const auto data = Read(file);
        ASSERT_NE(data, nullptr) << word;
        EXPECT_EQ(NumberOf(*data, "H", "OutletTemperature"), kEmpty) << word;
    }
}

TEST(SmallFlowsheetFile, OneCompoundMayMissInAPhase) {
    const auto data = Read(SmallFlowsheetWith(
        "<Compound><Name>B</Name><MoleFraction>0.75</MoleFraction></Compound>", ""));
    EXPECT_EQ(NumberOf(*data, "feed", "Comp Mole Frac", "B"), kEmpty);
    EXPECT_EQ(NumberOf(*data, "feed", "Comp Mole Frac", "A"), 0.25);
}

}  // namespace

}  // namespace fixtop::casehost::test
