// SPDX-License-Identifier: Apache-2.0
#pragma once

// The kinds of translator that a map file may have.

#include <memory>
#include <span>

#include "mapping/translators/translator.h"
#include "model/class_library.h"

namespace fixtop {

// A kind of translator, by the text of Type.
struct TranslatorKind {
    const char* type;
    std::unique_ptr<CCDMTranslator> (*make)(const CCDMClassLibrary& library);
    // An element inside whose text is the body too; null for none.
    const char* body_element;
};

// "Translate" or "TranslateArray", with the kinds of translator that its Type may name.
struct TranslatorForm {
    const char* element;
    std::span<const TranslatorKind> kinds;
};

extern const TranslatorForm kTranslateForm;
extern const TranslatorForm kTranslateArrayForm;

}  // namespace fixtop
