// These tests show which files the first request reads. Each case is a process of its own with real files.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <zelutil/c_api.h>
#include <zelutil/prefs/user_preference_manager.h>

#include <cstdint>
#include <filesystem>
#include <string>

#include "prefs/preference_world.h"
#include "support/common_library_stand_in.h"

namespace zelutil::test {
namespace {

std::string value() { return UserPreferenceManager::GetInstance().getUserPrefSetting("s::value"); }
std::string defaultValue() { return UserPreferenceManager::GetInstance().getDefaultPrefSetting("s::value"); }

class DefaultsFile : public testing::Test {
protected:
    PreferenceWorld world_;
};

TEST_F(DefaultsFile, IsFoundInTheInstallation) {
    world_.writeDefaults(defaultsWithValue("installed"));
    EXPECT_EQ(value(), "installed");
    EXPECT_STREQ(get_user_setting("s::value"), "installed");
    EXPECT_STREQ(get_default_user_setting("value"), "installed");
}

TEST_F(DefaultsFile, IsTheOneThatTheVariableNamesThoughOneIsInstalled) {
    world_.writeDefaults(defaultsWithValue("installed"));
    writeTextFile(world_.home() / "elsewhere.json", defaultsWithValue("named"));
    setVariable("tessel_settings", systemText(world_.home() / "elsewhere.json"));
    EXPECT_EQ(value(), "named");
}

TEST_F(DefaultsFile, MayBeNamedByAWindowsText) {
    writeTextFile(world_.home() / "elsewhere.json", defaultsWithValue("named"));
    setVariable("tessel_settings", windowsText(world_.home() / "elsewhere.json"));
    EXPECT_EQ(value(), "named");
}

TEST_F(DefaultsFile, MayBeNamedRelativeToTheCurrentDirectoryAndWithABlank) {
    writeTextFile(world_.home() / "my settings.cfg", defaultsWithValue("named"));
    std::filesystem::current_path(world_.home().path());
    setVariable("tessel_settings", "my settings.cfg");
    EXPECT_EQ(value(), "named");
}

// The variable names the file itself: with its directory or nothing at all there are no defaults.
TEST_F(DefaultsFile, IsNotLookedForInTheDirectoryThatTheVariableNames) {
    world_.writeDefaults(defaultsWithValue("installed"));
    setVariable("tessel_settings", systemText(world_.defaultsFile().parent_path()));
    EXPECT_EQ(value(), "");
}

TEST_F(DefaultsFile, IsNoneWhenTheVariableNamesNothing) {
    world_.writeDefaults(defaultsWithValue("installed"));
    setVariable("tessel_settings", "");
    EXPECT_EQ(value(), "");
}

TEST_F(DefaultsFile, IsNoneWhenTheVariableNamesAMissingFile) {
    world_.writeDefaults(defaultsWithValue("installed"));
    setVariable("tessel_settings", systemText(world_.home() / "missing"));
    EXPECT_EQ(value(), "");
}

TEST_F(DefaultsFile, MissingLeavesEveryAnswerEmptyAndPrintsNothing) {
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    UserPreferenceManager& manager = UserPreferenceManager::GetInstance();
    EXPECT_EQ(manager.getUserPrefSetting("s::value"), "");
    EXPECT_EQ(manager.getDefaultPrefSetting("s::value"), "");
    EXPECT_TRUE(manager.getAllUserPrefUISettings().empty());
    EXPECT_EQ(get_user_setting("s::value"), nullptr);
    EXPECT_EQ(get_default_user_setting("s::value"), nullptr);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST_F(DefaultsFile, ThatIsNoJsonContributesNothingQuietly) {
    world_.writeDefaults("{\"meta\":[");
    world_.writeUser(userWithValue("user"));
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    EXPECT_EQ(value(), "");
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST_F(DefaultsFile, IsTheSitesNowhere) {
    // The site directory goes before the installation for files of share/local only.
    world_.writeDefaults(defaultsWithValue("installed"));
    writeTextFile(world_.home() / "site/tessel_settings.cfg", defaultsWithValue("site"));
    setVariable("QTX_SITE", systemText(world_.home() / "site"));
    EXPECT_EQ(value(), "installed");
}

TEST_F(DefaultsFile, IsNotReadBelowARootWithABlankOddity) {
    const InstallationTree product;
    const auto root = product.root() / "with blank";
    makeInstallation(root);
    writeTextFile(root / "share/qtxsetup/canvas/resources/tessel/tessel_settings.cfg", defaultsWithValue("blank"));
    setVariable("QTXROOT", systemText(root));
    EXPECT_EQ(value(), "");
}

TEST_F(DefaultsFile, WithoutAnInstallationLeavesTheManagerEmptyAfterTheMessage) {
    world_.writeUser(userWithValue("user"));
    unsetVariable("QTXROOT");
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    EXPECT_NO_THROW(EXPECT_EQ(value(), ""));
    EXPECT_EQ(get_user_setting("s::value"), nullptr);
    constexpr char kMessage[] =
        "ERROR: Vorn Marl hierarchy root could not be located.\n"
        "Make sure <qtxroot>/tools/bin is included in the $PATH\n";
    EXPECT_EQ(testing::internal::GetCapturedStdout(), kMessage);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), kMessage);
}

class UserFile : public testing::Test {
protected:
    UserFile() { world_.writeDefaults(defaultsWithValue("default")); }

