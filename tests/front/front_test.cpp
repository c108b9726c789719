// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "diagnostics/instance_counts.h"
#include "diagnostics/module_log.h"
#include "diagnostics/seek_table.h"
#include "fixtop/fixtop.h"
#include "framework/nodes/counted.h"
#include "framework/nodes/empties.h"
#include "front/assembly.h"
#include "front/find_provider.h"
#include "host/levels/case_top.h"
#include "host/levels/model_nodes.h"
#include "support/debug_capture.h"
#include "support/host_reading.h"
#include "support/scripted_host.h"
#include "support/temporary_folder.h"

namespace fixtop {

namespace {

// Modules of a test: which are in the process, which can be loaded, and what they export.
class FakeModules final : public ModuleSystem {
 public:
    struct Module {
        std::map<std::string, void*> functions;
    };

    ModuleHandle FindLoaded(const char* name) override {
        asked += std::string("find ") + name + "; ";
        return loaded.count(name) ? &modules[name] : nullptr;
    }
    ModuleHandle Load(const char* name) override {
        asked += std::string("load ") + name + "; ";
        return loadable.count(name) ? &modules[name] : nullptr;
    }
    void* Function(ModuleHandle module, const char* name) override {
        const auto& functions = static_cast<Module*>(module)->functions;
        const auto found = functions.find(name);
        return found == functions.end() ? nullptr : found->second;
    }

    std::map<std::string, Module> modules;
    std::set<std::string> loaded;
    std::set<std::string> loadable;
    std::string asked;
};

int g_marks[6];

TEST(FindProvider, takes_the_first_module_that_has_the_name) {
    struct Case {
        std::set<std::string> loaded;
        std::set<std::string> loadable;
        std::vector<std::string> providers;
        const char* found_in;
        const char* asked;
    };
    const char* all = "find hovex.exe; find rifmos.exe; load hovexeng.dll; load fixtop.dll; ";
    const Case cases[] = {
        {{"hovex.exe"},
         {"hovexeng.dll"},
         {"hovex.exe", "hovexeng.dll"},
         "hovex.exe",
         "find hovex.exe; "},
        {{"rifmos.exe"}, {}, {"rifmos.exe"}, "rifmos.exe", "find hovex.exe; find rifmos.exe; "},
        // With the first host there the second is not asked.
        {{"hovex.exe", "rifmos.exe"},
         {"fixtop.dll"},
         {"rifmos.exe", "fixtop.dll"},
         "fixtop.dll",
         "find hovex.exe; load hovexeng.dll; load fixtop.dll; "},
        {{"hovex.exe"},
         {"hovexeng.dll", "fixtop.dll"},
         {"hovexeng.dll", "fixtop.dll"},
         "hovexeng.dll",
         "find hovex.exe; load hovexeng.dll; "},
        {{},
         {"hovexeng.dll"},
         {"hovexeng.dll"},
         "hovexeng.dll",
         "find hovex.exe; find rifmos.exe; load hovexeng.dll; "},
        {{}, {"fixtop.dll"}, {"fixtop.dll"}, "fixtop.dll", all},
        {{}, {"fixtop.dll"}, {}, nullptr, all},
        {{}, {}, {}, nullptr, all},
    };
    for (const Case& each : cases) {
        FakeModules modules;
        modules.loaded = each.loaded;
        modules.loadable = each.loadable;
        void* expected = nullptr;
        int mark = 0;
        for (const std::string& provider : each.providers) {
            modules.modules[provider].functions["Name"] = &g_marks[mark];
            if (each.found_in && provider == each.found_in) expected = &g_marks[mark];
            ++mark;
        }
        EXPECT_EQ(expected, FindProvider(modules, "Name")) << each.asked;
        EXPECT_EQ(each.asked, modules.asked);
        EXPECT_EQ(nullptr, FindProvider(modules, "name")) << "case counts";
    }
}

// ---- The exports, with modules of the test in front of them ----

template <class Function>
void* Pointer(Function* function) {
    return reinterpret_cast<void*>(function);
}

class Front : public testing::Test {
 protected:
    Front() {
        modules.loadable.insert("fixtop.dll");
        Offer("GetTopHovexCtx", Pointer(GetTopHovexCtx));
        Offer("GetTopHovexSolver", Pointer(GetTopHovexSolver));
        Offer("SetTopNotify", Pointer(SetTopNotify));
        Offer("SetTopAttach", Pointer(SetTopAttach));
        Offer("GetTopFIEntryV", Pointer(GetTopFIEntryV));
        SetProviderModules(&modules);
    }
    ~Front() override {
        UnsetTopNotify(nullptr);
        SetProviderModules(nullptr);
    }
    void Offer(const char* name, void* function) {
        modules.modules["fixtop.dll"].functions[name] = function;
    }
    void Withdraw(const char* name) { modules.modules["fixtop.dll"].functions.erase(name); }

