#include <cstdlib>

#include "case_session.h"
#include "words/makers.h"

namespace {

// Follows every match of every step, where a walk takes the first.
class Search {
 public:
    using Found = std::function<void(FIIteratorBase& node, const std::string& path)>;

    Search(std::vector<StepText> steps, Found found)
        : steps_(std::move(steps)), found_(std::move(found)) {}

    void From(FIIteratorBase& node, const std::string& path) { Follow(node, path, 0); }

 private:
    static bool Passes(FIIteratorBase& node, const StepText& step) {
        return step.filters.empty() || CopyOf(node)->SeekPath(FIValue(step.filters.c_str()));
    }
    // The match that a count asks for, from 0; below 0 for all of them. A variable has no value
    // here.
    static int Wanted(const StepText& step) {
        return step.count && step.count->front() != '%' ? std::atoi(step.count->c_str()) : -1;
    }

    void Follow(FIIteratorBase& node, const std::string& path, std::size_t level) {
        if (level == steps_.size()) return found_(node, path);
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

    std::vector<StepText> steps_;
    Found found_;
};

class Find final : public Word {
 public:
    void Declare(CLI::App& app) override {
        AddText(app, "PATTERN", pattern_, "Path with wildcards and filters")->required();
        AddJson(app, json_);
    }

    ExitCode Run(Surroundings& around) override {
        FIValue steps;
        FIValue error;
        if (!FixtopDescribePath(FIValue(pattern_.c_str()), steps, error)) {
            around.out.Note(error.ToText());
            return ExitCode::kFailed;
        }
        if (SearchFrom(around.session->Here(), around.out) > 0) return ExitCode::kOk;
        if (around.session->Here().Depth() > 0 &&
            SearchFrom(*around.session->Top(), around.out) > 0) {
            return ExitCode::kOk;
        }
        around.out.Note("nothing matches: " + pattern_);
        return ExitCode::kFailed;
    }

 private:
    int SearchFrom(FIIteratorBase& start, Output& out) const {
        int found = 0;
        const std::vector<StepText> steps = SplitPath(pattern_);
        const std::string& attribute = steps.back().attribute;
        Search search(steps, [&](FIIteratorBase& node, const std::string& path) {
            if (!attribute.empty() && AttributeOf(node, attribute.c_str()).IsNull()) return;
            ++found;
            const std::string full =
                attribute.empty() ? path : path + '(' + QuotedName(attribute) + ')';
            out.Line(json_ ? Record(node, full) : full);
        });
        search.From(start, FullPath(start));
        return found;
    }
    static std::string Record(FIIteratorBase& node, const std::string& path) {
        Json record;
        record["path"] = path;
        record["name"] = NameOf(node);
        record["type"] = ToJson(AttributeOf(node, "type"));
        return ToLine(record);
    }

    std::string pattern_;
    bool json_ = false;
};

}  // namespace

std::unique_ptr<Word> MakeFind() {
    return std::make_unique<Find>();
}
