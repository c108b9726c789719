// SPDX-License-Identifier: Apache-2.0
#pragma once

// From what stands specified in a feed to its state, and from a calculated state back to what
// stands specified: the first for streams that no unit makes, the second for those that one makes.

#include <string>

#include "process/flowsheet.h"

namespace fixtop::casehost::process {

struct FeedState {
    MaterialState state;
    std::string warning;
};

// A feed needs its composition, one flow (molar or mass) and one of the pairs temperature and
// pressure, pressure and vapour fraction, temperature and vapour fraction, pressure and molar
// enthalpy. Throws UnderSpecified "temperature is not specified" and ProcessError "molar flow and
// mass flow are both specified" and the like. A composition that doesn't sum to 1 is normalised.
FeedState SolveFeed(const Thermo& thermo, const StreamGiven& given);

// Empty when the calculated state meets everything specified, else "specified temperature 50 C
// differs from calculated 42.1 C". The tolerance is 1e-6 of the value, for temperatures of K.
std::string Contradiction(const Thermo& thermo, const StreamGiven& given,
                          const MaterialState& state);

}  // namespace fixtop::casehost::process
