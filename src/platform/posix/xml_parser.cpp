#include "platform/xml_parser.h"

#include <expat.h>

#include <algorithm>
#include <type_traits>

namespace {

struct ParserDeleter {
    void operator()(XML_Parser parser) const { XML_ParserFree(parser); }
};
using ParserPtr = std::unique_ptr<std::remove_pointer_t<XML_Parser>, ParserDeleter>;

// One parse. The functions that expat calls get the run as their first argument.
class Run {
 public:
    Run(std::string_view bytes, XmlParserEvents& events)
        : bytes_(bytes), events_(events), parser_(XML_ParserCreate(nullptr)) {}

    bool Parse() {
        if (!parser_) return false;
        XML_SetUserData(parser_.get(), this);
        XML_SetElementHandler(parser_.get(), Start, End);
        XML_SetCharacterDataHandler(parser_.get(), Characters);
        XML_SetCommentHandler(parser_.get(), [](void* run, const char*) { Break(run); });
        XML_SetCdataSectionHandler(parser_.get(), Break, Break);
        const auto length = static_cast<int>(bytes_.size());
        if (XML_Parse(parser_.get(), bytes_.data(), length, 1) == XML_STATUS_OK) return true;
        const XML_Error code = XML_GetErrorCode(parser_.get());
        if (code != XML_ERROR_ABORTED) {
            events_.OnError(XmlSeverity::kFatal, XML_ErrorString(code), EventBegin());
        }
        return false;
    }

 private:
    static Run& Of(void* run) { return *static_cast<Run*>(run); }

    static void Start(void* user, const char* name, const char** pairs) {
        Run& run = Of(user);
        XmlAttributes attributes;
        for (; *pairs != nullptr; pairs += 2) attributes.emplace_back(pairs[0], pairs[1]);
        run.Continue(run.events_.OnStart(name, std::move(attributes), run.EventEnd()));
    }
    static void End(void* user, const char* name) {
        Run& run = Of(user);
        run.Continue(run.events_.OnEnd(name, run.EventEnd()));
    }
    static void Characters(void* user, const char* text, int length) {
        Run& run = Of(user);
        const std::string_view piece(text, static_cast<std::size_t>(length));
        run.Continue(run.events_.OnCharacters(piece, run.EventEnd()));
    }
    static void Break(void* user) {
        Run& run = Of(user);
        run.Continue(run.events_.OnBreak());
    }

    // expat goes on with its buffered events unless it is told to stop.
    void Continue(bool wanted) {
        if (!wanted) XML_StopParser(parser_.get(), XML_FALSE);
    }

    XmlPlace EventBegin() const {
        return {static_cast<int>(XML_GetCurrentLineNumber(parser_.get())),
                static_cast<int>(XML_GetCurrentColumnNumber(parser_.get())) + 1};
    }
    // expat tells where an event begins; its text says how many lines further it ends.
    XmlPlace EventEnd() const {
        XmlPlace place = EventBegin();
        const auto begin = static_cast<std::size_t>(XML_GetCurrentByteIndex(parser_.get()));
        const auto count = static_cast<std::size_t>(XML_GetCurrentByteCount(parser_.get()));
        if (begin > bytes_.size()) return place;
        const std::string_view event = bytes_.substr(begin, count);
        const auto lines = std::count(event.begin(), event.end(), '\n');
        place.line += static_cast<int>(lines);
        const std::size_t last = event.find_last_of('\n');
        place.column = lines == 0 ? place.column + static_cast<int>(event.size())
                                  : static_cast<int>(event.size() - last);
        return place;
    }

    std::string_view bytes_;
    XmlParserEvents& events_;
    ParserPtr parser_;
};

class ExpatParser final : public XmlParser {
 public:
    bool Parse(std::string_view bytes, XmlParserEvents& events) override {
        return Run(bytes, events).Parse();
    }
};

}  // namespace

std::unique_ptr<XmlParser> CreateXmlParser() {
    return std::make_unique<ExpatParser>();
}
