// SPDX-License-Identifier: Apache-2.0
// Every conversion of the shipped definitions against udunits2.

#include <gtest/gtest.h>
#include <udunits2.h>

#include <cmath>
#include <cstdio>
#include <map>
#include <memory>
#include <set>
#include <string>

#include "real_adapter.h"

namespace fixtop {

namespace {

// What udunits calls the parts of our unit names; parts that are not here have one name in both.
// Its gallon, torr and horsepower are rounded and stand here by their definitions.
const std::map<std::string, std::string>& Parts() {
    // The ideal gas at 1 atm and 0 C, 1 atm and 15 C, 14.696 psi and 60 F.
    static const std::string gas = "/ (8.31446261815324 J/(mol K))";
    static const std::map<std::string, std::string> parts = {
        {"C", "K"},
        {"F", "(K/1.8)"},
        {"R", "(K/1.8)"},
        {"1", "1"},
        {"%", "0.01"},
        {"fraction", "1"},
        {"ppm", "1e-6"},
        {"ppb", "1e-9"},
        {"lbmol", "(453.59237 mol)"},
        {"tonne", "(1000 kg)"},
        {"kt", "(1e6 kg)"},
        {"klb", "(1000 lb)"},
        {"oz", "(lb/16)"},
        {"ton", "short_ton"},
        {"gr", "grain"},
        {"um", "micrometer"},
        {"in", "international_inch"},
        {"ft", "international_foot"},
        {"yd", "international_yard"},
        {"mile", "international_mile"},
        {"acre", "(43560 international_foot^2)"},
        {"ha", "hectare"},
        {"h", "hour"},
        {"d", "day"},
        {"wk", "week"},
        {"yr", "common_year"},
        {"min", "minute"},
        {"cal", "IT_calorie"},
        {"kcal", "(1e3 IT_calorie)"},
        {"Mcal", "(1e6 IT_calorie)"},
        {"Gcal", "(1e9 IT_calorie)"},
        {"MMBtu", "(1e6 Btu)"},
        {"therm", "(1e5 Btu)"},
        {"TR", "(12000 Btu/hour)"},
        {"hp", "(550 international_foot lbf/s)"},
        {"kWh", "(kW hour)"},
        {"MWh", "(MW hour)"},
        {"Wh", "(W hour)"},
        {"Ah", "(A hour)"},
        {"klbf", "(1000 lbf)"},
        {"at", "technical_atmosphere"},
        {"psi", "(lbf/international_inch^2)"},
        {"ksi", "(1000 lbf/international_inch^2)"},
        {"torr", "((101325/760) Pa)"},
        {"psf", "(lbf/international_foot^2)"},
        {"mmHg", "(mm (13595.1 kg/m3) (9.80665 m/s2))"},
        {"inHg", "(international_inch (13595.1 kg/m3) (9.80665 m/s2))"},
        {"mmH2O", "(mm (1000 kg/m3) (9.80665 m/s2))"},
        {"mH2O", "(m (1000 kg/m3) (9.80665 m/s2))"},
        {"inH2O", "(international_inch (1000 kg/m3) (9.80665 m/s2))"},
        {"ftH2O", "(international_foot (1000 kg/m3) (9.80665 m/s2))"},
        {"dyn", "dyne"},
        {"P", "poise"},
        {"cP", "centipoise"},
        {"St", "stokes"},
        {"cSt", "centistokes"},
        {"gal", "(231 international_inch^3)"},
        {"Igal", "UK_liquid_gallon"},
        {"bbl", "(42 231 international_inch^3)"},
        {"deg", "arc_degree"},
        {"rev", "(360 arc_degree)"},
        {"rpm", "(360 arc_degree/minute)"},
        {"ohm", "ohm"},
        {"mohm", "milliohm"},
        {"kohm", "kiloohm"},
        {"Mohm", "megaohm"},
        {"farad", "farad"},
        {"mfarad", "millifarad"},
        {"ufarad", "microfarad"},
        {"nfarad", "nanofarad"},
        {"pfarad", "picofarad"},
        {"uH", "microhenry"},
        {"uS", "microsiemens"},
        {"eq", "mol"},
        {"meq", "mmol"},
        {"keq", "kmol"},
        {"Ci", "curie"},
        {"Nm3", "(101325 Pa m3 / (273.15 K) " + gas + ")"},
        {"Sm3", "(101325 Pa m3 / (288.15 K) " + gas + ")"},
        {"scf",
         "(14.696 lbf/international_inch^2 international_foot^3 / ((519.67/1.8) K) " + gas + ")"},
        {"Mscf", "(1000 scf)"},
        {"MMscf", "(1e6 scf)"},
    };
    return parts;
}

// Parts that stand for nothing that another program could know.
const std::set<std::string> kUnknownParts = {"$", "k$", "M$", "pH", "dB", "sg", "API"};

// Quantities whose C and F are points of a scale.
const std::set<std::string> kTemperatures = {"Temperature",     "Temperature (C)",
                                             "Temperature (F)", "Temperature abs",
                                             "Temperature tmc", "Temperature tmf"};
const std::set<std::string> kGauges = {"Pressure", "Gauge Pressure", "Pressure Gauge",
                                       "Pressure Abs+Gauge", "Pressure Vacuum"};

// Quantities that count turns, which for udunits are no angle: a turn is 1.
const std::set<std::string> kCountsOfTurns = {"Frequency", "Frequency (Hz)", "Frequency Hz",
                                              "Rotational Frequency", "Rotational Frequency (rpm)"};
const std::map<std::string, std::string> kTurns = {
    {"rpm", "1/minute"}, {"rev/s", "1/s"}, {"rad/s", "1/(2 PI s)"}};

std::string PartText(const std::string& part) {
    const auto found = Parts().find(part);
    if (found == Parts().end()) return part;
    const std::size_t inner = found->second.find("scf)");
    if (inner == std::string::npos) return found->second;
    return found->second.substr(0, inner) + Parts().at("scf") + ")";
}

// One factor of a unit name, which may end with its power.
std::string FactorText(const std::string& factor) {
    if (Parts().count(factor) != 0 || factor.size() < 2 || !std::isdigit(factor.back())) {
        return PartText(factor);
    }
    return "(" + PartText(factor.substr(0, factor.size() - 1)) + ")^" + factor.back();
}

// "kJ/kg-K": products are joined by "-", and everything behind a "/" divides.
std::string UdunitsText(const std::string& unit, bool& known) {
    std::string text = "1";
    const char* join = " ";
    for (std::size_t begin = 0; begin <= unit.size();) {
        const std::size_t end = std::min(unit.find_first_of("-/", begin), unit.size());
        const std::string factor = unit.substr(begin, end - begin);
        if (kUnknownParts.count(factor) != 0) known = false;
        text += join + FactorText(factor);
        if (end < unit.size() && unit[end] == '/') join = "/";
        begin = end + 1;
    }
    return text;
}

struct UnitFree {
    void operator()(ut_unit* unit) const { ut_free(unit); }
};
using Unit = std::unique_ptr<ut_unit, UnitFree>;

struct ConverterFree {
    void operator()(cv_converter* converter) const { cv_free(converter); }
};

// How a unit of ours is measured: a unit of udunits, and its zero and direction in gauge units.
struct Measure {
    std::string text;
    bool known = true;
    double sign = 1;
    double zero_Pa = 0;
};

Measure MeasureOf(const std::string& quantity, std::string unit) {
    Measure measure;
    constexpr double kAtmosphere_Pa = 101325;
    if (kTemperatures.count(quantity) != 0) {
        measure.text = unit == "C" ? "degC" : unit == "F" ? "degF" : unit == "R" ? "degR" : "K";
        return measure;
    }
    if (quantity == "Absorbed Dose" && unit == "rad") {
        measure.text = "0.01 Gy";
        return measure;
    }
    if (kCountsOfTurns.count(quantity) != 0 && kTurns.count(unit) != 0) {
        measure.text = kTurns.at(unit);
        return measure;
    }
    if (kGauges.count(quantity) != 0 && unit.ends_with("vac")) {
        unit.resize(unit.size() - 3);
        measure.sign = -1;
        measure.zero_Pa = kAtmosphere_Pa;
    } else if (kGauges.count(quantity) != 0 && unit.ends_with("g") && !unit.ends_with("Hg")) {
        unit.pop_back();
        measure.zero_Pa = kAtmosphere_Pa;
    }
    measure.text = UdunitsText(unit, measure.known);
    return measure;
}

class Udunits : public testing::Test {
 protected:
    void SetUp() override {
        ut_set_error_message_handler(ut_ignore);
        system_.reset(ut_read_xml(nullptr));
        ASSERT_NE(system_, nullptr) << "udunits2 has no database";
        ASSERT_TRUE(source_ && source_->Init(kDefinitions));
    }

