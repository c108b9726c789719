// SPDX-License-Identifier: Apache-2.0
// What a client of the automation objects does.

#include "automation/task_memory.h"
#include "fixtop/automation.h"
#include "memory/client.h"

namespace fixtop::memory_test {

namespace {

constexpr char kStreams[] = "appModel.FlowSheetObjects.Streams";
constexpr char kTemperature[] = "appModel.FlowSheetObjects.Streams.S2.Temperature";

// The object that a member hands out, or none.
template <class T, class Member>
Ref<T> TakeOut(Client& client, Member member) {
    T* out = nullptr;
    client.TellAnswer([&] { return member(&out); });
    return Ref<T>::Adopt(out);
}

template <class Member>
void TellText(Client& client, Member member) {
    char* out = nullptr;
    client.TellAnswer([&] { return member(&out); });
    client.Tell(std::string(out ? out : "(null)"));
    FreeAsClient(out);
}

template <class T, class Member>
void TellNumber(Client& client, Member member) {
    T out = T();
    client.TellAnswer([&] { return member(&out); });
    client.Tell(std::to_string(out));
}

Ref<IQSINode> Child(Client& client, IQSINode& node, const char* path) {
    return TakeOut<IQSINode>(client, [&](IQSINode** out) { return node.GetChild(path, out); });
}

void TellNode(Client& client, IQSINode& node) {
    TellText(client, [&](char** out) { return node.GetPath(out); });
    TellText(client, [&](char** out) { return node.GetFullName(out); });
    TellText(client, [&](char** out) { return node.GetClassName(out); });
    client.TellAnswer([&] { return node.SetVariable("a variable with a long name", "a value"); });
    auto parent = TakeOut<IQSINode>(client, [&](IQSINode** out) { return node.GetParent(out); });
    client.Drop(parent);
    auto value = TakeOut<IQSIAttribute>(
        client, [&](IQSIAttribute** out) { return node.GetAttribute("value", out); });
    if (value) TellText(client, [&](char** out) { return value->GetString(out); });
    char text[64] = "";
    if (value) client.TellAnswer([&] { return value->GetValue(3, sizeof text, text); });
    client.Tell(std::string(text));
    client.Drop(value);
}

void TellRows(Client& client, IQSINode& node) {
    auto rows = TakeOut<IQSIAttributeIterator>(
        client, [&](IQSIAttributeIterator** out) { return node.GetAttributes(out); });
    std::int32_t moved = 0;
    bool on = static_cast<bool>(rows);
    while (on) {
        TellText(client, [&](char** out) { return rows->GetName(out); });
        auto row = TakeOut<IQSIAttribute>(
            client, [&](IQSIAttribute** out) { return rows->GetAttribute(out); });
        if (row) TellText(client, [&](char** out) { return row->GetString(out); });
        client.Drop(row);
        on = client.In([&] { return rows->Next(1, &moved); }) == kResultOk;
    }
    if (rows) client.TellAnswer([&] { return rows->Reset(); });
    if (rows) client.TellAnswer([&] { return rows->ToEnd(); });
    client.Drop(rows);
}

void TellChildren(Client& client, IQSINode& node) {
    auto children = TakeOut<IQSINodeIterator>(
        client, [&](IQSINodeIterator** out) { return node.GetChildren(out); });
    std::int32_t moved = 0;
    bool on = static_cast<bool>(children);
    while (on) {
        TellText(client, [&](char** out) { return children->GetName(out); });
        auto child =
            TakeOut<IQSINode>(client, [&](IQSINode** out) { return children->GetNode(out); });
        if (child) TellText(client, [&](char** out) { return child->GetPath(out); });
        client.Drop(child);
        on = client.In([&] { return children->Move(1, &moved); }) == kResultOk;
    }
    if (children) client.TellAnswer([&] { return children->ToEnd(); });
    if (children) client.TellAnswer([&] { return children->Reset(); });
    client.Drop(children);
}

void TellTyped(Client& client, IQSVNode& node) {
    const auto store = [&](auto call) { TellText(client, call); };
    TellNumber<std::int32_t>(client, [&](auto* out) { return node.GetInt("value", out); });
    TellNumber<double>(client, [&](auto* out) { return node.GetDouble("value", out); });
    TellNumber<double>(client, [&](auto* out) { return node.GetDoubleInUnit("K", out); });
    TellNumber<std::int32_t>(client, [&](auto* out) { return node.GetCount(out); });
    TellText(client, [&](char** out) { return node.GetString("status", out); });
    store([&](char** out) { return node.SetDouble("value", 321.5, out); });
    store([&](char** out) { return node.SetString("value", "no number", out); });
    store([&](char** out) { return node.SetDoubleInUnit(385.15, "K", out); });
    store([&](char** out) { return node.SetDouble("value", 112, out); });
    const char* names[] = {"id", "value", "a name that no row has"};
    Variant values[3];
    client.TellAnswer([&] { return node.GetArrayValues(3, names, values); });
    for (Variant& each : values) {
        if (each.type == Variant::kText) FreeAsClient(std::exchange(each.text, nullptr));
        client.Tell(static_cast<int>(each.type));
    }
}

template <class T>
Ref<T> Top(Client& client, void* (*get)(void*, void**)) {
    return Ref<T>::Adopt(static_cast<T*>(client.In([=] { return get(nullptr, nullptr); })));
}

void TellItems(Client& client, IQSICollection& collection) {
    auto items = TakeOut<IQSICollectionIterator>(
        client, [&](IQSICollectionIterator** out) { return collection.GetIterator(out); });
    bool on = items && client.In([&] { return items->Reset(); }) == kResultOk;
    while (on) {
        TellText(client, [&](char** out) { return items->GetId(out); });
        auto node = TakeOut<IQSINode>(client, [&](IQSINode** out) { return items->GetNode(out); });
        client.Drop(node);
        auto value = TakeOut<IQSIAttribute>(
            client, [&](IQSIAttribute** out) { return items->GetValue("value", out); });
        if (value) TellText(client, [&](char** out) { return value->GetString(out); });
        client.Drop(value);
        on = client.In([&] { return items->Move(1); }) == kResultOk;
    }
    client.Drop(items);
}

void TellCollection(Client& client, IQSICollection& collection) {
    Variant values;
    client.TellAnswer([&] { return collection.GetValueVariant(&values); });
    client.Tell(static_cast<int>(values.count));
    FreeAsClient(values.type == Variant::kRealArray ? values.array : nullptr);
    const double kelvin[] = {385.15};
    client.TellAnswer([&] { return collection.SetValueReals(1, kelvin, "K"); });
    const char* texts[] = {"112"};
    client.TellAnswer([&] { return collection.SetValueTexts(1, texts, nullptr); });
    TellText(client, [&](char** out) { return collection.GetAsXml(out); });
    TellItems(client, collection);
}

// Hears of nothing; whether it is there is what counts.
class DeafSink final : public IQSISink {
 public:
    HRESULT FIXTOP_MEMBER QueryInterface(const InterfaceId&, void** out) override {
        *out = nullptr;
        return kResultNoInterface;
    }
    std::uint32_t FIXTOP_MEMBER AddRef() override { return ++references; }
    std::uint32_t FIXTOP_MEMBER Release() override { return --references; }
    HRESULT FIXTOP_MEMBER Invoke(std::int32_t, const Variant&) override { return kResultOk; }

