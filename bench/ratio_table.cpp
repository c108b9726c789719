// SPDX-License-Identifier: Apache-2.0
#include "ratio_table.h"

#include <algorithm>
#include <array>
#include <cstdio>

#include "quiet_watch.h"

namespace fixtop::bench {

namespace {

constexpr int kSizes[] = {10, 100, 1000, 10000, 100000};

// What one iteration's time is divided by: tables of unequal length are compared row by row.
double RowsOf(const benchmark::BenchmarkReporter::Run& run) {
    const auto rows = run.counters.find(kRowsCounter);
    return rows == run.counters.end() || rows->second.value <= 0 ? 1 : rows->second.value;
}

}  // namespace

void RatioReporter::ReportRuns(const std::vector<Run>& runs) {
    ConsoleReporter::ReportRuns(runs);
    for (const Run& run : runs) {
        const std::string name = run.run_name.function_name + "/" + run.run_name.args;
        if (run.aggregate_name == "cv") spreads_[name] = run.cpu_accumulated_time;
        const bool counts = run.run_type == Run::RT_Aggregate ? run.aggregate_name == "median"
                                                              : run.repetitions <= 1;
        if (run.error_occurred || !counts) continue;
        const double seconds =
            run.GetAdjustedCPUTime() / benchmark::GetTimeUnitMultiplier(run.time_unit);
        nanoseconds_[name] = seconds * 1e9 / RowsOf(run);
    }
}

double RatioReporter::Nanoseconds(const std::string& name, int size) const {
    const auto found = nanoseconds_.find(name + "/" + std::to_string(size));
    return found == nanoseconds_.end() ? 0.0 : found->second;
}

void RatioReporter::PrintTable() const {
    std::printf("\n%-34s %-22s", "ratio of", "to");
    for (int size : kSizes) std::printf(" %10d", size);
    std::printf("  target\n");
    for (const RatioRow& row : rows_) {
        std::printf("%-34s %-22s", row.what, row.baseline);
        for (int size : kSizes) {
            const double time = Nanoseconds(row.what, size);
            const double base = Nanoseconds(row.baseline, size);
            if (time > 0 && base > 0) {
                std::printf(" %10.3g", time / base);
            } else {
                std::printf(" %10s", "-");
            }
        }
        std::printf("  %s\n", row.target);
    }
    if (!spreads_.empty()) PrintSpread();
}

void RatioReporter::PrintSpread() const {
    std::vector<double> spreads;
    for (const auto& each : spreads_) spreads.push_back(each.second);
    std::sort(spreads.begin(), spreads.end());
    const auto widest = std::max_element(
        spreads_.begin(), spreads_.end(),
        [](const auto& one, const auto& other) { return one.second < other.second; });
    std::printf(
        "\nrepetitions lie %.1f %% apart (standard deviation, middle of all), at most %.1f %%: "
        "%s\n",
        100 * spreads[spreads.size() / 2], 100 * widest->second, widest->first.c_str());
}

int RunBenchmarks(int argc, char** argv, RatioReporter& reporter) {
    // What is given behind these stands in their place.
    std::array<std::string, 4> usual = {"--benchmark_repetitions=5", "--benchmark_min_time=0.1",
                                        "--benchmark_enable_random_interleaving=true",
                                        "--benchmark_report_aggregates_only=true"};
    std::vector<char*> arguments = {argv[0]};
    for (std::string& each : usual) arguments.push_back(each.data());
    arguments.insert(arguments.end(), argv + 1, argv + argc);
    int count = static_cast<int>(arguments.size());
    arguments.push_back(nullptr);
    benchmark::Initialize(&count, arguments.data());
    if (benchmark::ReportUnrecognizedArguments(count, arguments.data())) return 2;
    const QuietWatch watch;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    reporter.PrintTable();
    watch.Print();
    return 0;
}

}  // namespace fixtop::bench
