// A Windows process has several tables of variables; this shows which the library asks.
#include <gtest/gtest.h>

#include <cstdlib>
#include <optional>
#include <string>

#include "platform/environment.h"

#include <windows.h>

namespace zelutil::platform {
namespace {

constexpr char kVariable[] = "ZELUTIL_TEST_VARIABLE";

TEST(WindowsEnvironment, SystemsTableIsAskedAndNotTheCRuntimesOddity) {
    // Only the system knows it.
    ASSERT_EQ(_putenv_s(kVariable, ""), 0);
    ASSERT_TRUE(SetEnvironmentVariableA(kVariable, "system"));
    EXPECT_EQ(std::getenv(kVariable), nullptr);
    EXPECT_EQ(environment(kVariable), "system");
    // Both know it, with another value each.
    ASSERT_EQ(_putenv_s(kVariable, "runtime"), 0);
    ASSERT_TRUE(SetEnvironmentVariableA(kVariable, "system"));
    EXPECT_STREQ(std::getenv(kVariable), "runtime");
    EXPECT_EQ(environment(kVariable), "system");
    // An empty one counts.
    ASSERT_TRUE(SetEnvironmentVariableA(kVariable, ""));
    EXPECT_EQ(environment(kVariable), "");
    // Only the C runtime knows it.
    ASSERT_TRUE(SetEnvironmentVariableA(kVariable, nullptr));
    EXPECT_STREQ(std::getenv(kVariable), "runtime");
    EXPECT_EQ(environment(kVariable), std::nullopt);
    ASSERT_EQ(_putenv_s(kVariable, ""), 0);
}

}  // namespace
}  // namespace zelutil::platform
