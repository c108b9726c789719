// SPDX-License-Identifier: Apache-2.0
#pragma once

// The element with which a model file says where and how much of it is logged. The file that it
// names is emptied, and so has to lie below the working directory and look like a log: whoever
// opens a model out of a foreign file must not lose one of his own. What is refused is told in the
// log, which goes on as it was.

#include "xml/named_element.h"

namespace fixtop {

class LogElement final : public NamedElement {
 public:
    LogElement() : NamedElement("Log") {}

 protected:
    void Begin(const XmlLocator* locator, const XmlAttributes& attributes) override;
};

}  // namespace fixtop
