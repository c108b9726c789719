// SPDX-License-Identifier: Apache-2.0
#pragma once

// A path that was parsed once and is walked many times.

#include <memory>
#include <string>

#include "fixtop/fixtop.h"
#include "fixtop/value.h"

namespace fixtop {

namespace bench {

class PreparedPath {
 public:
    // Throws when the text does not parse.
    explicit PreparedPath(const std::string& text);
    // Whether it led somewhere.
    bool Walk(FIIteratorBase& it) { return FixtopWalkPath(path_.get(), &it, attribute_); }

 private:
    std::unique_ptr<FixtopPath, void (*)(FixtopPath*)> path_;
    FIValue attribute_;
};

}  // namespace bench

}  // namespace fixtop
