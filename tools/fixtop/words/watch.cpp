#include "case_session.h"
#include "fixtop/reference.h"
#include "solver_run.h"
#include "store.h"
#include "words/makers.h"

namespace fixtop {

namespace {

// A node whose value is compared with what it was.
class Watched {
 public:
    Watched(std::string path, FIIteratorBase& node)
        : path_(std::move(path)),
          node_(Ref<FIReferenceBase>::Adopt(Given(node.MakeReference()))),
          value_(Read("value")) {}

    void WriteChange(bool json, Output& out) {
        const FIValue now = Read("value");
        if (now.Kind() == value_.Kind() && now.ToText() == value_.ToText()) return;
        const FIValue before = std::exchange(value_, now);
        const FIValue uom = Read("uom");
        if (json) {
            Json record;
            record["path"] = OneLine(path_);
            record["old"] = ToJson(before);
            record["new"] = ToJson(now);
            record["uom"] = ToJson(uom);
            out.Line(ToLine(record));
        } else {
            out.Line(OneLine(path_) + '\t' + OneLine(before) + '\t' + OneLine(now) + '\t' +
                     OneLine(uom));
        }
    }

 private:
    FIValue Read(const char* attribute) const {
        FIValue value;
        node_->GetAttribute(FIValue(attribute), value);
        return value;
    }

    std::string path_;
    Ref<FIReferenceBase> node_;
    FIValue value_;
};

// A store returns at once while this lives, so that the solve goes on under our eyes.
class StoresWithoutWaiting {
 public:
    explicit StoresWithoutWaiting(FISolver* solver) : solver_(solver) { Set("false"); }
    ~StoresWithoutWaiting() { Set("true"); }
    StoresWithoutWaiting(const StoresWithoutWaiting&) = delete;
    StoresWithoutWaiting& operator=(const StoresWithoutWaiting&) = delete;

 private:
    void Set(const char* flag) {
        FIValue refused;
        if (solver_) solver_->SetAttribute(FIValue("wait_for_solve"), FIValue(flag), refused);
    }

    FISolver* solver_;
};

class Watch final : public Word {
 public:
    void Declare(CLI::App& app) override {
        AddNames(app, "PATH", paths_, "Nodes to be watched")->required();
        app.add_option("--set", stores_, "Stored before the solve; may be given several times")
            ->type_name("PATH VALUE")
            ->allow_extra_args(false);
        AddJson(app, json_);
    }

    ExitCode Run(Surroundings& around) override {
        bool all_found = Open(around);
        const auto report = [&] {
            for (Watched& watched : watched_) watched.WriteChange(json_, around.out);
        };
        if (!stores_.empty()) {
            LetStoresSolve(*around.session);
            const StoresWithoutWaiting no_wait(around.session->Solver());
            all_found &= StoreAll(around);
            report();
            WaitUntilIdle(*around.session, report);
        }
        const SolveEnd end = SolveToEnd(*around.session, report);
        around.out.Note(OneLineMessage(end.message));
        if (!end.complete) TellWhyIncomplete(*around.session, around.out);
        return all_found && end.complete ? ExitCode::kOk : ExitCode::kFailed;
    }

 private:
    bool Open(Surroundings& around) {
        bool all_found = true;
        for (const std::string& path : paths_) {
            std::string problem;
            const auto found = Locate(*around.session, path, problem);
            if (found) {
                watched_.emplace_back(path, *found->node);
            } else {
                around.out.Note(problem);
                all_found = false;
            }
        }
        return all_found;
    }
    bool StoreAll(Surroundings& around) const {
        bool all_stored = true;
        for (const auto& [given, value] : stores_) {
            const std::string path = GivenName(given);
            std::string problem;
            const auto found = Locate(*around.session, path, problem);
            if (found) problem = Store(*found, GivenText(value), "");
            if (problem.empty()) continue;
            around.out.Note(found ? OneLine(path) + ": " + problem : problem);
            all_stored = false;
        }
        return all_stored;
    }

    std::vector<std::string> paths_;
    std::vector<std::pair<std::string, std::string>> stores_;
    std::vector<Watched> watched_;
    bool json_ = false;
};

}  // namespace

std::unique_ptr<Word> MakeWatch() {
    return std::make_unique<Watch>();
}

}  // namespace fixtop
