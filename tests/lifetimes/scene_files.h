// SPDX-License-Identifier: Apache-2.0
#pragma once

// A neutral view that opens in no time: a class library, a map and units of a few lines, which
// cover each way in which a class node comes to stand on a node of the application.

#include "fixtop/fixtop.h"
#include "support/temporary_folder.h"

namespace fixtop::lifetimes {

// Writes the files into the working directory, where the module finds them.
void WriteSceneFiles(const TemporaryFolder& folder);
// Their names.
const FixtopModelFiles& SceneFiles();

}  // namespace fixtop::lifetimes
