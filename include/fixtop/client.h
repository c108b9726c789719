// SPDX-License-Identifier: Apache-2.0
#pragma once

// The client library: the open case as plain values, so that nobody who uses it counts references.
//
//     auto plant = fixtop::client::Case::Open("plant.json");
//     for (const auto& stream : plant.Top().Matches("appModel.FlowSheetObjects.Streams.*"))
//         std::cout << stream.Name() << ' ' << stream.At("Temperature").Number("C") << '\n';
//
// <fixtop/client/classes.h> has a class for each of the neutral view, so that this is
// `stream.Temperature().Number("C")`; fixtop/client/typed.h the same by name.
//
// Errors are exceptions (fixtop/client/error.h). Threads: all calls come on one thread, that of the
// simulation. A host's own program has one host, so it has one open `Case` from a file at a time.

#include "fixtop/client/case.h"
#include "fixtop/client/check.h"
#include "fixtop/client/class_table.h"
#include "fixtop/client/error.h"
#include "fixtop/client/hold.h"
#include "fixtop/client/node.h"
#include "fixtop/client/pattern.h"
#include "fixtop/client/reference.h"
#include "fixtop/client/search.h"
#include "fixtop/client/selection.h"
#include "fixtop/client/solver.h"
#include "fixtop/client/typed.h"
#include "fixtop/client/typed_list.h"
#include "fixtop/client/watch.h"
