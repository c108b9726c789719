// SPDX-License-Identifier: Apache-2.0
#include "fixtop/client/watch.h"

#include <utility>

#include "fixtop/client/error.h"

namespace fixtop::client {

namespace {

// What a gone node says of itself is its last value.
FIValue ValueOf(const Reference& reference, const char* attribute) {
    try {
        return reference.Attribute(attribute);
    } catch (const Gone& gone) {
        return FIValue(gone.Text().c_str());
    }
}

bool IsSame(const FIValue& a, const FIValue& b) {
    return a.Kind() == b.Kind() && a.ToText() == b.ToText();
}

}  // namespace

void Watch::Add(const Node& node, std::string path) {
    const Reference reference(node);
    watched_.push_back({std::move(path), reference, ValueOf(reference, "value")});
}

std::vector<Change> Watch::Changes() {
    std::vector<Change> changes;
    for (Watched& watched : watched_) {
        const FIValue now = ValueOf(watched.reference, "value");
        if (IsSame(now, watched.value)) continue;
        changes.push_back({watched.path, std::exchange(watched.value, now), now,
                           ValueOf(watched.reference, "uom").ToText()});
    }
    return changes;
}

}  // namespace fixtop::client
