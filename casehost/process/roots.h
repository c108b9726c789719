// SPDX-License-Identifier: Apache-2.0
#pragma once

// Root of a continuous function that changes sign in a bracket, by Newton's or the secant step
// where it stays inside and shrinks the bracket, by halving where it doesn't.

#include <algorithm>
#include <cmath>
#include <limits>

namespace fixtop::casehost::process {

struct Bracket {
    double low;
    double high;
};

// `function(x)` answers {value, slope}; the value rises from negative at `low` to positive at
// `high`, a slope that is not a positive number asks for halving. Ends when the value is 0, when a
// step is below `relative_step` or when the bracket can't shrink.
template <typename Function>
double SolveRising(Function&& function, Bracket bracket, double start,
                   double relative_step = std::numeric_limits<double>::epsilon()) {
    double x = start;
    double width = bracket.high - bracket.low;
    for (int i = 0; i < 400; ++i) {
        auto [value, slope] = function(x);
        if (value == 0) return x;
        (value < 0 ? bracket.low : bracket.high) = x;
        bool newton = std::isfinite(slope) && slope > 0;
        double next = x - value / slope;
        if (newton && std::abs(next - x) <= relative_step * std::abs(x)) {
            return std::clamp(next, bracket.low, bracket.high);
        }
        // Newton may creep along a flat stretch: every third step has to have halved the bracket.
        if (i % 3 == 2) {
            if (bracket.high - bracket.low > 0.5 * width) newton = false;
            width = bracket.high - bracket.low;
        }
        if (!newton || !(next > bracket.low && next < bracket.high)) {
            next = 0.5 * (bracket.low + bracket.high);
        }
        if (next <= bracket.low || next >= bracket.high) return next;
        x = next;
    }
    return x;
}

}  // namespace fixtop::casehost::process
