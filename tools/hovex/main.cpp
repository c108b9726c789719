// SPDX-License-Identifier: Apache-2.0
// hovex: the host of cases without a window, whose objects scripts of other processes hold.
//
// One process serves one case, as a simulator does: whoever creates a second one gets a process of
// its own, and what becomes of that touches no other.

#include <windows.h>
// The component services follow the base header.
#include <ole2.h>
#include <shellapi.h>

#include <string>
#include <vector>

#include "class_factory.h"
#include "console.h"
#include "dispatch/text.h"
#include "fixtop/fixtop.h"
#include "process_life.h"
#include "registration.h"

namespace fixtop::hovex {

namespace {

enum ExitCode : int { kDone = 0, kFailed = 1, kUsage = 2 };

constexpr char kHelp[] =
    "usage: hovex [/regserver | /unregserver | /help]\r\n"
    "\r\n"
    "  /regserver    let scripts create Fixtop.Case by the name of this program's place\r\n"
    "  /unregserver  forget it again\r\n"
    "  /embedding    serve one case for the system, which starts it so\r\n"
    "  /help         this text\r\n"
    "\r\n"
    "Without any of them it serves one case to whoever creates it first, and ends with its last\r\n"
    "object.";

// The system gives up after a while too, and then nobody comes any more.
constexpr unsigned kPatienceMs = 120'000;

int Failed(const std::string& what, HRESULT result) {
    char code[16];
    wsprintfA(code, "0x%08X", static_cast<unsigned>(result));
    Complain("hovex: " + what + " (" + code + ")");
    return kFailed;
}

int ServeFor(unsigned patience_ms) {
    FixtopSetLog("", nullptr, nullptr);
    DWORD cookie = 0;
    const HRESULT known = CoRegisterClassObject(kCaseClass, &CaseFactory(), CLSCTX_LOCAL_SERVER,
                                                REGCLS_SINGLEUSE, &cookie);
    if (FAILED(known)) return Failed("the system does not take the class", known);
    ProcessLife::Loop(patience_ms);
    CoRevokeClassObject(cookie);
    return kDone;
}

int ServeInApartment(unsigned patience_ms) {
    const HRESULT entered = OleInitialize(nullptr);
    if (FAILED(entered)) return Failed("component services are not there", entered);
    const int code = ServeFor(patience_ms);
    OleUninitialize();
    return code;
}

int Serve() {
    return ServeInApartment(0);
}

int ServeSystem() {
    return ServeInApartment(kPatienceMs);
}

int Done(const std::string& problem) {
    if (problem.empty()) return kDone;
    Complain("hovex: " + problem);
    return kFailed;
}

int RegisterServer() {
    return Done(Register());
}

int UnregisterServer() {
    return Done(Unregister());
}

int Help() {
    Say(kHelp);
    return kDone;
}

struct Word {
    const char* name;
    int (*run)();
};
constexpr Word kWords[] = {
    {"regserver", RegisterServer},
    {"unregserver", UnregisterServer},
    {"embedding", ServeSystem},
    {"help", Help},
    {"?", Help},
};

std::vector<std::string> Arguments() {
    int count = 0;
    wchar_t** const values = CommandLineToArgvW(GetCommandLineW(), &count);
    std::vector<std::string> arguments;
    for (int i = 1; values && i < count; ++i) arguments.push_back(Utf8(values[i]));
    LocalFree(values);
    return arguments;
}

int Wrong(const std::string& argument) {
    Complain("hovex: unknown argument: " + argument + "\r\n" + kHelp);
    return kUsage;
}

int Run(const std::vector<std::string>& arguments) {
    if (arguments.empty()) return Serve();
    if (arguments.size() > 1) return Wrong(arguments[1]);
    const std::string& argument = arguments[0];
    const bool is_word = argument.starts_with('/') || argument.starts_with('-');
    for (const Word& word : kWords) {
        if (is_word && SameName(argument.substr(1), word.name)) return word.run();
    }
    return Wrong(argument);
}

}  // namespace

}  // namespace fixtop::hovex

int WINAPI WinMain(HINSTANCE, HINSTANCE, char*, int) try {
    return fixtop::hovex::Run(fixtop::hovex::Arguments());
} catch (const std::exception& error) {
    fixtop::hovex::Complain(std::string("hovex: ") + error.what());
    return 1;
}
