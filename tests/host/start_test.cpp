// Tests what a host can say and ask before and after the start.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <zelutil/actions/action_manager.h>
#include <zelutil/c_api.h>
#include <zelutil/host/save.h>
#include <zelutil/host/start.h>
#include <zelutil/prefs/user_preference_manager.h>

#include <filesystem>
#include <string>
#include <vector>

#include "host/save_world.h"
#include "prefs/preference_world.h"

namespace zelutil::test {
namespace {

namespace fs = std::filesystem;
using host::Options;
using host::SaveResult;
using host::StartWarning;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using Kind = StartWarning::Kind;

Options withBlanks() {
    Options options;
    options.pathsWithBlanks = true;
    return options;
}

std::string setting(const char* name) { return UserPreferenceManager::GetInstance().getUserPrefSetting(name); }

// --- Warnings -------------------------------------------------------------------------------------------------------

TEST(StartWarnings, AreNoneWhenAllIsWell) {
    const PreferenceWorld world;
    world.writeDefaults(defaultsOfWorld());
    EXPECT_THAT(host::startWarnings(), IsEmpty());
}

TEST(StartWarnings, AreNoneOfAFileThatASaveWrote) {
    const PreferenceWorld world;
    world.writeDefaults(defaultsOfWorld());
    // As a save of another process writes it, with and without actions.
    world.writeUser(R"({"meta":[{"header":"Part","attribute":"part0","overriddensettings":[{"value0":"a"}]},
        {"header":"Keys","attribute":"keys","submanagerId":100,"overriddensettings":[]}]})");
    EXPECT_THAT(host::startWarnings(), IsEmpty());
    EXPECT_EQ(setting("part0::value0"), "a");
}

TEST(StartWarnings, NameEachEntryThatHadNoEffect) {
    const PreferenceWorld world;
    world.writeDefaults(defaultsOfWorld());
    world.writeUser(R"({"meta":[
        {"header":"Keys","attribute":"keys","overriddensettings":[{"actions":[
            {"id":1,"shortcut":"Ctrl+4"},{"id":77,"shortcut":"F1"},{"id":2,"shortcut":"F2"}]}]},
        {"header":"O","attribute":"other","overriddensettings":[{"its":"value"}]},
        {"header":"Part","attribute":"part0","overriddensettings":[{"newer":"setting"},{"value0":1}]},
        {"header":"Part","attribute":"part1","overriddensettings":[{"value0":"for another"}]}]})");
    const std::vector<StartWarning> warnings = host::startWarnings();
    ASSERT_EQ(warnings.size(), 6U);
    EXPECT_EQ(warnings[0].kind, Kind::EntryWithoutEffect);
    EXPECT_EQ(warnings[0].name, "other");
    EXPECT_EQ(warnings[0].text, "The section other has no effect, because there is no such section.");
    EXPECT_EQ(warnings[1].kind, Kind::EntryWithoutEffect);
    EXPECT_EQ(warnings[1].name, "newer");
    EXPECT_EQ(warnings[1].text,
              "The entry newer of the section part0 has no effect, because there is no such setting.");
    EXPECT_EQ(warnings[2].kind, Kind::EntryWithoutEffect);
    EXPECT_EQ(warnings[2].name, "value0");
    EXPECT_EQ(warnings[2].text, "The entry value0 of the section part0 has no effect, because its value is no text.");
    EXPECT_EQ(warnings[3].kind, Kind::EntryForAnotherSection);
    EXPECT_EQ(warnings[3].name, "value0");
    EXPECT_EQ(warnings[3].text,
              "The entry value0 of the section part1 sets a setting of another section, which that name means.");
    EXPECT_EQ(warnings[4].kind, Kind::ShortcutRefused);
    EXPECT_EQ(warnings[4].action, 1);
    EXPECT_EQ(warnings[4].holder, 4);
    EXPECT_EQ(warnings[5].kind, Kind::EntryWithoutEffect);
    EXPECT_EQ(warnings[5].action, 77);
}

TEST(StartWarnings, TellOfEntriesThatStandInNoList) {
    const PreferenceWorld world;
    world.writeDefaults(defaultsOfWorld());
    world.writeUser(
        R"({"meta":[{"header":"Part","attribute":"part0","overriddensettings":{"value0":"mine","value1":"too"}}]})");
    const std::vector<StartWarning> warnings = host::startWarnings();
    ASSERT_EQ(warnings.size(), 1U);
    EXPECT_EQ(warnings[0].kind, Kind::EntryWithoutEffect);
    EXPECT_EQ(warnings[0].name, "part0");
    EXPECT_EQ(warnings[0].text,
              "The entries of the section part0 have no effect, because \"overriddensettings\" is not the list that is "
              "read.");
}

