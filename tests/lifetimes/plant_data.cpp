// SPDX-License-Identifier: Apache-2.0
#include "lifetimes/plant_data.h"

#include "casehost/case_builder.h"

namespace fixtop {

namespace lifetimes {

using casehost::BasisElement;
using casehost::CaseData;
using casehost::ElementNaming;
using casehost::FlowsheetData;
using casehost::ObjectData;
namespace build = casehost::test;

namespace {

constexpr double kPerGeneration = 1000;

ObjectData Signal(const std::string& name, double number) {
    return build::Object(name, "RTIVariableObject",
                         {build::Real("Value", "Temperature", TemperatureOf(number))});
}

BasisElement Package() {
    BasisElement package = build::Element("Package", BasisElement::Kind::group);
    BasisElement tuned = build::Element("Tuned", BasisElement::Kind::variable, kTuned);
    tuned.quantity = "Pressure";
    tuned.state = casehost::VariableState::specified;
    package.elements = {
        build::Element("Remark", BasisElement::Kind::text, casehost::kEmpty, "made"), tuned};
    return package;
}

}  // namespace

double NumberOf(const std::string& name) {
    const double within = name.back() - '0';
    return (name.front() == 'S' ? 10 : name.front() == 'I' ? 20 : 30) + within;
}

double TemperatureOf(double number) {
    return 100 + number;
}

double ProfileOf(double number) {
    return number + 0.25;
}

double FractionOf(double number) {
    return number / 8192;
}

ObjectData StreamData(const std::string& name, double number) {
    return build::Object(
        name, casehost::words::kMaterialStream,
        {build::Real("Temperature", "Temperature", TemperatureOf(number)),
         build::TextVariable("Notes", "note " + std::to_string(static_cast<int>(number))),
         build::Array("Profile", "", {{0, 3, ElementNaming::number, {}}},
                      {number, ProfileOf(number), number + 0.5}),
         build::Composition({"Methane", "Ethane"}, {1 - FractionOf(number), FractionOf(number)})});
}

ObjectData OperationData(const std::string& name, int generation) {
    ObjectData operation =
        build::Object(name, casehost::words::kTemplate,
                      {build::Real("Pressure Drop", "PressureDifference", 50 + generation)});
    operation.sub_flowsheet = std::make_shared<FlowsheetData>();
    for (const char* inner : {"I1", "I2", "I3"}) {
        operation.sub_flowsheet->objects.push_back(
            StreamData(inner, NumberOf(inner) + generation * kPerGeneration));
    }
    return operation;
}

ObjectData NewObjectData(const std::string& name, int generation) {
    if (name.front() == 'T') return OperationData(name, generation);
    return StreamData(name, NumberOf(name) + generation * kPerGeneration);
}

CaseData PlantData(int generation, bool online) {
    CaseData data;
    data.name = "plant" + std::to_string(generation);
    data.online = online;
    const double base = generation * kPerGeneration;
    for (const char* name : {"S1", "S2", "S3", "S4"}) {
        data.main.objects.push_back(StreamData(name, NumberOf(name) + base));
    }
    data.main.objects.push_back(build::Object("T-0", casehost::words::kTemplate));
    data.main.objects.push_back(OperationData("T-1", generation));
    data.main.objects.push_back(build::Object("T-2", casehost::words::kTemplate));
    if (online) {
        for (const char* name : {"P1", "P2", "P3"}) {
            data.published.push_back(Signal(name, NumberOf(name) + base));
        }
    }
    data.basis = {Package()};
    return data;
}

CaseData OtherData(bool online) {
    CaseData data;
    data.name = "other";
    data.online = online;
    data.main.objects = {StreamData("S4", kPerGeneration - 1)};
    return data;
}

}  // namespace lifetimes

}  // namespace fixtop
