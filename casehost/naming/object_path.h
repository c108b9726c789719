// SPDX-License-Identifier: Apache-2.0
#pragma once

// Paths by which objects of a case name each other: "Feed", "T-100/Inner Feed" from the flowsheet
// of the object that names, "/Feed" from the main one, "/@utilities/Envelope", "/@tables/Day",
// "/@reactions/Rxn-1". '/', '~' and a leading '@' of a name are written "~1", "~0" and "~2".

#include <string>
#include <string_view>

namespace fixtop::casehost::path {

inline constexpr char kUtilities[] = "@utilities";
inline constexpr char kTables[] = "@tables";
inline constexpr char kReactions[] = "@reactions";

std::string Escape(const std::string& name);
std::string Unescape(std::string_view text);
// Cuts the first step off.
std::string_view TakeStep(std::string_view& path);

// World: `List` and `Item` are pointers; Find(List, name), Inner(Item) a list or null, Main(),
// Special(word) a list or null.
template <class World>
typename World::Item Descend(const World& world, typename World::List list, std::string_view path) {
    while (list) {
        const auto item = world.Find(list, Unescape(TakeStep(path)));
        if (!item || path.empty()) return item;
        list = world.Inner(item);
    }
    return nullptr;
}

// The object that `path` names as seen from `start`; null when there is none.
template <class World>
typename World::Item FindObject(const World& world, typename World::List start,
                                std::string_view path) {
    if (path.empty()) return nullptr;
    std::string_view rest = path;
    if (path[0] == '/') {
        start = world.Main();
        rest.remove_prefix(1);
        std::string_view behind = rest;
        if (const auto list = world.Special(TakeStep(behind))) return Descend(world, list, behind);
    }
    if (const auto found = Descend(world, start, rest)) return found;
    // Names as other programs write them, not escaped.
    if (const auto found = world.Find(start, std::string(path))) return found;
    return start == world.Main() ? nullptr : Descend(world, world.Main(), rest);
}

}  // namespace fixtop::casehost::path
