// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "model/attribute_walker.h"
#include "model/class_library.h"
#include "path/path_step.h"
#include "path/tokenizer.h"
#include "platform/modules.h"
#include "platform/resources.h"
#include "platform/xml_reader.h"
#include "support/log_lines.h"
#include "support/temporary_folder.h"

namespace fixtop {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// The files that the build was told to put into the module.
std::vector<std::filesystem::path> ShippedFiles() {
    std::istringstream list(FIXTOP_SHIPPED_FILES);
    std::vector<std::filesystem::path> files;
    for (std::string file; std::getline(list, file, ',');) {
        files.emplace_back(std::filesystem::path(FIXTOP_RESOURCE_FOLDER) /
                           std::filesystem::path(file).filename());
    }
    return files;
}

std::string Bytes(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

// What a map says about places in the application's tree: the paths of its translators, and the
// expressions of its node attributes.
class MapPaths final : public XmlContentHandler, public XmlErrorHandler {
 public:
    explicit MapPaths(std::string_view bytes) {
        const std::unique_ptr<XmlReader> reader = CreateXmlReader();
        complete_ =
            reader->Attach(*this, *this) && reader->ParseText(bytes, "map") == XmlOutcome::kDone;
    }
    bool Complete() const { return complete_; }
    const std::vector<std::string>& Paths() const { return paths_; }

    void StartElement(const std::string& name, const XmlAttributes& attributes,
                      const XmlLocator&) override {
        const bool expression = name == "Attribute" && Inside("NodeAttributes");
        bool map = false;
        for (const auto& [key, value] : attributes) map = map || (key == "Type" && value == "Map");
        open_.push_back({name, expression || map});
    }
    void EndElement(const std::string&, const XmlLocator&) override { open_.pop_back(); }
    void Text(const std::string& text, const XmlLocator&) override {
        if (!open_.empty() && open_.back().holds_path) paths_.push_back(text);
    }
    void Warning(const std::string&, const XmlLocator&) override {}
    void Error(const std::string&, const XmlLocator&) override {}
    void FatalError(const std::string&, const XmlLocator&) override {}

 private:
    struct Element {
        std::string name;
        bool holds_path;
    };
    bool Inside(const char* name) const { return !open_.empty() && open_.back().name == name; }

    std::vector<Element> open_;
    std::vector<std::string> paths_;
    bool complete_ = false;
};

// The whole library out of the resources, with the units of the real adapter.
struct ShippedLibrary {
    ShippedLibrary() : log(folder), library(LoadModule("fixtop.dll")) {
        units_read = library.ReadUnitFile("hunits.xml");
        unit_lines = log.Lines();
        log.Restart();
        classes_read = library.ReadClassFile("QSIAllLibraries.xml");
        class_lines = log.Lines();
    }
    const CCDMAttribute* Find(const char* owner, const char* name) const {
        const CCDMClass* record = library.FindClass(owner);
        return record == nullptr ? nullptr : record->FindAttribute(name);
    }
    TemporaryFolder folder;
    LogLines log;
    CCDMClassLibrary library;
    bool units_read = false;
    bool classes_read = false;
    std::vector<std::string> unit_lines;
    std::vector<std::string> class_lines;
};

TEST(ShippedFiles, are_found_among_the_resources) {
    ASSERT_THAT(ShippedFiles(), testing::SizeIs(16));
    for (const std::filesystem::path& path : ShippedFiles()) {
        const std::string name = path.filename().string();
        EXPECT_FALSE(Bytes(path).empty()) << path;
        EXPECT_EQ(FindCompiledResource(name), Bytes(path)) << name;
    }
}

TEST(ShippedLibrary, is_read_with_no_word_but_about_files_to_come) {
    const ShippedLibrary shipped;
    EXPECT_TRUE(shipped.units_read);
    EXPECT_THAT(shipped.unit_lines, IsEmpty());
    EXPECT_TRUE(shipped.classes_read);
    EXPECT_THAT(shipped.class_lines,
                ElementsAre("  Failed to find CCDM Resource: QSIReaction.xml",
                            "  Failed to find CCDM Resource: QSIReactors.xml",
                            "  Failed to find CCDM Resource: QSIPressureChanger.xml",
                            "  Failed to find CCDM Resource: QSIHeatExchanger.xml",
                            "  Failed to find CCDM Resource: QSIColumn.xml"));
    EXPECT_EQ(shipped.library.classes.size(), 82u);
    EXPECT_EQ(shipped.library.enumerations.size(), 33u);
}

// The name in the element's first attribute, for each element that begins with `start`.
std::vector<std::string> NamesBehind(const std::string& text, const std::string& start) {
    std::vector<std::string> names;
    for (std::size_t at = text.find(start); at != std::string::npos; at = text.find(start, at)) {
        at += start.size();
        names.push_back(text.substr(at, text.find('"', at) - at));
    }
    return names;
}

TEST(ShippedLibrary, has_every_class_and_attribute_that_its_files_tell_of) {
    const ShippedLibrary shipped;
    std::size_t attributes = 0;
    for (const std::filesystem::path& path : ShippedFiles()) {
        const std::string text = Bytes(path);
        if (text.find("<QZClassLibrary") == std::string::npos) continue;
        for (const char* element : {"<Class Name=\"", "<ClassAttributes Name=\""}) {
            for (const std::string& name : NamesBehind(text, element)) {
                EXPECT_NE(shipped.library.FindClass(name), nullptr) << name;
            }
        }
        for (const std::string& name : NamesBehind(text, "<Enumeration Name=\"")) {
            EXPECT_NE(shipped.library.FindEnumeration(name), nullptr) << name;
        }
        for (std::size_t at = text.find("<ClassAttributes Name=\""); at != std::string::npos;
             at = text.find("<ClassAttributes Name=\"", at + 1)) {
            const std::string block = text.substr(at, text.find("</ClassAttributes>", at) - at);
            const std::string owner = NamesBehind(block, "<ClassAttributes Name=\"").front();
            const CCDMClass* record = shipped.library.FindClass(owner);
            ASSERT_NE(record, nullptr) << owner;
            std::vector<std::string> read;
            for (const CCDMAttribute* each : record->attributes) read.push_back(each->name);
            EXPECT_EQ(read, NamesBehind(block, "<Attribute Name=\"")) << owner;
            attributes += read.size();
        }
    }
    EXPECT_GT(attributes, 300u);
}

TEST(ShippedLibrary, files_stand_alone) {
    const TemporaryFolder folder;
    for (const char* file : {"QSIUnitOperation.xml", "QSIStreams.xml"}) {
        const LogLines log(folder, ErrorLog::kDefaultLevel);
        CCDMClassLibrary library;
        EXPECT_TRUE(library.ReadClassFile(file));
        EXPECT_THAT(log.Lines(), IsEmpty()) << file;
    }
}

TEST(ShippedLibrary, every_walk_finds_its_superclasses) {
    const ShippedLibrary shipped;
    shipped.log.Restart();
    for (const auto& [name, record] : shipped.library.classes) {
        std::size_t count = 0;
        CCDMAttributeWalker walker(*record);
        for (bool more = walker.First(); more; more = walker.Next()) ++count;
        EXPECT_GE(count, record->attributes.size()) << name;
    }
    EXPECT_THAT(shipped.log.Lines(), IsEmpty());
}

TEST(ShippedLibrary, streams_are_made_of_the_classes_of_the_maps) {
    const ShippedLibrary shipped;
    const CCDMClass* stream = shipped.library.FindClass("QSIMaterialStream");
    ASSERT_NE(stream, nullptr);
    EXPECT_EQ(stream->DistanceToClass("QSIMaterialFlow"), 1);
    EXPECT_EQ(stream->DistanceToClass("QSIPropertyContainer"), 2);
    EXPECT_EQ(shipped.library.FindClass("QSISolidPhase")->DistanceToClass("QSIPurePhase"), 1);

    const CCDMAttribute* streams = shipped.Find("QSIFlowsheet", "Stream");
    ASSERT_NE(streams, nullptr);
    EXPECT_TRUE(streams->isArray);
    EXPECT_EQ(streams->typeName, "QSIMaterialStream");
    ASSERT_EQ(streams->keys.size(), 1u);
    EXPECT_STREQ(streams->keys[0].CStr(), "Name");
    EXPECT_FALSE(shipped.Find("QSISimulation", "Flowsheet")->isArray);
}

// The unit of each quantity that a stream shows first.
TEST(ShippedLibrary, quantities_have_their_units) {
    struct Row {
        const char* owner;
        const char* attribute;
        const char* quantity;
        const char* unit;
    };
    const ShippedLibrary shipped;
    CCDMUnitSource* source = shipped.library.units.Source();
    ASSERT_NE(source, nullptr);
    for (const Row& row : {Row{"QSIMaterialFlow", "Temperature", "Temperature", "C"},
                           Row{"QSIMaterialFlow", "Pressure", "Pressure", "kPa"},
                           Row{"QSIMaterialFlow", "MolarFlow", "Flow Rate (Mole)", "kmol/h"},
                           Row{"QSIMaterialFlow", "MassFlow", "Flow Rate (Mass)", "kg/h"},
                           Row{"QSIMaterialStream", "VaporFraction", "Fraction", "fraction"},
                           Row{"QSIMaterialFraction", "MoleFraction", "Fraction", "fraction"},
                           Row{"QSIHeatFlow", "HeatFlow", "Power", "kJ/h"}}) {
        const CCDMAttribute* attribute = shipped.Find(row.owner, row.attribute);
        ASSERT_NE(attribute, nullptr) << row.attribute;
        EXPECT_EQ(attribute->quantity, source->QuantityId(row.quantity)) << row.attribute;
        EXPECT_GT(source->UnitId(row.unit, attribute->quantity), 0) << row.unit;
    }
}

TEST(ShippedMaps, every_path_parses) {
    std::size_t count = 0;
    for (const std::filesystem::path& path : ShippedFiles()) {
        const MapPaths map(Bytes(path));
        EXPECT_TRUE(map.Complete()) << path;
        for (const std::string& text : map.Paths()) {
            PathTokenizer tokenizer;
            tokenizer.Assign(FIValue(text.c_str()));
            tokenizer.Tokenize();
            FIValue error;
            const ParsedPath step(tokenizer.Parse(error));
            EXPECT_TRUE(error.IsNull()) << text << ": " << error.ToText();
            EXPECT_EQ(tokenizer.Next(), nullptr) << text << " has words behind its end";
            ++count;
        }
    }
    EXPECT_GT(count, 150u);
}

}  // namespace

}  // namespace fixtop
