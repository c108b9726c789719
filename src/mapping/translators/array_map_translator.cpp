// SPDX-License-Identifier: Apache-2.0
#include "mapping/translators/array_map_translator.h"

#include "mapping/map_file/map_text.h"
#include "mapping/walks/path_walk.h"

namespace fixtop {

const char* CCDMArrayMapTranslator::DumpBody(std::string& out) const {
    out += "\t<TranslateArray Type=\"Map\">" + text_;
    return "</TranslateArray>";
}

void CCDMArrayMapTranslator::SetBody(const std::string& text) {
    text_ = TrimmedText(text);
    path_ = CompilePath(text_);
}

std::unique_ptr<CDTBase> CCDMArrayMapTranslator::MakeIterator(FIReferenceBase& reference) const {
    auto walk = std::make_unique<CDTPathIterator>(path_.get(), reference);
    walk->First();
    return walk;
}

}  // namespace fixtop
