// SPDX-License-Identifier: Apache-2.0
#include "mapping/nodes/dictionary.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "fixtop/cursor.h"
#include "framework/nodes/counted.h"
#include "framework/nodes/empties.h"
#include "framework/nodes/shield.h"
#include "model/attribute_walker.h"
#include "model/class_library.h"

namespace fixtop {

namespace {

struct Node {
    std::string name;
    std::vector<std::pair<const char*, FIValue>> rows;
    std::vector<Node> children;

    const FIValue* Find(const char* row) const {
        const auto found = std::find_if(rows.begin(), rows.end(), [row](const auto& each) {
            return row && std::strcmp(each.first, row) == 0;
        });
        return found == rows.end() ? nullptr : &found->second;
    }
};

// Every object of the tree keeps the whole of it.
using NodeRef = std::shared_ptr<const Node>;

// What cursors over children and over rows have in common; kCount elements are behind it.
template <class Derived, class Base>
class ListedCursor : public CountedFromZero<Base> {
 public:
    explicit ListedCursor(NodeRef node) : node_(std::move(node)) {}

    const void* TypeId() const override { return &kTypeId; }
    Base* Clone(bool deep) override {
        Derived* clone = static_cast<Derived*>(this);
        if (deep) {
            clone = new Shielded<Derived>(node_);
            clone->index_ = index_;
        }
        clone->AddRef();
        return clone;
    }
    bool Seek(int origin, int delta) override {
        const long long start = origin == kFromFirst ? 0 : origin == kFromEnd ? Count() : index_;
        const long long wanted = start + delta;
        index_ = static_cast<int>(std::clamp<long long>(wanted, 0, Count()));
        return wanted == index_ && !AtEnd();
    }
    bool SeekName(int origin, const char* name) override {
        if (origin != kFromPresent) index_ = 0;
        while (!AtEnd() && (!name || Name() != name)) ++index_;
        return !AtEnd();
    }
    bool AtBegin() override { return index_ == 0; }
    bool AtEnd() override { return index_ >= Count(); }
    int Compare(FICursorPosition& other) override {
        if (&other == this) return 0;
        if (other.TypeId() != TypeId()) return kNotComparable;
        const auto& that = static_cast<ListedCursor&>(other);
        if (node_ != that.node_) return kNotComparable;
        return (index_ > that.index_) - (index_ < that.index_);
    }
    void GetKey(FIValue& out) override {
        if (AtEnd()) return out.Clear();
        out.SetText(Name());
    }

 protected:
    int Count() const { return Derived::CountOf(*node_); }
    std::string Name() const { return Derived::NameOf(*node_, index_); }

    static inline const char kTypeId = 0;
    const NodeRef node_;
    int index_ = 0;
};

class ChildCursor : public ListedCursor<ChildCursor, FICursorBase> {
 public:
    using ListedCursor::ListedCursor;
    static int CountOf(const Node& node) { return static_cast<int>(node.children.size()); }
    static const std::string& NameOf(const Node& node, int index) {
        return node.children[static_cast<std::size_t>(index)].name;
    }
    FIEntry* GetEntry() override;
};

class RowCursor : public ListedCursor<RowCursor, FIAttributeCursorBase> {
 public:
    using ListedCursor::ListedCursor;
    static int CountOf(const Node& node) { return static_cast<int>(node.rows.size()); }
    static std::string NameOf(const Node& node, int index) {
        return node.rows[static_cast<std::size_t>(index)].first;
    }
    bool SeekValue(int origin, FIEntry& entry) override {
        FIValue name;
        entry.GetName(name);
        return SeekName(origin, name.CStr());
    }
    void GetValue(FIValue& out) override {
        if (AtEnd()) return out.Clear();
        out = node_->rows[static_cast<std::size_t>(index_)].second;
    }
    // Definitions are the same for every caller.
    FIVarSet* GetVarSet() override { return nullptr; }
    void SetVarSet(FIVarSet*) override {}
};

class DictionaryContext : public CountedFromZero<FIContext> {
 public:
    explicit DictionaryContext(NodeRef node) : node_(std::move(node)) {}
    FICursorBase* MakeCursor(int kind) override {
        if (kind == kKeyCursor) return EmptyCursor();
        return Ref<ChildCursor>::Share(new Shielded<ChildCursor>(node_)).Detach();
    }

