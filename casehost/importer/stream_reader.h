// SPDX-License-Identifier: Apache-2.0
#pragma once

// Material and energy streams.
//
// A material stream has its overall numbers, arrays by compound, and arrays "Phase ..." over the
// phases that exist, some of them by compound as well. A phase exists when its mole fraction is
// there and greater than 0; the numbers that the file holds for other phases are leftovers.

#include "flowsheet_file.h"

namespace fixtop::casehost::importer {

void ReadMaterialStream(Reading& reading, const FileObject& stream, ObjectData& object);

// `specified`: a unit operation takes its duty from this stream.
void ReadEnergyStream(Reading& reading, const FileObject& stream, bool specified,
                      ObjectData& object);

}  // namespace fixtop::casehost::importer
