// SPDX-License-Identifier: Apache-2.0
// Writes the classes of a class library, or of the shipped one, as a header: see kUsage.

#include <exception>
#include <fstream>
#include <functional>
#include <iostream>
#include <map>
#include <string>
#include <vector>

#include "class_header.h"
#include "interface_header.h"

namespace {

constexpr char kUsage[] =
    "usage: class_header objects|interfaces <header> [<class library> [<namespace>]]\n";

using fixtop::client::ClassTable;

struct Form {
    const char* name_space;
    std::function<void(std::ostream& out, const ClassTable& table, const std::string& name_space)>
        write;
};

// The version is that of the shipped classes.
const std::map<std::string, Form> kForms = {
    {"objects", {"fixtop::client::classes", fixtop::tools::WriteClassHeader}},
    {"interfaces",
     {"fixtop::interfaces",
      [](std::ostream& out, const ClassTable& table, const std::string& name_space) {
          fixtop::tools::WriteInterfaceHeader(out, table, name_space, {13, 2});
      }}}};

}  // namespace

int main(int count, char** arguments) try {
    const std::vector<std::string> given(arguments + 1, arguments + count);
    const auto form = given.empty() ? kForms.end() : kForms.find(given[0]);
    if (form == kForms.end() || given.size() < 2 || given.size() > 4) {
        std::cerr << kUsage;
        return 2;
    }
    fixtop::client::ModelFiles files;
    if (given.size() > 2) files.classes = given[2];
    const auto table = ClassTable::Read(files);
    std::ofstream out(given[1], std::ios::binary);
    form->second.write(out, *table, given.size() > 3 ? given[3] : form->second.name_space);
    out.close();
    if (out) return 0;
    std::cerr << given[1] << ": can't be written\n";
    return 1;
} catch (const std::exception& error) {
    std::cerr << error.what() << '\n';
    return 1;
}
