// SPDX-License-Identifier: Apache-2.0
#include "model/class_file_reader.h"

#include <algorithm>
#include <cstdio>

#include "model/class_file_text.h"
#include "model/class_library.h"
#include "xml/document_handler.h"
#include "xml/log_element.h"
#include "xml/message_text.h"
#include "xml/named_element.h"
#include "xml/text_element.h"

namespace fixtop {

namespace {

constexpr char kKind[] = "CCDM";

constexpr int kQuantityLevel = 6;
// A file's word for the number of attributes is not worth more memory than this.
constexpr int kMostReserved = 4096;

FIValue TextValue(const std::string& text) {
    return FIValue(text.c_str());
}

class IncludeElement final : public NamedElement {
 public:
    IncludeElement(CCDMClassLibrary& library, int depth)
        : NamedElement("Include"), library_(library), depth_(depth) {}

 protected:
    void Begin(const XmlLocator*, const XmlAttributes& attributes) override {
        std::string file;
        if (!GetAttribute("Library", attributes, file)) return;
        if (IsOtherLibrary(file)) return;
        ReadClassFileInto(library_, file, ModelFileOrigin::kInclude, depth_ + 1);
    }

 private:
    CCDMClassLibrary& library_;
    int depth_;
};

class HeaderElement final : public NamedElement {
 public:
    HeaderElement(CCDMClassLibrary& library, int depth)
        : NamedElement("Header"), library_(library), depth_(depth) {}

 protected:
    void Begin(const XmlLocator*, const XmlAttributes&) override {
        AddChild<IncludeElement>(library_, depth_);
    }

 private:
    CCDMClassLibrary& library_;
    int depth_;
};

class ClassElement final : public NamedElement {
 public:
    explicit ClassElement(CCDMClassLibrary& library) : NamedElement("Class"), library_(library) {}

 protected:
    void Begin(const XmlLocator*, const XmlAttributes& attributes) override {
        std::string name;
        GetAttribute("Name", attributes, name);
        CCDMClass* record = library_.GetOrCreateClass(name);
        AddChild<TextElement>("Superclass", [record](const std::string& text, const XmlLocator*) {
            if (!IsRootClass(text)) record->superclasses.insert(text);
        });
    }

 private:
    CCDMClassLibrary& library_;
};

class OptionElement final : public NamedElement {
 public:
    explicit OptionElement(CCDMEnumeration& enumeration)
        : NamedElement("Option"), enumeration_(enumeration) {}

 protected:
    void Begin(const XmlLocator*, const XmlAttributes& attributes) override {
        std::string name;
        if (GetAttribute("Name", attributes, name)) enumeration_.options.insert(name);
    }

 private:
    CCDMEnumeration& enumeration_;
};

class EnumerationElement final : public NamedElement {
 public:
    explicit EnumerationElement(CCDMClassLibrary& library)
        : NamedElement("Enumeration"), library_(library) {}

 protected:
    void Begin(const XmlLocator*, const XmlAttributes& attributes) override {
        std::string name;
        std::string closed;
        GetAttribute("Name", attributes, name);
        GetAttribute("EnumIsClosed", attributes, closed);
        CCDMEnumeration* enumeration = library_.GetOrCreateEnumeration(name);
        if (closed.starts_with('1')) enumeration->isClosed = true;
        AddChild<OptionElement>(*enumeration);
    }

 private:
    CCDMClassLibrary& library_;
};

class CustomPropertyElement final : public NamedElement {
 public:
    explicit CustomPropertyElement(CCDMAttribute& attribute)
        : NamedElement("CustomProperty"), attribute_(attribute) {}

 protected:
    void Begin(const XmlLocator*, const XmlAttributes& attributes) override {
        std::string name;
        std::string value;
        GetAttribute("Name", attributes, name);
        if (name != "Key" || !GetAttribute("Value", attributes, value)) return;
        attribute_.keys.push_back(TextValue(value));
    }

 private:
    CCDMAttribute& attribute_;
};

class CustomPropertiesElement final : public NamedElement {
 public:
    explicit CustomPropertiesElement(CCDMAttribute& attribute)
        : NamedElement("CustomProperties"), attribute_(attribute) {}

 protected:
    void Begin(const XmlLocator*, const XmlAttributes&) override {
        AddChild<CustomPropertyElement>(attribute_);
    }

 private:
    CCDMAttribute& attribute_;
};

class AttributeElement final : public NamedElement {
 public:
    // `current` is the class that the elements around this one have named last.
    AttributeElement(CCDMClassLibrary& library, CCDMClass*& current)
        : NamedElement("Attribute"), library_(library), current_(current) {}

