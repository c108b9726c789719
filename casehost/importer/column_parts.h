// SPDX-License-Identifier: Apache-2.0
#pragma once

// What a column that has been read consists of: its stages, and the streams that enter and leave
// them. Numbers are in the internal units.

#include <string>
#include <vector>

#include "casehost/case_data.h"
#include "object_sheet.h"

namespace fixtop::casehost::importer {

struct ColumnStream {
    ObjectData* object;
    int stage;  // from 0 at the top
};

Number ValueOf(const ObjectData& object, const std::string& name);
// Of the element with this label.
Number ValueOf(const ObjectData& object, const std::string& name, const std::string& label);
bool HasStages(const ObjectData& column);

class ColumnParts {
 public:
    ColumnParts(CaseData& data, const ObjectData& column);

    const VariableData* Find(const std::string& name) const { return FindVariable(column_, name); }
    // Of a stage, in a profile of the column.
    Number At(const std::string& profile, int stage) const;
    // By stage and compound of the case, whatever order the column's own compounds have.
    std::vector<Number> Fractions(const std::string& profile) const;
    Number MolarMass(const std::string& fractions, int stage) const;
    // By stage; null where none of the streams is.
    std::vector<Number> NetFlows(const std::vector<ColumnStream>& streams) const;

    bool HasCondenser() const;
    bool HasReboiler() const;
    int Bottom() const { return static_cast<int>(stages.size()) - 1; }
    std::vector<int> Trays() const;
    // In the words of the host.
    std::string CondenserType() const;

    std::vector<std::string> stages;
    std::vector<std::string> compounds;
    std::vector<std::string> energies;
    std::vector<ColumnStream> feeds;
    std::vector<ColumnStream> products;
    // Of the products, those that leave between the ends; null where there is none.
    std::vector<ColumnStream> liquid_draws;
    std::vector<ColumnStream> vapour_draws;
    const ObjectData* overhead = nullptr;
    const ObjectData* distillate = nullptr;
    const ObjectData* heavy_distillate = nullptr;
    const ObjectData* bottoms = nullptr;

 private:
    std::vector<ColumnStream> StreamsOf(const std::string& list);
    void SortProducts();

    CaseData& data_;
    const ObjectData& column_;
};

}  // namespace fixtop::casehost::importer
