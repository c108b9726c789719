// SPDX-License-Identifier: Apache-2.0
// Prints the typed interfaces of the class library as the module tells them, a row a line and its
// columns apart by `|`: usage: print_members [<class library, or - for the shipped one> [<class>
// [<most rows>]]]

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "fixtop/fixtop.h"

namespace {

struct Limit {
    int left;
};

const char* Shown(const char* text) {
    return text ? text : "(null)";
}

bool Print(void* owner, const fixtop::FixtopMember* row) {
    std::printf("%d|%d|%s|%s|%s|%s|%s|%s|%s|%s|%d\n", row->kind, row->number, row->className,
                row->interfaceName, Shown(row->baseName), Shown(row->name), Shown(row->owner),
                Shown(row->type), Shown(row->typeName), Shown(row->quantity), row->isArray ? 1 : 0);
    return --static_cast<Limit*>(owner)->left != 0;
}

}  // namespace

int main(int count, char** arguments) {
    fixtop::FixtopModelFiles files{};
    if (count > 1 && std::strcmp(arguments[1], "-") != 0) files.classes = arguments[1];
    Limit limit{count > 3 ? std::atoi(arguments[3]) : 0};
    fixtop::FixtopSetLog("", nullptr, nullptr);
    const int visited =
        fixtop::FixtopVisitMembers(&files, count > 2 ? arguments[2] : nullptr, Print, &limit);
    std::printf("visited %d, without a visitor %d\n", visited,
                fixtop::FixtopVisitMembers(&files, nullptr, nullptr, nullptr));
    return 0;
}
