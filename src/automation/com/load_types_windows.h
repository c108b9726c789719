// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "automation/com/system_types_windows.h"

namespace fixtop {

// The one type of this name in a library; null when there are none or several.
Ref<ITypeInfo> FindType(ITypeLib& library, const std::wstring& name);
// The id of a type; all zero when the system does not tell.
GUID IdOf(ITypeInfo& info);
// The type's own name; empty when the system does not tell.
std::wstring NameOf(ITypeInfo& info);

}  // namespace fixtop
