// SPDX-License-Identifier: Apache-2.0
// The stages of a column through the neutral view, which shows each as an object, beside the
// profiles of the raw view, which are arrays over the stages.

#include <benchmark/benchmark.h>

#include <stdexcept>
#include <string>

#include "column.h"
#include "fixtop/fixtop.h"
#include "plant.h"

namespace fixtop {

namespace {

using benchmark::State;

Ref<FIIteratorBase> At(FIEntry* root, const std::string& path) {
    auto it = Ref<FIIteratorBase>::Adopt(FixtopMakeIterator(root, false));
    if (!it->SeekPath(FIValue(path.c_str()))) throw std::runtime_error("no such node: " + path);
    return it;
}

void ReadHere(FIIteratorBase& it, FIValue& value) {
    static const FIValue name("value");
    it.GetAttribute(name, value);
    benchmark::DoNotOptimize(value);
}

constexpr const char* kOfStage[] = {"Temperature", "Pressure"};
constexpr const char* kOfProfiles[] = {"Stage Temperature", "Stage Pressure"};

// Temperature and pressure of each stage.
void neutral_stages(State& state) {
    bench::DropPlant();
    bench::OpenPlant plant(bench::MakeColumn(static_cast<int>(state.range(0))));
    const FixtopModelFiles files{nullptr, nullptr, nullptr, nullptr, true};
    const auto root = Ref<FIEntry>::Adopt(FixtopOpenModel(plant.Top(), &files));
    if (!root) throw std::runtime_error("the view does not open");
    const auto it = At(root.Get(), std::string("Flowsheet.UnitOperation(") + bench::kColumn + ")");
    FIValue value;
    long stages = 0;
    for (auto _ : state) {
        stages = 0;
        for (bool on = it->DownFirst(); on; on = it->Next()) {
            it->GetName(value);
            if (value.ToText() != "Stage") continue;
            ++stages;
            for (const char* variable : kOfStage) {
                if (!it->SeekChild(variable)) continue;
                ReadHere(*it, value);
                if (value.Kind() != FIValue::kReal) state.SkipWithError("not a number");
                it->Up();
            }
        }
        it->Up();
    }
    if (stages != state.range(0)) state.SkipWithError("not all stages were shown");
}

void raw_stages(State& state) {
    bench::DropPlant();
    const bench::OpenPlant plant(bench::MakeColumn(static_cast<int>(state.range(0))));
    const auto it = plant.At(std::string("appModel.FlowSheetObjects.UnitOps.") + bench::kProfiles);
    FIValue value;
    for (auto _ : state) {
        for (const char* variable : kOfProfiles) {
            it->SeekChild(variable);
            for (bool on = it->DownFirst(); on; on = it->Next()) ReadHere(*it, value);
            it->Up();
            it->Up();
        }
    }
    if (value.Kind() != FIValue::kReal) state.SkipWithError("not a number");
}

BENCHMARK(neutral_stages)->Arg(10)->Arg(100)->Arg(1000)->Unit(benchmark::kMicrosecond);
BENCHMARK(raw_stages)->Arg(10)->Arg(100)->Arg(1000)->Unit(benchmark::kMicrosecond);

}  // namespace

}  // namespace fixtop
