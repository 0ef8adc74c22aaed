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

/// Has the process of the work end at every wrapped call, one at a time: at its first occurrence, then at its second,
/// until there is no further one. `prepare` comes before each time, and `check` behind it is told whether it came to
/// the end.
template <typename Prepare, typename Work, typename Check>
void forEachKill(Prepare prepare, Work work, Check check) {
    for (const std::string& call : wrappedCalls()) {
        for (std::size_t occurrence = 1; !testing::Test::HasFailure(); ++occurrence) {
            SCOPED_TRACE(call + " " + std::to_string(occurrence));
            prepare();
            const bool killed = isKilledAt(call, occurrence, work);
            check(killed);
            if (!killed) {
                break;
            }
        }
    }
}

}  // namespace zelutil::test

#endif
