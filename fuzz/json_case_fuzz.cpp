// SPDX-License-Identifier: Apache-2.0
// Reads the bytes as a case file. Whatever they are, there is either a problem that names a place,
// or a case that can be opened and whose written text reads back to the same text.

#include <cstdint>
#include <cstdio>
#include <sstream>
#include <string>

#include "casehost/case_file.h"
#include "casehost/case_host.h"
#include "check.h"
#include "json/case_text.h"

namespace fixtop {

namespace {

void CheckRoundTrip(const casehost::CaseData& data) {
    const std::string text = casehost::CaseToText(data);
    const casehost::ReadResult again = casehost::ReadCaseText("again.json", text);
    if (!again.data) {
        const std::string why = again.problems.empty() ? "no reason" : again.problems[0].Text();
        std::fprintf(stderr, "%s\n%s\n", why.c_str(), text.c_str());
    }
    Check(again.data != nullptr, "what was written does not read");
    Check(casehost::CaseToText(*again.data) == text, "a second writing differs from the first");
}

}  // namespace

// The quick road takes nothing that the other refuses, and makes the same of it.
void CheckRoads(std::string_view text, const casehost::ReadResult& result) {
    std::istringstream in{std::string(text)};
    const auto good = casehost::ReadGoodCase(in);
    const casehost::ReadResult any = casehost::ReadAnyCase("fuzz.json", text);
    Check((any.data != nullptr) == (result.data != nullptr), "the roads differ");
    if (!good) return;
    Check(any.data != nullptr, "the quick road reads what is refused");
    Check(casehost::CaseToText(*good) == casehost::CaseToText(*any.data),
          "the roads read different cases");
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(bytes), size);
    const casehost::ReadResult result = casehost::ReadCaseText("fuzz.json", text);
    CheckRoads(text, result);
    Check(result.data || !result.problems.empty(), "neither a case nor a problem");
    for (const casehost::CaseProblem& problem : result.problems) {
        Check(!problem.where.empty() && !problem.message.empty(),
              "a problem without place or text");
    }
    if (!result.data) return 0;
    CheckRoundTrip(*result.data);
    casehost::CaseHost host;
    Check(static_cast<bool>(host.Open(*result.data)), "a case that was read does not open");
    return 0;
}

}  // namespace fixtop
