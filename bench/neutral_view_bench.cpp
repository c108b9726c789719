// SPDX-License-Identifier: Apache-2.0
// The neutral view beside what bounds it: opening beside a bare parse of the same files, a held
// read and a table of streams beside the same in the raw view, the choice among many translators.

#include <benchmark/benchmark.h>
#include <expat.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <vector>

#include "fixtop/fixtop.h"
#include "plant.h"
#include "ratio_table.h"

namespace fixtop {

namespace {

using bench::PlantOf;
using benchmark::State;

constexpr int kPlant = 1000;

int SizeOf(const State& state) {
    return static_cast<int>(state.range(0));
}

// ---- opening ----

std::vector<std::string> ModelTexts() {
    std::vector<std::string> texts;
    for (const auto& file : std::filesystem::directory_iterator(FIXTOP_RESOURCE_FOLDER)) {
        if (file.path().extension() != ".xml") continue;
        std::ifstream stream(file.path(), std::ios::binary);
        texts.emplace_back(std::istreambuf_iterator<char>(stream),
                           std::istreambuf_iterator<char>());
    }
    return texts;
}

// Its closing is not counted.
void open_neutral_view(State& state) {
    bench::OpenPlant& plant = PlantOf(SizeOf(state));
    for (auto _ : state) {
        auto root = Ref<FIEntry>::Adopt(FixtopOpenModel(plant.Top(), nullptr));
        if (!root) state.SkipWithError("the view does not open");
        state.PauseTiming();
        root.Reset();
        state.ResumeTiming();
    }
}

void bare_expat_parse(State& state) {
    const std::vector<std::string> texts = ModelTexts();
    std::size_t bytes = 0;
    for (const std::string& text : texts) bytes += text.size();
    for (auto _ : state) {
        for (const std::string& text : texts) {
            XML_Parser parser = XML_ParserCreate(nullptr);
            XML_SetElementHandler(
                parser, [](void*, const XML_Char*, const XML_Char**) {},
                [](void*, const XML_Char*) {});
            XML_Parse(parser, text.data(), static_cast<int>(text.size()), 1);
            XML_ParserFree(parser);
        }
    }
    state.counters["bytes"] = static_cast<double>(bytes);
}

// ---- reading ----

struct OpenView {
    explicit OpenView(int objects, bool whole_lists = false) {
        const FixtopModelFiles files{nullptr, nullptr, nullptr, nullptr, whole_lists};
        root = Ref<FIEntry>::Adopt(FixtopOpenModel(PlantOf(objects).Top(), &files));
        if (!root) throw std::runtime_error("the view does not open");
    }
    Ref<FIIteratorBase> At(const std::string& path) const {
        auto it = Ref<FIIteratorBase>::Adopt(FixtopMakeIterator(root.Get(), false));
        if (!it->SeekPath(FIValue(path.c_str()))) throw std::runtime_error("no such node: " + path);
        return it;
    }
    Ref<FIEntry> root;
};

void Read(State& state, FIIteratorBase& it) {
    const FIValue name("value");
    FIValue value;
    for (auto _ : state) {
        it.GetAttribute(name, value);
        benchmark::DoNotOptimize(value);
    }
    if (value.Kind() != FIValue::kReal) state.SkipWithError("not a number");
}

void neutral_held_read(State& state) {
    const OpenView view(SizeOf(state));
    Read(state, *view.At("Flowsheet.Stream#5.Temperature"));
}

void neutral_held_read_in_display_unit(State& state) {
    const OpenView view(SizeOf(state));
    const Ref<FIIteratorBase> it = view.At("Flowsheet.Stream#5.Temperature");
    FIValue out;
    it->SetDisplayUnit(FIValue("F"), FIValue(), out);
    Read(state, *it);
}

void raw_held_read(State& state) {
    Read(state, *PlantOf(SizeOf(state)).At("appModel.FlowSheetObjects.Streams.*#5.Temperature"));
}

// One row a stream: its name, temperature, pressure and flow.
void ReadTable(State& state, FIIteratorBase& it, const std::vector<FIValue>& columns) {
    const FIValue name("value");
    FIValue value;
    int rows = 0;
    for (auto _ : state) {
        rows = 0;
        for (bool on = it.DownFirst(); on; on = it.Next()) {
            bool has_all = true;
            for (const FIValue& column : columns) {
                if (!has_all || !it.SeekChild(column.CStr())) {
                    has_all = false;
                    continue;
                }
                it.GetAttribute(name, value);
                benchmark::DoNotOptimize(value);
                it.Up();
            }
            rows += has_all;
        }
        it.Up();
    }
    state.counters[bench::kRowsCounter] = rows;
}

void neutral_stream_table(State& state) {
    const OpenView view(SizeOf(state));
    ReadTable(state, *view.At("Flowsheet"),
              {FIValue("Temperature"), FIValue("Pressure"), FIValue("MolarFlow")});
}

void neutral_stream_table_whole(State& state) {
    const OpenView view(SizeOf(state), true);
    ReadTable(state, *view.At("Flowsheet"),
              {FIValue("Temperature"), FIValue("Pressure"), FIValue("MolarFlow")});
}

void raw_stream_table(State& state) {
    ReadTable(state, *PlantOf(SizeOf(state)).At("appModel.FlowSheetObjects.Streams"),
              {FIValue("Temperature"), FIValue("Pressure"), FIValue("Molar Flow")});
}

// ---- choosing ----

constexpr char kClasses[] = R"(<QZClassLibrary Name="choice">
 <Class Name="QSISimulation"/>
 <ClassAttributes Name="QSISimulation">
  <Attribute Name="Plant" Type="Object" Multiplicity="1"><ClassName>Plant</ClassName></Attribute>
 </ClassAttributes>
 <Class Name="Plant"/>
 <ClassAttributes Name="Plant">
  <Attribute Name="Heat" Type="Real" Multiplicity="1"/>
 </ClassAttributes>
</QZClassLibrary>
)";

// A map in which the attribute has translators of so many containers that it does not lie in, and
// one of any.
std::string MapOf(int translators) {
    std::string map = R"(<CCDMMapFile Name="choice">
 <TranslateName>Own</TranslateName>
 <Linkage><DLL>fixtop.dll</DLL></Linkage>
 <Translate Type="Function">Find1</Translate>
 <TopNode FunctionName="GetTopHovexEntry"/>
 <Class Name="QSISimulation">
  <Attribute Name="Plant"><Translate Type="Map">FlowSheetObjects.Streams.*</Translate></Attribute>
 </Class>
 <Class Name="Plant">
)";
    const std::string translate = "><Translate Type=\"Map\">Temperature</Translate></Attribute>\n";
    for (int i = 0; i < translators; ++i) {
        map += "  <Attribute Name=\"Heat\" Container=\"Container" + std::to_string(i) + '"' +
               translate;
    }
    return map + "  <Attribute Name=\"Heat\"" + translate + " </Class>\n</CCDMMapFile>\n";
}

