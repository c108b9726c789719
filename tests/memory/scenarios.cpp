// SPDX-License-Identifier: Apache-2.0
// What clients do. Each scenario leaves the world as it found it, so that it can be played again.

#include <algorithm>
#include <utility>

#include "memory/client.h"

namespace fixtop::memory_test {

namespace {

using Iterator = Ref<FIIteratorBase>;
using Reference = Ref<FIReferenceBase>;
using Entry = Ref<FIEntry>;

constexpr char kStream[] = "appModel.FlowSheetObjects.Streams.S2";
constexpr char kTemperature[] = "appModel.FlowSheetObjects.Streams.S2.Temperature";
constexpr char kNeutralTemperature[] = "Flowsheet.Stream(S2).Temperature";
constexpr char kElement[] = "appModel.FlowSheetObjects.Streams.S2.Profile.Elem1";

void NoCallback(void*, int) {}
void NoSolverCallback(void*, int, const FIErrorList*) {}
void NoNotify(int) {}

Entry RawTop(Client& client) {
    return client.Take([] { return GetCombinedEntry(nullptr); });
}

Entry NeutralTop(Client& client, FIEntry* top) {
    return client.Take([=] { return FixtopOpenModel(top, &lifetimes::SceneFiles()); });
}

Iterator On(Client& client, const Entry& top) {
    return client.Take([&] { return FixtopMakeIterator(top.Get(), false); });
}

bool Go(Client& client, FIIteratorBase& it, const char* path) {
    const FIValue steps(path);
    const bool found = client.In([&] { return it.SeekPath(steps); });
    client.Tell(found);
    return found;
}

template <class Node>
void TellRow(Client& client, Node& node, const char* row) {
    const FIValue name(row);
    client.TellOut([&](FIValue& out) { node.GetAttribute(name, out); });
}

// The present node and everything below it.
void Browse(Client& client, FIIteratorBase& it) {
    client.TellOut([&](FIValue& out) { it.GetName(out); });
    for (const char* row : {"value", "type", "uom", "status"}) TellRow(client, it, row);
    if (!client.In([&] { return it.CanDescend() && it.DownFirst(); })) return;
    do {
        Browse(client, it);
    } while (client.In([&] { return it.Next(); }));
    client.In([&] { it.Up(); });
}

void BrowseFrom(Client& client, const Iterator& it) {
    if (it) Browse(client, *it);
    if (!it || !client.In([&] { return it->DownLast(); })) return;
    while (client.In([&] { return it->Prev(); })) {
        client.TellOut([&](FIValue& out) { it->GetPath(out); });
    }
}

void BrowseRaw(World&, Client& client) {
    Entry top = RawTop(client);
    Iterator it = On(client, top);
    BrowseFrom(client, it);
    client.Drop(it);
    client.Drop(top);
}

void BrowseNeutral(World&, Client& client) {
    Entry top = RawTop(client);
    Entry model = NeutralTop(client, top.Get());
    Iterator it = On(client, model);
    BrowseFrom(client, it);
    client.Drop(it);
    client.Drop(model);
    client.Drop(top);
}

void BrowseOnNode(World&, Client& client) {
    Entry top = RawTop(client);
    Iterator node = On(client, top);
    if (node) Go(client, *node, kStream);
    Entry model = client.Take(
        [&] { return FixtopOpenModelOnNode(node.Get(), "SceneStream", &lifetimes::SceneFiles()); });
    Iterator it = On(client, model);
    BrowseFrom(client, it);
    client.Drop(it);
    client.Drop(model);
    client.Drop(node);
    client.Drop(top);
}

// ---- Reads

void TellRows(Client& client, FIIteratorBase& it) {
    auto source = client.Take([&] { return it.GetAttributeSource(); });
    if (!source) return;
    auto cursor = client.Take([&] { return source->MakeCursor(); });
    client.In([&] { cursor->SetVarSet(it.GetVarSet()); });
    for (bool there = client.In([&] { return cursor->Seek(0, 0); }); there;
         there = client.In([&] { return cursor->Seek(1, 1); })) {
        client.TellOut([&](FIValue& out) { cursor->GetKey(out); });
        client.TellOut([&](FIValue& out) { cursor->GetValue(out); });
        if (client.In([&] { return cursor->AtEnd(); })) break;
    }
    client.Drop(cursor);
    client.Drop(source);
}

void TellTexts(Client& client, FIIteratorBase& it) {
    char text[200];
    const auto tell_text = [&](auto call) {
        text[0] = '\0';
        client.In(call);
        client.Tell(std::string(text));
    };
    tell_text([&] { it.NameText(text, sizeof text); });
    tell_text([&] { it.PathText(text, sizeof text); });
    tell_text([&] { it.KeyText(text, sizeof text); });
    client.TellAnswer([&] { return it.NameLength(); });
    client.TellAnswer([&] { return it.PathLength(); });
    client.TellAnswer([&] { return it.KeyLength(); });
    client.TellOut([&](FIValue& out) { it.DumpXml(out, 2); });
    client.TellOut([&](FIValue& out) { it.DumpAttributes(out); });
    client.TellOut([&](FIValue& out) { it.DumpNode(out); });
    client.TellOut([&](FIValue& out) { it.DumpNodeDeep(out); });
}

void TellCursor(Client& client, FIEntry& entry) {
    auto context = client.Take([&] { return entry.GetContext(); });
    if (!context) return;
    auto cursor = client.Take([&] { return context->MakeCursor(kChildCursor); });
    client.TellAnswer([&] { return cursor->SeekName(0, "appModel"); });
    Entry child = client.Take([&] { return cursor->GetEntry(); });
    if (child) client.TellOut([&](FIValue& out) { child->GetName(out); });
    auto copy = client.Take([&] { return cursor->Clone(true); });
    client.TellAnswer([&] { return cursor->Compare(*copy); });
    if (child) client.TellAnswer([&] { return copy->SeekValue(0, *child); });
    client.Drop(copy);
    client.Drop(child);
    client.Drop(cursor);
    client.Drop(context);
}

void ReadRaw(World&, Client& client) {
    Entry top = RawTop(client);
    if (top) TellCursor(client, *top);
    Iterator it = On(client, top);
    for (const char* path : {kTemperature, kStream, kElement, "appModel.Basis.Package.Tuned",
                             "appModel.FlowSheetObjects.Streams.*[(name)=\"S3\"].Notes"}) {
        if (!it) break;
        Iterator node = client.Take([&] { return it->Copy(); });
        if (node && Go(client, *node, path)) {
            TellRows(client, *node);
            TellTexts(client, *node);
        }
        client.Drop(node);
    }
    client.Drop(it);
    client.Drop(top);
}

void ReadNeutral(World&, Client& client) {
    Entry top = RawTop(client);
    Entry model = NeutralTop(client, top.Get());
    Iterator it = On(client, model);
    if (it && Go(client, *it, kNeutralTemperature)) {
        TellRows(client, *it);
        TellTexts(client, *it);
        Iterator node = client.Take([&] { return FixtopApplicationNode(it.Get(), 1); });
        if (node) client.TellOut([&](FIValue& out) { node->GetPath(out); });
        client.Drop(node);
    }
    client.Drop(it);
    client.Drop(model);
    client.Drop(top);
}

// ---- Stores

void StoreAt(Client& client, FIIteratorBase& it) {
    const FIValue value("value"), quantity("Temperature"), kelvin("K"), celsius("C");
    const FIValue changed = FIValue::OfReal(321.5), wrong("no number");
    for (const FIValue& stored : {changed, wrong, FIValue::OfReal(112)}) {
        client.TellOut([&](FIValue& out) { it.SetAttribute(value, stored, 0, out); });
        client.TellOut([&](FIValue& out) { it.GetAttribute(value, out); });
    }
    client.TellOut([&](FIValue& out) { it.SetDisplayUnit(kelvin, quantity, out); });
    client.TellOut([&](FIValue& out) { it.GetAttribute(value, out); });
    client.TellOut([&](FIValue& out) { it.SetDisplayUnit(celsius, quantity, out); });
    client.TellOut([&](FIValue& out) { it.SetValueInUnit(changed, kelvin, 0, out); });
    client.TellOut([&](FIValue& out) { it.SetValue(FIValue::OfReal(112), 0, out); });
    client.TellOut([&](FIValue& out) { it.SetSpecValue(FIValue::OfReal(112), 0, out); });
}

void StoreRaw(World&, Client& client) {
    Entry top = RawTop(client);
    Iterator it = On(client, top);
    if (it && Go(client, *it, kTemperature)) StoreAt(client, *it);
    client.Drop(it);
    it = On(client, top);
    if (it && Go(client, *it, kElement)) {
        const FIValue number = FIValue::OfReal(12.25);
        client.TellOut([&](FIValue& out) { it->SetValue(number, 0, out); });
    }
    client.Drop(it);
    client.Drop(top);
}

void StoreNeutral(World&, Client& client) {
    Entry top = RawTop(client);
    Entry model = NeutralTop(client, top.Get());
    Iterator it = On(client, model);
    if (it && Go(client, *it, kNeutralTemperature)) StoreAt(client, *it);
    client.Drop(it);
    client.Drop(model);
    client.Drop(top);
}

void StoreInBatch(World&, Client& client) {
    Entry top = RawTop(client);
    Iterator it = On(client, top);
    if (top) client.TellAnswer([&] { return top->CanHold(); });
    if (it && Go(client, *it, kTemperature)) StoreAt(client, *it);
    if (top) client.In([&] { top->BeginBatch(); });
    client.Drop(it);
    client.Drop(top);
}

// ---- Handles over changes

void TellReference(Client& client, FIReferenceBase& reference) {
    TellRow(client, reference, "value");
    client.TellOut([&](FIValue& out) { reference.GetName(out); });
    client.TellOut([&](FIValue& out) { reference.GetPath(out); });
    Iterator copy = client.Take([&] { return reference.Copy(); });
    if (copy) TellRow(client, *copy, "value");
    client.Drop(copy);
}

void FollowChanges(World& world, Client& client, FIReferenceBase& reference) {
    client.TellAnswer([&] { return reference.Subscribe(&client, kNodeDeleted, NoCallback); });
    client.TellAnswer([&] { return reference.Subscribe(&client, kValueChanged, NoCallback); });
    client.TellAnswer([&] { return reference.Subscribe(&client, kStructureChanged, NoCallback); });
    for (int i = 0; i < 2; ++i) {
        world.RenameStream(i == 0 ? "S1" : "S9", i == 0 ? "S9" : "S1");
        if (host::IModelCallback* callback = world.Callback()) {
            client.In([=] { callback->SimulationStep(); });
        }
        client.TellAnswer([&] { return reference.Rebind(); });
        TellReference(client, reference);
    }
    client.TellAnswer([&] { return reference.MarkStale(); });
    TellReference(client, reference);
    client.TellAnswer([&] { return reference.Unsubscribe(&client, kValueChanged); });
}

void Refer(World& world, Client& client, const Entry& top, const char* path) {
    Iterator it = On(client, top);
    if (it && Go(client, *it, path)) {
        Reference reference = client.Take([&] { return it->MakeReference(); });
        Reference other = client.Take([&] { return it->MakeReference(); });
        if (reference && other) {
            client.TellAnswer([&] { return reference->Compare(*other); });
            FollowChanges(world, client, *reference);
            client.TellAnswer([&] { return reference->Equal(*other); });
        }
        client.Drop(other);
        client.Drop(reference);
    }
    client.Drop(it);
}

void ReferRaw(World& world, Client& client) {
    Entry top = RawTop(client);
    Refer(world, client, top, kTemperature);
    Refer(world, client, top, kElement);
    client.Drop(top);
    client.In([] { UnsetTopNotify(nullptr); });
}

void ReferNeutral(World& world, Client& client) {
    Entry top = RawTop(client);
    Entry model = NeutralTop(client, top.Get());
    Refer(world, client, model, kNeutralTemperature);
    client.Drop(model);
    client.Drop(top);
    client.In([] { UnsetTopNotify(nullptr); });
}

void FreezeAt(World& world, Client& client, FIIteratorBase& it, FIIteratorBase& other) {
    client.In([&] { it.Freeze(); });
    world.RenameStream("S1", "S9");
    client.TellAnswer([&] { return it.Thaw(); });
    client.TellOut([&](FIValue& out) { it.GetPath(out); });
    world.RenameStream("S9", "S1");
    client.TellAnswer([&] { return it.Compare(other); });
    client.TellAnswer([&] { return it.Less(other) || it.Greater(other) || it.Equal(other); });
}

void TellVariables(Client& client, FIIteratorBase& it) {
    const FIValue name("a variable with a long name"), text("a text of more than nineteen bytes");
    client.In([&] { it.SetVar(name, text); });
    client.In([&] { it.SetVarText("another", text); });
    client.TellOut([&](FIValue& out) { it.GetVar(name, out); });
    client.TellOut([&](FIValue& out) { it.DumpVars(out); });
    client.TellAnswer([&] { return it.RemoveVar(name); });
}

void Iterate(World& world, Client& client) {
    Entry top = RawTop(client);
    Iterator it = On(client, top);
    Iterator other = On(client, top);
    if (it && other && Go(client, *it, kTemperature) && Go(client, *other, kElement)) {
        FreezeAt(world, client, *it, *other);
        TellVariables(client, *it);
        const FIValue located("appModel.FlowSheetObjects.UnitOps.\"T-1\"");
        client.TellAnswer([&] { return other->Locate(located); });
        client.TellAnswer([&] { return other->SeekChild("Pressure Drop"); });
        client.TellAnswer([&] { return other->IsKeyName("name"); });
        Iterator opened = client.Take([&] { return it->OpenAttribute(FIValue("parent")); });
        client.Drop(opened);
    }
    client.Drop(other);
    client.Drop(it);
    client.Drop(top);
}

// ---- Collections

using Collected = Ref<FICollectionBase>;

void NoCollectionCallback(void*, void*, FICollectionElement*, int) {}

void TellItems(Client& client, FICollectionBase& items) {
    const FIValue value("value");
    std::vector<FIValue> values(items.Count());
    client.In([&] { items.GetValues(value, values.data()); });
    for (const FIValue& each : values) client.Tell(each);
    auto it = client.Take([&] { return items.MakeIterator(); });
    for (bool on = it && it->First(); on; on = it->Next()) {
        TellRow(client, *it, "uom");
        client.TellOut([&](FIValue& out) { it->GetPath(out); });
        Reference node = client.Take([&] { return it->GetNode(); });
        client.Drop(node);
    }
    client.Drop(it);
}

void StoreInto(Client& client, FICollectionBase& items) {
    std::vector<FIValue> values(items.Count(), FIValue::OfReal(321.5));
    std::vector<FIValue> outs(items.Count());
    const FIValue value("value"), kelvin("K");
    const auto store = [&](const FIValue& unit) {
        client.In([&] { items.SetValues(value, values.data(), items.Count(), unit, outs.data()); });
        for (const FIValue& each : outs) client.Tell(each);
    };
    store(kelvin);
    std::fill(values.begin(), values.end(), FIValue::OfReal(112));
    store(FIValue());
}

void KeepItems(Client& client, FICollectionBase& items, FIIteratorBase& top) {
    FIValue text;
    client.In([&] { items.ToXml(text); });
    client.Tell(text);
    Collected again = client.Take([] { return FixtopMakeCollection(); });
    if (again && text.IsText()) {
        client.TellAnswer([&] { return again->Load(text.CStr(), top); });
        TellItems(client, *again);
        client.TellAnswer([&] { return again->FromXml(text.CStr()); });
        TellItems(client, *again);
    }
    client.Drop(again);
}

void Collect(World& world, Client& client, const Entry& top, const char* path,
             const char* pattern) {
    Collected items = client.Take([] { return FixtopMakeCollection(); });
    Iterator it = On(client, top);
    Iterator node = On(client, top);
    if (items && it && node && Go(client, *node, path)) {
        const FIValue matches(pattern);
        client.Tell(client.In([&] { return items->Add(*node) != nullptr; }));
        client.TellAnswer([&] { return items->AddMatches(*it, matches); });
        client.TellAnswer([&] { return items->Subscribe(&client, nullptr, NoCollectionCallback); });
        client.In([&] { items->StartWatching(); });
        StoreInto(client, *items);
        TellItems(client, *items);
        world.RenameStream("S1", "S9");
        TellItems(client, *items);
        world.RenameStream("S9", "S1");
        KeepItems(client, *items, *it);
        client.TellAnswer([&] { return items->RemoveAt(0); });
        client.In([&] { items->StopWatching(); });
        client.TellAnswer([&] { return items->Unsubscribe(&client, nullptr); });
        client.In([&] { items->Clear(); });
    }
    client.Drop(node);
    client.Drop(it);
    client.Drop(items);
}

void CollectRaw(World& world, Client& client) {
    Entry top = RawTop(client);
    Collect(world, client, top, kTemperature, "appModel.FlowSheetObjects.Streams.*.Temperature");
    client.Drop(top);
    client.In([] { UnsetTopNotify(nullptr); });
}

void CollectNeutral(World& world, Client& client) {
    Entry top = RawTop(client);
    Entry model = NeutralTop(client, top.Get());
    Collect(world, client, model, kNeutralTemperature, "Flowsheet.Stream.Temperature");
    client.Drop(model);
    client.Drop(top);
    client.In([] { UnsetTopNotify(nullptr); });
}

// ---- Exports

void TellTop(Client& client, Entry top) {
    client.Tell(bool(top));
    if (!top) return;
    client.TellOut([&](FIValue& out) { top->GetName(out); });
    client.TellAnswer([&] { return top->Subscribe(&client, kValueChanged, NoCallback); });
    client.TellAnswer([&] { return top->Subscribe(&client, kNodeDeleted, NoCallback); });
    client.TellAnswer([&] { return top->Unsubscribe(&client, kValueChanged); });
    client.TellAnswer([&] { return top->Unsubscribe(&client, kNodeDeleted); });
    client.Drop(top);
}

void CallExports(World& world, Client& client) {
    TellTop(client, client.Take([] { return GetTopFIEntryV(); }));
    TellTop(client, client.Take([] { return GetTopHovexEntry(); }));
    FixtopNotify notify = nullptr;
    TellTop(client, client.Take([&] { return GetTopFIEntry(&notify); }));
    TellTop(client, RawTop(client));
    client.In([] { SetTopNotify(NoNotify, nullptr); });
    if (host::IModelCallback* callback = world.Callback()) {
        client.In([=] { callback->SimulationStep(); });
    }
    client.In([] { UnsetTopNotify(nullptr); });
    auto context = client.Take([] {
        return GetTopHovexCtx(nullptr, "a class library of that name", nullptr, nullptr, "Hovex");
    });
    client.Tell(bool(context));
    if (context) client.TellAnswer([&] { return SetTopAttach(context.Detach(), true); });
    void* object = nullptr;
    const auto give_back = [&] {
        auto* const given = static_cast<IUnknown*>(std::exchange(object, nullptr));
        if (given) client.In([=] { given->Release(); });
    };
    client.Tell(client.In([&] { return GetQSINode(nullptr, &object) != nullptr; }));
    give_back();
    client.Tell(client.In([&] { return GetDocumentAgg(nullptr, "id", &object) != nullptr; }));
    give_back();
    FIValue steps, error;
    const FIValue path("Streams.*[(name)=\"a name of some length\"].Temperature(value)");
    client.TellAnswer([&] { return FixtopDescribePath(path, steps, error); });
    client.Tell(steps);
    client.Tell(error);
    FixtopSetLog("a_log_file_of_the_module.log", nullptr, nullptr);
    client.In([] { TestIterator(); });
    client.In([] { TestIteratorX(); });
}

// Adds up what is told of members; needs no memory for it.
bool AddUp(void* owner, const FixtopMember* row) {
    int& sum = *static_cast<int*>(owner);
    sum += row->kind * 1000 + row->number;
    for (const char* text : {row->className, row->name, row->owner, row->type, row->typeName}) {
        for (; text && *text; ++text) sum += *text;
    }
    return true;
}

void ReadDefinitions(World&, Client& client) {
    Entry pure = client.Take([] { return FixtopOpenPureModel("scene_classes.xml", nullptr); });
    Iterator it = On(client, pure);
    BrowseFrom(client, it);
    client.Drop(it);
    client.Drop(pure);
    Entry dictionary = client.Take([] { return FixtopOpenDictionary(&lifetimes::SceneFiles()); });
    it = On(client, dictionary);
    BrowseFrom(client, it);
    client.Drop(it);
    client.Drop(dictionary);
    for (const char* of : {static_cast<const char*>(nullptr), "QSISimulation"}) {
        int sum = 0;
        client.TellAnswer(
            [&] { return FixtopVisitMembers(&lifetimes::SceneFiles(), of, AddUp, &sum); });
        client.Tell(sum);
    }
}

void OpenShippedModel(World&, Client& client) {
    Entry top = RawTop(client);
    Entry model = client.Take([&] { return FixtopOpenModel(top.Get(), nullptr); });
    Iterator it = On(client, model);
    if (it && Go(client, *it, kNeutralTemperature)) TellRows(client, *it);
    client.Drop(it);
    client.Drop(model);
    client.Drop(top);
}

// ---- Solvers

void TellSolver(Client& client, int kind) {
    FISolver* solver = client.In([=] { return GetTopHovexSolver(nullptr, kind); });
    client.Tell(solver != nullptr);
    if (!solver) return;
    FIErrorList errors;
    client.In([&] { solver->Initialize(); });
    client.TellAnswer([&] { return solver->Subscribe(&client, 0, NoSolverCallback); });
    client.Tell(client.In([&] { return solver->CheckSolve(errors) != nullptr; }));
    client.In([&] { solver->SolveOnceNow(errors); });
    client.TellAnswer([&] { return solver->Run(); });
    TellRow(client, *solver, "state");
    client.In([&] { solver->Pause(); });
    client.In([&] { solver->Resume(); });
    client.In([&] { solver->Stop(); });
    for (const FIErrorRecord& each : errors) client.Tell(each.text);
    TellRow(client, *solver, "name");
    auto source = client.Take([&] { return solver->GetAttributeSource(); });
    client.Drop(source);
    client.TellAnswer([&] { return solver->Unsubscribe(&client, 0); });
    client.In([=] { delete solver; });
}

void Solve(World&, Client& client) {
    for (int kind : {1, 4}) TellSolver(client, kind);
}

// ---- The end of a case and of the host

void EndCase(World& world, Client& client, const char* path, bool neutral) {
    casehost::Case& former = world.Open();
    casehost::Case* const open = world.Host().Open(lifetimes::PlantData(1, true)).opened;
    Entry top = RawTop(client);
    Entry model = neutral ? NeutralTop(client, top.Get()) : top;
    Iterator it = On(client, model);
    Reference reference;
    if (it && Go(client, *it, path)) reference = client.Take([&] { return it->MakeReference(); });
    if (reference) {
        client.TellAnswer([&] { return reference->Subscribe(&client, kNodeDeleted, NoCallback); });
        TellReference(client, *reference);
    }
    if (host::IModelCallback* callback = open->OnlineManager()->ModelCallback()) {
        client.In([=] { callback->SimulationEvent(); });
    }
    world.Host().Close(*open);
    world.Host().RunHostLoop();
    world.Host().Activate(former);
    if (reference) TellReference(client, *reference);
    if (it) TellRow(client, *it, "value");
    client.Drop(reference);
    client.Drop(it);
    client.Drop(model);
    client.Drop(top);
}

void EndRaw(World& world, Client& client) {
    EndCase(world, client, kTemperature, false);
}

void EndNeutral(World& world, Client& client) {
    EndCase(world, client, kNeutralTemperature, true);
}

void TakeHostOut(World& world, Client& client) {
    Entry top = RawTop(client);
    Iterator it = On(client, top);
    Reference reference;
    if (it && Go(client, *it, kTemperature)) {
        reference = client.Take([&] { return it->MakeReference(); });
    }
    client.In([] { FixtopInstallHost(nullptr); });
    if (reference) TellReference(client, *reference);
    client.Drop(reference);
    client.Drop(it);
    client.Drop(top);
    client.In([&] { FixtopInstallHost(&world.Host().Services()); });
    FixtopInstallHost(&world.Host().Services());
}

// Computes nothing, in two steps.
class IdleEngine final : public casehost::SolveEngine {
 public:
    Outcome Prepare(const casehost::CaseData& problem) override {
        results_ = problem;
        return {Progress::running, ""};
    }
    Outcome Step(int) override { return {Progress::done, ""}; }
    const casehost::CaseData& Results() const override { return results_; }

