// Tests that the doctor tells files in directories that the user may not enter or not write.
#include <gtest/gtest.h>

#include <sys/stat.h>

#include <filesystem>
#include <string>

#include "command/doctor/candidate_text.h"
#include "command/doctor/diagnosis.h"
#include "command/doctor/file_state.h"
#include "support/ordinary_user.h"
#include "support/temp_directory.h"
#include "support/text_file.h"

namespace {

namespace fs = std::filesystem;
using zelutil::command::Diagnosis;
using zelutil::command::FileState;
using zelutil::command::FileUse;
using zelutil::command::SearchStep;
using zelutil::command::stateOfFile;
using zelutil::command::Symptom;
using zelutil::test::OrdinaryUser;
using zelutil::test::TempDirectory;
using zelutil::test::windowsText;
using zelutil::test::writeTextFile;

constexpr fs::perms kReading = fs::perms::owner_read | fs::perms::group_read | fs::perms::others_read;
constexpr fs::perms kEntering = fs::perms::owner_exec | fs::perms::group_exec | fs::perms::others_exec;

/// A home with a directory whose rights a test takes away from everybody.
class DoctorRights : public testing::Test {
protected:
    DoctorRights() {
        fs::permissions(work_.path(), fs::perms::all);
        fs::create_directories(directory_);
        fs::permissions(directory_, fs::perms::all);
    }
    ~DoctorRights() override { fs::permissions(directory_, fs::perms::all); }

    fs::path file() const { return directory_ / "tessel/settings.cfg"; }

    void writeFile() const {
        writeTextFile(file(), "{}");
        fs::permissions(directory_ / "tessel", fs::perms::all);
        fs::permissions(file(), fs::perms::all);
    }

    void allow(fs::perms rights) const { fs::permissions(directory_, rights); }

    /// Returns the state as an ordinary user finds it.
    FileState state() const {
        const OrdinaryUser user;
        return stateOfFile(windowsText(file()), FileUse::Users);
    }

    /// Returns the kinds of what the doctor says of a user's file in this state, and the texts.
    static std::string symptomsOf(const FileState& state) {
        zelutil::text::Candidate unset;
        unset.verdict = zelutil::text::Candidate::Verdict::NotDefined;
        zelutil::text::Candidate drive;
        drive.variable = "HOMEDRIVE";
        drive.seen = "Z:";
        zelutil::text::Candidate home;
        home.variable = "HOMEPATH";
        home.seen = "\\";
        Diagnosis diagnosis;
        diagnosis.hasInstallation = true;
        for (const char* const name : {zelutil::command::kRootStep, zelutil::command::kSiteStep,
                                       zelutil::command::kEnvironmentStep, zelutil::command::kCommonLibraryStep,
                                       zelutil::command::kDefaultsStep, zelutil::command::kUserFileReadStep,
                                       zelutil::command::kUserFileWrittenStep, zelutil::command::kFacetsStep}) {
            FileState fine;
            fine.kind = FileState::Kind::Fine;
            const bool isUsers = std::string(name).find("user-file") == 0;
            diagnosis.steps.push_back({name, "", "Z:\\x", {unset, drive, home}, isUsers ? state : fine});
        }
        std::string told;
        for (const Symptom& symptom : zelutil::command::symptomsOf(diagnosis)) {
            told += std::string(nameOf(symptom.kind)) + ' ' + symptom.step + ": " + symptom.finding.text + '\n';
        }
        return told;
    }

    TempDirectory work_;
    const fs::path directory_ = work_ / "pcbenv";
};

TEST_F(DoctorRights, AFileThatIsThereAndOneThatCanBeMadeAreFine) {
    EXPECT_EQ(state().kind, FileState::Kind::Missing);
    EXPECT_TRUE(state().writeable);
    EXPECT_EQ(symptomsOf(state()), "");
    writeFile();
    EXPECT_EQ(state().kind, FileState::Kind::Fine);
    EXPECT_TRUE(state().writeable);
    EXPECT_EQ(symptomsOf(state()), "");
}

TEST_F(DoctorRights, AFileInADirectoryThatMayNotBeEnteredIsOutOfReach) {
    writeFile();
    allow(kReading);
    const FileState found = state();
    EXPECT_EQ(found.kind, FileState::Kind::Unreadable);
    EXPECT_FALSE(found.writeable);
    EXPECT_EQ(found.shutDirectory, directory_.string());
    EXPECT_EQ(symptomsOf(found),
              "unreadable user-file-read: The file \"/x\" is out of reach, because the directory \"" +
                  directory_.string() + "\" may not be entered.\n");
}

TEST_F(DoctorRights, AFileThatCannotBeMadeIsBlocked) {
    allow(kReading | kEntering);
    const FileState found = state();
    EXPECT_EQ(found.kind, FileState::Kind::Missing);
    EXPECT_FALSE(found.writeable);
    EXPECT_EQ(symptomsOf(found),
              "blocked user-file-written: The file \"/x\" cannot be made, because nothing may be made in the directory "
              "\"" +
                  directory_.string() + "\".\n");
}

TEST_F(DoctorRights, AFileOfAnotherOwnerThatMayNotBeWrittenIsReadOnly) {
    if (::geteuid() != 0) {
        GTEST_SKIP() << "Only root can make such a file.";
    }
    writeFile();
    fs::permissions(file(), kReading | fs::perms::owner_write);
    const FileState found = state();
    EXPECT_EQ(found.kind, FileState::Kind::Fine);
    EXPECT_FALSE(found.writeable);
    EXPECT_EQ(symptomsOf(found),
              "read-only user-file-written: The file \"/x\" is read-only, so that nothing can be saved.\n");
}

TEST_F(DoctorRights, ALinkThatLeadsRoundInACircleIsToldAsSuch) {
    fs::create_directories(directory_ / "tessel");
    fs::create_symlink("settings.cfg", file());
    const FileState found = state();
    EXPECT_STREQ(nameOf(found.kind), "link-circle");
    const std::string text = "link-circle user-file-read: The file \"/x\" is out of reach, because the link \"";
    EXPECT_EQ(symptomsOf(found), text + file().string() + "\" leads round in a circle.\n");
}

TEST_F(DoctorRights, ACircleOnTheWayToTheFileIsNamed) {
    fs::create_symlink("tessel", directory_ / "tessel");
    const FileState found = state();
    EXPECT_STREQ(nameOf(found.kind), "link-circle");
    EXPECT_NE(symptomsOf(found).find("the link \"" + (directory_ / "tessel").string() + "\" leads round"),
              std::string::npos)
        << symptomsOf(found);
}

TEST_F(DoctorRights, APipeIsNoRegularFile) {
    fs::create_directories(directory_ / "tessel");
    ASSERT_EQ(::mkfifo(file().c_str(), 0666), 0);
    EXPECT_STREQ(nameOf(state().kind), "not-regular");
    EXPECT_EQ(symptomsOf(state()),
              "not-regular user-file-read: The file \"/x\" is no regular file, so it is not read.\n");
}

}  // namespace
