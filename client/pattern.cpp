// SPDX-License-Identifier: Apache-2.0
#include "fixtop/client/pattern.h"

#include "case_state.h"
#include "fixtop/client/near_names.h"
#include "visit.h"

namespace fixtop::client {

namespace {

// What may stand in the parentheses of a step: the keys of the nodes that it may mean and, where
// they end the path, the attributes of the one on which it stands.
std::vector<std::string> KeysAndAttributes(const Node& parent, const FixtopPathEnd& end) {
    std::vector<std::string> texts;
    const Pattern step(end.step.ToText());
    step.ForEach(parent, [&](const Place& place) {
        if (!(place.node == parent)) texts.push_back(place.node.Key());
        return true;
    });
    const auto first = step.First(parent);
    if (first && (!end.moreFollows || first->node.Key().empty())) {
        for (const auto& attribute : first->node.Attributes()) texts.push_back(attribute.first);
    }
    // A key that is there may be one that the filters pass over.
    std::erase(texts, end.parentheses.ToText());
    return texts;
}

// Outside of quotes.
bool HasChoice(const std::string& expression) {
    bool quoted = false;
    for (const char c : expression) {
        if (c == '"') quoted = !quoted;
        if (!quoted && (c == '*' || c == '[')) return true;
    }
    return false;
}

std::string Canonical(const std::string& expression) {
    FIValue steps;
    FIValue error;
    FixtopDescribePath(FIValue(expression.c_str()), steps, error);
    return steps.ToText();
}

std::vector<std::string> NearParentheses(const Node& parent, const FixtopPathEnd& end) {
    std::vector<std::string> steps;
    for (const std::string& text :
         NearNames(end.parentheses.ToText(), KeysAndAttributes(parent, end))) {
        steps.push_back(end.step.ToText() + '(' + WrittenKey(text) + ')');
    }
    return steps;
}

std::vector<std::string> NearSteps(const Node& parent, const FixtopPathEnd& end) {
    std::vector<std::string> names;
    parent.ForEachChild([&](const Child& child) {
        names.push_back(child.name);
        return true;
    });
    std::vector<std::string> steps;
    for (const std::string& name : NearNames(end.name.ToText(), names)) {
        steps.push_back(WrittenName(name));
    }
    return steps;
}

void Show(decltype(FixtopMatchPath)& match_path, const FixtopPath& path, const Node& from,
          const Pattern::PlaceVisitor& visit) {
    Visitor<FixtopMatch> visitor([&](const FixtopMatch& match) {
        return visit({Node(from.OpenCase(), CopyOf(*match.node)),
                      match.attribute ? match.attribute : "", match.path});
    });
    match_path(&path, &from.Iterator(), visitor.Call(), &visitor);
    visitor.Rethrow();
}

}  // namespace

Pattern::Pattern(std::string expression) : text_(std::move(expression)) {
    FIValue error;
    FixtopPath* path = FixtopPreparePath(FIValue(text_.c_str()), error);
    if (!path) throw PathError(text_, error.ToText());
    path_ = std::shared_ptr<const FixtopPath>(
        path, [](const FixtopPath* used) { FixtopFreePath(const_cast<FixtopPath*>(used)); });
}

bool Pattern::IsSame(const Pattern& other) const {
    return Canonical(text_) == Canonical(other.text_);
}

std::optional<Place> Pattern::First(const Node& from) const {
    Place place{from, "", ""};
    FIValue attribute;
    if (!FixtopWalkPath(path_.get(), &place.node.Iterator(), attribute)) return std::nullopt;
    place.attribute = attribute.ToText();
    return place;
}

void Pattern::ForEach(const Node& from, const PlaceVisitor& visit) const {
    Show(FixtopMatchPath, *path_, from, visit);
}

void Pattern::ForEachBelow(const Node& from, const PlaceVisitor& visit) const {
    Show(FixtopMatchPathBelow, *path_, from, visit);
}

std::vector<Place> Pattern::All(const Node& from) const {
    std::vector<Place> all;
    ForEach(from, [&](const Place& place) {
        all.push_back(place);
        return true;
    });
    return all;
}

bool Pattern::MayMeanMore(const Node& from, const Node& found) const {
    if (HasChoice(text_)) return true;
    const int top = from.Iterator().Depth();
    for (std::optional<Node> at = found; at && at->Iterator().Depth() > top; at = at->Parent()) {
        const std::string key = at->Key();
        if (key.empty()) continue;
        if (text_.find('(' + WrittenKey(key) + ')') == std::string::npos) return true;
    }
    return false;
}

NotFound Pattern::WhyMissing(const Node& from) const {
    FixtopPathEnd end;
    const Node parent(
        from.OpenCase(),
        Ref<FIIteratorBase>::Adopt(Given(FixtopEndOfPath(path_.get(), &from.Iterator(), end))));
    return {text_, end.found.ToText(),
            end.parentheses.IsNull() ? NearSteps(parent, end) : NearParentheses(parent, end)};
}

}  // namespace fixtop::client