    scripted::Host host;
    FakeModules modules;
};

TEST_F(Front, combined_top_has_models_solver_and_notification) {
    auto top = Ref<FIEntry>::Adopt(GetCombinedEntry(nullptr));
    ASSERT_TRUE(top);
    EXPECT_EQ(2, top->AddRef()) << "one reference for the caller";
    top->Release();
    EXPECT_EQ(
        std::vector<std::string>({"appModel", "QSI Published Variables", "Published Variables"}),
        ChildNames(*top));
    void* service = nullptr;
    ASSERT_TRUE(top->QueryService(1, &service));
    EXPECT_EQ(1, static_cast<FISolver*>(service)->Kind());
    static int told;
    told = 0;
    EXPECT_TRUE(top->Subscribe(this, 1, [](void*, int) { ++told; }));
    ASSERT_TRUE(host.manager.callback);
    host.manager.callback->SimulationStep();
    EXPECT_EQ(1, told);
    EXPECT_TRUE(top->Unsubscribe(this, 1));
}

TEST_F(Front, the_context_gets_the_names_of_the_files) {
    auto top = Ref<FIEntry>::Adopt(GetCombinedEntry(&host.simulation_case));
    auto context = Ref<FIContext>::Adopt(top->GetContext());
    const NeutralViewNames& files = static_cast<HAandCContext*>(context.Get())->Files();
    EXPECT_EQ("QSIAllLibraries.xml", files.library);
    EXPECT_EQ("hovexmap.xml", files.map);
    EXPECT_EQ("hunits.xml", files.units);
    EXPECT_EQ("Hovex", files.name);
    EXPECT_EQ(3, context->AddRef()) << "the entry's, this test's, and the one just added";
    context->Release();
}

// ---- What each step is given, and in which order ----

struct Assembly {
    static inline std::string steps;

    static FIContext* MakeContext(void* session, const char* library, const char* map,
                                  const char* units, const char* name) {
        steps += std::string("context ") + (session ? "of the case " : "") + library + " " + map +
                 " " + units + " " + name + "; ";
        return GetTopHovexCtx(session, library, map, units, name);
    }
    static FISolver* MakeSolver(void* session, int kind) {
        steps +=
            std::string("solver ") + (session ? "of the case " : "") + std::to_string(kind) + "; ";
        return GetTopHovexSolver(session, kind);
    }
    static void Notify(FixtopNotify notify, void* session) {
        steps += std::string("notify ") + (session ? "of the case " : "") +
                 (notify == &FIXTopEntry::Dispatch ? "dispatch" : "") + "; ";
    }
    static void* MakeNode(FIIteratorBase* iterator, void** out) {
        FIValue path;
        iterator->GetPath(path);
        return Made("node at " + path.ToText(), out);
    }
    static void* MakeAlternateNode(FIIteratorBase*, void** out) {
        return Made("alternate node", out);
    }
    static void* Find(void* session, const void*, void**) {
        steps += std::string("find ") + (session ? "in the case; " : "; ");
        return nullptr;
    }
    static void* MakeDocument(FIEntry*, void* session, const void*, void** out) {
        return Made(session ? "document of the case" : "document", out);
    }
    static void* MakeAlternateDocument(FIEntry*, void*, const void*, void** out) {
        return Made("alternate document", out);
    }

