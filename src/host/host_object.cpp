// SPDX-License-Identifier: Apache-2.0
#include "host/host_object.h"

#include "host/adapter.h"

namespace fixtop {

void HostObjectBase::Look() const {
    const bool is_there = life_->Look() && (identity_ == 0 || IsThere(identity_));
    revision_ = life_->Revision();
    is_gone_ = address_ && !is_there;
}

bool HostObjectBase::IsThere(std::uint64_t identity) {
    host::HostServices* services = TheAdapter().Services();
    return services && services->Lives(identity);
}

}  // namespace fixtop
