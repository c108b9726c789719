// SPDX-License-Identifier: Apache-2.0
#include "xml/sax_element_handler.h"

#include "diagnostics/module_log.h"
#include "xml/message_text.h"

namespace fixtop {

namespace {

constexpr int kWarningLevel = 5;
// What messages show of a path.
constexpr std::size_t kShownPathLimit = 999;

// The form of a message with its place, and without one.
struct MessageForm {
    const char* placed;
    const char* bare;
};
constexpr MessageForm kUnexpectedAttribute = {
    "  XML Parser Warning: file %s at line %d, unexpected attribute in %s",
    "  XML Parser Warning: file, unexpected attribute in %s"};
constexpr MessageForm kUnknownElement = {
    "  XML Parser Warning: file %s at line %d, unknown element <%s>",
    "  XML Parser Warning: file, unknown element <%s>"};
constexpr MessageForm kSevereError = {"  XML Parser Severe Error: file %s at line %d, %s",
                                      "   XML Parser Severe Error: file, %s"};
constexpr MessageForm kMessage = {"  XML Parser Message: file %s at line %d, %s",
                                  "   XML Parser Message: file, %s"};

std::string Formed(const MessageForm& form, const std::string& text, const XmlLocator* locator) {
    if (locator == nullptr) return MessageText(form.bare, text.c_str());
    const std::string file = std::string(locator->File()).substr(0, kShownPathLimit);
    return MessageText(form.placed, file.c_str(), locator->Line(), text.c_str());
}

}  // namespace

void SaxElementHandler::OnEnd(const XmlLocator*) {}

void SaxElementHandler::OnText(const std::string&, const XmlLocator*) {}

bool SaxElementHandler::OnStart(const std::string&, const XmlLocator*, const XmlAttributes&) {
    return false;
}

void SaxElementHandler::CountAttributes(const XmlAttributes& attributes) {
    pending_attributes_ = static_cast<int>(attributes.size());
}

void SaxElementHandler::WarnUnexpectedAttributes(const std::string& element,
                                                 const XmlLocator* locator) {
    if (pending_attributes_ <= 0) return;
    LogAtLevel(Formed(kUnexpectedAttribute, element, locator).c_str(), kWarningLevel);
}

void SaxElementHandler::WarnUnknownElement(const std::string& element, const XmlLocator* locator) {
    LogAtLevel(Formed(kUnknownElement, element, locator).c_str(), kWarningLevel);
}

void SaxElementHandler::SevereError(const std::string& text, const XmlLocator* locator) {
    LogMessage(Formed(kSevereError, text, locator).c_str());
}

void SaxElementHandler::Message(const std::string& text, int level, const XmlLocator* locator) {
    LogAtLevel(Formed(kMessage, text, locator).c_str(), level);
}

// The handler of the innermost element, or the one that skips what is inside of its element.
SaxElementHandler* SaxElementHandler::Deepest() {
    SaxElementHandler* handler = this;
    while (handler->ignore_depth_ == 0 && handler->active_child_ != nullptr) {
        handler = handler->active_child_;
    }
    return handler;
}

void SaxElementHandler::StartElement(const std::string& element, const XmlLocator* locator,
                                     const XmlAttributes& attributes) {
    SaxElementHandler& handler = *Deepest();
    if (handler.ignore_depth_ > 0) {
        ++handler.ignore_depth_;
        return;
    }
    for (const auto& child : handler.children_) {
        if (!child->OnStart(element, locator, attributes)) continue;
        handler.active_child_ = child.get();
        return;
    }
    if (handler.warn_unknown_) handler.WarnUnknownElement(element, locator);
    handler.ignore_depth_ = 1;
}

bool SaxElementHandler::EndElement(const XmlLocator* locator) {
    if (ignore_depth_ > 0) {
        --ignore_depth_;
        return false;
    }
    if (active_child_ != nullptr) {
        if (active_child_->EndElement(locator)) active_child_ = nullptr;
        return false;
    }
    OnEnd(locator);
    children_.clear();
    return true;
}

void SaxElementHandler::Text(const std::string& text, const XmlLocator* locator) {
    SaxElementHandler& handler = *Deepest();
    if (handler.ignore_depth_ == 0) handler.OnText(text, locator);
}

bool SaxElementHandler::GetAttribute(const char* name, const XmlAttributes& attributes,
                                     std::string& out) {
    for (const auto& [attribute, value] : attributes) {
        if (attribute != name) continue;
        out = value;
        --pending_attributes_;
        return true;
    }
    return false;
}

}  // namespace fixtop
