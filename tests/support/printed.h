#ifndef ZELUTIL_TESTS_SUPPORT_PRINTED_H
#define ZELUTIL_TESTS_SUPPORT_PRINTED_H

#include <gtest/gtest.h>

#include <string>

namespace zelutil::test {

/// All that `work` writes on standard output. A line ends in "\n" on every system.
template <typename Work>
std::string printedBy(Work work) {
    ::testing::internal::CaptureStdout();
    work();
    return ::testing::internal::GetCapturedStdout();
}

/// The same of standard error.
template <typename Work>
std::string reportedBy(Work work) {
    ::testing::internal::CaptureStderr();
    work();
    return ::testing::internal::GetCapturedStderr();
}

}  // namespace zelutil::test

#endif
