// SPDX-License-Identifier: Apache-2.0
// The program's report of each recorded case, from the file to the last table, beside the tree of
// the raw view of the same case, which shows every value without the class library. Both are run in
// turn; the least processor time of each counts.

#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

#include "quiet_watch.h"

extern char** environ;

namespace {

constexpr int kRounds = 15;

double Milliseconds(const timeval& time) {
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_usec) * 1e-3;
}

// Processor time of `fixtop word file`; what it writes is dropped.
double TimeOf(const char* word, const std::string& file) {
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    std::string program = FIXTOP_PROGRAM, first = word, second = file;
    char* arguments[] = {program.data(), first.data(), second.data(), nullptr};
    pid_t child = 0;
    const int failed = posix_spawn(&child, program.c_str(), &actions, nullptr, arguments, environ);
    posix_spawn_file_actions_destroy(&actions);
    if (failed) throw std::runtime_error("can't run " + program);
    int status = 0;
    rusage usage{};
    wait4(child, &status, 0, &usage);
    if (status != 0) throw std::runtime_error(first + " " + file + " failed");
    return Milliseconds(usage.ru_utime) + Milliseconds(usage.ru_stime);
}

std::vector<std::string> Cases() {
    std::vector<std::string> cases = {"demo"};
    const std::filesystem::path folder = std::filesystem::path(FIXTOP_CASES) / "real";
    if (!std::filesystem::is_directory(folder)) return cases;
    for (const auto& file : std::filesystem::directory_iterator(folder)) {
        if (file.path().extension() == ".dwxmz") cases.push_back(file.path().string());
    }
    std::sort(cases.begin() + 1, cases.end());
    return cases;
}

void Compare(const std::string& file) {
    double report = 1e300, tree = 1e300;
    for (int round = 0; round < kRounds; ++round) {
        report = std::min(report, TimeOf("report", file));
        tree = std::min(tree, TimeOf("tree", file));
    }
    const std::string name = std::filesystem::path(file).stem().string();
    std::printf("%-34s %8.1f %8.1f %8.3g\n", name.c_str(), report, tree, report / tree);
}

}  // namespace

int main() {
    try {
        const fixtop::bench::QuietWatch watch;
        std::printf("%-34s %8s %8s %8s\n", "case", "report", "tree", "ratio");
        std::printf("%-34s %8s %8s\n", "", "ms", "ms");
        for (const std::string& file : Cases()) Compare(file);
        watch.Print();
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
}
