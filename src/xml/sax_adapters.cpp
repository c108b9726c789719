// SPDX-License-Identifier: Apache-2.0
#include "xml/sax_adapters.h"

namespace fixtop {

namespace {

constexpr int kWarningLevel = 5;

std::string_view Cut(std::string_view text) {
    if (text.size() <= SaxElementHandler::kTextLimit) return text;
    std::size_t end = SaxElementHandler::kTextLimit;
    // A byte 10xxxxxx goes on with the character before it.
    while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0) == 0x80) --end;
    return text.substr(0, end);
}

// A text as it is handed on; only one that must be cut is copied.
class HandedText {
 public:
    explicit HandedText(const std::string& text)
        : text_(text.size() <= SaxElementHandler::kTextLimit ? text : cut_.assign(Cut(text))) {}

    const std::string& Get() const { return text_; }

 private:
    std::string cut_;
    const std::string& text_;
};

}  // namespace

void SaxContentAdapter::StartElement(const std::string& name, const XmlAttributes& attributes,
                                     const XmlLocator& locator) {
    cut_ = attributes;
    for (auto& [attribute, value] : cut_) {
        attribute = Cut(attribute);
        value = Cut(value);
    }
    document_.StartElement(HandedText(name).Get(), &locator, cut_);
}

void SaxContentAdapter::EndElement(const std::string&, const XmlLocator& locator) {
    document_.EndElement(&locator);
}

void SaxContentAdapter::Text(const std::string& text, const XmlLocator& locator) {
    document_.Text(HandedText(text).Get(), &locator);
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

}  // namespace fixtop
