// SPDX-License-Identifier: Apache-2.0
#include "flowsheets.h"

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

std::string ClassOf(const std::string& type) {
    const std::size_t begin = type.find('(') + 1;
    return begin == 0 ? type : type.substr(begin, type.rfind(')') - begin);
}

}  // namespace fixtop
