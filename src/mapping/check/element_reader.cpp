// SPDX-License-Identifier: Apache-2.0
#include "mapping/check/element_reader.h"

#include <utility>

#include "mapping/map_file/map_text.h"
#include "xml/sax_element_handler.h"

namespace fixtop {

void ElementReader::StartElement(const std::string& name, const XmlAttributes& attributes,
                                 const XmlLocator& locator) {
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

void ElementReader::EndElement(const std::string&, const XmlLocator&) {
    --depth_;
    if (open_.empty()) return;
    CheckedElement ended = std::move(open_.back());
    open_.pop_back();
    if (open_.empty()) return visits_.element(ended);
    open_.back().children.push_back(std::move(ended));
}

void ElementReader::Text(const std::string& text, const XmlLocator& locator) {
    CheckLength(text.size(), locator);
    if (!open_.empty() && !IsBlank(text)) open_.back().texts.push_back(text);
}

void ElementReader::Error(const std::string& text, const XmlLocator& locator) {
    findings_.Mistake({file_, locator.Line()}, text);
}

void ElementReader::FatalError(const std::string& text, const XmlLocator& locator) {
    has_told_ = true;
    findings_.Mistake({file_, locator.Line()}, text + "; nothing is read from here on");
}

void ElementReader::CheckLength(std::size_t length, const XmlLocator& locator) {
    if (length <= SaxElementHandler::kTextLimit) return;
    findings_.Mistake({file_, locator.Line()}, "a text is longer than " +
                                                   std::to_string(SaxElementHandler::kTextLimit) +
                                                   " bytes; what is beyond them is not read");
}

}  // namespace fixtop
