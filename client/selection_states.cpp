// SPDX-License-Identifier: Apache-2.0
// Selection: what has become of its items on a case. An item that is not found may stand elsewhere,
// or be called otherwise: nodes below which the rest of its path leads on are named.

#include <algorithm>
#include <map>

#include "case_state.h"
#include "fixtop/client/near_names.h"
#include "fixtop/client/pattern.h"
#include "fixtop/client/selection.h"
#include "selection_items.h"

namespace fixtop::client {

namespace {

// A flowsheet in a flowsheet adds three levels.
constexpr int kDeepest = 16;
constexpr std::size_t kMostCandidates = 5;

using Steps = std::vector<std::string>;

Steps StepsOf(FICollectionIteratorBase& item) {
    Steps steps;
    FIValue step;
    for (int level = 0; level < item.Depth(); ++level) {
        item.GetStep(level, step);
        steps.push_back(step.ToText());
    }
    return steps;
}

// An item that was not found.
struct Missing {
    ItemState* state;
    std::string step;  // of its path, which is not there
    std::string rest;  // what follows it
};

void Propose(const Missing& missing, const Child& child, const std::string& parent) {
    std::vector<std::string>& candidates = missing.state->candidates;
    if (candidates.size() >= kMostCandidates) return;
    if (!missing.rest.empty() && !child.node.Find(missing.rest)) return;
    const std::string path = JoinPath(JoinPath(parent, child.step), missing.rest);
    if (std::find(candidates.begin(), candidates.end(), path) == candidates.end()) {
        candidates.push_back(path);
    }
}

// What is called much the same in the list where the step is missing.
void ProposeNear(const Missing& missing, const Node& list, const std::string& path) {
    std::map<std::string, Child> children;
    std::vector<std::string> steps;
    list.ForEachChild([&](const Child& child) {
        steps.push_back(child.step);
        children.emplace(child.step, child);
        return true;
    });
    for (const std::string& step : NearNames(missing.step, steps)) {
        Propose(missing, children.at(step), path);
    }
}

// How far the path leads, and what is missing from there.
Missing FollowPath(const Node& root, const Steps& steps, ItemState& state) {
    Node at = root;
    std::string path;
    std::size_t level = 0;
    for (; level < steps.size(); ++level) {
        auto next = at.Find(steps[level]);
        if (!next) break;
        at = std::move(next->node);
        path = JoinPath(path, steps[level]);
    }
    Missing missing{&state, level < steps.size() ? steps[level] : "", ""};
    for (std::size_t i = level + 1; i < steps.size(); ++i) {
        missing.rest = JoinPath(missing.rest, steps[i]);
    }
    if (!missing.step.empty()) ProposeNear(missing, at, path);
    return missing;
}

// Goes through all lists of the tree for children with the steps that are missing somewhere.
class Search {
 public:
    explicit Search(const std::vector<Missing>& missing) {
        for (const Missing& each : missing) wanted_.emplace(each.step, &each);
    }
    void Run(const Node& root) {
        auto start = Ref<FIIteratorBase>::Adopt(Given(root.Iterator().Copy()));
        start->SetVarText("skipattachments", "1");
        Visit(Node(root.OpenCase(), std::move(start)), "", 0);
    }

 private:
    void Visit(const Node& node, const std::string& path, int depth) {
        if (depth > kDeepest) return;
        node.ForEachChild([&](const Child& child) {
            const auto [first, last] = wanted_.equal_range(child.step);
            for (auto each = first; each != last; ++each) Propose(*each->second, child, path);
            if (!child.node.IsVariable() && !child.node.IsArray()) {
                Visit(child.node, JoinPath(path, child.step), depth + 1);
            }
            return true;
        });
    }

    std::multimap<std::string, const Missing*> wanted_;
};

ItemState::Kind KindOf(int way) {
    switch (way) {
        case FICollectionIteratorBase::kByNames:
            return ItemState::Kind::kSame;
        case FICollectionIteratorBase::kByPlaces:
            return ItemState::Kind::kByPlace;
        default:
            return ItemState::Kind::kGone;
    }
}

}  // namespace

std::vector<ItemState> Selection::States() const {
    std::vector<ItemState> states(Size());
    std::vector<Missing> missing;
    std::size_t index = 0;
    for (const auto at = FirstOf(ByPresentNames(*collection_)); at->IsValid();
         at->Next(), ++index) {
        ItemState& state = states[index];
        state.path = PathOf(*at);
        state.kind = KindOf(WayOf(*at));
        if (state.kind != ItemState::Kind::kGone || !root_) continue;
        missing.push_back(FollowPath(*root_, StepsOf(*at), state));
    }
    if (!missing.empty()) Search(missing).Run(*root_);
    for (ItemState& state : states) {
        if (!state.candidates.empty()) state.kind = ItemState::Kind::kMoved;
    }
    return states;
}

}  // namespace fixtop::client
