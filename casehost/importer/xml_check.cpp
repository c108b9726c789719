// SPDX-License-Identifier: Apache-2.0
#include "xml_check.h"

#include <expat.h>

#include <algorithm>
#include <exception>
#include <memory>
#include <new>

#include "reading.h"

namespace fixtop::casehost::importer {

namespace {

constexpr std::size_t kPieceBytes = std::size_t{1} << 20;
// The parser keeps a tag whole, with a record for each of its attributes.
constexpr std::size_t kMaxTagBytes = std::size_t{16} << 20;

class Check {
 public:
    Check(std::string_view document, Problems& problems, TagLines& lines)
        : document_(document), problems_(problems), lines_(lines), parser_(MakeParser()) {
        XML_Parser parser = parser_.get();
        XML_SetUserData(parser, this);
        XML_SetXmlDeclHandler(parser, Call<&Check::Declaration>);
        XML_SetStartDoctypeDeclHandler(parser, Call<&Check::DocumentType>);
        XML_SetElementHandler(parser, Call<&Check::StartTag>, Call<&Check::EndTag>);
        XML_SetCommentHandler(parser, Call<&Check::Comment>);
        XML_SetProcessingInstructionHandler(parser, Call<&Check::Instruction>);
        XML_SetCdataSectionHandler(parser, Call<&Check::Section>, nullptr);
        XML_SetCharacterDataHandler(parser, Call<&Check::Text>);
    }

    bool Run() {
        for (std::size_t at = 0; good_ && (at == 0 || at < document_.size()); at += kPieceBytes) {
            Feed(at);
        }
        if (thrown_) std::rethrow_exception(thrown_);
        return good_;
    }

 private:
    using Parser = std::unique_ptr<std::remove_pointer_t<XML_Parser>, decltype(&XML_ParserFree)>;

    // Whatever a declaration says, the text is UTF-8.
    static Parser MakeParser() {
        Parser parser(XML_ParserCreate("UTF-8"), XML_ParserFree);
        if (!parser) throw std::bad_alloc();
        return parser;
    }

    // The parser is written in C: what a handler throws is kept until it has returned.
    template <auto handler, class... Arguments>
    static void XMLCALL Call(void* data, Arguments... arguments) {
        Check& check = *static_cast<Check*>(data);
        if (!check.good_) return;
        try {
            check.token_ = check.Here();
            (check.*handler)(arguments...);
        } catch (...) {
            check.thrown_ = std::current_exception();
            check.Stop();
        }
    }

    void Feed(std::size_t at) {
        const std::string_view piece = document_.substr(at, kPieceBytes);
        const bool last = at + piece.size() == document_.size();
        if (XML_Parse(parser_.get(), piece.data(), static_cast<int>(piece.size()), last) ==
            XML_STATUS_OK) {
            if (at + piece.size() > token_ + kMaxTagBytes) Count(kMaxXmlNodes + 1);
            return;
        }
        const XML_Error error = XML_GetErrorCode(parser_.get());
        if (error == XML_ERROR_NO_MEMORY) throw std::bad_alloc();
        if (good_) Malformed(XML_ErrorString(error));
    }

    void Declaration(const char*, const char* encoding, int) {
        const std::string_view name = encoding ? encoding : "utf-8";
        const bool known = EqualIgnoringCase(name, "utf-8") || EqualIgnoringCase(name, "us-ascii");
        if (!known) Malformed("unknown encoding");
    }
    void DocumentType(const char*, const char*, const char*, int) {
        Fail("a document type declaration is not allowed; expected plain elements only");
    }
    void StartTag(const char* tag, const char** attributes) {
        if (open_.size() >= kMaxXmlDepth) {
            return Fail("elements are nested more than " + std::to_string(kMaxXmlDepth) +
                        " deep; a flowsheet needs less than 20 levels");
        }
        std::size_t nodes = 1;
        for (const char** each = attributes; *each; each += 2) ++nodes;
        Count(nodes);
        lines_.Add(token_, XML_GetCurrentLineNumber(parser_.get()));
        open_.push_back(document_.substr(token_ + 1, std::string_view(tag).size()));
    }
    void EndTag(const char*) { open_.pop_back(); }
    void Comment(const char*) { Count(1); }
    void Instruction(const char*, const char*) { Count(1); }
    void Section() { Count(1); }
    void Text(const char*, int) {}

    // More pieces of text than these there can't be.
    void Count(std::size_t nodes) {
        node_count_ += nodes;
        if (node_count_ <= kMaxXmlNodes) return;
        Fail("more than " + std::to_string(kMaxXmlNodes) +
             " elements and attributes, or too many in one tag; expected a smaller flowsheet");
    }
    void Malformed(const std::string& what) {
        Fail("malformed XML: " + what +
             "; expected a well-formed document with every element closed");
    }
    void Fail(const std::string& message) {
        std::string path;
        for (const std::string_view tag : open_) (path += path.empty() ? "" : "/") += tag;
        problems_.ErrorAtLine(XML_GetCurrentLineNumber(parser_.get()), path, message);
        Stop();
    }
    void Stop() {
        good_ = false;
        XML_StopParser(parser_.get(), XML_FALSE);
    }
    std::size_t Here() const {
        return static_cast<std::size_t>(XML_GetCurrentByteIndex(parser_.get()));
    }

    const std::string_view document_;
    Problems& problems_;
    TagLines& lines_;
    Parser parser_;
    std::size_t token_ = 0;  // where the piece begins that was looked at last
    std::size_t node_count_ = 0;
    std::vector<std::string_view> open_;
    std::exception_ptr thrown_;
    bool good_ = true;
};

}  // namespace

void TagLines::Add(std::size_t place, std::size_t line) {
    if (begins_.empty() || begins_.back().line != line) begins_.push_back({place, line});
}

std::size_t TagLines::At(std::size_t place) const {
    const auto behind = std::ranges::upper_bound(begins_, place, {}, &Begin::place);
    return behind == begins_.begin() ? 0 : std::prev(behind)->line;
}

bool CheckXml(std::string_view document, Problems& problems, TagLines& lines) {
    return Check(document, problems, lines).Run();
}

}  // namespace fixtop::casehost::importer
