// SPDX-License-Identifier: Apache-2.0
#include "flowsheets.h"

#include <set>

#include "terminal.h"

namespace fixtop {

namespace {

void VisitFlowsheet(const Node& flowsheet, const std::string& prefix, const client::Pattern& list,
                    const std::function<void(const FlowsheetObject& object)>& visit) {
    static const client::Pattern kInner("SubFlowsheet");
    const auto called = [&](const Node& node) { return prefix + node.Key(); };
    list.ForEach(flowsheet, [&](const client::Place& place) {
        if (terminal::IsInterrupted()) throw Interrupted();
        visit({place.node, called(place.node), place.path});
        return true;
    });
    kInner.ForEach(flowsheet, [&](const client::Place& place) {
        VisitFlowsheet(place.node, called(place.node) + '/', list, visit);
        return true;
    });
}

}  // namespace

void ForEachObject(const Node& top, const client::Pattern& list,
                   const std::function<void(const FlowsheetObject& object)>& visit) {
    if (const auto main = top.Find("Flowsheet")) VisitFlowsheet(main->node, "", list, visit);
}

std::vector<std::string> UnitsWithoutClass(const Node& top) {
    std::set<std::string> known;
    for (const char* list : {"UnitOperation", "SubFlowsheet"}) {
        ForEachObject(top, client::Pattern(list),
                      [&](const FlowsheetObject& object) { known.insert(object.name); });
    }
    std::vector<std::string> unknown;
    for (const char* list : {"Stream", "HeatStream"}) {
        ForEachObject(top, client::Pattern(list), [&](const FlowsheetObject& stream) {
            const std::size_t own = stream.node.Key().size();
            const std::string prefix = stream.name.substr(0, stream.name.size() - own);
            for (const char* end : {"UpstreamUnitOperation", "DownstreamUnitOperation"}) {
                const auto place = stream.node.Find(end);
                const std::string unit = place ? place->node.Text() : "";
                if (unit.empty() || !known.insert(prefix + unit).second) continue;
                unknown.push_back(prefix + unit);
            }
        });
    }
    return unknown;
}

std::string ClassOf(const std::string& type) {
    const std::size_t begin = type.find('(') + 1;
    return begin == 0 ? type : type.substr(begin, type.rfind(')') - begin);
}

}  // namespace fixtop