TEST(StartWarnings, TellOfADirectoryAtThePlaceOfTheFile) {
    const PreferenceWorld world;
    world.writeDefaults(defaultsOfWorld());
    fs::create_directories(world.userFile());
    const std::vector<StartWarning> warnings = host::startWarnings();
    ASSERT_EQ(warnings.size(), 1U);
    EXPECT_EQ(warnings[0].kind, Kind::FileNotRead);
    EXPECT_EQ(warnings[0].text, "The file " + host::userFilePath() +
                                    " could not be read, because there is a directory of that name, so the shipped "
                                    "defaults are in force. Nothing can be saved in its place as long as it is there.");
    EXPECT_FALSE(host::save({{"part0::value0", "mine"}}).ok());
    // Once it is gone, there is nothing to be kept.
    fs::remove(world.userFile());
    const SaveResult result = host::save();
    EXPECT_EQ(result.status, SaveResult::Status::Saved);
    EXPECT_EQ(result.keptCopy, "");
}

TEST(StartWarnings, ComeFromTheStartAndStay) {
    const PreferenceWorld world;
    world.writeDefaults(defaultsOfWorld());
    world.writeUser(R"({"meta":[{"header":"O","attribute":"other","overriddensettings":[{"its":"value"}]}]})");
    ASSERT_EQ(host::startWarnings().size(), 1U);
    EXPECT_TRUE(host::save({{"part0::value0", "mine"}}).ok());
    EXPECT_EQ(host::startWarnings().size(), 1U);
}

// --- The path -------------------------------------------------------------------------------------------------------

TEST(UserFilePath, IsTheOneThatASaveWrites) {
    const PreferenceWorld world;
    world.writeDefaults(defaultsOfWorld());
    const std::string path = host::userFilePath();
    EXPECT_EQ(fileOfText(path).lexically_normal(), world.userFile().lexically_normal());
    EXPECT_EQ(host::save({{"part0::value0", "mine"}}).path, path);
    EXPECT_TRUE(fs::exists(world.userFile()));
}

// --- Paths with blanks ----------------------------------------------------------------------------------------------

/// An installation and a home below a directory with a blank in its name.
class WorldWithBlank {
public:
    WorldWithBlank() {
        clearProductVariables();
        setVariable("PATH", "");
        makeInstallation(root());
        setVariable("QTXROOT", windowsText(root()));
        const std::string home = windowsText(directory_ / "Ann B");
        setVariable("HOMEDRIVE", home.substr(0, 2));
        setVariable("HOMEPATH", home.substr(2));
        writeTextFile(resources() / "tessel_settings.cfg", defaultsOfWorld());
        writeTextFile(resources() / "facet_settings.cfg",
                      R"({"meta":[{"header":"pads","facets":[{"name":"width","type":"Numerical"}]}]})");
    }

    fs::path root() const { return directory_ / "Program Files" / "product"; }
    fs::path resources() const { return root() / "share/qtxsetup/canvas/resources/tessel"; }
    fs::path userFile() const { return directory_ / "Ann B" / "pcbenv/tessel/tessel_settings.cfg"; }
    fs::path directory() const { return directory_.path(); }

private:
    TempDirectory directory_;
};

constexpr char kUserText[] =
    R"({"meta":[{"header":"Part","attribute":"part0","overriddensettings":[{"value0":"read"}]}]})";

TEST(PathsWithBlanks, AreNeitherReadNorWrittenByThemselves) {
    const WorldWithBlank world;
    writeTextFile(world.userFile(), kUserText);
    EXPECT_FALSE(host::options().pathsWithBlanks);
    EXPECT_EQ(setting("part0::value0"), "");
    EXPECT_EQ(host::userFilePath().front(), '"');
    EXPECT_EQ(host::save({{"part0::value0", "mine"}}).status, SaveResult::Status::NoDefaults);
    EXPECT_EQ(readTextFile(world.userFile()), kUserText);
}

TEST(PathsWithBlanks, OfTheHomeAloneLeaveNoPlaceForTheFile) {
    const WorldWithBlank world;
    writeTextFile(world.userFile(), kUserText);
    setVariable("tessel_settings", systemText(world.resources() / "tessel_settings.cfg"));
    EXPECT_EQ(setting("part0::value0"), "default 0");
    const SaveResult result = host::save({{"part0::value0", "mine"}});
    EXPECT_EQ(result.status, SaveResult::Status::NoPath);
    EXPECT_EQ(setting("part0::value0"), "mine");
    EXPECT_EQ(readTextFile(world.userFile()), kUserText);
}

