// SPDX-License-Identifier: Apache-2.0
#include "report_rows.h"

#include <algorithm>

#include "flowsheets.h"
#include "line_text.h"
#include "output.h"

namespace fixtop {

ReportColumns StreamColumns() {
    static constexpr ReportColumn columns[] = {
        {"Vapor fraction", "VaporFraction"},
        {"Temperature", "Temperature"},
        {"Pressure", "Pressure"},
        {"Molar flow", "MolarFlow"},
        {"Mass flow", "MassFlow"},
        {"Volume flow", "VolumeFlow"},
        {"Heat flow", "HeatFlow"},
        {"From", "UpstreamUnitOperation"},
        {"To", "DownstreamUnitOperation"},
    };
    return columns;
}

ReportRows ObjectRows(const Node& top, const std::string& list) {
    ReportRows rows;
    ForEachObject(top, client::Pattern(list), [&rows](const FlowsheetObject& object) {
        rows.push_back({object.node, object.path, object.name});
    });
    return rows;
}

void TellUnitsWithoutClass(const Node& top, Output& out) {
    std::string names;
    for (const std::string& name : UnitsWithoutClass(top)) {
        names += (names.empty() ? "" : ", ") + OneLine(name);
    }
    if (!names.empty()) out.Note("left out, for the neutral view has no class for them: " + names);
}

void AddFractions(const ReportRows& rows, const std::string& list, TableMaker& maker) {
    const client::Pattern components(list);
    std::vector<std::string> names;
    for (const ReportRow& row : rows) {
        components.ForEachBelow(row.node, [&](const client::Place& place) {
            const std::string name = place.node.Key();
            if (std::ranges::find(names, name) == names.end()) names.push_back(name);
            return true;
        });
    }
    for (const std::string& name : names) {
        maker.AddColumn({list + '(' + client::WrittenKey(name) + ").MoleFraction", "value", name});
    }
}

}  // namespace fixtop
