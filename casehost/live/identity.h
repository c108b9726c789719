// SPDX-License-Identifier: Apache-2.0
#pragma once

// Identities: a number for each object of the process that is none of any other object, and whether
// the object of a number lives. The revision changes whenever the structure of a case does.
//
// A number is a slot and how often the slot was used, so the question costs one look.

#include <cstdint>

namespace fixtop::casehost {

class Identities {
 public:
    static std::uint64_t Give();
    // The object of this number lives no more; to be called once for each.
    static void TakeBack(std::uint64_t identity);
    static bool Lives(std::uint64_t identity);

    // To be called after each change of the structure.
    static void Changed() { ++revision_; }
    static const std::uint64_t* Revision() { return &revision_; }

 private:
    inline static std::uint64_t revision_ = 1;
};

// The number of one object, from its making to its end.
class Identity {
 public:
    Identity() : number_(Identities::Give()) {}
    ~Identity() { End(); }
    Identity(const Identity&) = delete;
    Identity& operator=(const Identity&) = delete;

    std::uint64_t Number() const { return number_; }
    // The object lives no more, though it may be readable for a while.
    void End() {
        if (!ended_) Identities::TakeBack(number_);
        ended_ = true;
    }

 private:
    std::uint64_t number_;
    bool ended_ = false;
};

}  // namespace fixtop::casehost