    // NaN when udunits does not know the text or the units are of different kinds.
    double Convert(double value, const std::string& from, const std::string& to) const {
        const Unit from_unit(ut_parse(system_.get(), from.c_str(), UT_UTF8));
        const Unit to_unit(ut_parse(system_.get(), to.c_str(), UT_UTF8));
        if (!from_unit || !to_unit) return std::nan("");
        const std::unique_ptr<cv_converter, ConverterFree> converter(
            ut_get_converter(from_unit.get(), to_unit.get()));
        return converter ? cv_convert_double(converter.get(), value) : std::nan("");
    }

    double Expected(double value, const Measure& from, const Measure& to) const {
        if (from.zero_Pa == 0 && to.zero_Pa == 0) return Convert(value, from.text, to.text);
        const double absolute_Pa = from.zero_Pa + from.sign * Convert(value, from.text, "Pa");
        return to.sign * Convert(absolute_Pa - to.zero_Pa, "Pa", to.text);
    }

    struct SystemFree {
        void operator()(ut_system* system) const { ut_free_system(system); }
    };
    std::unique_ptr<ut_system, SystemFree> system_;
    RealAdapter source_;
};

TEST_F(Udunits, agrees_with_every_unit_that_it_knows) {
    int checked = 0;
    int unknown = 0;
    int first = 1;
    for (int unit = 1; *source_->UnitName(unit) != '\0'; ++unit) {
        const int number = source_->QuantityOfUnit(unit);
        if (number != source_->QuantityOfUnit(first)) first = unit;
        const std::string quantity = source_->QuantityName(number);
        const Measure from = MeasureOf(quantity, source_->UnitName(unit));
        const Measure to = MeasureOf(quantity, source_->UnitName(first));
        if (!from.known || !to.known) {
            ++unknown;
            continue;
        }
        ++checked;
        for (const double value : {1.0, 37.5, -12.25, 1e5}) {
            const double expected = Expected(value, from, to);
            const double scale = std::max(std::abs(expected), 1e-300);
            EXPECT_LE(std::abs(source_->Convert(value, unit, first) - expected) / scale, 1e-9)
                << quantity << ": " << value << " " << source_->UnitName(unit) << " is "
                << source_->Convert(value, unit, first) << " " << source_->UnitName(first)
                << ", udunits: " << expected << " (" << from.text << " to " << to.text << ")";
        }
    }
    std::printf("udunits2: %d units checked, %d not known to it\n", checked, unknown);
    EXPECT_GT(checked, 2700);
    EXPECT_LT(unknown, 60);
}

}  // namespace

}  // namespace fixtop
