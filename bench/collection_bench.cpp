// SPDX-License-Identifier: Apache-2.0
// A collection of 100,000 variables beside what bounds it: the same loop on the bare host, and a
// bare parse of the text in which it is kept.

#include <benchmark/benchmark.h>
#include <expat.h>
#include <malloc.h>

#include <array>
#include <map>
#include <string>
#include <vector>

#include "fixtop/fixtop.h"
#include "plant.h"
#include "ratio_table.h"

namespace fixtop {

namespace {

using bench::PlantOf;
using benchmark::State;
using Collected = Ref<FICollectionBase>;

constexpr std::array kVariables = {"Vapour Fraction", "Temperature",    "Pressure", "Molar Flow",
                                   "Mass Flow",       "Molar Enthalpy", "Heat Flow"};
constexpr int kPlant = 16000;
constexpr char kStreams[] = "appModel.FlowSheetObjects.Streams";

int SizeOf(const State& state) {
    return static_cast<int>(state.range(0));
}

// Variables of streams, stream by stream.
Collected Select(int items) {
    auto selection = Collected::Adopt(FixtopMakeCollection());
    Ref<FIIteratorBase> it = PlantOf(kPlant).At(kStreams);
    for (bool on = it->DownFirst(); on && selection->Count() < items; on = it->Next()) {
        for (const char* variable : kVariables) {
            if (selection->Count() == items || !it->SeekChild(variable)) break;
            selection->Add(*it);
            it->Up();
        }
    }
    return selection;
}

FICollectionBase& SelectionOf(int items) {
    static std::map<int, Collected> selections;
    Collected& selection = selections[items];
    if (!selection) selection = Select(items);
    return *selection;
}

std::string TextOf(int items) {
    FIValue text;
    SelectionOf(items).ToXml(text);
    return text.ToText();
}

// ---- values, units and states ----

void bulk_read(State& state) {
    FICollectionBase& selection = SelectionOf(SizeOf(state));
    if (selection.Count() != SizeOf(state)) state.SkipWithError("the plant is too small");
    const std::array<FIValue, 3> rows = {FIValue("value"), FIValue("uom"), FIValue("status")};
    std::vector<FIValue> values(rows.size() * selection.Count());
    for (auto _ : state) {
        selection.GetRows(rows.data(), static_cast<int>(rows.size()), values.data());
        benchmark::DoNotOptimize(values.data());
    }
}

// The number in the unit in which it is shown, the name of that, and the state.
void AskHost(host::HostServices& services, host::Viewable& object,
             const host::VarDescription& variable) {
    const host::VarType type =
        services.GetUnitConvTypeFromVarType(object.GetVariableUnitType(variable));
    const host::UnitRecord* unit = services.def_unit(type, services.DefaultUnits());
    const double number = object.GetRealValue(variable);
    benchmark::DoNotOptimize(unit ? services.calc_ounit(number, unit) : number);
    benchmark::DoNotOptimize(unit ? unit->name : nullptr);
    host::ModifyState found = host::kSpecified;
    int detail = 0;
    services.GetVariableStatus(&object, variable, found, detail);
    benchmark::DoNotOptimize(found);
}

void bare_host_loop(State& state) {
    bench::OpenPlant& plant = PlantOf(kPlant);
    std::vector<host::VarDescription> variables;
    for (const char* variable : kVariables) {
        variables.push_back(plant.InHost(bench::StreamName(0), variable).description);
    }
    host::HostServices& services = plant.Host().Services();
    for (auto _ : state) {
        host::FlowSheetObjectIterator objects =
            plant.Host().ActiveCase()->MainFlowSheet()->Objects();
        int left = SizeOf(state);
        for (auto* object = objects.Reset(); object && left > 0; object = objects.Next()) {
            for (const auto& variable : variables) {
                if (left-- > 0) AskHost(services, *object, variable);
            }
        }
        if (left > 0) state.SkipWithError("the plant is too small");
    }
}

// ---- texts ----

// Without a top no node is looked for. Its end is not counted.
void load_unresolved(State& state) {
    const std::string text = TextOf(SizeOf(state));
    double bytes = 0;
    for (auto _ : state) {
        state.PauseTiming();
        auto selection = Collected::Adopt(FixtopMakeCollection());
        const std::size_t before = mallinfo2().uordblks;
        state.ResumeTiming();
        if (!selection->FromXml(text.c_str())) state.SkipWithError("the text is not read");
        state.PauseTiming();
        bytes = static_cast<double>(mallinfo2().uordblks - before) / SizeOf(state);
        selection.Reset();
        state.ResumeTiming();
    }
    state.counters["bytes_an_item"] = bytes;
}

void save(State& state) {
    FICollectionBase& selection = SelectionOf(SizeOf(state));
    FIValue text;
    for (auto _ : state) {
        selection.ToXml(text);
        benchmark::DoNotOptimize(text);
    }
}

void bare_expat_parse(State& state) {
    const std::string text = TextOf(SizeOf(state));
    for (auto _ : state) {
        XML_Parser parser = XML_ParserCreate(nullptr);
        XML_SetElementHandler(
            parser, [](void*, const XML_Char*, const XML_Char**) {}, [](void*, const XML_Char*) {});
        XML_Parse(parser, text.data(), static_cast<int>(text.size()), 1);
        XML_ParserFree(parser);
    }
    state.counters["bytes"] = static_cast<double>(text.size());
}

// ---- making and finding ----

void select(State& state) {
    for (auto _ : state) {
        const Collected selection = Select(SizeOf(state));
        benchmark::DoNotOptimize(selection.Get());
    }
}

void load_and_find(State& state) {
    const std::string text = TextOf(SizeOf(state));
    Ref<FIIteratorBase> top = PlantOf(kPlant).At("");
    for (auto _ : state) {
        auto selection = Collected::Adopt(FixtopMakeCollection());
        if (!selection->Load(text.c_str(), *top)) state.SkipWithError("the text is not read");
    }
}

// Of streams that the case does not have.
void load_missing(State& state) {
    std::string text = TextOf(SizeOf(state));
    const std::string name = "id=\"Stream";
    for (auto at = text.find(name); at != text.npos; at = text.find(name, at + name.size())) {
        text[at + name.size() - 1] = 'n';
    }
    Ref<FIIteratorBase> top = PlantOf(kPlant).At("");
    for (auto _ : state) {
        auto selection = Collected::Adopt(FixtopMakeCollection());
        if (!selection->Load(text.c_str(), *top)) state.SkipWithError("the text is not read");
        const auto first = Ref<FICollectionIteratorBase>::Adopt(selection->MakeIterator());
        if (first->Next() && first->GetWay() != FICollectionIteratorBase::kNoWay) {
            state.SkipWithError("a stream is found that is not there");
        }
    }
}

#define SIZES ->Arg(1000)->Arg(100000)->Unit(benchmark::kMillisecond)
BENCHMARK(bulk_read) SIZES;
BENCHMARK(bare_host_loop) SIZES;
BENCHMARK(load_unresolved) SIZES;
BENCHMARK(save) SIZES;
BENCHMARK(bare_expat_parse) SIZES;
BENCHMARK(select) SIZES;
BENCHMARK(load_and_find) SIZES;
BENCHMARK(load_missing) SIZES;
#undef SIZES

const std::vector<bench::RatioRow> kRows = {
    {"bulk_read", "bare_host_loop", "4"},
    {"load_unresolved", "bare_expat_parse", "4"},
    {"save", "bare_expat_parse", "4"},
};

}  // namespace

}  // namespace fixtop

int main(int argc, char** argv) {
    fixtop::bench::RatioReporter reporter(fixtop::kRows);
    return fixtop::bench::RunBenchmarks(argc, argv, reporter);
}
