// SPDX-License-Identifier: Apache-2.0
#pragma once

// Collections of texts: of the selection that another process has put on the clipboard, and of what
// a collection was kept in.

#include <string>

#include "fixtop/automation/collection.h"

namespace fixtop {

// `text` has `size` bytes, which need not end with NUL; its nodes are sought from the top of the
// tree of `node`, a node object. kResultFalse when there is no text, kResultFail when it is no
// selection.
HRESULT PasteText(IUnknown* node, const char* text, std::int32_t size, IQSICollection** out);
// The text that another process has put on the clipboard in the format "QSI Format", with all that
// follows a NUL in it. kResultFalse when there is none, or it can't be had;
// kResultNotImplemented where the system has no clipboard.
HRESULT ReadClipboard(std::string& text);
// A collection of that, as PasteText makes it.
HRESULT PasteFromClipboard(IUnknown* node, IQSICollection** out);
// One of a text of the backup form or of the form of selections.
HRESULT LoadCollection(IUnknown* node, const char* text, std::int32_t size, IQSICollection** out);

}  // namespace fixtop
