// SPDX-License-Identifier: Apache-2.0
#include "framework/path/path_match.h"

#include "framework/path/child_steps.h"
#include "framework/path/path_names.h"

namespace fixtop {

namespace {

Ref<FIIterator> CopyOf(FIIterator& node) {
    return Ref<FIIterator>::Adopt(node.Copy());
}

class Matches {
 public:
    Matches(const PreparedPath& path, const MatchVisitor& visit)
        : path_(path), steps_(path.Steps()), visit_(visit) {}

    // `above` is what the paths of the matches begin with.
    int From(FIIterator& start, const std::string& above) {
        Follow(start, above, 0);
        return count_;
    }

 private:
    bool IsLast(std::size_t level) const { return level + 1 == steps_.size(); }

    // Parentheses before another step hold a key.
    bool Passes(FIIterator& node, std::size_t level) const {
        const PathStep& step = *steps_[level];
        const bool has_key = !IsLast(level) && !step.attribute.IsNull();
        if (has_key && KeyOf(node) != step.attribute.ToText()) return false;
        return node.Filter(step);
    }

    // False when the visitor has seen enough.
    bool Follow(FIIterator& node, const std::string& path, std::size_t level) {
        if (level == steps_.size()) return Visit(node, path);
        const PathStep& step = *steps_[level];
        FIValue name;
        step.ResolveName(node, name);
        if (step.StaysInPlace(name, step.ResolveCount(node))) {
            return !Passes(node, level) || Follow(node, path, level + 1);
        }
        return FollowChildren(node, path, level, name);
    }
    bool FollowChildren(FIIterator& node, const std::string& path, std::size_t level,
                        const FIValue& name) {
        const bool any = IsAnyName(name);
        const int wanted = steps_[level]->ResolveCount(node);
        bool is_shown = any;
        bool goes_on = true;
        int matches = 0;
        ForEachChild(node, [&](FIIterator& child, const ChildStep& step) {
            if (!any && step.name != name.CStr() && !child.HasName(name)) return true;
            is_shown = true;
            if (!Passes(child, level)) return true;
            const int match = matches++;
            if (wanted >= 0 && match != wanted) return true;
            goes_on = Follow(child, JoinPath(path, step.step), level + 1);
            return goes_on && match != wanted;
        });
        return is_shown ? goes_on : FollowUnshown(node, path, level);
    }
    bool FollowUnshown(FIIterator& node, const std::string& path, std::size_t level) {
        const std::string text = path_.Text(*steps_[level]);
        const Ref<FIIterator> child = CopyOf(node);
        if (!child->SeekPath(FIValue(text.c_str()))) return true;
        return Follow(*child, JoinPath(path, text), level + 1);
    }
    bool Visit(FIIterator& node, const std::string& path) {
        PathMatch match{node, path, steps_.back()->attribute};
        if (!match.attribute.IsNull() && match.attribute.ToText() == KeyOf(node)) {
            match.attribute.Clear();
        } else if (!match.attribute.IsNull()) {
            FIValue value;
            node.GetAttribute(match.attribute, value);
            if (value.IsNull()) return true;
        }
        ++count_;
        return visit_(match);
    }

    const PreparedPath& path_;
    const std::vector<const PathStep*>& steps_;
    const MatchVisitor& visit_;
    int count_ = 0;
};

// Goes where the step leads with its parentheses. An attribute ends a path, so before another step
// it is only one where nothing has keys.
bool Enter(const PreparedPath& path, const PathStep& step, bool goes_on, FIIterator& node) {
    const std::string wanted = step.attribute.ToText();
    const std::string text = path.BareText(step) + '(' + WrittenKey(wanted) + ')';
    if (!node.SeekPath(FIValue(text.c_str()))) return false;
    const std::string key = KeyOf(node);
    return !goes_on || key.empty() || key == wanted;
}

}  // namespace

int ForEachMatch(FIIterator& start, const PreparedPath& path, const MatchVisitor& visit) {
    return Matches(path, visit).From(start, PathTo(start));
}

int ForEachMatchBelow(FIIterator& start, const PreparedPath& path, const MatchVisitor& visit) {
    return Matches(path, visit).From(start, "");
}

PathEnd EndOf(FIIterator& start, const PreparedPath& path) {
    PathEnd end{CopyOf(start), "", "", "", {}};
    for (const PathStep* step : path.Steps()) {
        const Ref<FIIterator> next = CopyOf(*end.node);
        end.name = step->name;
        end.step = path.BareText(*step);
        end.goes_on = step != path.Steps().back();
        if (!next->SeekPath(FIValue(end.step.c_str()))) return end;
        if (!step->attribute.IsNull()) {
            const Ref<FIIterator> entered = CopyOf(*end.node);
            if (!Enter(path, *step, end.goes_on, *entered)) {
                end.parentheses = step->attribute;
                end.found = JoinPath(end.found, end.step);
                return end;
            }
            end.node = entered;
        } else {
            end.node = next;
        }
        end.found = JoinPath(end.found, path.Text(*step));
    }
    // What is left of it does not parse.
    end.name.clear();
    end.step.clear();
    return end;
}

}  // namespace fixtop
