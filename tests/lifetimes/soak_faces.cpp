// SPDX-License-Identifier: Apache-2.0
#include "lifetimes/soak_faces.h"

#include "automation/task_memory.h"
#include "fixtop/automation.h"

namespace fixtop::lifetimes {

namespace {

// ---- As it is

class PlainFace final : public SelectionFace {
 public:
    explicit PlainFace(Heard heard) : heard_(std::move(heard)) {
        for (int i = 0; i < kEars; ++i) ears_[i] = {this, i};
    }

    bool Add(FIIteratorBase& node) override { return items_->Add(node) != nullptr; }
    std::string AsXml() override {
        FIValue text;
        items_->ToXml(text);
        return text.ToText();
    }
    std::vector<std::string> Read(const char* row) override {
        std::vector<FIValue> values(static_cast<std::size_t>(items_->Count()));
        items_->GetValues(FIValue(row), values.data());
        std::vector<std::string> texts;
        for (const FIValue& each : values) texts.push_back(each.ToText());
        return texts;
    }
    bool Store(const std::vector<std::string>& texts) override {
        std::vector<FIValue> values;
        for (const std::string& each : texts) {
            values.push_back(each.empty() ? FIValue() : FIValue(each.c_str()));
        }
        std::vector<FIValue> outs(values.size());
        const int count = static_cast<int>(values.size());
        items_->SetValues(FIValue("value"), values.data(), count, FIValue(), outs.data());
        for (const FIValue& out : outs) {
            if (!out.IsNull()) return false;
        }
        return true;
    }
    bool Join(int ear) override { return items_->Subscribe(&ears_[ear], this, Told); }
    void Leave(int ear) override { items_->Unsubscribe(&ears_[ear], this); }
    void Drop() override { items_.Reset(); }
    FICollectionBase* Plain() override { return items_.Get(); }

 private:
    struct Ear {
        PlainFace* face;
        int number;
    };
    static void Told(void* owner, void*, FICollectionElement* item, int kind) {
        const auto* ear = static_cast<Ear*>(owner);
        PlainFace& face = *ear->face;
        face.heard_(ear->number, face.items_ ? face.items_->IndexOf(item) : -1, kind);
    }

    const Heard heard_;
    Ear ears_[kEars];
    Ref<FICollectionBase> items_ = Ref<FICollectionBase>::Adopt(FixtopMakeCollection());
};

// ---- As an automation object

class Sink final : public IQSISink {
 public:
    HRESULT FIXTOP_MEMBER QueryInterface(const InterfaceId&, void** out) override {
        *out = nullptr;
        return kResultNoInterface;
    }
    std::uint32_t FIXTOP_MEMBER AddRef() override { return ++references; }
    std::uint32_t FIXTOP_MEMBER Release() override { return --references; }
    HRESULT FIXTOP_MEMBER Invoke(std::int32_t, const Variant& detail) override {
        (*heard)(number, detail.type == Variant::kInt ? detail.number : -1, -1);
        return kResultOk;
    }

    const SelectionFace::Heard* heard = nullptr;
    int number = 0;
    std::uint32_t references = 1;
    std::uint32_t cookie = 0;
};

template <class T, class Call>
Ref<T> Take(Call call) {
    T* out = nullptr;
    call(&out);
    return Ref<T>::Adopt(out);
}

template <class Call>
std::string TakeText(Call call) {
    char* text = nullptr;
    call(&text);
    const std::string taken = text ? text : "";
    FreeAsClient(text);
    return taken;
}

Ref<IQSINode> NodeAt(FIIteratorBase& place) {
    return Ref<IQSINode>::Adopt(static_cast<IQSINode*>(MakeQSINode(&place, nullptr)));
}

class AutomationFace final : public SelectionFace {
 public:
    AutomationFace(FIEntry& root, const std::string& text, Heard heard) : heard_(std::move(heard)) {
        for (int i = 0; i < kEars; ++i) {
            sinks_[i].heard = &heard_;
            sinks_[i].number = i;
        }
        const auto place = Ref<FIIteratorBase>::Adopt(FixtopMakeIterator(&root, false));
        const Ref<IQSINode> node = NodeAt(*place);
        items_ = Take<IQSICollection>([&](IQSICollection** out) {
            return FixtopLoadCollection(node.Get(), text.c_str(), static_cast<int>(text.size()),
                                        out);
        });
        if (!items_) return;
        point_ = Take<IQSIConnectionPoint>(
            [&](IQSIConnectionPoint** out) { return items_->GetConnectionPoints(out); });
    }

    bool Add(FIIteratorBase& place) override {
        return items_->AddNode(NodeAt(place).Get()) == kResultOk;
    }
    std::string AsXml() override {
        return TakeText([&](char** out) { return items_->GetAsXml(out); });
    }
    std::vector<std::string> Read(const char* row) override {
        std::vector<std::string> texts;
        const auto at = Take<IQSICollectionIterator>(
            [&](IQSICollectionIterator** out) { return items_->GetIterator(out); });
        while (at->Move(1) == kResultOk) {
            const auto attribute =
                Take<IQSIAttribute>([&](IQSIAttribute** out) { return at->GetValue(row, out); });
            texts.push_back(attribute
                                ? TakeText([&](char** out) { return attribute->GetString(out); })
                                : std::string());
        }
        return texts;
    }
    bool Store(const std::vector<std::string>& texts) override {
        std::vector<const char*> values;
        for (const std::string& each : texts) {
            values.push_back(each.empty() ? nullptr : each.c_str());
        }
        const auto count = static_cast<std::int32_t>(values.size());
        return items_->SetValueTexts(count, values.data(), nullptr) == kResultOk;
    }
    bool Join(int ear) override {
        if (sinks_[ear].cookie != 0) return true;
        return point_->Advise(&sinks_[ear], &sinks_[ear].cookie) == kResultOk;
    }
    void Leave(int ear) override {
        point_->Unadvise(sinks_[ear].cookie);
        sinks_[ear].cookie = 0;
    }
    void Drop() override {
        point_.Reset();
        items_.Reset();
    }
    bool IsLeft() const override {
        for (const Sink& each : sinks_) {
            if (each.references != 1) return false;
        }
        return true;
    }
    bool IsThere() const { return items_.Get() != nullptr; }

 private:
    const Heard heard_;
    Sink sinks_[kEars];
    Ref<IQSICollection> items_;
    Ref<IQSIConnectionPoint> point_;
};

}  // namespace

std::unique_ptr<SelectionFace> MakePlainFace(SelectionFace::Heard heard) {
    return std::make_unique<PlainFace>(std::move(heard));
}

std::unique_ptr<SelectionFace> MakeAutomationFace(FIEntry& root, const std::string& text,
                                                  SelectionFace::Heard heard) {
    auto face = std::make_unique<AutomationFace>(root, text, std::move(heard));
    if (!face->IsThere()) return nullptr;
    return face;
}

}  // namespace fixtop::lifetimes
