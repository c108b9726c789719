// SPDX-License-Identifier: Apache-2.0
#include "model/enumeration.h"

#include <algorithm>

namespace fixtop {

const std::string* CCDMEnumMap::NeutralName(const std::string& application) const {
    const auto found = entries.find(application);
    return found == entries.end() ? nullptr : &found->second;
}

const std::string* CCDMEnumMap::ApplicationName(const std::string& neutral) const {
    const auto found = std::find_if(entries.begin(), entries.end(),
                                    [&](const auto& entry) { return entry.second == neutral; });
    return found == entries.end() ? nullptr : &found->first;
}

}  // namespace fixtop
