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
    bool all_taken = true;
    const auto store = [&](const client::Place& place, const std::string& path) {
        const std::string problem = fixtop::Store(*around.session, place, given.value, given.unit);
        if (problem.empty()) return taken_.push_back({path, place});
        around.out.Note(path + ": " + problem);
        all_taken = false;
    };
    const std::string problem =
        ForEachMeant(*around.session, given.path, given.first, given.all, store);
    if (!problem.empty()) around.out.Note(problem);
    return all_taken && problem.empty();
}

bool TellReleased(const client::Released& released, Output& out) {
    for (const auto* texts : {&released.normalised, &released.refused}) {
        for (const std::string& text : *texts) out.Note(OneLine(text));
    }
    return released.refused.empty();
}

}  // namespace fixtop
