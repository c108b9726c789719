// SPDX-License-Identifier: Apache-2.0
#pragma once

// CaseState: what all values on one open case share and keep alive.

#include <memory>
#include <new>
#include <optional>
#include <string>
#include <vector>

#include "fixtop/client/case.h"
#include "fixtop/client/class_table.h"
#include "fixtop/client/error.h"
#include "fixtop/fixtop.h"

namespace fixtop::client {

// What the module answers with null for lack of memory alone.
template <class T>
T* Given(T* object) {
    if (!object) throw std::bad_alloc();
    return object;
}

// What `work` answers, unless memory ran out in the module meanwhile: what it left may lack
// something then.
template <class Work>
auto Whole(const Work& work) {
    const int before = FixtopMemoryFailures();
    auto result = work();
    if (FixtopMemoryFailures() != before) throw std::bad_alloc();
    return result;
}

// The host of a case. One that runs by itself can do no more for its clients than its session.
class HostOfCase {
 public:
    virtual ~HostOfCase() = default;
    virtual void* Session() = 0;
    // One turn of the host's loop; false when it is not the client's to turn.
    virtual bool Turn() { return false; }
    // Why the last solve did not complete; empty when it did, or nobody knows.
    virtual std::string SolveProblem() const { return ""; }
    // How much of the solve under way is done, from 0 to 1; nothing while nobody knows.
    virtual std::optional<double> SolveShare() const { return std::nullopt; }
    virtual bool HasOldResults() const { return false; }
    // By name; none where clients can't choose.
    virtual std::vector<std::string> UnitSets() const { return {}; }
    virtual std::string UnitSet() const { return ""; }
    virtual void UseUnitSet(const std::string&) {}
    // Answers what is wrong; empty when it was written.
    virtual std::string Save(const std::string& file);
    virtual void Close() {}
    virtual std::string PublishedFile() const { return ""; }
    virtual const std::vector<std::string>& Remarks() const;
};

class CaseState : public std::enable_shared_from_this<CaseState> {
 public:
    // Null for none: a tree without a case.
    explicit CaseState(std::unique_ptr<HostOfCase> host);
    ~CaseState();
    CaseState(const CaseState&) = delete;
    CaseState& operator=(const CaseState&) = delete;

    HostOfCase& Host() const { return *host_; }
    FIEntry& Entry() const { return *entry_; }
    Node Top();
    Node Neutral();
    // With lists as long as map files have them.
    Node Listed();
    std::string OpenNeutral(const ModelFiles& files);
    // The classes of the neutral view.
    std::shared_ptr<const ClassTable> Classes();
    // The object of the neutral view that stands on a node of the case.
    std::optional<Node> NeutralOf(const Node& raw);
    // The root of a tree that stands on this case.
    Node RootOf(FIEntry& entry);
    // Null when the case has none. Lent.
    FISolver* GetSolver() const;

 private:
    std::unique_ptr<HostOfCase> host_;
    Ref<FIEntry> entry_;
    Ref<FIIteratorBase> top_;
    Ref<FIIteratorBase> neutral_;
    // On what NeutralOf found last: it is mostly asked in the order of a list.
    Ref<FIIteratorBase> found_;
    Ref<FIIteratorBase> listed_;
    ModelFiles files_;
    std::shared_ptr<const ClassTable> classes_;
};

// The host that comes with the library, with this case open. Throws CaseError.
std::unique_ptr<HostOfCase> OpenBuiltInHost(const std::string& file_or_demo);

// Opens a model and gathers what the module says meanwhile. Throws CaseError, which begins with
// `what`; else answers a warning about units that were asked for.
using ModelOpener = FIEntry* (*)(FIEntry* top, const FixtopModelFiles* files);
std::string OpenModel(const char* what, const ModelFiles& files, bool whole_lists, ModelOpener open,
                      FIEntry* top, Ref<FIEntry>& root);

}  // namespace fixtop::client
