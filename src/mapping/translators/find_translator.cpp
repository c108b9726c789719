// SPDX-License-Identifier: Apache-2.0
#include "mapping/translators/find_translator.h"

#include <algorithm>
#include <string_view>

#include "diagnostics/module_log.h"
#include "fixtop/reference.h"
#include "model/class_record.h"
#include "xml/message_text.h"

namespace fixtop {

namespace {

// Scores: the lower, the nearer.
constexpr int kNoMatch = 10000;
constexpr int kAnywhere = 100;
constexpr int kLevel = 10;

constexpr std::string_view kFailedConditional = "<!--   Failed Conditional   -->\n";
constexpr std::string_view kNotBest = "<!--   Not best Container/Id-->\n";
// Written over the middle of the comment on the one that is used in the end.
constexpr std::string_view kUsed = "****   USED   ****   ";
constexpr std::size_t kCommentLead = 7;
static_assert(kCommentLead + kUsed.size() + std::string_view("-->\n").size() == kNotBest.size());

// What is compared in one pass over the levels.
struct Pass {
    std::string CCDMTranslator::*wanted;
    std::string_view AncestorPath::*present;
    bool by_inheritance;
    std::string_view no_match;
};
constexpr Pass kPasses[] = {
    {&CCDMTranslator::container, &AncestorPath::className, true,
     "<!--   No Container match   -->\n"},
    {&CCDMTranslator::containerId, &AncestorPath::id, false, "<!--   No ContainerId match -->\n"},
};

// The part behind the last dot, which is taken off with it.
std::string_view TakeLastPart(std::string_view& dotted) {
    const std::size_t dot = dotted.rfind('.');
    const bool whole = dot == std::string_view::npos;
    const std::string_view part = whole ? dotted : dotted.substr(dot + 1);
    dotted = whole ? std::string_view() : dotted.substr(0, dot);
    return part;
}

// Empty beyond the top.
std::string_view NameAt(const Pass& pass, const AncestorPath* level) {
    if (level == nullptr) return {};
    return level->*pass.present;
}

// How many levels above this one the dotted parents take; -1 when one of them is another.
int CountParents(const Pass& pass, const AncestorPath& level, std::string_view parents) {
    const AncestorPath* above = &level;
    int count = 0;
    for (; !parents.empty(); ++count) {
        if (above != nullptr) above = above->parent;
        if (TakeLastPart(parents) != NameAt(pass, above)) return -1;
    }
    return count;
}

int ScoreOf(const Pass& pass, const CCDMTranslator& translator, const AncestorPath& path) {
    std::string_view parents = translator.*pass.wanted;
    if (parents.empty()) return kAnywhere;
    const std::string_view wanted = TakeLastPart(parents);
    int k = 0;
    for (const AncestorPath* level = &path; level != nullptr; level = level->parent, ++k) {
        int distance = 0;
        if (level->*pass.present != wanted) {
            if (!pass.by_inheritance || level->classRecord == nullptr) continue;
            distance = level->classRecord->DistanceToClass(wanted);
            if (distance <= 0) continue;
        }
        const int count = CountParents(pass, *level, parents);
        if (count >= 0) return k * kLevel - count + distance;
    }
    return kNoMatch;
}

// The first one that does not hold; null when all do.
const VariableList::value_type* Failed(const CCDMConditionList& conditions,
                                       FIReferenceBase* reference) {
    FIValue present;
    for (const auto& condition : conditions.pairs) {
        const auto& [variable, value] = condition;
        const bool is_set = reference && reference->GetVarText(variable.c_str(), present);
        if (!is_set || present.Compare(value) != 0) return &condition;
    }
    return nullptr;
}

bool Hold(const CCDMConditionList& conditions, FIReferenceBase* reference) {
    return reference && !Failed(conditions, reference);
}

bool IsOfBranch(const CCDMTranslator& translator, BranchRequest request) {
    return static_cast<int>(translator.branch) == static_cast<int>(request);
}

// The text for `converters`; without one nothing is written.
class Dump {
 public:
    explicit Dump(std::string* text) : text_(text) {}

    // Answers where the comment begins.
    std::size_t Comment(std::string_view comment) const {
        if (text_ == nullptr) return 0;
        *text_ += comment;
        return text_->size() - comment.size();
    }
    void Element(const CCDMTranslator& translator) const {
        if (text_ != nullptr) *text_ += translator.DumpBody(*text_);
    }
    void MarkUsed(std::size_t comment) const {
        if (text_ != nullptr) text_->replace(comment + kCommentLead, kUsed.size(), kUsed);
    }

