// The traces of the searches for the preference files agree with the searches.
#include <gtest/gtest.h>

#include <filesystem>
#include <random>
#include <string>

#include "facet/facet_groups.h"
#include "file/installed_file.h"
#include "prefs/preference_files.h"
#include "prefs/preference_world.h"
#include "support/common_library_stand_in.h"

#include <zelutil/file/hierarchy.h>

namespace zelutil::test {
namespace {

namespace fs = std::filesystem;
using text::Candidate;
using text::SearchTrace;
using Source = Candidate::Source;
using Verdict = Candidate::Verdict;
using ZelU::File::Hierarchy;

constexpr int kRounds = 40;

TEST(DefaultsTrace, AgreesWithTheSearch) {
    const PreferenceWorld world;
    const std::string named = windowsText(world.home() / "named.cfg");
    std::mt19937 random(3);
    for (int round = 0; round < kRounds; ++round) {
        const bool isNamed = random() % 2 == 0;
        const bool isInstalled = random() % 2 == 0;
        isNamed ? setVariable("tessel_settings", named) : unsetVariable("tessel_settings");
        isInstalled ? world.writeDefaults("{}") : static_cast<void>(fs::remove(world.defaultsFile()));
        SearchTrace trace;
        const std::string found = prefs::defaultsFilePath(&Hierarchy::GetRoot(), trace);
        EXPECT_EQ(found, prefs::defaultsFilePath());
        EXPECT_EQ(found, isNamed ? named : isInstalled ? windowsText(world.defaultsFile()) : "");
        ASSERT_EQ(trace.candidates().size(), 2U);
        EXPECT_EQ(trace.candidates()[0].variable, "tessel_settings");
        EXPECT_EQ(trace.candidates()[0].verdict, isNamed ? Verdict::Taken : Verdict::NotDefined);
        EXPECT_EQ(trace.candidates()[0].seen, isNamed ? named : "");
        EXPECT_EQ(trace.candidates()[1].seen, windowsText(world.defaultsFile()));
        EXPECT_EQ(trace.candidates()[1].verdict, !isInstalled ? Verdict::NotThere
                                                 : isNamed    ? Verdict::Shadowed
                                                              : Verdict::Taken);
    }
}

TEST(UserFileTrace, AgreesWithTheSearch) {
    CommonLibraryState& commonLibrary = loadCommonLibrary();
    const PreferenceWorld world;
    const std::string below = windowsText(world.home() / "pcbenv") + "/tessel/tessel_settings.cfg";
    std::mt19937 random(5);
    for (int round = 0; round < kRounds; ++round) {
        commonLibrary.canSearch = random() % 3 != 0;
        const bool isOnPath = random() % 2 == 0;
        commonLibrary.foundPath = isOnPath ? std::make_optional<std::string>("Z:/site/user.cfg") : std::nullopt;
        const bool isFound = commonLibrary.canSearch && isOnPath;
        SearchTrace trace;
        const std::string found = prefs::userFilePath(trace);
        EXPECT_EQ(found, prefs::userFilePath());
        EXPECT_EQ(found, isFound ? "Z:/site/user.cfg" : below);
        ASSERT_EQ(trace.candidates().size(), 2U);
        EXPECT_EQ(trace.candidates()[0].source, Source::SetupPath);
        EXPECT_EQ(trace.candidates()[0].verdict, isFound ? Verdict::Taken : Verdict::Unknown);
        EXPECT_EQ(trace.candidates()[1].source, Source::UserEnvironment);
        EXPECT_EQ(trace.candidates()[1].verdict, isFound ? Verdict::Shadowed : Verdict::Taken);
        EXPECT_EQ(trace.candidates()[1].seen, below);
        SearchTrace ofSave;
        EXPECT_EQ(prefs::writtenUserFilePath(ofSave), found);
        ASSERT_EQ(ofSave.candidates().size(), 3U);
        EXPECT_EQ(ofSave.candidates()[0].variable, "regression_testing");
        EXPECT_EQ(ofSave.candidates()[0].verdict, Verdict::NotDefined);
    }
}

TEST(UserFileTrace, OfASaveNamesTheCurrentDirectory) {
    const PreferenceWorld world;
    fs::current_path(world.home().path());
    setVariable("regression_testing", "");
    SearchTrace trace;
    const std::string written = prefs::writtenUserFilePath(trace);
    EXPECT_EQ(written, prefs::writtenUserFilePath());
    EXPECT_EQ(written, windowsText(world.home().path()) + "/tessel_settings.cfg");
    ASSERT_EQ(trace.candidates().size(), 2U);
    EXPECT_EQ(trace.candidates()[0].verdict, Verdict::Noted);
    EXPECT_EQ(trace.candidates()[1].source, Source::CurrentDirectory);
    EXPECT_EQ(trace.candidates()[1].verdict, Verdict::Taken);
    EXPECT_EQ(trace.candidates()[1].seen, written);
}

TEST(FacetTrace, AgreesWithTheSearch) {
    const PreferenceWorld world;
    const fs::path place = world.defaultsFile().parent_path() / facet::kFacetFileName;
    for (const bool isThere : {false, true}) {
        if (isThere) {
            writeTextFile(place, "{}");
        }
        SearchTrace trace;
        const std::string found = file::installedSettingsFile(facet::kFacetFileName, &Hierarchy::GetRoot(), trace);
        EXPECT_EQ(found, file::installedSettingsFile(facet::kFacetFileName));
        EXPECT_EQ(found, isThere ? windowsText(place) : "");
        ASSERT_EQ(trace.candidates().size(), 1U);
        EXPECT_EQ(trace.candidates()[0].verdict, isThere ? Verdict::Taken : Verdict::NotThere);
        EXPECT_EQ(trace.candidates()[0].seen, windowsText(place));
    }
}

}  // namespace
}  // namespace zelutil::test
