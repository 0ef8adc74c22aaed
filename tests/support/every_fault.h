#ifndef ZELUTIL_TESTS_SUPPORT_EVERY_FAULT_H
#define ZELUTIL_TESTS_SUPPORT_EVERY_FAULT_H

#include <gtest/gtest.h>

#include <cerrno>
#include <cstring>
#include <string>
#include <vector>

#include "support/system_faults.h"

namespace zelutil::test {

/// Has every wrapped call fail with each of these errors, one at a time. `test` is told the fault and returns whether
/// it came to pass; a call fails at its first occurrence, then at its second, until there is no further one.
template <typename Test>
void forEachFaultOf(const std::vector<int>& errors, Test test) {
    constexpr std::size_t kMostCalls = 100;
    for (const std::string& call : wrappedCalls()) {
        for (const int error : errors) {
            for (std::size_t occurrence = 1;; ++occurrence) {
                SCOPED_TRACE(call + " " + std::to_string(occurrence) + ": " + std::strerror(error));
                ASSERT_LT(occurrence, kMostCalls) << "called without end";
                if (!test(Fault{call, occurrence, error})) {
                    break;
                }
            }
        }
    }
}

/// Does the same with every error of a file system.
template <typename Test>
void forEachFault(Test test) {
    forEachFaultOf({EACCES, EPERM, EROFS, EIO, ENOSPC, EDQUOT, EINTR, EMFILE, EBUSY, ENOLCK, EFBIG}, test);
}

}  // namespace zelutil::test

#endif
