// SPDX-License-Identifier: Apache-2.0
#include "mapping/check/checked_element.h"

#include "mapping/map_file/map_text.h"
#include "platform/file_search.h"
#include "platform/resources.h"
#include "platform/xml_reader.h"

namespace fixtop {

namespace {

// Puts elements together; those that are open stand one in the other.
class ElementReader final : public XmlContentHandler, public XmlErrorHandler {
 public:
    ElementReader(int file, const ElementVisits& visits, Findings& findings)
        : file_(file), visits_(visits), findings_(findings) {}

    void StartElement(const std::string& name, const XmlAttributes& attributes,
                      const XmlLocator& locator) override {
        CheckedElement element{name, {file_, locator.Line()}, {}, {}, {}};
        for (const auto& [attribute, value] : attributes) {
            element.attributes.emplace_back(attribute, value);
            CheckLength(value.size(), locator);
        }
        if (depth_++ == 0) {
            is_wanted_ = visits_.root(element);
        } else if (is_wanted_) {
            open_.push_back(std::move(element));
        }
    }
    void EndElement(const std::string&, const XmlLocator&) override {
        --depth_;
        if (open_.empty()) return;
        CheckedElement ended = std::move(open_.back());
        open_.pop_back();
        if (open_.empty()) return visits_.element(ended);
        open_.back().children.push_back(std::move(ended));
    }
    void Text(const std::string& text, const XmlLocator& locator) override {
        CheckLength(text.size(), locator);
        if (!open_.empty() && !IsBlank(text)) open_.back().texts.push_back(text);
    }
    void Warning(const std::string&, const XmlLocator&) override {}
    void Error(const std::string& text, const XmlLocator& locator) override {
        findings_.Mistake({file_, locator.Line()}, text);
    }
    void FatalError(const std::string& text, const XmlLocator& locator) override {
        has_told_ = true;
        findings_.Mistake({file_, locator.Line()}, text + "; nothing is read from here on");
    }

    bool HasToldWhy() const { return has_told_; }

 private:
    void CheckLength(std::size_t length, const XmlLocator& locator) {
        if (length <= SaxElementHandler::kTextLimit) return;
        findings_.Mistake({file_, locator.Line()},
                          "a text is longer than " + std::to_string(SaxElementHandler::kTextLimit) +
                              " bytes; what is beyond them is not read");
    }

    const int file_;
    const ElementVisits& visits_;
    Findings& findings_;
    std::vector<CheckedElement> open_;
    int depth_ = 0;
    bool is_wanted_ = false;
    bool has_told_ = false;
};

// As it is reached from the working directory, unless it lies beside the program.
std::string ShownFile(const std::string& name, const std::string& path) {
    if (path.empty()) return name;
    const bool is_beside = path.size() == ProgramFolder().size() + 1 + name.size() &&
                           path.starts_with(ProgramFolder());
    return is_beside ? path : name;
}

void TellMissing(const std::string& name, ModelFileOrigin origin, const FindingPlace* from,
                 Findings& findings) {
    const bool may_be_sought = origin == ModelFileOrigin::kCaller || StaysInSearchFolders(name);
    const std::string text = "file " + name + " can't be found";
    const char* rule = may_be_sought ? "" : ": it has to lie in the folders where files are sought";
    findings.Mistake(from ? *from : FindingPlace{findings.AddFile(name), 0}, text + rule);
}

}  // namespace

const std::string* CheckedElement::Find(const char* attribute) const {
    for (const auto& [name_of, value] : attributes) {
        if (name_of == attribute) return &value;
    }
    return nullptr;
}

std::string CheckedElement::Get(const char* attribute) const {
    const std::string* value = Find(attribute);
    return value ? *value : "";
}

std::string CheckedElement::Text() const {
    std::string whole;
    for (const std::string& text : texts) whole += text;
    return whole;
}

void ReadElements(const std::string& name, ModelFileOrigin origin, bool has_resources,
                  const FindingPlace* from, const ElementVisits& visits, Findings& findings) {
    const std::string path = FindModelFile(name, origin);
    std::string_view bytes;
    if (path.empty() && has_resources) bytes = FindCompiledResource(name);
    if (path.empty() && !bytes.data()) return TellMissing(name, origin, from, findings);
    const int file = findings.AddFile(ShownFile(name, path));
    ElementReader elements(file, visits, findings);
    const std::unique_ptr<XmlReader> reader = CreateXmlReader();
    if (!reader || !reader->Attach(elements, elements)) {
        return findings.Mistake({file, 0}, "the system has no reader for it");
    }
    const XmlOutcome outcome =
        path.empty() ? reader->ParseText(bytes, name) : reader->ParseFile(path);
    if (outcome == XmlOutcome::kNotFound) return TellMissing(name, origin, from, findings);
    if (outcome == XmlOutcome::kFailed && !elements.HasToldWhy()) {
        findings.Mistake({file, 0}, "it is no XML that can be read");
    }
}

}  // namespace fixtop
