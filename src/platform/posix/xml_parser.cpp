// SPDX-License-Identifier: Apache-2.0
#include "platform/xml_parser.h"

#include <expat.h>

#include <algorithm>
#include <exception>
#include <new>
#include <type_traits>

namespace fixtop {

namespace {

struct ParserDeleter {
    void operator()(XML_Parser parser) const { XML_ParserFree(parser); }
};
using ParserPtr = std::unique_ptr<std::remove_pointer_t<XML_Parser>, ParserDeleter>;

class ExpatParser final : public XmlParser {
 public:
    bool Parse(std::string_view bytes, XmlParserEvents& events) override {
        bytes_ = bytes;
        events_ = &events;
        text_open_ = false;
        parser_.reset(XML_ParserCreate(nullptr));
        if (!parser_) throw std::bad_alloc();
        failure_ = nullptr;
        SetHandlers();
        const auto length = static_cast<int>(bytes_.size());
        if (XML_Parse(parser_.get(), bytes_.data(), length, 1) == XML_STATUS_OK) return true;
        if (failure_) std::rethrow_exception(failure_);
        const XML_Error code = XML_GetErrorCode(parser_.get());
        if (code == XML_ERROR_NO_MEMORY) throw std::bad_alloc();
        if (code != XML_ERROR_ABORTED) {
            events.OnError(XmlSeverity::kFatal, XML_ErrorString(code), EventBegin());
        }
        return false;
    }

    // expat tells where an event begins; its text says how many lines further it ends.
    XmlPlace EventEnd() const override {
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
    // Characters end where the next event begins.
    XmlPlace TextEnd() const override { return text_open_ ? EventBegin() : text_end_; }

 private:
    static ExpatParser& Of(void* user) { return *static_cast<ExpatParser*>(user); }

    void SetHandlers() {
        XML_SetUserData(parser_.get(), this);
        XML_SetElementHandler(parser_.get(), Start, End);
        XML_SetCharacterDataHandler(parser_.get(), Characters);
        XML_SetProcessingInstructionHandler(parser_.get(), Instruction);
        XML_SetCommentHandler(parser_.get(), [](void* user, const char*) { Break(user); });
        XML_SetCdataSectionHandler(parser_.get(), Break, Break);
    }

    static void Start(void* user, const char* name, const char** pairs) {
        ExpatParser& self = Of(user);
        // The parser is C: nothing may be thrown through it.
        try {
            self.attributes_.clear();
            for (; *pairs != nullptr; pairs += 2) self.attributes_.emplace_back(pairs[0], pairs[1]);
            self.Continue(self.events_->OnStart(name, self.attributes_));
        } catch (const std::bad_alloc&) {
            self.failure_ = std::current_exception();
            self.Continue(false);
        }
    }
    static void End(void* user, const char* name) {
        ExpatParser& self = Of(user);
        self.Continue(self.events_->OnEnd(name));
    }
    static void Characters(void* user, const char* text, int length) {
        ExpatParser& self = Of(user);
        self.text_open_ = true;
        self.Continue(self.events_->OnCharacters({text, static_cast<std::size_t>(length)}));
    }
    static void Break(void* user) {
        ExpatParser& self = Of(user);
        self.Continue(self.events_->OnBreak());
    }
    // It is told to nobody, but the characters before it end here unless others follow.
    static void Instruction(void* user, const char*, const char*) {
        ExpatParser& self = Of(user);
        if (self.text_open_) self.text_end_ = self.EventBegin();
        self.text_open_ = false;
    }

    // expat goes on with its buffered events unless it is told to stop.
    void Continue(bool wanted) {
        if (!wanted) XML_StopParser(parser_.get(), XML_FALSE);
    }

    XmlPlace EventBegin() const {
        return {static_cast<int>(XML_GetCurrentLineNumber(parser_.get())),
                static_cast<int>(XML_GetCurrentColumnNumber(parser_.get())) + 1};
    }

    ParserPtr parser_;
    std::string_view bytes_;
    XmlParserEvents* events_ = nullptr;
    XmlAttributes attributes_;
    std::exception_ptr failure_;
    // Whether nothing has come between the last characters and the present event.
    bool text_open_ = false;
    XmlPlace text_end_;
};

}  // namespace

std::unique_ptr<XmlParser> CreateXmlParser() {
    return std::make_unique<ExpatParser>();
}

}  // namespace fixtop
