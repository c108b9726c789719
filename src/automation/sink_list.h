// SPDX-License-Identifier: Apache-2.0
#pragma once

// SinkList: the sinks of a collection, in the order of their coming.

#include <vector>

#include "fixtop/automation/sink.h"
#include "fixtop/ref.h"

namespace fixtop {

class SinkList {
 public:
    // Holds the sink; the cookie is one that no sink of this list had before.
    std::uint32_t Add(IQSISink* sink);
    // Takes the sink out; null when nobody has the cookie.
    Ref<IQSISink> Take(std::uint32_t cookie);
    bool IsEmpty() const { return rows_.empty(); }
    // Calls each sink that stands here now, unless it leaves before its turn. They may come and go
    // meanwhile.
    void Tell(const Variant& detail);

 private:
    struct Row {
        std::uint32_t cookie;
        Ref<IQSISink> sink;
    };
    using Rows = std::vector<Row>;
    // The first with this cookie or a later one; cookies only grow.
    Rows::iterator From(std::uint32_t cookie);

    Rows rows_;
    std::uint32_t last_cookie_ = 0;
};

}  // namespace fixtop
