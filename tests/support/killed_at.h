#ifndef ZELUTIL_TESTS_SUPPORT_KILLED_AT_H
#define ZELUTIL_TESTS_SUPPORT_KILLED_AT_H

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <string>

#include "support/system_faults.h"

namespace zelutil::test {

/// Does the work in a process of its own and returns its exit code.
template <typename Work>
int exitCodeOf(Work work) {
    const pid_t child = ::fork();
    if (child == 0) {
        ::_exit(work());
    }
    int status = 0;
    EXPECT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_TRUE(WIFEXITED(status));
    return WEXITSTATUS(status);
}

/// Does the work in a process of its own, which ends at once just before the call. Returns whether it came to that.
template <typename Work>
bool isKilledAt(const std::string& call, std::size_t occurrence, Work work) {
    constexpr int kKilled = 42;
    return exitCodeOf([&] {
               const CallHook hook(call, occurrence, [] { ::_exit(kKilled); });
               work();
               return 0;
           }) == kKilled;
}

}  // namespace zelutil::test

#endif
