// SPDX-License-Identifier: Apache-2.0
#include <algorithm>

#include "object_sheet.h"
#include "unit_reader.h"

namespace fixtop::casehost::importer {

namespace {

using enum VariableState;

constexpr char kCondenser[] = "Condenser";
constexpr char kReboiler[] = "Reboiler";

// Profiles of the stages themselves, in full precision.
struct StageRow {
    const char* element;
    const char* name;
    FileUnit unit;
    VariableState state;
};
constexpr StageRow kStageRows[] = {
    {"T", "Stage Temperature", file_unit::kelvin, calculated},
    {"P", "Stage Pressure", file_unit::pascal, specified},
    {"Efficiency", "Stage Efficiency", file_unit::none, specified},
};

// Profiles of the results, one number for each stage.
struct VectorRow {
    const char* element;
    const char* name;
};
constexpr VectorRow kFlowVectors[] = {
    {"Vf", "Stage Vapour Molar Flow"},
    {"Lf", "Stage Liquid Molar Flow"},
    {"VSSf", "Stage Vapour Draw Molar Flow"},
    {"LSSf", "Stage Liquid Draw Molar Flow"},
};
// One row of numbers for each stage, one number for each compound.
constexpr VectorRow kCompoundMatrices[] = {
    {"xf", "Stage Liquid Mole Frac"},
    {"yf", "Stage Vapour Mole Frac"},
    {"Kf", "Stage K Value"},
};

struct SpecRow {
    const char* id;
    const char* type_name;
    const char* value_name;
    const char* unit_name;
    const char* result_name;
};
constexpr SpecRow kSpecs[] = {
    {"C", "Condenser Spec Type", "Condenser Spec Value", "Condenser Spec Unit",
     "Condenser Spec Calculated Value"},
    {"R", "Reboiler Spec Type", "Reboiler Spec Value", "Reboiler Spec Unit",
     "Reboiler Spec Calculated Value"},
};

struct SpecUnitRow {
    const char* text;
    FileUnit unit;
};
constexpr SpecUnitRow kSpecUnits[] = {
    {"", file_unit::none},
    {"mol/s", file_unit::mol_per_second},
    {"kg/s", file_unit::kg_per_second},
    {"kW", file_unit::kilowatt},
    {"K", file_unit::kelvin},
};

const std::vector<Choice>& SpecTypes() {
    static const std::vector<Choice> types = [] {
        std::vector<Choice> choices;
        for (const char* word :
             {"Heat_Duty", "Product_Molar_Flow_Rate", "Component_Molar_Flow_Rate",
              "Product_Mass_Flow_Rate", "Component_Mass_Flow_Rate", "Component_Fraction",
              "Component_Recovery", "Stream_Ratio", "Temperature", "Feed_Recovery"}) {
            choices.push_back({word, word});
        }
        return choices;
    }();
    return types;
}

class Column {
 public:
    Column(Reading& reading, const FlowsheetFile& file, XmlNode node, ObjectData& object)
        : reading_(reading), file_(file), node_(node), sheet_(reading, object) {}

    void Read() {
        ReadStages();
        ReadSpecs();
        ReadAttachedStreams();
        const XmlNode results = node_.Child("Results");
        if (!results) return;
        for (const VectorRow& row : kFlowVectors) ReadFlows(results.Child(row.element), row.name);
        const std::vector<std::string> compounds = Compounds(results.Child("compids").Text());
        for (const VectorRow& row : kCompoundMatrices) {
            ReadMatrix(results.Child(row.element), row.name, compounds);
        }
    }

