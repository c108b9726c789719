// SPDX-License-Identifier: Apache-2.0
// Class library text and, from its root element on, map text: opened on the built-in case, and read
// in a walk that goes some way. What the text includes is among the shipped files.

#include "casehost/case_host.h"
#include "casehost/standard_host.h"
#include "fixtop/cursor.h"
#include "fixtop/fixtop.h"
#include "fixtop/reference.h"
#include "fuzzed_module.h"
#include "fuzzed_reader.h"

namespace fixtop {

namespace {

constexpr char kClasses[] = "fuzzed_classes.xml";
constexpr char kMap[] = "fuzzed_map.xml";
constexpr char kUnits[] = "fuzzed_units.xml";
constexpr char kDefinitions[] = "fuzzed_definitions.xml";
constexpr std::string_view kMapRoot = "<CCDMMapFile";

constexpr int kMostNodes = 60;
constexpr int kMostSiblings = 8;
constexpr int kMostDepth = 7;

constexpr CompiledResource kSmallFiles[] = {
    {kUnits,
     "<CCDMUnitFile><Provider>QSIUOMAdapter2004_2</Provider>"
     "<InitString>fuzzed_definitions.xml</InitString><Translate App='C' Ccdm='C'/>"
     "<Translate App='kgmole/h' Ccdm='kmol/h'/><Translate App='kPa' Ccdm='kPa' Default='1'/>"
     "</CCDMUnitFile>"},
    {kDefinitions,
     "<Q><QuantityTypeDefn Name='Temperature'><UOM Name='K'/><UOM Name='C' Offset='273.15'/>"
     "</QuantityTypeDefn><QuantityTypeDefn Name='Pressure'><UOM Name='kPa' Factor='1000'/>"
     "<UOM Name='Pa'/></QuantityTypeDefn><QuantityTypeDefn Name='Flow Rate (Mole)'>"
     "<UOM Name='kmol/h'/></QuantityTypeDefn></Q>"},
    // Stand for the input.
    {kClasses, "<a/>"},
    {kMap, "<a/>"}};

std::string_view& ClassText() {
    static std::string_view text;
    return text;
}

std::string_view PartOf(std::string_view bytes, const std::string& name) {
    if (name == kClasses) return ClassText();
    return name == kMap ? FuzzedInput() : bytes;
}

// Files are not read; the two parts of the input take the places of their resources.
class PartReader final : public XmlReader {
 public:
    explicit PartReader(std::unique_ptr<XmlReader> reader) : reader_(std::move(reader)) {}

    bool Attach(XmlContentHandler& content, XmlErrorHandler& errors) override {
        return reader_->Attach(content, errors);
    }
    XmlOutcome ParseFile(const std::string&) override { return XmlOutcome::kNotFound; }
    XmlOutcome ParseText(std::string_view bytes, const std::string& name) override {
        return reader_->ParseText(PartOf(bytes, name), name);
    }

 private:
    std::unique_ptr<XmlReader> reader_;
};

std::unique_ptr<XmlReader> MakePartReader() {
    SetXmlReaderFactory(nullptr);
    auto reader = std::make_unique<PartReader>(CreateXmlReader());
    SetXmlReaderFactory(MakePartReader);
    return reader;
}

// The case, open as long as the program runs.
FIEntry& CaseTop() {
    static casehost::CaseHost& host = *new casehost::CaseHost;
    static FIEntry& top = []() -> FIEntry& {
        casehost::UseStandardParts(host);
        FixtopInstallHost(&host.Services());
        casehost::OpenCase(host, std::string(casehost::kDemoName));
        return *GetCombinedEntry(host.ActiveCase());
    }();
    return top;
}

void ReadAttributes(FIIteratorBase& it) {
    FIValue value;
    FIValue name;
    for (const char* attribute : {"value", "uom", "spec_value", "path", "converters", "x"}) {
        it.GetAttribute(FIValue(attribute), value);
    }
    const auto source = Ref<FIAttributeSource>::Adopt(it.GetAttributeSource());
    const auto cursor = Ref<FIAttributeCursorBase>::Adopt(source->MakeCursor());
    for (bool on = cursor->Seek(kFromFirst, 0); on; on = cursor->Seek(kFromPresent, 1)) {
        cursor->GetKey(name);
        cursor->GetValue(value);
        if (name.IsText()) it.GetAttribute(name, value);
    }
}

void ReadNode(FIIteratorBase& it) {
    ReadAttributes(it);
    FIValue value;
    for (const char* unit : {"K", "kPa", "none"}) {
        it.SetAttribute(FIValue("uom"), FIValue(unit), 0, value);
        it.GetAttribute(FIValue("value"), value);
    }
    char key[40];
    it.KeyText(key, sizeof key);
    const auto reference = Ref<FIReferenceBase>::Adopt(it.MakeReference());
    reference->GetAttribute(FIValue("value"), value);
    for (const int face : {1, 2}) {
        const auto raw = Ref<FIIteratorBase>::Adopt(FixtopApplicationNode(&it, face));
        if (raw) raw->GetPath(value);
    }
}

void Walk(FIIteratorBase& it, int depth, int& nodes) {
    ReadNode(it);
    const auto child = Ref<FIIteratorBase>::Adopt(it.Copy());
    if (depth == kMostDepth || !child->DownFirst()) return;
    int siblings = 0;
    for (bool on = true; on && siblings < kMostSiblings && nodes > 0; on = child->Next()) {
        ++siblings;
        --nodes;
        Walk(*child, depth + 1, nodes);
    }
    while (siblings-- > 0) child->Prev();
    child->DownLast();
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    OfferOwnAdapter();
    static CompiledResources table(kSmallFiles);
    RegisterResources(table);
    CaseTop();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (!TakeInput(data, size)) return -1;
    const std::size_t cut = std::min(FuzzedInput().find(kMapRoot), FuzzedInput().size());
    ClassText() = FuzzedInput().substr(0, cut);
    FuzzedInput().remove_prefix(cut);
    SetXmlReaderFactory(MakePartReader);
    const FixtopModelFiles files{kClasses, kMap, kUnits, nullptr};
    const auto root = Ref<FIEntry>::Adopt(FixtopOpenModel(&CaseTop(), &files));
    if (!root) return 0;
    const auto it = Ref<FIIteratorBase>::Adopt(FixtopMakeIterator(root.Get(), false));
    int nodes = kMostNodes;
    Walk(*it, 0, nodes);
    for (const char* path : {"Flowsheet.Stream(Raw Gas).Temperature", "Flowsheet.*#1.*", "*.*.*"}) {
        const auto found = Ref<FIIteratorBase>::Adopt(it->Copy());
        if (found->SeekPath(FIValue(path))) ReadNode(*found);
    }
    return 0;
}

}  // namespace fixtop
