// SPDX-License-Identifier: Apache-2.0
#include "xml/log_element.h"

#include <charconv>
#include <optional>
#include <string>
#include <string_view>

#include "diagnostics/module_log.h"
#include "platform/file_search.h"
#include "xml/message_text.h"

namespace fixtop {

namespace {

constexpr std::string_view kEnding = ".log";

bool IsLogName(const std::string& name) {
    return name.ends_with(kEnding) && StaysInSearchFolders(name);
}

std::optional<int> Number(const std::string& text) {
    int number = 0;
    const char* end = text.data() + text.size();
    const auto [behind, error] = std::from_chars(text.data(), end, number);
    if (error != std::errc() || behind != end) return std::nullopt;
    return number;
}

}  // namespace

void LogElement::Begin(const XmlLocator* locator, const XmlAttributes& attributes) {
    std::string text;
    if (GetAttribute("File", attributes, text)) {
        if (IsLogName(text)) {
            SetLogFile(text.c_str());
        } else {
            SevereError(
                MessageText("Log File %.128s is not used: give a name that ends in .log and "
                            "stays below the working directory",
                            text.c_str()),
                locator);
        }
    }
    if (!GetAttribute("Level", attributes, text)) return;
    if (const std::optional<int> level = Number(text)) {
        SetLogLevel(*level);
    } else {
        SevereError(MessageText("Log Level %.128s is not used: give a whole number", text.c_str()),
                    locator);
    }
}

}  // namespace fixtop
