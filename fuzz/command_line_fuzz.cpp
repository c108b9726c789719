// SPDX-License-Identifier: Apache-2.0
// A line as it is typed behind the program's name or at the shell's prompt, and behind it the lines
// of standard input. Whatever they are, the program ends with one of its statuses and writes UTF-8
// without control characters. Files are left where they are: each run has a folder of its own, and
// lines that name one elsewhere are not run.

#include <algorithm>
#include <iostream>
#include <sstream>

#include "check.h"
#include "fuzzed_module.h"
#include "line_text.h"
#include "shell_line.h"
#include "support/temporary_folder.h"
#include "terminal.h"
#include "word.h"

namespace fixtop {

namespace {

constexpr std::size_t kMostBytes = 2000;
// A folder that is not there, with which the host's own paths begin.
constexpr std::string_view kHostRoot = "/FlowSht.1/";

// What lies in the folder of each run: a case and a view of it that open at once, where the
// built-in ones take most of a run's time.
struct SmallFile {
    const char* name;
    const char* text;
};
constexpr SmallFile kSmallFiles[] = {
    {"c.json", R"({"format": "casehost case", "version": 1, "name": "small", "title": "",
  "source": "own", "recorded": true, "online": true, "unitSet": 0, "flowsheet": {"objects": [
  {"name": "Feed 1", "type": "MaterialStreamObject", "status": "ok", "variables": {
    "Temperature": {"spec": {"kind": "real", "quantity": "Temperature"}, "value": 25,
                    "state": "specified"},
    "Pressure": {"spec": {"kind": "real", "quantity": "Pressure"}, "value": 100,
                 "state": "calculated"},
    "Notes": {"spec": {"kind": "text"}, "value": "a\u001b\tb\n\u009b\\n", "state": "specified"},
    "Mode": {"spec": {"kind": "enumeration", "options": ["Fast", "Slow"]}, "value": "Slow",
             "state": "specified"},
    "Fractions": {"spec": {"kind": "real", "dimensions": [{"count": 2, "naming": "text",
                  "labels": ["Methane", "t\tb"]}]}, "values": [0.5, 0.5], "state": "specified"}}},
  {"name": "E\u001b.x", "type": "MaterialStreamObject", "variables": {}},
  {"name": "Mixer 1", "type": "MixerOpObject", "status": "warning", "variables": {
    "Inlet": {"spec": {"kind": "attachment"}, "value": "Feed 1", "state": "specified"}}}]}})"},
    {"l.xml", R"(<QZClassLibrary><Class Name="QSISimulation"/><Class Name="F"/><Class Name="S"/>
<Enumeration Name="M"><Option Name="Slow"/></Enumeration><ClassAttributes Name="QSISimulation">
<Attribute Name="Flowsheet" Type="Object"><ClassName>F</ClassName></Attribute></ClassAttributes>
<ClassAttributes Name="F"><Attribute Name="Stream" Type="Object" Multiplicity="n">
<ClassName>S</ClassName><CustomMetaData>Key~Name~</CustomMetaData></Attribute></ClassAttributes>
<ClassAttributes Name="S"><Attribute Name="Name" Type="String"/><Attribute Name="Temperature"
Type="Real"/><Attribute Name="Mode" Type="Enumeration"><EnumName>M</EnumName></Attribute>
</ClassAttributes></QZClassLibrary>)"},
    {"m.xml", R"(<CCDMMapFile><TranslateName>Hovex</TranslateName><Linkage><DLL>fixtop.dll</DLL>
</Linkage><Translate Type="Function">Find1</Translate><TopNode FunctionName="GetTopHovexEntry"/>
<Class Name="QSISimulation"><Attribute Name="Flowsheet"><Translate Type="Map">FlowSheetObjects
</Translate></Attribute></Class><Class Name="F"><Attribute Name="Stream">
<TranslateArray Type="ArrayFunc">CTStreams</TranslateArray></Attribute></Class><Class Name="S">
<Attribute Name="Name"><Translate Type="Dummy"><NodeAttributes><Attribute Name="value">(id)
</Attribute></NodeAttributes></Translate></Attribute><Attribute Name="Temperature">
<Translate Type="Map">Temperature</Translate></Attribute><Attribute Name="Mode">
<Translate Type="Map">Mode</Translate></Attribute></Class></CCDMMapFile>)"},
    {"u.xml", "<CCDMUnitFile/>"}};

class CheckedOutput final : public Output {
 public:
    void Data(std::string_view text) override { CheckText(text); }
    void Note(std::string_view text) override { CheckText(text); }

