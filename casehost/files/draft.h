// SPDX-License-Identifier: Apache-2.0
#pragma once

// The names of drafts: unfinished files beside their targets, "plant.json.0123456789ab.part".

#include <filesystem>
#include <system_error>

#include "files/durable.h"

namespace fixtop::casehost::files {

// A name beside the target that nobody else comes upon. That of the target is cut in it where the
// whole could become longer than names may be.
std::filesystem::path NameDraft(const std::filesystem::path& target);

// Begins a draft of the target under a name that is free.
std::error_code OpenDraft(NewFile& draft, const std::filesystem::path& target);

// Removes the drafts of the target whose makers died over them.
void RemoveLeftDrafts(const std::filesystem::path& target);

}  // namespace fixtop::casehost::files
