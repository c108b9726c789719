#include "model/model_file.h"

#include "diagnostics/error_log.h"
#include "model/message_text.h"
#include "model/sax_adapters.h"
#include "platform/file_search.h"
#include "platform/resources.h"

namespace {

constexpr int kUsingLocalLevel = 7;

bool Fail(const char* format, const std::string& name) {
    LogMessage(MessageText(format, name.c_str()).c_str());
    return false;
}

bool ReadLocal(const ModelFileMessages& messages, const std::string& name, const std::string& path,
               XmlReader& reader) {
    LogAtLevel(MessageText(messages.using_local, path.c_str()).c_str(), kUsingLocalLevel);
    switch (reader.ParseFile(path)) {
        case XmlOutcome::kDone:
            return true;
        case XmlOutcome::kNotFound:
            return Fail(messages.not_located, name);
        case XmlOutcome::kFailed:
            break;
    }
    return Fail(messages.failed_file, name);
}

bool ReadResource(const ModelFileMessages& messages, const std::string& name, bool has_resources,
                  XmlReader& reader) {
    if (!has_resources) return Fail(messages.no_file_or_resource, name);
    const std::string_view bytes = FindCompiledResource(name);
    if (bytes.data() == nullptr) return Fail(messages.no_resource, name);
    return reader.ParseText(bytes, name) == XmlOutcome::kDone ||
           Fail(messages.failed_resource, name);
}

}  // namespace

bool ReadModelFile(const ModelFileMessages& messages, const std::string& name,
                   ModelFileOrigin origin, bool has_resources, SaxElementHandler& document) {
    const std::unique_ptr<XmlReader> reader = CreateXmlReader();
    if (!reader) return Fail(messages.no_reader, name);
    SaxContentAdapter content(document);
    SaxErrorAdapter errors;
    if (!reader->Attach(content, errors)) return Fail(messages.no_handlers, name);
    const bool sought = origin == ModelFileOrigin::kCaller || StaysInSearchFolders(name);
    const std::string path = sought ? FindFileOnPath(name) : std::string();
    return path.empty() ? ReadResource(messages, name, has_resources, *reader)
                        : ReadLocal(messages, name, path, *reader);
}
