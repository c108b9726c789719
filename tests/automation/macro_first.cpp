// SPDX-License-Identifier: Apache-2.0
// A caller that has the system's macro before the headers of the objects.

#define GetClassName GetClassNameW
#include "fixtop/automation.h"

#if !defined(GetClassName)
#error "a header took its includer's macro away"
#endif

namespace fixtop {

HRESULT ClassNameWithMacroFirst(IQSINode& node, char** name) {
    return node.GetClassName(name);
}

}  // namespace fixtop
