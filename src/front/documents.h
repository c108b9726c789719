// SPDX-License-Identifier: Apache-2.0
#pragma once

// Documents: the document objects that are alive, found by their case and by the identity for which
// they were made. One whose case is gone is found no more, though its clients still hold it.

#include <vector>

#include "fixtop/automation/document.h"
#include "fixtop/entry.h"

namespace fixtop {

class CQSIDocument;

// Of which family the nodes of its documents are.
enum class DocumentFamily { kQ, kV };

class Documents {
 public:
    explicit Documents(DocumentFamily family) : family_(family) {}

    // Counted for the caller; null when there is none. A null session is the active case.
    IQSIDocument* Find(void* session, const void* identity) const;
    // A new one on a top, which it shares.
    IQSIDocument* Make(FIEntry& top, void* session, const void* identity);
    void Forget(const CQSIDocument& document);

 private:
    const DocumentFamily family_;
    std::vector<CQSIDocument*> alive_;
};

// Those of a family.
Documents& TheDocuments(DocumentFamily family);

}  // namespace fixtop
