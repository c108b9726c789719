// SPDX-License-Identifier: Apache-2.0
#pragma once

// Pattern: a path expression that is parsed once and walked many times, on any case.

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "fixtop/client/error.h"
#include "fixtop/client/node.h"

namespace fixtop {
struct FixtopPath;
}

namespace fixtop::client {

class Pattern {
 public:
    // False ends the visits.
    using PlaceVisitor = std::function<bool(const Place& place)>;

    // Throws PathError.
    explicit Pattern(std::string expression);

    const std::string& Text() const { return text_; }
    // The same steps, whatever quotes they are written with.
    bool IsSame(const Pattern& other) const;
    // The first node that it leads to, as a walk has it; null when there is none. Its `path` is
    // left empty.
    std::optional<Place> First(const Node& from) const;
    // All of them, in the order of the tree, to `visit`, until that answers false.
    void ForEach(const Node& from, const PlaceVisitor& visit) const;
    // The same with places whose paths begin at `from`. From each node of a long list this is
    // quicker: the way from the top to `from` isn't sought.
    void ForEachBelow(const Node& from, const PlaceVisitor& visit) const;
    std::vector<Place> All(const Node& from) const;
    // Whether it may lead from there to more than the first node that was found: it chooses by
    // wildcards or filters, or leaves out the key of a node that has one. A name without a key is
    // that of the first of its siblings, as paths are written.
    bool MayMeanMore(const Node& from, const Node& found) const;
    // Why it leads nowhere from there.
    NotFound WhyMissing(const Node& from) const;

 private:
    std::string text_;
    std::shared_ptr<const FixtopPath> path_;
};

}  // namespace fixtop::client
