// SPDX-License-Identifier: Apache-2.0
#include "mapping/check/why_no_node.h"

#include "mapping/check/why_path_fails.h"
#include "mapping/translators/find_translator.h"
#include "mapping/translators/function_translator.h"
#include "mapping/translators/scalar_translators.h"
#include "model/class_library.h"

namespace fixtop {

namespace {

// Why the translator that was chosen leads to no node.
std::string WhyFails(const CCDMTranslator& translator, FIReference& from) {
    if (const auto* map = dynamic_cast<const CCDMMapTranslator*>(&translator)) {
        return WhyPathFails(map->Text(), from);
    }
    if (const auto* function = dynamic_cast<const CCDMFunctionTranslator*>(&translator)) {
        return "function " + function->FunctionName() + " finds no node";
    }
    return "its translator leads to no node";
}

}  // namespace

std::string WhyNoNode(const FaceQuery& query) {
    std::string reason;
    FIReference* from = query.parent.First();
    if (!from) return reason;
    for (const TranslatorMap* each :
         {&query.attribute.translators, &query.attribute.arrayTranslators}) {
        for (const BranchRequest request : {BranchRequest::kCalc, BranchRequest::kSpec}) {
            const CCDMTranslator* chosen =
                FindTranslator(query.library.translateName, query.path, *each, from, request);
            if (!chosen) continue;
            const Ref<FIReference> tried = from->UnboundCopy();
            if (tried && !chosen->Apply(*tried)) return WhyFails(*chosen, *from);
        }
    }
    return "the node is gone";
}

}  // namespace fixtop