 private:
    std::string* text_;
};

// At least kNoMatch for one that can't be chosen.
int Weigh(const CCDMTranslator& translator, const AncestorPath& path, FIReferenceBase* reference,
          const Dump& dump) {
    if (translator.conditions != nullptr && !Hold(*translator.conditions, reference)) {
        dump.Comment(kFailedConditional);
        return kNoMatch;
    }
    int score = 0;
    for (const Pass& pass : kPasses) {
        const int part = ScoreOf(pass, translator, path);
        if (part == kNoMatch) dump.Comment(pass.no_match);
        score += part;
    }
    return score;
}

const char* ShownText(const std::string& text) {
    return text.empty() ? "<blank>" : text.c_str();
}

// Writes how each one was judged for the request.
void DumpAll(const std::string& translate_name, const AncestorPath& path,
             const TranslatorMap& translators, FIReferenceBase* reference, BranchRequest request,
             const TranslatorChoice& choice, const Dump& dump) {
    std::size_t comment = 0;
    const auto [first, last] = translators.equal_range(translate_name);
    for (auto row = first; row != last; ++row) {
        const auto& translator = static_cast<const CCDMTranslator&>(*row->second);
        if (BranchAccepts(translator.branch, request) &&
            Weigh(translator, path, reference, dump) < kNoMatch) {
            const std::size_t here = dump.Comment(kNotBest);
            if (&translator == choice.translator) comment = here;
        }
        dump.Element(translator);
    }
    if (choice.translator != nullptr && !choice.is_by_branch) dump.MarkUsed(comment);
}

}  // namespace

std::string WhyLeft(const CCDMTranslator& translator, const AncestorPath& path,
                    FIReferenceBase* reference) {
    constexpr const char* kWords[] = {"container ", "container id "};
    const auto* failed =
        translator.conditions ? Failed(*translator.conditions, reference) : nullptr;
    if (failed) return "condition " + failed->first + " = " + failed->second.ToText() + " fails";
    for (std::size_t i = 0; i < std::size(kPasses); ++i) {
        if (ScoreOf(kPasses[i], translator, path) < kNoMatch) continue;
        return kWords[i] + translator.*kPasses[i].wanted + " is not above it";
    }
    return "";
}

void WeighedTranslators::Nearest::Take(const Nearest& other) {
    if (first.translator == nullptr || other.score < score) {
        *this = other;
    } else if (other.score == score) {
        if (other.first.place < first.place) first = other.first;
        if (other.last.place > last.place) last = other.last;
    }
}

WeighedTranslators::WeighedTranslators(const std::string& translate_name, const AncestorPath& path,
                                       const TranslatorMap& translators,
                                       FIReferenceBase* reference) {
    if (translators.empty()) return;
    const auto [first, last] = translators.equal_range(translate_name);
    int place = 0;
    for (auto row = first; row != last; ++row, ++place) {
        const auto& translator = static_cast<const CCDMTranslator&>(*row->second);
        const int score = Weigh(translator, path, reference, Dump(nullptr));
        const Candidate candidate = {&translator, place};
        const auto branch = static_cast<std::size_t>(translator.branch);
        if (score >= kNoMatch) continue;
        nearest_[branch].Take({score, candidate, candidate});
        is_empty_ = false;
    }
}

bool WeighedTranslators::Has(BranchRequest request) const {
    for (std::size_t branch = 0; branch < kBranches && !is_empty_; ++branch) {
        if (Serves(branch, request)) return true;
    }
    return false;
}

bool WeighedTranslators::Serves(std::size_t branch, BranchRequest request) const {
    return nearest_[branch].first.translator != nullptr &&
           BranchAccepts(static_cast<CCDMBranch>(branch), request);
}

TranslatorChoice WeighedTranslators::Choose(BranchRequest request) const {
    if (is_empty_) return {};
    Nearest nearest;
    for (std::size_t branch = 0; branch < kBranches; ++branch) {
        if (Serves(branch, request)) nearest.Take(nearest_[branch]);
    }
    const CCDMTranslator* best = nearest.first.translator;
    const CCDMTranslator* second = nearest.last.translator;
    if (best == second) return {best};
    const bool best_fits = IsOfBranch(*best, request);
    if (best_fits == IsOfBranch(*second, request)) return {best, true};
    return {best_fits ? best : second, false, true};
}

void LogTie(const TranslatorChoice& choice, const AncestorPath& path) {
    if (!choice.is_tied) return;
    LogMessage(
        MessageText("Duplicate translators: Class %s, Attribute %s, Container %s, ContainerID %s",
                    std::string(path.className).c_str(), std::string(path.id).c_str(),
                    ShownText(choice.translator->container),
                    ShownText(choice.translator->containerId))
            .c_str());
}

const CCDMTranslator* FindTranslator(const std::string& translate_name, const AncestorPath& path,
                                     const TranslatorMap& translators, FIReferenceBase* reference,
                                     BranchRequest request, std::string* dump_text) {
    const TranslatorChoice choice =
        WeighedTranslators(translate_name, path, translators, reference).Choose(request);
    LogTie(choice, path);
    if (dump_text != nullptr) {
        DumpAll(translate_name, path, translators, reference, request, choice, Dump(dump_text));
    }
    return choice.translator;
}

}  // namespace fixtop
