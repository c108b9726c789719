// SPDX-License-Identifier: Apache-2.0
#include "process/solve_order.h"

#include <algorithm>

#include "casehost/unit_op_names.h"

namespace fixtop::casehost::process {
namespace {

using Adjacency = std::vector<std::vector<int>>;

// Appends the units reached from `root` in the order in which the search leaves them. Only units
// marked `open` are entered; they lose the mark.
void AppendPostOrder(const Adjacency& next, int root, std::vector<bool>& open,
                     std::vector<int>& order) {
    if (!open[root]) return;
    struct Frame {
        int unit;
        std::size_t edge;
    };
    std::vector<Frame> stack{{root, 0}};
    open[root] = false;
    while (!stack.empty()) {
        Frame& frame = stack.back();
        if (frame.edge == next[frame.unit].size()) {
            order.push_back(frame.unit);
            stack.pop_back();
            continue;
        }
        int target = next[frame.unit][frame.edge++];
        if (!open[target]) continue;
        open[target] = false;
        stack.push_back({target, 0});
    }
}

bool FedFromOutside(const Flowsheet& sheet, int unit, const std::vector<int>& group_of) {
    const std::vector<int>& feeds = sheet.units[unit].feeds;
    return std::any_of(feeds.begin(), feeds.end(), [&](int stream) {
        int maker = sheet.streams[stream].maker;
        return maker == kNone || group_of[maker] != group_of[unit];
    });
}

int EntryRank(const Flowsheet& sheet, int unit, const std::vector<int>& group_of) {
    const UnitNode& node = sheet.units[unit];
    bool mixer = node.object && node.object->type == words::kMixer;
    return (FedFromOutside(sheet, unit, group_of) ? 2 : 0) + (mixer ? 1 : 0);
}

// Which units follow a unit, and which stand before it.
struct Links {
    Adjacency next;
    Adjacency previous;
};

Links LinksOf(const Flowsheet& sheet) {
    Links links{Adjacency(sheet.units.size()), Adjacency(sheet.units.size())};
    for (const StreamNode& stream : sheet.streams) {
        if (stream.maker == kNone || stream.taker == kNone) continue;
        links.next[stream.maker].push_back(stream.taker);
        links.previous[stream.taker].push_back(stream.maker);
    }
    return links;
}

// Each group after those that it depends on. The first search goes from the last unit to the first,
// so that independent parts keep the order of the case.
std::vector<SolveGroup> FindGroups(const Links& links) {
    const std::size_t count = links.next.size();
    std::vector<int> leaving;
    std::vector<bool> open(count, true);
    for (std::size_t i = count; i-- > 0;) {
        AppendPostOrder(links.next, static_cast<int>(i), open, leaving);
    }
    std::vector<SolveGroup> groups;
    open.assign(count, true);
    for (std::size_t i = count; i-- > 0;) {
        std::vector<int> members;
        AppendPostOrder(links.previous, leaving[i], open, members);
        if (!members.empty()) groups.push_back({std::move(members), {}});
    }
    return groups;
}

std::vector<int> GroupOfUnits(const std::vector<SolveGroup>& groups, std::size_t count) {
    std::vector<int> group_of(count, kNone);
    for (std::size_t i = 0; i < groups.size(); ++i) {
        for (int unit : groups[i].units) group_of[unit] = static_cast<int>(i);
    }
    return group_of;
}

// Puts the units of each group into the order of a pass that begins where the group is entered.
void OrderUnits(const Flowsheet& sheet, const Adjacency& next, const std::vector<int>& group_of,
                std::vector<SolveGroup>& groups) {
    std::vector<bool> inside(group_of.size(), false);
    for (SolveGroup& group : groups) {
        std::sort(group.units.begin(), group.units.end());
        int entry = *std::ranges::max_element(
            group.units, {}, [&](int unit) { return EntryRank(sheet, unit, group_of); });
        for (int unit : group.units) inside[unit] = true;
        group.units.clear();
        AppendPostOrder(next, entry, inside, group.units);
        std::reverse(group.units.begin(), group.units.end());
    }
}

// The streams within a group that lead back in the order of its pass.
void FindTears(const Flowsheet& sheet, const std::vector<int>& group_of,
               std::vector<SolveGroup>& groups) {
    std::vector<std::size_t> place(group_of.size(), 0);
    for (const SolveGroup& group : groups) {
        for (std::size_t i = 0; i < group.units.size(); ++i) place[group.units[i]] = i;
    }
    for (std::size_t i = 0; i < sheet.streams.size(); ++i) {
        const StreamNode& stream = sheet.streams[i];
        if (stream.maker == kNone || stream.taker == kNone) continue;
        if (group_of[stream.maker] != group_of[stream.taker]) continue;
        if (place[stream.maker] >= place[stream.taker]) {
            groups[group_of[stream.maker]].tears.push_back(static_cast<int>(i));
        }
    }
}

}  // namespace

std::vector<SolveGroup> FindSolveOrder(const Flowsheet& sheet) {
    const Links links = LinksOf(sheet);
    std::vector<SolveGroup> groups = FindGroups(links);
    const std::vector<int> group_of = GroupOfUnits(groups, sheet.units.size());
    OrderUnits(sheet, links.next, group_of, groups);
    FindTears(sheet, group_of, groups);
    return groups;
}

}  // namespace fixtop::casehost::process
