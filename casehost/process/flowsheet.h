// SPDX-License-Identifier: Apache-2.0
#pragma once

// A case's process as a graph: streams as edges between unit operations, each with what is
// specified in it and, after a solve, what was calculated.
//
// Sub-flowsheets are taken apart: their objects stand in the same graph, and a link joins each
// stream on a template's port with the inner boundary stream of the same number (feed port n with
// the n-th inner material stream that no inner operation makes, product port n with the n-th that
// none takes). Names in texts carry the way to an inner object, "T-100/V-1".
//
// The graph refers to the objects of the case it was made from; the case has to outlive it and keep
// its objects in place. Building never fails: a wrong connection becomes a `problem` of the unit.

#include <optional>
#include <string>
#include <vector>

#include "casehost/case_data.h"
#include "process/unit_ops.h"

namespace fixtop::casehost::process {

// What stands specified in a stream; kEmpty where nothing does.
struct StreamGiven {
    double temperature_C = kEmpty;
    double pressure_kPa = kEmpty;
    double vapour_fraction = kEmpty;
    double molar_enthalpy = kEmpty;
    double molar_flow = kEmpty;
    double mass_flow = kEmpty;
    double heat_flow = kEmpty;           // energy streams
    std::vector<double> mole_fractions;  // empty: none specified; else one for each compound
    std::vector<double> mass_fractions;
};

inline constexpr int kNone = -1;

struct StreamNode {
    std::string name;
    bool energy = false;
    ObjectData* object = nullptr;
    StreamGiven given;
    int maker = kNone;  // index of a unit
    int taker = kNone;

    std::optional<MaterialState> state;  // material streams, once solved
    double heat_flow = kEmpty;           // energy streams, once solved
    ObjectStatus status = ObjectStatus::not_solved;
    std::string text;  // says why, empty when ok

    bool Solved() const { return energy ? heat_flow != kEmpty : state.has_value(); }
};

struct UnitNode {
    std::string name;
    ObjectData* object = nullptr;      // null for a link across a sub-flowsheet's boundary
    const UnitModel* model = nullptr;  // null for a link and for a type without a model
    std::vector<int> feeds;            // indices of streams in port order
    std::vector<int> products;
    std::vector<int> energy_in;
    std::vector<int> energy_out;
    Parameters given;
    std::string problem;  // a connection that can't be, found while building

    Parameters results;
    ObjectStatus status = ObjectStatus::not_solved;
    std::string text;

    bool Link() const { return object == nullptr; }
};

// A sub-flowsheet's operation and the units that came out of it.
struct TemplateNode {
    ObjectData* object;
    std::string name;
    std::size_t first_unit, last_unit;  // half open
    std::size_t first_stream, last_stream;
};

struct Flowsheet {
    std::vector<StreamNode> streams;
    std::vector<UnitNode> units;
    std::vector<TemplateNode> templates;
};

Flowsheet BuildFlowsheet(CaseData& data);

// True for a value that is an input of the solve.
bool IsInput(const ValueData& value);

}  // namespace fixtop::casehost::process
