// SPDX-License-Identifier: Apache-2.0
#pragma once

// Stores: what --set says, stored together, and how what became of it is told.

#include <string>
#include <utility>
#include <vector>

#include "fixtop/client.h"
#include "node.h"
#include "word.h"

namespace fixtop {

class Stores {
 public:
    struct Given {
        std::string path;
        std::string value;
        std::string unit;  // beside the one that may stand behind the value
        bool first = false;
        bool all = false;
    };
    struct Stored {
        std::string path;  // on one line
        client::Place place;
    };

    // --set
    void Declare(CLI::App& app);
    bool IsEmpty() const { return options_.empty(); }
    // Stores `first` and what --set says in the hold of the session; whether all was taken. What
    // was not is noted, the others stand.
    bool StoreAll(CommandContext& around, const std::vector<Given>& first = {});
    // In the order of the stores, without those that were refused.
    const std::vector<Stored>& Taken() const { return taken_; }
    // What was noted of the others, a text each.
    const std::vector<std::string>& Refused() const { return refused_; }

 private:
    bool Store(CommandContext& around, const Given& given);
    void Refuse(std::string text, Output& out);

    std::vector<std::pair<std::string, std::string>> options_;
    std::vector<Stored> taken_;
    std::vector<std::string> refused_;
};

// The attribute of a node, or of its elements with commas between them, on one line.
std::string ValuesOf(const Node& node, const std::string& attribute,
                     const std::vector<Node>& elements);

// Notes the compositions that were normalised or refused; whether none was refused.
bool TellReleased(const client::Released& released, Output& out);

}  // namespace fixtop
