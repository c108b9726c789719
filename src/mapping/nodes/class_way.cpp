// SPDX-License-Identifier: Apache-2.0
#include "mapping/nodes/class_way.h"

namespace fixtop {

ClassWay* ClassWay::Below(const CCDMAttribute& attribute, const CCDMClass& shown) {
    const auto found = below_.find({&attribute, &shown});
    if (found != below_.end()) return found->second.get();
    if (*known_ >= kMost) return nullptr;
    std::unique_ptr<ClassWay> way(new ClassWay(known_));
    ClassWay* lent = way.get();
    below_.emplace(std::pair(&attribute, &shown), std::move(way));
    ++*known_;
    return lent;
}

const FacesChoice* ClassWay::Find(const Request& request) const {
    const auto found = choices_.find(request);
    return found == choices_.end() ? nullptr : &found->second;
}

void ClassWay::Keep(const Request& request, const FacesChoice& choice) {
    choices_.insert_or_assign(request, choice);
}

}  // namespace fixtop
