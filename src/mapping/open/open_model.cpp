// SPDX-License-Identifier: Apache-2.0
#include "mapping/open/open_model.h"

#include <set>
#include <string>

#include "diagnostics/module_log.h"
#include "framework/iterator/shielded_iterator.h"
#include "mapping/map_file/map_file.h"
#include "mapping/nodes/class_entry.h"
#include "mapping/nodes/dictionary.h"
#include "xml/message_text.h"

namespace fixtop {

namespace {

constexpr int kUnitsLevel = 5;
constexpr int kScratchSize = 20;

using Opened = Ref<OpenLibrary>;

std::set<std::string> TranslationsOf(const CCDMClassLibrary& library) {
    std::set<std::string> names;
    const auto add = [&](const TranslatorMap& translators) {
        for (const auto& [name, translator] : translators) names.insert(name);
    };
    add(library.rootTranslators);
    for (const auto& [name, record] : library.classes) {
        for (const CCDMAttribute* attribute : record->attributes) {
            add(attribute->translators);
            add(attribute->arrayTranslators);
        }
    }
    return names;
}

// The tree of a name that the map does not have is one without values.
void TellUnknownTranslation(const CCDMClassLibrary& library) {
    if (library.rootTranslators.contains(library.translateName)) return;
    const std::set<std::string> names = TranslationsOf(library);
    if (names.empty() || names.contains(library.translateName)) return;
    std::string known;
    for (const std::string& name : names) known += (known.empty() ? "" : ", ") + name;
    LogMessage(MessageText("  Unknown translation: %s; expected %s", library.translateName.c_str(),
                           known.c_str())
                   .c_str());
}

Opened ReadModel(const ModelFiles& files) {
    Opened opened = ReadDefinitions(files);
    if (opened) opened->library.listLength = files.listLength;
    if (!opened || !ReadMapFile(opened->library, files.map)) return {};
    opened->library.translateName = files.translateName;
    TellUnknownTranslation(opened->library);
    return opened;
}

Ref<CCDMClassContext> MakeTree(const Opened& opened, const std::string& class_name,
                               Ref<FIReference> application) {
    const CCDMClass* shown = opened->library.FindClass(class_name);
    if (!shown) {
        LogMessage(
            MessageText("Error, could not find class type %s\n", class_name.c_str()).c_str());
        return {};
    }
    ClassPlace place;
    place.library = opened;
    place.shown = shown;
    place.branch = static_cast<BranchRequest>(opened->library.defaultBranch);
    place.references.primary = std::move(application);
    return Ref<CCDMClassContext>::Share(new Shielded<CCDMClassContext>(std::move(place)));
}

Ref<FIEntry> TopOf(const CCDMClassLibrary& library, FIEntry* given) {
    // A map that has no way to a top is of no use on another's either.
    if (!library.topNodeFunction) return {};
    if (given) return Ref<FIEntry>::Share(given);
    return Ref<FIEntry>::Adopt(library.topNodeFunction());
}

}  // namespace

// A model without units still opens; values pass as they are then.
Ref<OpenLibrary> ReadDefinitions(const ModelFiles& files) {
    auto opened = Opened::Adopt(new OpenLibrary(files.unitResources, files.classResources));
    if (!opened->library.ReadUnitFile(files.units.c_str())) {
        LogAtLevel("Failed to initialize units list", kUnitsLevel);
    }
    return opened->library.ReadClassFile(files.classes) ? opened : Opened();
}

Ref<CCDMClassContext> OpenPureModel(const std::string& file, const std::string& class_name,
                                    ModuleHandle resources) {
    const auto opened = Opened::Adopt(new OpenLibrary(resources));
    if (!opened->library.ReadClassFile(file)) return {};
    return MakeTree(opened, class_name, {});
}

Ref<CCDMClassContext> OpenPureModel(ModuleHandle resources) {
    return OpenPureModel(kModelClasses, kTopClass, resources);
}

Ref<CCDMClassContext> OpenPureModel(const std::string& name, ModuleHandle resources) {
    return OpenPureModel(name, name, resources);
}

Ref<CCDMClassContext> OpenModelOnNode(const ModelFiles& files, const std::string& class_name,
                                      FIReferenceBase& application) {
    const Opened opened = ReadModel(files);
    if (!opened || !application.Rebind()) return {};
    auto copy = Ref<FIIterator>::Adopt(static_cast<FIIterator*>(application.Copy()));
    return MakeTree(opened, class_name, FIReference::Unbound(std::move(copy)));
}

Ref<CCDMClassContext> OpenModelOnTop(const ModelFiles& files, FIEntry* given) {
    const Opened opened = ReadModel(files);
    if (!opened) return {};
    const CCDMClassLibrary& library = opened->library;
    const Ref<FIEntry> top = TopOf(library, given);
    if (!top) return {};
    auto reference = FIReference::Unbound(
        Ref<FIIterator>::Adopt(new Shielded<FIIterator>(top.Get(), /*history=*/false)));
    // Reading the key fixes the root of hosts that settle it late.
    char scratch[kScratchSize];
    reference->NameText(scratch, kScratchSize);
    // One that leads nowhere leaves the tree on what it reached.
    const auto root = library.rootTranslators.find(library.translateName);
    if (root != library.rootTranslators.end()) {
        static_cast<const CCDMTranslator&>(*root->second).Apply(*reference);
    }
    return MakeTree(opened, kTopClass, std::move(reference));
}

Ref<FIEntry> OpenDictionary(const ModelFiles& files) {
    const Opened opened = ReadDefinitions(files);
    return opened ? MakeDictionary(opened->library) : Ref<FIEntry>();
}

}  // namespace fixtop
