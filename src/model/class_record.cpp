// SPDX-License-Identifier: Apache-2.0
#include "model/class_record.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "model/class_library.h"

namespace fixtop {

CCDMAttribute* CCDMClass::GetOrCreateAttribute(const std::string& attribute) {
    auto& record = attributeIndex[attribute];
    if (!record) record = std::make_unique<CCDMAttribute>(attribute);
    return record.get();
}

CCDMAttribute* CCDMClass::FindAttribute(const std::string& attribute) const {
    const auto found = attributeIndex.find(attribute);
    return found == attributeIndex.end() ? nullptr : found->second.get();
}

// Asked on each choice of a translator: a usual family of classes needs no memory of the heap.
int CCDMClass::DistanceToClass(std::string_view ancestor) const {
    if (superclasses.empty()) return 0;
    std::array<std::byte, 4096> buffer;
    std::pmr::monotonic_buffer_resource memory(buffer.data(), buffer.size());
    Seen seen(&memory);
    seen.reserve(buffer.size() / sizeof seen.front() / 2);
    return Distance(ancestor, 1, seen);
}

int CCDMClass::Distance(std::string_view ancestor, int depth, Seen& seen) const {
    // A class that was searched in vain stays without result, however it is reached; this also ends
    // a circle of superclasses.
    if (std::find(seen.begin(), seen.end(), this) != seen.end()) return 0;
    seen.push_back(this);
    for (const std::string& superclass_name : superclasses) {
        if (superclass_name == ancestor) return depth;
        const CCDMClass* superclass = library->FindClass(superclass_name);
        if (superclass == nullptr) continue;
        const int distance = superclass->Distance(ancestor, depth + 1, seen);
        if (distance != 0) return distance;
    }
    return 0;
}

}  // namespace fixtop
