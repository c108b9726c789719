// SPDX-License-Identifier: Apache-2.0
#include "casehost/units.h"

#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <set>
#include <string>

#ifdef CASEHOST_UDUNITS
#include <udunits2.h>
#endif

namespace fixtop::casehost {
namespace {

TEST(Units, QuantitiesAreNumberedFromOneAndWithoutHoles) {
    host::VarType type = 0;
    std::set<std::string> names;
    for (const Quantity& quantity : Quantities()) {
        EXPECT_EQ(quantity.type, ++type) << quantity.name;
        EXPECT_TRUE(names.insert(quantity.name).second) << quantity.name;
        EXPECT_EQ(FindQuantity(quantity.name), &quantity);
        EXPECT_EQ(FindQuantity(quantity.type), &quantity);
    }
    EXPECT_LT(type, host::kVariableUnitType);
    EXPECT_EQ(FindQuantity("NoSuchQuantity"), nullptr);
    EXPECT_EQ(FindQuantity(0), nullptr);
    EXPECT_EQ(FindQuantity(host::kVariableUnitType), nullptr);
}

TEST(Units, InternalUnitStandsFirstAndDefaultsExist) {
    for (const Quantity& quantity : Quantities()) {
        ASSERT_FALSE(quantity.units.empty()) << quantity.name;
        EXPECT_EQ(quantity.units[0].factor, 1) << quantity.name;
        EXPECT_EQ(quantity.units[0].offset, 0) << quantity.name;
        ASSERT_EQ(quantity.defaults.size(), kUnitSets) << quantity.name;
        for (const char* unit : quantity.defaults) {
            EXPECT_NE(FindUnit(quantity, unit), nullptr) << quantity.name << ' ' << unit;
        }
    }
}

TEST(Units, TemperaturesAndTheirDifferences) {
    const Quantity& temperature = *FindQuantity("Temperature");
    struct {
        const char* unit;
        double user, internal_C;
    } cases[] = {{"K", 0, -273.15}, {"F", 32, 0},    {"F", 212, 100},
                 {"R", 491.67, 0},  {"C", -40, -40}, {"F", -40, -40}};
    for (const auto& each : cases) {
        const host::UnitRecord& unit = *FindUnit(temperature, each.unit);
        EXPECT_NEAR(ToInternal(each.user, unit), each.internal_C, 1e-11) << each.user << each.unit;
        EXPECT_NEAR(FromInternal(each.internal_C, unit), each.user, 1e-11)
            << each.user << each.unit;
    }
    EXPECT_DOUBLE_EQ(ToInternal(9, *FindUnit(*FindQuantity("TemperatureDifference"), "F")), 5);
}

TEST(Units, GaugePressuresCountFromTheStandardAtmosphere) {
    const Quantity& pressure = *FindQuantity("Pressure");
    EXPECT_DOUBLE_EQ(ToInternal(0, *FindUnit(pressure, "barg")), 101.325);
    EXPECT_DOUBLE_EQ(ToInternal(5, *FindUnit(pressure, "barg")), 601.325);
    EXPECT_DOUBLE_EQ(ToInternal(5, *FindUnit(pressure, "kPag")), 106.325);
    // 14.6959 psi are an atmosphere.
    EXPECT_NEAR(FromInternal(101.325 * 2, *FindUnit(pressure, "psig")), 14.6959, 1e-4);
    EXPECT_EQ(FindUnit(*FindQuantity("PressureDifference"), "barg"), nullptr);
}

#ifdef CASEHOST_UDUNITS
// Names that udunits writes otherwise; its own gallon is rounded, so the defining 231 in3 stands
// here. kgmole and lbmole are what the trade calls a kilogram mole and a pound mole.
std::string UdunitsName(const std::string& quantity, const std::string& unit) {
    static const std::map<std::string, std::string> names = {
        {"C", "degC"},
        {"F", "degF"},
        {"R", "degR"},
        {"atm", "standard_atmosphere"},
        {"psia", "psi"},
        {"mmHg", "13.5951 g cm-3 standard_free_fall mm"},
        {"torr", "standard_atmosphere/760"},
        {"kg/cm2", "kgf/cm2"},
        {"tonne/d", "t/day"},
        {"tonne/h", "t/h"},
        {"tonne", "t"},
        {"Btu/hr", "BTU/h"},
        {"MMBtu/hr", "1e6 BTU/h"},
        {"Btu", "BTU"},
        {"kcal/h", "kcal/h"},
        {"hp", "550 ft lbf/s"},
        {"mile", "mile"},
        {"USGAL", "231 in3"},
        {"bbl", "9702 in3"},
        {"USGPM", "231 in3/min"},
        {"bbl/d", "9702 in3/day"},
        {"cP", "0.01 poise"},
        {"P", "poise"},
        {"cSt", "0.01 stokes"},
        {"St", "stokes"},
        {"Pa-s", "Pa s"},
        {"mPa-s", "mPa s"},
        {"lb/ft-s", "lb/(ft s)"},
        {"W/m-K", "W/(m K)"},
        {"kW/m-K", "kW/(m K)"},
        {"dyne/cm", "dyne/cm"},
        {"mph", "mile/h"},
        {"rpm", "rpm"},
        {"rev/s", "60 rpm"},
        {"rad/s", "rad/s"},
        {"%", "0.01"},
        {"fraction", "1"},
        {"ppm", "1e-6"},
        {"seconds", "s"},
        {"minutes", "min"},
        {"hours", "h"},
        {"days", "day"},
        {"degree", "degree"},
        {"rad", "rad"},
        {"m3/d", "m3/day"},
        {"kWh", "kW h"},
        {"K-m2/W", "K m2/W"},
        {"C-h-m2/kJ", "K h m2/kJ"},
        {"kPag", "kPa @ 101.325"},
        {"barg", "bar @ 1.01325"},
        {"psig", "psi @ 14.695948775513"},
        {"C/kPa", "K/kPa"},
        {"C/bar", "K/bar"},
        {"F/psi", "K/1.8/psi"},
    };
    if (quantity == "TemperatureDifference") return unit == "F" || unit == "R" ? "K/1.8" : "K";
    const auto known = names.find(unit);
    return known == names.end() ? unit : known->second;
}

// The rest follows from rules: gram moles of 1000 and pounds, temperature differences in a divisor,
// "a-b" as a product.
std::string UdunitsText(const std::string& quantity, const std::string& unit) {
    std::string text = UdunitsName(quantity, unit);
    if (text != unit) return text;
    auto replace = [&](const std::string& from, const std::string& to) {
        for (std::size_t at = 0; (at = text.find(from, at)) != std::string::npos; at += to.size()) {
            text.replace(at, from.size(), to);
        }
    };
    const std::size_t slash = text.find('/');
    if (slash != std::string::npos)
        text = text.substr(0, slash) + "/(" + text.substr(slash + 1) + ")";
    replace("kgmole", "kmol");
    replace("lbmole", "(453.59237 mol)");
    replace("Btu", "BTU");
    replace("hr", "h");
    for (const char* end : {"C)", "K)", "F)"})
        replace(std::string("-") + end, end[0] == 'F' ? " (K/1.8))" : " K)");
    if (text.find("/(C-") != std::string::npos) replace("/(C-", "/(K ");
    if (text.find("/(F-") != std::string::npos) replace("/(F-", "/((K/1.8) ");
    if (text.rfind("F-", 0) == 0) replace("F-", "(K/1.8) ");
    replace("-", " ");
    return text;
}

class UnitsAgainstUdunits : public ::testing::Test {
 protected:
    void SetUp() override {
        ut_set_error_message_handler(ut_ignore);
        system_ = ut_read_xml(nullptr);
        ASSERT_NE(system_, nullptr);
    }
    void TearDown() override { ut_free_system(system_); }