 protected:
    void Begin(const XmlLocator*, const XmlAttributes& attributes) override {
        std::string name;
        std::string type;
        std::string multiplicity = "1";
        GetAttribute("Name", attributes, name);
        GetAttribute("Type", attributes, type);
        GetAttribute("Multiplicity", attributes, multiplicity);
        CCDMAttribute* record = current_->GetOrCreateAttribute(name);
        current_->attributes.push_back(record);
        record->owner = current_;
        record->type = AttrTypeFromText(type);
        record->isArray = multiplicity != "1";
        AddChildrenFor(*record);
    }

 private:
    void AddChildrenFor(CCDMAttribute& record) {
        for (const char* element : {"ClassName", "EnumName"}) {
            AddChild<TextElement>(element, [&record](const std::string& text, const XmlLocator*) {
                record.typeName = text;
            });
        }
        AddChild<TextElement>("QuantityType",
                              [this, &record](const std::string& text, const XmlLocator* locator) {
                                  SetQuantity(record, text, locator);
                              });
        AddChild<TextElement>("CustomMetaData",
                              [&record](const std::string& text, const XmlLocator*) {
                                  for (const std::string& key : KeysInMetaData(text)) {
                                      record.keys.push_back(TextValue(key));
                                  }
                              });
        AddChild<CustomPropertiesElement>(record);
    }

    void SetQuantity(CCDMAttribute& record, const std::string& text, const XmlLocator* locator) {
        CCDMUnitSource* source = library_.units.Source();
        const int quantity = source == nullptr ? 0 : source->QuantityId(text.c_str());
        record.quantity = std::max(quantity, 0);
        if (quantity > 0) return;
        Message(MessageText("Quantity type %s not found in unit list", text.c_str()),
                kQuantityLevel, locator);
    }

    CCDMClassLibrary& library_;
    CCDMClass*& current_;
};

class ClassAttributesElement final : public NamedElement {
 public:
    explicit ClassAttributesElement(CCDMClassLibrary& library)
        : NamedElement("ClassAttributes"), library_(library) {}

 protected:
    void Begin(const XmlLocator*, const XmlAttributes& attributes) override {
        std::string name;
        std::string count;
        int slots = 0;
        GetAttribute("Name", attributes, name);
        if (GetAttribute("Count", attributes, count)) std::sscanf(count.c_str(), "%d", &slots);
        current_ = library_.GetOrCreateClass(name);
        AddChild<TextElement>("ClassName",
                              [this, slots](const std::string& text, const XmlLocator*) {
                                  current_ = library_.GetOrCreateClass(text);
                                  if (slots <= 0) return;
                                  const int most = std::min(slots, kMostReserved);
                                  current_->attributes.reserve(static_cast<std::size_t>(most));
                              });
        AddChild<AttributeElement>(library_, current_);
    }

 private:
    CCDMClassLibrary& library_;
    CCDMClass* current_ = nullptr;
};

class ClassLibraryElement final : public NamedElement {
 public:
    ClassLibraryElement(CCDMClassLibrary& library, int depth)
        : NamedElement("QZClassLibrary"), library_(library), depth_(depth) {}

 protected:
    void Begin(const XmlLocator*, const XmlAttributes&) override {
        AddChild<HeaderElement>(library_, depth_);
        AddChild<IncludeElement>(library_, depth_);
        AddChild<LogElement>();
        AddChild<ClassElement>(library_);
        AddChild<EnumerationElement>(library_);
        AddChild<ClassAttributesElement>(library_);
    }

 private:
    CCDMClassLibrary& library_;
    int depth_;
};

}  // namespace

bool ReadClassFileInto(CCDMClassLibrary& library, const std::string& file, ModelFileOrigin origin,
                       int include_depth) {
    std::vector<std::string>& read = library.classFiles;
    if (std::find(read.begin(), read.end(), file) != read.end()) return true;
    read.push_back(file);
    if (include_depth > kMostIncludes) return FailModelFile(kKind, file);
    DocumentHandler document(false);
    document.AddRoot<ClassLibraryElement>(library, include_depth);
    // Without a module the resources are those of the program that this code is part of.
    return ReadModelFile(kKind, file, origin, true, document);
}

bool CCDMClassLibrary::ReadClassFile(const std::string& file) {
    return ReadClassFileInto(*this, file, ModelFileOrigin::kCaller, 0);
}

}  // namespace fixtop
