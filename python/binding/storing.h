// SPDX-License-Identifier: Apache-2.0
#pragma once

// Stores into nodes: at once, or into the hold that is open.

#include <pybind11/pybind11.h>

#include <memory>
#include <string>

#include "fixtop/client/hold.h"
#include "fixtop/client/node.h"

namespace fixtop::python {

// Stores into a node without changing the unit in which it shows its value, into the open hold when
// there is one, and lets who watches look. Throws RefusedUnit and RefusedStore.
void Store(const client::Node& node, const pybind11::handle& value, const std::string& unit);

// A value as it is typed: all digits of a number, a list with commas, nothing for none.
std::string TypedOf(const pybind11::handle& value);

// Called after each store that is not held; null for nobody. What it raises comes out of the store.
void SetAfterStore(pybind11::object call);

// A hold into which all stores go while it is open. One is open at a time.
class HeldStores {
 public:
    explicit HeldStores(const client::Solver& solver);
    ~HeldStores();
    HeldStores(const HeldStores&) = delete;
    HeldStores& operator=(const HeldStores&) = delete;

    client::Released Release(const client::Solver::Progress& progress);
    // Null when none is open.
    static client::Hold* Open();

 private:
    client::Hold hold_;
};

}  // namespace fixtop::python
