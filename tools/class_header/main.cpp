// SPDX-License-Identifier: Apache-2.0
// Writes the classes of a class library, or of the shipped one, as a header: usage:
// class_header <header> [<class library> [<namespace>]]

#include <exception>
#include <fstream>
#include <iostream>

#include "class_header.h"

int main(int count, char** arguments) try {
    if (count < 2 || count > 4) {
        std::cerr << "usage: class_header <header> [<class library> [<namespace>]]\n";
        return 2;
    }
    fixtop::client::ModelFiles files;
    if (count > 2) files.classes = arguments[2];
    const auto table = fixtop::client::ClassTable::Read(files);
    std::ofstream out(arguments[1], std::ios::binary);
    fixtop::tools::WriteClassHeader(out, *table,
                                    count > 3 ? arguments[3] : "fixtop::client::classes");
    out.close();
    if (out) return 0;
    std::cerr << arguments[1] << ": can't be written\n";
    return 1;
} catch (const std::exception& error) {
    std::cerr << error.what() << '\n';
    return 1;
}
