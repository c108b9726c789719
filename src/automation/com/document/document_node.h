// SPDX-License-Identifier: Apache-2.0
#pragma once

// The node object inside a document object of another program, which is a part of that by the
// system's rules of aggregation: its IQSINode counts for the document and answers as the document
// does; what ends it is the document's letting go of the part itself.

#include <functional>

#include "fixtop/automation/unknown.h"
#include "fixtop/iterator.h"
#include "fixtop/ref.h"

namespace fixtop {

// Where the node of a document stands. A document of the sibling application is seen as the host
// shows it; empty when there is no case.
using DocumentPlace = std::function<Ref<FIIteratorBase>(bool as_host_shows_it)>;

// `outer` is the object of which the node becomes a part, which it does not count; null for one of
// its own. `document` is counted unless it is that object; its class tells whether it is a sibling.
// `part` gets the node's own IUnknown, counted: it counts for itself and answers to the id of
// IQSINode. kResultFalse when there is no case, kResultNotImplemented where the system has no such
// objects; else what the system says.
HRESULT MakeDocumentNode(IUnknown* outer, IUnknown* document, const DocumentPlace& place,
                         IUnknown** part);

}  // namespace fixtop
