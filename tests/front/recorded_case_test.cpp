// SPDX-License-Identifier: Apache-2.0
// The neutral view of recorded cases, through the module's exports, against tables that an
// independent script made from the same files.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <string>
#include <vector>

#include "open_module.h"

namespace fixtop {

namespace {

using Iterator = Ref<FIIteratorBase>;
namespace fs = std::filesystem;

// A number of the table; an empty text is no value.
struct Figure {
    std::string property;
    std::string value;
    std::string unit;
};
using Streams = std::map<std::string, std::vector<Figure>>;

// The fields of a line; those in quotes may hold commas.
std::vector<std::string> Fields(const std::string& line) {
    std::vector<std::string> fields(1);
    bool quoted = false;
    for (char c : line) {
        if (c == '"') {
            quoted = !quoted;
        } else if (c == ',' && !quoted) {
            fields.emplace_back();
        } else if (c != '\r') {
            fields.back() += c;
        }
    }
    return fields;
}

Streams ReadTable(const fs::path& table, const std::string& type) {
    Streams streams;
    std::ifstream file(table);
    for (std::string line; std::getline(file, line);) {
        const std::vector<std::string> fields = Fields(line);
        if (fields.size() == 5 && fields[1] == type) {
            streams[fields[0]].push_back({fields[2], fields[3], fields[4]});
        }
    }
    return streams;
}

// Where the view has a property of the table.
std::string PathOf(const std::string& property) {
    static const std::map<std::string, std::string> paths = {
        {"T", "Temperature"},        {"P", "Pressure"},
        {"molar flow", "MolarFlow"}, {"mass flow", "MassFlow"},
        {"energy flow", "HeatFlow"}, {"vapour fraction", "VaporFraction"}};
    if (property.starts_with("x:")) {
        return "Composition.Component[ComponentName=\"" + property.substr(2) + "\"].MoleFraction";
    }
    return paths.at(property);
}

class RecordedCase : public NeutralModule, public testing::WithParamInterface<const char*> {
 protected:
    void SetUp() override {
        NeutralModule::SetUp();
        const char* given = std::getenv("FIXTOP_CASES");
        const fs::path base = fs::path(given ? given : FIXTOP_CASES) / "real" / GetParam();
        table_ = fs::path(base).concat(".csv");
        const fs::path file = fs::path(base).concat(".dwxmz");
        if (!fs::exists(file) || !fs::exists(table_)) GTEST_SKIP() << "no sample case " << file;
        OpenNeutral(file.string());
    }

    // The number in the table's unit, which the view may have to convert to.
    void Compare(const std::string& stream, const Figure& figure) {
        const std::string path = stream + "." + PathOf(figure.property);
        const auto it = Iterator::Adopt(FixtopMakeIterator(root_.Get(), false));
        ASSERT_TRUE(it->SeekPath(FIValue(path.c_str()))) << path;
        FIValue out;
        if (figure.unit != "-") {
            it->SetDisplayUnit(FIValue(figure.unit.c_str()), FIValue(), out);
            EXPECT_TRUE(out.IsNull()) << path << ": " << out.ToText();
            it->GetAttribute(FIValue("uom"), out);
            EXPECT_EQ(figure.unit, out.ToText()) << path;
        }
        it->GetAttribute(FIValue("value"), out);
        ++compared_;
        if (figure.value.empty()) {
            EXPECT_TRUE(out.IsNull()) << path << ": " << out.ToText();
            return;
        }
        const double expected = std::stod(figure.value);
        EXPECT_EQ(FIValue::kReal, out.Kind()) << path;
        EXPECT_NEAR(expected, out.AsDouble(), std::max(1e-9 * std::abs(expected), 1e-12)) << path;
    }

    void CompareAll(const std::string& list, const std::string& type, std::size_t at_least) {
        const Streams streams = ReadTable(table_, type);
        std::vector<std::string> shown = NamesIn(list);
        std::sort(shown.begin(), shown.end());
        std::vector<std::string> expected;
        for (const auto& [name, figures] : streams) {
            expected.push_back(name);
            for (const Figure& figure : figures) {
                Compare("Flowsheet." + list + "[Name=\"" + name + "\"]", figure);
            }
        }
        EXPECT_EQ(expected, shown);
        EXPECT_GE(compared_, at_least);
    }

    fs::path table_;
    std::size_t compared_ = 0;
};

TEST_P(RecordedCase, material_streams_have_the_tables_figures_in_its_units) {
    CompareAll("Stream", "MaterialStream", 30);
}

TEST_P(RecordedCase, energy_streams_have_the_tables_heat_flow) {
    CompareAll("HeatStream", "EnergyStream", 1);
}

INSTANTIATE_TEST_SUITE_P(Real, RecordedCase,
                         testing::Values("ammonia-synthesis-single-pass",
                                         "benzene-toluene-distillation", "biogas-to-grid",
                                         "natural-gas-dew-point-control",
                                         "steam-methane-reforming-h2"),
                         [](const auto& each) {
                             std::string name = each.param;
                             std::replace(name.begin(), name.end(), '-', '_');
                             return name;
                         });

}  // namespace

}  // namespace fixtop
