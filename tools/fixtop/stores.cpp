// SPDX-License-Identifier: Apache-2.0
#include "stores.h"

#include "case_session.h"

namespace fixtop {

void Stores::Declare(CLI::App& app) {
    app.add_option("--set", options_,
                   "Stored before the solve, all together; may be given several times")
        ->type_name("PATH VALUE")
        ->allow_extra_args(false);
}

bool Stores::StoreAll(CommandContext& around, const std::vector<Given>& first) {
    bool all_taken = true;
    for (const Given& given : first) all_taken &= Store(around, given);
    for (const auto& [path, value] : options_) {
        all_taken &= Store(around, {GivenName(path), GivenText(value), ""});
    }
    return all_taken;
}

bool Stores::Store(CommandContext& around, const Given& given) {
    // All are found first: what is stored to one may be what finds the next.
    std::vector<Stored> meant;
    const std::string problem =
        ForEachMeant(*around.session, given.path, given.first, given.all,
                     [&](const client::Place& place, const std::string& path) {
                         meant.push_back({path, place});
                     });
    if (!problem.empty()) Refuse(problem, around.out);
    bool all_taken = problem.empty();
    for (Stored& each : meant) {
        const std::string refused =
            fixtop::Store(*around.session, each.place, given.value, given.unit);
        all_taken &= refused.empty();
        if (!refused.empty()) Refuse(each.path + ": " + refused, around.out);
        if (refused.empty()) taken_.push_back(std::move(each));
    }
    return all_taken;
}

void Stores::Refuse(std::string text, Output& out) {
    out.Note(text);
    refused_.push_back(std::move(text));
}

std::string ValuesOf(const Node& node, const std::string& attribute,
                     const std::vector<Node>& elements) {
    if (elements.empty()) return OneLine(node.Attribute(attribute));
    std::string line;
    for (const Node& element : elements) {
        line += (line.empty() ? "" : ",") + OneLine(element.Attribute(attribute));
    }
    return line;
}

bool TellReleased(const client::Released& released, Output& out) {
    for (const auto* texts : {&released.normalised, &released.refused}) {
        for (const std::string& text : *texts) out.Note(OneLine(text));
    }
    return released.refused.empty();
}

}  // namespace fixtop
