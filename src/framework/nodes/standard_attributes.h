// SPDX-License-Identifier: Apache-2.0
#pragma once

// The names of attributes that any node may be asked for. One that has no such attribute, or none
// now, answers NULL.

#include <array>

namespace fixtop {

inline constexpr std::array<const char*, 27> kStandardAttributes = {"id",
                                                                    "value",
                                                                    "dimension",
                                                                    "uom",
                                                                    "spec_value",
                                                                    "spec_uom",
                                                                    "can_enter",
                                                                    "option_list",
                                                                    "uom_options",
                                                                    "browser_name",
                                                                    "type",
                                                                    "container",
                                                                    "container_category",
                                                                    "container_type",
                                                                    "display_name",
                                                                    "isleaf",
                                                                    "has_children",
                                                                    "path",
                                                                    "upper_limit",
                                                                    "lower_limit",
                                                                    "description",
                                                                    "status",
                                                                    "enabled",
                                                                    "history_enabled",
                                                                    "is_container",
                                                                    "no_containers_below",
                                                                    "is_hierarchy"};

// The value is older than a change of the case.
inline constexpr char kStale[] = "stale";
inline constexpr char kAttachments[] = "attachments";
inline constexpr char kSkipCorrelations[] = "skipcorrelations";
inline constexpr char kSkipAttachments[] = "skipattachments";

// Whether the name is one of them, the mark, or one of the three switches, which nodes take that
// don't show them.
bool IsStandardAttribute(const char* name);

}  // namespace fixtop
