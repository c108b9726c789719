// SPDX-License-Identifier: Apache-2.0
#pragma once

// Reads the texts in which selections are kept: the backup form, a tree of steps that say which of
// them are items, and the form of selections, a flat list of whole paths.

#include <memory>
#include <string>
#include <vector>

#include "collection/element.h"

namespace fixtop {

struct ReadSelection {
    enum class Form { kNone, kBackup, kPaths };

    // None when the text is no document, or one of another kind.
    Form form = Form::kNone;
    // Of the backup form: the steps, null without any, and those of them that are items, in the
    // order of the items.
    std::unique_ptr<FICollectionElement> root;
    std::vector<FICollectionElement*> items;
    // Of the form of selections, in the order of the text.
    std::vector<std::string> paths;
};

// The steps are made for `collection`.
ReadSelection ReadBackup(const char* text, Collection& collection);

}  // namespace fixtop
