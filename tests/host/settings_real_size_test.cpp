// As many settings as a product has, 3,091 in 240 sections: after a hundred random ones are saved, a new process gives
// the same value for every name.
#include <gtest/gtest.h>

#include <cstdio>

#include "host/settings_process.h"
#include "support/random_text.h"

namespace zelutil::test {
namespace {

constexpr std::size_t kSettings = 3091;
constexpr std::size_t kSections = 240;
constexpr std::size_t kSavedAtOnce = 100;
/// One setting in so many has a name that others have too.
constexpr std::size_t kShared = 4;
constexpr std::size_t kSharedNames = 150;

/// The settings are dealt out to the sections in turn; every tenth section lends no bare names, and every fifth lies
/// inside one that only groups.
std::string defaults(RandomText& random) {
    std::vector<std::string> sections(kSections);
    for (std::size_t i = 0; i < kSettings; ++i) {
        std::string& section = sections[i % kSections];
        const std::string name = random.below(kShared) == 0 ? "common_" + std::to_string(random.below(kSharedNames))
                                                            : "own_" + std::to_string(i);
        section += (section.empty() ? "" : ",") + std::string(R"({"name":")") + name + R"(","value":")" +
                   std::to_string(i % 7) + "\"}";
    }
    std::string text;
    for (std::size_t i = 0; i < kSections; ++i) {
        const std::string own = R"({"header":"H","attribute":"section_)" + std::to_string(i) +
                                R"(","tclCommand":"t","defaultsettings":[)" + sections[i] + "]" +
                                (i % 10 == 3 ? R"(,"unique":false})" : "}");
        const std::string group = R"({"header":"G","attribute":"group","children":[)" + own + "]}";
        text += (text.empty() ? "" : ",") + (i % 5 == 0 ? group : own);
    }
    return R"({"meta":[)" + text + "]}";
}

/// The number of names, bare and in full, that give another value in a new process.
std::size_t differences(const Catalogue& before, const std::string& text, const FileText& file) {
    const Catalogue after = catalogueOfTexts(text, file.value());
    std::size_t count = 0;
    for (std::size_t place = 0; place < before.settings().size(); ++place) {
        count += before.settings().at(place).valueInForce() == after.settings().at(place).valueInForce() ? 0U : 1U;
    }
    return count;
}

Values someValues(const Catalogue& catalogue, RandomText& random) {
    const std::vector<std::string> names = fullNames(catalogue);
    Values values;
    while (values.size() < kSavedAtOnce) {
        const std::string& name = names[random.below(names.size())];
        values[name] = "changed " + std::to_string(random.below(100));
    }
    return values;
}

TEST(SettingsOfRealSize, AllComeBackWhereTheOldDoorLosesSome) {
    std::size_t lost = 0;
    for (unsigned seed = 0; seed < 10; ++seed) {
        RandomText random(seed);
        const std::string text = defaults(random);
        FileText file;
        FileText oldFile;
        SettingsProcess process(text, file);
        SettingsProcess oldProcess(text, oldFile);
        ASSERT_EQ(process.catalogue().settings().recordCount(), kSettings);
        const Values values = someValues(process.catalogue(), random);
        const auto plan = process.save(file, values);
        oldProcess.saveThroughOldDoor(oldFile, values);
        EXPECT_EQ(differences(process.catalogue(), text, file), 0U);
        EXPECT_EQ(userValuesOf(catalogueOfTexts(text, file.value())), process.userValues());
        EXPECT_TRUE(plan.notRestored.empty());
        EXPECT_TRUE(plan.unknownSettings.empty());
        const std::size_t oldDifferences = differences(oldProcess.catalogue(), text, oldFile);
        std::printf("old door: %u names give another value\n", static_cast<unsigned>(oldDifferences));
        lost += oldDifferences;
    }
    // Otherwise the defaults would be no test.
    EXPECT_GT(lost, 0U);
}

}  // namespace
}  // namespace zelutil::test
