// SPDX-License-Identifier: Apache-2.0
#include "mapping/nodes/class_way.h"

namespace fixtop {

ClassWay* ClassWay::Below(const CCDMAttribute& attribute, const CCDMClass& shown) {
    const std::pair step(&attribute, &shown);
    const auto found = below_.find(step);
    if (found != below_.end()) return found->second;
    if (all_.size() + 1 >= kMost) return nullptr;
    std::unique_ptr<ClassWay> way(new ClassWay(all_));
    all_.push_back(std::move(way));
    ClassWay* lent = all_.back().get();
    below_.emplace(step, lent);
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