 private:
    static void CheckText(std::string_view written) {
        std::string text(written);
        std::replace_if(
            text.begin(), text.end(), [](char c) { return c == '\n' || c == '\t'; }, ' ');
        Check(OneLineMessage(text) == text, "control characters are written", text);
    }
};

// Lines of standard input, each also completed.
class FuzzedLines final : public terminal::LineReader {
 public:
    explicit FuzzedLines(terminal::Completer completer) : completer_(std::move(completer)) {}
    std::optional<std::string> Read(const std::string& prompt) override {
        Check(OneLineMessage(prompt) == prompt, "control characters in the prompt", prompt);
        std::string line;
        if (!std::getline(std::cin, line)) return std::nullopt;
        for (const std::string& candidate : completer_(line).candidates) {
            Check(OneLineMessage(candidate) == candidate, "control characters are completed",
                  candidate);
        }
        return line;
    }

 private:
    terminal::Completer completer_;
};

// Has a text be the standard input.
class StandardInput {
 public:
    explicit StandardInput(const std::string& text)
        : input_(text), former_(std::cin.rdbuf(input_.rdbuf())) {
        std::cin.clear();
    }
    ~StandardInput() { std::cin.rdbuf(former_); }
    StandardInput(const StandardInput&) = delete;
    StandardInput& operator=(const StandardInput&) = delete;

 private:
    std::istringstream input_;
    std::streambuf* former_;
};

// A word, or the value of an option in it, that begins at the root, but for a path of the host's.
bool BeginsAtRoot(std::string_view word) {
    for (std::size_t at = word.find('/'); at != word.npos; at = word.find('/', at + 1)) {
        const bool begins = at == 0 || word[at - 1] == '=';
        if (begins && !word.substr(at).starts_with(kHostRoot)) return true;
    }
    return false;
}

// Whether no word can be the name of a file outside the working directory.
bool StaysHere(const std::vector<ShellWord>& words) {
    return std::all_of(words.begin(), words.end(), [&](const ShellWord& word) {
        const bool climbs = word.text.find("..") != std::string::npos;
        return (!climbs || words.front().text == "cd") && !BeginsAtRoot(word.text);
    });
}

bool MayRun(const std::string& text) {
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        const auto words = SplitLine(line);
        if (words && !StaysHere(*words)) return false;
    }
    return text.find('\0') == std::string::npos;
}

}  // namespace

namespace terminal {

bool InputIsTyped() {
    return false;
}
bool DataIsSeen() {
    return false;
}
bool NotesAreSeen() {
    return false;
}
int RunPython(std::vector<std::string>) {
    return -1;
}
const char* NullDevice() {
    return "/dev/null";
}
InterruptGuard::InterruptGuard() = default;
InterruptGuard::~InterruptGuard() = default;
bool IsInterrupted() {
    return false;
}
std::unique_ptr<LineReader> OpenLineReader(Completer completer) {
    return std::make_unique<FuzzedLines>(std::move(completer));
}

}  // namespace terminal

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    OfferOwnAdapter();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    if (size > kMostBytes || !MayRun(text)) return -1;
    const std::size_t end = std::min(text.find('\n'), text.size());
    const auto words = SplitLine(text.substr(0, end));
    if (!words) return -1;
    std::vector<std::string> arguments;
    for (const ShellWord& word : *words) arguments.push_back(word.text);
    const TemporaryFolder folder;
    for (const SmallFile& file : kSmallFiles) folder.Write(file.name, file.text);
    const StandardInput input(text.substr(std::min(end + 1, text.size())));
    CheckedOutput out;
    CommandContext around{out};
    const ExitCode code = Execute(std::move(arguments), Place::kProgram, around);
    Check(code >= ExitCode::kOk && code <= ExitCode::kUnreadable, "an unknown status");
    return 0;
}

}  // namespace fixtop
