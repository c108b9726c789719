// SPDX-License-Identifier: Apache-2.0
// Parses arbitrary text as a path. A failure says so in its own words and keeps the source; the
// description of a success parses to an equal chain.

#include <cstdint>
#include <string>

#include "check.h"
#include "path/tokenizer.h"
#include "platform/debug_output.h"

namespace fixtop {

// What is dumped is written, not shown: a run of minutes makes gigabytes of it.
extern "C" int LLVMFuzzerInitialize(int*, char***) {
    SetDebugSink([](const char*) {});
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    const std::string path(reinterpret_cast<const char*>(bytes), size);
    const FIValue source(path.c_str());
    FIValue error;
    const ParsedPath step = ParsePath(source, error);
    Check(step != nullptr, "no step", path);
    const std::string line = Describe(*step);
    step->Dump(0);
    if (!error.IsNull()) {
        const std::string text = error.ToText();
        Check(text.starts_with("Parse error, "), "message", text);
        Check(text.ends_with(" in: " + source.ToText()), "source in the message", text);
        return 0;
    }
    FIValue again_error;
    const ParsedPath again = ParsePath(FIValue(line.c_str()), again_error);
    Check(again_error.IsNull(), "description does not parse", again_error.ToText());
    Check(Describe(*again) == line, "description parses to another chain", line);
    return 0;
}

}  // namespace fixtop
