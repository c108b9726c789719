// SPDX-License-Identifier: Apache-2.0
#pragma once

// A selection that another process has put on the clipboard, as a collection.

#include "fixtop/automation/collection.h"

namespace fixtop {

// `text` has `size` bytes, which need not end with NUL; its nodes are sought from the top of the
// tree of `node`, a node object. kResultFalse when there is no text, kResultFail when it is no
// selection.
HRESULT PasteCollection(IUnknown* node, const char* text, std::int32_t size, IQSICollection** out);

}  // namespace fixtop
