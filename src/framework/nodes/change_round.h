// SPDX-License-Identifier: Apache-2.0
#pragma once

// ChangeRound: while one lives, those who listen are told of one change. ChangeRound::Announced:
// what is told while it lives, one list after the other, is one change. What whoever is called has
// told from within is a change of its own.

#include <cstdint>
#include <utility>

namespace fixtop {

class ChangeRound {
 public:
    class Announced;

    ChangeRound()
        : outer_(std::exchange(present_, announced_ != 0 ? announced_ : ++begun_)),
          outer_announced_(std::exchange(announced_, 0)) {}
    ~ChangeRound() {
        present_ = outer_;
        announced_ = outer_announced_;
    }
    ChangeRound(const ChangeRound&) = delete;
    ChangeRound& operator=(const ChangeRound&) = delete;

    // The number of the one that is running, 0 outside of any. Of two the one that began later has
    // the higher.
    static std::uint64_t Present() { return present_; }

 private:
    static inline std::uint64_t present_ = 0;
    static inline std::uint64_t announced_ = 0;
    static inline std::uint64_t begun_ = 0;

    const std::uint64_t outer_;
    const std::uint64_t outer_announced_;
};

class ChangeRound::Announced {
 public:
    Announced() : outer_(std::exchange(announced_, ++begun_)) {}
    ~Announced() { announced_ = outer_; }
    Announced(const Announced&) = delete;
    Announced& operator=(const Announced&) = delete;

 private:
    const std::uint64_t outer_;
};

}  // namespace fixtop
