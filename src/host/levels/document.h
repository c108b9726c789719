// SPDX-License-Identifier: Apache-2.0
#pragma once

// HDocumentAgg: the document of a case as clients handle it. When the case is gone it has no name
// and is not saved.

#include "fixtop/entry.h"
#include "host/case_life.h"

namespace fixtop {

// Makes and drops the document's collection object; both null while there are no collections.
struct HCollectionCalls {
    void* (*make)(host::SimulationCase* simulation_case) = nullptr;
    void (*drop)(void* collection) = nullptr;
};

class HDocumentAgg {
 public:
    // A null case is the active one.
    explicit HDocumentAgg(host::SimulationCase* simulation_case, HCollectionCalls calls = {});
    HDocumentAgg(const HDocumentAgg&) = delete;
    HDocumentAgg& operator=(const HDocumentAgg&) = delete;
    ~HDocumentAgg();

    // Of this case, which is there; null is the active one.
    bool IsOf(host::SimulationCase* simulation_case) const;

    // Name part of the document's file; NULL without a case.
    void DocumentName(FIValue& out) const;
    void ApplicationName(FIValue& out) const;
    // The host's text of the session; NULL without a session.
    void SessionText(FIValue& out) const;
    // The document's one collection object, made at the first call; null when there are none.
    void* CreateCollection();
    void DropCollection();
    bool Save();
    bool SaveAs(const char* path);
    // The document keeps no history: both answer an error record.
    void ReadHistory(FIErrorRecord& error) const;
    void ClearHistory(FIErrorRecord& error) const;

 private:
    const Ref<CaseLife> life_;
    HCollectionCalls calls_;
    void* collection_ = nullptr;
};

}  // namespace fixtop
