// SPDX-License-Identifier: Apache-2.0
// Elements of arrays of 10 to 10,000 and tables of a thousand streams, beside the host's own reads.

#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "plant.h"
#include "prepared_path.h"

namespace fixtop {

namespace {

using bench::HostVariable;
using bench::OpenPlant;
using benchmark::State;

constexpr int kSmallPlant = 100;
constexpr char kStreams[] = "appModel.FlowSheetObjects.Streams";
constexpr char kFractions[] = "Comp Mole Frac";
const char* const kColumns[] = {"Vapour Fraction", "Temperature", "Pressure", "Molar Flow",
                                "Mass Flow"};

OpenPlant& SmallPlant() {
    return bench::PlantOf(kSmallPlant);
}

int LengthOf(const State& state) {
    return static_cast<int>(state.range(0));
}

std::string ArrayName(const char* kind, const State& state) {
    return kind + std::to_string(LengthOf(state));
}

Ref<FIIteratorBase> AtArray(const char* kind, const State& state) {
    return SmallPlant().At(std::string("appModel.FlowSheetObjects.UnitOps.") + bench::kArrayUnit +
                           '.' + ArrayName(kind, state));
}

double RealOf(FIIteratorBase& node) {
    static const FIValue name("value");
    FIValue value;
    node.GetAttribute(name, value);
    return value.AsDouble();
}

// ---- one element, in the middle ----

void element_by_index(State& state) {
    Ref<FIIteratorBase> it = AtArray("Numbers ", state);
    const int middle = LengthOf(state) / 2;
    for (auto _ : state) {
        it->Down(middle);
        if (RealOf(*it) != middle + 0.5) state.SkipWithError("another element");
        it->Up();
    }
}

void element_by_count(State& state) {
    Ref<FIIteratorBase> it = AtArray("Numbers ", state);
    const int middle = LengthOf(state) / 2;
    const std::string name = "Elem" + std::to_string(middle);
    for (auto _ : state) {
        it->SeekChild(name.c_str());
        if (RealOf(*it) != middle + 0.5) state.SkipWithError("another element");
        it->Up();
    }
}

// As a map says it: "*#%index".
void element_by_place(State& state) {
    Ref<FIIteratorBase> it = AtArray("Numbers ", state);
    const int middle = LengthOf(state) / 2;
    bench::PreparedPath path("*#" + std::to_string(middle));
    for (auto _ : state) {
        path.Walk(*it);
        if (RealOf(*it) != middle + 0.5) state.SkipWithError("another element");
        it->Up();
    }
}

void bare_element_read(State& state) {
    HostVariable array = SmallPlant().InHost(bench::kArrayUnit, ArrayName("Numbers ", state));
    benchmark::DoNotOptimize(array.object);
    for (auto _ : state) {
        array.description.SetOffset(0, LengthOf(state) / 2, false);
        benchmark::DoNotOptimize(array.object->GetRealValue(array.description));
    }
}

void element_by_name(State& state) {
    Ref<FIIteratorBase> it = AtArray("Names ", state);
    const int middle = LengthOf(state) / 2;
    const std::string name = bench::ElementName(middle);
    for (auto _ : state) {
        it->SeekChild(name.c_str());
        if (RealOf(*it) != middle + 0.5) state.SkipWithError("another element");
        it->Up();
    }
}

// The names up to that one as the host tells them.
void bare_names(State& state) {
    HostVariable array = SmallPlant().InHost(bench::kArrayUnit, ArrayName("Names ", state));
    const int middle = LengthOf(state) / 2;
    const std::string wanted = bench::ElementName(middle);
    for (auto _ : state) {
        for (int i = 0; i <= middle; ++i) {
            host::VarDescription name = array.row->offset_descriptions[0];
            name.FillRunning(&i, 1);
            const bool found = array.object->GetTextValue(name) == wanted.c_str();
            if (found != (i == middle)) state.SkipWithError("another element");
        }
    }
}

// ---- all elements ----

void whole_array(State& state) {
    Ref<FIIteratorBase> it = AtArray("Numbers ", state);
    for (auto _ : state) {
        double sum = 0;
        for (bool on = it->DownFirst(); on; on = it->Next()) sum += RealOf(*it);
        it->Up();
        if (sum != 0.5 * LengthOf(state) * LengthOf(state)) state.SkipWithError("another sum");
    }
}

void bare_array(State& state) {
    HostVariable array = SmallPlant().InHost(bench::kArrayUnit, ArrayName("Numbers ", state));
    for (auto _ : state) {
        double sum = 0;
        for (int i = 0; i < LengthOf(state); ++i) {
            array.description.SetOffset(0, i, false);
            sum += array.object->GetRealValue(array.description);
        }
        benchmark::DoNotOptimize(sum);
    }
}

// ---- a table of streams: five numbers and the five fractions of each ----

void stream_table(State& state) {
    Ref<FIIteratorBase> it = bench::PlantOf(LengthOf(state)).At(kStreams);
    std::vector<bench::PreparedPath> columns;
    for (const char* column : kColumns) columns.emplace_back('"' + std::string(column) + '"');
    bench::PreparedPath fractions(std::string("\"") + kFractions + '"');
    int cells = 0;
    for (auto _ : state) {
        cells = 0;
        for (bool row = it->DownFirst(); row; row = it->Next()) {
            for (bench::PreparedPath& column : columns) {
                cells += column.Walk(*it);
                benchmark::DoNotOptimize(RealOf(*it));
                it->Up();
            }
            fractions.Walk(*it);
            for (bool on = it->DownFirst(); on; on = it->Next(), ++cells) {
                benchmark::DoNotOptimize(RealOf(*it));
            }
            it->Up();
            it->Up();
        }
        it->Up();
    }
    if (cells != 10 * LengthOf(state)) state.SkipWithError("another count of cells");
}

void bare_table(State& state) {
    OpenPlant& plant = bench::PlantOf(LengthOf(state));
    std::vector<host::VarDescription> columns;
    for (const char* column : kColumns) {
        columns.push_back(plant.InHost(bench::StreamName(0), column).description);
    }
    host::VarDescription fraction = plant.InHost(bench::StreamName(0), kFractions).description;
    for (auto _ : state) {
        host::FlowSheetObjectIterator objects =
            plant.Host().ActiveCase()->MainFlowSheet()->Objects();
        int row = 0;
        for (auto* object = objects.Reset(); row < LengthOf(state);
             object = objects.Next(), ++row) {
            for (const auto& column : columns)
                benchmark::DoNotOptimize(object->GetRealValue(column));
            for (int i = 0; i < 5; ++i) {
                fraction.SetOffset(0, i, false);
                benchmark::DoNotOptimize(object->GetRealValue(fraction));
            }
        }
    }
}

#define LENGTHS ->Arg(10)->Arg(100)->Arg(1000)->Arg(10000)
BENCHMARK(element_by_index) LENGTHS;
BENCHMARK(element_by_count) LENGTHS;
BENCHMARK(element_by_place) LENGTHS;
BENCHMARK(bare_element_read) LENGTHS;
BENCHMARK(element_by_name) LENGTHS;
BENCHMARK(bare_names) LENGTHS;
BENCHMARK(whole_array) LENGTHS;
BENCHMARK(bare_array) LENGTHS;
BENCHMARK(stream_table)->Arg(1000)->Unit(benchmark::kMicrosecond);
BENCHMARK(bare_table)->Arg(1000)->Unit(benchmark::kMicrosecond);
#undef LENGTHS

}  // namespace

}  // namespace fixtop
