// SPDX-License-Identifier: Apache-2.0
#pragma once

// A client of the plant: a top, a view of it, and handles on the places of a scene.

#include <memory>

#include "lifetimes/making.h"
#include "lifetimes/plant.h"

namespace fixtop::lifetimes {

class Client {
 public:
    // With `listens` the host tells the top of its changes, as the combined top has it.
    Client(View view, Place place, Plant& plant, bool listens);

    // A handle by the present path of the place, or on something else in its list; null when there
    // is none.
    std::unique_ptr<Subject> Make(Kind kind);
    std::unique_ptr<Subject> MakeOther(Kind kind);
    // In the raw view, whatever view the client has.
    Ref<FIIteratorBase> Bystander();

 private:
    std::unique_ptr<Subject> MakeOfCase(Kind kind);
    Path PresentPath() const;
    double BaseOf() const;
    const char* RowOf(Kind kind) const;

    View view_;
    Place place_;
    Plant& plant_;
    Ref<FIEntry> top_;
    Ref<FIEntry> root_;
};

}  // namespace fixtop::lifetimes
