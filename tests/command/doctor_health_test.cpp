// The command finds nothing in healthy trees but what is worth a note, and says of them what the library does. Each run
// is a process of its own.
#include <gtest/gtest.h>

#include <filesystem>
#include <random>
#include <string>

#include "command/doctor_answers.h"
#include "command/doctor_world.h"
#include "host/save_world.h"
#include "support/common_library_stand_in.h"
#include "support/sanitized.h"

namespace zelutil::test {
namespace {

namespace fs = std::filesystem;

// --- Healthy trees --------------------------------------------------------------------------------------------------

class RandomHealth {
public:
    explicit RandomHealth(unsigned seed) : random_(seed) {}

    void change(DoctorWorld& world) {
        nameTheProduct(world);
        if (chance()) {
            writeTextFile(world.userFile(), kHealthyUser);
        }
        if (chance()) {
            writeTextFile(world.work / "site" / kFileOfSite, "");
            world.name("QTX_SITE", world.work / "site");
        }
        if (chance()) {
            writeTextFile(world.work / "settings/named.cfg", kHealthyDefaults);
            world.name("tessel_settings", world.work / "settings/named.cfg");
        }
        if (random_() % 4 == 0) {
            world.environment["regression_testing"] = "";
        }
    }

private:
    bool chance() { return random_() % 2 == 0; }

    void nameTheProduct(DoctorWorld& world) {
        static const char* const variables[] = {"QTXROOT", "QTX_ROOT", "QTXINSTDIR"};
        const auto way = random_() % 5;
        if (way < 3) {
            world.name(variables[way], world.product);
            world.setPath({world.work / "nothing"});
        } else if (way == 3) {
            makeInstallation(world.product, "tools/lib/64bit");
            world.setPath({world.work / "nothing", world.product / "tools/lib/64bit"});
        } else {
            makeInstallation(world.other);
            world.setPath({world.here, world.product / "tools/bin", world.other / "tools/bin"});
        }
    }

    std::mt19937 random_;
};

TEST(Doctor, FindsNothingInHealthyTreesAndSaysWhatTheLibraryReturns) {
    for (unsigned seed = 0; seed < casesInTime(100U, 30U) && !testing::Test::HasFailure(); ++seed) {
        SCOPED_TRACE(seed);
        DoctorWorld world;
        RandomHealth(seed).change(world);
        const DoctorRun doctor(world);
        EXPECT_EQ(doctor.result.exitCode, 0) << doctor.findings();
        for (const NamedSymptom& symptom : doctor.symptoms()) {
            EXPECT_TRUE(symptom.isNote && symptom.kind == "shadowed") << symptom.kind;
        }
        EXPECT_EQ(doctor.resultOf("root"), windowsText(world.product));
        if (!doctor.resultOf("site").empty()) {
            EXPECT_EQ(answersIn(world, {"file-of-site"}).at("file-of-site"),
                      doctor.resultOf("site") + '\\' + kFileOfSite);
        }
        expectAnswersOfTheLibrary(doctor, world);
    }
}

/// 3,091 settings, of which the user has changed every third, and 1,105 actions.
TEST(Doctor, SaysOfAnInstallationOfRealSizeWhatTheLibraryReturns) {
    DoctorWorld world;
    writeTextFile(world.defaults(), defaultsOfWorld(kProductSize));
    std::string entries;
    for (int number = 0; number < kProductSize.settings; number += 3) {
        entries += (number == 0 ? "" : ",") + std::string("{\"") + settingOfWorld(number) + R"(":"mine"})";
    }
    writeTextFile(world.userFile(),
                  R"({"meta":[{"header":"Part","attribute":"part0","overriddensettings":[)" + entries + "]}]}");
    const DoctorRun doctor(world);
    EXPECT_EQ(doctor.result.exitCode, 0) << doctor.findings();
    EXPECT_TRUE(doctor.symptoms().empty()) << doctor.findings();
    EXPECT_TRUE(doctor.isWriteable("user-file-written"));
    expectAnswersOfTheLibrary(doctor, world);
}

// --- Notes ----------------------------------------------------------------------------------------------------------

/// Expects the note and nothing else.
void expectNoteAlone(const DoctorRun& doctor, const std::string& kind, const std::string& step) {
    EXPECT_EQ(doctor.result.exitCode, 0) << doctor.findings();
    ASSERT_EQ(doctor.symptoms().size(), 1U) << doctor.findings();
    const NamedSymptom symptom = doctor.symptoms()[0];
    EXPECT_EQ(symptom.kind, kind);
    EXPECT_EQ(symptom.step, step);
    EXPECT_TRUE(symptom.isNote);
}

std::string nativeInQuotes(const fs::path& path) { return '"' + fs::path(path).make_preferred().string() + '"'; }

TEST(Doctor, NotesAnInstallationThatAnEarlierOneShadows) {
    DoctorWorld world;
    makeInstallation(world.other);
    world.setPath({world.product / "tools/bin", world.other / "tools/bin"});
    const DoctorRun doctor(world);
    expectNoteAlone(doctor, "shadowed", "root");
    EXPECT_EQ(doctor.findings(),
              "The installation " + nativeInQuotes(world.other) + " would be found too, but an earlier one is.\n");
    expectAnswersOfTheLibrary(doctor, world);
}

/// Gives a world the common library's stand-in, which names the product.
void haveCommonLibrary(DoctorWorld& world) {
    world.setPath({world.product / "tools/bin"});
    world.environment[loaderPathVariable()] = systemText(commonLibraryDirectory());
    world.name("QTXCOMMON_STAND_IN_TOOLS", world.product / "tools");
}

/// The setup path leads to another file than the one in the user's environment.
TEST(Doctor, NotesAUsersFileThatAnEarlierOneShadows) {
    DoctorWorld world;
    haveCommonLibrary(world);
    const fs::path found = (world.work / "setup/tessel_settings.cfg").make_preferred();
    writeTextFile(found, kHealthyUser);
    world.name("QTXCOMMON_STAND_IN_FOUND", found);
    writeTextFile(world.userFile(), kHealthyUser);
    const DoctorRun doctor(world);
    expectNoteAlone(doctor, "shadowed", "user-file-read");
    EXPECT_EQ(doctor.findings(), "The file " + nativeInQuotes(world.userFile()) + " is there too, but " +
                                     nativeInQuotes(found) + " comes before it.\n");
    EXPECT_EQ(windowsText(doctor.resultOf("user-file-read")), windowsText(found));
    expectAnswersOfTheLibrary(doctor, world);
}

TEST(Doctor, NotesACommonLibraryThatIsNotReady) {
    DoctorWorld world;
    haveCommonLibrary(world);
    const DoctorRun ready(world);
    EXPECT_TRUE(ready.symptoms().empty()) << ready.findings();
    EXPECT_TRUE(ready.document.root().member("initialised").isTrue());
    expectAnswersOfTheLibrary(ready, world);
    world.environment["QTXCOMMON_STAND_IN_INIT_DONE"] = "0";
    const DoctorRun doctor(world);
    expectNoteAlone(doctor, "not-ready", "common-library");
    EXPECT_FALSE(doctor.document.root().member("initialised").isTrue());
    EXPECT_EQ(doctor.findings(), "The common library is not initialised, so the installation may still change.\n");
    expectAnswersOfTheLibrary(doctor, world);
}

}  // namespace
}  // namespace zelutil::test
