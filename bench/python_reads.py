# SPDX-License-Identifier: Apache-2.0
"""What python_bench measures of the Python package; a figure a line: name, nanoseconds or bytes."""

import resource
import time

import fixtop

HELD, TURNS, OPENS = 10**6, 1000, 1000


def median_of(work, count, repetitions=5):
    times = []
    for _ in range(repetitions):
        start = time.perf_counter_ns()
        work()
        times.append((time.perf_counter_ns() - start) / count)
    return sorted(times)[len(times) // 2]


def resident():
    with open("/proc/self/statm", encoding="ascii") as file:
        return int(file.read().split()[1]) * resource.getpagesize()


def held(node):
    def work():
        for _ in range(HELD):
            node.value

    return work


def empty():
    for _ in range(HELD):
        pass


def bulk(selection):
    def work():
        for _ in range(TURNS):
            selection.numbers()

    return work


def opens(count):
    for _ in range(count):
        with fixtop.open(fixtop.demo()) as case:
            case.raw.at("appModel.FlowSheetObjects.Streams.Raw Gas.Temperature").value


with fixtop.open(fixtop.demo()) as case:
    node = case.raw.at("appModel.FlowSheetObjects.Streams.Raw Gas.Temperature")
    print("held", median_of(held(node), HELD) - median_of(empty, HELD))
    items = case.find("appModel.FlowSheetObjects.Streams.*.*[(type)=Real]")
    selection = case.select(*items)
    print("items", len(selection))
    print("bulk", median_of(bulk(selection), TURNS * len(selection)))
del case, node, items, selection
opens(100)
before = resident()
print("open", median_of(lambda: opens(OPENS // 5), OPENS // 5))
print("grown", resident() - before)
