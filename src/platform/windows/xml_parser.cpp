// SPDX-License-Identifier: Apache-2.0
#include "platform/xml_parser.h"

#include <windows.h>

#include <msxml2.h>
#include <oleauto.h>

#include <algorithm>
#include <cwchar>

#include "platform/windows/wide_text.h"

namespace fixtop {

// The interfaces of the system have no virtual destructor, and nothing is deleted through them.
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

namespace {

// The header of the compiler's system library names these, but no library defines them.
constexpr CLSID kReaderClass = {
    0x3124c396, 0xfb13, 0x4836, {0xa6, 0xad, 0x13, 0x17, 0xf1, 0x71, 0x36, 0x88}};
constexpr IID kReaderInterface = {
    0xa4f96ed0, 0xf829, 0x476e, {0x81, 0xc0, 0xcd, 0xc7, 0xbd, 0x2a, 0x08, 0x02}};

template <class T>
struct ComRelease {
    void operator()(T* object) const { object->Release(); }
};
template <class T>
using ComPtr = std::unique_ptr<T, ComRelease<T>>;

std::string Narrowed(const wchar_t* text, int length) {
    if (text == nullptr || length <= 0) return {};
    return Narrow({text, static_cast<std::size_t>(length)});
}

XmlPlace PlaceOf(ISAXLocator* locator) {
    XmlPlace place;
    if (locator == nullptr) return place;
    locator->getLineNumber(&place.line);
    locator->getColumnNumber(&place.column);
    return place;
}

// Name and value in turn.
std::vector<std::string> TextsOf(ISAXAttributes* list) {
    std::vector<std::string> texts;
    int count = 0;
    if (list != nullptr) list->getLength(&count);
    for (int i = 0; i < count; ++i) {
        const wchar_t* name = nullptr;
        const wchar_t* value = nullptr;
        int name_length = 0;
        int value_length = 0;
        list->getQName(i, &name, &name_length);
        list->getValue(i, &value, &value_length);
        texts.push_back(Narrowed(name, name_length));
        texts.push_back(Narrowed(value, value_length));
    }
    return texts;
}

// The objects that the reader calls live on the stack of the parse and are never counted.
template <class Interface>
class StackObject : public Interface {
 public:
    HRESULT WINAPI QueryInterface(REFIID, void** out) override {
        // The reader asks for nothing but the interface that it was given.
        *out = this;
        return S_OK;
    }
    ULONG WINAPI AddRef() override { return 1; }
    ULONG WINAPI Release() override { return 1; }
};

HRESULT Answer(bool wanted) {
    return wanted ? S_OK : E_FAIL;
}

class ContentBridge final : public StackObject<ISAXContentHandler> {
 public:
    explicit ContentBridge(XmlParserEvents& events) : events_(events) {}

    // Set when an event asked for the end: the error that follows is the reader's echo of it.
    bool Stopped() const { return stopped_; }
    HRESULT Continue(bool wanted) {
        if (!wanted) stopped_ = true;
        return Answer(wanted);
    }
    XmlPlace EventEnd() const { return PlaceOf(locator_); }
    XmlPlace TextEnd() const { return text_end_; }

    HRESULT WINAPI putDocumentLocator(ISAXLocator* locator) override {
        locator_ = locator;
        return S_OK;
    }
    HRESULT WINAPI startDocument() override { return S_OK; }
    HRESULT WINAPI endDocument() override { return S_OK; }
    HRESULT WINAPI startPrefixMapping(const wchar_t*, int, const wchar_t*, int) override {
        return S_OK;
    }
    HRESULT WINAPI endPrefixMapping(const wchar_t*, int) override { return S_OK; }
    HRESULT WINAPI startElement(const wchar_t*, int, const wchar_t*, int, const wchar_t* name,
                                int length, ISAXAttributes* attributes) override {
        const std::vector<std::string> texts = TextsOf(attributes);
        XmlAttributes pairs;
        for (std::size_t i = 0; i < texts.size(); i += 2)
            pairs.emplace_back(texts[i], texts[i + 1]);
        return Continue(events_.OnStart(Narrowed(name, length), pairs));
    }
    HRESULT WINAPI endElement(const wchar_t*, int, const wchar_t*, int, const wchar_t* name,
                              int length) override {
        return Continue(events_.OnEnd(Narrowed(name, length)));
    }
    HRESULT WINAPI characters(const wchar_t* text, int length) override {
        text_end_ = EventEnd();
        return Continue(events_.OnCharacters(Narrowed(text, length)));
    }
    HRESULT WINAPI ignorableWhitespace(const wchar_t* text, int length) override {
        return characters(text, length);
    }
    HRESULT WINAPI processingInstruction(const wchar_t*, int, const wchar_t*, int) override {
        return S_OK;
    }
    HRESULT WINAPI skippedEntity(const wchar_t*, int) override { return S_OK; }

 private:
    XmlParserEvents& events_;
    ISAXLocator* locator_ = nullptr;
    XmlPlace text_end_;
    bool stopped_ = false;
};

class LexicalBridge final : public StackObject<ISAXLexicalHandler> {
 public:
    LexicalBridge(XmlParserEvents& events, ContentBridge& content)
        : events_(events), content_(content) {}

