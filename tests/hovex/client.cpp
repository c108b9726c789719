// SPDX-License-Identifier: Apache-2.0
// A program of another process, by component services alone: each word does one thing with
// Fixtop.Case, or with what stands around it, and prints what came of it.

#include <windows.h>
// The component services follow the base header.
#include <ole2.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace {

constexpr DWORD kWaitMs = 60'000;

void Check(bool good, const char* what, long code = 0) {
    if (good) return;
    std::printf("failed: %s (0x%08lX)\n", what, static_cast<unsigned long>(code));
    std::fflush(stdout);
    std::exit(1);
}

// A VARIANT that frees what it leads to.
class Value {
 public:
    Value() { VariantInit(&held); }
    explicit Value(const wchar_t* text) : Value() {
        held.vt = VT_BSTR;
        held.bstrVal = SysAllocString(text);
    }
    explicit Value(int number) : Value() {
        held.vt = VT_I4;
        held.lVal = number;
    }
    Value(Value&& other) noexcept : held(other.held) { VariantInit(&other.held); }
    Value& operator=(Value&&) = delete;
    ~Value() { VariantClear(&held); }

    VARIANT held;
};

struct Outcome {
    HRESULT result = S_OK;
    Value value;
    EXCEPINFO told = {};
};

DISPID IdOf(IDispatch* object, const wchar_t* name) {
    DISPID id = DISPID_UNKNOWN;
    auto* text = const_cast<wchar_t*>(name);
    object->GetIDsOfNames(IID_NULL, &text, 1, 0, &id);
    return id;
}

Outcome Invoke(IDispatch* object, DISPID id, WORD flags, std::vector<Value> arguments = {}) {
    std::vector<VARIANT> given;
    for (auto each = arguments.rbegin(); each != arguments.rend(); ++each) {
        given.push_back(each->held);
    }
    DISPID put = DISPID_PROPERTYPUT;
    const bool is_put = flags == DISPATCH_PROPERTYPUT;
    DISPPARAMS parameters = {given.data(), is_put ? &put : nullptr, static_cast<UINT>(given.size()),
                             is_put ? 1u : 0u};
    Outcome outcome;
    outcome.result = object->Invoke(id, IID_NULL, 0, flags, &parameters, &outcome.value.held,
                                    &outcome.told, nullptr);
    return outcome;
}

template <class... Arguments>
std::vector<Value> Given(Arguments... arguments) {
    std::vector<Value> given;
    (given.emplace_back(arguments), ...);
    return given;
}

// What a member answers; the program ends when it fails.
Value Get(IDispatch* object, const wchar_t* name, std::vector<Value> arguments = {}) {
    Outcome outcome = Invoke(object, IdOf(object, name), DISPATCH_METHOD | DISPATCH_PROPERTYGET,
                             std::move(arguments));
    Check(SUCCEEDED(outcome.result), "a call", outcome.result);
    return std::move(outcome.value);
}

IDispatch* Object(const Value& value) {
    Check(value.held.vt == VT_DISPATCH && value.held.pdispVal, "an object");
    return value.held.pdispVal;
}

double Number(const Value& value) {
    Check(value.held.vt == VT_R8, "a number", value.held.vt);
    return value.held.dblVal;
}

IDispatch* CreateCase() {
    CLSID id;
    HRESULT result = CLSIDFromProgID(L"Fixtop.Case", &id);
    Check(SUCCEEDED(result), "the name", result);
    void* made = nullptr;
    result = CoCreateInstance(id, nullptr, CLSCTX_LOCAL_SERVER, IID_IDispatch, &made);
    Check(SUCCEEDED(result), "the object", result);
    return static_cast<IDispatch*>(made);
}

DWORD ProcessOf(IDispatch* open_case) {
    const Value id = Get(open_case, L"ProcessId");
    return static_cast<DWORD>(id.held.lVal);
}

double FeedTemperature(IDispatch* open_case) {
    const Value node =
        Get(open_case, L"Find", Given(L"appModel.FlowSheetObjects.Streams.Raw Gas.Temperature"));
    return Number(Get(Object(node), L"ValueIn", Given(L"K")));
}

bool Ends(DWORD process, DWORD patience_ms) {
    HANDLE handle = OpenProcess(SYNCHRONIZE, FALSE, process);
    if (!handle) return true;
    const bool ended = WaitForSingleObject(handle, patience_ms) == WAIT_OBJECT_0;
    CloseHandle(handle);
    return ended;
}