TEST(PathsWithBlanks, AreReadAndWrittenWhereAHostAsksForIt) {
    const WorldWithBlank world;
    writeTextFile(world.userFile(), kUserText);
    EXPECT_TRUE(host::setOptions(withBlanks()));
    EXPECT_TRUE(host::options().pathsWithBlanks);
    EXPECT_EQ(setting("part0::value0"), "read");
    EXPECT_EQ(setting("part0::value1"), "default 4");
    const SaveResult result = host::save({{"part0::value1", "mine"}});
    EXPECT_EQ(result.status, SaveResult::Status::Saved) << result.text;
    EXPECT_EQ(fileOfText(result.path).lexically_normal(), world.userFile().lexically_normal());
    EXPECT_THAT(readTextFile(world.userFile()), HasSubstr("\"mine\""));
    EXPECT_THAT(readTextFile(world.userFile()), HasSubstr("\"read\""));
}

TEST(PathsWithBlanks, OfARegressionTestAreWrittenWhereAHostAsksForIt) {
    const WorldWithBlank world;
    EXPECT_TRUE(host::setOptions(withBlanks()));
    setVariable("regression_testing", "1");
    fs::create_directory(world.directory() / "a b");
    fs::current_path(world.directory() / "a b");
    EXPECT_EQ(host::save({{"part0::value1", "mine"}}).status, SaveResult::Status::Saved);
    EXPECT_TRUE(fs::exists(world.directory() / "a b" / "tessel_settings.cfg"));
    EXPECT_FALSE(fs::exists(world.userFile()));
    fs::current_path(world.directory());
}

TEST(PathsWithBlanks, OfTheOldDoorAreWrittenToo) {
    const WorldWithBlank world;
    EXPECT_TRUE(host::setOptions(withBlanks()));
    UserPreferenceManager::GetInstance().updateUserPrefSettings({{"part0::value1", "mine"}}, {});
    EXPECT_THAT(readTextFile(world.userFile()), HasSubstr("\"mine\""));
}

TEST(PathsWithBlanks, CountForFacetsToo) {
    const WorldWithBlank world;
    EXPECT_TRUE(host::setOptions(withBlanks()));
    EXPECT_TRUE(ZelUIsFacetDefined("pads", "width"));
}

TEST(PathsWithBlanks, DoNotCountForFacetsByThemselves) {
    const WorldWithBlank world;
    EXPECT_FALSE(ZelUIsFacetDefined("pads", "width"));
}

TEST(SetOptions, ComesTooLateAfterThePreferencesWereUsed) {
    const PreferenceWorld world;
    UserPreferenceManager::GetInstance();
    EXPECT_FALSE(host::setOptions(withBlanks()));
    EXPECT_FALSE(host::options().pathsWithBlanks);
    EXPECT_TRUE(host::setOptions(Options()));
}

TEST(SetOptions, ComesTooLateAfterTheFacetsWereUsed) {
    const PreferenceWorld world;
    ZelUIsFacetDefined("pads", "width");
    EXPECT_FALSE(host::setOptions(withBlanks()));
    EXPECT_TRUE(host::setOptions(Options()));
}

TEST(SetOptions, MayChangeItsMindBeforeTheFirstUseAndNotAfterIt) {
    const PreferenceWorld world;
    EXPECT_TRUE(host::setOptions(withBlanks()));
    EXPECT_TRUE(host::setOptions(Options()));
    EXPECT_TRUE(host::setOptions(withBlanks()));
    UserPreferenceManager::GetInstance();
    EXPECT_FALSE(host::setOptions(Options()));
    EXPECT_TRUE(host::options().pathsWithBlanks);
    EXPECT_TRUE(host::setOptions(withBlanks()));
}

TEST(SetOptions, ChangesNothingWhereNoPathHasABlank) {
    const PreferenceWorld world;
    world.writeDefaults(defaultsOfWorld());
    world.writeUser(kUserText);
    EXPECT_TRUE(host::setOptions(withBlanks()));
    EXPECT_EQ(setting("part0::value0"), "read");
    EXPECT_EQ(host::save({{"part0::value1", "mine"}}).status, SaveResult::Status::Saved);
    EXPECT_THAT(readTextFile(world.userFile()), HasSubstr("\"mine\""));
}

}  // namespace
}  // namespace zelutil::test
