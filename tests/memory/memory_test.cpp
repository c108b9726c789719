// SPDX-License-Identifier: Apache-2.0
// memory_test <scenario> [step [first]]: plays a scenario, or all of them, and lets memory run out
// in it; at places that take some, spread over all of them, or with a step at each step-th
// allocation from the first; once so that one allocation fails, once so that all do from there on.
//
// Nothing may be thrown out of the module. What it answers differs from the undisturbed answers
// only when it counted a failure. And what is done afterwards, with memory, goes as ever.

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <optional>

#include "memory/client.h"

namespace fixtop {

using namespace memory_test;

namespace {

constexpr int kFailuresTold = 20;
// That are tried in a run without a step.
constexpr std::size_t kPlaces = 200;

// Which allocations fail: each `step`-th from `first`, or, without a step, some.
struct Choice {
    long step = 0;
    long first = 1;
};

class Runner {
 public:
    explicit Runner(const Scenario& scenario) : scenario_(scenario) {}

    // Whether all went well.
    bool Run(const Choice& choice) {
        folder_.emplace();
        lifetimes::WriteSceneFiles(*folder_);
        MakeWorld();
        undisturbed_ = Play().Told();
        for (long number : Numbers(choice)) {
            for (bool onwards : {false, true}) RunOut(number, onwards);
        }
        std::printf("%s: %ld runs, %ld failed\n", scenario_.name, runs_, failures_);
        world_.reset();
        // The others of several runs that share the work may have nothing to do.
        return failures_ == 0 && (runs_ > 0 || choice.first > 1);
    }

 private:
    // In which all has been made that is made once and kept.
    void MakeWorld() {
        world_.reset();
        world_.emplace();
        Play();
    }
    // The allocations that are to fail.
    std::vector<long> Numbers(const Choice& choice) {
        failing_memory::RememberPlaces(choice.step == 0);
        failing_memory::Order(failing_memory::kNone, false);
        Play();
        failing_memory::RememberPlaces(false);
        if (choice.step == 0) return SomeOf(failing_memory::Places());
        std::vector<long> numbers;
        const long last = failing_memory::Counted();
        for (long number = choice.first; number <= last; number += choice.step) {
            numbers.push_back(number);
        }
        return numbers;
    }
    static std::vector<long> SomeOf(const std::vector<long>& places) {
        const std::size_t stride = places.size() / kPlaces + 1;
        std::vector<long> some;
        for (std::size_t i = 0; i < places.size(); i += stride) some.push_back(places[i]);
        return some;
    }
    Client Play() {
        Client client;
        scenario_.play(*world_, client);
        return client;
    }
    void RunOut(long number, bool onwards) {
        ++runs_;
        const int before = FixtopMemoryFailures();
        failing_memory::Order(number, onwards);
        const Client client = Play();
        failing_memory::Order(failing_memory::kNone, false);
        const bool told = FixtopMemoryFailures() != before;
        const bool is_same = client.Told() == undisturbed_;
        if (!client.Escaped().empty()) return Fail(number, onwards, client.Escaped());
        if (!told && !is_same) return Fail(number, onwards, "it answered otherwise without a word");
        if (Play().Told() != undisturbed_) Fail(number, onwards, "afterwards it answers otherwise");
    }
    void Fail(long number, bool onwards, const std::string& what) {
        if (++failures_ <= kFailuresTold) {
            std::printf("%s, allocation %ld%s: %s\n", scenario_.name, number,
                        onwards ? " and all that follow" : "", what.c_str());
        }
        MakeWorld();
    }

    const Scenario& scenario_;
    std::optional<TemporaryFolder> folder_;
    std::optional<World> world_;
    std::string undisturbed_;
    long runs_ = 0;
    long failures_ = 0;
};

}  // namespace

}  // namespace fixtop

using namespace fixtop;

int main(int count, char** arguments) {
    const char* const name = count > 1 ? arguments[1] : "";
    const Choice choice{count > 2 ? std::atol(arguments[2]) : 0,
                        count > 3 ? std::atol(arguments[3]) : 1};
    const bool all = std::strcmp(name, "all") == 0;
    bool played = false, good = true;
    for (const Scenario& scenario : Scenarios()) {
        if (!all && std::strcmp(scenario.name, name) != 0) continue;
        played = true;
        good = Runner(scenario).Run(choice) && good;
    }
    if (!played) std::fprintf(stderr, "usage: memory_test <scenario or all> [step [first]]\n");
    return !played ? 2 : good ? 0 : 1;
}
