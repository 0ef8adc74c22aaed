#ifndef ZELUTIL_TESTS_SUPPORT_SAVE_FAULT_TALLY_H
#define ZELUTIL_TESTS_SUPPORT_SAVE_FAULT_TALLY_H

#include <gtest/gtest.h>

#include <cstdio>

namespace zelutil::test {

/// Counts how saves ended of which one call failed.
struct SaveFaultTally {
    int broken = 0;
    int old = 0;
    int fresh = 0;
    int damaged = 0;
    int leftovers = 0;
    int untrue = 0;
    int lost = 0;

    void print(const char* what) const {
        std::printf(
            "%s: %d calls broken, %d times the old file, %d times the new one, %d damaged, %d leftovers, %d untrue "
            "results, %d times the next save lost something\n",
            what, broken, old, fresh, damaged, leftovers, untrue, lost);
    }

    /// Prints it and expects more broken calls than these, of which some left the old file and some the new one: a test
    /// that breaks nothing, or always the same half of a save, shows nothing.
    void expectBothFiles(const char* what, int brokenAbove) const {
        print(what);
        EXPECT_GT(broken, brokenAbove);
        EXPECT_GT(old, 0);
        EXPECT_GT(fresh, 0);
    }
};

}  // namespace zelutil::test

#endif
