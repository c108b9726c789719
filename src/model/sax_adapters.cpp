#include "model/sax_adapters.h"

namespace {

constexpr int kWarningLevel = 5;

std::string Cut(const std::string& text) {
    if (text.size() <= SaxElementHandler::kTextLimit) return text;
    std::size_t end = SaxElementHandler::kTextLimit;
    // A byte 10xxxxxx goes on with the character before it.
    while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0) == 0x80) --end;
    return text.substr(0, end);
}

}  // namespace

void SaxContentAdapter::StartElement(const std::string& name, const XmlAttributes& attributes,
                                     const XmlLocator& locator) {
    XmlAttributes cut;
    cut.reserve(attributes.size());
    for (const auto& [attribute, value] : attributes) cut.emplace_back(Cut(attribute), Cut(value));
    document_.StartElement(Cut(name), &locator, cut);
}

void SaxContentAdapter::EndElement(const std::string&, const XmlLocator& locator) {
    document_.EndElement(&locator);
}

void SaxContentAdapter::Text(const std::string& text, const XmlLocator& locator) {
    document_.Text(Cut(text), &locator);
}

void SaxErrorAdapter::Warning(const std::string& text, const XmlLocator& locator) {
    teller_.Message(text, kWarningLevel, &locator);
}

void SaxErrorAdapter::Error(const std::string& text, const XmlLocator& locator) {
    teller_.SevereError(text, &locator);
}

void SaxErrorAdapter::FatalError(const std::string& text, const XmlLocator& locator) {
    teller_.SevereError(text, &locator);
}
