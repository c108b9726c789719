// SPDX-License-Identifier: Apache-2.0
#include <algorithm>

#include "object_sheet.h"
#include "readers.h"

namespace fixtop::casehost::importer {

namespace {

using namespace file_unit;
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
    {"T", "Stage Temperature", kelvin, calculated},
    {"P", "Stage Pressure", pascal, specified},
    {"Efficiency", "Stage Efficiency", none, specified},
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

constexpr FileUnit kSpecUnits[] = {none, mol_per_second, kg_per_second, kilowatt, kelvin};
const std::vector<Choice> kSpecTypes =
    Words({"Heat_Duty", "Product_Molar_Flow_Rate", "Component_Molar_Flow_Rate",
           "Product_Mass_Flow_Rate", "Component_Mass_Flow_Rate", "Component_Fraction",
           "Component_Recovery", "Stream_Ratio", "Temperature", "Feed_Recovery"});

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
        stages_ =
            OfChildren<std::string>(list, [](XmlNode stage) { return stage.Child("Name").Text(); });
        const auto trays = std::ranges::count_if(stages_, [](const std::string& name) {
            return name != kCondenser && name != kReboiler;
        });
        sheet_.Real("Number of Trays", none, static_cast<double>(trays), specified);
        for (const StageRow& row : kStageRows) {
            const auto values = OfChildren<Number>(list, [&](XmlNode stage) {
                return ReadNumber(reading_, stage.Child(row.element));
            });
            sheet_.Array(row.name, row.unit, {LabelledBy(stages_)}, values, row.state);
        }
    }
    // Their IDs are C and R.
    void ReadSpecs() {
        for (XmlNode spec : Children(node_.Child("Specs"))) {
            for (const std::string place : {kCondenser, kReboiler}) {
                if (spec.Attribute("ID") == place.substr(0, 1)) ReadSpec(place + " Spec ", spec);
            }
        }
    }
    // A value in a unit that isn't known here keeps it, as a text beside the number.
    void ReadSpec(const std::string& prefix, XmlNode spec) {
        const std::string_view unit_text = spec.Child("SpecUnit").Text();
        const auto known = std::ranges::find(kSpecUnits, unit_text, &FileUnit::name);
        const FileUnit unit = known == std::end(kSpecUnits) ? none : *known;
        sheet_.Option(prefix + "Type", kSpecTypes, spec.Child("SType").Text(), specified);
        sheet_.Real(prefix + "Value", unit, ReadNumber(reading_, spec.Child("SpecValue")),
                    specified);
        sheet_.Real(prefix + "Calculated Value", unit,
                    ReadNumber(reading_, spec.Child("CalculatedValue")));
        if (known == std::end(kSpecUnits)) sheet_.Text(prefix + "Unit", unit_text, specified);
    }
    // Stages are counted from 0 at the top.
    void ReadAttachedStreams() {
        LabelledNumbers feeds, products;
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
            const auto stage = std::ranges::find(stages_, entry.Child("AssociatedStage").Text());
            const Number number = stage == stages_.end()
                                      ? Number()
                                      : Number(static_cast<double>(stage - stages_.begin()));
            const bool feed = entry.Child("StreamBehavior").Text() == "Feed";
            LabelledNumbers& list = feed ? feeds : products;
            list.labels.push_back(stream->tag);
            list.values.push_back(number);
        }
        sheet_.Array("Feed Stage", none, {LabelledBy(feeds.labels)}, feeds.values, specified);
        sheet_.Array("Product Stage", none, {LabelledBy(products.labels)}, products.values,
                     specified);
    }
    void ReadFlows(XmlNode vector, const char* name) {
        std::vector<Number> values;
        if (!vector || !AppendVector(vector, stages_.size(), values)) return;
        sheet_.Array(name, mol_per_second, {LabelledBy(stages_)}, values);
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
        sheet_.Array(name, none, {LabelledBy(stages_), LabelledBy(compounds)}, values);
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