    std::uint32_t references = 0;
};

void Watch(World& world, Client& client, IQSICollection& collection) {
    DeafSink sink;
    std::uint32_t cookie = 0;
    auto point = TakeOut<IQSIConnectionPoint>(
        client, [&](IQSIConnectionPoint** out) { return collection.GetConnectionPoints(out); });
    if (point) {
        client.TellAnswer([&] { return point->Advise(&sink, &cookie); });
        if (host::IModelCallback* callback = world.Callback()) {
            client.In([=] { callback->SimulationStep(); });
        }
        client.TellAnswer([&] { return point->Unadvise(cookie); });
    }
    client.Drop(point);
    client.Tell(static_cast<int>(sink.references));
}

void Collect(World& world, Client& client, IQSINode& top) {
    const char selection[] =
        "<Selection><Items><Item><Path>appModel.FlowSheetObjects.Streams.S3.Temperature</Path>"
        "</Item></Items></Selection>";
    auto all = TakeOut<IQSICollection>(client, [&](IQSICollection** out) {
        return top.GetAltPath("appModel.FlowSheetObjects.Streams.*.Temperature", out);
    });
    if (all) TellCollection(client, *all);
    if (all) Watch(world, client, *all);
    client.Drop(all);
    auto one = TakeOut<IQSICollection>(
        client, [&](IQSICollection** out) { return top.NewCollection(out); });
    auto node = Child(client, top, kTemperature);
    if (one && node) client.TellAnswer([&] { return one->AddNode(node.Get()); });
    client.Drop(node);
    client.Drop(one);
    auto pasted = TakeOut<IQSICollection>(client, [&](IQSICollection** out) {
        return FixtopPasteCollection(&top, selection, sizeof selection - 1, out);
    });
    if (pasted) TellItems(client, *pasted);
    client.Drop(pasted);
}

void TellDocument(Client& client) {
    const int identity = 0;
    const auto get = [&] {
        return Ref<IQSIDocument>::Adopt(static_cast<IQSIDocument*>(
            client.In([&] { return GetDocumentAgg(nullptr, &identity, nullptr); })));
    };
    auto document = get();
    auto again = get();
    client.Tell(document.Get() == again.Get());
    if (document) {
        TellText(client, [&](char** out) { return document->GetName(out); });
        TellText(client, [&](char** out) { return document->GetApplicationName(out); });
        TellText(client, [&](char** out) { return document->ReadHistory(out); });
        auto top =
            TakeOut<IQSINode>(client, [&](IQSINode** out) { return document->GetTopNode(out); });
        client.Drop(top);
    }
    client.Drop(again);
    client.Drop(document);
}

}  // namespace

void Automate(World& world, Client& client) {
    auto top = Top<IQSINode>(client, GetQSINode);
    if (top) {
        auto node = Child(client, *top, kTemperature);
        if (node) TellNode(client, *node);
        if (node) TellRows(client, *node);
        client.Drop(node);
        auto streams = Child(client, *top, kStreams);
        if (streams) TellChildren(client, *streams);
        client.Drop(streams);
        Collect(world, client, *top);
    }
    client.Drop(top);
    auto v_top = Top<IQSVNode>(client, QSVGetTopNode);
    if (v_top) {
        auto node = Child(client, *v_top, kTemperature);
        if (node) TellTyped(client, static_cast<IQSVNode&>(*node));
        client.Drop(node);
    }
    client.Drop(v_top);
    TellDocument(client);
}

}  // namespace fixtop::memory_test
