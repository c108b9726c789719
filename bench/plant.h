// SPDX-License-Identifier: Apache-2.0
#pragma once

// A synthetic plant of any size for the benchmarks, as a live case below the module and as the same
// tree in an XML document.

#include <memory>
#include <string>

#include "casehost/case_data.h"
#include "casehost/case_host.h"
#include "fixtop/entry.h"
#include "fixtop/host/services.h"
#include "fixtop/iterator.h"
#include "fixtop/ref.h"

namespace pugi {
class xml_document;
}

namespace fixtop {

namespace bench {

// `objects` streams and unit operations, one stream in ten an energy stream; material streams have
// temperature, pressure, flows, vapour fraction and a composition of five compounds.
casehost::CaseData MakePlant(int objects);

// Name of the i-th object, and of the material stream in the middle of the list.
std::string StreamName(int i);
std::string MiddleStream(int objects);
// The temperature that only that stream has, as text, in the unit that is shown.
std::string MiddleTemperature(int objects);

// Beside the plant stands a unit operation with an array of each of these lengths: "Numbers
// <length>" without names, "Names <length>" with the names of ElementName.
inline constexpr int kArrayLengths[] = {10, 100, 1000, 10000};
inline constexpr char kArrayUnit[] = "Arrays";
std::string ElementName(int i);

// A variable as the host has it, without the module.
struct HostVariable {
    host::Viewable* object = nullptr;
    host::VariableNameInfo* row = nullptr;
    host::VarDescription description;
};

// A plant opened through the exports.
class OpenPlant {
 public:
    explicit OpenPlant(int objects);
    explicit OpenPlant(casehost::CaseData plant, int objects = 0);
    ~OpenPlant();
    OpenPlant(const OpenPlant&) = delete;
    OpenPlant& operator=(const OpenPlant&) = delete;

    // An iterator at the given path below the top; throws when it leads nowhere.
    Ref<FIIteratorBase> At(const std::string& path) const;
    // The context of the node at a path of plain names.
    Ref<FIContext> ContextAt(const std::string& path) const;
    // A variable of an object of the main flowsheet; throws when the host has none.
    HostVariable InHost(const std::string& object, const std::string& variable) const;
    // Lent.
    FIEntry* Top() const { return top_.Get(); }
    casehost::CaseHost& Host() { return *host_; }
    int Objects() const { return objects_; }

 private:
    int objects_;
    std::unique_ptr<casehost::CaseHost> host_;
    Ref<FIEntry> top_;
};

// Holds a stream under composition edit while it lives, so that stores don't start the solver.
class OpenBatch {
 public:
    explicit OpenBatch(const OpenPlant& plant);
    ~OpenBatch();
    OpenBatch(const OpenBatch&) = delete;
    OpenBatch& operator=(const OpenBatch&) = delete;

 private:
    Ref<FIEntry> stream_;
};

// One plant of each size is kept, so that a run builds it once.
OpenPlant& PlantOf(int objects);
// Who opens a plant of his own drops that one before: benchmarks take turns.
void DropPlant();

// A case file of a plant, written on first use; reading it as a case, and as bare JSON.
std::string SavedPlant(int objects);
void LoadPlant(const std::string& file);
void ParseJson(const std::string& file);

// The same tree: an element for each node, named after it.
void FillMirror(int objects, pugi::xml_document& document);

}  // namespace bench

}  // namespace fixtop
