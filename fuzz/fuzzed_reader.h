// SPDX-License-Identifier: Apache-2.0
#pragma once

// Has every document that the module reads be the input, and lets the log write nowhere.

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "diagnostics/module_log.h"
#include "platform/resources.h"
#include "platform/xml_reader.h"

namespace fixtop {

inline constexpr char kFuzzedName[] = "fuzzed_input.xml";

inline std::string_view& FuzzedInput() {
    static std::string_view input;
    return input;
}

class FuzzedReader final : public XmlReader {
 public:
    explicit FuzzedReader(std::unique_ptr<XmlReader> reader) : reader_(std::move(reader)) {}

    bool Attach(XmlContentHandler& content, XmlErrorHandler& errors) override {
        return reader_->Attach(content, errors);
    }
    XmlOutcome ParseFile(const std::string& path) override {
        return reader_->ParseText(FuzzedInput(), path);
    }
    XmlOutcome ParseText(std::string_view, const std::string& name) override {
        return reader_->ParseText(FuzzedInput(), name);
    }

 private:
    std::unique_ptr<XmlReader> reader_;
};

inline std::unique_ptr<XmlReader> MakeFuzzedReader() {
    SetXmlReaderFactory(nullptr);
    auto reader = std::make_unique<FuzzedReader>(CreateXmlReader());
    SetXmlReaderFactory(MakeFuzzedReader);
    return reader;
}

inline void SetUpFuzzedReader() {
    static constexpr CompiledResource kRows[] = {{kFuzzedName, "<a/>"}};
    static CompiledResources table(kRows);
    RegisterResources(table);
    SetXmlReaderFactory(MakeFuzzedReader);
}

// False when the input could choose a file for the log: one that ends so.
inline bool TakeInput(const std::uint8_t* data, std::size_t size) {
    FuzzedInput() = {reinterpret_cast<const char*>(data), size};
    for (const char* word : {".log", "&", "encoding"}) {
        if (FuzzedInput().find(word) != std::string_view::npos) return false;
    }
    for (const std::uint8_t* byte = data; byte != data + size; ++byte) {
        if (*byte == 0) return false;
    }
    SetLogFile("/dev/null");
    SetLogLevel(0);
    return true;
}

}  // namespace fixtop
