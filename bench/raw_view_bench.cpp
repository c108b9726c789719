// SPDX-License-Identifier: Apache-2.0
// The roads that clients take most, over cases of 100 to 100,000 objects, beside what bounds them:
// the bare host call, and the same walk in pugixml's XPath.

#include <benchmark/benchmark.h>
#include <malloc.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <pugixml.hpp>
#include <vector>

#include "fixtop/cursor.h"
#include "fixtop/fixtop.h"
#include "fixtop/host/services.h"
#include "fixtop/reference.h"
#include "plant.h"
#include "prepared_path.h"
#include "ratio_table.h"

namespace fixtop {

namespace {

using bench::OpenPlant;
using bench::PlantOf;
using benchmark::State;

constexpr char kStreams[] = "appModel.FlowSheetObjects.Streams";
constexpr char kWideUnit[] = "appModel.FlowSheetObjects.UnitOps.Wide";

int SizeOf(const State& state) {
    return static_cast<int>(state.range(0));
}

std::string StreamPath(int objects) {
    return std::string(kStreams) + "." + bench::MiddleStream(objects);
}

std::string VariablePath(int objects) {
    return StreamPath(objects) + ".Temperature";
}

// ---- child by name ----

void child_by_name(State& state) {
    const int objects = SizeOf(state);
    Ref<FIIteratorBase> it = PlantOf(objects).At(kStreams);
    const std::string name = bench::MiddleStream(objects);
    for (auto _ : state) {
        benchmark::DoNotOptimize(it->SeekChild(name.c_str()));
        it->Up();
    }
}

void seek_name(State& state) {
    const int objects = SizeOf(state);
    Ref<FIEntry> top = Ref<FIEntry>::Adopt(GetCombinedEntry(nullptr));
    Ref<FIContext> context = PlantOf(objects).ContextAt(kStreams);
    Ref<FICursorBase> cursor = Ref<FICursorBase>::Adopt(context->MakeCursor(kChildCursor));
    const std::string name = bench::MiddleStream(objects);
    for (auto _ : state) benchmark::DoNotOptimize(cursor->SeekName(kFromFirst, name.c_str()));
}

// The one in the middle, by its place, as "*#n" and the functions of maps go.
void nth_stream(State& state) {
    const int objects = SizeOf(state);
    Ref<FIIteratorBase> it = PlantOf(objects).At(kStreams);
    for (auto _ : state) {
        benchmark::DoNotOptimize(it->Down(objects / 2));
        it->Up();
    }
}

void pugixml_child(State& state) {
    const int objects = SizeOf(state);
    pugi::xml_document document;
    bench::FillMirror(objects, document);
    const std::string name = bench::MiddleStream(objects);
    const pugi::xml_node streams =
        document.child("Top").child("appModel").child("FlowSheetObjects").child("Streams");
    for (auto _ : state) benchmark::DoNotOptimize(streams.child(name.c_str()).internal_object());
}

// ---- four-level path ----

void path_of_four(State& state) {
    const int objects = SizeOf(state);
    Ref<FIIteratorBase> it = PlantOf(objects).At("");
    bench::PreparedPath path(StreamPath(objects));
    for (auto _ : state) {
        benchmark::DoNotOptimize(path.Walk(*it));
        while (it->Up()) {
        }
    }
}

void path_of_four_from_text(State& state) {
    const int objects = SizeOf(state);
    Ref<FIIteratorBase> it = PlantOf(objects).At("");
    const FIValue path(StreamPath(objects).c_str());
    for (auto _ : state) {
        benchmark::DoNotOptimize(it->SeekPath(path));
        while (it->Up()) {
        }
    }
}

// The same with more expressions than are remembered, so that each is parsed.
void path_of_four_from_new_text(State& state) {
    const int objects = SizeOf(state);
    Ref<FIIteratorBase> it = PlantOf(objects).At("");
    std::vector<FIValue> paths;
    for (int i = 0; i < std::min(objects, 1000); ++i) {
        paths.emplace_back((std::string(kStreams) + "." + bench::StreamName(i)).c_str());
    }
    std::size_t i = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(it->SeekPath(paths[i]));
        while (it->Up()) {
        }
        i = (i + 1) % paths.size();
    }
}

void pugixml_path(State& state) {
    const int objects = SizeOf(state);
    pugi::xml_document document;
    bench::FillMirror(objects, document);
    const std::string expression =
        "/Top/appModel/FlowSheetObjects/Streams/" + bench::MiddleStream(objects);
    const pugi::xpath_query query(expression.c_str());
    for (auto _ : state)
        benchmark::DoNotOptimize(query.evaluate_node(document).node().internal_object());
}

void pugixml_path_from_text(State& state) {
    const int objects = SizeOf(state);
    pugi::xml_document document;
    bench::FillMirror(objects, document);
    const std::string expression =
        "/Top/appModel/FlowSheetObjects/Streams/" + bench::MiddleStream(objects);
    for (auto _ : state) {
        const pugi::xpath_query query(expression.c_str());
        benchmark::DoNotOptimize(query.evaluate_node(document).node().internal_object());
    }
}

// ---- wildcard with filter ----

void wildcard_filter(State& state) {
    const int objects = SizeOf(state);
    Ref<FIIteratorBase> it = PlantOf(objects).At(kStreams);
    bench::PreparedPath path("*[Temperature=\"" + bench::MiddleTemperature(objects) + "\"]");
    for (auto _ : state) {
        const bool found = path.Walk(*it);
        if (!found) state.SkipWithError("the filter matches nothing");
        it->Up();
    }
}

void pugixml_filter(State& state) {
    const int objects = SizeOf(state);
    pugi::xml_document document;
    bench::FillMirror(objects, document);
    const std::string expression = "/Top/appModel/FlowSheetObjects/Streams/*[Temperature=" +
                                   bench::MiddleTemperature(objects) + "]";
    const pugi::xpath_query query(expression.c_str());
    for (auto _ : state) {
        const pugi::xpath_node found = query.evaluate_node(document);
        if (!found) state.SkipWithError("the filter matches nothing");
    }
}

// ---- held read and store ----

bench::HostVariable BareTemperature(OpenPlant& plant) {
    return plant.InHost(bench::MiddleStream(plant.Objects()), "Temperature");
}

void held_read(State& state) {
    Ref<FIIteratorBase> it = PlantOf(SizeOf(state)).At(VariablePath(SizeOf(state)));
    const FIValue name("value");
    FIValue value;
    for (auto _ : state) {
        it->GetAttribute(name, value);
        benchmark::DoNotOptimize(value);
    }
}

void bare_host_read(State& state) {
    const bench::HostVariable variable = BareTemperature(PlantOf(SizeOf(state)));
    host::Viewable* object = variable.object;
    benchmark::DoNotOptimize(object);
    for (auto _ : state) benchmark::DoNotOptimize(object->GetRealValue(variable.description));
}

// All that a value asks of the host: who has it, the number, and the unit in which it is shown.
void host_calls_of_a_read(State& state) {
    OpenPlant& plant = PlantOf(SizeOf(state));
    const bench::HostVariable variable = BareTemperature(plant);
    const host::VarType type = variable.description.GetVariablePart()->UnitType();
    host::HostServices* services = &plant.Host().Services();
    host::Viewable* object = variable.object;
    benchmark::DoNotOptimize(services);
    benchmark::DoNotOptimize(object);
    for (auto _ : state) {
        benchmark::DoNotOptimize(object->ResolveVariableOwner(variable.description));
        const double number = object->GetRealValue(variable.description);
        const host::UnitRecord* unit = services->def_unit(type, services->DefaultUnits());
        benchmark::DoNotOptimize(services->calc_ounit(number, unit));
    }
}

void store_without_solve(State& state) {
    OpenPlant& plant = PlantOf(SizeOf(state));
    Ref<FIIteratorBase> it = plant.At(VariablePath(SizeOf(state)));
    // A batch holds the solver back; composition edits of another stream are the batch.
    bench::OpenBatch batch(plant);
    const FIValue name("value");
    FIValue out;
    double temperature = 20;
    for (auto _ : state) {
        it->SetAttribute(name, FIValue::OfReal(temperature), 0, out);
        temperature = temperature < 30 ? temperature + 0.001 : 20;
    }
    if (!out.IsNull()) state.SkipWithError(out.CStr());
}

void bare_host_store(State& state) {
    const bench::HostVariable variable = BareTemperature(PlantOf(SizeOf(state)));
    double temperature = 20;
    for (auto _ : state) {
        variable.object->SetRealValue(variable.description, temperature);
        temperature = temperature < 30 ? temperature + 0.001 : 20;
    }
}

// ---- browse, load, memory ----

void browse_60_children(State& state) {
    Ref<FIIteratorBase> it = PlantOf(SizeOf(state)).At(kWideUnit);
    FIValue name;
    int children = 0;
    for (auto _ : state) {
        children = 0;
        for (bool on = it->DownFirst(); on; on = it->Next()) {
            it->GetName(name);
            ++children;
        }
        it->Up();
    }
    state.counters["children"] = children;
}

void bare_host_browse(State& state) {
    host::FlowSheetObjectIterator objects =
        PlantOf(SizeOf(state)).Host().ActiveCase()->MainFlowSheet()->Objects();
    host::Viewable* wide = objects.Reset();
    while (wide && wide->GetName().Str() != "Wide") wide = objects.Next();
    for (auto _ : state) {
        host::VariableNameIterator rows(wide->VariableNames());
        for (auto* row = rows.Reset(); row; row = rows.Next()) benchmark::DoNotOptimize(row->name);
    }
}

// The same children of the mirror, from their parent on.
void pugixml_browse(State& state) {
    pugi::xml_document document;
    bench::FillMirror(SizeOf(state), document);
    const pugi::xml_node wide = document.select_node("//UnitOps/Wide").node();
    const pugi::xpath_query children("*");
    std::size_t count = 0;
    for (auto _ : state) {
        const pugi::xpath_node_set found = children.evaluate_node_set(wide);
        count = found.size();
        for (const pugi::xpath_node& each : found) benchmark::DoNotOptimize(each.node().name());
    }
    state.counters["children"] = static_cast<double>(count);
}

void case_load(State& state) {
    const std::string file = bench::SavedPlant(SizeOf(state));
    for (auto _ : state) bench::LoadPlant(file);
    state.counters["bytes"] = static_cast<double>(std::filesystem::file_size(file));
}

void bare_json_parse(State& state) {
    const std::string file = bench::SavedPlant(SizeOf(state));
    for (auto _ : state) bench::ParseJson(file);
}

void held_references(State& state) {
    Ref<FIIteratorBase> it = PlantOf(SizeOf(state)).At(VariablePath(SizeOf(state)));
    constexpr int kCount = 1000;
    std::vector<FIReferenceBase*> held(kCount);
    double bytes = 0;
    for (auto _ : state) {
        const std::size_t before = mallinfo2().uordblks;
        for (FIReferenceBase*& reference : held) reference = it->MakeReference();
        bytes = static_cast<double>(mallinfo2().uordblks - before) / kCount;
        for (FIReferenceBase* reference : held) reference->Release();
    }
    state.counters["bytes_each"] = bytes;
}

// A reference on a variable of each of the first streams, as a client holds them, and what a read
// of them at random costs beside the same reads on the host.
constexpr int kHeld = 10000;

// The order in which they are read: each once, far from the one before.
int ScatteredAt(int i) {
    return static_cast<int>(i * 7919LL % kHeld);
}

std::vector<Ref<FIReferenceBase>> HoldEach(OpenPlant& plant) {
    Ref<FIIteratorBase> it = plant.At(kStreams);
    std::vector<Ref<FIReferenceBase>> held;
    held.reserve(kHeld);
    for (int i = 0; i < kHeld && it->Down(i); ++i) {
        it->SeekChild("Temperature");
        held.push_back(Ref<FIReferenceBase>::Adopt(it->MakeReference()));
        it->Up();
        it->Up();
    }
    return held;
}

void held_references_each(State& state) {
    OpenPlant& plant = PlantOf(SizeOf(state));
    double bytes = 0;
    for (auto _ : state) {
        const std::size_t before = mallinfo2().uordblks;
        const auto held = HoldEach(plant);
        bytes = static_cast<double>(mallinfo2().uordblks - before) / kHeld;
    }
    state.counters["bytes_each"] = bytes;
}

void random_held_read(State& state) {
    const auto held = HoldEach(PlantOf(SizeOf(state)));
    const FIValue name("value");
    FIValue value;
    int i = 0;
    for (auto _ : state) {
        held[ScatteredAt(i)]->GetAttribute(name, value);
        benchmark::DoNotOptimize(value);
        i = (i + 1) % kHeld;
    }
}

void bare_host_random(State& state) {
    const bench::HostVariable first = BareTemperature(PlantOf(SizeOf(state)));
    std::vector<host::Viewable*> objects;
    host::FlowSheetObjectIterator all =
        PlantOf(SizeOf(state)).Host().ActiveCase()->MainFlowSheet()->Objects();
    for (host::Viewable* each = all.Reset(); each; each = all.Next()) objects.push_back(each);
    int i = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(objects[ScatteredAt(i)]->GetRealValue(first.description));
        i = (i + 1) % kHeld;
    }
}

