// SPDX-License-Identifier: Apache-2.0
#include "platform/xml_reader.h"

#include <exception>
#include <optional>

#include "platform/open_file.h"
#include "platform/xml_guard.h"
#include "platform/xml_parser.h"

namespace fixtop {

namespace {

// Joins the pieces of a text, counts the depth, and carries exceptions past the parser.
class EventGate final : public XmlParserEvents, public XmlLocator {
 public:
    EventGate(std::string file, const XmlParser& parser, XmlContentHandler& content,
              XmlErrorHandler& errors)
        : file_(std::move(file)), parser_(parser), content_(content), errors_(errors) {}

    const char* File() const override { return file_.c_str(); }
    int Line() const override { return Place().line; }
    int Column() const override { return Place().column; }

    bool OnStart(std::string_view name, const XmlAttributes& attributes) noexcept override {
        return Guarded([&] {
            FlushText();
            told_ = Told::kTag;
            if (++depth_ > kMaxXmlDepth) {
                errors_.FatalError("Elements are nested too deep", *this);
                return false;
            }
            content_.StartElement(name_.assign(name), attributes, *this);
            return true;
        });
    }
    bool OnEnd(std::string_view name) noexcept override {
        return Guarded([&] {
            FlushText();
            told_ = Told::kTag;
            --depth_;
            content_.EndElement(name_.assign(name), *this);
            return true;
        });
    }
    bool OnCharacters(std::string_view text) noexcept override {
        return Guarded([&] {
            text_.append(text);
            return true;
        });
    }
    bool OnBreak() noexcept override {
        return Guarded([&] {
            FlushText();
            return true;
        });
    }
    void OnError(XmlSeverity severity, std::string text, XmlPlace place) noexcept override {
        Guarded([&] {
            told_ = Told::kProblem;
            problem_ = place;
            Report(severity, text);
            return true;
        });
    }

    void Rethrow() const {
        if (exception_) std::rethrow_exception(exception_);
    }

 private:
    // What the locator's place is of.
    enum class Told { kTag, kText, kProblem };

    XmlPlace Place() const {
        if (told_ == Told::kProblem) return problem_;
        return told_ == Told::kText ? parser_.TextEnd() : parser_.EventEnd();
    }
    template <class Action>
    bool Guarded(Action action) noexcept {
        if (exception_) return false;
        try {
            return action();
        } catch (...) {
            exception_ = std::current_exception();
            return false;
        }
    }
    void FlushText() {
        if (text_.empty()) return;
        told_ = Told::kText;
        // Blanks around the root element are no content.
        if (depth_ > 0) content_.Text(text_, *this);
        text_.clear();
    }
    void Report(XmlSeverity severity, const std::string& text) {
        if (severity == XmlSeverity::kWarning) return errors_.Warning(text, *this);
        if (severity == XmlSeverity::kError) return errors_.Error(text, *this);
        errors_.FatalError(text, *this);
    }

    std::string file_;
    const XmlParser& parser_;
    XmlContentHandler& content_;
    XmlErrorHandler& errors_;
    Told told_ = Told::kProblem;
    XmlPlace problem_;
    // Buffers that are filled again and again.
    std::string name_;
    std::string text_;
    int depth_ = 0;
    std::exception_ptr exception_;
};

class GuardedReader final : public XmlReader {
    static constexpr std::size_t kBlock = 1 << 16;

 public:
    explicit GuardedReader(std::unique_ptr<XmlParser> parser) : parser_(std::move(parser)) {}

    bool Attach(XmlContentHandler& content, XmlErrorHandler& errors) override {
        content_ = &content;
        errors_ = &errors;
        return true;
    }

    XmlOutcome ParseFile(const std::string& path) override {
        const FilePtr file = OpenFile(path, "rb");
        if (!file) return XmlOutcome::kNotFound;
        std::string bytes;
        for (std::size_t read = kBlock; read == kBlock && bytes.size() <= kMaxXmlBytes;) {
            const std::size_t size = bytes.size();
            bytes.resize(size + kBlock);
            read = std::fread(bytes.data() + size, 1, kBlock, file.get());
            bytes.resize(size + read);
        }
        return ParseText(bytes, path);
    }

    XmlOutcome ParseText(std::string_view bytes, const std::string& name) override {
        if (content_ == nullptr) return XmlOutcome::kFailed;
        EventGate gate(name, *parser_, *content_, *errors_);
        const std::optional<XmlRefusal> refusal = bytes.size() > kMaxXmlBytes
                                                      ? XmlRefusal{"The document is too long"}
                                                      : RefusalOfXml(bytes);
        if (refusal) gate.OnError(XmlSeverity::kFatal, refusal->why, {refusal->line, 0});
        const bool done = !refusal && parser_->Parse(bytes, gate);
        gate.Rethrow();
        return done ? XmlOutcome::kDone : XmlOutcome::kFailed;
    }

 private:
    std::unique_ptr<XmlParser> parser_;
    XmlContentHandler* content_ = nullptr;
    XmlErrorHandler* errors_ = nullptr;
};

std::unique_ptr<XmlReader> CreateSystemReader() {
    std::unique_ptr<XmlParser> parser = CreateXmlParser();
    if (!parser) return nullptr;
    return std::make_unique<GuardedReader>(std::move(parser));
}

XmlReaderFactory g_factory = CreateSystemReader;

}  // namespace

std::unique_ptr<XmlReader> CreateXmlReader() {
    return g_factory();
}

XmlReaderFactory SetXmlReaderFactory(XmlReaderFactory factory) noexcept {
    return std::exchange(g_factory, factory != nullptr ? factory : CreateSystemReader);
}

}  // namespace fixtop
