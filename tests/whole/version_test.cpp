#include <gtest/gtest.h>
#include <zelutil/zelutil.h>

#include <string>
#include <vector>

namespace {

TEST(Version, OfTheHeadersIsTheProjects) {
    const std::vector<int> numbers = {ZELUTIL_VERSION_MAJOR, ZELUTIL_VERSION_MINOR, ZELUTIL_VERSION_PATCH};
    const std::vector<int> expected = {ZELUTIL_TEST_PROJECT_NUMBERS};
    EXPECT_EQ(numbers, expected);
    EXPECT_EQ(std::string(ZELUTIL_VERSION), ZELUTIL_TEST_PROJECT_VERSION);
}

TEST(Version, OfTheLibraryIsTheProjects) { EXPECT_EQ(std::string(zelutil_version()), ZELUTIL_TEST_PROJECT_VERSION); }

}  // namespace
