// SPDX-License-Identifier: Apache-2.0
#include "input_lines.h"

#include <cstdio>
#include <iostream>
#include <new>

#include "node.h"
#include "terminal.h"

namespace fixtop {

namespace {

bool NextLine(std::string& line) {
    bool read = false;
    if (!terminal::IsInterrupted()) read = static_cast<bool>(std::getline(std::cin, line));
    if (terminal::IsInterrupted()) throw Interrupted();
    if (!line.empty() && line.back() == '\r') line.pop_back();
    return read;
}

}  // namespace

bool ForEachInputLine(const std::function<void(const std::string& line)>& visit, Output& out) {
    for (std::string line; NextLine(line);) {
        visit(line);
        // Who gives lines one by one may wait for the answer to each.
        out.Flush();
    }
    if (std::cin.bad() && !std::ferror(stdin)) throw std::bad_alloc();
    if (!std::ferror(stdin)) return true;
    out.Note("standard input can't be read");
    return false;
}

}  // namespace fixtop
