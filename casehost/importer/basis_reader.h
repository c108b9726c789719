// SPDX-License-Identifier: Apache-2.0
#pragma once

// Compounds, property package and reactions of a flowsheet file.

#include "reading.h"

namespace fixtop::casehost::importer {

// Also fills the compound names of the reading.
void ReadCompounds(Reading& reading, XmlNode root, CaseData& data);

std::string ReadPackageName(XmlNode root);

void ReadReactions(Reading& reading, XmlNode root, CaseData& data);

}  // namespace fixtop::casehost::importer
