#include "diagnostics/error_log.h"
#include "diagnostics/seek_table.h"
#include "framework/fi_iterator.h"
#include "front/assembly.h"
#include "front/find_provider.h"
#include "front/fixtop.h"
#include "host/and_c.h"
#include "host/fx_top_entry.h"
#include "host/h_solver.h"
#include "host/host_access.h"
#include "path/tokenizer.h"

namespace {

host::SimulationCase* CaseOf(void* session) {
    return static_cast<host::SimulationCase*>(session);
}

std::string TextOf(const char* text) {
    return text ? text : "";
}

}  // namespace

FIEntry* GetTopHovexEntry() {
    auto* make_entry = FindProviderAs<decltype(GetTopFIEntryV)>("GetTopFIEntryV");
    return make_entry ? make_entry() : nullptr;
}

FIEntry* GetTopFIEntryV() {
    return GetTopFIEntry(nullptr);
}

FIEntry* GetTopFIEntry(void* notifyOwner) {
    if (!host::InstalledServices()) return nullptr;
    auto context = Ref<FIContext>::Adopt(MakeTopContext(GetTopHovexCtx, nullptr));
    auto top = Ref<FIEntry>::Share(
        new FITopEntry(context.Get(), static_cast<FINotify*>(notifyOwner), nullptr));
    return top.Detach();
}

FIContext* GetTopHovexCtx(void* session, const char* library, const char* map, const char* units,
                          const char* name) {
    auto context = Ref<FIContext>::Share(new HAandCContext(
        CaseOf(session), {TextOf(library), TextOf(map), TextOf(units), TextOf(name)}));
    return context.Detach();
}

FISolver* GetTopHovexSolver(void* session, int kind) {
    switch (kind) {
        case 1:
            return new HSSSolver(CaseOf(session));
        case 4:
            return new HDynamicSolver(CaseOf(session));
        default:
            return nullptr;
    }
}

FIEntry* GetCombinedEntry(void* session) {
    return AssembleCombinedTop(session).Detach();
}

void* GetQSINode(void* session, void** out) {
    return AssembleNode(session, kNodeFactory, out);
}

void* QSVGetTopNode(void* session, void** out) {
    return AssembleNode(session, kAlternateNodeFactory, out);
}

void* GetDocumentAgg(void* session, const void* identity, void** out) {
    return AssembleDocument(session, identity, kDocumentFinder, kDocumentFactory, out);
}

void* QSVGetDocumentAgg(void* session, const void* identity, void** out) {
    return AssembleDocument(session, identity, kAlternateDocumentFinder, kAlternateDocumentFactory,
                            out);
}

void SetTopNotify(FixtopNotify notify, void* session) {
    HSolverNotify::ForCase(CaseOrActive(CaseOf(session)))->SetRawCallback(notify);
}

// The session may be gone by now: nothing is asked of it.
void UnsetTopNotify(void* session) {
    CaseLife* life = CaseLife::Find(CaseOrActive(CaseOf(session)));
    auto notifier = Ref<HSolverNotify>::Share(life ? life->PresentNotifier() : nullptr);
    if (notifier) notifier->ClearRawCallback();
}

bool SetTopAttach(FIContext* context, bool follow) {
    auto given_up = Ref<FIContext>::Adopt(context);
    auto* top = dynamic_cast<HAandCContext*>(context);
    if (top) top->FollowAttachments(follow);
    return top != nullptr;
}

void TestIterator() {
    if (auto* test = FindProviderAs<decltype(TestIteratorX)>("TestIteratorX")) test();
}

void TestIteratorX() {
    host::SimulationCase* simulation_case = CaseOrActive(nullptr);
    if (!simulation_case) return;
    const host::Text folder = simulation_case->GetDocumentName().DriveAndPath();
    OpenErrorLog((folder + "QSI" + ".log").CStr());
}

void printECounts() {
    PrintSeekTable();
}

void FixtopInstallHost(host::HostServices* services) {
    if (services == host::InstalledServices()) return;
    CaseLife::EndAll();
    host::SetInstalledServices(services);
}

FIIteratorBase* FixtopMakeIterator(FIEntry* top, bool history) {
    return top ? new FIIterator(top, history) : nullptr;
}

bool FixtopDescribePath(const FIValue& expression, FIValue& steps, FIValue& error) {
    steps.Clear();
    const ParsedPath path = ParsePath(expression, error);
    if (!error.IsNull()) return false;
    if (path) steps.SetText(Describe(*path));
    return true;
}

void FixtopSetLog(const char* file, void (*listener)(void* owner, const char* text), void* owner) {
    if (file) SetLogFile(file);
    ModuleLog().SetListener(listener, owner);
}

const char* FixtopVersion() {
    return FIXTOP_VERSION;
}