std::string Written(const std::string& name, const std::string& text) {
    const auto path = std::filesystem::temp_directory_path() / name;
    std::ofstream(path) << text;
    return path.string();
}

void child_among_translators(State& state) {
    const std::string classes = Written("fixtop-bench-classes.xml", kClasses);
    const std::string map = Written("fixtop-bench-map.xml", MapOf(SizeOf(state)));
    const FixtopModelFiles files{classes.c_str(), map.c_str(), nullptr, "Own"};
    const auto root = Ref<FIEntry>::Adopt(FixtopOpenModel(PlantOf(100).Top(), &files));
    if (!root) throw std::runtime_error("the view does not open");
    const auto it = Ref<FIIteratorBase>::Adopt(FixtopMakeIterator(root.Get(), false));
    if (!it->SeekChild("Plant")) throw std::runtime_error("no node Plant");
    for (auto _ : state) {
        if (!it->SeekChild("Heat")) state.SkipWithError("none was chosen");
        it->Up();
    }
}

BENCHMARK(open_neutral_view)->Arg(kPlant)->Unit(benchmark::kMillisecond);
BENCHMARK(bare_expat_parse)->Arg(kPlant)->Unit(benchmark::kMillisecond);
BENCHMARK(neutral_held_read)->Arg(100)->Arg(1000);
BENCHMARK(neutral_held_read_in_display_unit)->Arg(100)->Arg(1000);
BENCHMARK(raw_held_read)->Arg(100)->Arg(1000);
BENCHMARK(neutral_stream_table)->Arg(100)->Arg(1000)->Unit(benchmark::kMillisecond);
BENCHMARK(neutral_stream_table_whole)
    ->Arg(100)
    ->Arg(1000)
    ->Arg(10000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(raw_stream_table)->Arg(100)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);
BENCHMARK(child_among_translators)->Arg(1)->Arg(10)->Arg(1000);

const std::vector<bench::RatioRow> kRows = {
    {"open_neutral_view", "bare_expat_parse", "2"},
    {"neutral_held_read", "raw_held_read", "8"},
    {"neutral_held_read_in_display_unit", "raw_held_read", ""},
    {"neutral_stream_table", "raw_stream_table", ""},
    {"neutral_stream_table_whole", "raw_stream_table", "10"},
    {"neutral_stages", "raw_stages", "10"},
};

}  // namespace

}  // namespace fixtop

using namespace fixtop;

int main(int argc, char** argv) {
    bench::RatioReporter reporter(kRows);
    if (const int failed = bench::RunBenchmarks(argc, argv, reporter)) return failed;
    const double among_one = reporter.Nanoseconds("child_among_translators", 1);
    const double among_thousand = reporter.Nanoseconds("child_among_translators", 1000);
    if (among_one > 0 && among_thousand > 0) {
        std::printf("\na translator among 1,000 costs a child %.2f ns\n",
                    (among_thousand - among_one) / 999);
    }
    return 0;
}