 private:
    const NodeRef node_;
};

class DictionaryEntry : public FIEntry, public FIAttributeSource {
 public:
    explicit DictionaryEntry(NodeRef node) : node_(std::move(node)) {}
    int AddRef() override { return ++references_; }
    int Release() override {
        const int left = --references_;
        if (left <= 0) delete this;
        return left;
    }
    void GetName(FIValue& out) override { out.SetText(node_->name); }
    void GetAttribute(const FIValue& name, FIValue& out) override {
        const FIValue* value = node_->Find(name.CStr());
        if (!value) return out.Clear();
        out = *value;
    }
    FIAttributeSource* GetAttributeSource() override {
        AddRef();
        return this;
    }
    FIAttributeCursorBase* MakeCursor() override {
        return Ref<RowCursor>::Share(new Shielded<RowCursor>(node_)).Detach();
    }
    bool IsContainer() override { return !node_->children.empty(); }
    FIContext* GetContext() override {
        return Ref<FIContext>::Share(new Shielded<DictionaryContext>(node_)).Detach();
    }

 private:
    const NodeRef node_;
    int references_ = 0;
};

FIEntry* ChildCursor::GetEntry() {
    if (AtEnd()) return nullptr;
    const NodeRef child(node_, &node_->children[static_cast<std::size_t>(index_)]);
    return Ref<FIEntry>::Share(new Shielded<DictionaryEntry>(child)).Detach();
}

FIValue TextOf(const std::string& text) {
    FIValue value;
    value.SetText(text);
    return value;
}

template <class Texts>
FIValue Lines(const Texts& texts) {
    std::string lines;
    for (const auto& text : texts) lines += (lines.empty() ? "" : "\n") + text;
    return TextOf(lines);
}

Node MakeNode(const std::string& name, const char* type) {
    return {name, {{"id", TextOf(name)}, {"type", FIValue(type)}}, {}};
}

std::string TypeText(const CCDMAttribute& attribute) {
    const std::string type = AttrTypeText(attribute.type);
    return attribute.typeName.empty() ? type : type + "(" + attribute.typeName + ")";
}

Node DescribeAttribute(const CCDMAttribute& attribute, CCDMUnitSource* units) {
    Node node = MakeNode(attribute.name, TypeText(attribute).c_str());
    std::vector<std::string> keys;
    for (const FIValue& key : attribute.keys) keys.push_back(key.ToText());
    if (units && attribute.quantity > 0) {
        node.rows.emplace_back("quantity", FIValue(units->QuantityName(attribute.quantity)));
    }
    node.rows.emplace_back("array", FIValue::OfInt(attribute.isArray));
    node.rows.emplace_back("keys", Lines(keys));
    node.rows.emplace_back("owner", TextOf(attribute.owner ? attribute.owner->name : ""));
    return node;
}

Node DescribeClass(const CCDMClass& described, CCDMUnitSource* units) {
    Node node = MakeNode(described.name, "Class");
    node.rows.emplace_back("superclasses", Lines(described.superclasses));
    CCDMAttributeWalker walker(described);
    for (bool on = walker.First(); on; on = walker.Next()) {
        node.children.push_back(DescribeAttribute(*walker.Current(), units));
    }
    return node;
}

Node DescribeEnumeration(const CCDMEnumeration& enumeration) {
    Node node = MakeNode(enumeration.name, "Enumeration");
    node.rows.emplace_back("options", Lines(enumeration.options));
    node.rows.emplace_back("closed", FIValue::OfInt(enumeration.isClosed));
    return node;
}

}  // namespace

Ref<FIEntry> MakeDictionary(const CCDMClassLibrary& library) {
    Node classes = MakeNode("Classes", "Group");
    for (const auto& [name, record] : library.classes) {
        classes.children.push_back(DescribeClass(*record, library.units.Source()));
    }
    Node enumerations = MakeNode("Enumerations", "Group");
    for (const auto& [name, record] : library.enumerations) {
        enumerations.children.push_back(DescribeEnumeration(*record));
    }
    auto root = std::make_shared<Node>(MakeNode("Dictionary", "Group"));
    root->children.push_back(std::move(classes));
    root->children.push_back(std::move(enumerations));
    return Ref<FIEntry>::Share(new Shielded<DictionaryEntry>(std::move(root)));
}

}  // namespace fixtop
