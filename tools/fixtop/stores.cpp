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
    std::string problem;
    auto found = Locate(*around.session, given.path, problem);
    if (!found) {
        around.out.Note(problem);
        return false;
    }
    problem = fixtop::Store(*around.session, *found, given.value, given.unit);
    if (!problem.empty()) {
        around.out.Note(OneLine(given.path) + ": " + problem);
        return false;
    }
    taken_.push_back({given.path, std::move(*found)});
    return true;
}

bool TellReleased(const client::Released& released, Output& out) {
    for (const auto* texts : {&released.normalised, &released.refused}) {
        for (const std::string& text : *texts) out.Note(OneLine(text));
    }
    return released.refused.empty();
}

}  // namespace fixtop
