// SPDX-License-Identifier: Apache-2.0
#include "automation/com/type_library.h"

namespace fixtop {

HRESULT WriteTypeLibrary(const MemberTable&, const std::string&, int, int) {
    return kResultNotImplemented;
}

void* LoadTypeLibrary(const std::string&) {
    return nullptr;
}

}  // namespace fixtop
