// SPDX-License-Identifier: Apache-2.0
#include "mapping/map_file/map_file_reader.h"

#include <algorithm>
#include <array>

#include "diagnostics/module_log.h"
#include "mapping/map_file/map_file.h"
#include "mapping/map_file/map_text.h"
#include "mapping/map_file/named_text_element.h"
#include "mapping/map_file/translator_element.h"
#include "mapping/map_file/translator_forms.h"
#include "mapping/map_file/translator_scope.h"
#include "mapping/map_file/unless_blank.h"
#include "mapping/translators/function_tables.h"
#include "mapping/translators/semantic_modules.h"
#include "xml/document_handler.h"
#include "xml/log_element.h"
#include "xml/message_text.h"
#include "xml/named_element.h"
#include "xml/text_element.h"

namespace fixtop {

namespace {

constexpr char kKind[] = "Convert";

// Elements that people write for each other.
constexpr std::array<const char*, 6> kIgnored = {"Author",  "Comment",   "Comments",
                                                 "Company", "Copyright", "Version"};

void LogMistake(const std::string& text) {
    LogMessage(" Error in Convert File:");
    LogMessage(text.c_str());
}

class OptionElement final : public NamedElement {
 public:
    explicit OptionElement(CCDMEnumMap& map) : NamedElement("Option"), map_(map) {}

 protected:
    void Begin(const XmlLocator* locator, const XmlAttributes& attributes) override {
        std::string neutral;
        std::string application;
        CountAttributes(attributes);
        GetAttribute("Name", attributes, neutral);
        GetAttribute("AppName", attributes, application);
        WarnUnexpectedAttributes(Name(), locator);
        map_.entries.emplace(application, neutral);
    }

 private:
    CCDMEnumMap& map_;
};

// A table of option names, which takes the place of an earlier one.
class EnumerationElement final : public NamedElement {
 public:
    // Where the table of the named enumeration goes; null, and logged, when it has no place.
    using FindMaps = std::function<EnumMaps*(const std::string& name)>;

    EnumerationElement(const CCDMClassLibrary& library, FindMaps find_maps)
        : NamedElement("Enumeration"), library_(library), find_maps_(std::move(find_maps)) {}

 protected:
    void Begin(const XmlLocator* locator, const XmlAttributes& attributes) override {
        std::string name;
        std::string translate_name;
        CountAttributes(attributes);
        GetAttribute("Name", attributes, name);
        GetAttribute("TranslateName", attributes, translate_name);
        WarnUnexpectedAttributes(Name(), locator);
        EnumMaps* maps = find_maps_(name);
        SetWarnUnknown(maps != nullptr);
        if (maps == nullptr) return;
        if (translate_name.empty()) translate_name = library_.defaultTranslateName;
        auto& map = (*maps)[translate_name];
        map = std::make_unique<CCDMEnumMap>(translate_name);
        AddChild<OptionElement>(*map);
    }

 private:
    const CCDMClassLibrary& library_;
    FindMaps find_maps_;
};

class AttributeElement final : public NamedElement {
 public:
    AttributeElement(CCDMClassLibrary& library, const CCDMClass& record)
        : NamedElement("Attribute"), library_(library), record_(record) {}

 protected:
    void Begin(const XmlLocator* locator, const XmlAttributes& attributes) override {
        std::string name;
        std::string container;
        std::string container_id;
        CountAttributes(attributes);
        GetAttribute("Name", attributes, name);
        GetAttribute("Container", attributes, container);
        GetAttribute("ContainerId", attributes, container_id);
        WarnUnexpectedAttributes(Name(), locator);
        CCDMAttribute* attribute = record_.FindAttribute(name);
        SetWarnUnknown(attribute != nullptr);
        if (attribute == nullptr) {
            LogMistake(MessageText("Attribute %s in class %s not found", name.c_str(),
                                   record_.name.c_str()));
            return;
        }
        scope_ = TranslatorScope(container, container_id);
        AddChildrenFor(*attribute);
    }

 private:
    void AddChildrenFor(CCDMAttribute& attribute) {
        const CCDMBranch branch = library_.defaultBranch;
        AddChild<TranslatorElement>(kTranslateForm, library_, attribute.translators, scope_,
                                    branch);
        AddChild<TranslatorElement>(kTranslateArrayForm, library_, attribute.arrayTranslators,
                                    scope_, branch);
        if (attribute.type == CCDMAttrType::kEnumeration) {
            AddChild<EnumerationElement>(library_, [&attribute](const std::string& name) {
                return MapsOf(attribute, name);
            });
        }
        AddChild<NamedTextElement>("Condition", "Var",
                                   [this](const std::string& variable, const std::string& value) {
                                       scope_.AddCondition(variable, value);
                                   });
        AddChild<NamedTextElement>("SetVar", "Var",
                                   [this](const std::string& variable, const std::string& value) {
                                       scope_.AddSetVar(variable, value);
                                   });
    }

    static EnumMaps* MapsOf(CCDMAttribute& attribute, const std::string& name) {
        if (name == attribute.typeName) return &attribute.enumMaps;
        LogMistake(MessageText("Enum %s for Attribute %s does not match Attribute Enum name (%s)",
                               name.c_str(), attribute.name.c_str(), attribute.typeName.c_str()));
        return nullptr;
    }

