// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <array>
#include <cmath>

#include "casehost/stream_names.h"
#include "casehost/unit_op_names.h"
#include "object_sheet.h"
#include "readers.h"

namespace fixtop::casehost::importer {

namespace {

using namespace file_unit;
using enum VariableState;

enum Place : unsigned { kOverallOnly = 1, kPhasesOnly = 2, kEverywhere = 3 };

// One property of a mixture. The array over the phases has the name behind "Phase ".
struct PropertyRow {
    const char* element;
    const char* name;
    FileUnit unit;
    Place place = kEverywhere;
};

constexpr PropertyRow kProperties[] = {
    {"temperature", names::kTemperature, kelvin, kOverallOnly},
    {"pressure", names::kPressure, pascal, kOverallOnly},
    {"molarflow", names::kMolarFlow, mol_per_second},
    {"massflow", names::kMassFlow, kg_per_second},
    {"volumetric_flow", "Actual Volume Flow", m3_per_second},
    {"molarfraction", "Fraction", none, kPhasesOnly},
    {"massfraction", "Mass Fraction", none, kPhasesOnly},
    {"volumetricFraction", "Volume Fraction", none, kPhasesOnly},
    {"molecularWeight", names::kMolarMass, kg_per_kmol},
    {"density", names::kMassDensity, kg_per_m3},
    {"molar_enthalpy", names::kMolarEnthalpy, kj_per_kmol},
    {"molar_entropy", names::kMolarEntropy, kj_per_kmol_kelvin},
    {"enthalpy", "Mass Enthalpy", kj_per_kg},
    {"entropy", "Mass Entropy", kj_per_kg_kelvin},
    {"enthalpyF", "Mass Enthalpy With Formation", kj_per_kg, kPhasesOnly},
    {"entropyF", "Mass Entropy With Formation", kj_per_kg_kelvin, kPhasesOnly},
    {"molar_enthalpyF", "Molar Enthalpy With Formation", kj_per_kmol, kPhasesOnly},
    {"molar_entropyF", "Molar Entropy With Formation", kj_per_kmol_kelvin, kPhasesOnly},
    {"internal_energy", "Mass Internal Energy", kj_per_kg},
    {"gibbs_free_energy", "Mass Gibbs Energy", kj_per_kg},
    {"helmholtz_energy", "Mass Helmholtz Energy", kj_per_kg},
    {"molar_internal_energy", "Molar Internal Energy", kj_per_kmol},
    {"molar_gibbs_free_energy", "Molar Gibbs Energy", kj_per_kmol},
    {"molar_helmholtz_energy", "Molar Helmholtz Energy", kj_per_kmol},
    {"heatCapacityCp", "Mass Heat Capacity", kj_per_kg_kelvin_capacity},
    {"heatCapacityCv", "Mass Cv", kj_per_kg_kelvin_capacity},
    {"idealGasHeatCapacityCp", "Ideal Gas Mass Heat Capacity", kj_per_kg_kelvin_capacity,
     kPhasesOnly},
    {"idealGasHeatCapacityRatio", "Ideal Gas Cp/Cv", none, kPhasesOnly},
    {"viscosity", "Viscosity", pascal_second},
    {"kinematic_viscosity", "Kinematic Viscosity", m2_per_second},
    {"thermalConductivity", "Thermal Conductivity", watt_per_metre_kelvin},
    {"surfaceTension", "Surface Tension", newton_per_metre},
    {"compressibilityFactor", "Z Factor", none},
    {"isothermal_compressibility", "Isothermal Compressibility", inverse_pascal, kPhasesOnly},
    {"bulk_modulus", "Bulk Modulus", pascal_difference, kPhasesOnly},
    {"speedOfSound", "Speed of Sound", metre_per_second, kPhasesOnly},
    {"jouleThomsonCoefficient", "Joule-Thomson Coefficient", kelvin_per_pascal, kPhasesOnly},
    {"bubblePressure", "Bubble Point Pressure", pascal, kOverallOnly},
    {"bubbleTemperature", "Bubble Point Temperature", kelvin, kOverallOnly},
    {"dewPressure", "Dew Point Pressure", pascal, kOverallOnly},
    {"dewTemperature", "Dew Point Temperature", kelvin, kOverallOnly},
};

// One property of a compound in a mixture. Those of pure phases mean something in the vapour and
// the first liquid only.
struct CompoundRow {
    const char* element;
    const char* name;
    const char* phase_name;
    FileUnit unit;
    bool pure_phases_only = false;
    ObjectSheet::Address address = {0, 0};
};

// The number and type by which compositions are known to the host.
constexpr ObjectSheet::Address kComposition{501, 9};

constexpr CompoundRow kCompoundProperties[] = {
    {"MoleFraction", names::kCompMoleFrac, names::kPhaseCompMoleFrac, none, false, kComposition},
    {"MassFraction", names::kCompMassFrac, "Phase Comp Mass Frac", none},
    {"MolarFlow", "Comp Molar Flow", "Phase Comp Molar Flow", mol_per_second},
    {"MassFlow", "Comp Mass Flow", "Phase Comp Mass Flow", kg_per_second},
    {"Molarity", "Comp Molar Concentration", "Phase Comp Molar Concentration", mol_per_m3},
    {"FugacityCoeff", "", "Phase Comp Fugacity Coefficient", none, true},
    {"ActivityCoeff", "", "Phase Comp Activity Coefficient", none, true},
    {"PartialPressure", "", "Phase Comp Partial Pressure", pascal, true},
};

constexpr int kMixture = 0, kTotalLiquid = 1, kVapour = 2, kFirstLiquid = 3;
constexpr int kPhaseCount = 8;

// In the order in which they are shown.
struct PhaseRow {
    int id;
    const char* label;
};
constexpr PhaseRow kPhases[] = {
    {kVapour, names::kVapourPhase},
    {kTotalLiquid, "Total Liquid Phase"},
    {kFirstLiquid, names::kLiquidPhase},
    {4, "Second Liquid Phase"},
    {5, "Third Liquid Phase"},
    {6, "Aqueous Phase"},
    {7, "Solid Phase"},
};

// What fixes the state of a stream that is given.
struct StateRow {
    const char* spec_type;
    const char* first;
    const char* second;
};
constexpr StateRow kStates[] = {
    {"Temperature_and_Pressure", names::kTemperature, names::kPressure},
    {"Pressure_and_Enthalpy", names::kPressure, "Mass Enthalpy"},
    {"Pressure_and_Entropy", names::kPressure, "Mass Entropy"},
    {"Pressure_and_VaporFraction", names::kPressure, names::kVapourFraction},
    {"Temperature_and_VaporFraction", names::kTemperature, names::kVapourFraction},
};
struct FlowRow {
    const char* defined_flow;
    const char* name;
};
constexpr FlowRow kFlows[] = {
    {"Mole", names::kMolarFlow}, {"Mass", names::kMassFlow}, {"Volumetric", "Actual Volume Flow"}};

// The variables that are given rather than computed. Streams that a unit operation makes carry
// words about how it set them, which say nothing about the user's choice.
class Given {
 public:
    explicit Given(XmlNode stream) {
        const std::string_view type = stream.Child("StreamType").Text();
        if (type != "Feed" && type != "Recycle_Out") return;
        names_ = {names::kCompMoleFrac};
        for (const StateRow& row : kStates) {
            if (stream.Child("SpecType").Text() != row.spec_type) continue;
            names_.insert(names_.end(), {row.first, row.second});
        }
        for (const FlowRow& row : kFlows) {
            if (stream.Child("DefinedFlow").Text() == row.defined_flow) names_.push_back(row.name);
        }
    }
    VariableState StateOf(std::string_view name) const {
        const bool given = std::ranges::find(names_, name) != names_.end();
        return given ? specified : calculated;
    }