#define SIZES ->Arg(100)->Arg(1000)->Arg(10000)->Arg(100000)
BENCHMARK(child_by_name) SIZES;
BENCHMARK(seek_name) SIZES;
BENCHMARK(nth_stream) SIZES;
BENCHMARK(pugixml_child) SIZES;
BENCHMARK(path_of_four) SIZES;
BENCHMARK(path_of_four_from_text) SIZES;
BENCHMARK(path_of_four_from_new_text) SIZES;
BENCHMARK(pugixml_path) SIZES;
BENCHMARK(pugixml_path_from_text) SIZES;
BENCHMARK(wildcard_filter) SIZES;
BENCHMARK(pugixml_filter) SIZES;
BENCHMARK(held_read) SIZES;
BENCHMARK(bare_host_read) SIZES;
BENCHMARK(host_calls_of_a_read) SIZES;
BENCHMARK(store_without_solve) SIZES;
BENCHMARK(bare_host_store) SIZES;
BENCHMARK(browse_60_children) SIZES;
BENCHMARK(bare_host_browse) SIZES;
BENCHMARK(pugixml_browse) SIZES;
BENCHMARK(case_load) SIZES->Unit(benchmark::kMillisecond);
BENCHMARK(bare_json_parse) SIZES->Unit(benchmark::kMillisecond);
BENCHMARK(held_references)->Arg(100)->Arg(100000);
BENCHMARK(held_references_each)->Arg(kHeld)->Unit(benchmark::kMillisecond);
BENCHMARK(random_held_read)->Arg(kHeld);
BENCHMARK(bare_host_random)->Arg(kHeld);
#undef SIZES

