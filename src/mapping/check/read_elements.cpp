// SPDX-License-Identifier: Apache-2.0
#include "mapping/check/read_elements.h"

#include <memory>
#include <string_view>

#include "mapping/check/element_reader.h"
#include "platform/file_search.h"
#include "platform/resources.h"
#include "platform/xml_reader.h"

namespace fixtop {

namespace {

// As it is reached from the working directory, unless it lies beside the program.
std::string ShownFile(const std::string& name, const std::string& path) {
    if (path.empty()) return name;
    const bool is_beside = path.size() == ProgramFolder().size() + 1 + name.size() &&
                           path.starts_with(ProgramFolder());
    return is_beside ? path : name;
}

void TellMissing(const std::string& name, ModelFileOrigin origin, const FindingPlace* from,
                 Findings& findings) {
    const bool may_be_sought = origin == ModelFileOrigin::kCaller || StaysInSearchFolders(name);
    const std::string text = "file " + name + " can't be found";
    const char* rule = may_be_sought ? "" : ": it has to lie in the folders where files are sought";
    findings.Mistake(from ? *from : FindingPlace{findings.AddFile(name), 0}, text + rule);
}

}  // namespace

void ReadElements(const std::string& name, ModelFileOrigin origin, bool has_resources,
                  const FindingPlace* from, const ElementVisits& visits, Findings& findings) {
    const std::string path = FindModelFile(name, origin);
    std::string_view bytes;
    if (path.empty() && has_resources) bytes = FindCompiledResource(name);
    if (path.empty() && !bytes.data()) return TellMissing(name, origin, from, findings);
    const int file = findings.AddFile(ShownFile(name, path));
    ElementReader elements(file, visits, findings);
    const std::unique_ptr<XmlReader> reader = CreateXmlReader();
    if (!reader || !reader->Attach(elements, elements)) {
        return findings.Mistake({file, 0}, "the system has no reader for it");
    }
    const XmlOutcome outcome =
        path.empty() ? reader->ParseText(bytes, name) : reader->ParseFile(path);
    if (outcome == XmlOutcome::kNotFound) return TellMissing(name, origin, from, findings);
    if (outcome == XmlOutcome::kFailed && !elements.HasToldWhy()) {
        findings.Mistake({file, 0}, "it is no XML that can be read");
    }
}

}  // namespace fixtop