// Objects are held and given back; the host ends with the last one, and not before.
void Drop() {
    IDispatch* first = CreateCase();
    const DWORD process = ProcessOf(first);
    Get(first, L"Open", Given(L"demo"));
    {
        const Value node = Get(first, L"Raw");
        first->Release();
        const Value name = Get(Object(node), L"Name");
        std::printf("without its case: %d\n", name.held.vt == VT_BSTR);
        std::printf("runs: %d\n", !Ends(process, 500));
    }
    std::printf("ended: %d\n", Ends(process, kWaitMs));
}

// Nothing is given back: the process is gone in the middle.
void Die() {
    IDispatch* first = CreateCase();
    Get(first, L"Open", Given(L"demo"));
    const Value node = Get(first, L"Raw");
    std::printf("%lu\n", ProcessOf(first));
    std::fflush(stdout);
    TerminateProcess(GetCurrentProcess(), 3);
}

// Another client dies while this one holds a case.
void Survive(const char* own_file) {
    IDispatch* held = CreateCase();
    Get(held, L"Open", Given(L"demo"));
    std::printf("before: %g\n", FeedTemperature(held));
    std::fflush(stdout);
    STARTUPINFOA start = {};
    start.cb = sizeof start;
    PROCESS_INFORMATION other = {};
    std::string line = '"' + std::string(own_file) + "\" die";
    Check(CreateProcessA(nullptr, line.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &start,
                         &other),
          "the other client");
    WaitForSingleObject(other.hProcess, kWaitMs);
    DWORD code = 0;
    GetExitCodeProcess(other.hProcess, &code);
    std::printf("the other one died: %lu\n", code);
    std::printf("after: %g\n", FeedTemperature(held));
    IDispatch* next = CreateCase();
    Get(next, L"Open", Given(L"demo"));
    std::printf("a new one: %g, in a process of its own: %d\n", FeedTemperature(next),
                ProcessOf(next) != ProcessOf(held));
    next->Release();
    held->Release();
}

struct OtherThread {
    IStream* stream = nullptr;
    double read = 0;
};

DWORD WINAPI ReadThere(void* data) {
    auto& other = *static_cast<OtherThread*>(data);
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    void* proxy = nullptr;
    const HRESULT opened = CoGetInterfaceAndReleaseStream(other.stream, IID_IDispatch, &proxy);
    Check(SUCCEEDED(opened), "the other thread's proxy", opened);
    other.read = FeedTemperature(static_cast<IDispatch*>(proxy));
    static_cast<IDispatch*>(proxy)->Release();
    CoUninitialize();
    return 0;
}

// A second apartment of this process calls the same object by a proxy of its own.
void Threads() {
    IDispatch* open_case = CreateCase();
    Get(open_case, L"Open", Given(L"demo"));
    OtherThread other;
    HRESULT result = CoMarshalInterThreadInterfaceInStream(IID_IDispatch, open_case, &other.stream);
    Check(SUCCEEDED(result), "marshalling", result);
    HANDLE thread = CreateThread(nullptr, 0, ReadThere, &other, 0, nullptr);
    // Calls that come back to this apartment are let in.
    DWORD which = 0;
    result = CoWaitForMultipleHandles(0, kWaitMs, 1, &thread, &which);
    Check(SUCCEEDED(result), "waiting", result);
    CloseHandle(thread);
    std::printf("on another thread: %g, on this one: %g\n", other.read, FeedTemperature(open_case));
    open_case->Release();
}

// What each member has to be asked for, and what it answers when it is asked wrongly.
void Calls() {
    IDispatch* open_case = CreateCase();
    const auto code = [](const Outcome& outcome) {
        return static_cast<unsigned long>(static_cast<ULONG>(outcome.result));
    };
    std::printf("ids: %d %d\n", IdOf(open_case, L"Open") == IdOf(open_case, L"oPEN"),
                IdOf(open_case, L"Opens") == DISPID_UNKNOWN);
    const DISPID open = IdOf(open_case, L"Open");
    std::printf("count: %08lX\n", code(Invoke(open_case, open, DISPATCH_METHOD)));
    std::printf("type: %08lX\n", code(Invoke(open_case, open, DISPATCH_METHOD, Given(5))));
    std::printf("no member: %08lX\n", code(Invoke(open_case, 4711, DISPATCH_METHOD)));
    std::printf("no store: %08lX\n",
                code(Invoke(open_case, open, DISPATCH_PROPERTYPUT, Given(L"demo"))));
    const Outcome missing = Invoke(open_case, open, DISPATCH_METHOD, Given(L"Z:\\no\\such.json"));
    std::printf("exception: %08lX %08lX %ls\n", code(missing),
                static_cast<unsigned long>(static_cast<ULONG>(missing.told.scode)),
                missing.told.bstrSource);
    UINT infos = 7;
    ITypeInfo* info = nullptr;
    const HRESULT counted = open_case->GetTypeInfoCount(&infos);
    std::printf("type information: %d %u\n", SUCCEEDED(counted), infos);
    std::printf("none: %d\n", FAILED(open_case->GetTypeInfo(0, 0, &info)) && !info);
    open_case->Release();
}

