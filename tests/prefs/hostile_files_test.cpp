// Files that no editor would write, read by the manager as a host makes it, on the stack of a Windows thread.
#include <gtest/gtest.h>
#include <zelutil/c_api.h>
#include <zelutil/prefs/user_preference_manager.h>

#include <cstddef>
#include <ostream>
#include <string>

#include "prefs/nested_sections.h"
#include "prefs/preference_world.h"
#include "support/silence.h"
#include "support/small_stack.h"

namespace zelutil::test {
namespace {

using namespace std::string_literals;

constexpr std::size_t kLargestFile = std::size_t{64} << 20;

std::string meta(const std::string& sections) { return R"({"meta":)" + sections + "}"; }

/// ASCII as an editor saves it as "Unicode".
std::string inUtf16(const std::string& text) {
    std::string bytes = "\xFF\xFE";
    for (const char c : text) {
        bytes += c;
        bytes += '\0';
    }
    return bytes;
}

/// Makes a file's bytes from a good text of the file's kind.
struct FileKind {
    const char* name;
    std::string (*bytes)(const std::string& good);
};

void PrintTo(const FileKind& kind, std::ostream* out) { *out << kind.name; }

std::string nameOf(const testing::TestParamInfo<FileKind>& instance) { return instance.param.name; }

constexpr FileKind kUseless[] = {
    {"Empty", [](const std::string&) { return ""s; }},
    {"Blanks", [](const std::string&) { return " \r\n\t"s; }},
    {"MarkAlone", [](const std::string&) { return "\xEF\xBB\xBF"s; }},
    {"CutOffInTheMiddle", [](const std::string& good) { return good.substr(0, good.size() / 2); }},
    {"CutOffBeforeTheLastByte", [](const std::string& good) { return good.substr(0, good.size() - 1); }},
    {"ZerosFirst", [](const std::string& good) { return "\0\0"s + good; }},
    {"Binary", [](const std::string&) { return repeated(1000, "\x7F\x45\xFF\x00\x80\x1A"s); }},
    {"Utf16", [](const std::string& good) { return inUtf16(good); }},
    {"OneByteMore", [](const std::string& good) { return good + "x"; }},
    {"OpenArrays", [](const std::string&) { return repeated(2000000, "["); }},
    {"OpenObjects", [](const std::string&) { return repeated(2000000, R"({"meta":)"); }},
    {"TooDeepBesideTheRest",
     [](const std::string& good) {
         return R"({"deep":)" + repeated(1024, "[") + repeated(1024, "]") + "," + good.substr(1);
     }},
    {"FarTooDeepSections", [](const std::string&) { return meta(nestedSections(300000, "{}")); }},
    {"MetaOfAnotherType", [](const std::string&) { return meta(R"({"header":"S","attribute":"s"})"); }},
    {"SectionsOfOtherTypes", [](const std::string&) { return meta(R"([null,true,1,-1.5,"s",[],[[]],{}])"); }},
    {"MembersOfOtherTypes",
     [](const std::string&) {
         return meta(R"([{"header":{},"attribute":"s"},{"header":"S","attribute":["s"]},
             {"header":"S","attribute":"s","tclCommand":7,"defaultsettings":{"name":"value"},"unique":"yes",
              "submanagerId":"100","children":{"header":"S"},"overriddensettings":{"value":"wrong"}},
             {"header":"S","attribute":"s","tclCommand":"t","children":[0,"",[{}]],"submanagerId":1e300,
              "defaultsettings":"value","overriddensettings":[0,"value",["value"],{"value":5},{"value":null}]}])");
     }},
    {"NumberThatIsNotFinite", [](const std::string& good) { return R"({"n":1e309,)" + good.substr(1); }},
    {"LargerThan64MiB",
     [](const std::string& good) { return good + std::string(kLargestFile + 1 - good.size(), ' '); }},
};

constexpr FileKind kStrangeButGood[] = {
    {"WithAByteOrderMark", [](const std::string& good) { return "\xEF\xBB\xBF" + good; }},
    {"WithZerosBehind", [](const std::string& good) { return good + "\0\xFF{"s; }},
    {"WithAVanishingNumber",
     [](const std::string& good) { return R"({"n":[0.0000000001e-2147483639],)" + good.substr(1); }},
    {"AsDeepAsATextMayBe",
     [](const std::string& good) {
         return R"({"deep":)" + repeated(1023, "[") + repeated(1023, "]") + "," + good.substr(1);
     }},
    {"Of64MiB", [](const std::string& good) { return good + std::string(kLargestFile - good.size(), ' '); }},
};

class HostileFile : public testing::TestWithParam<FileKind> {
protected:
    static std::string value() { return UserPreferenceManager::GetInstance().getUserPrefSetting("s::value"); }
    static std::string bytesFrom(const std::string& good) { return GetParam().bytes(good); }

    PreferenceWorld world_;
};

class UselessFile : public HostileFile {};

TEST_P(UselessFile, AsDefaultsLeavesTheManagerEmptyQuietly) {
    world_.writeDefaults(bytesFrom(defaultsWithValue("default")));
    world_.writeUser(userWithValue("user"));
    runOnSmallStack([] {
        expectSilence([] {
            EXPECT_EQ(value(), "");
            EXPECT_EQ(get_user_setting("value"), nullptr);
            EXPECT_EQ(get_default_user_setting("value"), nullptr);
        });
    });
    EXPECT_EQ(UserPreferenceManager::GetInstance().getAllUserPrefUISettings().size(), 0U);
}

TEST_P(UselessFile, AsTheUsersLeavesTheDefaultsQuietly) {
    world_.writeDefaults(defaultsWithValue("default"));
    world_.writeUser(bytesFrom(userWithValue("user")));
    runOnSmallStack([] { expectSilence([] { EXPECT_EQ(value(), "default"); }); });
    EXPECT_STREQ(get_user_setting("other"), "o");
}

INSTANTIATE_TEST_SUITE_P(All, UselessFile, testing::ValuesIn(kUseless), nameOf);

class StrangeButGoodFile : public HostileFile {};

TEST_P(StrangeButGoodFile, AsDefaultsIsRead) {
    world_.writeDefaults(bytesFrom(defaultsWithValue("default")));
    runOnSmallStack([] { EXPECT_EQ(value(), "default"); });
}

TEST_P(StrangeButGoodFile, AsTheUsersIsRead) {
    world_.writeDefaults(defaultsWithValue("default"));
    world_.writeUser(bytesFrom(userWithValue("user")));
    runOnSmallStack([] { EXPECT_EQ(value(), "user"); });
}

INSTANTIATE_TEST_SUITE_P(All, StrangeButGoodFile, testing::ValuesIn(kStrangeButGood), nameOf);

TEST(HostileFiles, WithAsManySectionsInsideEachOtherAsATextMayHoldAreRead) {
    const PreferenceWorld world;
    world.writeDefaults(meta(nestedSections(510, kInnermostDefaults)));
    world.writeUser(meta(nestedSections(510, kInnermostUser)));
    runOnSmallStack([] {
        EXPECT_STREQ(get_user_setting((repeated(510, "a::") + "g").c_str()), "2");
        EXPECT_STREQ(get_default_user_setting("g"), "1");
    });
}

TEST(HostileFiles, MayBeDirectories) {
    const PreferenceWorld world;
    std::filesystem::create_directories(world.defaultsFile());
    std::filesystem::create_directories(world.userFile());
    EXPECT_EQ(get_user_setting("s::value"), nullptr);
    EXPECT_TRUE(UserPreferenceManager::GetInstance().getAllUserPrefUISettings().empty());
}

}  // namespace
}  // namespace zelutil::test