    HRESULT WINAPI startDTD(const wchar_t*, int, const wchar_t*, int, const wchar_t*,
                            int) override {
        return S_OK;
    }
    HRESULT WINAPI endDTD() override { return S_OK; }
    HRESULT WINAPI startEntity(const wchar_t*, int) override { return S_OK; }
    HRESULT WINAPI endEntity(const wchar_t*, int) override { return S_OK; }
    HRESULT WINAPI startCDATA() override { return content_.Continue(events_.OnBreak()); }
    HRESULT WINAPI endCDATA() override { return content_.Continue(events_.OnBreak()); }
    HRESULT WINAPI comment(const wchar_t*, int) override {
        return content_.Continue(events_.OnBreak());
    }

 private:
    XmlParserEvents& events_;
    ContentBridge& content_;
};

class ErrorBridge final : public StackObject<ISAXErrorHandler> {
 public:
    ErrorBridge(XmlParserEvents& events, const ContentBridge& content)
        : events_(events), content_(content) {}

    bool Told() const { return told_; }

    HRESULT WINAPI error(ISAXLocator* locator, const wchar_t* text, HRESULT) override {
        return Tell(XmlSeverity::kError, locator, text);
    }
    HRESULT WINAPI fatalError(ISAXLocator* locator, const wchar_t* text, HRESULT) override {
        told_ = true;
        return Tell(XmlSeverity::kFatal, locator, text);
    }
    HRESULT WINAPI ignorableWarning(ISAXLocator* locator, const wchar_t* text, HRESULT) override {
        return Tell(XmlSeverity::kWarning, locator, text);
    }

 private:
    HRESULT Tell(XmlSeverity severity, ISAXLocator* locator, const wchar_t* text) {
        if (content_.Stopped()) return S_OK;
        std::string narrow = text == nullptr ? "" : Narrowed(text, static_cast<int>(wcslen(text)));
        // A message is one line.
        std::replace_if(
            narrow.begin(), narrow.end(), [](char c) { return c == '\n' || c == '\r'; }, ' ');
        narrow.erase(narrow.find_last_not_of(' ') + 1);
        events_.OnError(severity, std::move(narrow), PlaceOf(locator));
        return S_OK;
    }

    XmlParserEvents& events_;
    const ContentBridge& content_;
    bool told_ = false;
};

VARIANT ObjectVariant(IUnknown* object) {
    VARIANT value;
    VariantInit(&value);
    V_VT(&value) = VT_UNKNOWN;
    V_UNKNOWN(&value) = object;
    return value;
}

// The reader takes bytes from a stream; the encoding is then the document's own. Null when memory
// is exhausted.
ComPtr<IStream> StreamOf(std::string_view bytes) {
    IStream* created = nullptr;
    if (FAILED(CreateStreamOnHGlobal(nullptr, TRUE, &created))) return nullptr;
    ComPtr<IStream> stream(created);
    ULONG written = 0;
    const auto size = static_cast<ULONG>(bytes.size());
    if (FAILED(stream->Write(bytes.data(), size, &written)) || written != size) return nullptr;
    LARGE_INTEGER begin;
    begin.QuadPart = 0;
    if (FAILED(stream->Seek(begin, STREAM_SEEK_SET, nullptr))) return nullptr;
    return stream;
}

void PutLexicalHandler(ISAXXMLReader& reader, IUnknown* handler) {
    reader.putProperty(L"http://xml.org/sax/properties/lexical-handler", ObjectVariant(handler));
}

class SystemParser final : public XmlParser {
 public:
    SystemParser() : initialized_(SUCCEEDED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED))) {
        void* reader = nullptr;
        if (SUCCEEDED(CoCreateInstance(kReaderClass, nullptr, CLSCTX_INPROC_SERVER,
                                       kReaderInterface, &reader))) {
            reader_.reset(static_cast<ISAXXMLReader*>(reader));
        }
    }
    ~SystemParser() override {
        reader_.reset();
        if (initialized_) CoUninitialize();
    }

    bool Usable() const { return reader_ != nullptr; }

    bool Parse(std::string_view bytes, XmlParserEvents& events) override {
        ContentBridge content(events);
        content_ = &content;
        LexicalBridge lexical(events, content);
        ErrorBridge errors(events, content);
        // Nothing outside the document is fetched; a reader that does not know a feature lacks it.
        for (const wchar_t* feature :
             {L"http://xml.org/sax/features/external-general-entities",
              L"http://xml.org/sax/features/external-parameter-entities"}) {
            reader_->putFeature(feature, VARIANT_FALSE);
        }
        reader_->putContentHandler(&content);
        reader_->putErrorHandler(&errors);
        PutLexicalHandler(*reader_, &lexical);
        const ComPtr<IStream> stream = StreamOf(bytes);
        const HRESULT result = stream ? reader_->parse(ObjectVariant(stream.get())) : E_OUTOFMEMORY;
        PutLexicalHandler(*reader_, nullptr);
        reader_->putErrorHandler(nullptr);
        reader_->putContentHandler(nullptr);
        content_ = nullptr;
        if (FAILED(result) && !errors.Told() && !content.Stopped()) {
            events.OnError(XmlSeverity::kFatal, "The document cannot be read", {});
        }
        return SUCCEEDED(result) && !errors.Told() && !content.Stopped();
    }

    XmlPlace EventEnd() const override { return content_ ? content_->EventEnd() : XmlPlace(); }
    XmlPlace TextEnd() const override { return content_ ? content_->TextEnd() : XmlPlace(); }

 private:
    bool initialized_;
    ComPtr<ISAXXMLReader> reader_;
    // While a document is read.
    const ContentBridge* content_ = nullptr;
};

}  // namespace

std::unique_ptr<XmlParser> CreateXmlParser() {
    auto parser = std::make_unique<SystemParser>();
    if (!parser->Usable()) return nullptr;
    return parser;
}

}  // namespace fixtop
