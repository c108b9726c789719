// SPDX-License-Identifier: Apache-2.0
#pragma once

// The choice among the translators of an attribute: those of the right branch whose conditions
// hold, and of them the one whose container and container id match nearest to the entry: the lower
// score wins.

#include <string>

#include "mapping/translators/ancestor_path.h"
#include "mapping/translators/branch_request.h"
#include "mapping/translators/translator.h"

namespace fixtop {

// Whether one of the translators would be chosen; asks no more than it must and logs nothing.
bool HasTranslator(const std::string& translate_name, const AncestorPath& path,
                   const TranslatorMap& translators, FIReferenceBase* reference,
                   BranchRequest request);

// Which faces have a translator of their own that would be chosen, told by one look at them all.
struct OwnFaces {
    bool spec = false;
    bool calc = false;
};
OwnFaces FindOwnFaces(const std::string& translate_name, const AncestorPath& path,
                      const TranslatorMap& translators, FIReferenceBase* reference);

// Why one of them can't be chosen there; empty when it can.
std::string WhyLeft(const CCDMTranslator& translator, const AncestorPath& path,
                    FIReferenceBase* reference);

// Null when the attribute has no translator here. Conditions read the reference's variables;
// without a reference none of them holds. With `dump` each candidate is written there as XML, with
// a comment on why it was left, or that it is used.
//
// Two that are equally near are a mistake in the map: it is logged, and the first stays.
CCDMTranslator* FindTranslator(const std::string& translate_name, const AncestorPath& path,
                               const TranslatorMap& translators, FIReferenceBase* reference,
                               BranchRequest request, std::string* dump = nullptr);

}  // namespace fixtop
