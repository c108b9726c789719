// SPDX-License-Identifier: Apache-2.0
#include "mapping/translators/scalar_translators.h"

#include "mapping/map_file/map_text.h"
#include "mapping/translators/reference_move.h"

namespace fixtop {

const char* CCDMMapTranslator::DumpBody(std::string& out) const {
    out += "\t<Translate Type=\"Map\">" + text_;
    return "</Translate>\n";
}

void CCDMMapTranslator::SetBody(const std::string& text) {
    text_ = TrimmedText(text);
    path_ = CompilePath(text_);
}

bool CCDMMapTranslator::Test(FIReferenceBase& reference) const {
    return path_ && MoveReference(reference, [this](FIIteratorBase& it) {
               return Ref<FIIteratorBase>::Adopt(it.Copy())->WalkFrom(*path_);
           });
}

bool CCDMMapTranslator::Apply(FIReferenceBase& reference) const {
    return path_ &&
           MoveReference(reference, [this](FIIteratorBase& it) { return it.WalkFrom(*path_); });
}

const char* CCDMDummyTranslator::DumpBody(std::string& out) const {
    out += "\t<Translate Type=\"Dummy\">" + text_;
    return "</Translate>\n";
}

void CCDMDummyTranslator::SetBody(const std::string& text) {
    text_ = TrimmedText(text);
}

}  // namespace fixtop
