#include "view.h"

#include "line_text.h"
#include "terminal.h"

namespace fixtop {

namespace {

// A text of the log may bring its own line end.
std::string LogLine(std::string_view text) {
    while (text.ends_with('\n')) text.remove_suffix(1);
    return OneLineMessage(text);
}

// Leads the module's log where the options want it for as long as it lives.
class ModelLog {
 public:
    explicit ModelLog(const ViewOptions& view) {
        const std::string file = view.log.empty() ? terminal::NullDevice() : view.log;
        FixtopSetLog(
            file.c_str(),
            [](void* lines, const char* text) {
                *static_cast<std::string*>(lines) += '\n' + LogLine(text);
            },
            &lines_);
    }
    ~ModelLog() { FixtopSetLog(nullptr, nullptr, nullptr); }
    ModelLog(const ModelLog&) = delete;
    ModelLog& operator=(const ModelLog&) = delete;

    const std::string& Lines() const { return lines_; }

 private:
    std::string lines_;
};

// Units are read first, and the log says this last of them when they could not be.
constexpr char kNoUnits[] = "Failed to initialize units list";

// A model opens without units too, which is not what those expect who named a file of them. Empty
// when it has them.
std::string TroubleWithUnits(const std::string& log) {
    const std::size_t at = log.find(kNoUnits);
    if (at == std::string::npos) return "";
    return "values are not converted" + log.substr(0, at) + kNoUnits;
}

constexpr char kGroup[] = "Neutral view";
constexpr char kNeutral[] = "--neutral";

struct OptionRow {
    const char* name;
    const char* type;
    const char* help;
};

void Add(CLI::App& app, const OptionRow& row, std::string& text) {
    CLI::Option* option = app.add_option(row.name, text, row.help);
    option->type_name(row.type)->group(kGroup);
    if (CLI::Option* neutral = app.get_option_no_throw(kNeutral)) option->needs(neutral);
}

const char* Given(const std::string& text) {
    return text.empty() ? nullptr : text.c_str();
}

template <class Opener>
Ref<FIEntry> Open(const char* what, const ViewOptions& view, std::string& problem, Opener opener) {
    const ModelLog log(view);
    const FixtopModelFiles files{Given(view.library), Given(view.map), Given(view.units),
                                 Given(view.translate)};
    auto root = Ref<FIEntry>::Adopt(opener(files));
    if (!root) {
        problem = std::string(what) + " can't be opened" + log.Lines();
    } else if (!view.units.empty()) {
        problem = TroubleWithUnits(log.Lines());
    }
    return root;
}

}  // namespace

void AddNeutral(CLI::App& app, ViewOptions& view) {
    app.add_flag(kNeutral, view.neutral,
                 "Show the case as classes of the library; paths begin below QSISimulation")
        ->group(kGroup);
}

void AddModel(CLI::App& app, ViewOptions& view) {
    AddLibrary(app, view);
    Add(app, {"--map", "FILE", "Map to the case; hovexmap.xml when it is left out"}, view.map);
    Add(app, {"--translate", "NAME", "Translation of the map; Hovex when it is left out"},
        view.translate);
}

void AddLibrary(CLI::App& app, ViewOptions& view) {
    Add(app, {"--library", "FILE", "Class library; QSIAllLibraries.xml when it is left out"},
        view.library);
    Add(app, {"--units", "FILE", "Names of units; hunits.xml when it is left out"}, view.units);
    Add(app, {"--log", "FILE", "Write to it what the module says about these files"}, view.log);
}

Ref<FIEntry> OpenNeutral(FIEntry& top, const ViewOptions& view, std::string& problem) {
    return Open("the neutral view", view, problem,
                [&](const FixtopModelFiles& files) { return FixtopOpenModel(&top, &files); });
}

Ref<FIEntry> OpenDictionary(const ViewOptions& view, std::string& problem) {
    return Open("the class library", view, problem,
                [](const FixtopModelFiles& files) { return FixtopOpenDictionary(&files); });
}

}  // namespace fixtop
