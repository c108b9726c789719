// SPDX-License-Identifier: Apache-2.0
// Selection: what has become of its items on a case. An item that is not found may stand elsewhere,
// or be called otherwise: nodes below which the rest of its path leads on are named.

#include <algorithm>
#include <map>
#include <set>

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

// An item that was not found.
struct Missing {
    ItemState* state;
    std::string step;  // of its path, which is not there
    std::string rest;  // what follows it
};

void ProposeChild(const Missing& missing, const Child& child, const std::string& parent) {
    std::vector<std::string>& candidates = missing.state->candidates;
    if (candidates.size() >= kMostCandidates) return;
    if (!missing.rest.empty() && !child.node.Find(missing.rest)) return;
    const std::string path = JoinPath(JoinPath(parent, child.step), missing.rest);
    if (std::find(candidates.begin(), candidates.end(), path) == candidates.end()) {
        candidates.push_back(path);
    }
}

// What is called much the same in the list where a step is missing. Items of one list follow one
// another, most of them with the same step missing.
class NearSteps {
 public:
    void Propose(const Missing& missing, const Node& list, const std::string& path) {
        if (!is_read_ || path != path_) Read(list, path);
        const auto [near, is_new] = near_.try_emplace(missing.step);
        if (is_new) near->second = NearNames(missing.step, steps_);
        for (const std::string& step : near->second) {
            ProposeChild(missing, children_.at(step), path);
        }
    }

 private:
    void Read(const Node& list, const std::string& path) {
        steps_.clear();
        children_.clear();
        near_.clear();
        list.ForEachChild([&](const Child& child) {
            steps_.push_back(child.step);
            children_.emplace(child.step, child);
            return true;
        });
        path_ = path;
        is_read_ = true;
    }

    bool is_read_ = false;
    std::string path_;
    std::vector<std::string> steps_;
    std::map<std::string, Child> children_;
    std::map<std::string, std::vector<std::string>> near_;
};

// How far the path leads, and what is missing from there.
Missing FollowPath(const Node& root, const Steps& steps, ItemState& state, NearSteps& near) {
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
    // Another is called so by now.
    if (missing.step.empty()) state.candidates.push_back(path);
    if (!missing.step.empty()) near.Propose(missing, at, path);
    return missing;
}

// The names that several nodes of a list have: they lead to the first of those, whichever it is.
class RepeatedNames {
 public:
    bool IsOnTheWayTo(FICollectionIteratorBase& item) {
        const auto node = Ref<FIReferenceBase>::Adopt(item.GetNode());
        if (!node) return false;
        const Steps steps = StepsOf(item);
        const auto at = Ref<FIIteratorBase>::Adopt(Given(node->GetIterator()->Copy()));
        while (at->Depth() > static_cast<int>(steps.size())) at->Up();
        std::string list;
        for (const std::string& step : steps) list = JoinPath(list, step);
        for (auto step = steps.rbegin(); step != steps.rend() && at->Up(); ++step) {
            list.resize(list.size() - std::min(list.size(), step->size() + 1));
            if (Of(list, *at).contains(*step)) return true;
        }
        return false;
    }

 private:
    const std::set<std::string>& Of(const std::string& list, FIIteratorBase& node) {
        const auto [found, is_new] = lists_.try_emplace(list);
        if (is_new) Read(node, found->second);
        return found->second;
    }
    static void Read(FIIteratorBase& node, std::set<std::string>& repeated) {
        std::set<std::string> names;
        FIValue name, written;
        const auto at = Ref<FIIteratorBase>::Adopt(Given(node.Copy()));
        for (bool on = at->DownFirst(); on; on = at->Next()) {
            at->GetName(name);
            if (names.insert(name.ToText()).second) continue;
            FixtopWriteKey(name, written);
            repeated.insert(written.ToText());
        }
    }

    std::map<std::string, std::set<std::string>> lists_;
};

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
            for (auto each = first; each != last; ++each) ProposeChild(*each->second, child, path);
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
    NearSteps near;
    RepeatedNames repeated;
    std::size_t index = 0;
    for (const auto at = FirstOf(ByPresentNames(*collection_)); at->IsValid();
         at->Next(), ++index) {
        ItemState& state = states[index];
        state.path = PathOf(*at);
        state.kind = KindOf(WayOf(*at));
        state.lacks_unit = LacksUnit(*at);
        if (!root_) continue;
        if (state.kind == ItemState::Kind::kSame && repeated.IsOnTheWayTo(*at)) {
            state.kind = ItemState::Kind::kByPlace;
        }
        if (state.kind != ItemState::Kind::kGone) continue;
        missing.push_back(FollowPath(*root_, StepsOf(*at), state, near));
    }
    if (!missing.empty()) Search(missing).Run(*root_);
    for (ItemState& state : states) {
        if (!state.candidates.empty()) state.kind = ItemState::Kind::kMoved;
    }
    return states;
}

}  // namespace fixtop::client