    CCDMClassLibrary& library_;
    const CCDMClass& record_;
    TranslatorScope scope_;
};

class ClassElement final : public NamedElement {
 public:
    explicit ClassElement(CCDMClassLibrary& library) : NamedElement("Class"), library_(library) {}

 protected:
    void Begin(const XmlLocator* locator, const XmlAttributes& attributes) override {
        std::string name;
        CountAttributes(attributes);
        GetAttribute("Name", attributes, name);
        WarnUnexpectedAttributes(Name(), locator);
        const CCDMClass* record = library_.FindClass(name);
        SetWarnUnknown(record != nullptr);
        if (record == nullptr) return LogMistake(MessageText("Class %s not found", name.c_str()));
        AddChild<AttributeElement>(library_, *record);
    }

 private:
    CCDMClassLibrary& library_;
};

class DefaultBranchElement final : public NamedElement {
 public:
    explicit DefaultBranchElement(CCDMClassLibrary& library)
        : NamedElement("DefaultBranch"), library_(library) {
        SetWarnUnknown(true);
    }
    void OnText(const std::string& text, const XmlLocator*) override {
        library_.defaultBranch = BranchFromText(text);
    }

 private:
    CCDMClassLibrary& library_;
};

class LinkageElement final : public NamedElement {
 public:
    explicit LinkageElement(CCDMClassLibrary& library)
        : NamedElement("Linkage"), library_(library) {
        SetWarnUnknown(true);
    }

 protected:
    void Begin(const XmlLocator*, const XmlAttributes&) override {
        AddChild<TextElement>("DLL", [this](const std::string& text, const XmlLocator*) {
            library_.semanticModule = FindSemanticModule(text);
        });
    }

 private:
    CCDMClassLibrary& library_;
};

// One attribute of an element that has nothing inside.
class OneAttributeElement final : public NamedElement {
 public:
    using Action = std::function<void(const std::string& value)>;

    OneAttributeElement(const char* element, const char* attribute, Action action)
        : NamedElement(element), attribute_(attribute), action_(std::move(action)) {}

 protected:
    void Begin(const XmlLocator* locator, const XmlAttributes& attributes) override {
        std::string value;
        CountAttributes(attributes);
        const bool given = GetAttribute(attribute_, attributes, value);
        WarnUnexpectedAttributes(Name(), locator);
        if (given) action_(value);
    }

 private:
    const char* attribute_;
    Action action_;
};

class MapFileElement final : public NamedElement {
 public:
    explicit MapFileElement(const MapReading& reading)
        : NamedElement("CCDMMapFile"), reading_(reading), library_(reading.library) {
        SetWarnUnknown(true);
    }

 protected:
    void Begin(const XmlLocator*, const XmlAttributes&) override {
        AddSettings();
        AddChild<TranslatorElement>(kTranslateForm, library_, library_.rootTranslators, scope_,
                                    reading_.root_branch);
        AddChild<ClassElement>(library_);
        AddChild<OneAttributeElement>("Include", "Mapfile", [this](const std::string& file) {
            MapReading inner = reading_;
            ++inner.include_depth;
            ReadMapFileInto(inner, file, ModelFileOrigin::kInclude);
        });
        AddChild<EnumerationElement>(library_,
                                     [this](const std::string& name) { return MapsOf(name); });
        AddChild<LogElement>();
        for (const char* element : kIgnored) AddChild<NamedElement>(element);
    }

 private:
    void AddSettings() {
        AddChild<DefaultBranchElement>(library_);
        AddChild<LinkageElement>(library_);
        AddChild<OneAttributeElement>("TopNode", "FunctionName", [this](const std::string& name) {
            library_.topNodeFunction =
                FindFunctionAs<TopNodeFunction>(library_.semanticModule, name);
        });
        AddChild<TextElement>("TranslateName", UnlessBlank([this](const std::string& text) {
                                  library_.defaultTranslateName = TrimmedText(text);
                              }));
    }

    EnumMaps* MapsOf(const std::string& name) const {
        if (CCDMEnumeration* found = library_.FindEnumeration(name)) return &found->enumMaps;
        LogMistake(MessageText("Enum %s not found", name.c_str()));
        return nullptr;
    }

    MapReading reading_;
    CCDMClassLibrary& library_;
    TranslatorScope scope_;
};

}  // namespace

bool ReadMapFileInto(const MapReading& reading, const std::string& file, ModelFileOrigin origin) {
    std::vector<std::string>& read = reading.library.mapFiles;
    if (std::find(read.begin(), read.end(), file) != read.end()) return true;
    const bool too_many = read.size() >= kMostMapFiles || reading.include_depth > kMostIncludes;
    if (too_many) return FailModelFile(kKind, file);
    read.push_back(file);
    DocumentHandler document(true);
    document.AddRoot<MapFileElement>(reading);
    return ReadModelFile(kKind, file, origin, reading.library.unitResourceModule != nullptr,
                         document);
}

bool ReadMapFile(CCDMClassLibrary& library, const std::string& file) {
    return ReadMapFileInto({library, library.defaultBranch}, file, ModelFileOrigin::kCaller);
}

}  // namespace fixtop
