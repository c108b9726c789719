// SPDX-License-Identifier: Apache-2.0
#pragma once

// Reference: a durable handle on a node. It follows its object through changes of the case, and
// says so when the object is gone.

#include <memory>
#include <optional>
#include <string>

#include "fixtop/client/node.h"
#include "fixtop/reference.h"

namespace fixtop::client {

class Reference {
 public:
    explicit Reference(const Node& node);

    // The object is there, as far as is known now.
    bool IsLive() const;
    // Why it is not: "Node deleted" or "Node invalid"; empty while it is there.
    std::string WhyGone() const;
    // The last known path; empty when it is gone.
    std::string Path() const;
    // The node as it is now; throws Gone.
    Node Get() const;
    // Throws Gone.
    FIValue Attribute(const std::string& name) const;
    Reading Read(const std::string& unit = "") const { return Get().Read(unit); }

 private:
    std::shared_ptr<CaseState> case_;
    Ref<FIReferenceBase> reference_;
};

}  // namespace fixtop::client