 private:
    static void* Made(const std::string& what, void** out) {
        steps += what + "; ";
        return *out = &steps;
    }
};

TEST_F(Front, tops_are_assembled_step_by_step) {
    Offer("GetTopHovexCtx", Pointer(Assembly::MakeContext));
    Offer("GetTopHovexSolver", Pointer(Assembly::MakeSolver));
    Offer("SetTopNotify", Pointer(Assembly::Notify));
    Offer(kNodeFactory, Pointer(Assembly::MakeNode));
    Offer(kAlternateNodeFactory, Pointer(Assembly::MakeAlternateNode));
    Offer(kDocumentFinder, Pointer(Assembly::Find));
    Offer(kAlternateDocumentFinder, Pointer(Assembly::Find));
    Offer(kDocumentFactory, Pointer(Assembly::MakeDocument));
    Offer(kAlternateDocumentFactory, Pointer(Assembly::MakeAlternateDocument));
    const std::string top =
        "context of the case QSIAllLibraries.xml hovexmap.xml hunits.xml Hovex; "
        "solver of the case 1; notify of the case dispatch; ";
    void* const session = &host.simulation_case;
    struct Case {
        std::function<void(void** out)> call;
        std::string steps;
    };
    const Case cases[] = {
        {[&](void**) { Ref<FIEntry>::Adopt(GetCombinedEntry(session)); }, top},
        {[&](void** out) { GetQSINode(session, out); }, top + "node at Top; "},
        {[&](void** out) { QSVGetTopNode(session, out); }, top + "alternate node; "},
        {[&](void** out) { GetDocumentAgg(session, this, out); },
         "find in the case; " + top + "document of the case; "},
        {[&](void** out) { QSVGetDocumentAgg(session, this, out); },
         "find in the case; " + top + "alternate document; "},
    };
    for (const Case& each : cases) {
        Assembly::steps.clear();
        void* out = nullptr;
        each.call(&out);
        EXPECT_EQ(each.steps, Assembly::steps);
    }
}

TEST_F(Front, missing_factories_are_missing_features) {
    Withdraw("SetTopNotify");
    Withdraw("GetTopHovexSolver");
    auto top = Ref<FIEntry>::Adopt(GetCombinedEntry(nullptr));
    ASSERT_TRUE(top);
    void* service = this;
    EXPECT_FALSE(top->QueryService(1, &service));
    EXPECT_EQ(nullptr, host.manager.callback);
    top.Reset();
    Offer("GetTopHovexCtx", Pointer(+[](void*, const char*, const char*, const char*,
                                        const char*) -> FIContext* { return nullptr; }));
    EXPECT_EQ(nullptr, GetCombinedEntry(nullptr));
    Withdraw("GetTopHovexCtx");
    EXPECT_EQ(nullptr, GetCombinedEntry(nullptr));
}

TEST_F(Front, without_a_host_there_is_no_top) {
    FixtopInstallHost(nullptr);
    EXPECT_EQ(nullptr, GetCombinedEntry(nullptr));
    EXPECT_EQ(nullptr, GetTopFIEntryV());
    EXPECT_EQ(nullptr, GetTopHovexEntry());
    FixtopInstallHost(&host);
    EXPECT_NE(nullptr, Ref<FIEntry>::Adopt(GetCombinedEntry(nullptr)).Get());
}

TEST_F(Front, plain_top_is_late_bound) {
    auto top = Ref<FIEntry>::Adopt(GetTopHovexEntry());
    ASSERT_TRUE(top);
    EXPECT_EQ("Top", Read(*top, "id"));
    EXPECT_EQ("(NULL)", Read(*top, "status"));
    EXPECT_TRUE(Child(*top, "appModel"));
    EXPECT_FALSE(top->Subscribe(this, 1, [](void*, int) {}));
    FixtopNotify notify = nullptr;
    auto notified = Ref<FIEntry>::Adopt(GetTopFIEntry(&notify));
    EXPECT_NE(nullptr, notify);
    EXPECT_TRUE(notified->Subscribe(this, 1, [](void*, int) {}));
    EXPECT_TRUE(notified->Unsubscribe(this, 1));
    Withdraw("GetTopFIEntryV");
    EXPECT_EQ(nullptr, GetTopHovexEntry());
}

TEST_F(Front, solvers_come_by_kind) {
    for (int kind : {1, 4}) {
        std::unique_ptr<FISolver> solver(GetTopHovexSolver(nullptr, kind));
        ASSERT_TRUE(solver) << kind;
        EXPECT_EQ(kind, solver->Kind());
    }
    for (int kind : {-1, 0, 2, 3, 5}) EXPECT_EQ(nullptr, GetTopHovexSolver(nullptr, kind)) << kind;
}

// A context that says when it is gone.
class LastSeen final : public CountedFromZero<FIContext> {
 public:
    explicit LastSeen(bool& gone) : gone_(gone) {}
    ~LastSeen() override { gone_ = true; }
    FICursorBase* MakeCursor(int) override { return EmptyCursor(); }

