// SPDX-License-Identifier: Apache-2.0
#pragma once

// HSpecFill: what the host filled in as the specification of one object, until the last node that
// shows it goes, or the case does. HSpecView: the one that a node shows; it is filled when it is
// first wanted, and anew when the structure of a case has changed since.

#include "fixtop/entry.h"
#include "fixtop/host/specification.h"
#include "host/host_object.h"
#include "host/node_above.h"

namespace fixtop {

class HSpecFill final : private Liveness::Watcher {
 public:
    // Null when the object has nothing to show.
    static Ref<HSpecFill> Make(const HostObject<host::Viewable>& object,
                               const HovexOptions& options);

    int AddRef() { return ++references_; }
    int Release();

    const host::CSpecInfo* Info() const { return info_; }
    const HostObject<host::Viewable>& Object() const { return object_; }
    bool IsGone() const { return !info_ || object_.IsGone(); }
    // The objects that it points at are those that are there.
    bool IsCurrent() const { return object_.Life()->IsCurrent(revision_); }

 private:
    HSpecFill(const HostObject<host::Viewable>& object, host::CSpecInfo* info);
    ~HSpecFill() override;

    // Liveness::Watcher. The host that made the info takes it back while it is there.
    void OnEnd() override { Drop(); }
    void OnChange() override {}
    void OnForgotten() override {}
    void Drop();

    HostObject<host::Viewable> object_;
    host::CSpecInfo* info_;
    std::uint64_t revision_;
    int references_ = 0;
};

class HSpecView {
 public:
    HSpecView() = default;
    HSpecView(const HSpecView&) = delete;
    HSpecView& operator=(const HSpecView&) = delete;

    // False when there is no object, or it has nothing to show; asked again at the next call then.
    bool Fill(const HostObject<host::Viewable>& object, const HovexOptions& options);
    // The counted context over the elements of a filled view, which the node above holds.
    FIContext* MakeContext(const NodeAbove& above) const;

 private:
    Ref<HSpecFill> fill_;
};

}  // namespace fixtop
