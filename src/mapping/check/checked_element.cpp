// SPDX-License-Identifier: Apache-2.0
#include "mapping/check/checked_element.h"

namespace fixtop {

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

}  // namespace fixtop
