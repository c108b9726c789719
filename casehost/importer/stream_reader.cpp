// SPDX-License-Identifier: Apache-2.0
#include "stream_reader.h"

#include <array>

#include "casehost/stream_names.h"
#include "casehost/unit_op_names.h"
#include "object_sheet.h"

namespace fixtop::casehost::importer {

namespace {

enum Place : unsigned { kOverallOnly = 1, kPhasesOnly = 2, kEverywhere = 3 };

// One property of a mixture. `phase_name` is the name of its array over the phases.
struct PropertyRow {
    const char* element;
    const char* name;
    const char* phase_name;
    FileUnit unit;
    Place place;
};

constexpr PropertyRow kProperties[] = {
    {"temperature", names::kTemperature, "", file_unit::kelvin, kOverallOnly},
    {"pressure", names::kPressure, "", file_unit::pascal, kOverallOnly},
    {"molarflow", names::kMolarFlow, "Phase Molar Flow", file_unit::mol_per_second, kEverywhere},
    {"massflow", names::kMassFlow, "Phase Mass Flow", file_unit::kg_per_second, kEverywhere},
    {"volumetric_flow", "Actual Volume Flow", "Phase Actual Volume Flow", file_unit::m3_per_second,
     kEverywhere},
    {"molarfraction", "", names::kPhaseFraction, file_unit::none, kPhasesOnly},
    {"massfraction", "", "Phase Mass Fraction", file_unit::none, kPhasesOnly},
    {"volumetricFraction", "", "Phase Volume Fraction", file_unit::none, kPhasesOnly},
    {"molecularWeight", names::kMolarMass, "Phase Molecular Weight", file_unit::kg_per_kmol,
     kEverywhere},
    {"density", names::kMassDensity, "Phase Mass Density", file_unit::kg_per_m3, kEverywhere},
    {"molar_enthalpy", names::kMolarEnthalpy, "Phase Molar Enthalpy", file_unit::kj_per_kmol,
     kEverywhere},
    {"molar_entropy", names::kMolarEntropy, "Phase Molar Entropy", file_unit::kj_per_kmol_kelvin,
     kEverywhere},
    {"enthalpy", "Mass Enthalpy", "Phase Mass Enthalpy", file_unit::kj_per_kg, kEverywhere},
    {"entropy", "Mass Entropy", "Phase Mass Entropy", file_unit::kj_per_kg_kelvin, kEverywhere},
    {"enthalpyF", "", "Phase Mass Enthalpy With Formation", file_unit::kj_per_kg, kPhasesOnly},
    {"entropyF", "", "Phase Mass Entropy With Formation", file_unit::kj_per_kg_kelvin, kPhasesOnly},
    {"molar_enthalpyF", "", "Phase Molar Enthalpy With Formation", file_unit::kj_per_kmol,
     kPhasesOnly},
    {"molar_entropyF", "", "Phase Molar Entropy With Formation", file_unit::kj_per_kmol_kelvin,
     kPhasesOnly},
    {"internal_energy", "Mass Internal Energy", "Phase Mass Internal Energy", file_unit::kj_per_kg,
     kEverywhere},
    {"gibbs_free_energy", "Mass Gibbs Energy", "Phase Mass Gibbs Energy", file_unit::kj_per_kg,
     kEverywhere},
    {"helmholtz_energy", "Mass Helmholtz Energy", "Phase Mass Helmholtz Energy",
     file_unit::kj_per_kg, kEverywhere},
    {"molar_internal_energy", "Molar Internal Energy", "Phase Molar Internal Energy",
     file_unit::kj_per_kmol, kEverywhere},
    {"molar_gibbs_free_energy", "Molar Gibbs Energy", "Phase Molar Gibbs Energy",
     file_unit::kj_per_kmol, kEverywhere},
    {"molar_helmholtz_energy", "Molar Helmholtz Energy", "Phase Molar Helmholtz Energy",
     file_unit::kj_per_kmol, kEverywhere},
    {"heatCapacityCp", "Mass Heat Capacity", "Phase Mass Heat Capacity",
     file_unit::kj_per_kg_kelvin_capacity, kEverywhere},
    {"heatCapacityCv", "Mass Cv", "Phase Mass Cv", file_unit::kj_per_kg_kelvin_capacity,
     kEverywhere},
    {"idealGasHeatCapacityCp", "", "Phase Ideal Gas Mass Heat Capacity",
     file_unit::kj_per_kg_kelvin_capacity, kPhasesOnly},
    {"idealGasHeatCapacityRatio", "", "Phase Ideal Gas Cp/Cv", file_unit::none, kPhasesOnly},
    {"viscosity", "Viscosity", "Phase Viscosity", file_unit::pascal_second, kEverywhere},
    {"kinematic_viscosity", "Kinematic Viscosity", "Phase Kinematic Viscosity",
     file_unit::m2_per_second, kEverywhere},
    {"thermalConductivity", "Thermal Conductivity", "Phase Thermal Conductivity",
     file_unit::watt_per_metre_kelvin, kEverywhere},
    {"surfaceTension", "Surface Tension", "Phase Surface Tension", file_unit::newton_per_metre,
     kEverywhere},
    {"compressibilityFactor", "Z Factor", "Phase Z Factor", file_unit::none, kEverywhere},
    {"isothermal_compressibility", "", "Phase Isothermal Compressibility",
     file_unit::inverse_pascal, kPhasesOnly},
    {"bulk_modulus", "", "Phase Bulk Modulus", file_unit::pascal_difference, kPhasesOnly},
    {"speedOfSound", "", "Phase Speed of Sound", file_unit::metre_per_second, kPhasesOnly},
    {"jouleThomsonCoefficient", "", "Phase Joule-Thomson Coefficient", file_unit::kelvin_per_pascal,
     kPhasesOnly},
    {"bubblePressure", "Bubble Point Pressure", "", file_unit::pascal, kOverallOnly},
    {"bubbleTemperature", "Bubble Point Temperature", "", file_unit::kelvin, kOverallOnly},
    {"dewPressure", "Dew Point Pressure", "", file_unit::pascal, kOverallOnly},
    {"dewTemperature", "Dew Point Temperature", "", file_unit::kelvin, kOverallOnly},
};

// One property of a compound in a mixture. Those of pure phases mean something in the vapour and
// the first liquid only.
struct CompoundRow {
    const char* element;
    const char* name;
    const char* phase_name;
    FileUnit unit;
    bool pure_phases_only;
    ObjectSheet::Address address;
};

// The number and type by which compositions are known to the host.
constexpr ObjectSheet::Address kComposition{501, 9};

constexpr CompoundRow kCompoundProperties[] = {
    {"MoleFraction", names::kCompMoleFrac, names::kPhaseCompMoleFrac, file_unit::none, false,
     kComposition},
    {"MassFraction", names::kCompMassFrac, "Phase Comp Mass Frac", file_unit::none, false, {}},
    {"MolarFlow", "Comp Molar Flow", "Phase Comp Molar Flow", file_unit::mol_per_second, false, {}},
    {"MassFlow", "Comp Mass Flow", "Phase Comp Mass Flow", file_unit::kg_per_second, false, {}},
    {"Molarity",
     "Comp Molar Concentration",
     "Phase Comp Molar Concentration",
     file_unit::mol_per_m3,
     false,
     {}},
    {"FugacityCoeff", "", "Phase Comp Fugacity Coefficient", file_unit::none, true, {}},
    {"ActivityCoeff", "", "Phase Comp Activity Coefficient", file_unit::none, true, {}},
    {"PartialPressure", "", "Phase Comp Partial Pressure", file_unit::pascal, true, {}},
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
        for (const std::string_view given : names_) {
            if (given == name) return VariableState::specified;
        }
        return VariableState::calculated;
    }