    ut_system* system_ = nullptr;
};

TEST_F(UnitsAgainstUdunits, EveryConversionAgrees) {
    for (const Quantity& quantity : Quantities()) {
        const std::string internal_text = UdunitsText(quantity.name, quantity.units[0].name);
        ut_unit* internal = ut_parse(system_, internal_text.c_str(), UT_ASCII);
        if (!internal) {
            ADD_FAILURE() << "udunits can't: " << quantity.name << ": " << internal_text;
            continue;
        }
        for (const host::UnitRecord& unit : quantity.units) {
            const std::string text = UdunitsText(quantity.name, unit.name);
            ut_unit* theirs = ut_parse(system_, text.c_str(), UT_ASCII);
            cv_converter* converter = theirs ? ut_get_converter(theirs, internal) : nullptr;
            if (!converter) {
                ADD_FAILURE() << "udunits can't: " << quantity.name << ' ' << unit.name << ": "
                              << text;
                continue;
            }
            for (double value : {1.0, 250.0}) {
                const double expected = cv_convert_double(converter, value);
                EXPECT_NEAR(ToInternal(value, unit), expected, 2e-9 * std::abs(expected) + 1e-9)
                    << value << ' ' << quantity.name << ' ' << unit.name << " as " << text;
            }
            cv_free(converter);
            ut_free(theirs);
        }
        ut_free(internal);
    }
}
#endif

}  // namespace
}  // namespace fixtop::casehost
