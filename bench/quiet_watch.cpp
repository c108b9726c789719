// SPDX-License-Identifier: Apache-2.0
#include "quiet_watch.h"

#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <fstream>
#include <string>
#include <thread>

namespace fixtop::bench {

namespace {

constexpr std::chrono::milliseconds kMoment(500);
// Processors that others may keep busy on a machine that counts as quiet.
constexpr double kQuiet = 0.1;

double Seconds(const timeval& time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) * 1e-6;
}

double TimeOf(int who) {
    rusage usage{};
    getrusage(who, &usage);
    return Seconds(usage.ru_utime) + Seconds(usage.ru_stime);
}

// Of all processors, from the first line of the kernel's statistics: user, nice, system, idle,
// waiting for devices, interrupts of both kinds, and what other machines took.
double BusySeconds() {
    std::ifstream file("/proc/stat");
    std::string word;
    double user, nice, system, idle, waiting, hard, soft, stolen;
    if (!(file >> word >> user >> nice >> system >> idle >> waiting >> hard >> soft >> stolen)) {
        return -1;
    }
    const double ticks = user + nice + system + hard + soft + stolen;
    return ticks / static_cast<double>(sysconf(_SC_CLK_TCK));
}

}  // namespace

QuietWatch::QuietWatch() : before_(Take()) {
    std::this_thread::sleep_for(kMoment);
    start_ = Take();
}

void QuietWatch::Print() const {
    const Sample now = Take();
    if (now.busy < 0) {
        std::printf("\nthe machine does not tell what others do\n");
        return;
    }
    const double before = Others(before_, start_), since = Others(start_, now);
    const bool is_quiet = std::max(before, since) <= kQuiet;
    std::printf(
        "\nprocessors busy with others: %.2f before, %.2f during the run: the machine was %s\n",
        before, since, is_quiet ? "quiet" : "NOT quiet");
}

QuietWatch::Sample QuietWatch::Take() {
    const std::chrono::duration<double> wall = std::chrono::steady_clock::now().time_since_epoch();
    return {wall.count(), BusySeconds(), TimeOf(RUSAGE_SELF) + TimeOf(RUSAGE_CHILDREN)};
}

// The kernel counts in ticks, which may hide a little of what others do or make it less than none.
double QuietWatch::Others(const Sample& from, const Sample& to) {
    const double others = (to.busy - from.busy) - (to.own - from.own);
    return std::max(0.0, others / (to.wall - from.wall));
}

}  // namespace fixtop::bench
