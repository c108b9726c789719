// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <set>
#include <string>

#include "model/class_library.h"
#include "quantity_names.h"
#include "real_adapter.h"
#include "support/log_lines.h"
#include "support/temporary_folder.h"

namespace fixtop {

namespace {

double Convert(const RealAdapter& source, const char* quantity, double value, const char* from,
               const char* to) {
    const int number = source->QuantityId(quantity);
    return source->Convert(value, source->UnitId(from, number), source->UnitId(to, number));
}

TEST(UnitAdapter, is_attached_under_its_name) {
    const TemporaryFolder folder;
    const LogLines log(folder);
    folder.Write("units.xml",
                 "<CCDMUnitFile><Provider>QSIUOMAdapter2004_2</Provider>"
                 "<InitString>CCDM_UOMDefinitions.xml</InitString>"
                 "<Translate App='kgmole/h' Ccdm='kmol/h'/></CCDMUnitFile>");
    CCDMClassLibrary library;
    EXPECT_TRUE(library.ReadUnitFile("units.xml"));
    EXPECT_TRUE(library.units.Initialized());
    EXPECT_THAT(log.Lines(), testing::IsEmpty());
    FIValue out;
    EXPECT_TRUE(library.units.ToCcdmUnit(FIValue("kgmole/h"), FIValue(), out));
    EXPECT_STREQ(out.CStr(), "kmol/h");
    EXPECT_NEAR(library.units.Convert(25, FIValue("C"), FIValue("F")), 77, 1e-9);
    folder.Write("classes.xml",
                 "<QZClassLibrary><ClassAttributes Name='A'><Attribute Name='T' Type='Real'>"
                 "<QuantityType>Temperature</QuantityType></Attribute></ClassAttributes>"
                 "</QZClassLibrary>");
    EXPECT_TRUE(library.ReadClassFile("classes.xml"));
    EXPECT_EQ(library.FindClass("A")->FindAttribute("T")->quantity,
              library.units.Source()->QuantityId("Temperature"));
}

// Reads the shipped unit file; the log says nothing then.
struct ShippedUnits {
    ShippedUnits() : log(folder) { done = library.ReadUnitFile(FIXTOP_RESOURCES "/hunits.xml"); }
    std::string ToCcdm(const char* unit, const char* quantity = "") {
        FIValue out;
        library.units.ToCcdmUnit(FIValue(unit), FIValue(quantity), out);
        return out.ToText();
    }
    std::string ToApp(const char* unit, const char* quantity = "") {
        FIValue out;
        library.units.ToAppUnit(FIValue(unit), FIValue(quantity), out);
        return out.ToText();
    }
    TemporaryFolder folder;
    LogLines log;
    CCDMClassLibrary library;
    bool done = false;
};

TEST(ShippedUnitFile, every_row_is_taken) {
    const ShippedUnits units;
    EXPECT_TRUE(units.done);
    EXPECT_TRUE(units.library.units.Initialized());
    EXPECT_THAT(units.log.Lines(), testing::IsEmpty());
}

TEST(ShippedUnitFile, names_units_of_both_sides) {
    struct Row {
        const char* app;
        const char* ccdm;
        const char* quantity;
    };
    const Row rows[] = {
        {"C", "C", "Temperature"},
        {"kPa", "kPa", "Pressure"},
        {"psia", "psi", "Pressure"},
        {"psi", "psi", "Pressure Diff"},
        {"kg/cm2", "kgf/cm2", "Pressure"},
        {"kgmole/h", "kmol/h", "Flow Rate (Mole)"},
        {"lbmole/hr", "lbmol/h", "Flow Rate (Mole)"},
        {"tonne/d", "tonne/d", "Flow Rate (Mass)"},
        {"USGPM", "gal/min", "Flow Rate (Vol)"},
        {"MMBtu/hr", "MMBtu/h", "Power"},
        {"kJ/kgmole-C", "kJ/kmol-C", "Molar Entropy"},
        {"Btu/hr-ft2-F", "Btu/h-ft2-F", "Heat Transfer Coeff"},
        {"kJ/C-h", "kJ/h-C", "Heat Coeff Area"},
        {"seconds", "s", "Time"},
        {"fraction", "fraction", "Fraction"},
    };
    ShippedUnits units;
    for (const Row& row : rows) {
        EXPECT_EQ(units.ToCcdm(row.app, row.quantity), row.ccdm) << row.app;
        EXPECT_EQ(units.ToApp(row.ccdm, row.quantity), row.app) << row.ccdm;
        CCDMUnitSource* source = units.library.units.Source();
        EXPECT_GT(source->UnitId(row.ccdm, source->QuantityId(row.quantity)), 0) << row.ccdm;
    }
    EXPECT_THAT(units.log.Lines(), testing::IsEmpty());
}

// 3000 rpm are 50 turns a second; a turn is 2 pi rad.
TEST(ShippedUnitFile, speeds_of_rotation_take_all_units_of_the_application) {
    ShippedUnits units;
    CCDMUnitSource* source = units.library.units.Source();
    const std::pair<const char*, double> speeds[] = {
        {"rpm", 3000}, {"rev/s", 50}, {"rad/s", 314.15926535897931}};
    for (const char* quantity :
         {"Angular Velocity", "Angular Velocity RPM", "Frequency", "Frequency (Hz)", "Frequency Hz",
          "Rotational Frequency", "Rotational Frequency (rpm)"}) {
        const int number = source->QuantityId(quantity);
        for (const auto& [from, value] : speeds) {
            EXPECT_EQ(units.ToCcdm(from, quantity), from) << quantity;
            for (const auto& [to, expected] : speeds) {
                EXPECT_NEAR(source->Convert(value, source->UnitId(from, number),
                                            source->UnitId(to, number)),
                            expected, 1e-9)
                    << quantity << ": " << from << " to " << to;
            }
        }
    }
}

TEST(ShippedUnitFile, number_without_a_unit_is_a_fraction_where_it_can_be_nothing_else) {
    ShippedUnits units;
    for (const char* quantity : {"Fraction", "Dimensionless", "Concentrn(Mol/Mol)"}) {
        EXPECT_EQ(units.ToCcdm("", quantity), "fraction") << quantity;
        EXPECT_EQ(units.ToApp("fraction", quantity), "fraction") << "never no name: " << quantity;
    }
    for (const char* quantity : {"Percentage", "Concentrn (Mol %)", "Temperature"}) {
        EXPECT_FALSE(units.library.units.HasTranslation("", FIValue(quantity))) << quantity;
    }
}

TEST(UnitAdapter, is_not_attached_by_its_path) {
    const TemporaryFolder folder;
    const LogLines log(folder);
    const ModuleHandle module = LoadModule(FIXTOP_ADAPTER);
    ASSERT_NE(FindFunction(module, "CreateUnitSource"), nullptr) << "the path itself is good";
    UnloadModule(module);
    CCDMUnitsList units;
    units.SetProvider(FIXTOP_ADAPTER);
    units.SetInitString(kDefinitions);
    EXPECT_FALSE(units.Initialized());
    EXPECT_THAT(log.Lines(), testing::ElementsAre(
                                 "Unable to locate CCDM unit conversion adpater " FIXTOP_ADAPTER));
}

TEST(UnitAdapter, unknown_definitions_refuse) {
    const TemporaryFolder folder;
    folder.Write("broken.xml", "<QZClassLibrary>");
    folder.Write("empty.xml", "<QZClassLibrary><QuantityTypeDefn Name='Q'/></QZClassLibrary>");
    folder.Write("up.xml", "<Q><QuantityTypeDefn Name='Q'><UOM Name='u'/></QuantityTypeDefn></Q>");
    std::filesystem::create_directories(folder.Path() / "inner");
    std::filesystem::current_path(folder.Path() / "inner");
    for (const std::string& name :
         {std::string("none.xml"), std::string("../broken.xml"), std::string("../up.xml"),
          folder.File("up.xml"), std::string()}) {
        const RealAdapter source;
        ASSERT_TRUE(source);
        EXPECT_FALSE(source->Init(name.c_str())) << name;
    }
    std::filesystem::current_path(folder.Path());
    for (const char* name : {"broken.xml", "empty.xml"}) {
        const RealAdapter source;
        EXPECT_FALSE(source->Init(name)) << name;
    }
    const RealAdapter source;
    EXPECT_FALSE(source->Init(nullptr));
    const RealAdapter good;
    EXPECT_TRUE(good->Init("up.xml"));
}

TEST(UnitAdapter, tells_why_definitions_are_refused) {
    const TemporaryFolder folder;
    const LogLines log(folder);
    const std::string start = "<Q><QuantityTypeDefn Name='Q'>";
    folder.Write("typed.xml", "<!-- 1 -->\n<!DOCTYPE Q [<!ATTLIST UOM Name CDATA 'u'>]>\n" + start +
                                  "<UOM/></QuantityTypeDefn></Q>");
    folder.Write("empty.xml", start + "</QuantityTypeDefn></Q>");
    const std::string typed = folder.File("typed.xml") +
                              " at line 2, a document type declaration is not allowed; expected "
                              "plain elements only";
    struct {
        const char* name;
        std::string why;
    } rows[] = {{"typed.xml", typed},
                {"empty.xml", "empty.xml defines no unit"},
                {"none.xml", "none.xml is not found"}};
    for (const auto& row : rows) {
        log.Restart();
        CCDMUnitsList units;
        units.SetProvider(kUnitAdapterName);
        units.SetInitString(row.name);
        EXPECT_FALSE(units.Initialized());
        EXPECT_THAT(log.Lines(),
                    testing::ElementsAre("  Unit definitions: file " + row.why,
                                         "Unable to initialize CCDM unit conversion adpater"));
    }
}

TEST(UnitAdapter, knows_every_quantity_with_units) {
    const RealAdapter source;
    ASSERT_TRUE(source && source->Init(kDefinitions));
    std::set<int> numbers;
    for (const char* name : kQuantityNames) {
        const int number = source->QuantityId(name);
        EXPECT_GT(number, 0) << name;
        EXPECT_STREQ(source->QuantityName(number), name);
        numbers.insert(number);
    }
    EXPECT_EQ(numbers.size(), 365u);
    EXPECT_STREQ(source->QuantityName(366), "") << "and no more";
    std::set<int> with_units;
    for (int unit = 1; *source->UnitName(unit) != '\0'; ++unit) {
        const int quantity = source->QuantityOfUnit(unit);
        with_units.insert(quantity);
        EXPECT_EQ(source->UnitId(source->UnitName(unit), quantity), unit);
    }
    EXPECT_EQ(with_units, numbers);
}

TEST(UnitAdapter, unknown_names_and_numbers_are_none) {
    const RealAdapter source;
    ASSERT_TRUE(source && source->Init(kDefinitions));
    EXPECT_EQ(source->QuantityId("temperature"), -1) << "case counts";
    EXPECT_EQ(source->QuantityId(""), -1);
    EXPECT_EQ(source->QuantityId(nullptr), -1);
    EXPECT_EQ(source->UnitId("kPa", source->QuantityId("Temperature")), -1);
    EXPECT_EQ(source->UnitId("kPa", -1), -1);
    EXPECT_EQ(source->UnitId("kPa", 366), -1);
    EXPECT_EQ(source->UnitId("furlong", 0), -1);
    EXPECT_EQ(source->UnitId(nullptr, 0), -1);
    EXPECT_GT(source->UnitId("kPa", 0), 0);
    constexpr int kMost = std::numeric_limits<int>::max();
    constexpr int kLeast = std::numeric_limits<int>::min();
    for (const int number : {0, -1, kMost, kLeast}) {
        EXPECT_STREQ(source->QuantityName(number), "");
        EXPECT_STREQ(source->UnitName(number), "");
        EXPECT_EQ(source->QuantityOfUnit(number), -1);
        EXPECT_EQ(source->Convert(3, number, 1), 3);
        EXPECT_EQ(source->Convert(3, 1, number), 3);
    }
}

TEST(UnitAdapter, converts_by_hand_values) {
    struct Row {
        const char* quantity;
        double value;
        const char* from;
        const char* to;
        double result;
    };
    const Row rows[] = {
        {"Temperature", 100, "C", "F", 212},
        {"Temperature", 0, "C", "K", 273.15},
        {"Temperature", 491.67, "R", "C", 0},
        {"Temperature Diff", 10, "C", "F", 18},
        {"Pressure", 1, "atm", "kPa", 101.325},
        {"Pressure", 1, "bar", "Pa", 100000},
        {"Gauge Pressure", 1, "barg", "kPag", 100},
        {"Pressure Abs+Gauge", 0, "barg", "atm", 1},
        {"Pressure Abs+Gauge", 201.325, "kPa", "kPag", 100},
        {"Pressure Vacuum", 1.325, "kPavac", "mbarvac", 13.25},
        {"Angle", 180, "deg", "rad", 3.14159265358979},
        {"Angular Velocity RPM", 60, "rev/min", "rad/s", 6.28318530717959},
        {"Rotational Frequency (rpm)", 3000, "rpm", "1/s", 50},
        {"Viscosity (cP)", 1, "cP", "Pa-s", 0.001},
        {"Power (kW)", 3600, "kJ/h", "kW", 1},
        {"Percentage", 12.5, "%", "fraction", 0.125},
        {"RelativeDensity(liq)", 10, "API", "sg", 1},
        {"RelativeDensity(liq)", 0.85, "sg", "API", 141.5 / 0.85 - 131.5},
        {"Fuel Cons (Dist/Vol)", 1, "mile/gal", "km/L", 0.425143707430272},
        {"Flow Rate (tonne/yr)", 8.76, "tonne/yr", "kg/h", 1},
        {"Area Large", 1, "ha", "m2", 10000},
        {"Absorbed Dose", 100, "rad", "Gy", 1},
        {"Molar Flow (Std Vol)", 22.41396954501, "Nm3/h", "kmol/h", 1},
        {"Molar Flow (Std Vol)", 379.48276, "scf/h", "lbmol/h", 1},
    };
    const RealAdapter source;
    ASSERT_TRUE(source && source->Init(kDefinitions));
    for (const Row& row : rows) {
        const double result = Convert(source, row.quantity, row.value, row.from, row.to);
        EXPECT_NEAR(result, row.result, 1e-6 * std::max(1.0, std::abs(row.result)))
            << row.quantity << ": " << row.value << " " << row.from << " to " << row.to;
    }
}

TEST(UnitAdapter, converts_between_quantities_of_one_kind_only) {
    const RealAdapter source;
    ASSERT_TRUE(source && source->Init(kDefinitions));
    const auto unit = [&](const char* name, const char* quantity) {
        return source->UnitId(name, source->QuantityId(quantity));
    };
    EXPECT_EQ(source->Convert(1, unit("bar", "Absolute Pressure"), unit("kPa", "Pressure")), 100);
    EXPECT_NEAR(source->Convert(0, unit("kPag", "Gauge Pressure"), unit("kPa", "Pressure")),
                101.325, 1e-9);
    EXPECT_EQ(source->Convert(5, unit("C", "Temperature Diff"), unit("F", "Temperature")), 5);
    EXPECT_EQ(source->Convert(5, unit("kPa", "Pressure"), unit("m", "Length")), 5);
}

TEST(UnitAdapter, every_unit_converts_there_and_back) {
    const RealAdapter source;
    ASSERT_TRUE(source && source->Init(kDefinitions));
    int first = 1;
    for (int unit = 1; *source->UnitName(unit) != '\0'; ++unit) {
        if (source->QuantityOfUnit(unit) != source->QuantityOfUnit(first)) first = unit;
        const double back = source->Convert(source->Convert(37.5, unit, first), first, unit);
        EXPECT_NEAR(back, 37.5, 1e-6) << source->UnitName(unit) << " of "
                                      << source->QuantityName(source->QuantityOfUnit(unit));
    }
}

TEST(UnitAdapter, own_definitions_take_the_place_of_the_built_in) {
    const TemporaryFolder folder;
    folder.Write(
        kDefinitions,
        "<QZClassLibrary><Other><UOM Name='no'/></Other><UOM Name='no'/>"
        "<QuantityTypeDefn><UOM Name='no'/></QuantityTypeDefn>"
        "<QuantityTypeDefn Name='Q' BaseUnit='b'><Deeper><UOM Name='no'/></Deeper>"
        "<UOM Name='one'/><UOM Name='two' Factor='2' Offset='1'/><UOM Factor='2'/>"
        "<UOM Name='one' Factor='7'/><UOM Name='zero' Factor='0'/>"
        "<UOM Name='text' Factor='2x'/><UOM Name='far' Factor='1e999'/>"
        "<UOM Name='nan' Offset='nan'/><UOM Name='odd' Formula='Cubic'/></QuantityTypeDefn>"
        "<QuantityTypeDefn Name='R'><UOM Name='one'/></QuantityTypeDefn>"
        "<QuantityTypeDefn Name='Q'><UOM Name='late' Factor='4'/></QuantityTypeDefn>"
        "</QZClassLibrary>");
    const RealAdapter source;
    ASSERT_TRUE(source && source->Init(kDefinitions));
    EXPECT_EQ(source->QuantityId("Q"), 1);
    EXPECT_EQ(source->QuantityId("R"), 2);
    EXPECT_EQ(source->QuantityId("Pressure"), -1);
    for (const char* left_out : {"no", "", "zero", "text", "far", "nan", "odd"}) {
        EXPECT_EQ(source->UnitId(left_out, 0), -1) << left_out;
    }
    EXPECT_EQ(source->UnitId("one", 0), 1) << "the first of the name";
    EXPECT_EQ(source->UnitId("one", 2), 3);
    EXPECT_EQ(Convert(source, "Q", 3, "two", "one"), 7);
    EXPECT_EQ(Convert(source, "Q", 7, "one", "two"), 3);
    EXPECT_EQ(Convert(source, "Q", 1, "late", "one"), 4);
    EXPECT_EQ(source->Convert(5, 2, 3), 5) << "a quantity without a base unit is of its own kind";
}

TEST(UnitAdapter, knows_nothing_after_its_end) {
    const RealAdapter source;
    ASSERT_TRUE(source && source->Init(kDefinitions));
    source->Destroy();
    EXPECT_EQ(source->QuantityId("Pressure"), -1);
    EXPECT_EQ(source->Convert(5, 1, 2), 5);
}

}  // namespace

}  // namespace fixtop
