// SPDX-License-Identifier: Apache-2.0
#include "ratio_table.h"

#include <cstdio>

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
        const bool counts = run.run_type == Run::RT_Aggregate ? run.aggregate_name == "median"
                                                              : run.repetitions <= 1;
        if (run.error_occurred || !counts) continue;
        const double seconds =
            run.GetAdjustedCPUTime() / benchmark::GetTimeUnitMultiplier(run.time_unit);
        nanoseconds_[run.run_name.function_name + "/" + run.run_name.args] =
            seconds * 1e9 / RowsOf(run);
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
}

int RunBenchmarks(int argc, char** argv, RatioReporter& reporter) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    reporter.PrintTable();
    return 0;
}

}  // namespace fixtop::bench
