// SPDX-License-Identifier: Apache-2.0
#pragma once

// Watch: nodes whose values are compared with what they were.

#include <string>
#include <vector>

#include "fixtop/client/reference.h"

namespace fixtop::client {

struct Change {
    std::string path;
    FIValue before;
    FIValue now;
    std::string unit;
};

class Watch {
 public:
    // Under this path changes of the node are told.
    void Add(const Node& node, std::string path);
    void Add(const Node& node) { Add(node, node.Path()); }
    // What has changed since the last call, in the order in which the nodes were added.
    std::vector<Change> Changes();

 private:
    struct Watched {
        std::string path;
        Reference reference;
        FIValue value;
    };

    std::vector<Watched> watched_;
};

}  // namespace fixtop::client
