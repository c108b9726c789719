// SPDX-License-Identifier: Apache-2.0
// Reads a value and writes one: usage: value <case> <path> [<number> <unit>]

#include <fixtop/client.h>

#include <iostream>
#include <string>

int main(int count, char** arguments) try {
    if (count != 3 && count != 5) {
        std::cerr << "usage: value <case> <path> [<number> <unit>]\n";
        return 2;
    }
    const auto plant = fixtop::client::Case::Open(arguments[1]);
    const auto node = plant.At(arguments[2]);
    if (count == 5) node.Store(std::stod(arguments[3]), arguments[4]);
    const auto reading = node.Read();
    std::cout << node.Path() << " = " << reading.value.ToText() << ' ' << reading.unit << " ("
              << reading.status << ")\n";
    return 0;
} catch (const std::exception& error) {
    std::cerr << error.what() << '\n';
    return 1;
}
