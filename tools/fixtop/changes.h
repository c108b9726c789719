// SPDX-License-Identifier: Apache-2.0
#pragma once

// Changes: what was stored in a session, line by line, with what stood there before, and whether it
// was saved since.

#include <optional>
#include <string>
#include <vector>

#include "fixtop/client.h"
#include "node.h"

namespace fixtop {

class Changes {
 public:
    // A value as it was. A result is NULL: it is made again.
    struct Former {
        Node node;  // of the case
        std::string attribute;
        FIValue value;
        std::string unit;
    };
    // A place to which something was stored.
    struct Stored {
        Node node;
        std::string attribute;
        std::string unit;  // in which it was shown
        std::string path;  // as it is told
    };
    // What was stored by one line, in order.
    struct Line {
        std::vector<Former> formers;
        std::vector<Stored> stored;
    };

    // Lines are kept from now on.
    void Keep() { keeps_ = true; }
    bool AreKept() const { return keeps_; }
    // What is stored from now on is taken back together.
    void BeginLine();
    // To be called before something is stored to a place; what else changes with it is remembered
    // too.
    void Remember(const client::Place& place);
    // The last line of which something still stands; null without one. It is no longer kept.
    std::optional<Line> TakeLast();

    // Something was stored or solved that is in no file.
    bool AreUnsaved() const { return are_unsaved_; }
    void SetUnsaved(bool unsaved) { are_unsaved_ = unsaved; }

 private:
    std::vector<Line> lines_;
    bool keeps_ = false;
    bool are_unsaved_ = false;
};

// Whether another value stands there now. The node is shown in the former unit from then on.
bool IsOther(const Changes::Former& former);

// Stores what was there before. Answers the reasons of refusals.
std::vector<std::string> TakeBack(const Changes::Line& line, client::Hold& hold);

}  // namespace fixtop
