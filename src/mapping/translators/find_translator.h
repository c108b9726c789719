// SPDX-License-Identifier: Apache-2.0
#pragma once

// The choice among the translators of an attribute: those of the right branch whose conditions
// hold, and of them the one whose container and container id match nearest to the entry: the lower
// score wins.

#include <array>
#include <string>

#include "mapping/translators/ancestor_path.h"
#include "mapping/translators/branch_request.h"
#include "mapping/translators/translator.h"

namespace fixtop {

struct TranslatorChoice {
    const CCDMTranslator* translator = nullptr;  // null: none may be chosen
    bool is_tied = false;                        // with another that is as near and fits as well
    bool is_by_branch = false;                   // before another that is as near
};

// The translators of an attribute, weighed for one entry by one look at them all: which of them
// serves a request is told from that.
class WeighedTranslators {
 public:
    // Of none.
    WeighedTranslators() = default;
    // Conditions read the reference's variables; without a reference none of them holds.
    WeighedTranslators(const std::string& translate_name, const AncestorPath& path,
                       const TranslatorMap& translators, FIReferenceBase* reference);

    bool Has(BranchRequest request) const;
    // Logs nothing.
    TranslatorChoice Choose(BranchRequest request) const;

 private:
    struct Candidate {
        const CCDMTranslator* translator = nullptr;
        int place = 0;  // in the order of the map files
    };
    // The lowest score, and the first and the last one that has it; none without a candidate.
    struct Nearest {
        int score = 0;
        Candidate first;
        Candidate last;

        void Take(const Nearest& other);
    };
    static constexpr std::size_t kBranches = 4;

    bool Serves(std::size_t branch, BranchRequest request) const;

    std::array<Nearest, kBranches> nearest_;
    bool is_empty_ = true;
};

// Two that are equally near are a mistake in the map.
void LogTie(const TranslatorChoice& choice, const AncestorPath& path);

// Why one of them can't be chosen there; empty when it can.
std::string WhyLeft(const CCDMTranslator& translator, const AncestorPath& path,
                    FIReferenceBase* reference);

// Null when the attribute has no translator here. With `dump` each candidate is written there as
// XML, with a comment on why it was left, or that it is used. A tie is logged, and the first stays.
const CCDMTranslator* FindTranslator(const std::string& translate_name, const AncestorPath& path,
                                     const TranslatorMap& translators, FIReferenceBase* reference,
                                     BranchRequest request, std::string* dump = nullptr);

}  // namespace fixtop
