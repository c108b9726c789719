// SPDX-License-Identifier: Apache-2.0
#include <cerrno>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <new>

#include "casehost/file_path.h"
#include "casehost/importer.h"
#include "casehost/unit_op_names.h"
#include "column_sheet.h"
#include "flowsheet_file.h"
#include "object_sheet.h"
#include "readers.h"

namespace fixtop::casehost {

namespace importer {

namespace {

constexpr char kRoot[] = "DWSIM_Simulation_Data";
constexpr char kSource[] = "dwxmz";

struct Standing {
    ObjectStatus status = ObjectStatus::ok;
    std::string text;
};

// Solved is an object that is marked so and has no message.
Standing StandingOf(const FileObject& object) {
    const std::string message(object.node.Child("ErrorMessage").Text());
    const std::string drawn(object.graphic.Child("Status").Text());
    if (!message.empty()) return {ObjectStatus::error, message};
    if (drawn == "ErrorCalculating") return {ObjectStatus::error, drawn};
    if (ListHolds("Calculating|Inactive|Idle|NotCalculated|Modified", drawn)) {
        return {ObjectStatus::not_solved, drawn};
    }
    if (!ReadFlag(object.node.Child("Calculated"))) {
        return {ObjectStatus::not_solved, "NotCalculated"};
    }
    if (object.word == "Recycle" && !ReadFlag(object.node.Child("Converged"))) {
        return {ObjectStatus::warning, "the recycle has not converged"};
    }
    return {};
}

PortData PortOf(const FlowsheetFile& file, const FileEdge& edge) {
    const FileObject& stream = file.objects[edge.stream];
    const bool energy = stream.kind == ObjectKind::energy_stream;
    PortData port;
    if (edge.into_unit) port.role = energy ? PortData::Role::energy_in : PortData::Role::feed;
    if (!edge.into_unit) port.role = energy ? PortData::Role::energy_out : PortData::Role::product;
    port.index = edge.port;
    port.stream = stream.tag;
    return port;
}

// By object: whether it is an energy stream from which a unit operation takes its duty.
std::vector<bool> GivenDuties(const FlowsheetFile& file) {
    std::vector<bool> given(file.objects.size());
    for (const FileEdge& edge : file.edges) {
        const XmlNode unit = file.objects[edge.unit].node;
        if (edge.into_unit && unit.Child("CalcMode").Text() == "EnergyStream") {
            given[edge.stream] = true;
        }
    }
    return given;
}

void ReadFlowsheet(Reading& reading, XmlNode root, CaseData& data) {
    const FlowsheetFile file = ReadObjects(reading, root);
    const std::vector<bool> given_duties = GivenDuties(file);
    std::vector<ObjectData>& objects = data.main.objects;
    objects.resize(file.objects.size());
    for (std::size_t i = 0; i < objects.size(); ++i) {
        const FileObject& source = file.objects[i];
        Standing standing = StandingOf(source);
        objects[i].name = source.tag;
        objects[i].status = standing.status;
        objects[i].status_text = std::move(standing.text);
        switch (source.kind) {
            case ObjectKind::material_stream:
                objects[i].type = words::kMaterialStream;
                ReadMaterialStream(reading, source, objects[i]);
                break;
            case ObjectKind::energy_stream:
                objects[i].type = words::kEnergyStream;
                ReadEnergyStream(reading, source, given_duties[i], objects[i]);
                break;
            case ObjectKind::unit:
                ReadUnit(reading, file, root, source, objects[i]);
                break;
        }
    }
    for (const FileEdge& edge : file.edges) {
        objects[edge.unit].ports.push_back(PortOf(file, edge));
    }
    ReadVesselStreams(reading, objects);
    if (!reading.problems.Failed()) AddColumnSheets(reading, data);
}

std::string StemOf(const std::string& label) {
    const std::size_t slash = label.find_last_of("/\\");
    const std::string name = slash == std::string::npos ? label : label.substr(slash + 1);
    const std::size_t dot = name.rfind('.');
    return dot == std::string::npos || dot == 0 ? name : name.substr(0, dot);
}

void ReadCase(Reading& reading, XmlNode root, CaseData& data) {
    if (root.Tag() != kRoot) {
        reading.problems.Error(root, "the root element is '" + std::string(root.Tag()) +
                                         "'; expected '" + kRoot + "'");
        return;
    }
    const XmlNode settings = root.Child("Settings");
    data.name = settings.Child("SimulationName").Text();
    if (data.name.empty()) data.name = StemOf(reading.problems.File());
    data.title = settings.Child("SimulationComments").Text();
    data.source = kSource;
    data.recorded = true;
    data.property_package = ReadPackageName(root);
    ReadCompounds(reading, root, data);
    ReadFlowsheet(reading, root, data);
    ReadReactions(reading, root, data);
}

std::unique_ptr<CaseData> ReadArchive(Reading& reading, std::string_view bytes) {
    std::optional<std::string> document = InflateDocument(bytes, reading.problems);
    if (!document) return nullptr;
    const XmlTree tree(std::move(*document), reading.problems);
    if (!tree.Root()) return nullptr;
    auto data = std::make_unique<CaseData>();
    ReadCase(reading, tree.Root(), *data);
    return data;
}

ReadResult Failure(const std::string& where, const std::string& message) {
    return {nullptr, {{where, message}}};
}

}  // namespace

}  // namespace importer

ReadResult ReadDwxmzBytes(std::string_view bytes, const std::string& label) {
    try {
        importer::Reading reading(label);
        ReadResult result;
        result.data = importer::ReadArchive(reading, bytes);
        if (reading.problems.Failed()) result.data.reset();
        result.problems = reading.problems.Take();
        return result;
    } catch (const std::bad_alloc&) {
        return importer::Failure(label, "not enough memory for this file");
    }
}

ReadResult ReadDwxmz(const std::string& path) {
    namespace fs = std::filesystem;
    const fs::path file = FilePath(path);
    std::error_code error;
    if (!fs::is_regular_file(file, error)) {
        const char* found = fs::exists(file, error) ? "this is no file" : "there is no such file";
        return importer::Failure(path, std::string(found) + "; expected a .dwxmz file");
    }
    if (fs::file_size(file, error) > importer::kMaxDocumentBytes) {
        return importer::Failure(path, "the file is larger than " +
                                           std::to_string(importer::kMaxDocumentBytes >> 20) +
                                           " MiB; expected a flowsheet archive");
    }
    std::ifstream stream(file, std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(stream), {}};
    if (stream.bad() || !stream.is_open()) {
        return importer::Failure(path, "the file can't be read (" +
                                           std::generic_category().message(errno) +
                                           "); expected a readable .dwxmz file");
    }
    return ReadDwxmzBytes(bytes, path);
}

}  // namespace fixtop::casehost
