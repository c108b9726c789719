// SPDX-License-Identifier: Apache-2.0
#include "front/assembly.h"

#include <memory>

#include "fixtop/fixtop.h"
#include "fixtop/host/services.h"
#include "fixtop/solver.h"
#include "framework/iterator/shielded_iterator.h"
#include "front/find_provider.h"
#include "host/adapter.h"
#include "host/levels/case_top.h"

namespace fixtop {

namespace {

constexpr int kSteadyState = 1;

void* Nothing(void** out) {
    if (out) *out = nullptr;
    return nullptr;
}

// Empty when its factory is not present, or no host is installed.
Ref<FIContext> HostContext(void* session) {
    auto* make_context = FindProviderAs<decltype(GetTopHovexCtx)>("GetTopHovexCtx");
    if (!make_context || !TheAdapter().Services()) return {};
    return Ref<FIContext>::Adopt(MakeTopContext(make_context, session));
}

Ref<FIEntry> AssembleHostTop(void* session) {
    const Ref<FIContext> context = HostContext(session);
    if (!context) return {};
    return Ref<FIEntry>::Share(new Shielded<FITopEntry>(context.Get(), nullptr, nullptr));
}

}  // namespace

FIContext* MakeTopContext(ContextFactory* factory, void* session) {
    return factory(session, "QSIAllLibraries.xml", "hovexmap.xml", "hunits.xml", "Hovex");
}

Ref<FIEntry> AssembleCombinedTop(void* session) {
    auto* make_solver = FindProviderAs<decltype(GetTopHovexSolver)>("GetTopHovexSolver");
    const Ref<FIContext> context = HostContext(session);
    if (!context) return {};
    std::unique_ptr<FISolver> solver(make_solver ? make_solver(session, kSteadyState) : nullptr);
    TheAdapter().SetAttachCall(LateSetTopAttach);
    FINotify notify = nullptr;
    // The solver is given up when there is room for the entry, which owns it first of all.
    auto top = Ref<FIEntry>::Share(new Shielded<FIXTopEntry>(
        context.Get(), static_cast<host::SimulationCase*>(session), &notify, solver.release()));
    auto* set_notify = FindProviderAs<decltype(SetTopNotify)>("SetTopNotify");
    if (set_notify) set_notify(notify, session);
    return top;
}

Ref<FIIteratorBase> AssemblePlace(void* session, bool as_host_shows_it) {
    const Ref<FIEntry> top =
        as_host_shows_it ? AssembleHostTop(session) : AssembleCombinedTop(session);
    if (!top) return {};
    return Ref<FIIteratorBase>::Adopt(new Shielded<FIIterator>(top.Get(), false));
}

void* AssembleNode(void* session, const char* factory, void** out) {
    using NodeFactory = void*(FIIteratorBase*, void**);
    auto* make_node = FindProviderAs<NodeFactory>(factory);
    const Ref<FIIteratorBase> place =
        make_node ? AssemblePlace(session, false) : Ref<FIIteratorBase>();
    return place ? make_node(place.Get(), out) : Nothing(out);
}

void* AssembleDocument(void* session, const void* identity, const char* finder, const char* factory,
                       void** out) {
    using DocumentFinder = void*(void*, const void*, void**);
    using DocumentFactory = void*(FIEntry*, void*, const void*, void**);
    if (auto* find = FindProviderAs<DocumentFinder>(finder)) {
        if (void* known = find(session, identity, out)) return known;
    }
    auto* make_document = FindProviderAs<DocumentFactory>(factory);
    Ref<FIEntry> top = make_document ? AssembleCombinedTop(session) : Ref<FIEntry>();
    if (!top) return Nothing(out);
    return make_document(top.Get(), session, identity, out);
}

bool LateSetTopAttach(FIContext* context, bool follow) {
    // The callee gives up the caller's reference; this one holds the context across the call.
    auto held = Ref<FIContext>::Adopt(context);
    auto* set_attach = FindProviderAs<decltype(SetTopAttach)>("SetTopAttach");
    return set_attach && set_attach(held.Counted(), follow);
}

}  // namespace fixtop
