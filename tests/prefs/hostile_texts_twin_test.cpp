// Texts that no editor would write, read and saved as the twin does it.
#include <gtest/gtest.h>
#include <zelutil/actions/action_manager.h>

#include <cstdio>
#include <string>

#include "prefs/nested_sections.h"
#include "support/prefs_pair.h"
#include "support/small_stack.h"

namespace zelutil::test {
namespace {

constexpr char kDefaults[] = R"({"version":"7","meta":[
    {"header":"A","attribute":"a","unique":true,"submanagerId":101,"tclCommand":"t",
     "defaultsettings":[{"name":"g","value":"1"}],
     "children":[{"header":"B","attribute":"b","tclCommand":"t","defaultsettings":[{"name":"h","value":"2"}]}]}]})";
constexpr char kUser[] =
    R"({"meta":[{"header":"A","attribute":"a","overriddensettings":[{"g":"10"}],
                 "children":[{"header":"B","attribute":"b","overriddensettings":[{"h":"20"}]}]}]})";

/// Cases of one text.
struct Count {
    int compared = 0;
    /// Those whose save is written, and those that leave no section.
    int written = 0;
    int empty = 0;
};

void compareSaved(const std::string& defaults, const std::string& user, Count& count) {
    if (!hasPlainNumbersOnly(defaults) || !hasPlainNumbersOnly(user)) {
        return;
    }
    PrefsPair pair(defaults, user);
    PrefsSaved saved;
    EXPECT_EQ(pair.compareSections() + pair.compareValues({"a::g", "g", "a::b::h", "h"}), "") << defaults << user;
    EXPECT_EQ(pair.compareSave({{"g", "5"}, {"a::b::h", "2"}}, {}, saved), "") << defaults << user;
    ++count.compared;
    count.written += saved.text ? 1 : 0;
    count.empty += pair.twin().sections().empty() ? 1 : 0;
}

/// The texts that differ from `text` in one byte.
template <typename Use>
void forEachWrongByte(std::string text, Use use) {
    for (const char replacement : {'"', '}', ']', ',', ':', '\\', '\0', '\xFF', '0', 'e'}) {
        for (char& byte : text) {
            const char original = byte;
            byte = replacement;
            use(text);
            byte = original;
        }
    }
}

TEST(HostileTexts, AnyByteOfTheDefaultsMayBeWrong) {
    Count count;
    forEachWrongByte(kDefaults, [&](const std::string& defaults) { compareSaved(defaults, kUser, count); });
    std::printf("%d compared, %d written, %d empty\n", count.compared, count.written, count.empty);
    EXPECT_GT(count.compared, 2500);
    EXPECT_GT(count.written, 200);
    EXPECT_GT(count.empty, 1000);
}

TEST(HostileTexts, AnyByteOfTheUsersMayBeWrong) {
    Count count;
    forEachWrongByte(kUser, [&](const std::string& user) { compareSaved(kDefaults, user, count); });
    std::printf("%d compared, %d written, %d empty\n", count.compared, count.written, count.empty);
    EXPECT_GT(count.compared, 1500);
    EXPECT_EQ(count.written, count.compared);
    EXPECT_EQ(count.empty, 0);
}

// The action manager gets the texts whole: what comes behind the deep part counts too.
TEST(HostileTexts, DeepTextsOfASubManagerAreHandedOn) {
    const std::string deep = repeated(1000, "[") + repeated(1000, "]");
    const std::string defaults = R"({"meta":[{"header":"K","attribute":"k","submanagerId":100,"tclCommand":"t",
        "defaultsettings":{"deep":)" +
                                 deep + R"(,"actions":[{"id":1,"context":"c","command":"new","shortcut":"N"}]}}]})";
    const std::string entry = R"({"deep":)" + deep + R"(,"actions":[{"id":1,"shortcut":"M"}]})";
    const std::string user = R"({"meta":[{"header":"K","attribute":"k","overriddensettings":[)" + entry + "]}]}";
    runOnSmallStack([&] {
        PrefsSubject subject(defaults, user);
        EXPECT_TRUE(subject.initializeSubManagers());
    });
    ASSERT_EQ(UCPActionManager::instance().getAllActions().size(), 1U);
    const UCPActionItem action = UCPActionManager::instance().getAllActions().front();
    EXPECT_EQ(action.shortcut.defaultValue, "N");
    EXPECT_EQ(action.shortcut.userValue, "M");
    PrefsPair pair(defaults, user);
    EXPECT_EQ(pair.compareActions(), "");
    PrefsSaved saved;
    EXPECT_EQ(pair.compareSave({}, {}, saved), "");
    EXPECT_EQ(saved.changedTexts[100], "[" + entry + "]");
}

}  // namespace
}  // namespace zelutil::test
