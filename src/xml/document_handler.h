// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <utility>

#include "xml/sax_element_handler.h"

namespace fixtop {

// The top of a chain: it has the handlers of possible root elements.
class DocumentHandler : public SaxElementHandler {
 public:
    // Whether an unknown root element is worth a warning.
    explicit DocumentHandler(bool warn_unknown) { SetWarnUnknown(warn_unknown); }

    template <class Handler, class... Arguments>
    void AddRoot(Arguments&&... arguments) {
        AddChild<Handler>(std::forward<Arguments>(arguments)...);
    }
};

}  // namespace fixtop
