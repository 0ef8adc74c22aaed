// Texts that no editor would write, on the stack of a Windows thread.
#include <gtest/gtest.h>

#include <random>
#include <string>

#include "prefs/catalogue_of.h"
#include "prefs/nested_sections.h"
#include "support/small_stack.h"

namespace zelutil::test {
namespace {

constexpr char kDefaults[] = R"({"version":"7.2","meta":[
    {"header":"A","attribute":"a","unique":true,"submanagerId":101,"tclCommand":"t",
     "defaultsettings":[{"name":"g","value":"1"}],
     "children":[{"header":"B","attribute":"b","tclCommand":"t","defaultsettings":[{"name":"h","value":"2"}]}]}]})";
constexpr char kUser[] =
    R"({"meta":[{"header":"A","attribute":"a","overriddensettings":[{"g":"10"}],
                 "children":[{"header":"B","attribute":"b","overriddensettings":[{"h":"20"}]}]}]})";

TEST(HostileTexts, AsManySectionsInsideEachOtherAsATextMayHoldAreRead) {
    // The settings of section n stand 2 * n + 3 deep, and a text may be 1,024 deep.
    runOnSmallStack([] {
        const Catalogue catalogue =
            catalogueOf(nestedSections(510, kInnermostDefaults), nestedSections(510, kInnermostUser));
        const std::string path = repeated(510, "a::");
        EXPECT_EQ(valueOf(catalogue, path + "g"), "2");
        EXPECT_EQ(valueOf(catalogue, "g"), "2");
        EXPECT_EQ(catalogue.sections().size(), 1U);
    });
}

TEST(HostileTexts, DeeperOnesAreMalformed) {
    runOnSmallStack([] {
        const Catalogue tooDeep = catalogueOf(nestedSections(511, kInnermostDefaults));
        EXPECT_TRUE(tooDeep.sections().empty());
        const Catalogue userTooDeep =
            catalogueOf(nestedSections(1, kInnermostDefaults), nestedSections(511, kInnermostUser));
        EXPECT_EQ(valueOf(userTooDeep, "g"), "1");
        const Catalogue farTooDeep = catalogueOf(nestedSections(300000, kInnermostDefaults));
        EXPECT_TRUE(farTooDeep.sections().empty());
        const Catalogue arrays = catalogueOfTexts(repeated(2000000, "["), repeated(2000000, R"({"meta":)"));
        EXPECT_TRUE(arrays.sections().empty());
    });
}

TEST(HostileTexts, ACutOffTextContributesNothing) {
    const std::string defaults = kDefaults;
    const std::string user = kUser;
    for (std::size_t length = 0; length < defaults.size(); ++length) {
        const Catalogue catalogue = catalogueOfTexts(defaults.substr(0, length), user);
        EXPECT_TRUE(catalogue.sections().empty()) << length;
        EXPECT_EQ(valueOf(catalogue, "a::g"), kUnknown) << length;
    }
    for (std::size_t length = 0; length < user.size(); ++length) {
        const Catalogue catalogue = catalogueOfTexts(defaults, user.substr(0, length));
        EXPECT_EQ(valueOf(catalogue, "a::g"), "1") << length;
        EXPECT_EQ(valueOf(catalogue, "a::b::h"), "2") << length;
    }
}

TEST(HostileTexts, AByteOrderMarkIsSkipped) {
    const Catalogue catalogue =
        catalogueOfTexts("\xEF\xBB\xBF" + std::string(kDefaults), "\xEF\xBB\xBF" + std::string(kUser));
    EXPECT_EQ(valueOf(catalogue, "a::g"), "10");
    EXPECT_EQ(valueOf(catalogue, "h"), "20");
}

TEST(HostileTexts, NumbersThatCannotBeHeldMakeATextMalformed) {
    for (const char* const number : {"1.8e308", "1e309", "-1e400"}) {
        const std::string sections =
            R"([{"x":)" + std::string(number) +
            R"(,"header":"A","attribute":"a","tclCommand":"t","defaultsettings":[{"name":"g","value":"1"}]}])";
        EXPECT_TRUE(catalogueOf(sections).sections().empty()) << number;
    }
    const Catalogue vanishing =
        catalogueOf(R"([{"x":[0.0000000001e-2147483639],"header":"A","attribute":"a","tclCommand":"t",
        "defaultsettings":[{"name":"g","value":"1"}]}])");
    EXPECT_EQ(valueOf(vanishing, "g"), "1");
}

TEST(HostileTexts, BinaryContributesNothing) {
    std::mt19937 random(11);
    for (int round = 0; round < 500; ++round) {
        std::string bytes(random() % 200, '\0');
        for (char& byte : bytes) {
            byte = static_cast<char>(random());
        }
        const Catalogue catalogue = catalogueOfTexts(bytes, bytes);
        EXPECT_TRUE(catalogue.sections().empty());
    }
}

}  // namespace
}  // namespace zelutil::test
