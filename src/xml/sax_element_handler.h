// SPDX-License-Identifier: Apache-2.0
#pragma once

// The frame on which the readers of model files stand. A handler takes one kind of element. While
// its element is open it has handlers for the elements that may stand inside; the one whose element
// is open is active, so that the open elements are a chain of active handlers below the document's.
//
// An element that nobody takes is skipped with everything inside, with a warning where the handler
// around it wants one.
//
// The order of the virtual operations is fixed.

#include <memory>
#include <string>
#include <vector>

#include "platform/xml_reader.h"

namespace fixtop {

class SaxElementHandler {
 public:
    // Names, values and texts are handed on up to this many bytes.
    static constexpr std::size_t kTextLimit = 4096;

    SaxElementHandler() = default;
    SaxElementHandler(const SaxElementHandler&) = delete;
    SaxElementHandler& operator=(const SaxElementHandler&) = delete;

    virtual ~SaxElementHandler() = default;
    virtual void OnEnd(const XmlLocator* locator);
    // Each piece of the element's own text by itself.
    virtual void OnText(const std::string& text, const XmlLocator* locator);
    // Whether this handler takes the element; if it does, it makes its children now.
    virtual bool OnStart(const std::string& element, const XmlLocator* locator,
                         const XmlAttributes& attributes);
    // A handler that checks its attributes calls CountAttributes before it gets them and
    // WarnUnexpectedAttributes behind.
    virtual void CountAttributes(const XmlAttributes& attributes);
    virtual void WarnUnexpectedAttributes(const std::string& element, const XmlLocator* locator);
    virtual void WarnUnknownElement(const std::string& element, const XmlLocator* locator);
    virtual void SevereError(const std::string& text, const XmlLocator* locator);
    virtual void Message(const std::string& text, int level, const XmlLocator* locator);

    // The events of the document, given to the handler at the top of the chain. EndElement answers
    // whether this handler's own element ended.
    void StartElement(const std::string& element, const XmlLocator* locator,
                      const XmlAttributes& attributes);
    bool EndElement(const XmlLocator* locator);
    void Text(const std::string& text, const XmlLocator* locator);

 protected:
    // Leaves `out` alone when the element has no such attribute.
    bool GetAttribute(const char* name, const XmlAttributes& attributes, std::string& out);

    // Adds a handler for elements inside this one.
    template <class Handler, class... Arguments>
    void AddChild(Arguments&&... arguments) {
        children_.push_back(std::make_unique<Handler>(std::forward<Arguments>(arguments)...));
    }
    void SetWarnUnknown(bool warn) { warn_unknown_ = warn; }

 private:
    SaxElementHandler* Deepest();

    std::vector<std::unique_ptr<SaxElementHandler>> children_;
    SaxElementHandler* active_child_ = nullptr;
    // How many open elements of a skipped subtree stand inside this one.
    int ignore_depth_ = 0;
    // How many attributes of the element were not got yet.
    int pending_attributes_ = 0;
    bool warn_unknown_ = false;
};

}  // namespace fixtop
