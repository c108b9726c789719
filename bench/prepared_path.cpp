// SPDX-License-Identifier: Apache-2.0
#include "prepared_path.h"

#include <stdexcept>

namespace fixtop {

namespace bench {

PreparedPath::PreparedPath(const std::string& text) : path_(nullptr, FixtopFreePath) {
    FIValue error;
    path_.reset(FixtopPreparePath(FIValue(text.c_str()), error));
    if (!path_) throw std::runtime_error(error.ToText());
}

}  // namespace bench

}  // namespace fixtop
