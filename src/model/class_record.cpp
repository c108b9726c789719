#include "model/class_record.h"

#include "model/class_library.h"

CCDMAttribute* CCDMClass::GetOrCreateAttribute(const std::string& attribute) {
    auto& record = attributeIndex[attribute];
    if (!record) record = std::make_unique<CCDMAttribute>(attribute);
    return record.get();
}

CCDMAttribute* CCDMClass::FindAttribute(const std::string& attribute) const {
    const auto found = attributeIndex.find(attribute);
    return found == attributeIndex.end() ? nullptr : found->second.get();
}

int CCDMClass::DistanceToClass(const std::string& ancestor) const {
    std::set<const CCDMClass*> seen;
    return Distance(ancestor, 1, seen);
}

int CCDMClass::Distance(const std::string& ancestor, int depth,
                        std::set<const CCDMClass*>& seen) const {
    // A class that was searched in vain stays without result, however it is reached; this also ends
    // a circle of superclasses.
    if (!seen.insert(this).second) return 0;
    for (const std::string& superclass_name : superclasses) {
        if (superclass_name == ancestor) return depth;
        const CCDMClass* superclass = library->FindClass(superclass_name);
        if (superclass == nullptr) continue;
        const int distance = superclass->Distance(ancestor, depth + 1, seen);
        if (distance != 0) return distance;
    }
    return 0;
}
