// SPDX-License-Identifier: Apache-2.0
#pragma once

// What a client holds, behind one face: each operation answers a text, so that answers of handles
// of one kind can be compared.

#include <memory>
#include <string>

#include "fixtop/fixtop.h"
#include "lifetimes/rules.h"

namespace fixtop::lifetimes {

class Subject {
 public:
    virtual ~Subject() = default;
    virtual std::string Do(Op op) = 0;
    // A number, as the handles compare; another kind is never given.
    virtual int CompareWith(Subject&) { return 0; }
    // Whom to compare with; null for nobody.
    void Meet(Subject* twin, Subject* other, Subject* fresh) {
        twin_ = twin;
        other_ = other;
        fresh_ = fresh;
    }

 protected:
    std::string Compared(Op op);

 private:
    Subject* twin_ = nullptr;
    Subject* other_ = nullptr;
    Subject* fresh_ = nullptr;
};

// The row that `read` reads, and the whole number to which `store` adds a fraction.
struct Access {
    const char* row = "value";
    double base = 0;
};

// The rows that the neutral model answers itself.
inline constexpr const char* kModelRows[] = {
    "id",           "type",      "browser_name",   "isleaf",
    "has_children", "container", "container_type", "parent"};

std::string Text(const FIValue& value);
std::string Text(bool value);
// What a store takes: another fraction each time.
FIValue NextNumber(const Access& access);

// Handles on a node. Iterators and references are taken over; entries are counted.
std::unique_ptr<Subject> MakeIteratorSubject(Ref<FIIteratorBase> it, const Access& access,
                                             bool frozen);
std::unique_ptr<Subject> MakeReferenceSubject(Ref<FIIteratorBase> it, const Access& access);
std::unique_ptr<Subject> MakeSubscriberSubject(Ref<FIIteratorBase> it, const Access& access);
std::unique_ptr<Subject> MakeNodeSubject(Ref<FIEntry> entry, const Access& access);
std::unique_ptr<Subject> MakeBatchSubject(Ref<FIEntry> entry, const Access& access);
std::unique_ptr<Subject> MakeTopSubject(Ref<FIEntry> top, const Access& access);
std::unique_ptr<Subject> MakeTopSubscriberSubject(Ref<FIEntry> top);
std::unique_ptr<Subject> MakeSolverSubject(std::unique_ptr<FISolver> solver);
std::unique_ptr<Subject> MakeAttributeCursorSubject(Ref<FIAttributeCursorBase> cursor);
std::unique_ptr<Subject> MakeChildCursorSubject(Ref<FICursorBase> cursor, const Access& access);

}  // namespace fixtop::lifetimes
