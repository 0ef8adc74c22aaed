#ifndef ZELUTIL_TESTS_SUPPORT_SILENCE_H
#define ZELUTIL_TESTS_SUPPORT_SILENCE_H

#include <gtest/gtest.h>

namespace zelutil::test {

/// Runs `action`; it must write nothing on standard output and error, whichever module writes.
template <typename Action>
void expectSilence(Action action) {
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    action();
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
}

}  // namespace zelutil::test

#endif
