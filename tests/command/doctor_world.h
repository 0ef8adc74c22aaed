#ifndef ZELUTIL_TESTS_COMMAND_DOCTOR_WORLD_H
#define ZELUTIL_TESTS_COMMAND_DOCTOR_WORLD_H

#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "json/document.h"
#include "support/child_process.h"
#include "support/installation_tree.h"
#include "support/temp_directory.h"
#include "support/text_file.h"

namespace zelutil::test {

inline constexpr char kShippedDirectory[] = "share/qtxsetup/canvas/resources/tessel/";

/// Two sections, one of them inside the other.
inline constexpr char kHealthyDefaults[] =
    R"({"meta":[{"header":"S","attribute":"s","tclCommand":"t","defaultsettings":[{"name":"value","value":"1"}],)"
    R"("children":[{"header":"I","attribute":"i","tclCommand":"t","defaultsettings":[]}]}]})";
inline constexpr char kHealthyUser[] =
    R"({"meta":[{"header":"S","attribute":"s","overriddensettings":[{"value":"2"}]}]})";
inline constexpr char kHealthyFacets[] = R"({"meta":[]})";

/// The files and variables of an installation and a user, all of them healthy. The PATH leads to the installation.
struct DoctorWorld {
    DoctorWorld() {
        makeInstallation(product);
        writeTextFile(defaults(), kHealthyDefaults);
        writeTextFile(facets(), kHealthyFacets);
        std::filesystem::create_directories(home);
        std::filesystem::create_directories(here);
        setHome(home);
        setPath({product / "tools/bin"});
    }

    std::filesystem::path defaults() const { return product / kShippedDirectory / "tessel_settings.cfg"; }
    std::filesystem::path facets() const { return product / kShippedDirectory / "facet_settings.cfg"; }
    std::filesystem::path userFile() const { return (home / "pcbenv/tessel/tessel_settings.cfg").make_preferred(); }

    void setHome(const std::filesystem::path& directory) {
        const std::string text = windowsText(directory);
        environment["HOMEDRIVE"] = text.substr(0, 2);
        environment["HOMEPATH"] = text.substr(2);
    }

    void setPath(const std::vector<std::filesystem::path>& directories) {
        std::vector<std::string> texts;
        for (const std::filesystem::path& directory : directories) {
            texts.push_back(systemText(directory));
        }
        environment["PATH"] = systemList(texts);
    }

    void name(const char* variable, const std::filesystem::path& path) { environment[variable] = systemText(path); }

    TempDirectory work;
    std::filesystem::path product = work / "product";
    std::filesystem::path other = work / "other";
    std::filesystem::path home = work / "home";
    std::filesystem::path here = work / "here";
    EnvironmentChanges environment = withoutProductVariables();
};

/// A symptom that the command names.
struct NamedSymptom {
    std::string kind;
    std::string step;
    bool isNote;
};

/// The command's outcome in a world.
class DoctorRun {
public:
    explicit DoctorRun(const DoctorWorld& world, const std::filesystem::path& program = ZELUTIL_TEST_COMMAND)
        : result(run({program, {"doctor", "--json"}, world.environment, world.here})), document(result.out) {
        EXPECT_TRUE(document.valid()) << result.out << result.err;
        EXPECT_EQ(result.err, "");
    }

    std::string text(const char* member) const { return textOf(document.root().member(member)); }

    /// Returns the step of that name.
    json::View stepOf(const std::string& step) const {
        for (const json::View found : document.root().member("steps").elements()) {
            if (textOf(found.member("name")) == step) {
                return found;
            }
        }
        ADD_FAILURE() << "no step " << step;
        return {};
    }

    std::string resultOf(const std::string& step) const { return textOf(stepOf(step).member("result")); }

    /// Returns what the candidate that was taken leads to; empty where none was.
    std::string takenOf(const std::string& step) const {
        std::string taken;
        for (const json::View candidate : stepOf(step).member("candidates").elements()) {
            if (textOf(candidate.member("verdict")) == "taken") {
                EXPECT_EQ(taken, "") << "two are taken";
                const std::string found = textOf(candidate.member("found"));
                taken = found.empty() ? textOf(candidate.member("seen")) : found;
            }
        }
        return taken;
    }

    /// Returns the state of the file of a step.
    std::string stateOf(const std::string& step) const { return textOf(fileOf(step).member("state")); }

    /// Returns its size in bytes.
    std::string sizeOf(const std::string& step) const { return textOf(fileOf(step).member("size")); }

    bool isWriteable(const std::string& step) const { return fileOf(step).member("writeable").isTrue(); }

    std::vector<NamedSymptom> symptoms() const {
        std::vector<NamedSymptom> all;
        for (const json::View symptom : document.root().member("symptoms").elements()) {
            all.push_back({textOf(symptom.member("kind")), textOf(symptom.member("step")),
                           textOf(symptom.member("severity")) == "note"});
        }
        return all;
    }

    /// Returns the texts of the findings, a line each.
    std::string findings() const {
        std::string lines;
        for (const json::View finding : document.root().member("findings").elements()) {
            lines += textOf(finding.member("text")) + '\n';
        }
        return lines;
    }

    ChildResult result;
    json::Document document;

private:
    json::View fileOf(const std::string& step) const { return stepOf(step).member("file"); }

    static std::string textOf(json::View value) { return std::string(value.text().value_or("")); }
};

/// Returns what the library itself returns for a search, in a fresh process.
inline std::map<std::string, std::string> answersIn(const DoctorWorld& world,
                                                    const std::vector<std::string>& searches) {
    const ChildResult result = run({ZELUTIL_TEST_DOCTOR_PROBE, searches, world.environment, world.here});
    EXPECT_EQ(result.exitCode, 0) << result.err;
    std::map<std::string, std::string> answers;
    for (const std::string& search : searches) {
        const std::size_t at = ("\n" + result.out).find("\n" + search + ' ');
        EXPECT_NE(at, std::string::npos) << search;
        const std::size_t from = at + search.size() + 1;
        answers[search] = result.out.substr(from, result.out.find('\n', from) - from);
    }
    return answers;
}

}  // namespace zelutil::test

#endif
