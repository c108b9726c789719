// SPDX-License-Identifier: Apache-2.0
#include "support/scripted_tree.h"

#include <algorithm>

#include "framework/nodes/counted.h"
#include "framework/nodes/empties.h"

namespace fixtop {

namespace {

Ref<FIEntry> MakeEntry(ScriptNode& node);

class ScriptCursor final : public FICursorBase {
 public:
    explicit ScriptCursor(ScriptNode& node, std::vector<ScriptNode*>& list, int index = 0)
        : node_(node), list_(list), index_(index) {
        Remember();
    }
    const void* TypeId() const override {
        static const char type_id = 0;
        return &type_id;
    }
    int AddRef() override { return ++references_; }
    int Release() override {
        const int left = --references_;
        if (left == 0) delete this;
        return left;
    }
    FICursorBase* Clone(bool deep) override {
        if (deep) return new ScriptCursor(node_, list_, index_);
        AddRef();
        return this;
    }
    bool Seek(int origin, int delta) override {
        const int base = origin == kFromFirst ? 0 : origin == kFromPresent ? index_ : Count();
        const int wanted = base + delta;
        const bool denied = node_.denies_moves && origin == kFromPresent;
        return Stand(std::clamp(wanted, 0, Count())) && wanted >= 0 && !denied;
    }
    bool SeekName(int origin, const char* name) override {
        for (int i = origin == kFromPresent ? index_ : 0; i < Count(); ++i) {
            if (KeyOf(*list_[i]).ToText() == name) return Stand(i);
        }
        return Stand(Count());
    }
    bool AtBegin() override { return index_ == 0; }
    bool AtEnd() override { return index_ >= Count(); }
    int Compare(FICursorPosition& other) override {
        if (&other == this) return 0;
        if (other.TypeId() != TypeId()) return kNotComparable;
        auto& that = static_cast<ScriptCursor&>(other);
        if (element_ && element_ == that.element_) return 0;
        if (&list_ != &that.list_) return kNotComparable;
        return (index_ > that.index_) - (index_ < that.index_);
    }
    // The key that was read when the cursor came here: the list may have changed since.
    void GetKey(FIValue& out) override { out = key_; }
    FIEntry* GetEntry() override {
        if (!AtEnd()) return MakeEntry(*list_[index_]).Detach();
        return node_.null_at_end ? nullptr : EmptyEntry();
    }
    bool IsHidden() override { return element_ && element_->hidden_key; }

 private:
    static const FIValue& KeyOf(const ScriptNode& node) {
        return node.key.IsNull() ? node.name : node.key;
    }
    int Count() const { return static_cast<int>(list_.size()); }
    bool Stand(int index) {
        index_ = index;
        Remember();
        return element_ != nullptr;
    }
    void Remember() {
        element_ = index_ < Count() ? list_[index_] : nullptr;
        key_ = element_ ? KeyOf(*element_) : FIValue();
    }

    ScriptNode& node_;
    std::vector<ScriptNode*>& list_;
    int index_;
    ScriptNode* element_ = nullptr;
    FIValue key_;
    int references_ = 1;
};

class ScriptContext final : public CountedFromZero<FIContext> {
 public:
    explicit ScriptContext(ScriptNode& node) : node_(node) {}
    FICursorBase* MakeCursor(int kind) override {
        if (kind == kKeyCursor) {
            return node_.keys.empty() ? EmptyCursor() : new ScriptCursor(node_, node_.keys);
        }
        if (node_.on_children) node_.on_children();
        return new ScriptCursor(node_, node_.children);
    }
    void GetKeyValue(const char* path, FIValue& out, const char** rest) override {
        if (node_.key_value) {
            node_.key_value(path, out, rest);
        } else {
            FIContext::GetKeyValue(path, out, rest);
        }
    }

 private:
    ScriptNode& node_;
};

class ScriptEntry;

class ScriptAttributeCursor final : public FIAttributeCursorBase {
 public:
    explicit ScriptAttributeCursor(ScriptNode& node, const Ref<FIEntry>& owner)
        : node_(node), owner_(owner) {}
    const void* TypeId() const override {
        static const char type_id = 0;
        return &type_id;
    }
    int AddRef() override { return ++references_; }
    int Release() override {
        const int left = --references_;
        if (left == 0) delete this;
        return left;
    }
    FIAttributeCursorBase* Clone(bool) override {
        AddRef();
        return this;
    }
    bool Seek(int origin, int delta) override {
        const int count = static_cast<int>(node_.attributes.size());
        index_ = (origin == kFromFirst ? 0 : origin == kFromEnd ? count : index_) + delta;
        return !AtEnd();
    }
    bool SeekName(int, const char* name) override {
        index_ = 0;
        while (!AtEnd() && node_.attributes[index_].first != name) ++index_;
        return !AtEnd();
    }
    bool SeekValue(int, FIEntry&) override { return false; }
    bool AtBegin() override { return index_ == 0; }
    bool AtEnd() override { return index_ >= static_cast<int>(node_.attributes.size()); }
    int Compare(FICursorPosition&) override { return kNotComparable; }
    void GetKey(FIValue& out) override { out = Text(node_.attributes[index_].first); }
    void GetValue(FIValue& out) override { out = node_.attributes[index_].second; }
    FIVarSet* GetVarSet() override { return owner_->GetVarSet(); }
    void SetVarSet(FIVarSet* vars) override { owner_->SetVarSet(vars); }

