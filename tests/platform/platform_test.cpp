// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <filesystem>
#include <string>

#include "platform/computer_name.h"
#include "platform/debug_output.h"
#include "platform/file_search.h"
#include "platform/modules.h"
#include "platform/resources.h"
#include "platform/task_memory.h"
#include "support/debug_capture.h"
#include "support/sample_export.h"
#include "support/temporary_folder.h"

namespace fixtop {

// Exported by this program, which also holds the code of the platform room.
SAMPLE_EXPORT int FixtopSampleExport() {
    return 42;
}

#ifndef _WIN32
// The system's answer, given by the test where it wants one.
namespace {
const char* g_host_name = nullptr;
}

extern "C" int gethostname(char* name, std::size_t size) noexcept {
    if (!g_host_name) return -1;
    std::snprintf(name, size, "%s", g_host_name);
    return 0;
}
#endif

namespace {

#ifdef _WIN32
constexpr char kSystemLibrary[] = "kernel32.dll";
constexpr char kSystemFunction[] = "GetTickCount";
constexpr char kBesideFile[] = "fixtop_beside.dll";
constexpr bool kDebugOutputIsShown = false;
#else
constexpr char kSystemLibrary[] = "libc.so.6";
constexpr char kSystemFunction[] = "strlen";
constexpr char kBesideFile[] = "libfixtop_beside.so";
constexpr bool kDebugOutputIsShown = true;
#endif

void* PointerOf(int (*function)()) {
    return reinterpret_cast<void*>(function);
}
int One() {
    return 1;
}
int Two() {
    return 2;
}

// A module system that knows one module and counts the calls.
class FakeSystem final : public ModuleSystem {
 public:
    ModuleHandle FindLoaded(const char* name) override { return Find(name); }
    ModuleHandle Load(const char* name) override { return Find(name); }
    void* Function(ModuleHandle module, const char* name) override {
        ++calls;
        return module == this && std::strcmp(name, "Below") == 0 ? this : nullptr;
    }

    int calls = 0;

 private:
    ModuleHandle Find(const char* name) {
        ++calls;
        return std::strcmp(name, "below.dll") == 0 ? this : nullptr;
    }
};

TEST(OfferedModules, stand_before_the_system) {
    FakeSystem system;
    OfferedModules modules(system);
    EXPECT_EQ(modules.FindLoaded("hovex.exe"), nullptr);
    modules.Offer("hovex.exe", {{"GetOne", PointerOf(One)}, {"GetTwo", PointerOf(Two)}});
    system.calls = 0;
    const ModuleHandle host = modules.FindLoaded("hovex.exe");
    ASSERT_NE(host, nullptr);
    EXPECT_EQ(modules.FindLoaded("HOVEX.EXE"), host);
    EXPECT_EQ(modules.Load("hovex.exe"), host);
    EXPECT_EQ(modules.Function(host, "GetOne"), PointerOf(One));
    EXPECT_EQ(modules.Function(host, "GetTwo"), PointerOf(Two));
    EXPECT_EQ(modules.Function(host, "getone"), nullptr) << "functions distinguish case";
    EXPECT_EQ(modules.Function(host, "Other"), nullptr);
    EXPECT_EQ(system.calls, 0);
}

TEST(OfferedModules, pass_other_names_on) {
    FakeSystem system;
    OfferedModules modules(system);
    modules.Offer("hovex.exe", {});
    EXPECT_EQ(modules.FindLoaded("below.dll"), &system);
    EXPECT_EQ(modules.Load("below.dll"), &system);
    EXPECT_EQ(modules.Function(&system, "Below"), &system);
    EXPECT_EQ(modules.Function(&system, "Other"), nullptr);
    EXPECT_EQ(modules.Load("other.dll"), nullptr);
    EXPECT_EQ(modules.Function(nullptr, "Below"), nullptr);
}

TEST(OfferedModules, later_offers_add_and_replace) {
    FakeSystem system;
    OfferedModules modules(system);
    modules.Offer("a.dll", {{"F", PointerOf(One)}});
    const ModuleHandle module = modules.FindLoaded("a.dll");
    modules.Offer("A.dll", {{"F", PointerOf(Two)}, {"G", PointerOf(One)}});
    EXPECT_EQ(modules.FindLoaded("a.dll"), module);
    EXPECT_EQ(modules.Function(module, "F"), PointerOf(Two));
    EXPECT_EQ(modules.Function(module, "G"), PointerOf(One));
    modules.Withdraw("a.DLL");
    EXPECT_EQ(modules.FindLoaded("a.dll"), nullptr);
}

// Counts what is given back.
class UnloadingSystem final : public ModuleSystem {
 public:
    ModuleHandle FindLoaded(const char*) override { return this; }
    ModuleHandle Load(const char*) override { return this; }
    void* Function(ModuleHandle, const char*) override { return nullptr; }
    void Unload(ModuleHandle module) override { unloaded += module == this ? 1 : 100; }

