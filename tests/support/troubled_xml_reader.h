// SPDX-License-Identifier: Apache-2.0
#pragma once

// Readers of XML that fail, in place of the system's one as long as an object of this class lives.

#include <memory>
#include <string>
#include <string_view>

#include "platform/xml_reader.h"

namespace fixtop {

class TroubledXmlReader {
 public:
    enum class Trouble { kNotMade, kNotAttached, kNotFound };

    explicit TroubledXmlReader(Trouble trouble) { SetXmlReaderFactory(FactoryOf(trouble)); }
    ~TroubledXmlReader() { SetXmlReaderFactory(nullptr); }
    TroubledXmlReader(const TroubledXmlReader&) = delete;
    TroubledXmlReader& operator=(const TroubledXmlReader&) = delete;

 private:
    template <bool attaches, XmlOutcome outcome>
    class Reader final : public XmlReader {
     public:
        bool Attach(XmlContentHandler&, XmlErrorHandler&) override { return attaches; }
        XmlOutcome ParseFile(const std::string&) override { return outcome; }
        XmlOutcome ParseText(std::string_view, const std::string&) override { return outcome; }
    };
    template <bool attaches, XmlOutcome outcome>
    static std::unique_ptr<XmlReader> Make() {
        return std::make_unique<Reader<attaches, outcome>>();
    }
    static XmlReaderFactory FactoryOf(Trouble trouble) {
        switch (trouble) {
            case Trouble::kNotAttached:
                return Make<false, XmlOutcome::kDone>;
            case Trouble::kNotFound:
                return Make<true, XmlOutcome::kNotFound>;
            case Trouble::kNotMade:
                break;
        }
        return []() -> std::unique_ptr<XmlReader> { return nullptr; };
    }
};

}  // namespace fixtop