 private:
    casehost::CaseData results_;
};

}  // namespace

World::World() : host_(false) {
    FixtopInstallHost(&host_.Services());
    host_.SetEngineMaker([] { return std::make_unique<IdleEngine>(); });
    case_ = host_.Open(lifetimes::PlantData(0, true)).opened;
}

void World::RenameStream(const std::string& name, const std::string& to) {
    host::FlowSheetObjectIterator it = case_->MainFlowSheet()->Objects();
    for (host::Viewable* each = it.Reset(); each; each = it.Next()) {
        if (each->GetName().Str() != name) continue;
        case_->Rename(each, to);
        return;
    }
}

const std::vector<Scenario>& Scenarios() {
    static const std::vector<Scenario> scenarios = {
        {"browse_raw", BrowseRaw},
        {"browse_neutral", BrowseNeutral},
        {"browse_on_node", BrowseOnNode},
        {"read_raw", ReadRaw},
        {"read_neutral", ReadNeutral},
        {"store_raw", StoreRaw},
        {"store_neutral", StoreNeutral},
        {"store_in_batch", StoreInBatch},
        {"refer_raw", ReferRaw},
        {"refer_neutral", ReferNeutral},
        {"iterate", Iterate},
        {"collect_raw", CollectRaw},
        {"collect_neutral", CollectNeutral},
        {"exports", CallExports},
        {"automation", Automate},
        {"definitions", ReadDefinitions},
        {"shipped_model", OpenShippedModel},
        {"solver", Solve},
        {"end_raw", EndRaw},
        {"end_neutral", EndNeutral},
        {"host_out", TakeHostOut},
    };
    return scenarios;
}

}  // namespace fixtop::memory_test
