// SPDX-License-Identifier: Apache-2.0
// Files that are not as they should be, each with what is told about it.

#include <gtest/gtest.h>

#include <cstring>

#include "case_reading.h"
#include "casehost/importer.h"
#include "support/temporary_folder.h"

#ifndef _WIN32
#include "support/ordinary_user.h"
#endif

namespace fixtop::casehost::test {

namespace {

struct Fault {
    const char* name;
    std::string bytes;
    std::vector<const char*> told;  // all of them, in "where: message" of some problem
};

void PrintTo(const Fault& fault, std::ostream* out) {
    *out << fault.name;
}

std::string Stored() {
    return ZipOf({{"case.xml", SmallFlowsheet(), false}});
}

std::string Damaged() {
    std::string bytes = Stored();
    bytes[200] ^= 1;  // inside the stored text
    return bytes;
}

// An archive of one entry with other bytes in both of its headers.
std::string WithHeaders(std::string bytes, std::size_t local_offset, std::size_t directory_offset,
                        std::string_view written) {
    const std::pair<const char*, std::size_t> places[] = {{"PK\x03\x04", local_offset},
                                                          {"PK\x01\x02", directory_offset}};
    for (const auto& [header, offset] : places) {
        bytes.replace(bytes.find(header) + offset, written.size(), written);
    }
    return bytes;
}

std::string LittleEndian(std::uint32_t number, int count) {
    std::string bytes;
    for (int i = 0; i < count; ++i) bytes += static_cast<char>(number >> (8 * i));
    return bytes;
}

// Whose headers tell another size of the document.
std::string TellingSize(std::string bytes, std::uint32_t size) {
    return WithHeaders(std::move(bytes), 22, 24, LittleEndian(size, 4));
}

std::string TellingPackedSize(std::string bytes, std::uint32_t size) {
    return WithHeaders(std::move(bytes), 18, 20, LittleEndian(size, 4));
}

std::string TellingMethod(std::string bytes, std::uint32_t method) {
    return WithHeaders(std::move(bytes), 8, 10, LittleEndian(method, 2));
}

// Named so by a program that does not know UTF-8.
std::string Named(std::string_view name) {
    std::string bytes = ZipOf({{std::string(name.size(), 'x'), SmallFlowsheet()}});
    return WithHeaders(WithHeaders(std::move(bytes), 6, 8, LittleEndian(0, 2)), 30, 46, name);
}

// "<a/>" stored as case.xml under AES-256. The bytes are given, since a library
// that is built without ciphers still has to recognize such an archive.
std::string EncryptedByAes() {
    constexpr char kBytes[] =
        "\x50\x4b\x03\x04\x33\x00\x01\x00\x63\x00\x54\x63\x2d\x51\x00\x00\x00\x00\x20\x00\x00\x00"
        "\x04\x00\x00\x00\x08\x00\x0b\x00\x63\x61\x73\x65\x2e\x78\x6d\x6c\x01\x99\x07\x00\x02\x00"
        "\x41\x45\x03\x00\x00\xa9\x9e\x7e\x49\x30\x18\x3e\xdf\xeb\xad\xc4\xde\x7c\xec\x78\xb6\xaf"
        "\xd4\x31\xd5\x91\xe1\x5c\x40\x47\xbe\xd2\xab\xc5\x1a\x38\xd8\x50\x4b\x01\x02\x3f\x03\x33"
        "\x00\x01\x00\x63\x00\x54\x63\x2d\x51\x00\x00\x00\x00\x20\x00\x00\x00\x04\x00\x00\x00\x08"
        "\x00\x0b\x00\x00\x00\x00\x00\x00\x00\x00\x00\xb6\x81\x00\x00\x00\x00\x63\x61\x73\x65\x2e"
        "\x78\x6d\x6c\x01\x99\x07\x00\x02\x00\x41\x45\x03\x00\x00\x50\x4b\x05\x06\x00\x00\x00\x00"
        "\x01\x00\x01\x00\x41\x00\x00\x00\x51\x00\x00\x00\x00\x00";
    return {kBytes, sizeof kBytes - 1};
}

std::string Deep(int levels) {
    std::string xml;
    for (int i = 0; i < levels; ++i) xml += "<a>";
    for (int i = 0; i < levels; ++i) xml += "</a>";
    return xml;
}

// Elements that no other rule refuses, as many as asked for.
std::string Wide(std::size_t count) {
    std::string xml = "<DWSIM_Simulation_Data>";
    for (std::size_t i = 0; i < count; ++i) xml += i % 7 == 0 ? "<b/>\n" : "<a/>";
    return xml + "</DWSIM_Simulation_Data>";
}

std::string WithDoctype(const std::string& declarations) {
    return "<!DOCTYPE r [" + declarations + "]><DWSIM_Simulation_Data/>";
}

std::string ManyCompounds(int count) {
    std::string list;
    for (int i = 0; i < count; ++i) {
        list += "<Compound><Name>c" + std::to_string(i) + "</Name></Compound>\n";
    }
    return "<DWSIM_Simulation_Data><Compounds>" + list +
           "</Compounds><SimulationObjects/><GraphicObjects/></DWSIM_Simulation_Data>";
}

std::vector<Fault> Faults() {
    const auto edited = [](const char* from, const char* to) {
        return ZipOf(SmallFlowsheetWith(from, to));
    };
    const std::string good = ZipOf(SmallFlowsheet());
    return {
        {"empty file", "", {"bad.dwxmz: the file is empty", "expected a zip archive"}},
        {"not a zip", "<DWSIM_Simulation_Data/>", {"bad.dwxmz: not a zip archive", "expected"}},
        {"truncated zip",
         good.substr(0, good.size() / 2),
         {"bad.dwxmz: the zip archive is truncated or damaged (Not a zip archive); expected a "
          "complete "
          "archive with its directory at the end"}},
        {"zip without its last byte",
         good.substr(0, good.size() - 1),
         {"bad.dwxmz: the zip archive is truncated or damaged (Not a zip archive)"}},
        {"nothing but the beginning of a zip",
         good.substr(0, 4),
         {"bad.dwxmz: the zip archive is truncated or damaged (Not a zip archive)"}},
        {"another header than in the directory",
         std::string(good).replace(14, 4, "crc?"),
         {"bad.dwxmz (case.xml): the entry can't be opened (Zip archive inconsistent); expected a "
          "stored or deflated entry"}},
        {"unknown compression",
         TellingMethod(good, 14),
         {"bad.dwxmz (case.xml): the entry can't be opened (Compression method not supported); "
          "expected a stored or deflated entry"}},
        {"deflated entry that is no such thing",
         TellingMethod(Stored(), 8),
         {"bad.dwxmz (case.xml): the entry is damaged (Zlib error: data error); expected the bytes "
          "that were packed"}},
        {"deflated entry that ends too soon",
         TellingPackedSize(good, 50),
         {"bad.dwxmz (case.xml): the entry is damaged (Premature end of file)"}},
        {"stored entry that ends too soon",
         TellingPackedSize(TellingSize(Stored(), 100'000), 100'000),
         {"bad.dwxmz (case.xml): the entry is damaged (Premature end of file)"}},
        {"stored entry of another size",
         TellingSize(Stored(), 100),
         {"bad.dwxmz (case.xml): the entry is damaged (Zip archive inconsistent)"}},
        {"name of an old program",
         Named("\x81"
               "bung.txt"),
         {"the archive holds no .xml entry, only '\xc3\xbc"
          "bung.txt'"}},
        {"name that does not say that it is Unicode",
         Named("\xc3\xbc"
               "bung.txt"),
         {"the archive holds no .xml entry, only '\xc3\xbc"
          "bung.txt'"}},
        {"name that breaks off within a character",
         Named("txt\xe2\x82"),
         {"the archive holds no .xml entry, only 'txt\xce\x93\xc3\xa9'"}},
        {"no entry",
         "PK\x05\x06" + std::string(18, '\0'),
         {"bad.dwxmz: the archive holds no .xml entry; expected one"}},
        {"no xml entry",
         ZipOf({{"readme.txt", "hello"}}),
         {"no .xml entry", "'readme.txt'", "expected one .xml entry"}},
        {"two entries",
         ZipOf({{"a.xml", "<a/>"}, {"b.xml", "<a/>"}}),
         {"2 entries", "'a.xml'", "'b.xml'", "expected one .xml entry only"}},
        {"encrypted",
         ZipOf({{"case.xml", SmallFlowsheet(), true, "secret"}}),
         {"bad.dwxmz (case.xml): the entry is encrypted", "without a password"}},
        {"encrypted by AES",
         EncryptedByAes(),
         {"bad.dwxmz (case.xml): the entry is encrypted", "without a password"}},
        {"damaged entry",
         Damaged(),
         {"bad.dwxmz (case.xml): the entry is damaged (CRC error); expected the bytes that were "
          "packed"}},
        {"empty document", ZipOf(""), {"bad.dwxmz (case.xml) line 1", "malformed XML"}},
        {"malformed XML",
         ZipOf("<DWSIM_Simulation_Data>\n<a>\n</b>\n</DWSIM_Simulation_Data>"),
         {"(case.xml) line 3, DWSIM_Simulation_Data/a: malformed XML", "expected a well-formed"}},
        {"doctype", ZipOf(WithDoctype("")), {"line 1", "document type declaration"}},
        {"entities",
         ZipOf(WithDoctype("<!ENTITY a \"b\"><!ENTITY c \"&a;&a;\">")),
         {"document type declaration is not allowed"}},
        {"wrong root",
         ZipOf("<Simulation/>"),
         {"line 1, Simulation: the root element is 'Simulation'",
          "expected 'DWSIM_Simulation_Data'"}},
        {"too deep", ZipOf({{"case.xml", Deep(100000), false}}), {"nested more than 256 deep"}},
        {"one level too deep", ZipOf({{"case.xml", Deep(257), false}}), {"nested more than 256"}},
        {"too many nodes",
         ZipOf({{"case.xml", Wide(5'000'001), false}}),
         {"more than 5000000 elements"}},
        {"zip bomb", ZipOf(std::string(8 << 20, ' ')), {"grows more than 200-fold"}},
        {"zip bomb that tells to be small",
         TellingSize(ZipOf(std::string(8 << 20, ' ')), 4),
         {"grows more than 200-fold"}},
        // Inflating any of it would find the damage.
        {"damaged entry that tells to be large",
         TellingSize(Damaged(), 3'000'000'000),
         {"bad.dwxmz (case.xml): the document is larger than 512 MiB; expected a smaller"}},
        {"damaged entry that tells to grow",
         TellingSize(Damaged(), 300'000'000),
         {"bad.dwxmz (case.xml): the document grows more than 200-fold"}},
        {"too many compounds", ZipOf(ManyCompounds(4097)), {"expected at most 4096 compounds"}},
        {"no objects",
         ZipOf("<DWSIM_Simulation_Data><GraphicObjects/></DWSIM_Simulation_Data>"),
         {"expected an element 'SimulationObjects'"}},
        {"no drawing",
         ZipOf("<DWSIM_Simulation_Data><SimulationObjects/></DWSIM_Simulation_Data>"),
         {"expected an element 'GraphicObjects'"}},
        {"duplicate id",
         edited("<Name>m2</Name>", "<Name>m1</Name>"),
         {"SimulationObjects/SimulationObject: two objects have the id 'm1'", "only once"}},
        {"duplicate id in the drawing",
         edited("<GraphicObject><Name>m2<", "<GraphicObject><Name>m1<"),
         {"GraphicObjects/GraphicObject: the drawing has two objects with the id 'm1'"}},
        {"duplicate tag",
         edited("<Tag>product</Tag>", "<Tag>feed</Tag>"),
         {"two objects have the tag 'feed'", "only once"}},
        {"object without id", edited("<Name>h1</Name>", ""), {"no id", "expected a Name"}},
        {"object without type",
         edited("<Type>Some.UnitOperations.Heater</Type>", ""),
         {"expected an element 'Type'"}},
        {"tag missing", edited("<Tag>H</Tag>", ""), {"object 'h1' has no tag", "expected a Tag"}},
        {"not in the drawing",
         edited("<GraphicObject><Name>h1<", "<GraphicObject><Name>h9<"),
         {"object 'h1' is not in the drawing", "expected a GraphicObject of that Name"}},
        {"edge to no object",
         edited("AttachedToObjID=\"m2\"", "AttachedToObjID=\"m7\""),
         {"OutputConnectors/Connector: a connection names 'm7'", "expected the id of a stream"}},
        {"edge between streams",
         edited("AttachedToObjID=\"h1\"", "AttachedToObjID=\"m2\""),
         {"a connection joins 'feed' and 'product'", "expected a stream and a unit operation"}},
        {"edge to no port",
         edited("AttachedToConnIndex=\"0\"", "AttachedToConnIndex=\"x\""),
         {"expected a number, found 'x'"}},
        {"edge to a port below zero",
         edited("AttachedToConnIndex=\"0\"", "AttachedToConnIndex=\"-1\""),
         {"OutputConnectors/Connector: the inlet has the number -1; expected a whole number from 0 "
          "to 99999"}},
        {"edge between two ports",
         edited("AttachedToConnIndex=\"0\"", "AttachedToConnIndex=\"0.5\""),
         {"the inlet has the number 0.5"}},
        {"edge to a port beyond all",
         edited("AttachedToConnIndex=\"0\"", "AttachedToConnIndex=\"100000\""),
         {"the inlet has the number 100000"}},
        {"two streams at one port",
         edited("<Tag>product</Tag><Status>Calculated</Status>\n<OutputConnectors><Connector "
                "IsAttached=\"false\"/>",
                "<Tag>product</Tag><Status>Calculated</Status>\n<OutputConnectors><Connector "
                "IsAttached=\"true\" AttachedToObjID=\"h1\" AttachedToConnIndex=\"0\"/>"),
         {"OutputConnectors/Connector: 'product' and 'feed' are at one port of 'H'; expected one "
          "stream at a port"}},
        {"stream without phases",
         edited("<ID>0</ID>", "<ID>5</ID>"),
         {"SimulationObject: the stream has no phases", "Phase of ID 0"}},
        {"phase twice",
         edited("<ID>4</ID>", "<ID>2</ID>"),
         {"expected phases with the IDs 0 to 7"}},
        {"unknown compound",
         edited("<Compound><Name>B</Name><MoleFraction>", "<Compound><Name>C</Name><MoleFraction>"),
         {"expected a compound of the case, found 'C'"}},
        {"compound twice",
         edited("<Name>B</Name><Molar_Weight>", "<Name>A</Name><Molar_Weight>"),
         {"expected compounds with a Name, each once", "'A'"}},
        {"word for a number",
         edited(">101325<", ">one bar<"),
         {"Phases/Phase/Properties/pressure: expected a number, found 'one bar'"}},
        {"comma in a number", edited(">101325<", ">101,325<"), {"found '101,325'"}},
        {"number with a tail", edited(">101325<", ">101325 Pa<"), {"found '101325 Pa'"}},
        {"no text for a number", edited(">101325<", "><"), {"expected a number, found ''"}},
        {"other words for infinite",
         edited(">101325<", ">inf<"),
         {"expected a number, found 'inf'"}},
        {"number out of range",
         edited(">101325<", ">1E999<"),
         {"expected a number of double precision, found '1E999'"}},
        {"number in a unit operation",
         edited(">350<", ">warm<"),
         {"SimulationObject/OutletTemperature: expected a number, found 'warm'"}},
        {"number in an energy stream",
         edited("<EnergyFlow>12.5<", "<EnergyFlow>much<"),
         {"SimulationObject/EnergyFlow: expected a number, found 'much'"}},
    };
}

class FaultyFile : public testing::TestWithParam<Fault> {};

TEST_P(FaultyFile, IsRefusedWithPlaceAndAdvice) {
    const ReadResult result = ReadDwxmzBytes(GetParam().bytes, "bad.dwxmz");
    EXPECT_EQ(result.data, nullptr);
    ASSERT_FALSE(result.problems.empty());
    for (const CaseProblem& problem : result.problems) {
        EXPECT_EQ(problem.where.find("bad.dwxmz"), 0u) << problem.where;
        EXPECT_FALSE(problem.message.empty());
    }
    for (const char* text : GetParam().told) {
        EXPECT_NE(Lines(result).find(text), std::string::npos) << text << "\nin\n" << Lines(result);
    }
}

INSTANTIATE_TEST_SUITE_P(All, FaultyFile, testing::ValuesIn(Faults()),
                         [](const testing::TestParamInfo<Fault>& row) {
                             std::string name = row.param.name;
                             for (char& c : name) c = c == ' ' ? '_' : c;
                             return name;
                         });

TEST(FaultyFiles, LevelsUpToTheLimitAreRead) {
    const ReadResult result = ReadDwxmzBytes(ZipOf({{"case.xml", Deep(256), false}}), "deep");
    EXPECT_NE(Lines(result).find("the root element is 'a'"), std::string::npos) << Lines(result);
}

TEST(FaultyFiles, FaultsAreListedTogether) {
    std::string xml = SmallFlowsheet();
    std::size_t place = 0;
    int edits = 0;
    while ((place = xml.find(">101325<", place)) != std::string::npos) {
        xml.replace(place, 8, ">p<");
        ++edits;
    }
    ASSERT_EQ(edits, 2);
    EXPECT_EQ(ReadDwxmzBytes(ZipOf(xml), "two").problems.size(), 2u);
}

TEST(FaultyFiles, MoreThanAHundredFaultsAreCounted) {
    std::string objects;
    for (int i = 0; i < 150; ++i)
        objects += "<SimulationObject><Type>a.B</Type></SimulationObject>";
    const ReadResult result =
        ReadDwxmzBytes(ZipOf("<DWSIM_Simulation_Data><SimulationObjects>" + objects +
                             "</SimulationObjects><GraphicObjects/></DWSIM_Simulation_Data>"),
                       "many");
    ASSERT_EQ(result.problems.size(), 101u);
    EXPECT_EQ(result.problems.back().message, "and 50 more problems of this kind");
}

TEST(FaultyFiles, MissingFileIsNamed) {
    const ReadResult result = ReadDwxmz("no/such/file.dwxmz");
    EXPECT_EQ(result.data, nullptr);
    EXPECT_EQ(Lines(result), "no/such/file.dwxmz: there is no such file; expected a .dwxmz file\n");
}

TEST(FaultyFiles, FolderIsNoFile) {
    const TemporaryFolder folder;
    std::filesystem::create_directory("plant.dwxmz");
    EXPECT_EQ(Lines(ReadDwxmz("plant.dwxmz")),
              "plant.dwxmz: this is no file; expected a .dwxmz file\n");
}

#ifndef _WIN32
TEST(FaultyFiles, FileThatMayNotBeReadSaysSo) {
    const TemporaryFolder folder;
    folder.Write("plant.dwxmz", "PK");
    std::filesystem::permissions("plant.dwxmz", std::filesystem::perms::none);
    const OrdinaryUser user;
    EXPECT_EQ(Lines(ReadDwxmz("plant.dwxmz")), "plant.dwxmz: the file can't be read (" +
                                                   std::string(strerror(EACCES)) +
                                                   "); expected a readable .dwxmz file\n");
}
#endif

}  // namespace

}  // namespace fixtop::casehost::test
