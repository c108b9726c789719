// SPDX-License-Identifier: Apache-2.0
// What Python adds to the client library: the same reads by both, one after the other.

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "fixtop/client.h"

namespace fixtop {

namespace {

constexpr char kVariable[] = "appModel.FlowSheetObjects.Streams.Raw Gas.Temperature";
constexpr char kVariables[] = "appModel.FlowSheetObjects.Streams.*.*[(type)=Real]";
constexpr int kHeld = 1000000;
constexpr int kTurns = 1000;
constexpr int kOpens = 200;

double MedianOf(const std::function<void()>& work, double count) {
    std::vector<double> times;
    for (int i = 0; i < 5; ++i) {
        const auto start = std::chrono::steady_clock::now();
        work();
        const std::chrono::duration<double, std::nano> took =
            std::chrono::steady_clock::now() - start;
        times.push_back(took.count() / count);
    }
    std::ranges::sort(times);
    return times[times.size() / 2];
}

double Held(const client::Case& open_case) {
    const client::Node node = open_case.At(kVariable);
    double sum = 0;
    const double time = MedianOf(
        [&] {
            for (int i = 0; i < kHeld; ++i) sum += node.Attribute("value").AsDouble();
        },
        kHeld);
    if (sum == 0) std::puts("nothing was read");
    return time;
}

double Bulk(const client::Case& open_case) {
    client::Selection selection(open_case.Top());
    for (const client::Node& node : open_case.Matches(kVariables)) selection.Add(node);
    std::vector<FIValue> values(selection.Size());
    client::SelectedValues into;
    into.values = values;
    return MedianOf(
        [&] {
            for (int i = 0; i < kTurns; ++i) selection.Read(into);
        },
        kTurns * static_cast<double>(selection.Size()));
}

double Open() {
    return MedianOf(
        [] {
            for (int i = 0; i < kOpens; ++i) {
                const auto open_case = client::Case::Open(client::Case::kDemo);
                open_case.At(kVariable).Number();
                open_case.Close();
            }
        },
        kOpens);
}

std::map<std::string, double> OfPython() {
    std::map<std::string, double> figures;
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> lines(popen(FIXTOP_PYTHON_BENCH, "r"),
                                                                &pclose);
    char name[32];
    double figure = 0;
    while (lines && std::fscanf(lines.get(), "%31s %lf", name, &figure) == 2)
        figures[name] = figure;
    return figures;
}

void Row(const char* what, double library, double python) {
    std::printf("%-28s %12.1f %12.1f %8.2f %10.1f\n", what, library, python, python / library,
                python - library);
}

}  // namespace

}  // namespace fixtop

int main() {
    using namespace fixtop;
    double held = 0, bulk = 0;
    {
        const auto open_case = client::Case::Open(client::Case::kDemo);
        held = Held(open_case);
        bulk = Bulk(open_case);
        open_case.Close();
    }
    const double open = Open();
    auto python = OfPython();
    if (python.count("grown") == 0) {
        std::fputs("the Python side ended early\n", stderr);
        return 1;
    }
    std::printf("%-28s %12s %12s %8s %10s\n", "", "library, ns", "Python, ns", "ratio", "more, ns");
    Row("held read", held, python["held"]);
    Row("bulk read, an item", bulk, python["bulk"]);
    Row("open and close", open, python["open"]);
    std::printf("items of the bulk read: %.0f; memory grown over 1,000 opens in Python: %.0f KiB\n",
                python["items"], python["grown"] / 1024);
}
