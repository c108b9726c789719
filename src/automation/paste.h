// SPDX-License-Identifier: Apache-2.0
#pragma once

// Collections of texts: of the selection that another process has put on the clipboard, and of what
// a collection was kept in.

#include "fixtop/automation/collection.h"

namespace fixtop {

// `text` has `size` bytes, which need not end with NUL; its nodes are sought from the top of the
// tree of `node`, a node object. kResultFalse when there is no text, kResultFail when it is no
// selection.
HRESULT PasteText(IUnknown* node, const char* text, std::int32_t size, IQSICollection** out);
// The same of what is on the clipboard in the format "QSI Format". kResultFalse when nothing is, or
// it can't be had; kResultNotImplemented where the system has no clipboard.
HRESULT PasteFromClipboard(IUnknown* node, IQSICollection** out);
// The same of a text of the backup form or of the form of selections.
HRESULT LoadCollection(IUnknown* node, const char* text, std::int32_t size, IQSICollection** out);

}  // namespace fixtop