const std::vector<bench::RatioRow> kRows = {
    {"child_by_name", "pugixml_child", ""},
    {"path_of_four", "pugixml_path", "below 1"},
    {"path_of_four_from_text", "pugixml_path_from_text", ""},
    {"path_of_four_from_text", "path_of_four", "1.35"},
    {"path_of_four_from_new_text", "path_of_four", ""},
    {"wildcard_filter", "pugixml_filter", "0.8"},
    {"held_read", "bare_host_read", "9"},
    {"held_read", "host_calls_of_a_read", ""},
    {"random_held_read", "bare_host_random", "8"},
    {"store_without_solve", "bare_host_store", ""},
    {"browse_60_children", "bare_host_browse", "18"},
    {"browse_60_children", "pugixml_browse", "1"},
    {"case_load", "bare_json_parse", ""},
    {"element_by_index", "bare_element_read", "8"},
    {"element_by_count", "bare_element_read", "alike at all lengths"},
    {"element_by_place", "bare_element_read", "alike at all lengths"},
    {"element_by_name", "bare_names", ""},
    {"whole_array", "bare_array", "5"},
    {"stream_table", "bare_table", "15"},
};

void PrintTargets(const bench::RatioReporter& reporter) {
    std::printf(
        "\nseek_name among 100,000 siblings costs %.2f times what it costs among 100 (target: "
        "10)\n",
        reporter.Nanoseconds("seek_name", 100000) / reporter.Nanoseconds("seek_name", 100));
    std::printf(
        "nth_stream of 10,000 costs %.2f times what it costs of 100 (target: 1.2)\n",
        reporter.Nanoseconds("nth_stream", 10000) / reporter.Nanoseconds("nth_stream", 100));
    for (const char* road : {"element_by_index", "element_by_count", "element_by_place"}) {
        std::printf(
            "%s in an array of 10,000 costs %.2f times what it costs in one of 10 (target: 1)\n",
            road, reporter.Nanoseconds(road, 10000) / reporter.Nanoseconds(road, 10));
    }
    for (int size : {100, 1000, 10000, 100000}) {
        const double allowed = 4 * reporter.Nanoseconds("bare_host_read", size) + 60;
        std::printf("held_read/%d: %.1f ns, allowed %.1f ns\n", size,
                    reporter.Nanoseconds("held_read", size), allowed);
    }
}

}  // namespace

}  // namespace fixtop

using namespace fixtop;

int main(int argc, char** argv) {
    bench::RatioReporter reporter(kRows);
    if (const int failed = bench::RunBenchmarks(argc, argv, reporter)) return failed;
    PrintTargets(reporter);
    return 0;
}
