// SPDX-License-Identifier: Apache-2.0
#include "dispatch/call.h"

#include "dispatch/script_error.h"

namespace fixtop::hovex {

namespace {

// The value of a store has a name, as the system wants it.
bool HasNames(const DISPPARAMS& given) {
    if (given.cNamedArgs == 0) return false;
    return given.cNamedArgs != 1 || given.rgdispidNamedArgs[0] != DISPID_PROPERTYPUT;
}

}  // namespace

Call::Call(const DISPPARAMS& given) {
    if (HasNames(given)) throw CallError(DISP_E_NONAMEDARGS);
    given_.reserve(given.cArgs);
    for (UINT i = given.cArgs; i > 0; --i) given_.push_back(PlainCopy(given.rgvarg[i - 1]));
}

}  // namespace fixtop::hovex
