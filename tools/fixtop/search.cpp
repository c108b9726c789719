#include "search.h"

#include <cstdlib>

namespace fixtop {

namespace {

class Search {
 public:
    Search(const std::string& pattern, const MatchVisitor& visit)
        : steps_(SplitPath(pattern)), visit_(visit) {}

    // Answers the count of matches.
    int From(FIIteratorBase& start) {
        matches_ = 0;
        Follow(start, FullPath(start), 0);
        return matches_;
    }

 private:
    static bool Passes(FIIteratorBase& node, const StepText& step) {
        if (!step.key.empty() && KeyOf(node) != step.key) return false;
        return step.filters.empty() || CopyOf(node)->SeekPath(FIValue(step.filters.c_str()));
    }
    // The match that a count asks for, from 0; below 0 for all. Variables have no value here.
    static int Wanted(const StepText& step) {
        return step.count && step.count->front() != '%' ? std::atoi(step.count->c_str()) : -1;
    }

    void Follow(FIIteratorBase& node, const std::string& path, std::size_t level) {
        if (level == steps_.size()) return Visit(node, path);
        const StepText& step = steps_[level];
        if (step.Stays()) {
            if (Passes(node, step)) Follow(node, path, level + 1);
            return;
        }
        const int wanted = Wanted(step);
        int matches = 0;
        bool named = false;
        ForEachChild(node, [&](FIIteratorBase& child, const ChildPlace& place) {
            if (!step.TakesAnyName() && place.name != step.name && NameOf(child) != step.name) {
                return true;
            }
            named = true;
            if (!Passes(child, step)) return true;
            const int match = matches++;
            if (wanted < 0 || match == wanted) {
                Follow(child, JoinPath(path, StepFor(place)), level + 1);
            }
            return match != wanted;
        });
        if (!named && !step.TakesAnyName()) FollowKey(node, path, level);
    }
    // Some lists find an element by a name that it does not show.
    void FollowKey(FIIteratorBase& node, const std::string& path, std::size_t level) {
        const NodeRef child = CopyOf(node);
        if (!child->SeekPath(FIValue(steps_[level].text.c_str()))) return;
        Follow(*child, JoinPath(path, steps_[level].text), level + 1);
    }
    void Visit(FIIteratorBase& node, const std::string& path) {
        std::string attribute = steps_.back().attribute;
        if (!attribute.empty() && attribute == KeyOf(node)) {
            attribute.clear();
        } else if (!attribute.empty() && AttributeOf(node, attribute.c_str()).IsNull()) {
            return;
        }
        ++matches_;
        visit_({node, path, attribute});
    }

    std::vector<StepText> steps_;
    const MatchVisitor& visit_;
    int matches_ = 0;
};

}  // namespace

std::string ForEachMatch(CaseSession& session, const std::string& pattern,
                         const MatchVisitor& visit) {
    if (std::string error = ParseError(pattern); !error.empty()) return error;
    Search search(pattern, visit);
    if (search.From(session.Here()) > 0) return "";
    if (session.Here().Depth() > 0 && search.From(*session.Top()) > 0) return "";
    return "nothing matches: " + OneLine(pattern);
}

}  // namespace fixtop
