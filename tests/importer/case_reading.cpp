// SPDX-License-Identifier: Apache-2.0
#include "case_reading.h"

#include <gtest/gtest.h>

#include "support/zip_writer.h"

namespace fixtop::casehost::test {

std::string ZipOf(const std::vector<Entry>& entries) {
    ZipWriter zip;
    for (const Entry& entry : entries) {
        EXPECT_TRUE(zip.Add(entry.name, entry.text, entry.deflated, entry.password)) << entry.name;
    }
    return zip.Close();
}

std::string ZipOf(const std::string& xml) {
    return ZipOf({{"case.xml", xml}});
}

namespace {

std::string Phase(int id, const std::string& properties, const char* a, const char* b) {
    std::string text = "<Phase>\n<ID>" + std::to_string(id) + "</ID>\n<Compounds>\n";
    for (const auto& [name, fraction] : {std::pair("A", a), std::pair("B", b)}) {
        text += std::string("<Compound><Name>") + name + "</Name><MoleFraction>" + fraction +
                "</MoleFraction></Compound>\n";
    }
    return text +
           "</Compounds>\n<Properties>a.type.word</Properties>\n<Compounds>a.type</Compounds>\n" +
           "<Properties>" + properties + "</Properties>\n</Phase>\n";
}

std::string Stream(const std::string& id, const std::string& type) {
    return "<SimulationObject>\n<Type>Some.Streams.MaterialStream</Type>\n<Name>" + id +
           "</Name>\n<Calculated>true</Calculated><ErrorMessage></ErrorMessage>\n<StreamType>" +
           type +
           "</StreamType><SpecType>Temperature_and_Pressure</SpecType>"
           "<DefinedFlow>Mole</DefinedFlow>\n<Phases>\n" +
           Phase(
               0,
               "<temperature>300</temperature><pressure>101325</pressure><molarflow>10</molarflow>"
               "<massflow>0.5</massflow><enthalpy>NaN</enthalpy><molarfraction>1</molarfraction>",
               "0.25", "0.75") +
           Phase(1, "<molarfraction>0.4</molarfraction><density>800</density>", "0.1", "0.9") +
           Phase(2, "<molarfraction>0.6</molarfraction><density>2</density>", "0.35", "0.65") +
           Phase(3, "<molarfraction>0.4</molarfraction><density>800</density>", "0.1", "0.9") +
           Phase(4, "<density>123</density>", "0.5", "0.5") + "</Phases>\n</SimulationObject>\n";
}

std::string Graphic(const std::string& id, const std::string& tag, const std::string& outlets) {
    return "<GraphicObject><Name>" + id + "</Name>\n<Tag>" + tag +
           "</Tag><Status>Calculated</Status>\n<OutputConnectors>" + outlets +
           "</OutputConnectors></GraphicObject>\n";
}

std::string Outlet(const std::string& target, int port) {
    return "<Connector IsAttached=\"true\" AttachedToObjID=\"" + target +
           "\" AttachedToConnIndex=\"" + std::to_string(port) + "\"/>";
}

}  // namespace

std::string SmallFlowsheet() {
    return "\xEF\xBB\xBF<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n<DWSIM_Simulation_Data>\n"
           "<Settings><SimulationName>Small</SimulationName></Settings>\n<SimulationObjects>\n" +
           Stream("m1", "Feed") +
           "<SimulationObject><Type>Some.UnitOperations.Heater</Type><Name>h1</Name>\n"
           "<CalcMode>OutletTemperature</CalcMode><OutletTemperature>350</OutletTemperature>\n"
           "<DeltaQ>12.5</DeltaQ><DeltaP>1000</DeltaP><Eficiencia>90</Eficiencia>\n"
           "<Calculated>true</Calculated><ErrorMessage></ErrorMessage></SimulationObject>\n" +
           Stream("m2", "Product") +
           "<SimulationObject><Type>Some.Streams.EnergyStream</Type><Name>e1</Name>\n"
           "<EnergyFlow>12.5</EnergyFlow>\n"
           "<Calculated>true</Calculated><ErrorMessage></ErrorMessage></SimulationObject>\n"
           "</SimulationObjects>\n<GraphicObjects>\n" +
           Graphic("m1", "feed", Outlet("h1", 0)) +
           Graphic("h1", "H", "<Connector IsAttached=\"false\"/>" + Outlet("m2", 0)) +
           Graphic("m2", "product", "<Connector IsAttached=\"false\"/>") +
           Graphic("e1", "Q", Outlet("h1", 1)) +
           "</GraphicObjects>\n<PropertyPackages><PropertyPackage><Tag>Ideal</Tag></"
           "PropertyPackage>"
           "</PropertyPackages>\n<Compounds>\n"
           "<Compound><Name>A</Name><Formula>AH</Formula><Molar_Weight>40</Molar_Weight>"
           "<Critical_Pressure>5000000</Critical_Pressure><CAS_Number>1-2-3</CAS_Number>"
           "<IdealgasCpEquation>100</IdealgasCpEquation>"
           "<Ideal_Gas_Heat_Capacity_Const_A>30000</Ideal_Gas_Heat_Capacity_Const_A>"
           "<Ideal_Gas_Heat_Capacity_Const_B>25</Ideal_Gas_Heat_Capacity_Const_B></Compound>\n"
           "<Compound><Name>B</Name><Molar_Weight>60</Molar_Weight></Compound>\n</Compounds>\n"
           "</DWSIM_Simulation_Data>\n";
}

std::string SmallFlowsheetWith(std::string_view from, std::string_view to) {
    std::string text = SmallFlowsheet();
    const std::size_t place = text.find(from);
    EXPECT_NE(place, std::string::npos) << from;
    if (place != std::string::npos) text.replace(place, from.size(), to);
    return text;
}

const ObjectData* FindObject(const CaseData& data, std::string_view name) {
    for (const ObjectData& object : data.main.objects) {
        if (object.name == name) return &object;
    }
    return nullptr;
}

const VariableData* FindVariable(const ObjectData* object, std::string_view name) {
    if (!object) return nullptr;
    for (const VariableData& variable : object->variables) {
        if (variable.spec->name == name) return &variable;
    }
    return nullptr;
}

const ValueData* FindValue(const ObjectData* object, std::string_view name,
                           std::string_view label) {
    const VariableData* variable = FindVariable(object, name);
    if (!variable) return nullptr;
    if (variable->spec->dimensions.empty()) {
        return label.empty() ? &variable->values.front() : nullptr;
    }
    const std::vector<std::string>& labels = variable->spec->dimensions.back().labels;
    for (std::size_t i = 0; i < labels.size() && i < variable->values.size(); ++i) {
        if (labels[i] == label) return &variable->values[i];
    }
    return nullptr;
}

std::string Shown(const VariableData& variable) {
    const ValueData& value = variable.values.front();
    if (variable.spec->kind == ValueKind::text) return value.text;
    const auto ordinal = static_cast<std::size_t>(value.number);
    return value.number >= 0 && ordinal < variable.spec->options.size()
               ? variable.spec->options[ordinal]
               : std::string();
}

std::string Lines(const ReadResult& result) {
    std::string lines;
    for (const CaseProblem& problem : result.problems) lines += problem.Text() + "\n";
    return lines;
}

}  // namespace fixtop::casehost::test
