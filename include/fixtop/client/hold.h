// SPDX-License-Identifier: Apache-2.0
#pragma once

// Hold: what is stored between its beginning and its release is solved once, and a composition is
// normalised once, when all of its fractions are stored.

#include <memory>
#include <string>
#include <vector>

#include "fixtop/client/solver.h"

namespace fixtop::client {

struct Typed;

// What became of the stores of a hold.
struct Released {
    SolveResult solve;
    // Compositions whose fractions did not sum to 1, with the sum: "path: the fractions sum to 0.9
    // and are normalised".
    std::vector<std::string> normalised;
    // Compositions whose fractions sum to nothing, and stay as they were before the hold.
    std::vector<std::string> refused;
};

// One is open at a time in a case.
class Hold {
 public:
    explicit Hold(const Solver& solver);
    // Normalises, and lets the solver start where stores start it.
    ~Hold();
    Hold(const Hold&) = delete;
    Hold& operator=(const Hold&) = delete;

    // As Node::Store, for a fraction too: it stands as it is until the release. An array, and the
    // composition of the neutral view, takes a list with commas, a value for each element in order;
    // an empty one leaves its element. Throws Refused; then all elements of a list are as before.
    void Store(const Node& node, const std::string& typed, const std::string& unit = "");
    // Normalises, and solves unless nothing was changed. Afterwards nothing more may be stored.
    Released Release(const Solver::Progress& progress = {});

 private:
    class Compositions;

    void Store(const Node& node, const Typed& typed);
    void StoreList(const std::vector<Node>& elements, const std::vector<std::string>& parts,
                   const std::string& unit);

    std::unique_ptr<Compositions> compositions_;
    Solver solver_;
    Batch batch_;
};

// The node of the case that a store goes to: in the neutral view another than the one shown.
Node NodeOfCase(const Node& node);

// The nodes that a list of values goes to, in order; none where the node takes no list.
std::vector<Node> ElementsOf(const Node& node);

}  // namespace fixtop::client