    int unloaded = 0;
};

TEST(OfferedModules, only_modules_of_the_system_are_given_back) {
    UnloadingSystem system;
    OfferedModules modules(system);
    modules.Offer("a.dll", {});
    EXPECT_TRUE(modules.Offers("A.DLL"));
    EXPECT_FALSE(modules.Offers("b.dll")) << "the system has it";
    modules.Unload(modules.Load("a.dll"));
    modules.Unload(nullptr);
    EXPECT_EQ(system.unloaded, 0);
    EXPECT_TRUE(modules.Offers("a.dll"));
    modules.Unload(modules.Load("b.dll"));
    EXPECT_EQ(system.unloaded, 1);
}

TEST(ProcessModules, find_functions_of_a_system_library) {
    const ModuleHandle library = FindLoadedModule(kSystemLibrary);
    ASSERT_NE(library, nullptr);
    EXPECT_EQ(LoadModule(kSystemLibrary), library);
    EXPECT_NE(FindFunction(library, kSystemFunction), nullptr);
    EXPECT_EQ(FindFunction(library, "NoSuchFunctionAnywhere"), nullptr);
}

TEST(ProcessModules, unknown_names_give_null) {
    for (const char* name : {"", "no_such_module.dll", "hovex.exe", "rifmos.exe"}) {
        EXPECT_EQ(FindLoadedModule(name), nullptr) << name;
        EXPECT_EQ(LoadModule(name), nullptr) << name;
    }
    EXPECT_EQ(FindFunction(nullptr, kSystemFunction), nullptr);
}

#ifndef _WIN32
TEST(ProcessModules, own_name_is_the_module_that_holds_this_code) {
    for (const char* name : {"fixtop.dll", "FIXTOP.DLL"}) {
        const ModuleHandle own = LoadModule(name);
        ASSERT_NE(own, nullptr);
        EXPECT_EQ(FindLoadedModule(name), own);
        EXPECT_EQ(FindFunction(own, "FixtopSampleExport"), PointerOf(FixtopSampleExport));
    }
}

#endif

// The sample's file by the name under which the module's own files are asked for: x.dll.
std::string SampleName() {
    std::filesystem::path path = FIXTOP_SAMPLE_MODULE;
#ifndef _WIN32
    path.replace_filename(path.stem().string().substr(3) + ".dll");
#endif
    return path.string();
}

TEST(ProcessModules, load_a_library_and_find_its_functions) {
    const std::string name = SampleName();
    EXPECT_EQ(FindLoadedModule(name.c_str()), nullptr) << "not loaded yet";
    const ModuleHandle module = LoadModule(name.c_str());
    ASSERT_NE(module, nullptr) << name;
    EXPECT_EQ(FindLoadedModule(name.c_str()), module);
    EXPECT_EQ(LoadModule(FIXTOP_SAMPLE_MODULE), module);
    const auto function =
        reinterpret_cast<int (*)()>(FindFunction(module, "FixtopSampleModuleExport"));
    ASSERT_NE(function, nullptr);
    EXPECT_EQ(function(), 17);
    UnloadModule(module);
    EXPECT_EQ(FindLoadedModule(name.c_str()), module) << "it was loaded twice";
    UnloadModule(module);
    EXPECT_EQ(FindLoadedModule(name.c_str()), nullptr) << "given back";
}

TEST(ProcessModules, plain_names_are_sought_beside_this_module) {
    const std::filesystem::path beside = std::filesystem::path(ProgramFolder()) / kBesideFile;
    std::filesystem::copy_file(FIXTOP_SAMPLE_MODULE, beside,
                               std::filesystem::copy_options::overwrite_existing);
    const ModuleHandle module = LoadModule("fixtop_beside.dll");
    EXPECT_NE(FindFunction(module, "FixtopSampleModuleExport"), nullptr);
    if (module != nullptr) UnloadModule(module);
    std::filesystem::remove(beside);
}

TEST(ProcessModules, no_module_comes_out_of_the_working_directory) {
    const TemporaryFolder folder;
    std::filesystem::create_directory("sub");
    std::filesystem::copy_file(FIXTOP_SAMPLE_MODULE, kBesideFile);
    std::filesystem::copy_file(FIXTOP_SAMPLE_MODULE, std::string("sub/") + kBesideFile);
    for (const char* name : {"fixtop_beside.dll", "./fixtop_beside.dll", "sub/fixtop_beside.dll"}) {
        EXPECT_EQ(LoadModule(name), nullptr) << name;
    }
    const std::string path = folder.File("fixtop_beside.dll");
    const ModuleHandle module = LoadModule(path.c_str());
    EXPECT_NE(FindFunction(module, "FixtopSampleModuleExport"), nullptr) << "a full path";
    if (module != nullptr) UnloadModule(module);
}

TEST(ProcessModules, own_name_in_a_library_is_that_library) {
    const ModuleHandle module = LoadModule(SampleName().c_str());
    const auto lookup =
        reinterpret_cast<void* (*)(const char*)>(FindFunction(module, "FixtopSampleModuleLookup"));
    ASSERT_NE(lookup, nullptr);
    void* const function = FindFunction(module, "FixtopSampleModuleExport");
    ASSERT_NE(function, nullptr);
    EXPECT_EQ(lookup("FixtopSampleModuleExport"), function);
    EXPECT_EQ(lookup("FixtopSampleExport"), nullptr) << "a function of the program";
}

TEST(ProcessModules, accept_offers) {
    OfferModule("hovex.exe", {{"GetOne", PointerOf(One)}});
    EXPECT_EQ(FindFunction(FindLoadedModule("hovex.exe"), "GetOne"), PointerOf(One));
    WithdrawModule("hovex.exe");
    EXPECT_EQ(FindLoadedModule("hovex.exe"), nullptr);
}

TEST(DebugOutput, goes_to_the_sink_that_is_set) {
    {
        const DebugCapture capture;
        WriteDebugLine("one\n");
        WriteDebugLine("two");
        EXPECT_EQ(capture.Pieces(), (std::vector<std::string>{"one\n", "two"}));
        const DebugSink former = SetDebugSink(nullptr);
        testing::internal::CaptureStderr();
        WriteDebugLine("to the system\n");
        EXPECT_EQ(testing::internal::GetCapturedStderr(),
                  kDebugOutputIsShown ? "to the system\n" : "");
        EXPECT_EQ(SetDebugSink(former), nullptr);
        EXPECT_EQ(capture.Pieces().size(), 2u);
    }
    EXPECT_EQ(SetDebugSink(nullptr), nullptr) << "the capture has put back what it found";
}

#ifdef _WIN32
TEST(ComputerName, has_at_most_fifteen_characters) {
    const std::string name = ComputerName();
    EXPECT_FALSE(name.empty());
    EXPECT_LE(name.size(), 15u);
    EXPECT_EQ(name, ComputerName());
}
#else
TEST(ComputerName, is_the_systems_cut_to_fifteen_characters) {
    struct {
        const char* system;
        const char* name;
    } rows[] = {{"plant", "plant"},
                {"", ""},
                {"fourteen-chars", "fourteen-chars"},
                {"fifteen--chars.", "fifteen--chars."},
                {"sixteen---chars.", "sixteen---chars"},
                {"a.computer.with.a.very.long.name", "a.computer.with"},
                {nullptr, ""}};
    for (const auto& row : rows) {
        g_host_name = row.system;
        EXPECT_EQ(ComputerName(), row.name);
    }
}
#endif

TEST(TaskMemory, holds_a_copy) {
    const char source[] = "text";
    char* copy = CopyToTaskMemory(source);
    ASSERT_NE(copy, nullptr);
    EXPECT_NE(copy, source);
    EXPECT_STREQ(copy, "text");
    FreeTaskMemory(copy);
    copy = CopyToTaskMemory({});
    EXPECT_STREQ(copy, "");
    FreeTaskMemory(copy);
    void* block = AllocateTaskMemory(1000);
    ASSERT_NE(block, nullptr);
    std::memset(block, 1, 1000);
    FreeTaskMemory(block);
    FreeTaskMemory(nullptr);
}

TEST(FileSearch, finds_files_of_the_working_directory) {
    const TemporaryFolder folder;
    const std::string name = "fixtop_search.xml";
    EXPECT_EQ(FindFileOnPath(name), "");
    folder.Write(name, "x");
    const std::string found = FindFileOnPath(name);
    ASSERT_NE(found, "");
    EXPECT_TRUE(std::filesystem::path(found).is_absolute()) << found;
    EXPECT_TRUE(std::filesystem::equivalent(found, folder.File(name)));
    EXPECT_EQ(FindFileOnPath(folder.File(name)), folder.File(name)) << "an absolute name";
    EXPECT_EQ(FindFileOnPath(folder.File("other.xml")), "");
    EXPECT_EQ(FindFileOnPath(""), "");
    EXPECT_EQ(FindFileOnPath(folder.Path().string()), "") << "a folder is no file";
    EXPECT_TRUE(FileExists(folder.File(name)));
    EXPECT_FALSE(FileExists(folder.File("other.xml")));
    EXPECT_FALSE(FileExists(folder.Path().string())) << "a folder is no file";
    EXPECT_FALSE(FileExists(""));
    EXPECT_FALSE(FileExists("\xff\xfe")) << "no UTF-8";
}

TEST(FileSearch, prefers_the_folder_of_the_program) {
    const std::filesystem::path program = ProgramFolder();
    ASSERT_TRUE(std::filesystem::is_directory(program)) << program;
    const TemporaryFolder folder;
    const std::string name = "fixtop_search_order.xml";
    folder.Write(name, "working directory");
    std::ofstream(program / name) << "program";
    const std::string found = FindFileOnPath(name);
    EXPECT_TRUE(std::filesystem::equivalent(found, program / name)) << found;
    std::filesystem::remove(program / name);
    EXPECT_TRUE(std::filesystem::equivalent(FindFileOnPath(name), folder.File(name)));
}

TEST(Resources, are_found_by_name_in_registered_tables) {
    static constexpr CompiledResource kFirst[] = {{"Sample.xml", "<a/>"}, {"other.xml", ""}};
    static constexpr CompiledResource kSecond[] = {{"sample.XML", "<b/>"}};
    static CompiledResources first(kFirst), second(kSecond);
    EXPECT_EQ(FindCompiledResource("Sample.xml").data(), nullptr);
    RegisterResources(first);
    EXPECT_EQ(FindCompiledResource("Sample.xml"), "<a/>");
    EXPECT_EQ(FindCompiledResource("SAMPLE.xml"), "<a/>");
    EXPECT_NE(FindCompiledResource("other.xml").data(), nullptr);
    EXPECT_EQ(FindCompiledResource("other.xm").data(), nullptr);
    RegisterResources(second);
    EXPECT_EQ(FindCompiledResource("Sample.xml"), "<b/>") << "the last table wins";
}

}  // namespace

}  // namespace fixtop
