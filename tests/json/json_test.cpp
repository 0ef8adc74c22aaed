#include "json/json.h"

#include <gtest/gtest.h>

namespace zelutil::json {
namespace {

TEST(JsonText, AParsedTextHasItsRoot) {
    const Text text(R"({"a":[1,2]})");
    ASSERT_TRUE(text.valid());
    EXPECT_EQ(compactText(text.root()), R"({"a":[1,2]})");
}

}  // namespace
}  // namespace zelutil::json
