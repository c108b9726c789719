// SPDX-License-Identifier: Apache-2.0
// The program and the case files that it opens: loading beside a bare parse of the same file,
// saving, the start, a table beside the same reads in the client library. What is compared takes
// turns; the median of the processor times of each counts.

#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

#include "bomb.h"
#include "casehost/case_file.h"
#include "casehost/case_host.h"
#include "fixtop/client.h"
#include "plant.h"
#include "quiet_watch.h"

extern char** environ;

namespace fixtop {

namespace {

constexpr int kRounds = 7;
constexpr int kStarts = 40;
constexpr int kStreams = 10'000;
constexpr const char* kAllStreams = "appModel.FlowSheetObjects.Streams";
constexpr const char* kStreamPaths = "appModel.FlowSheetObjects.Streams.*";
constexpr const char* kCells[] = {"\"Vapour Fraction\"", "Temperature",   "Pressure",
                                  "\"Molar Flow\"",      "\"Mass Flow\"", "\"Molar Enthalpy\"",
                                  "\"Heat Flow\""};

struct Run {
    double seconds;
    double peak_bytes;
    double writes;
    bool succeeded;
};

// The write calls of a process that has ended and is not waited for yet.
double WritesOf(pid_t ended) {
    std::ifstream counts("/proc/" + std::to_string(ended) + "/io");
    double calls = 0;
    for (std::string name; counts >> name >> calls;) {
        if (name == "syscw:") return calls;
    }
    throw std::runtime_error("the system does not count write calls");
}

double Seconds(const timeval& time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) * 1e-6;
}

// Another program to its end; what it writes is dropped.
Run AnyRunOf(std::vector<std::string> line) {
    std::vector<char*> arguments;
    for (std::string& each : line) arguments.push_back(each.data());
    arguments.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    pid_t child = 0;
    const int failed =
        posix_spawnp(&child, arguments[0], &actions, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    if (failed != 0) throw std::runtime_error("can't run " + line[0]);
    siginfo_t ended;
    waitid(P_PID, static_cast<id_t>(child), &ended, WEXITED | WNOWAIT);
    const double writes = WritesOf(child);
    int status = 0;
    rusage usage{};
    wait4(child, &status, 0, &usage);
    if (!WIFEXITED(status)) throw std::runtime_error(line[0] + " was ended");
    return {Seconds(usage.ru_utime) + Seconds(usage.ru_stime),
            static_cast<double>(usage.ru_maxrss) * 1024, writes, WEXITSTATUS(status) == 0};
}

// The same of one that has to succeed.
Run RunOf(const std::vector<std::string>& line) {
    const Run run = AnyRunOf(line);
    if (!run.succeeded) throw std::runtime_error(line[0] + " failed");
    return run;
}

// The file of a plant, which another process makes: the memory that it takes would else be seen in
// each program that is run.
std::string PlantFile(int objects) {
    static std::map<int, std::string> files;
    std::string& file = files[objects];
    if (!file.empty()) return file;
    int ends[2];
    if (pipe(ends) != 0) throw std::runtime_error("no pipe");
    const pid_t child = fork();
    if (child == 0) {
        const std::string made = bench::SavedPlant(objects);
        const bool told = write(ends[1], made.data(), made.size()) > 0;
        _exit(told ? 0 : 1);
    }
    close(ends[1]);
    std::array<char, 4096> path;
    const ssize_t size = read(ends[0], path.data(), path.size());
    close(ends[0]);
    waitpid(child, nullptr, 0);
    if (size <= 0) throw std::runtime_error("no plant");
    return file.assign(path.data(), static_cast<std::size_t>(size));
}

double TimeOf(const std::function<void()>& work) {
    timespec before, behind;
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &before);
    work();
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &behind);
    return static_cast<double>(behind.tv_sec - before.tv_sec) +
           static_cast<double>(behind.tv_nsec - before.tv_nsec) * 1e-9;
}

using Measure = std::function<double()>;

double Median(std::vector<double> numbers) {
    std::sort(numbers.begin(), numbers.end());
    return numbers[numbers.size() / 2];
}

// The row of two measures, times of so many pieces each, that take turns.
void Compare(const std::string& what, const Measure& work, const Measure& base, const char* target,
             double pieces = 1, double base_pieces = 1) {
    std::vector<double> of_work, of_base;
    for (int round = 0; round < kRounds; ++round) {
        of_work.push_back(work() / pieces * 1e6);
        of_base.push_back(base() / base_pieces * 1e6);
    }
    const double each = Median(of_work), its_base = Median(of_base);
    std::printf("%-46s %12.4g %12.4g %8.3g  %s\n", what.c_str(), each, its_base, each / its_base,
                target);
}

void CompareLoads() {
    for (const int size : {1000, 10'000, 100'000}) {
        const std::string file = PlantFile(size);
        Compare(
            "load to bare parse, " + std::to_string(size) + " objects",
            [&] { return TimeOf([&] { bench::LoadPlant(file); }); },
            [&] { return TimeOf([&] { bench::ParseJson(file); }); }, "0.6");
    }
}

// What the program needs for a file beside what it needs for a small one.
void ComparePeaks() {
    const double least = RunOf({FIXTOP_PROGRAM, "ls", PlantFile(10)}).peak_bytes;
    for (const int size : {10'000, 100'000}) {
        const std::string file = PlantFile(size);
        const double peak = RunOf({FIXTOP_PROGRAM, "ls", file}).peak_bytes - least;
        const auto bytes = static_cast<double>(std::filesystem::file_size(file));
        const std::string what = "peak memory to file, " + std::to_string(size) + " objects";
        std::printf("%-46s %10.4gMB %10.4gMB %8.3g  2.5\n", what.c_str(), peak / 1e6, bytes / 1e6,
                    peak / bytes);
    }
}

