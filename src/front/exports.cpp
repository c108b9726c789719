// SPDX-License-Identifier: Apache-2.0
#include "diagnostics/memory_guard.h"
#include "diagnostics/module_log.h"
#include "diagnostics/seek_table.h"
#include "fixtop/fixtop.h"
#include "framework/iterator/shielded_iterator.h"
#include "front/assembly.h"
#include "front/find_provider.h"
#include "host/adapter.h"
#include "host/host_access.h"
#include "host/levels/case_top.h"
#include "host/levels/model_nodes.h"
#include "host/solver/shielded_solver.h"
#include "host/solver/solver.h"
#include "path/tokenizer.h"
#include "platform/open_file.h"

namespace fixtop {

namespace {

host::SimulationCase* CaseOf(void* session) {
    return static_cast<host::SimulationCase*>(session);
}

std::string TextOf(const char* text) {
    return text ? text : "";
}

// The object is null when there was no memory to make it.
template <class T, class Make>
T* OrNull(Make make) {
    return memory::Or(nullptr, [&]() -> T* { return make(); });
}

template <class Make>
void* OrNull(void** out, Make make) {
    const auto give_up = [out]() -> void* {
        if (out) *out = nullptr;
        return nullptr;
    };
    return memory::OrElse(give_up, make);
}

}  // namespace

FIEntry* GetTopHovexEntry() {
    return OrNull<FIEntry>([] {
        auto* make_entry = FindProviderAs<decltype(GetTopFIEntryV)>("GetTopFIEntryV");
        return make_entry ? make_entry() : nullptr;
    });
}

FIEntry* GetTopFIEntryV() {
    return GetTopFIEntry(nullptr);
}

FIEntry* GetTopFIEntry(void* notifyOwner) {
    return OrNull<FIEntry>([=]() -> FIEntry* {
        if (!TheAdapter().Services()) return nullptr;
        auto context = Ref<FIContext>::Adopt(MakeTopContext(GetTopHovexCtx, nullptr));
        return HandOut(
            new Shielded<FITopEntry>(context.Get(), static_cast<FINotify*>(notifyOwner), nullptr));
    });
}

FIContext* GetTopHovexCtx(void* session, const char* library, const char* map, const char* units,
                          const char* name) {
    return OrNull<FIContext>([=] {
        return HandOut(new Shielded<HAandCContext>(
            CaseOf(session),
            NeutralViewNames{TextOf(library), TextOf(map), TextOf(units), TextOf(name)}));
    });
}

FISolver* GetTopHovexSolver(void* session, int kind) {
    return OrNull<FISolver>([=]() -> FISolver* {
        switch (kind) {
            case 1:
                return new Shielded<HSSSolver>(CaseOf(session));
            case 4:
                return new Shielded<HDynamicSolver>(CaseOf(session));
            default:
                return nullptr;
        }
    });
}

FIEntry* GetCombinedEntry(void* session) {
    return OrNull<FIEntry>([=] { return AssembleCombinedTop(session).Detach(); });
}

void* GetQSINode(void* session, void** out) {
    return OrNull(out, [=] { return AssembleNode(session, kNodeFactory, out); });
}

void* QSVGetTopNode(void* session, void** out) {
    return OrNull(out, [=] { return AssembleNode(session, kAlternateNodeFactory, out); });
}

void* GetDocumentAgg(void* session, const void* identity, void** out) {
    return OrNull(out, [=] {
        return AssembleDocument(session, identity, kDocumentFinder, kDocumentFactory, out);
    });
}

void* QSVGetDocumentAgg(void* session, const void* identity, void** out) {
    return OrNull(out, [=] {
        return AssembleDocument(session, identity, kAlternateDocumentFinder,
                                kAlternateDocumentFactory, out);
    });
}

void SetTopNotify(FixtopNotify notify, void* session) {
    memory::OrNothing(
        [=] { HSolverNotify::ForCase(CaseOrActive(CaseOf(session)))->SetRawCallback(notify); });
}

// The session may be gone by now: nothing is asked of it.
void UnsetTopNotify(void* session) {
    memory::OrNothing([=] {
        CaseLife* life = CaseLife::Find(CaseOrActive(CaseOf(session)));
        auto notifier = Ref<HSolverNotify>::Share(life ? life->PresentNotifier() : nullptr);
        if (notifier) notifier->ClearRawCallback();
    });
}

bool SetTopAttach(FIContext* context, bool follow) {
    return memory::Or(false, [=] {
        auto given_up = Ref<FIContext>::Adopt(context);
        auto* top = dynamic_cast<HAandCContext*>(context);
        if (top) top->FollowAttachments(follow);
        return top != nullptr;
    });
}

void TestIterator() {
    memory::OrNothing([] {
        if (auto* test = FindProviderAs<decltype(TestIteratorX)>("TestIteratorX")) test();
    });
}

void TestIteratorX() {
    memory::OrNothing([] {
        host::SimulationCase* simulation_case = CaseOrActive(nullptr);
        if (!simulation_case) return;
        const host::Text folder = simulation_case->GetDocumentName().DriveAndPath();
        OpenErrorLog((folder + "QSI" + ".log").CStr());
    });
}

void printECounts() {
    memory::OrNothing(PrintSeekTable);
}

void FixtopInstallHost(host::HostServices* services) {
    TheAdapter().Replace(services);
}

FIIteratorBase* FixtopMakeIterator(FIEntry* top, bool history) {
    return OrNull<FIIteratorBase>(
        [=] { return top ? new Shielded<FIIterator>(top, history) : nullptr; });
}

bool FixtopDescribePath(const FIValue& expression, FIValue& steps, FIValue& error) {
    return memory::OrTell(error, [&] {
        steps.Clear();
        const ParsedPath path = ParsePath(expression, error);
        if (!error.IsNull()) return false;
        if (path) steps.SetText(Describe(*path));
        return true;
    });
}

void FixtopSetLog(const char* file, void (*listener)(void* owner, const char* text), void* owner) {
    memory::OrNothing([=] {
        ModuleLog().SetListener(listener, owner);
        if (file) SetLogFile(*file ? file : NullDevice());
    });
}

int FixtopMemoryFailures() {
    return memory::Failures();
}

const char* FixtopVersion() {
    return FIXTOP_VERSION;
}

}  // namespace fixtop
