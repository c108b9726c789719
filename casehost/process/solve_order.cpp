#include "process/solve_order.h"

#include <algorithm>

#include "casehost/unit_op_names.h"

namespace casehost::process {
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

}  // namespace

std::vector<SolveGroup> FindSolveOrder(const Flowsheet& sheet) {
    const std::size_t count = sheet.units.size();
    Adjacency next(count), previous(count);
    for (const StreamNode& stream : sheet.streams) {
        if (stream.maker == kNone || stream.taker == kNone) continue;
        next[stream.maker].push_back(stream.taker);
        previous[stream.taker].push_back(stream.maker);
    }
    std::vector<int> leaving;
    std::vector<bool> open(count, true);
    // From the last unit to the first, so that independent parts keep the order of the case.
    for (std::size_t i = count; i-- > 0;) {
        AppendPostOrder(next, static_cast<int>(i), open, leaving);
    }
    std::vector<SolveGroup> groups;
    std::vector<int> group_of(count, kNone);
    open.assign(count, true);
    for (std::size_t i = count; i-- > 0;) {
        std::vector<int> members;
        AppendPostOrder(previous, leaving[i], open, members);
        if (members.empty()) continue;
        for (int unit : members) group_of[unit] = static_cast<int>(groups.size());
        groups.push_back({std::move(members), {}});
    }
    std::vector<int> place(count, 0);
    std::vector<bool> inside(count, false);
    for (SolveGroup& group : groups) {
        std::sort(group.units.begin(), group.units.end());
        int entry = *std::max_element(group.units.begin(), group.units.end(), [&](int a, int b) {
            return EntryRank(sheet, a, group_of) < EntryRank(sheet, b, group_of);
        });
        for (int unit : group.units) inside[unit] = true;
        group.units.clear();
        AppendPostOrder(next, entry, inside, group.units);
        std::reverse(group.units.begin(), group.units.end());
        for (std::size_t i = 0; i < group.units.size(); ++i) {
            place[group.units[i]] = static_cast<int>(i);
        }
    }
    for (std::size_t i = 0; i < sheet.streams.size(); ++i) {
        const StreamNode& stream = sheet.streams[i];
        if (stream.maker == kNone || stream.taker == kNone) continue;
        if (group_of[stream.maker] != group_of[stream.taker]) continue;
        if (place[stream.maker] >= place[stream.taker]) {
            groups[group_of[stream.maker]].tears.push_back(static_cast<int>(i));
        }
    }
    return groups;
}

}  // namespace casehost::process