// The walk behind "For Each".
void Walk() {
    IDispatch* open_case = CreateCase();
    Get(open_case, L"Open", Given(L"demo"));
    {
        const Value flowsheet = Get(open_case, L"Find", Given(L"appModel.FlowSheetObjects"));
        const Value list = Get(Object(flowsheet), L"Children");
        const Outcome walk = Invoke(Object(list), DISPID_NEWENUM, DISPATCH_PROPERTYGET);
        void* found = nullptr;
        Check(walk.value.held.vt == VT_UNKNOWN, "a walk", walk.result);
        walk.value.held.punkVal->QueryInterface(IID_IEnumVARIANT, &found);
        auto* each = static_cast<IEnumVARIANT*>(found);
        Value first, second, third;
        ULONG count = 0;
        HRESULT result = each->Next(1, &first.held, &count);
        const Value name = Get(Object(first), L"Name");
        std::printf("first: %ls %ld %lu\n", name.held.bstrVal, result, count);
        IEnumVARIANT* copy = nullptr;
        each->Clone(&copy);
        result = each->Skip(3);
        std::printf("skip: %ld\n", result);
        result = each->Next(1, &second.held, &count);
        std::printf("end: %ld %lu\n", result, count);
        result = copy->Next(1, &third.held, &count);
        const Value of_copy = Get(Object(third), L"Name");
        std::printf("copy: %ls\n", of_copy.held.bstrVal);
        result = each->Reset();
        std::printf("reset: %ld\n", result);
        result = each->Skip(5);
        std::printf("beyond: %ld\n", result);
        copy->Release();
        each->Release();
    }
    open_case->Release();
}

// The text of a file, with a terminating zero or without; without a file the clipboard is emptied.
// It stays as long as this program, which waits for the end of its input.
void Clip(const char* file, bool is_terminated) {
    Check(OpenClipboard(nullptr), "the clipboard", static_cast<long>(GetLastError()));
    EmptyClipboard();
    if (file) {
        std::ifstream stream(file, std::ios::binary);
        std::string text{std::istreambuf_iterator<char>(stream), {}};
        if (is_terminated) text.push_back('\0');
        // An empty block can't be had: it has one zero then.
        HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, text.empty() ? 1 : text.size());
        std::copy(text.begin(), text.end(), static_cast<char*>(GlobalLock(block)));
        GlobalUnlock(block);
        SetClipboardData(RegisterClipboardFormatA("QSI Format"), block);
    }
    CloseClipboard();
    std::printf("there\n");
    std::fflush(stdout);
    std::getchar();
}

// Whether the host leads names of providers on to the module beside it.
void Providers(const char* host_file, const char* module_file, int count, char** names) {
    HMODULE module = LoadLibraryExA(module_file, nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
    Check(module != nullptr, "the module", static_cast<long>(GetLastError()));
    HMODULE host = LoadLibraryExA(host_file, nullptr, DONT_RESOLVE_DLL_REFERENCES);
    Check(host != nullptr, "the host", static_cast<long>(GetLastError()));
    for (int i = 0; i < count; ++i) {
        const FARPROC of_host = GetProcAddress(host, names[i]);
        std::printf("%s: %d\n", names[i], of_host && of_host == GetProcAddress(module, names[i]));
    }
}

void End(DWORD process) {
    HANDLE handle = OpenProcess(PROCESS_TERMINATE | SYNCHRONIZE, FALSE, process);
    std::printf("was there: %d\n", handle != nullptr);
    if (!handle) return;
    TerminateProcess(handle, 0);
    WaitForSingleObject(handle, kWaitMs);
    CloseHandle(handle);
}

}  // namespace

int main(int count, char** values) {
    const std::string word = count > 1 ? values[1] : "";
    Check(SUCCEEDED(OleInitialize(nullptr)), "component services");
    if (word == "drop") Drop();
    if (word == "die") Die();
    if (word == "survive") Survive(values[0]);
    if (word == "threads") Threads();
    if (word == "calls") Calls();
    if (word == "walk") Walk();
    if (word == "clip") Clip(count > 2 ? values[2] : nullptr, count > 3);
    if (word == "providers") Providers(values[2], values[3], count - 4, values + 4);
    if (word == "end") End(static_cast<DWORD>(std::strtoul(values[2], nullptr, 10)));
    OleUninitialize();
    return 0;
}
