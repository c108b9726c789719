// SPDX-License-Identifier: Apache-2.0
// Reads the bytes twice: as an archive, and as the document in a well-formed archive. Whatever they
// are, there is either a case whose arrays fill their dimensions, or a problem.

#include <zip.h>

#include <cstdint>
#include <string>

#include "casehost/importer.h"
#include "check.h"

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
std::string Archive(const std::uint8_t* data, std::size_t size) {
    zip_source_t* target = zip_source_buffer_create(nullptr, 0, 0, nullptr);
    zip_source_keep(target);
    zip_t* zip = zip_open_from_source(target, ZIP_TRUNCATE, nullptr);
    zip_source_t* entry = zip_source_buffer(zip, data, size, 0);
    zip_set_file_compression(zip, zip_file_add(zip, "case.xml", entry, 0), ZIP_CM_STORE, 0);
    Check(zip_close(zip) == 0 && zip_source_open(target) == 0, "the archive can't be made");
    zip_source_seek(target, 0, SEEK_END);
    std::string bytes(static_cast<std::size_t>(zip_source_tell(target)), '\0');
    zip_source_seek(target, 0, SEEK_SET);
    zip_source_read(target, bytes.data(), bytes.size());
    zip_source_close(target);
    zip_source_free(target);
    return bytes;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Read({reinterpret_cast<const char*>(data), size});
    Read(Archive(data, size));
    return 0;
}

}  // namespace fixtop
