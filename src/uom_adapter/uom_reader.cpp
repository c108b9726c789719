// SPDX-License-Identifier: Apache-2.0
#include "uom_adapter/uom_reader.h"

#include <charconv>
#include <cmath>
#include <optional>

#include "platform/file_search.h"
#include "platform/resources.h"
#include "platform/xml_reader.h"
#include "uom_adapter/uom_definitions.h"

namespace fixtop {

namespace {

std::optional<std::string_view> Attribute(const XmlAttributes& attributes, std::string_view name) {
    for (const auto& [attribute, value] : attributes) {
        if (attribute == name) return value;
    }
    return std::nullopt;
}

// The number of an attribute, `missing` when it is not there; nothing for a text that is no number.
std::optional<double> Number(const XmlAttributes& attributes, std::string_view name,
                             double missing) {
    const std::optional<std::string_view> text = Attribute(attributes, name);
    if (!text) return missing;
    double number = 0;
    const char* end = text->data() + text->size();
    const auto [stop, error] = std::from_chars(text->data(), end, number);
    if (error != std::errc() || stop != end || !std::isfinite(number)) return std::nullopt;
    return number;
}

std::optional<UomFormula> Formula(const XmlAttributes& attributes) {
    const std::string_view text = Attribute(attributes, "Formula").value_or("Linear");
    if (text == "Linear") return UomFormula::kLinear;
    if (text == "Reciprocal") return UomFormula::kReciprocal;
    return std::nullopt;
}

class Handler final : public XmlContentHandler, public XmlErrorHandler {
 public:
    explicit Handler(UomDefinitions& definitions) : definitions_(definitions) {}

    void StartElement(const std::string& name, const XmlAttributes& attributes,
                      const XmlLocator&) override {
        ++depth_;
        const std::optional<std::string_view> record = Attribute(attributes, "Name");
        if (depth_ == kQuantityDepth) {
            quantity_ = 0;
            if (name != "QuantityTypeDefn" || !record) return;
            const std::string_view base = Attribute(attributes, "BaseUnit").value_or(*record);
            quantity_ = definitions_.AddQuantity(*record, base);
        } else if (depth_ == kUnitDepth && name == "UOM" && record && quantity_ != 0) {
            AddUnit(*record, attributes);
        }
    }
    void EndElement(const std::string&, const XmlLocator&) override { --depth_; }
    void Text(const std::string&, const XmlLocator&) override {}

    void Warning(const std::string&, const XmlLocator&) override {}
    void Error(const std::string&, const XmlLocator&) override {}
    void FatalError(const std::string& text, const XmlLocator& locator) override {
        problem_ = std::string("file ") + locator.File() + " at line " +
                   std::to_string(locator.Line()) + ", " + text;
    }

    // What ended the parse.
    const std::string& Problem() const { return problem_; }

 private:
    static constexpr int kQuantityDepth = 2;
    static constexpr int kUnitDepth = 3;

    void AddUnit(std::string_view name, const XmlAttributes& attributes) {
        const std::optional<UomFormula> formula = Formula(attributes);
        const std::optional<double> factor = Number(attributes, "Factor", 1);
        const std::optional<double> offset = Number(attributes, "Offset", 0);
        if (!formula || !factor || !offset || *factor == 0) return;
        definitions_.AddUnit({std::string(name), quantity_, *formula, *factor, *offset});
    }

    UomDefinitions& definitions_;
    std::string problem_;
    int depth_ = 0;
    int quantity_ = 0;
};

// The name came out of a unit file.
XmlOutcome ReadFileOrResource(const std::string& name, XmlReader& reader) {
    const std::string path = StaysInSearchFolders(name) ? FindFileOnPath(name) : std::string();
    if (!path.empty()) return reader.ParseFile(path);
    const std::string_view bytes = FindCompiledResource(name);
    return bytes.data() == nullptr ? XmlOutcome::kNotFound : reader.ParseText(bytes, name);
}

}  // namespace

std::string ReadUomDefinitions(const std::string& name, UomDefinitions& definitions) {
    const std::unique_ptr<XmlReader> reader = CreateXmlReader();
    Handler handler(definitions);
    if (!reader || !reader->Attach(handler, handler)) return "there is no XML reader";
    switch (ReadFileOrResource(name, *reader)) {
        case XmlOutcome::kDone:
            return "";
        case XmlOutcome::kNotFound:
            return "file " + name + " is not found";
        case XmlOutcome::kFailed:
            break;
    }
    return handler.Problem().empty() ? "file " + name + " can't be parsed" : handler.Problem();
}

}  // namespace fixtop
