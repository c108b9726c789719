// SPDX-License-Identifier: Apache-2.0
#pragma once

// Case: one open case in both views, and what can be done with it as a whole.

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "fixtop/client/node.h"
#include "fixtop/client/solver.h"

namespace fixtop::client {

// The files of a neutral view; empty: as shipped. `log` takes what the module says about them;
// empty for none.
struct ModelFiles {
    std::string classes;
    std::string map;
    std::string units;
    std::string translate;
    std::string log;
};

class Case {
 public:
    // The name under which Open opens the case that comes with the library.
    static constexpr char kDemo[] = "demo";

    // A file, or the built-in case by its name. The host of the process is the library's own then:
    // one such case is open at a time, and it closes with the last of its nodes. Throws CaseError;
    // one that was open stays so then.
    static Case Open(const std::string& file_or_demo);
    // The open case of a host that runs in this process and has installed itself; null for its
    // active one. Throws CaseError when there is no host.
    static Case OfSession(void* session = nullptr);

    // What the reader of the file had to say, though it could read it.
    const std::vector<std::string>& Remarks() const;

    // The root of the case's own tree.
    Node Top() const;
    // The root of the neutral view, opened with the shipped files when it was not yet. Throws
    // CaseError.
    Node Neutral() const;
    // Opens it with other files. Answers a warning: the units that were asked for can't be had.
    std::string OpenNeutral(const ModelFiles& files) const;
    // The same node of the neutral view where lists are as long as map files have them: of a list
    // with n elements n modulo 256 are shown, and the module tells when it is cut. Null when the
    // node is beyond that.
    std::optional<Node> AsListed(const Node& neutral) const;
    // Of the top.
    std::vector<Node> Matches(const std::string& pattern) const { return Top().Matches(pattern); }
    Node At(const std::string& path) const { return Top().At(path); }

    Solver GetSolver() const { return Solver(case_); }
    // Results are shown that are older than a change of the case.
    bool HasOldResults() const;
    // The sets of default units in which the case can show its numbers; empty where its host does
    // not let clients choose.
    std::vector<std::string> UnitSets() const;
    // The one in which it shows them; empty where there are none.
    std::string UnitSet() const;
    // Shows numbers in the default units of a set; case of letters does not count. Throws CaseError
    // with the names of the sets when there is no such one.
    void UseUnitSet(const std::string& name) const;
    // Closes it for whoever has nodes of it, which are gone from then on. Nothing for a case of
    // another host, which closes it itself.
    void Close() const;
    // Writes the case to a file of the library's own kinds. Throws CaseError.
    void Save(const std::string& file) const;
    // The file beside its own in which variables are published; empty for a case without a file,
    // and for one of a host that is not the library's own.
    std::string PublishedFile() const;

    // Asked at every turn of a solve whether it has to stop; for cases opened from now on.
    static void SetStopButton(std::function<bool()> pressed);

    // Of another kind of host, for those who make one.
    explicit Case(std::shared_ptr<CaseState> state) : case_(std::move(state)) {}

 private:
    std::shared_ptr<CaseState> case_;
};

// The definitions of a class library as a tree; `warning` as OpenNeutral. Throws CaseError.
Node OpenDictionary(const ModelFiles& files, std::string& warning);

}  // namespace fixtop::client
