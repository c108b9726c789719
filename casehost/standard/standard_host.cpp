// SPDX-License-Identifier: Apache-2.0
#include "casehost/standard_host.h"
#include "live/case.h"

#include "casehost/case_file.h"
#include "casehost/importer.h"
#include "process/process_engine.h"
#include "standard/demo_text.h"

namespace fixtop::casehost {

void UseStandardParts(CaseHost& host) {
    RegisterCaseFiles();
    RegisterReader(".dwxmz", ReadDwxmz);
    host.SetEngineMaker([] { return std::make_unique<process::ProcessEngine>(); });
}

OpenResult OpenCase(CaseHost& host, const std::string& path_or_name) {
    if (path_or_name != kDemoName) return host.Open(path_or_name);
    ReadResult demo = ReadCaseText("demo.json", kDemoText);
    if (!demo.data) return {nullptr, std::move(demo.problems)};
    OpenResult result = host.Open(*demo.data);
    result.opened->Solver().SolveOnce();
    const std::string& message = result.opened->Solver().Message();
    if (!message.empty()) result.problems.push_back({std::string(kDemoName), message});
    return result;
}

}  // namespace fixtop::casehost
