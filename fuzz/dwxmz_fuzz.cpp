// SPDX-License-Identifier: Apache-2.0
// Reads the bytes twice: as an archive, and as the document in a well-formed archive. Whatever they
// are, there is either a case whose arrays fill their dimensions, or a problem.

#include <cstdint>
#include <string>
#include <string_view>

#include "casehost/importer.h"
#include "check.h"
#include "support/zip_writer.h"

namespace fixtop {

namespace {

void CheckObject(const casehost::ObjectData& object) {
    for (const casehost::VariableData& variable : object.variables) {
        for (const casehost::DimensionData& dimension : variable.spec->dimensions) {
            const bool is_numbered = dimension.naming == casehost::ElementNaming::number;
            const int labels = static_cast<int>(dimension.labels.size());
            Check(labels == (is_numbered ? 0 : dimension.count),
                  "labels and count of a dimension differ");
        }
        Check(variable.values.size() == casehost::ElementCount(*variable.spec),
              "values don't fill their dimensions");
    }
}

void Read(std::string_view bytes) {
    const casehost::ReadResult result = casehost::ReadDwxmzBytes(bytes, "fuzz.dwxmz");
    Check(result.data || !result.problems.empty(), "neither a case nor a problem");
    for (const casehost::CaseProblem& problem : result.problems) {
        Check(!problem.where.empty() && !problem.message.empty(),
              "a problem without place or text");
    }
    if (!result.data) return;
    for (const casehost::ObjectData& object : result.data->main.objects) CheckObject(object);
    for (const casehost::ObjectData& object : result.data->reactions) CheckObject(object);
}

// An archive with the bytes as its one entry, not compressed.
std::string Archive(std::string_view bytes) {
    ZipWriter zip;
    Check(zip.Add("case.xml", bytes, false), "the archive can't be made");
    return zip.Close();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    Read(bytes);
    Read(Archive(bytes));
    return 0;
}

}  // namespace fixtop