    std::string elsewhere(const std::string& text) const {
        writeTextFile(world_.home() / "elsewhere/found.cfg", text);
        return systemText(world_.home() / "elsewhere/found.cfg");
    }

    PreferenceWorld world_;
};

TEST_F(UserFile, IsTheOneBelowTheUsersEnvironmentWithoutACommonLibrary) {
    world_.writeUser(userWithValue("user"));
    EXPECT_EQ(value(), "user");
    EXPECT_EQ(defaultValue(), "default");
    EXPECT_EQ(UserPreferenceManager::GetInstance().getUserPrefSetting("other"), "o");
}

TEST_F(UserFile, MissingLeavesTheDefaults) {
    EXPECT_EQ(value(), "default");
    EXPECT_FALSE(std::filesystem::exists(world_.home() / "pcbenv"));
}

TEST_F(UserFile, ThatIsNoJsonLeavesTheDefaults) {
    world_.writeUser(userWithValue("user") + "x");
    EXPECT_EQ(value(), "default");
}

// Bytes behind a zero byte are not looked at, so the size alone makes the difference.
TEST_F(UserFile, OfTheLargestSizeIsRead) {
    world_.writeUser(userWithValue("user"));
    std::filesystem::resize_file(world_.userFile(), std::uintmax_t{64} << 20);
    EXPECT_EQ(value(), "user");
}

TEST_F(UserFile, LargerThanThatIsNotRead) {
    world_.writeUser(userWithValue("user"));
    std::filesystem::resize_file(world_.userFile(), (std::uintmax_t{64} << 20) + 1);
    EXPECT_EQ(value(), "default");
}

TEST_F(UserFile, IsTheOneThatTheCommonLibraryFinds) {
    world_.writeUser(userWithValue("user"));
    CommonLibraryState& commonLibrary = loadCommonLibrary();
    commonLibrary.foundPath = elsewhere(userWithValue("found"));
    EXPECT_EQ(value(), "found");
    EXPECT_EQ(commonLibrary.initializeCalls, 1);
    EXPECT_EQ(commonLibrary.searchCalls, 1);
    EXPECT_EQ(commonLibrary.searchedName, "pcbenv/tessel/tessel_settings.cfg");
    EXPECT_EQ(commonLibrary.searchBufferSize, 2048);
    EXPECT_TRUE(commonLibrary.searchGotItsHandle);
}

TEST_F(UserFile, FoundByTheCommonLibraryButMissingIsNotLookedForElsewhere) {
    world_.writeUser(userWithValue("user"));
    loadCommonLibrary().foundPath = systemText(world_.home() / "missing.cfg");
    EXPECT_EQ(value(), "default");
}

// The path that the search writes is taken as it stands, without the quotes of a path made here.
TEST_F(UserFile, FoundByTheCommonLibraryMayHaveABlankInItsPath) {
    const auto file = world_.home() / "my files/found.cfg";
    writeTextFile(file, userWithValue("found"));
    loadCommonLibrary().foundPath = systemText(file);
    EXPECT_EQ(value(), "found");
}

TEST_F(UserFile, IsNoneWhenTheCommonLibraryFindsAnEmptyText) {
    world_.writeUser(userWithValue("user"));
    loadCommonLibrary().foundPath = "";
    EXPECT_EQ(value(), "default");
}

TEST_F(UserFile, IsTheOneBelowTheUsersEnvironmentWhenTheSearchFindsNone) {
    world_.writeUser(userWithValue("user"));
    CommonLibraryState& commonLibrary = loadCommonLibrary();
    EXPECT_EQ(value(), "user");
    EXPECT_EQ(commonLibrary.searchCalls, 1);
}

TEST_F(UserFile, IsTheOneBelowTheUsersEnvironmentWhenTheSearchCannotBePrepared) {
    world_.writeUser(userWithValue("user"));
    CommonLibraryState& commonLibrary = loadCommonLibrary();
    commonLibrary.canSearch = false;
    commonLibrary.foundPath = elsewhere(userWithValue("found"));
    EXPECT_EQ(value(), "user");
    EXPECT_EQ(commonLibrary.searchCalls, 0);
}

class UserFileWithAPoorCommonLibrary : public UserFile, public testing::WithParamInterface<const char*> {};

TEST_P(UserFileWithAPoorCommonLibrary, IsTheOneBelowTheUsersEnvironment) {
    world_.writeUser(userWithValue("user"));
    loadCommonLibrary(GetParam()).foundPath = elsewhere(userWithValue("found"));
    EXPECT_EQ(value(), "user");
}

INSTANTIATE_TEST_SUITE_P(All, UserFileWithAPoorCommonLibrary,
                         testing::Values("without_initialize", "without_search", "without_functions"),
                         [](const auto& instance) { return std::string(instance.param); });

TEST_F(UserFile, IsReadOnceAndNeverAgain) {
    world_.writeUser(userWithValue("user"));
    EXPECT_EQ(value(), "user");
    world_.writeUser(userWithValue("later"));
    world_.writeDefaults(defaultsWithValue("later"));
    EXPECT_EQ(value(), "user");
    EXPECT_EQ(defaultValue(), "default");
}

TEST_F(UserFile, IsTheLocatedOneThoughRegressionTestingIsSet) {
    world_.writeUser(userWithValue("user"));
    writeTextFile(world_.home() / "tessel_settings.cfg", userWithValue("current directory"));
    std::filesystem::current_path(world_.home().path());
    setVariable("regression_testing", "1");
    EXPECT_EQ(value(), "user");
}

TEST_F(UserFile, IsLookedForBelowTheCurrentDirectoryWithoutAHome) {
    world_.writeUser(userWithValue("user"));
    unsetVariable("HOMEDRIVE");
    unsetVariable("HOMEPATH");
    std::filesystem::current_path(world_.home().path());
    EXPECT_EQ(value(), "user");
}

TEST_F(UserFile, IsNotReadBelowAHomeWithABlankOddity) {
    const auto home = world_.home() / "with blank";
    writeTextFile(home / "pcbenv/tessel/tessel_settings.cfg", userWithValue("user"));
    world_.setHome(home);
    EXPECT_EQ(value(), "default");
}

}  // namespace
}  // namespace zelutil::test
