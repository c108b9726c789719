// SPDX-License-Identifier: Apache-2.0
#include "dispatch/own_names.h"

#include <deque>
#include <map>

namespace fixtop::hovex {

namespace {

// Beyond the ids of all tables, and of the system's, which are below 0.
constexpr DISPID kFirst = 0x10000;

struct Names {
    std::map<std::string, DISPID> ids;
    std::deque<std::string> names;
};

Names& TheNames() {
    static Names names;
    return names;
}

}  // namespace

DISPID IdOfOwnName(const std::string& name) {
    Names& known = TheNames();
    const auto next = static_cast<DISPID>(kFirst + known.names.size());
    const auto [place, is_new] = known.ids.emplace(name, next);
    if (is_new) known.names.push_back(name);
    return place->second;
}

const std::string* OwnNameOf(DISPID id) {
    const auto& names = TheNames().names;
    const bool is_known = id >= kFirst && static_cast<std::size_t>(id - kFirst) < names.size();
    return is_known ? &names[static_cast<std::size_t>(id - kFirst)] : nullptr;
}

}  // namespace fixtop::hovex
