// SPDX-License-Identifier: Apache-2.0
#pragma once

// NodeAbove: what a list of nodes takes over from the node that it lies below.

#include "fixtop/entry.h"
#include "fixtop/ref.h"
#include "host/hovex_options.h"

namespace fixtop {

class NodeAbove {
 public:
    // The options are a part of `entry`, which is kept alive for them; without an entry they
    // outlive the list. Both may be null. `attachments`: they are followed.
    NodeAbove(const HovexOptions* options, bool attachments, FIEntry* entry)
        : options_(options), entry_(Ref<FIEntry>::Share(entry)), attachments_(attachments) {}

    const HovexOptions* Options() const { return options_; }
    void SetOptions(const HovexOptions* options) { options_ = options; }
    bool FollowsAttachments() const { return attachments_; }
    void FollowAttachments(bool follow) { attachments_ = follow; }
    FIEntry* Entry() const { return entry_.Get(); }

 private:
    const HovexOptions* options_;
    Ref<FIEntry> entry_;
    bool attachments_;
};

}  // namespace fixtop
