// SPDX-License-Identifier: Apache-2.0
#include "xml/xml_file.h"

#include <set>

#include "diagnostics/module_log.h"
#include "platform/file_search.h"
#include "platform/resources.h"
#include "xml/message_text.h"
#include "xml/sax_adapters.h"

namespace fixtop {

namespace {

constexpr int kUsingLocalLevel = 7;

bool Fail(const std::string& message) {
    LogMessage(message.c_str());
    return false;
}

bool ReadLocal(const char* kind, const std::string& name, const std::string& path,
               XmlReader& reader) {
    LogAtLevel(MessageText("  Using local %s File: %.128s", kind, path.c_str()).c_str(),
               kUsingLocalLevel);
    if (FindCompiledResource(name).data() != nullptr) TellReplaced(path);
    switch (reader.ParseFile(path)) {
        case XmlOutcome::kDone:
            return true;
        case XmlOutcome::kNotFound:
            return Fail(MessageText("  Unable to locate %s File: %.128s", kind, name.c_str()));
        case XmlOutcome::kFailed:
            break;
    }
    return FailModelFile(kind, name);
}

bool ReadResource(const char* kind, const std::string& name, bool has_resources,
                  XmlReader& reader) {
    const auto fail = [&](const char* format) {
        return Fail(MessageText(format, kind, name.c_str()));
    };
    if (!has_resources) return fail("  Failed to find %s File or Resource: %.128s");
    const std::string_view bytes = FindCompiledResource(name);
    if (bytes.data() == nullptr) return fail("  Failed to find %s Resource: %.128s");
    return reader.ParseText(bytes, name) == XmlOutcome::kDone ||
           fail("  Failed parsing %s Resource: %.128s");
}

}  // namespace

// Such a file changes what every program shows that is started in that folder.
void TellReplaced(const std::string& path) {
    static std::set<std::string> told;
    if (!told.insert(path).second) return;
    LogAndTell(
        MessageText("%s is read in place of the built-in file of that name", path.c_str()).c_str());
}

bool FailModelFile(const char* kind, const std::string& name) {
    return Fail(MessageText("  Failed parsing %s File: %.128s", kind, name.c_str()));
}

std::string FindModelFile(const std::string& name, ModelFileOrigin origin) {
    const bool sought = origin == ModelFileOrigin::kCaller || StaysInSearchFolders(name);
    return sought ? FindFileOnPath(name) : std::string();
}

bool ReadModelFile(const char* kind, const std::string& name, ModelFileOrigin origin,
                   bool has_resources, SaxElementHandler& document) {
    const std::unique_ptr<XmlReader> reader = CreateXmlReader();
    if (!reader) {
        return Fail(MessageText("  Unable to create SAX2 reader for file %s", name.c_str()));
    }
    SaxContentAdapter content(document);
    SaxErrorAdapter errors;
    if (!reader->Attach(content, errors)) {
        return Fail(MessageText("  Unable to attach SAX2 handler for file %s", name.c_str()));
    }
    const std::string path = FindModelFile(name, origin);
    return path.empty() ? ReadResource(kind, name, has_resources, *reader)
                        : ReadLocal(kind, name, path, *reader);
}

}  // namespace fixtop
