// SPDX-License-Identifier: Apache-2.0
#include "flowsheet_file.h"

#include <cmath>
#include <map>
#include <tuple>
#include <unordered_set>

#include "object_sheet.h"

namespace fixtop::casehost::importer {

namespace {

using GraphicsById = std::unordered_map<std::string, XmlNode>;

ObjectKind KindOf(std::string_view word) {
    if (word == "MaterialStream") return ObjectKind::material_stream;
    if (word == "EnergyStream") return ObjectKind::energy_stream;
    return ObjectKind::unit;
}

XmlNode Required(Reading& reading, XmlNode parent, const char* tag) {
    const XmlNode child = parent.Child(tag);
    if (!child) reading.problems.Error(parent, std::string("expected an element '") + tag + "'");
    return child;
}

GraphicsById IndexGraphics(Reading& reading, XmlNode list) {
    GraphicsById graphics;
    for (XmlNode graphic : Children(list)) {
        const std::string id(graphic.Child("Name").Text());
        if (!graphics.emplace(id, graphic).second) {
            reading.problems.Error(graphic, "the drawing has two objects with the id '" + id +
                                                "'; expected an id only once");
        }
    }
    return graphics;
}

std::string TagOf(Reading& reading, XmlNode node, const std::string& id, XmlNode graphic) {
    if (!graphic) {
        reading.problems.Error(node, "object '" + id +
                                         "' is not in the drawing, which has its tag; "
                                         "expected a GraphicObject of that Name");
        return {};
    }
    std::string tag(graphic.Child("Tag").Text());
    if (tag.empty()) {
        reading.problems.Error(graphic,
                               "object '" + id + "' has no tag; expected a Tag with a name");
    }
    return tag;
}

constexpr int kMostPorts = 100'000;  // of one kind and direction at one unit operation

class FileReader {
 public:
    FileReader(Reading& reading, FlowsheetFile& file) : reading_(reading), file_(file) {}

    void ReadObject(XmlNode node, const GraphicsById& graphics) {
        FileObject object;
        object.node = node;
        object.id = node.Child("Name").Text();
        object.word = LastWord(Required(reading_, node, "Type").Text());
        if (object.id.empty()) {
            return reading_.problems.Error(node, "the object has no id; expected a Name with one");
        }
        if (!file_.by_id.emplace(object.id, static_cast<int>(file_.objects.size())).second) {
            return reading_.problems.Error(
                node, "two objects have the id '" + object.id + "'; expected an id only once");
        }
        const auto graphic = graphics.find(object.id);
        if (graphic != graphics.end()) object.graphic = graphic->second;
        object.tag = TagOf(reading_, node, object.id, object.graphic);
        if (!object.tag.empty() && !tags_.insert(object.tag).second) {
            reading_.problems.Error(object.graphic, "two objects have the tag '" + object.tag +
                                                        "'; expected a tag only once");
        }
        object.kind = KindOf(object.word);
        file_.objects.push_back(std::move(object));
    }

    // The outlets of a drawn object; those of all tell every connection of the file once.
    void ReadOutlets(XmlNode graphic) {
        const std::string owner(graphic.Child("Name").Text());
        int port = -1;
        for (XmlNode connector : Children(graphic.Child("OutputConnectors"))) {
            ++port;
            if (!EqualIgnoringCase(connector.Attribute("IsAttached").value_or(""), "true")) {
                continue;
            }
            const std::string target(connector.Attribute("AttachedToObjID").value_or(""));
            const auto from = file_.by_id.find(owner);
            const auto to = file_.by_id.find(target);
            if (from == file_.by_id.end() || to == file_.by_id.end()) {
                const std::string& lost = from == file_.by_id.end() ? owner : target;
                reading_.problems.Error(connector, "a connection names '" + lost +
                                                       "', which is no object of the file; "
                                                       "expected the id of a stream or unit "
                                                       "operation");
                continue;
            }
            Join(connector, from->second, to->second, port);
        }
    }

 private:
    void Join(XmlNode connector, int from, int to, int outlet) {
        const bool from_unit = file_.objects[from].kind == ObjectKind::unit;
        const bool to_unit = file_.objects[to].kind == ObjectKind::unit;
        if (from_unit == to_unit) {
            reading_.problems.Error(connector, "a connection joins '" + file_.objects[from].tag +
                                                   "' and '" + file_.objects[to].tag +
                                                   "'; expected a stream and a unit operation");
        } else if (from_unit) {
            Add(connector, {to, from, false, outlet});
        } else if (const Number inlet = ReadInlet(connector)) {
            Add(connector, {from, to, true, static_cast<int>(*inlet)});
        }
    }

    Number ReadInlet(XmlNode connector) {
        const std::string_view text = connector.Attribute("AttachedToConnIndex").value_or("");
        const Number inlet = ParseNumber(reading_, connector, text);
        if (inlet && *inlet >= 0 && *inlet < kMostPorts && *inlet == std::floor(*inlet)) {
            return inlet;
        }
        if (inlet) {
            reading_.problems.Error(connector, "the inlet has the number " + std::string(text) +
                                                   "; expected a whole number from 0 to " +
                                                   std::to_string(kMostPorts - 1));
        }
        return std::nullopt;
    }

    // One port holds one stream, or else the case could be shown but not be saved.
    void Add(XmlNode connector, const FileEdge& edge) {
        const bool energy = file_.objects[edge.stream].kind == ObjectKind::energy_stream;
        const auto [taken, is_new] =
            ports_.try_emplace({edge.unit, edge.into_unit, energy, edge.port}, edge.stream);
        if (is_new) return file_.edges.push_back(edge);
        reading_.problems.Error(
            connector, "'" + file_.objects[edge.stream].tag + "' and '" +
                           file_.objects[taken->second].tag + "' are at one port of '" +
                           file_.objects[edge.unit].tag + "'; expected one stream at a port");
    }

    Reading& reading_;
    FlowsheetFile& file_;
    std::unordered_set<std::string> tags_;
    std::map<std::tuple<int, bool, bool, int>, int> ports_;
};

}  // namespace

const FileObject* FlowsheetFile::Find(std::string_view id) const {
    const auto found = by_id.find(std::string(id));
    return found == by_id.end() ? nullptr : &objects[found->second];
}

FlowsheetFile ReadObjects(Reading& reading, XmlNode root) {
    FlowsheetFile file;
    const XmlNode drawing = Required(reading, root, "GraphicObjects");
    const GraphicsById graphics = IndexGraphics(reading, drawing);
    FileReader reader(reading, file);
    for (XmlNode node : Children(Required(reading, root, "SimulationObjects"))) {
        reader.ReadObject(node, graphics);
    }
    if (reading.problems.Failed()) return file;
    for (XmlNode graphic : Children(drawing)) reader.ReadOutlets(graphic);
    return file;
}

}  // namespace fixtop::casehost::importer
