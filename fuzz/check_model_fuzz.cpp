// SPDX-License-Identifier: Apache-2.0
// The check of class and map files: an input is both, with a line "====" between them.

#include <cstdint>
#include <string_view>

#include "check.h"
#include "diagnostics/module_log.h"
#include "mapping/check/check_model.h"
#include "mapping/check/findings.h"
#include "mapping/translators/semantic_modules.h"
#include "platform/resources.h"

namespace fixtop {

namespace {

constexpr std::string_view kBreak = "\n====\n";

CompiledResource g_files[] = {
    {"fuzzed_classes.xml", ""}, {"fuzzed_map.xml", ""}, {"fuzzed_units.xml", "<CCDMUnitFile/>"}};

bool Step(FIIteratorBase*, int) {
    return false;
}
int List(FIIteratorBase*, FIValue*, int) {
    return 0;
}
FIEntry* Top() {
    return nullptr;
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    static CompiledResources table(g_files);
    RegisterResources(table);
    static constexpr NamedFunction kFunctions[] = {
        {"CTStep", Step}, {"CTList", List}, {"MakeTop", Top}};
    OfferSemanticModule("m.dll", kFunctions);
    SetLogFile("/dev/null");
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view input(reinterpret_cast<const char*>(data), size);
    const std::size_t at = input.find(kBreak);
    g_files[0].bytes = input.substr(0, at);
    g_files[1].bytes = at == std::string_view::npos ? "" : input.substr(at + kBreak.size());
    ModelFiles files;
    files.classes = "fuzzed_classes.xml";
    files.map = "fuzzed_map.xml";
    files.units = "fuzzed_units.xml";
    files.unitResources = files.classResources = g_files;
    const std::vector<Finding> findings = CheckModel(files);
    for (const Finding& each : findings) {
        Check(!each.file.empty() && !each.text.empty(), "a finding says where and what");
        Check(each.line >= 0, "lines are counted from 1");
    }
    Check(findings.size() <= Findings::kMost + 1, "findings have an end");
    return 0;
}

}  // namespace fixtop
