// SPDX-License-Identifier: Apache-2.0
#include "host/host_object.h"

#include "host/adapter.h"

namespace fixtop {

bool HostPlace::Look(CaseLife& life) const {
    if (revision_ == kGone) return false;
    const bool is_there = life.Look() && (identity_ == 0 || IsThere(identity_));
    const bool is_gone = address_ && !is_there;
    revision_ = is_gone ? kGone : life.Revision();
    return !is_gone;
}

bool HostPlace::IsThere(std::uint64_t identity) {
    host::HostServices* services = TheAdapter().Services();
    return services && services->Lives(identity);
}

}  // namespace fixtop
