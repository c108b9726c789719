// SPDX-License-Identifier: Apache-2.0
#include "collection/backup_reader.h"

#include <algorithm>
#include <climits>

#include "xml/document_handler.h"
#include "xml/named_element.h"
#include "xml/sax_adapters.h"

namespace fixtop {

namespace {

constexpr char kDocumentName[] = "collection";

// ---- the backup form ----

// Makes the tree of steps. An item without a stated position is one only while it has no children.
class StepBuilder {
 public:
    StepBuilder(Collection& collection, ReadSelection& read)
        : collection_(collection), read_(read) {}

    void Begin(const std::string& id, const std::string& position, const ItemUnits& units) {
        FICollectionElement& step = present_ ? Below(*present_, id) : Root(id);
        const bool is_stated = !position.empty();
        const bool is_new = step.position == FICollectionElement::kNoItem && !step.HasChildren();
        if (is_stated || is_new) {
            step.position =
                is_stated ? FIValue(position.c_str()).AsInt() : FICollectionElement::kUnstated;
        }
        if (!units.IsEmpty()) step.SetUnits(units);
        present_ = &step;
    }
    void End() { present_ = present_->Parent(); }

    // The items in ascending order, those without a stated position behind the others.
    void Finish() {
        const auto rank = [](const FICollectionElement* step) {
            const bool is_stated = step->position != FICollectionElement::kUnstated;
            return is_stated ? std::int64_t{step->position} : std::int64_t{INT_MAX} + 1;
        };
        auto& items = read_.items;
        std::erase_if(
            items, [](const auto* step) { return step->position == FICollectionElement::kNoItem; });
        std::stable_sort(items.begin(), items.end(),
                         [&](const auto* a, const auto* b) { return rank(a) < rank(b); });
    }

 private:
    // Only one root means anything: each further one takes its place.
    FICollectionElement& Root(const std::string& id) {
        read_.items.clear();
        read_.root = std::make_unique<FICollectionElement>(collection_, id);
        return *Attached(read_.root.get());
    }
    // A step that is written twice is one.
    FICollectionElement& Below(FICollectionElement& parent, const std::string& id) {
        if (parent.position == FICollectionElement::kUnstated) {
            parent.position = FICollectionElement::kNoItem;
        }
        if (FICollectionElement* known = parent.FindChild(id)) return *known;
        return *Attached(&parent.AddChild(std::make_unique<FICollectionElement>(collection_, id)));
    }
    FICollectionElement* Attached(FICollectionElement* step) {
        read_.items.push_back(step);
        return step;
    }

    Collection& collection_;
    ReadSelection& read_;
    FICollectionElement* present_ = nullptr;
};

class PathnodeElement final : public NamedElement {
 public:
    explicit PathnodeElement(StepBuilder& builder) : NamedElement("Pathnode"), builder_(builder) {
        SetWarnUnknown(true);
    }
    void OnEnd(const XmlLocator*) override { builder_.End(); }

 protected:
    void Begin(const XmlLocator*, const XmlAttributes& attributes) override {
        std::string id;
        std::string position;
        GetAttribute("id", attributes, id);
        GetAttribute("loc", attributes, position);
        builder_.Begin(id, position, {Unit("uom", attributes), Unit("specuom", attributes)});
        AddChild<PathnodeElement>(builder_);
    }

 private:
    FIValue Unit(const char* name, const XmlAttributes& attributes) {
        std::string text;
        GetAttribute(name, attributes, text);
        FIValue unit;
        if (!text.empty()) unit.SetText(text);
        return unit;
    }

    StepBuilder& builder_;
};

class BackupElement final : public NamedElement {
 public:
    BackupElement(StepBuilder& builder, ReadSelection& read)
        : NamedElement("CollectionBackup"), builder_(builder), read_(read) {
        SetWarnUnknown(true);
    }

 protected:
    void Begin(const XmlLocator*, const XmlAttributes&) override {
        read_.form = ReadSelection::Form::kBackup;
        AddChild<PathnodeElement>(builder_);
    }

 private:
    StepBuilder& builder_;
    ReadSelection& read_;
};

// ---- the form of selections ----

class PathElement final : public NamedElement {
 public:
    explicit PathElement(ReadSelection& read) : NamedElement("Path"), read_(read) {}
    void OnText(const std::string& text, const XmlLocator*) override { read_.paths.back() += text; }

 protected:
    void Begin(const XmlLocator*, const XmlAttributes&) override { read_.paths.emplace_back(); }

 private:
    ReadSelection& read_;
};

constexpr char kItem[] = "Item";
constexpr char kItems[] = "Items";
constexpr char kSelection[] = "Selection";

// An element that has elements of one kind inside.
template <const char* kName, class Inner>
class ListElement final : public NamedElement {
 public:
    explicit ListElement(ReadSelection& read) : NamedElement(kName), read_(read) {
        SetWarnUnknown(true);
    }

 protected:
    void Begin(const XmlLocator*, const XmlAttributes&) override {
        // The outermost says what the document is.
        if (kName == kSelection) read_.form = ReadSelection::Form::kPaths;
        AddChild<Inner>(read_);
    }

 private:
    ReadSelection& read_;
};

using ItemElement = ListElement<kItem, PathElement>;
using ItemsElement = ListElement<kItems, ItemElement>;
using SelectionElement = ListElement<kSelection, ItemsElement>;

// Unlike that of model files it hands on texts of any length: a path that is cut is another one.
class WholeTexts final : public XmlContentHandler {
 public:
    explicit WholeTexts(SaxElementHandler& document) : document_(document) {}
    void StartElement(const std::string& name, const XmlAttributes& attributes,
                      const XmlLocator& locator) override {
        document_.StartElement(name, &locator, attributes);
    }
    void EndElement(const std::string&, const XmlLocator& locator) override {
        document_.EndElement(&locator);
    }
    void Text(const std::string& text, const XmlLocator& locator) override {
        document_.Text(text, &locator);
    }

 private:
    SaxElementHandler& document_;
};

bool Parse(const char* text, SaxElementHandler& document) {
    const std::unique_ptr<XmlReader> reader = CreateXmlReader();
    WholeTexts content(document);
    SaxErrorAdapter errors;
    return reader && reader->Attach(content, errors) &&
           reader->ParseText(text, kDocumentName) == XmlOutcome::kDone;
}

}  // namespace

ReadSelection ReadBackup(const char* text, Collection& collection) {
    ReadSelection read;
    StepBuilder builder(collection, read);
    DocumentHandler document(true);
    document.AddRoot<BackupElement>(builder, read);
    document.AddRoot<SelectionElement>(read);
    if (!text || !Parse(text, document)) return {};
    builder.Finish();
    return read;
}

}  // namespace fixtop
