// SPDX-License-Identifier: Apache-2.0
#pragma once

// The element of a map file with the expressions that stand in for attributes of a node.

#include <string>
#include <utility>

#include "mapping/map_file/map_text.h"
#include "mapping/map_file/named_text_element.h"
#include "mapping/translators/translator.h"
#include "xml/named_element.h"

namespace fixtop {

class NodeAttributesElement final : public NamedElement {
 public:
    explicit NodeAttributesElement(NodeAttributes& attributes)
        : NamedElement("NodeAttributes"), attributes_(attributes) {
        SetWarnUnknown(true);
    }

 protected:
    void Begin(const XmlLocator*, const XmlAttributes&) override {
        AddChild<NamedTextElement>("Attribute", "Name",
                                   [this](const std::string& name, const std::string& text) {
                                       ParsedPath path = CompilePath(text);
                                       if (path) attributes_[name] = std::move(path);
                                   });
    }

 private:
    NodeAttributes& attributes_;
};

}  // namespace fixtop
