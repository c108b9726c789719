// SPDX-License-Identifier: Apache-2.0
#include "mapping/map_file/translator_forms.h"

#include "mapping/translators/array_func_translator.h"
#include "mapping/translators/array_function_translator.h"
#include "mapping/translators/array_map_translator.h"
#include "mapping/translators/function_translator.h"
#include "mapping/translators/scalar_translators.h"

namespace fixtop {

namespace {

template <class Translator>
std::unique_ptr<CCDMTranslator> MakePlain(const CCDMClassLibrary&) {
    return std::make_unique<Translator>();
}

template <class Translator>
std::unique_ptr<CCDMTranslator> MakeLinked(const CCDMClassLibrary& library) {
    return std::make_unique<Translator>(library.semanticModule);
}

std::unique_ptr<CCDMTranslator> MakeCounted(const CCDMClassLibrary& library) {
    return std::make_unique<CCDMArrayFuncTranslator>(library.semanticModule, library.listLength);
}

constexpr TranslatorKind kScalarKinds[] = {
    {"Dummy", MakePlain<CCDMDummyTranslator>, nullptr},
    {"Function", MakeLinked<CCDMFunctionTranslator>, "Function"},
    {"Map", MakePlain<CCDMMapTranslator>, "Map"},
};
constexpr TranslatorKind kArrayKinds[] = {
    {"Function", MakeLinked<CCDMArrayFunctionTranslator>, "Function"},
    {"Map", MakePlain<CCDMArrayMapTranslator>, "Map"},
    {"ArrayFunc", MakeCounted, nullptr},
};

}  // namespace

const TranslatorForm kTranslateForm = {"Translate", kScalarKinds};
const TranslatorForm kTranslateArrayForm = {"TranslateArray", kArrayKinds};

}  // namespace fixtop
