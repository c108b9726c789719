// SPDX-License-Identifier: Apache-2.0
#pragma once

// A reporter that prints Google Benchmark's console lines and, at the end, a table of ratios
// between benchmarks of the same run: absolute times of a borrowed machine mean little.

#include <benchmark/benchmark.h>

#include <map>
#include <string>
#include <vector>

namespace fixtop::bench {

// A counter of this name says how many rows one iteration reads: its ratios are those of one row.
inline constexpr char kRowsCounter[] = "rows";

struct RatioRow {
    const char* what;      // benchmark name without its size
    const char* baseline;  // the same for what it is compared with
    const char* target;    // what is aimed at, as text
};

class RatioReporter : public benchmark::ConsoleReporter {
 public:
    explicit RatioReporter(std::vector<RatioRow> rows) : rows_(std::move(rows)) {}

    void ReportRuns(const std::vector<Run>& runs) override;
    // The table, to be called after the run, with how far repetitions of one benchmark lay apart. A
    // pair that was not measured shows as "-".
    void PrintTable() const;
    // Nanoseconds of one benchmark, or of one row of it, 0 when it was not run.
    double Nanoseconds(const std::string& name, int size) const;

 private:
    void PrintSpread() const;

    std::vector<RatioRow> rows_;
    std::map<std::string, double> nanoseconds_;
    // Standard deviations of the repetitions, as parts of their mean.
    std::map<std::string, double> spreads_;
};

// Runs the benchmarks that the program's arguments choose, five times each in turns where these say
// nothing else, and prints the table of the ratios of their medians and whether the machine was
// quiet.
// Answers what the program ends with; `reporter` then has the figures.
int RunBenchmarks(int argc, char** argv, RatioReporter& reporter);

}  // namespace fixtop::bench
