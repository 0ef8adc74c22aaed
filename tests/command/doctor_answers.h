#ifndef ZELUTIL_TESTS_COMMAND_DOCTOR_ANSWERS_H
#define ZELUTIL_TESTS_COMMAND_DOCTOR_ANSWERS_H

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "command/doctor_world.h"

/// Compares what the subcommand "doctor" says with what the library returns in new processes.
namespace zelutil::test {

inline const std::vector<std::string> kSearches = {
    "root", "site", "environment", "defaults", "user-file-read", "user-file-written", "facets"};

inline const char* yesOrNo(bool truth) { return truth ? "yes" : "no"; }

/// A file of the site, for which the probe asks the library.
inline constexpr char kFileOfSite[] = "of_site.txt";

using Answers = std::map<std::string, std::string>;

/// The states of the files are those in which the library finds them.
inline void expectStatesOfTheLibrary(const DoctorRun& doctor, const Answers& answers) {
    static const std::set<std::string> unread = {"malformed", "too-large", "unreadable", "directory"};
    EXPECT_EQ(answers.at("user-file-unread"), yesOrNo(unread.count(doctor.stateOf("user-file-read")) != 0));
    const std::vector<NamedSymptom> symptoms = doctor.symptoms();
    const bool lackSettings = std::any_of(symptoms.begin(), symptoms.end(),
                                          [](const NamedSymptom& symptom) { return symptom.kind == "no-settings"; });
    EXPECT_EQ(answers.at("sections"), yesOrNo(doctor.stateOf("defaults") == "fine" && !lackSettings));
}

/// Returns the text without the quotes that a path, or the beginning of one, gets for a blank in it.
inline std::string withoutQuotes(std::string path) {
    path.erase(std::remove(path.begin(), path.end(), '"'), path.end());
    return path;
}

/// Expects that each result is what the candidate leads to that was taken.
inline void expectTakenResults(const DoctorRun& doctor) {
    for (const std::string& search : kSearches) {
        const std::string taken = windowsText(withoutQuotes(doctor.takenOf(search)));
        const std::string result = windowsText(withoutQuotes(doctor.resultOf(search)));
        if (search == "site") {
            // The candidate is the value of the variable, which the current directory may come in front of.
            EXPECT_EQ(taken.empty(), result.empty());
        } else {
            EXPECT_EQ(taken, result) << search;
        }
    }
    EXPECT_EQ(doctor.takenOf("common-library"), doctor.resultOf("common-library"));
}

/// Expects that each file that can be read has as many bytes as the system says.
inline void expectSizes(const DoctorRun& doctor) {
    for (const char* const step : {"defaults", "user-file-read", "user-file-written", "facets"}) {
        const std::string state = doctor.stateOf(step);
        const bool isReadable = state == "fine" || state == "malformed" || state == "too-large";
        const std::string size =
            isReadable ? std::to_string(std::filesystem::file_size(fileOfText(doctor.resultOf(step)))) : "0";
        EXPECT_EQ(doctor.sizeOf(step), size) << step;
    }
}

/// Expects that a save writes where the command says that it can, and nowhere else. It comes last, since it changes the
/// tree.
inline void expectSaves(const DoctorRun& doctor, const DoctorWorld& world) {
    const std::set<std::string> written = {"fine", "malformed", "missing"};
    const std::string state = doctor.stateOf("user-file-written");
    if (written.count(state) == 0) {
        return;
    }
    const bool isWriteable = doctor.isWriteable("user-file-written");
    // Nothing keeps a superuser from writing a file that is read-only to its owner.
    const bool isSuperuser = !isWriteable && state == "fine" &&
                             std::ofstream(fileOfText(doctor.resultOf("user-file-written")), std::ios::app).is_open();
    const std::string saved = answersIn(world, {"saved"}).at("saved");
    if (saved != "no settings" && !isSuperuser) {
        EXPECT_EQ(saved, yesOrNo(isWriteable));
    }
}

/// Expects that the command found what the library finds. Without an installation every search but the first of a
/// process finds something else, so each gets a process.
inline void expectAnswersOfTheLibrary(const DoctorRun& doctor, const DoctorWorld& world) {
    std::vector<std::string> questions = kSearches;
    questions.insert(questions.end(), {"user-file-unread", "sections", "common-library", "initialised"});
    Answers answers;
    if (!doctor.resultOf("root").empty()) {
        answers = answersIn(world, questions);
    } else {
        for (const std::string& question : questions) {
            answers.merge(answersIn(world, {question}));
        }
        EXPECT_EQ(doctor.text("standIn"), answersIn(world, {"stand-in"}).at("stand-in"));
    }
    for (const std::string& search : kSearches) {
        EXPECT_EQ(doctor.resultOf(search), answers.at(search)) << search;
    }
    EXPECT_EQ(yesOrNo(!doctor.resultOf("common-library").empty()), answers.at("common-library"));
    EXPECT_EQ(yesOrNo(doctor.document.root().member("initialised").isTrue()), answers.at("initialised"));
    EXPECT_EQ(doctor.document.root().member("hasInstallation").isTrue(), !doctor.resultOf("root").empty());
    expectTakenResults(doctor);
    expectStatesOfTheLibrary(doctor, answers);
    expectSizes(doctor);
    expectSaves(doctor, world);
}

}  // namespace zelutil::test

#endif
