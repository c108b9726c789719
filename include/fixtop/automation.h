// SPDX-License-Identifier: Apache-2.0
#pragma once

// The automation objects: what a program outside of the module holds when it was not built with it.
// GetQSINode, QSVGetTopNode, GetDocumentAgg and QSVGetDocumentAgg (fixtop/fixtop.h) hand out the
// first of them.

#include "fixtop/automation/attribute.h"
#include "fixtop/automation/attribute_iterator.h"
#include "fixtop/automation/collection.h"
#include "fixtop/automation/collection_iterator.h"
#include "fixtop/automation/document.h"
#include "fixtop/automation/node.h"
#include "fixtop/automation/node_iterator.h"
#include "fixtop/automation/sink.h"
#include "fixtop/automation/unknown.h"
#include "fixtop/automation/v_node.h"
#include "fixtop/automation/variant.h"
