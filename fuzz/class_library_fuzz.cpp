// SPDX-License-Identifier: Apache-2.0
// Class library text, and the walks over what it defines.

#include "fuzzed_reader.h"
#include "model/attribute_walker.h"
#include "model/class_library.h"

namespace fixtop {

namespace {

// One base may be reached on many ways, and its attributes are then listed that often.
constexpr int kMostSteps = 1000;

void Walk(const CCDMClass& record) {
    CCDMAttributeWalker walker(record);
    int steps = 0;
    for (bool on = walker.First(); on && steps < kMostSteps; on = walker.Next()) ++steps;
    for (bool on = walker.Last(); on && steps < 2 * kMostSteps; on = walker.Prev()) ++steps;
    record.DistanceToClass("B");
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    SetUpFuzzedReader();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (!TakeInput(data, size)) return -1;
    CCDMClassLibrary library;
    library.ReadClassFile(kFuzzedName);
    for (const auto& [name, record] : library.classes) Walk(*record);
    return 0;
}

}  // namespace fixtop
