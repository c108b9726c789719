// SPDX-License-Identifier: Apache-2.0
#include "automation/sink_list.h"

#include <algorithm>

#include "diagnostics/memory_guard.h"

namespace fixtop {

std::uint32_t SinkList::Add(IQSISink* sink) {
    rows_.push_back({last_cookie_ + 1, Ref<IQSISink>::Share(sink)});
    return ++last_cookie_;
}

SinkList::Rows::iterator SinkList::From(std::uint32_t cookie) {
    return std::ranges::lower_bound(rows_, cookie, {}, &Row::cookie);
}

Ref<IQSISink> SinkList::Take(std::uint32_t cookie) {
    const auto row = From(cookie);
    if (row == rows_.end() || row->cookie != cookie) return {};
    Ref<IQSISink> leaving = std::move(row->sink);
    rows_.erase(row);
    return leaving;
}

void SinkList::Tell(const Variant& detail) {
    const std::uint32_t last = last_cookie_;
    std::uint32_t told = 0;
    for (auto row = From(1); row != rows_.end() && row->cookie <= last; row = From(told + 1)) {
        told = row->cookie;
        memory::Outside([&] {
            const Ref<IQSISink> held = row->sink;
            held->Invoke(IQSISink::kChanged, detail);
        });
    }
}

}  // namespace fixtop