 private:
    void ReadStages() {
        const XmlNode list = node_.Child("Stages");
        double trays = 0;
        for (XmlNode stage : Children(list)) {
            stages_.emplace_back(stage.Child("Name").Text());
            if (stages_.back() != kCondenser && stages_.back() != kReboiler) ++trays;
        }
        sheet_.Real("Number of Trays", file_unit::none, trays, specified);
        for (const StageRow& row : kStageRows) {
            std::vector<Number> values;
            for (XmlNode stage : Children(list)) {
                values.push_back(ReadNumber(reading_, stage.Child(row.element)));
            }
            sheet_.Array(row.name, row.unit, {LabelledBy(stages_)}, values, row.state);
        }
    }
    void ReadSpecs() {
        for (XmlNode spec : Children(node_.Child("Specs"))) {
            for (const SpecRow& row : kSpecs) {
                if (spec.Attribute("ID") == row.id) ReadSpec(row, spec);
            }
        }
    }
    // A value in a unit that isn't known here keeps it, as a text beside the number.
    void ReadSpec(const SpecRow& row, XmlNode spec) {
        const std::string_view unit_text = spec.Child("SpecUnit").Text();
        FileUnit unit = file_unit::none;
        bool known = false;
        for (const SpecUnitRow& candidate : kSpecUnits) {
            if (unit_text != candidate.text) continue;
            unit = candidate.unit;
            known = true;
        }
        sheet_.Option(row.type_name, SpecTypes(), spec.Child("SType").Text(), specified);
        sheet_.Real(row.value_name, unit, ReadNumber(reading_, spec.Child("SpecValue")), specified);
        sheet_.Real(row.result_name, unit, ReadNumber(reading_, spec.Child("CalculatedValue")));
        if (!known) sheet_.Text(row.unit_name, unit_text, specified);
    }
    // Stages are counted from 0 at the top.
    void ReadAttachedStreams() {
        std::vector<std::string> feeds, products;
        std::vector<Number> feed_stages, product_stages;
        for (XmlNode entry : Children(node_.Child("MaterialStreams"))) {
            const std::string_view id = entry.Attribute("ID").value_or("");
            const FileObject* stream = file_.Find(id);
            if (!stream) {
                reading_.problems.Error(entry,
                                        "the column names the stream '" + std::string(id) +
                                            "', which is no object of the file; expected the "
                                            "id of a stream");
                continue;
            }
            const auto stage =
                std::find(stages_.begin(), stages_.end(), entry.Child("AssociatedStage").Text());
            const Number number = stage == stages_.end()
                                      ? Number()
                                      : Number(static_cast<double>(stage - stages_.begin()));
            const bool feed = entry.Child("StreamBehavior").Text() == "Feed";
            (feed ? feeds : products).push_back(stream->tag);
            (feed ? feed_stages : product_stages).push_back(number);
        }
        sheet_.Array("Feed Stage", file_unit::none, {LabelledBy(feeds)}, feed_stages, specified);
        sheet_.Array("Product Stage", file_unit::none, {LabelledBy(products)}, product_stages,
                     specified);
    }
    void ReadFlows(XmlNode vector, const char* name) {
        std::vector<Number> values;
        if (!vector || !AppendVector(vector, stages_.size(), values)) return;
        sheet_.Array(name, file_unit::mol_per_second, {LabelledBy(stages_)}, values);
    }
    void ReadMatrix(XmlNode matrix, const char* name, const std::vector<std::string>& compounds) {
        if (!matrix) return;
        std::vector<Number> values;
        std::size_t rows = 0;
        for (XmlNode row : Children(matrix)) {
            if (!AppendVector(row, compounds.size(), values)) return;
            ++rows;
        }
        if (rows != stages_.size()) {
            reading_.problems.Error(matrix, "expected a row for each of " +
                                                std::to_string(stages_.size()) + " stages, found " +
                                                std::to_string(rows));
            return;
        }
        sheet_.Array(name, file_unit::none, {LabelledBy(stages_), LabelledBy(compounds)}, values);
    }
    // "{a; b; c}"
    bool AppendVector(XmlNode node, std::size_t expected, std::vector<Number>& values) {
        std::string_view text = node.Text();
        if (text.size() < 2 || text.front() != '{' || text.back() != '}') {
            reading_.problems.Error(node, "expected numbers as '{a; b; c}'");
            return false;
        }
        const std::vector<Number> numbers =
            ParseNumbers(reading_, node, text.substr(1, text.size() - 2), ";");
        values.insert(values.end(), numbers.begin(), numbers.end());
        if (numbers.size() == expected) return true;
        reading_.problems.Error(node, "expected " + std::to_string(expected) + " numbers, found " +
                                          std::to_string(numbers.size()));
        return false;
    }
    // Names are parted by commas and may hold some themselves: a known compound is taken whole.
    std::vector<std::string> Compounds(std::string_view list) const {
        std::vector<std::string> compounds;
        while (!list.empty()) {
            std::size_t size = std::min(list.find(','), list.size());
            for (const std::string& known : reading_.compounds) {
                const bool ends = known.size() == list.size() ||
                                  (known.size() < list.size() && list[known.size()] == ',');
                if (known.size() > size && ends && list.starts_with(known)) size = known.size();
            }
            compounds.emplace_back(list.substr(0, size));
            list.remove_prefix(std::min(size + 1, list.size()));
        }
        return compounds;
    }

    Reading& reading_;
    const FlowsheetFile& file_;
    XmlNode node_;
    ObjectSheet sheet_;
    std::vector<std::string> stages_;
};

}  // namespace

void ReadColumnLists(Reading& reading, const FlowsheetFile& file, const FileObject& unit,
                     ObjectData& object) {
    Column(reading, file, unit.node, object).Read();
}

}  // namespace fixtop::casehost::importer
