// SPDX-License-Identifier: Apache-2.0
// A table of the streams as CSV, out of the neutral view: usage: table <case>
//
// The neutral view names things alike whatever simulator the case is of, and has units of its own.

#include <fixtop/client.h>

#include <iostream>
#include <string>

namespace {

struct Column {
    const char* path;
    const char* unit;
};

constexpr Column kColumns[] = {{"Temperature", "C"}, {"Pressure", "bar"}, {"MolarFlow", "kmol/h"}};

std::string Quoted(const std::string& text) {
    std::string quoted = "\"";
    for (char c : text) quoted.append(c == '"' ? 2 : 1, c);
    return quoted + '"';
}

}  // namespace

int main(int count, char** arguments) try {
    if (count != 2) {
        std::cerr << "usage: table <case>\n";
        return 2;
    }
    const auto plant = fixtop::client::Case::Open(arguments[1]);
    std::cout << "Name";
    for (const Column& column : kColumns) std::cout << ',' << column.path << ' ' << column.unit;
    std::cout << '\n';
    for (const auto& stream : plant.Neutral().Matches("Flowsheet.Stream")) {
        std::cout << Quoted(stream.Key());
        for (const Column& column : kColumns) {
            const auto place = stream.Find(column.path);
            std::cout << ',';
            if (place) std::cout << place->node.Read(column.unit).value.ToText();
        }
        std::cout << '\n';
    }
    return 0;
} catch (const std::exception& error) {
    std::cerr << error.what() << '\n';
    return 1;
}
