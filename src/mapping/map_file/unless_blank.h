// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "mapping/map_file/map_text.h"
#include "xml/text_element.h"

namespace fixtop {

// Hands over the pieces of an element's text that are more than white space.
template <class Action>
TextElement::Action UnlessBlank(Action action) {
    return [action](const std::string& text, const XmlLocator*) {
        if (!IsBlank(text)) action(text);
    };
}

}  // namespace fixtop