 private:
    std::vector<std::string_view> names_;
};

// The number of an element as a whole number from 0; null when it is null or anything else.
std::optional<int> ReadCount(Reading& reading, XmlNode leaf) {
    const Number value = ReadNumber(reading, leaf);
    if (!value || *value < 0 || *value > 1e6 || *value != std::floor(*value)) return std::nullopt;
    return static_cast<int>(*value);
}

class MaterialStream {
 public:
    MaterialStream(Reading& reading, const FileObject& stream, ObjectData& object)
        : reading_(reading), node_(stream.node), sheet_(reading, object), given_(stream.node) {}

    void Read() {
        if (!FindPhases()) return;
        WriteOverall();
        WriteOverallCompounds();
        WritePhases();
        WritePhaseCompounds();
    }

 private:
    bool FindPhases() {
        const XmlNode list = node_.Child("Phases");
        for (XmlNode phase : Children(list)) {
            const std::optional<int> id = ReadCount(reading_, phase.Child("ID"));
            if (!id || *id >= kPhaseCount || phases_[*id]) {
                reading_.problems.Error(phase, "expected phases with the IDs 0 to 7, each once");
                continue;
            }
            phases_[*id] = phase;
            properties_[*id] = phase.ChildWithElements("Properties");
        }
        if (!phases_[kMixture]) {
            reading_.problems.Error(node_,
                                    "the stream has no phases; expected Phases with the mixture "
                                    "as Phase of ID 0");
            return false;
        }
        for (const PhaseRow& phase : kPhases) {
            const Number fraction = Property(phase.id, "molarfraction");
            if (!fraction || *fraction <= 0) continue;
            existing_.push_back(phase.id);
            phase_labels_.push_back(phase.label);
        }
        return true;
    }
    bool Exists(int phase) const { return std::ranges::find(existing_, phase) != existing_.end(); }
    Number Property(int phase, const char* element) {
        return ReadNumber(reading_, properties_[phase].Child(element));
    }
    Number VapourFraction() {
        if (const Number vapour = Property(kVapour, "molarfraction")) return vapour;
        const Number liquid = Property(kTotalLiquid, "molarfraction");
        return liquid && *liquid > 0 ? Number(0.0) : std::nullopt;
    }
    void WriteOverall() {
        for (const PropertyRow& row : kProperties) {
            if (!(row.place & kOverallOnly)) continue;
            sheet_.Real(row.name, row.unit, Property(kMixture, row.element),
                        given_.StateOf(row.name));
        }
        sheet_.Real(names::kVapourFraction, none, VapourFraction(),
                    given_.StateOf(names::kVapourFraction));
        sheet_.Real("Total Energy Flow", kilowatt,
                    ReadNumber(reading_, node_.Child("TotalEnergyFlow")));
        WriteDerived();
    }
    // Heat flow leaves out heats of formation, as the enthalpies do.
    void WriteDerived() {
        const auto product = [this](const char* a, const char* b) -> Number {
            const Number x = Property(kMixture, a);
            const Number y = Property(kMixture, b);
            return x && y ? Number(*x * *y) : std::nullopt;
        };
        sheet_.Real(names::kHeatFlow, kilowatt, product("massflow", "enthalpy"));
        sheet_.Real(names::kMolarHeatCapacity, kj_per_kmol_kelvin_capacity,
                    product("heatCapacityCp", "molecularWeight"));
    }
    void WriteOverallCompounds() {
        const auto write = [this](const char* name, const char* element, FileUnit unit, bool wanted,
                                  ObjectSheet::Address address) {
            std::vector<Number> values;
            AppendCompounds(kMixture, element, wanted, values);
            sheet_.Array(name, unit, {LabelledBy(reading_.compounds)}, values, given_.StateOf(name),
                         address);
        };
        for (const CompoundRow& row : kCompoundProperties) {
            if (!row.pure_phases_only) write(row.name, row.element, row.unit, true, row.address);
        }
        const bool two_phases = Exists(kVapour) && Exists(kTotalLiquid);
        write("Comp K Value - Mixed Liquid", "Kvalue", none, two_phases, {0, 0});
    }
    void WritePhases() {
        for (const PropertyRow& row : kProperties) {
            if (!(row.place & kPhasesOnly)) continue;
            std::vector<Number> values;
            for (int phase : existing_) values.push_back(Property(phase, row.element));
            sheet_.Array(std::string("Phase ") + row.name, row.unit, {LabelledBy(phase_labels_)},
                         values);
        }
    }
    void WritePhaseCompounds() {
        for (const CompoundRow& row : kCompoundProperties) {
            std::vector<Number> values;
            for (int phase : existing_) {
                const bool pure = phase == kVapour || phase == kFirstLiquid;
                AppendCompounds(phase, row.element, pure || !row.pure_phases_only, values);
            }
            sheet_.Array(row.phase_name, row.unit,
                         {LabelledBy(phase_labels_), LabelledBy(reading_.compounds)}, values);
        }
    }
    void AppendCompounds(int phase, const char* element, bool wanted, std::vector<Number>& values) {
        const std::size_t begin = values.size();
        values.resize(begin + reading_.compounds.size());
        if (!wanted) return;
        for (XmlNode compound : Children(phases_[phase].ChildWithElements("Compounds"))) {
            const auto index = FindCompound(reading_, compound, compound.Child("Name").Text());
            if (!index) return;
            values[begin + *index] = ReadNumber(reading_, compound.Child(element));
        }
    }

    Reading& reading_;
    XmlNode node_;
    ObjectSheet sheet_;
    Given given_;
    std::array<XmlNode, kPhaseCount> phases_;
    std::array<XmlNode, kPhaseCount> properties_;
    std::vector<int> existing_;
    std::vector<std::string> phase_labels_;
};

}  // namespace

void ReadMaterialStream(Reading& reading, const FileObject& stream, ObjectData& object) {
    MaterialStream(reading, stream, object).Read();
}

void ReadEnergyStream(Reading& reading, const FileObject& stream, bool specified,
                      ObjectData& object) {
    ObjectSheet(reading, object)
        .Real(names::kHeatFlow, kilowatt, ReadNumber(reading, stream.node.Child("EnergyFlow")),
              specified ? VariableState::specified : calculated);
}

}  // namespace fixtop::casehost::importer
