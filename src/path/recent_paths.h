// SPDX-License-Identifier: Apache-2.0
#pragma once

// RecentPath: an expression in prepared form. Clients read tables cell by cell with the same few
// texts, so the expressions that were read last are kept and not parsed again.
//
// What a text means depends on nothing else, so that nothing outdates it. Whoever walks an
// expression holds it: a callback of the walk may read others in the meantime.

#include <cstddef>
#include <memory>

#include "path/prepared_path.h"

namespace fixtop {

// How many are kept, and how long they may be in bytes.
inline constexpr std::size_t kRecentPaths = 64;
inline constexpr std::size_t kRecentPathLength = 256;

// Never null.
std::shared_ptr<const PreparedPath> RecentPath(const FIValue& source);

}  // namespace fixtop
