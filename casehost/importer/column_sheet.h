// SPDX-License-Identifier: Apache-2.0
#pragma once

// A file tells a column as one object with lists; the host has a flowsheet of its own around each
// column, with an object for each part: the tower, condenser and reboiler, the stages at which
// something enters or leaves, the specifications, and one that holds the profiles. The column names
// them and its streams in lists of attachments.

#include "reading.h"

namespace fixtop::casehost::importer {

// Puts such a flowsheet behind the objects of the case for each column that has stages, and leads
// the column to it. The columns, their streams and the compounds have been read.
void AddColumnSheets(Reading& reading, CaseData& data);

}  // namespace fixtop::casehost::importer
