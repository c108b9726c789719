// SPDX-License-Identifier: Apache-2.0
#pragma once

// The stages that streams enter: the host's list "Inlet Stream Stages" of a column. `it` stands on
// the column and stays.

#include <string>

#include "fixtop/iterator.h"
#include "fixtop/value.h"

namespace fixtop::semantic {

// Whether a stage of this name is among the first 10000 of the list; false for the empty name.
bool IsInletStage(FIIteratorBase& it, const std::string& stage);

// Number of the stage that the feed of this name enters, as an INT; NULL when none is known. The
// numbers stand in a second list of the same id, behind the first, of which 10000 stages with 10000
// streams each are looked at.
FIValue FindFeedStage(FIIteratorBase& it, const std::string& feed);

// Id of a component by its number in the first stream of the first inlet stage; NULL without it.
// The arrays of the stages have no ids of their own.
FIValue FirstFeedComponentId(FIIteratorBase& it, int component);

}  // namespace fixtop::semantic