 private:
    bool& gone_;
};

TEST_F(Front, set_top_attach_destroys_a_context_with_one_reference) {
    bool gone = false;
    auto context = Ref<FIContext>::Share(new LastSeen(gone));
    auto second = context;
    SetTopAttach(second.Detach(), true);
    EXPECT_FALSE(gone);
    SetTopAttach(context.Detach(), true);
    EXPECT_TRUE(gone);
}

TEST_F(Front, set_top_attach_gives_up_one_reference) {
    auto context = Ref<FIContext>::Adopt(GetTopHovexCtx(nullptr, "l", "m", "u", "n"));
    auto* top = static_cast<HAandCContext*>(context.Get());
    EXPECT_TRUE(SetTopAttach(context.Counted(), false));
    EXPECT_FALSE(top->FollowsAttachments());
    EXPECT_TRUE(LateSetTopAttach(context.Counted(), true));
    EXPECT_TRUE(top->FollowsAttachments());
    Withdraw("SetTopAttach");
    EXPECT_FALSE(LateSetTopAttach(context.Counted(), false));
    EXPECT_TRUE(top->FollowsAttachments());
    EXPECT_EQ(2, context->AddRef());
    context->Release();
    // With one reference it is destroyed: the leak check of a sanitized build sees it if not.
    EXPECT_TRUE(SetTopAttach(context.Detach(), false));
    EXPECT_FALSE(SetTopAttach(nullptr, true));
}

TEST_F(Front, attachments_of_the_top_reach_its_context) {
    auto top = Ref<FIEntry>::Adopt(GetCombinedEntry(nullptr));
    EXPECT_EQ("(NULL)", Write(*top, "attachments", FIValue::OfInt(0)));
    auto model = Child(*top, "appModel");
    auto streams = Child(*Child(*model, "FlowSheetObjects"), "Streams");
    auto& feed = host.main.Add("Feed", host.stream);
    (void)feed;
    EXPECT_EQ("INT 0", Read(*Child(*streams, "Feed"), "attachments"));
    Withdraw("SetTopAttach");
    EXPECT_EQ("Unable to set attachments", Write(*top, "attachments", FIValue::OfInt(1)));
}

// ---- Node and document objects ----

std::string g_made;

void* MakeNode(FIIteratorBase* iterator, void** out) {
    FIValue name;
    iterator->GetName(name);
    g_made = "node at " + name.ToText() + " depth " + std::to_string(iterator->Depth());
    *out = &g_made;
    return &g_made;
}

void* MakeDocument(FIEntry* top, void* session, const void* identity, void** out) {
    g_made = "document on " + NameOf(*top) + (session ? " of a case" : "") +
             (identity ? " with identity" : "");
    *out = &g_made;
    return &g_made;
}

int g_known;
void* FindKnown(void*, const void* identity, void** out) {
    *out = identity ? &g_known : nullptr;
    return *out;
}

TEST_F(Front, nodes_come_from_their_factories) {
    struct Case {
        void* (*make)(void*, void**);
        const char* factory;
    };
    for (const Case& each :
         {Case{GetQSINode, kNodeFactory}, Case{QSVGetTopNode, kAlternateNodeFactory}}) {
        void* out = this;
        EXPECT_EQ(nullptr, each.make(nullptr, &out)) << each.factory;
        EXPECT_EQ(nullptr, out);
        EXPECT_EQ(nullptr, each.make(nullptr, nullptr));
        Offer(each.factory, Pointer(MakeNode));
        EXPECT_EQ(&g_made, each.make(nullptr, &out));
        EXPECT_EQ(&g_made, out);
        EXPECT_EQ("node at Top depth 0", g_made);
        FixtopInstallHost(nullptr);
        EXPECT_EQ(nullptr, each.make(nullptr, &out));
        EXPECT_EQ(nullptr, out);
        FixtopInstallHost(&host);
    }
}

TEST_F(Front, documents_that_exist_are_found_before_one_is_made) {
    struct Case {
        void* (*get)(void*, const void*, void**);
        const char* finder;
        const char* factory;
    };
    const Case cases[] = {{GetDocumentAgg, kDocumentFinder, kDocumentFactory},
                          {QSVGetDocumentAgg, kAlternateDocumentFinder, kAlternateDocumentFactory}};
    for (const Case& each : cases) {
        void* out = this;
        EXPECT_EQ(nullptr, each.get(nullptr, this, &out)) << each.factory;
        EXPECT_EQ(nullptr, out);
        Offer(each.factory, Pointer(MakeDocument));
        EXPECT_EQ(&g_made, each.get(&host.simulation_case, this, &out));
        EXPECT_EQ("document on Top of a case with identity", g_made);
        g_made.clear();
        Offer(each.finder, Pointer(FindKnown));
        EXPECT_EQ(&g_known, each.get(nullptr, this, &out));
        EXPECT_EQ("", g_made);
        EXPECT_EQ(&g_made, each.get(nullptr, nullptr, &out));
        EXPECT_EQ("document on Top", g_made);
    }
}

// ---- Diagnostics and helpers ----

TEST_F(Front, the_log_lies_beside_the_document) {
    TemporaryFolder folder;
    host.simulation_case.document =
        host::FileName(host::Text(folder.File("plant.case")), host::Text());
    TestIterator();
    EXPECT_FALSE(folder.Has("QSI.log")) << "not resolved";
    Offer("TestIteratorX", Pointer(TestIteratorX));
    TestIterator();
    EXPECT_TRUE(folder.Has("QSI.log"));
    host.session.active = nullptr;
    TestIteratorX();
}

TEST_F(Front, the_log_is_named_and_told_to_a_listener) {
    const TemporaryFolder folder;
    std::string told;
    const auto note = [](void* owner, const char* text) {
        *static_cast<std::string*>(owner) += std::string(text) + "; ";
    };
    FixtopSetLog("own.log", note, &told);
    LogMessage("one");
    EXPECT_NE(std::string::npos, folder.Read("own.log").find("\n one\n"));
    FixtopSetLog(nullptr, nullptr, nullptr);
    LogMessage("two");
    EXPECT_NE(std::string::npos, folder.Read("own.log").find("\n one\n two\n")) << "the same file";
    EXPECT_EQ("one; ", told);
    SetLogFile(nullptr);
}

TEST_F(Front, paths_are_described_or_refused) {
    FIValue steps, error;
    EXPECT_TRUE(FixtopDescribePath(FIValue("a&[x=1].b(c)"), steps, error));
    EXPECT_EQ(R"("a"&["x"="1"]."b"("c"))", steps.ToText());
    EXPECT_TRUE(error.IsNull());
    EXPECT_FALSE(FixtopDescribePath(FIValue("a["), steps, error));
    EXPECT_TRUE(steps.IsNull());
    EXPECT_EQ(0u, error.ToText().find("Parse error, ")) << error.ToText();
}

TEST_F(Front, iterators_are_made_on_an_entry) {
    auto top = Ref<FIEntry>::Adopt(GetCombinedEntry(nullptr));
    auto it = Ref<FIIteratorBase>::Adopt(FixtopMakeIterator(top.Get(), false));
    EXPECT_TRUE(it->SeekPath(FIValue("appModel.FlowSheetObjects.Streams")));
    EXPECT_EQ(3, it->Depth());
    EXPECT_EQ(nullptr, FixtopMakeIterator(nullptr, false));
    EXPECT_STREQ("0.2.0", FixtopVersion());
}

TEST_F(Front, notification_is_taken_out_again) {
    SetTopNotify([](int) {}, nullptr);
    EXPECT_NE(nullptr, host.manager.callback);
    UnsetTopNotify(nullptr);
    EXPECT_EQ(nullptr, host.manager.callback);
    UnsetTopNotify(nullptr);
}

TEST_F(Front, the_seek_table_is_written_to_the_debug_output) {
    RecordSeek(7);
    const DebugCapture capture;
    printECounts();
    ASSERT_EQ(21u, capture.Pieces().size());
    EXPECT_EQ(" refcnt   number of seeks with\n", capture.Pieces()[0]);
    EXPECT_EQ("  7        " + std::to_string(SeekCount(7)) + "\n", capture.Pieces()[8]);
}

TEST_F(Front, automation_objects_are_counted_in_the_debug_output) {
    const auto top = Ref<FIEntry>::Adopt(GetCombinedEntry(nullptr));
    const auto place = Ref<FIIteratorBase>::Adopt(FixtopMakeIterator(top.Get(), false));
    const auto node =
        Ref<IQSINode>::Adopt(static_cast<IQSINode*>(MakeQSINode(place.Get(), nullptr)));
    const auto v_node =
        Ref<IQSINode>::Adopt(static_cast<IQSINode*>(GetTopVNode(place.Get(), nullptr)));
    const int total = CountOf(CountedClass::CQSINode).total;
    const DebugCapture capture;
    QSIPrint(2);
    ASSERT_EQ(6u, capture.Pieces().size());
    EXPECT_EQ("    CQSINode: count: 1, total: " + std::to_string(total) + "\n",
              capture.Pieces()[0]);
    EXPECT_EQ("    CQSINodeIterator: count: 0, total: 0\n", capture.Pieces()[1]);
    EXPECT_EQ("    CQSIAttribute: count: 0, total: 0\n", capture.Pieces()[2]);
    EXPECT_EQ("    CQSIAttributeIterator: count: 0, total: 0\n", capture.Pieces()[3]);
    EXPECT_EQ("    CQSICollection: count: 0, total: 0\n", capture.Pieces()[4]);
    EXPECT_EQ("    CQSICollectionIterator: count: 0, total: 0\n", capture.Pieces()[5]);
}

// ---- The built module ----

TEST(Module, exports_the_front_by_name) {
    const ModuleHandle module = LoadModule(FIXTOP_MODULE);
    ASSERT_NE(nullptr, module) << FIXTOP_MODULE;
    for (const char* name :
         {"GetTopHovexEntry",  "GetTopFIEntryV",    "GetTopFIEntry",   "GetTopHovexCtx",
          "GetTopHovexSolver", "GetCombinedEntry",  "GetQSINode",      "GetDocumentAgg",
          "QSVGetTopNode",     "QSVGetDocumentAgg", "SetTopNotify",    "UnsetTopNotify",
          "SetTopAttach",      "TestIterator",      "TestIteratorX",   "printECounts",
          "MakeQSINode",       "GetTopVNode",       "QSIPrint",        "FindDocumentAgg",
          "FindVDocumentAgg",  "MakeDocumentAgg",   "MakeVDocumentAgg"}) {
        EXPECT_NE(nullptr, FindFunction(module, name)) << name;
    }
    // Not unloaded: a loaded copy stays, as it does in a host.
}

}  // namespace

}  // namespace fixtop
