// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "mapping/check/element_visits.h"
#include "mapping/check/findings.h"
#include "xml/xml_file.h"

namespace fixtop {

// Reads a file as the readers of models do, within their bounds. What is wrong with it as XML, or
// that it can't be found, is told; the latter at `from`, where it is named, or else as the file's
// own.
void ReadElements(const std::string& name, ModelFileOrigin origin, bool has_resources,
                  const FindingPlace* from, const ElementVisits& visits, Findings& findings);

}  // namespace fixtop