 private:
    ScriptNode& node_;
    Ref<FIEntry> owner_;
    int index_ = 0;
    int references_ = 1;
};

class ScriptEntry final : public FIEntry, public FIAttributeSource {
 public:
    explicit ScriptEntry(ScriptNode& node) : node_(node) {}
    int AddRef() override { return ++references_; }
    int Release() override {
        const int left = --references_;
        if (left == 0) delete this;
        return left;
    }
    void GetName(FIValue& out) override { out = node_.name; }
    void GetAttribute(const FIValue& name, FIValue& out) override {
        if (node_.on_read) node_.on_read(GetVarSet(), name.ToText());
        out.Clear();
        for (const auto& [attribute, value] : node_.attributes) {
            if (attribute == name.ToText()) out = value;
        }
    }
    void SetAttribute(const FIValue& name, const FIValue& value, int, FIValue& out) override {
        node_.log.push_back("set " + name.ToText());
        if (node_.on_write) node_.on_write(GetVarSet(), name.ToText());
        node_.Set(name.ToText(), value);
        out.Clear();
    }
    FIAttributeSource* GetAttributeSource() override {
        AddRef();
        return this;
    }
    FIAttributeCursorBase* MakeCursor() override {
        return new ScriptAttributeCursor(node_, Ref<FIEntry>::Share(this));
    }
    bool IsContainer() override { return node_.container; }
    FIContext* GetContext() override {
        return Ref<FIContext>::Share(new ScriptContext(node_)).Detach();
    }
    bool Subscribe(void* owner, int kind, FICallback callback) override {
        if (node_.can_notify) node_.subscriptions.push_back({owner, kind, callback});
        return node_.can_notify;
    }
    bool Unsubscribe(void* owner, int kind) override {
        auto& all = node_.subscriptions;
        const auto found = std::find_if(all.begin(), all.end(), [&](const auto& each) {
            return each.owner == owner && each.kind == kind;
        });
        if (found == all.end()) return false;
        all.erase(found);
        if (node_.on_unsubscribe) node_.on_unsubscribe(kind);
        return true;
    }
    void SetValue(const FIValue& value, int mode, FIValue& out) override {
        SetAttribute(Text("value"), value, mode, out);
    }
    void SetDisplayUnit(const FIValue& unit, const FIValue& quantity, FIValue& out) override {
        FIValue old;
        GetVarSet()->SetUnit(quantity, unit, old);
        out.Clear();
    }
    void SetDisplaySpecUnit(const FIValue& unit, const FIValue& quantity, FIValue& out) override {
        FIValue old;
        GetVarSet()->SetSpecUnit(quantity, unit, old);
        out.Clear();
    }
    bool CanHold() override {
        if (node_.can_hold) node_.log.push_back("hold");
        return node_.can_hold;
    }
    void BeginBatch() override { node_.log.push_back("batch"); }

 private:
    ScriptNode& node_;
    int references_ = 0;
};

Ref<FIEntry> MakeEntry(ScriptNode& node) {
    return Ref<FIEntry>::Share(new ScriptEntry(node));
}

}  // namespace

ScriptNode& ScriptNode::Add(const std::string& child_name) {
    owned_.push_back(std::make_unique<ScriptNode>(child_name));
    children.push_back(owned_.back().get());
    return *owned_.back();
}

void ScriptNode::RemoveChild(const std::string& child_name) {
    std::erase_if(children,
                  [&](const ScriptNode* child) { return child->name.ToText() == child_name; });
}

ScriptNode& ScriptNode::Set(const std::string& attribute, const FIValue& value) {
    for (auto& [name_of, present] : attributes) {
        if (name_of == attribute) {
            present = value;
            return *this;
        }
    }
    attributes.emplace_back(attribute, value);
    return *this;
}

Ref<FIEntry> ScriptNode::Entry() {
    return MakeEntry(*this);
}

Ref<FIIterator> ScriptNode::Iterate(bool history) {
    return Ref<FIIterator>::Adopt(new FIIterator(Entry().Get(), history));
}

Ref<FICursorBase> ScriptNode::Children() {
    return Ref<FICursorBase>::Adopt(new ScriptCursor(*this, children));
}

void ScriptNode::Notify(int kind) {
    const std::vector<Subscription> all = subscriptions;
    const auto has_left = [this](const Subscription& each) {
        return std::none_of(subscriptions.begin(), subscriptions.end(), [&](const auto& present) {
            return present.owner == each.owner && present.kind == each.kind;
        });
    };
    for (const Subscription& each : all) {
        if (each.kind == kind && !has_left(each)) each.callback(each.owner, kind);
    }
}

}  // namespace fixtop
