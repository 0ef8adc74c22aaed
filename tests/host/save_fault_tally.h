#ifndef ZELUTIL_TESTS_HOST_SAVE_FAULT_TALLY_H
#define ZELUTIL_TESTS_HOST_SAVE_FAULT_TALLY_H

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
};

}  // namespace zelutil::test

#endif
