// SPDX-License-Identifier: Apache-2.0
#pragma once

// CaseHost: the in-memory simulator. It owns the services that the module is given, the session and
// the open cases.
//
// Threads: all calls on one thread. A closed case stays readable until RunHostLoop.

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "casehost/case_data.h"
#include "casehost/solve_engine.h"
#include "casehost/store_watch.h"
#include "fixtop/host/services.h"

namespace fixtop::casehost {

class Case;

// What became of an attempt to open or save. Problems are errors when `ok` is false, else remarks.
struct OpenResult {
    Case* opened = nullptr;
    std::vector<CaseProblem> problems;

    explicit operator bool() const { return opened != nullptr; }
};

struct SaveResult {
    bool ok = false;
    CaseProblem problem;

    explicit operator bool() const { return ok; }
};

// Readers and writers by extension with the point, ".json"; registered once, before the first use.
using CaseReader = std::function<ReadResult(const std::string& path)>;
using CaseWriter = std::function<SaveResult(const CaseData& data, const std::string& path)>;
void RegisterReader(const std::string& extension, CaseReader reader);
void RegisterWriter(const std::string& extension, CaseWriter writer);

// Engines for cases of our own.
using EngineMaker = std::function<std::unique_ptr<SolveEngine>()>;

class CaseHost {
 public:
    // A host without a window answers no application form. The host's side of the process uses the
    // services of the host made last.
    explicit CaseHost(bool with_window = true);
    ~CaseHost();
    CaseHost(const CaseHost&) = delete;
    CaseHost& operator=(const CaseHost&) = delete;

    host::HostServices& Services();
    // What computes cases that are opened from now on; recorded cases get none.
    void SetEngineMaker(EngineMaker maker) { engine_maker_ = std::move(maker); }
    const EngineMaker& GetEngineMaker() const { return engine_maker_; }
    // Who watches the stores into cases that are opened from now on; never null.
    void SetStoreWatch(std::shared_ptr<StoreWatch> watch) { watch_ = std::move(watch); }

    // Whether the host's user wants a solve to stop: asked at every turn of one, in cases that are
    // opened from now on.
    void SetStopButton(std::function<bool()> pressed) { stop_button_ = std::move(pressed); }

    // The opened case becomes the active one.
    OpenResult Open(const std::string& path);
    OpenResult Open(const CaseData& data);
    // Saves a case under its own name or another; by extension, ".json" when there is none.
    SaveResult Save(Case& open_case);
    SaveResult Save(Case& open_case, const std::string& path);
    // Tells the case's callback; the objects stay readable until RunHostLoop.
    void Close(Case& open_case);

    host::SimulationCase* ActiveCase();
    Case* ActiveLiveCase() const { return active_; }
    void Activate(Case& open_case) { active_ = &open_case; }
    // Why the last solve of the active case did not complete; empty when it did.
    std::string SolveProblem() const;
    // How much of the solve under way is done, from 0 to 1; nothing while nobody knows.
    std::optional<double> SolveShare() const;
    // Whether the active case shows results that are older than a change of it.
    bool HasOldResults() const;
    // The file in which variables of the active case are published; empty while it has no name.
    std::string PublishedFile() const;
    // The units in which the active case shows numbers, by a name of kUnitSetNames. False for any
    // other name, and without a case.
    bool UseUnitSet(const std::string& name);
    // The name of the present ones; empty without a case.
    std::string UnitSet() const;
    const std::vector<std::unique_ptr<Case>>& Cases() const { return cases_; }

    // Runs `event` in the next turn of the host's loop.
    void Post(std::function<void()> event) { events_.push_back(std::move(event)); }
    // One turn, as WaitForTurn runs it while clients are on the stack.
    void Turn();
    // The same from the host's own loop, with no client on the stack: deleted objects and closed
    // cases go away.
    void RunHostLoop();

    // What the module told the host, for the host's own windows.
    unsigned long ViewUpdates() const;
    // What SetConfigData keeps under a key; kEmpty when there is nothing.
    double ConfigData(const std::string& key) const;

 private:
    class ServicesImpl;

    std::shared_ptr<StoreWatch> watch_;
    std::unique_ptr<ServicesImpl> services_;
    std::vector<std::unique_ptr<Case>> cases_;
    std::vector<std::unique_ptr<Case>> closed_;
    std::vector<std::function<void()>> events_;
    EngineMaker engine_maker_;
    std::function<bool()> stop_button_;
    Case* active_ = nullptr;
};

}  // namespace fixtop::casehost
