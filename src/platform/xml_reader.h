// SPDX-License-Identifier: Apache-2.0
#pragma once

// A SAX reader for XML that comes from outside. It reads with expat on POSIX and with the system's
// SAX2 reader on Windows, and hands out UTF-8 on both.
//
// Bounds: a document is at most kMaxXmlBytes long and nested at most kMaxXmlDepth deep; one with a
// document type declaration, or in an encoding other than UTF-8, UTF-16, US-ASCII or ISO-8859-1, is
// refused before it is parsed. Nothing outside the document is ever fetched. Each refusal is told
// as a fatal error.
//
// An exception out of a handler ends the parse and comes out of the parse operation.

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace fixtop {

inline constexpr std::size_t kMaxXmlBytes = 64u << 20;
inline constexpr int kMaxXmlDepth = 256;

// Where the reader stands: behind the tag or the text that it tells. Lines and columns count from
// 1; 0 when the place is not known.
class XmlLocator {
 public:
    // The full path of the file, or the name that the text was given.
    virtual const char* File() const = 0;
    virtual int Line() const = 0;
    virtual int Column() const = 0;

 protected:
    ~XmlLocator() = default;
};

// Names and values in the order of the tag; names as written, prefix included. The texts are lent
// for the event.
using XmlAttributes = std::vector<std::pair<std::string_view, std::string_view>>;

class XmlContentHandler {
 public:
    virtual void StartElement(const std::string& name, const XmlAttributes& attributes,
                              const XmlLocator& locator) = 0;
    virtual void EndElement(const std::string& name, const XmlLocator& locator) = 0;
    // All characters between two tags, comments or CDATA boundaries in one piece.
    virtual void Text(const std::string& text, const XmlLocator& locator) = 0;

 protected:
    ~XmlContentHandler() = default;
};

class XmlErrorHandler {
 public:
    virtual void Warning(const std::string& text, const XmlLocator& locator) = 0;
    virtual void Error(const std::string& text, const XmlLocator& locator) = 0;
    // The parse ends here and fails.
    virtual void FatalError(const std::string& text, const XmlLocator& locator) = 0;

 protected:
    ~XmlErrorHandler() = default;
};

// kNotFound: the file could not be opened.
enum class XmlOutcome { kDone, kNotFound, kFailed };

// May parse any number of documents, one after the other; a handler that wants to read another
// document meanwhile makes a reader of its own.
class XmlReader {
 public:
    virtual ~XmlReader() = default;

    // The handlers must outlive the parses; false when the reader does not take them.
    virtual bool Attach(XmlContentHandler& content, XmlErrorHandler& errors) = 0;
    // The path is UTF-8 on every system.
    virtual XmlOutcome ParseFile(const std::string& path) = 0;
    virtual XmlOutcome ParseText(std::string_view bytes, const std::string& name) = 0;
};

// Null when the system has no reader.
std::unique_ptr<XmlReader> CreateXmlReader();

// Has readers made by another function until the next call and answers the former one; null leads
// back to the system's.
using XmlReaderFactory = std::unique_ptr<XmlReader> (*)();
XmlReaderFactory SetXmlReaderFactory(XmlReaderFactory factory) noexcept;

}  // namespace fixtop
