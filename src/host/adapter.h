// SPDX-License-Identifier: Apache-2.0
#pragma once

// HostAdapter: all that the adapter keeps for the process, in one object. What belongs to one case
// stands in the record of that case (CaseLife).
//
// Threads: the one that runs the simulation. Never destroyed: handles may go while the process
// ends.

#include <cstdint>
#include <map>

#include "fixtop/entry.h"
#include "fixtop/host/services.h"

namespace fixtop {

class CaseLife;
class HEditBatch;
class SubscriberList;
struct ListIndexTable;

// The classes that the adapter looks up by name; null where no host is installed.
struct NamedTypes {
    const host::ObjectTypeInfo* stream = nullptr;
    const host::ObjectTypeInfo* unit_op = nullptr;
    const host::ObjectTypeInfo* correlation = nullptr;
};

class HostAdapter {
 public:
    using CaseRecords = std::map<host::SimulationCase*, CaseLife*>;
    // Sets the flag of a host top context; gets one reference to give up. False: not possible.
    using AttachCall = bool (*)(FIContext* context, bool follow);

    constexpr HostAdapter() = default;
    HostAdapter(const HostAdapter&) = delete;
    HostAdapter& operator=(const HostAdapter&) = delete;

    // ---- The installed host ----

    // Null until a host is installed.
    host::HostServices* Services() const { return services_; }
    // Puts a host in place of the present one, null takes that out; for whoever holds a handle the
    // cases of the present one end.
    void Replace(host::HostServices* services);
    // The same, and no case is told.
    void Install(host::HostServices* services);
    // A number that changes with every Install, for whoever keeps answers of a host.
    unsigned Installation() const { return installation_; }
    // The host gives its objects numbers and answers for them.
    bool TracksObjects() const { return tracks_objects_; }
    // Looked up once a host.
    const NamedTypes& Types() {
        if (!types_are_known_) LookTypesUp();
        return types_;
    }
    // All null where no host is installed.
    const host::ObjectTypeRecords& TypeRecords() const;

    // ---- Stores ----

    // The streams under composition edit.
    HEditBatch& EditBatch();
    // Whether stores wait for the solver to end; true at first.
    bool WaitsForSolve() const { return waits_for_solve_; }
    void SetWaitsForSolve(bool wait) { waits_for_solve_ = wait; }

    // ---- Handles and clients ----

    // The record of each case that somebody holds a handle on.
    CaseRecords& Cases();
    // Those of all tops.
    SubscriberList& Subscribers();
    // How "attachments" of a top reaches its context; null: it can't be set.
    AttachCall Attach() const { return attach_; }
    void SetAttachCall(AttachCall call) { attach_ = call; }
    // The indices over the host's long lists.
    ListIndexTable& ListIndices();

 private:
    struct Lists;
    // Made when first wanted.
    void MakeLists();
    Lists& TheLists();
    void LookTypesUp();

    host::HostServices* services_ = nullptr;
    unsigned installation_ = 1;
    bool tracks_objects_ = false;
    bool types_are_known_ = false;
    bool waits_for_solve_ = true;
    int replacing_ = 0;
    NamedTypes types_;
    AttachCall attach_ = nullptr;
    Lists* lists_ = nullptr;
};

extern HostAdapter g_adapter;

inline HostAdapter& TheAdapter() {
    return g_adapter;
}

// The object's own number; 0 when the installed host gives none that it answers for.
template <class Object>
std::uint64_t IdentityOf(const Object& object) {
    return TheAdapter().TracksObjects() ? object.Identity() : 0;
}

}  // namespace fixtop
