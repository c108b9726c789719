// SPDX-License-Identifier: Apache-2.0
#pragma once

// QuietWatch: whether others worked on the machine before and while something was measured. What
// they take from the caches is in no processor time of one's own, so that it has to be told.

namespace fixtop::bench {

class QuietWatch {
 public:
    // Watches the machine for a moment, in which this process rests; what follows is measured.
    QuietWatch();

    // How many processors others kept busy before and since then, as a line behind a table. Counts
    // the time of children as own once they have been waited for.
    void Print() const;

 private:
    // Processor time since an unknown start, in seconds.
    struct Sample {
        double wall;
        double busy;  // of the machine; below 0 where it does not tell
        double own;
    };
    static Sample Take();
    // Processors that others kept busy between two samples.
    static double Others(const Sample& from, const Sample& to);

    Sample before_;
    Sample start_;
};

}  // namespace fixtop::bench