 private:
    std::vector<std::string_view> names_;
};

std::vector<std::string> LabelsOf(const std::vector<PhaseRow>& phases) {
    std::vector<std::string> labels;
    labels.reserve(phases.size());
    for (const PhaseRow& phase : phases) labels.push_back(phase.label);
    return labels;
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
        FindExistingPhases();
        return true;
    }
    void FindExistingPhases() {
        for (const PhaseRow& phase : kPhases) {
            const Number fraction = Property(phase.id, "molarfraction");
            if (fraction && *fraction > 0) existing_.push_back(phase);
        }
    }
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
        sheet_.Real(names::kVapourFraction, file_unit::none, VapourFraction(),
                    given_.StateOf(names::kVapourFraction));
        sheet_.Real("Total Energy Flow", file_unit::kilowatt,
                    ReadNumber(reading_, node_.Child("TotalEnergyFlow")),
                    VariableState::calculated);
        WriteDerived();
    }
    // Heat flow leaves out heats of formation, as the enthalpies do.
    void WriteDerived() {
        const auto product = [this](const char* a, const char* b) -> Number {
            const Number x = Property(kMixture, a);
            const Number y = Property(kMixture, b);
            return x && y ? Number(*x * *y) : std::nullopt;
        };
        sheet_.Real(names::kHeatFlow, file_unit::kilowatt, product("massflow", "enthalpy"),
                    VariableState::calculated);
        sheet_.Real(names::kMolarHeatCapacity, file_unit::kj_per_kmol_kelvin_capacity,
                    product("heatCapacityCp", "molecularWeight"), VariableState::calculated);
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
        bool vapour = false, liquid = false;
        for (const PhaseRow& phase : existing_) {
            vapour = vapour || phase.id == kVapour;
            liquid = liquid || phase.id == kTotalLiquid;
        }
        write("Comp K Value - Mixed Liquid", "Kvalue", file_unit::none, vapour && liquid, {});
    }
    void WritePhases() {
        for (const PropertyRow& row : kProperties) {
            if (!(row.place & kPhasesOnly)) continue;
            std::vector<Number> values;
            for (const PhaseRow& phase : existing_)
                values.push_back(Property(phase.id, row.element));
            sheet_.Array(row.phase_name, row.unit, {LabelledBy(LabelsOf(existing_))}, values,
                         VariableState::calculated);
        }
    }
    void WritePhaseCompounds() {
        for (const CompoundRow& row : kCompoundProperties) {
            std::vector<Number> values;
            for (const PhaseRow& phase : existing_) {
                const bool pure = phase.id == kVapour || phase.id == kFirstLiquid;
                AppendCompounds(phase.id, row.element, pure || !row.pure_phases_only, values);
            }
            sheet_.Array(row.phase_name, row.unit,
                         {LabelledBy(LabelsOf(existing_)), LabelledBy(reading_.compounds)}, values,
                         VariableState::calculated);
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
    std::vector<PhaseRow> existing_;
};

}  // namespace

void ReadMaterialStream(Reading& reading, const FileObject& stream, ObjectData& object) {
    MaterialStream(reading, stream, object).Read();
}

void ReadEnergyStream(Reading& reading, const FileObject& stream, bool specified,
                      ObjectData& object) {
    ObjectSheet(reading, object)
        .Real(names::kHeatFlow, file_unit::kilowatt,
              ReadNumber(reading, stream.node.Child("EnergyFlow")),
              specified ? VariableState::specified : VariableState::calculated);
}

}  // namespace fixtop::casehost::importer
