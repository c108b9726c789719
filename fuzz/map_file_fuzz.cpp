// SPDX-License-Identifier: Apache-2.0
// Map text over a small class library, the choices among the translators that it makes, and the
// walks that they give on a small tree.

#include "framework/reference/reference.h"
#include "fuzzed_reader.h"
#include "mapping/map_file/map_file.h"
#include "mapping/translators/array_translator.h"
#include "mapping/translators/find_translator.h"
#include "mapping/translators/semantic_modules.h"
#include "model/class_library.h"
#include "support/scripted_tree.h"

namespace fixtop {

namespace {

constexpr int kMostSteps = 300;

bool GoDown(FIIteratorBase* it, int move) {
    return move == 0 || it->DownFirst();
}
int CountThree(FIIteratorBase* it, FIValue* subclass, int index) {
    if (index < 0) return 3;
    *subclass = FIValue("B");
    it->Down(index);
    return index;
}

void Fill(CCDMClassLibrary& library) {
    for (const char* name : {"A", "B"}) {
        CCDMClass* record = library.GetOrCreateClass(name);
        for (const char* attribute : {"x", "y", "e"}) record->GetOrCreateAttribute(attribute);
        CCDMAttribute* enumeration = record->FindAttribute("e");
        enumeration->type = CCDMAttrType::kEnumeration;
        enumeration->typeName = "E";
    }
    library.FindClass("B")->superclasses.insert("A");
    library.GetOrCreateEnumeration("E");
}

ScriptNode& Tree() {
    static ScriptNode root("Root");
    if (!root.children.empty()) return root;
    for (const char* name : {"a", "b", "b"}) {
        ScriptNode& child = root.Add(name);
        child.Set("value", 1).Set("type", "T");
        child.Add("a").Add("b");
    }
    return root;
}

void Walk(const CCDMArrayTranslator& translator, FIReferenceBase& reference) {
    const auto walk = translator.MakeIterator(reference);
    int steps = 0;
    for (bool on = walk->HasMore(); on && steps < kMostSteps; on = walk->Next()) ++steps;
    for (walk->Last(); steps < 2 * kMostSteps && walk->Prev();) ++steps;
}

void Choose(const TranslatorMap& map, const std::string& name, const AncestorPath& path,
            FIReference& reference) {
    for (int request = 0; request <= 7; ++request) {
        std::string dump;
        const CCDMTranslator* chosen =
            FindTranslator(name, path, map, &reference, static_cast<BranchRequest>(request), &dump);
        if (chosen == nullptr) continue;
        const Ref<FIReference> copy = Ref<FIReference>::Adopt(new FIReference(reference));
        chosen->Test(*copy);
        if (const auto* array = dynamic_cast<const CCDMArrayTranslator*>(chosen))
            Walk(*array, *copy);
        chosen->Apply(*copy);
    }
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    SetUpFuzzedReader();
    static constexpr NamedFunction kFunctions[] = {{"CTDown", GoDown}, {"CTThree", CountThree}};
    OfferSemanticModule("m.dll", kFunctions);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (!TakeInput(data, size)) return -1;
    CCDMClassLibrary library(&library);
    Fill(library);
    ReadMapFile(library, kFuzzedName);
    Ref<FIIterator> it = Tree().Iterate();
    it->SetVarText("v", "a");
    const Ref<FIReference> reference = Ref<FIReference>::Adopt(new FIReference(*it));
    for (const auto& [name, record] : library.classes) {
        AncestorPath top{"A", "top", nullptr, library.FindClass("A")};
        for (const auto& [attribute_name, attribute] : record->attributeIndex) {
            AncestorPath path{"B", attribute_name, &top, record.get(), 2};
            for (const char* translate : {"", "T"}) {
                Choose(attribute->translators, translate, path, *reference);
                Choose(attribute->arrayTranslators, translate, path, *reference);
            }
        }
    }
    return 0;
}

}  // namespace fixtop
