// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>

#include "mapping/check/checked_element.h"

namespace fixtop {

// What is read of a file: its root alone, then each element directly below it when that is whole,
// in their order.
struct ElementVisits {
    std::function<bool(const CheckedElement& root)> root;  // false: nothing below it is wanted
    std::function<void(const CheckedElement& element)> element;
};

}  // namespace fixtop
