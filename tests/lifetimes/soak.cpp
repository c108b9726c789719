// SPDX-License-Identifier: Apache-2.0
// A random client of a simulator whose objects come and go: lifetimes_soak STEPS SEED VIEW
// HOST, the view being raw, neutral or mixed, the host the case host or that of the samples. What a
// handle shows must be its own object's or nothing. The run can be repeated by its seed; a failure
// tells the step. FIXTOP_SOAK_ALL goes on behind failures.

#include <cstdio>
#include <cstdlib>
#include <map>
#include <memory>
#include <string>

#include "lifetimes/scene_files.h"
#include "lifetimes/soak_case_host.h"
#include "lifetimes/soak_client.h"
#include "lifetimes/soak_own_host.h"

namespace fixtop {

namespace {

long g_step = 0;
unsigned g_seed = 0;

long g_failures = 0;

// The first one ends the run, unless all are wanted.
void Fail(const std::string& what) {
    std::fprintf(stderr, "seed %u, step %ld: %s\n", g_seed, g_step, what.c_str());
    ++g_failures;
    if (!std::getenv("FIXTOP_SOAK_ALL")) std::_Exit(1);
}

}  // namespace

// Where a sanitizer ends the program.
extern "C" void __asan_on_error() {
    std::fprintf(stderr, "seed %u, step %ld\n", g_seed, g_step);
}

}  // namespace fixtop

using namespace fixtop;

namespace {

using lifetimes::SoakClient;
using lifetimes::World;

const std::map<std::string, SoakClient::Views> kViews = {{"raw", SoakClient::Views::raw},
                                                         {"neutral", SoakClient::Views::neutral},
                                                         {"mixed", SoakClient::Views::mixed}};

template <class Simulator>
std::unique_ptr<World> Make(lifetimes::Dice& dice) {
    return std::make_unique<Simulator>(dice, Fail);
}

const std::map<std::string, std::unique_ptr<World> (*)(lifetimes::Dice&)> kHosts = {
    {"case_host", Make<lifetimes::CaseHostWorld>}, {"own_host", Make<lifetimes::OwnHostWorld>}};

}  // namespace

int main(int argc, char** argv) {
    const bool whole = argc == 5;
    const auto view = whole ? kViews.find(argv[3]) : kViews.end();
    const auto make = whole ? kHosts.find(argv[4]) : kHosts.end();
    const long steps = whole ? std::atol(argv[1]) : 0;
    if (view == kViews.end() || make == kHosts.end() || steps <= 0) {
        std::fprintf(stderr,
                     "usage: lifetimes_soak STEPS SEED raw|neutral|mixed case_host|own_host\n");
        return 2;
    }
    g_seed = static_cast<unsigned>(std::strtoul(argv[2], nullptr, 10));
    const TemporaryFolder folder;
    lifetimes::WriteSceneFiles(folder);
    lifetimes::Dice dice(g_seed);
    const std::unique_ptr<World> world = make->second(dice);
    SoakClient client(*world, dice, view->second, Fail);
    for (g_step = 1; g_step <= steps; ++g_step) client.Step();
    client.LetGo();
    const SoakClient::Counts& counts = client.Count();
    std::printf(
        "%ld steps, %ld answers of live handles, %ld of gone ones, %ld handles outlived their "
        "object, %ld calls\n",
        steps, counts.live, counts.gone, counts.lost, counts.calls);
    const lifetimes::SoakSelections::Counts& items = client.SelectionCount();
    std::printf(
        "collections: %ld values of live items, %ld of gone ones, %ld bulk stores, %ld loads, %ld "
        "calls, %ld of them awaited\n",
        items.reads, items.gone, items.stores, items.loads, items.calls, items.awaited);
    return g_failures == 0 ? 0 : 1;
}
