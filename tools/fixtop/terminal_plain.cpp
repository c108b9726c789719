// SPDX-License-Identifier: Apache-2.0
#include <cstdio>
#include <iostream>

#include "terminal.h"

namespace fixtop::terminal {

namespace {

class PlainReader final : public LineReader {
 public:
    std::optional<std::string> Read(const std::string& prompt) override {
        if (InputIsTyped()) std::fputs(prompt.c_str(), stderr);
        std::string line;
        if (!std::getline(std::cin, line)) return std::nullopt;
        if (!line.empty() && line.back() == '\r') line.pop_back();
        return line;
    }
};

}  // namespace

std::unique_ptr<LineReader> OpenPlainReader() {
    return std::make_unique<PlainReader>();
}

}  // namespace fixtop::terminal