// An archive that says what it inflates to is refused by its directory; one that lies is inflated
// up to the limit.
void CompareRefusals() {
    const std::string small = PlantFile(10);
    const double least = RunOf({FIXTOP_PROGRAM, "ls", small}).peak_bytes;
    const std::string bomb = bench::MakeBomb();
    for (const std::string what : {"a bomb", "a bomb that lies"}) {
        double peak = 0;
        const auto refuse = [&] {
            const Run run = AnyRunOf({FIXTOP_PROGRAM, "ls", bomb});
            if (run.succeeded) throw std::runtime_error(what + " was opened");
            peak = run.peak_bytes;
            return run.seconds;
        };
        Compare(
            "refusing " + what + " to opening a small file", refuse,
            [&] {
                return RunOf({FIXTOP_PROGRAM, "ls", small}).seconds;
            },
            "");
        std::printf("%-46s %10.4gMB %10.4gMB %8.3g\n", ("its peak memory, " + what).c_str(),
                    peak / 1e6, least / 1e6, peak / least);
        bench::MakeBombLie(bomb);
    }
    std::filesystem::remove(bomb);
}

void CompareSaves() {
    constexpr int kFew = 10'000, kMany = 100'000;
    casehost::RegisterCaseFiles();
    casehost::CaseHost host;
    const std::string target = PlantFile(kFew) + ".saved.json";
    const auto save = [&](casehost::Case& plant) {
        return TimeOf([&] {
            if (!host.Save(plant, target)) throw std::runtime_error("can't save");
        });
    };
    casehost::Case& many = *host.Open(PlantFile(kMany)).opened;
    casehost::Case& few = *host.Open(PlantFile(kFew)).opened;
    Compare(
        "save of 100,000 to 10,000, per object", [&] { return save(many); },
        [&] { return save(few); }, "1.2", kMany, kFew);
    std::filesystem::remove(target);
}

double StartsOf(const std::vector<std::string>& line) {
    double seconds = 0;
    for (int i = 0; i < kStarts; ++i) seconds += RunOf(line).seconds;
    return seconds;
}

void CompareStarts() {
    Compare(
        "fixtop --version to true",
        [] {
            return StartsOf({FIXTOP_PROGRAM, "--version"});
        },
        [] { return StartsOf({"true"}); }, "4", kStarts, kStarts);
}

void ReadInLibrary(const client::Case& plant, const std::vector<client::Pattern>& cells) {
    client::Pattern(kStreamPaths).ForEach(plant.Top(), [&](const client::Place& stream) {
        for (const client::Pattern& cell : cells) {
            const auto found = cell.First(stream.node);
            if (!found || !found->node.Read().value.IsNumber()) {
                throw std::runtime_error("no number");
            }
        }
        return true;
    });
}

// The program's own time for a table, without that of opening the case.
void CompareTables() {
    const std::string file = PlantFile(kStreams);
    const client::Case plant = client::Case::Open(file);
    std::vector<std::string> line = {FIXTOP_PROGRAM, "table", file, kStreamPaths};
    line.insert(line.end(), std::begin(kCells), std::end(kCells));
    const std::vector<client::Pattern> cells(std::begin(kCells), std::end(kCells));
    const double count = static_cast<double>(kStreams) * static_cast<double>(cells.size());
    Compare(
        "cell of fixtop table to one of the library",
        [&] {
            return RunOf(line).seconds - RunOf({FIXTOP_PROGRAM, "ls", file}).seconds;
        },
        [&] { return TimeOf([&] { ReadInLibrary(plant, cells); }); }, "2.5", count, count);
}

// Words that make a table of a whole case, each on long lists beside short ones.
void CompareGrowth() {
    constexpr int kFew = 500, kMany = 4000;
    const std::vector<std::string> lines[] = {
        {"streams", "--composition"}, {"report"}, {"find", "**.Temperature"}};
    for (const std::vector<std::string>& words : lines) {
        const auto run = [&](int objects) {
            std::vector<std::string> line = {FIXTOP_PROGRAM, words[0], PlantFile(objects)};
            line.insert(line.end(), words.begin() + 1, words.end());
            return RunOf(line).seconds;
        };
        Compare(
            words[0] + " of 4,000 to 500, per object", [&] { return run(kMany); },
            [&] { return run(kFew); }, "1.2", kMany, kFew);
    }
}

// What each further line costs in write calls, in words that write a line an object.
void CountWrites() {
    constexpr int kFew = 500, kMany = 4000;
    constexpr double kThousands = (kMany - kFew) / 1000.0;
    const std::vector<std::string> lines[] = {
        {"find", "**.Temperature"}, {"ls", kAllStreams}, {"table", kStreamPaths, "Temperature"}};
    for (const std::vector<std::string>& words : lines) {
        const auto writes = [&](int objects) {
            std::vector<std::string> line = {FIXTOP_PROGRAM, words[0], PlantFile(objects)};
            line.insert(line.end(), words.begin() + 1, words.end());
            return RunOf(line).writes;
        };
        const double more = writes(kMany) - writes(kFew);
        std::printf("%-46s %12.4g %12.4g %8.3g  10\n",
                    ("write calls of " + words[0] + " to 1,000 lines").c_str(), more, kThousands,
                    more / kThousands);
    }
}

}  // namespace

}  // namespace fixtop

using namespace fixtop;

int main() {
    try {
        const bench::QuietWatch watch;
        std::printf("%-46s %12s %12s %8s  %s\n", "", "us", "base, us", "ratio", "target");
        ComparePeaks();  // before this process takes much itself
        CompareRefusals();
        CompareStarts();
        CompareLoads();
        CompareSaves();
        CompareTables();
        CompareGrowth();
        CountWrites();
        watch.Print();
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
}
