// The command names what is wrong in a tree, and says what the library does. Each run is a process of its own.
#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <set>
#include <string>
#include <vector>

#include "command/doctor_answers.h"
#include "command/doctor_world.h"
#include "support/common_library_stand_in.h"

namespace zelutil::test {
namespace {

namespace fs = std::filesystem;

// --- One planted fault ----------------------------------------------------------------------------------------------

struct Fault {
    const char* name;
    std::function<void(DoctorWorld&)> plant;
    const char* kind;
    std::set<std::string> steps;
    /// Something that a finding's text has.
    const char* said = "";
};

std::string nested(int levels) { return std::string(levels, '[') + std::string(levels, ']'); }

void makeLarge(const fs::path& file) {
    writeTextFile(file, "{}");
    fs::resize_file(file, (std::uint64_t{64} << 20) + 1);
}

void replaceByDirectory(const fs::path& file) {
    fs::remove(file);
    fs::create_directories(file);
}

void moveHome(DoctorWorld& world, const fs::path& home) {
    world.home = home;
    fs::create_directories(home);
    world.setHome(home);
}

void moveProduct(DoctorWorld& world, const fs::path& product) {
    fs::rename(world.product, product);
    world.product = product;
    world.setPath({product / "tools/bin"});
}

constexpr char kTwice[] = R"({"meta":[{"header":"S","attribute":"s","tclCommand":"t","defaultsettings":[],"children":)"
                          R"([{"header":"I","attribute":"i","tclCommand":"t","defaultsettings":[]}]},)"
                          R"({"header":"S","attribute":"s::i","tclCommand":"t","defaultsettings":[]}]})";
constexpr char kUserTwice[] = R"({"meta":[{"header":"S","attribute":"s","overriddensettings":[{"value":"2"}]},)"
                              R"({"header":"S","attribute":"s","overriddensettings":[{"value":"3"}]}]})";

/// Has the defaults ship an action of the section "k", and the user's section hold this of it.
void setUsersActions(DoctorWorld& world, const std::string& value) {
    writeTextFile(world.defaults(),
                  R"({"meta":[{"header":"K","attribute":"k","submanagerId":100,"tclCommand":"t","defaultsettings":)"
                  R"({"actions":[{"id":1,"parent_id":0,"name":"Redo","icon":"","context":"general","command":"redo",)"
                  R"("shortcut":"F1","rmb":false}]}},{"header":"S","attribute":"s","tclCommand":"t",)"
                  R"("defaultsettings":[{"name":"value","value":"1"}]}]})");
    writeTextFile(world.userFile(), R"({"meta":[{"header":"K","attribute":"k","overriddensettings":)" + value + "}]}");
}

const std::vector<Fault> kFaults = {
    // No installation.
    {"marker missing",
     [](auto& w) { fs::remove(w.product / "share/pcb/zelmgr/zeldict.l"); },
     "no-installation",
     {"root"}},
    {"library missing",
     [](auto& w) { fs::remove(w.product / "tools/bin" / libraryFileName()); },
     "no-installation",
     {"root"}},
    {"empty PATH", [](auto& w) { w.environment["PATH"] = ""; }, "no-installation", {"root"}},
    {"PATH without the product",
     [](auto& w) {
         w.setPath({w.here, w.home});
     },
     "no-installation",
     {"root"},
     "uses the directory tried last"},
    // Variables that name something else.
    {"hidden variable of another product",
     [](auto& w) {
         makeInstallation(w.other);
         w.name("QTXROOT", w.product);
         w.name("QTX_ROOT", w.other);
     },
     "other-product",
     {"root"},
     "The variable QTX_ROOT"},
    {"last variable of another product",
     [](auto& w) {
         makeInstallation(w.other);
         w.name("QTXROOT", w.product);
         w.name("QTXINSTDIR", w.other);
     },
     "other-product",
     {"root"},
     "The variable QTXINSTDIR"},
    {"variable in quotation marks",
     [](auto& w) { w.environment["QTXROOT"] = '"' + systemText(w.work / "nothing") + '"'; },
     "no-product",
     {"root"},
     "The variable QTXROOT has quotation marks in its value and names "},
    {"variable of another product without its library",
     [](auto& w) {
         makeInstallation(w.other);
         fs::remove(w.other / "tools/bin" / libraryFileName());
         w.name("QTXINSTDIR", w.other);
     },
     "no-product",
     {"root"},
     "which has no "},
    {"variable of nothing", [](auto& w) { w.name("QTXROOT", w.work / "nothing"); }, "no-product", {"root"}},
    {"variable that is empty",
     [](auto& w) { w.environment["QTXROOT"] = ""; },
     "no-product",
     {"root"},
     "The variable QTXROOT is set but empty, so that the current directory"},
    {"variable with a control character",
     [](auto& w) { w.environment["QTXROOT"] = systemText(w.product) + "\nx"; },
     "no-product",
     {"root"},
     "product\\nx\", which is no path, so that the current directory \""},
    {"variable of the tools", [](auto& w) { w.name("QTX_ROOT", w.product / "tools"); }, "no-product", {"root"}},
    {"hidden variable of nothing",
     [](auto& w) {
         w.name("QTXROOT", w.product);
         w.name("QTX_ROOT", w.home);
     },
     "no-product",
     {"root"},
     "The variable QTX_ROOT"},
    {"variable of a tree without the library",
     [](auto& w) {
         writeTextFile(w.other / "tools/bin/readme", "");
         w.name("QTXINSTDIR", w.other);
     },
     "no-product",
     {"root"}},
    {"named defaults of another product",
     [](auto& w) {
         makeInstallation(w.other);
         writeTextFile(w.other / "share/d.cfg", kHealthyDefaults);
         w.name("tessel_settings", w.other / "share/d.cfg");
     },
     "other-product",
     {"defaults"},
     "The variable tessel_settings"},
    {"site in another product",
     [](auto& w) {
         makeInstallation(w.other);
         fs::create_directories(w.other / "share/local");
         w.name("QTX_SITE", w.other / "share/local");
     },
     "other-product",
     {"site"}},
    {"site of nothing", [](auto& w) { w.name("QTX_SITE", w.work / "nothing"); }, "no-site", {"site"}},
    {"site in quotation marks",
     [](auto& w) { w.environment["QTX_SITE"] = '"' + systemText(w.work / "nothing") + '"'; },
     "no-site",
     {"site"},
     "The variable QTX_SITE has quotation marks in its value and names "},
    {"site that is a file",
     [](auto& w) {
         writeTextFile(w.work / "site", "");
         w.name("QTX_SITE", w.work / "site");
     },
     "no-site",
     {"site"}},
    // The shipped files.
    {"named defaults missing",
     [](auto& w) { w.name("tessel_settings", w.work / "none.cfg"); },
     "missing",
     {"defaults"}},
    {"named defaults empty",
     [](auto& w) { w.environment["tessel_settings"] = ""; },
     "missing",
     {"defaults"},
     "which the variable tessel_settings names"},
    {"named defaults a directory",
     [](auto& w) { w.name("tessel_settings", w.work.path()); },
     "is-directory",
     {"defaults"}},
    {"named defaults not spellable",
     [](auto& w) { w.environment["tessel_settings"] = "Z:\\a*b"; },
     "not-spellable",
     {"defaults"}},
    {"defaults missing", [](auto& w) { fs::remove(w.defaults()); }, "missing", {"defaults"}, "no settings"},
    {"facets missing", [](auto& w) { fs::remove(w.facets()); }, "missing", {"facets"}, "no facets"},
    {"defaults a directory", [](auto& w) { replaceByDirectory(w.defaults()); }, "is-directory", {"defaults"}},
    {"defaults without settings",
     [](auto& w) { writeTextFile(w.defaults(), R"({"meta":[{"header":"S","attribute":"s","tclCommand":"t"}]})"); },
     "no-settings",
     {"defaults"}},
    {"facets a directory", [](auto& w) { replaceByDirectory(w.facets()); }, "is-directory", {"facets"}},
    {"defaults with a comma too many",
     [](auto& w) { writeTextFile(w.defaults(), "{\"meta\":[],}"); },
     "not-json",
     {"defaults"}},
    {"defaults empty", [](auto& w) { writeTextFile(w.defaults(), ""); }, "not-json", {"defaults"}},
    {"defaults with a byte that is not UTF-8",
     [](auto& w) {
         writeTextFile(w.defaults(),
                       "{\"meta\":[{\"header\":\"H\xF6he\",\"attribute\":\"s\",\"tclCommand\":\"t\","
                       "\"defaultsettings\":[]}]}");
     },
     "not-utf8",
     {"defaults"},
     "The byte 0xF6"},
    {"facets with a byte that is not UTF-8",
     [](auto& w) { writeTextFile(w.facets(), "{\"meta\":[],\"\xE4\":1}"); },
     "not-utf8",
     {"facets"}},
    {"facets that are a list", [](auto& w) { writeTextFile(w.facets(), "[]"); }, "no-facets", {"facets"}},
    {"facets cut off", [](auto& w) { writeTextFile(w.facets(), "{\"meta\":["); }, "not-json", {"facets"}},
    {"defaults too deep",
     [](auto& w) { writeTextFile(w.defaults(), nested(1100)); },
     "not-json",
     {"defaults"},
     "1024 levels"},
    {"defaults too large", [](auto& w) { makeLarge(w.defaults()); }, "too-large", {"defaults"}},
    {"facets too large", [](auto& w) { makeLarge(w.facets()); }, "too-large", {"facets"}},
    {"two sections of the defaults",
     [](auto& w) { writeTextFile(w.defaults(), kTwice); },
     "section-twice",
     {"defaults"},
     "\"s::i\""},
    // The user's file.
    {"user's file without a comma",
     [](auto& w) { writeTextFile(w.userFile(), "{\"meta\":[]\n\"a\":1}"); },
     "not-json",
     {"user-file-read"}},
    {"user's file with an infinite number",
     [](auto& w) { writeTextFile(w.userFile(), "{\"a\":1e999}"); },
     "not-json",
     {"user-file-read"}},
    {"user's file too deep",
     [](auto& w) { writeTextFile(w.userFile(), nested(1025)); },
     "not-json",
     {"user-file-read"},
     "1024 levels"},
    {"user's file too large", [](auto& w) { makeLarge(w.userFile()); }, "too-large", {"user-file-read"}},
    {"user's file a directory",
     [](auto& w) { fs::create_directories(w.userFile()); },
     "is-directory",
     {"user-file-read"}},
    {"user's file read-only",
     [](auto& w) {
         writeTextFile(w.userFile(), kHealthyUser);
         const auto writing = fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write;
         fs::permissions(w.userFile(), writing, fs::perm_options::remove);
     },
     "read-only",
     {"user-file-written"}},
    {"user's file with a byte that is not UTF-8",
     [](auto& w) { writeTextFile(w.userFile(), "{\"meta\":[],\"\xE4\":1}"); },
     "not-utf8",
     {"user-file-read"}},
    {"user's file that is a list",
     [](auto& w) { writeTextFile(w.userFile(), "[]"); },
     "no-effect",
     {"user-file-read"},
     "nothing in it counts"},
    {"user's file that is a text",
     [](auto& w) { writeTextFile(w.userFile(), "\"x\""); },
     "no-effect",
     {"user-file-read"}},
    {"user's file with an object of sections",
     [](auto& w) { writeTextFile(w.userFile(), R"({"meta":{}})"); },
     "no-effect",
     {"user-file-read"}},
    {"user's file that is another one",
     [](auto& w) { writeTextFile(w.userFile(), R"({"hello":1})"); },
     "no-effect",
     {"user-file-read"}},
    {"user's file with an element that is no section",
     [](auto& w) {
         std::string text = kHealthyUser;
         writeTextFile(w.userFile(), text.insert(text.rfind(']'), ",5"));
     },
     "left-out",
     {"user-file-read"},
     "a save leaves out: what stands under \"meta\" (5)."},
    {"user's actions with a member that nobody reads",
     [](auto& w) { setUsersActions(w, R"([{"actions":[{"id":1,"shortcut":"F2","note":"mine"}]}])"); },
     "left-out",
     {"user-file-read"},
     "a save leaves out: parts of the list of changed actions."},
    {"user's file with a text behind a null character",
     [](auto& w) { writeTextFile(w.userFile(), kHealthyUser + std::string("\0lost", 5)); },
     "left-out",
     {"user-file-read"},
     "a save leaves out: what stands behind a null character (lost)."},
    {"user's actions in an object of their own",
     [](auto& w) { setUsersActions(w, R"({"actions":[{"id":1,"shortcut":"F2"}]})"); },
     "left-out",
     {"user-file-read"}},
    {"user's actions behind one without an id",
     [](auto& w) { setUsersActions(w, R"([{"actions":[{"shortcut":"F3"},{"id":1,"shortcut":"F2"}]}])"); },
     "left-out",
     {"user-file-read"}},
    {"two sections of the user",
     [](auto& w) { writeTextFile(w.userFile(), kUserTwice); },
     "section-twice",
     {"user-file-read"},
     "\"s\""},
    {"kept copy",
     [](auto& w) { writeTextFile(w.userFile().string() + ".bad", "{"); },
     "kept-copy",
     {"user-file-written"},
     "kept because a save could not read all of it or left something of it out"},
    {"second kept copy",
     [](auto& w) { writeTextFile(w.userFile().string() + ".bad.2", "{"); },
     "kept-copy",
     {"user-file-written"}},
    {"leftover",
     [](auto& w) { writeTextFile(w.userFile().string() + ".zelutil-00001a2b-00000007.tmp", "{"); },
     "leftover",
     {"user-file-written"}},
    {"environment a file", [](auto& w) { writeTextFile(w.home / "pcbenv", ""); }, "blocked", {"user-file-written"}},
    // Paths.
    {"blank in the home", [](auto& w) { moveHome(w, w.work / "two words"); }, "blank", {"user-file-read"}},
    {"blank in the product", [](auto& w) { moveProduct(w, w.work / "two words"); }, "blank", {"defaults", "facets"}},
    {"blank where a test saves",
     [](auto& w) {
         w.here = w.work / "two words";
         fs::create_directories(w.here);
         w.environment["regression_testing"] = "";
     },
     "blank",
     {"user-file-written"}},
    {"home with a name that is too long",
     [](auto& w) { *w.environment["HOMEPATH"] += '\\' + std::string(300, 'a'); },
     "name-too-long",
     {"user-file-read"},
     "can neither be read nor made, because the name \"aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa...\" in its path is "
     "too "
     "long."},
    {"home that is no path", [](auto& w) { w.environment["HOMEPATH"] = "\\a?b"; }, "not-spellable", {"environment"}},
    // The common library.
    {"common library without its search",
     [](auto& w) {
         const std::string directory = systemText(commonLibraryDirectory("without_search"));
         w.environment[loaderPathVariable()] = systemList({systemText(w.product / "tools/bin"), directory});
     },
     "common-library-lacks",
     {"common-library"},
     "wemSearch"},
};

TEST(Doctor, NamesEachPlantedFaultAndNothingElse) {
    ASSERT_GE(kFaults.size(), 40U);
    for (const Fault& fault : kFaults) {
        SCOPED_TRACE(fault.name);
        DoctorWorld world;
        fault.plant(world);
        const DoctorRun doctor(world);
        EXPECT_EQ(doctor.result.exitCode, 1);
        std::set<std::string> steps;
        for (const NamedSymptom& symptom : doctor.symptoms()) {
            if (!symptom.isNote) {
                EXPECT_EQ(symptom.kind, fault.kind) << doctor.findings();
                steps.insert(symptom.step);
            }
        }
        EXPECT_EQ(steps, fault.steps) << doctor.findings();
        EXPECT_NE(doctor.findings().find(fault.said), std::string::npos) << doctor.findings();
        expectAnswersOfTheLibrary(doctor, world);
    }
}

/// A path loses its quotation marks. Of one of Windows the whole is left; of another one the first separator, which
/// slides into the place of a quotation mark, tells no longer that the path begins at the root.
TEST(Doctor, SaysWhatAVariableInQuotationMarksNames) {
    DoctorWorld world;
    world.setPath({world.here});
    world.environment["QTXROOT"] = '"' + systemText(world.product) + '"';
    const DoctorRun doctor(world);
    expectAnswersOfTheLibrary(doctor, world);
    if (fs::path::preferred_separator != '/') {
        EXPECT_EQ(doctor.result.exitCode, 0) << doctor.findings();
        EXPECT_EQ(doctor.resultOf("root"), windowsText(world.product));
        return;
    }
    EXPECT_EQ(doctor.result.exitCode, 1);
    EXPECT_NE(doctor.findings().find("The variable QTXROOT has quotation marks in its value and names \"" +
                                     world.here.string() + world.product.string() + "\", which is no installation.\n"),
              std::string::npos)
        << doctor.findings();
}

/// Members that the library does not know are taken over.
TEST(Doctor, SaysWhatASaveMakesOfAFileWithoutASection) {
    for (const auto& [text, isKept] :
         {std::pair(R"({"a":1})", false), {R"({"a":1,"meta":{}})", true}, {"[]", true}, {"\"x\"", true}}) {
        SCOPED_TRACE(text);
        DoctorWorld world;
        writeTextFile(world.userFile(), text);
        const DoctorRun doctor(world);
        EXPECT_NE(doctor.findings().find("is JSON, but nothing in it counts, because it holds no section."),
                  std::string::npos)
            << doctor.findings();
        EXPECT_NE(doctor.result.out.find(isKept ? "or remove this one. A save writes it anew and keeps a copy of it.\""
                                                : "or remove this one. A save adds settings to what it holds, which "
                                                  "stays without an effect.\""),
                  std::string::npos)
            << doctor.result.out;
        const ChildResult saved = run({ZELUTIL_TEST_COMMAND, {"set", "s::value=3"}, world.environment, world.here});
        EXPECT_EQ(saved.exitCode, isKept ? 1 : 0) << saved.err;
        EXPECT_EQ(fs::exists(world.userFile().string() + ".bad"), isKept);
        const bool hasMember = readTextFile(world.userFile()).find("\"a\": 1") != std::string::npos;
        EXPECT_EQ(hasMember, std::string(text).find("\"a\"") != std::string::npos);
    }
}

// --- Homes ----------------------------------------------------------------------------------------------------------

/// Returns the texts of the only symptom, which is expected to be a note of that kind about the user's environment.
std::string noteOnTheHome(const DoctorWorld& world) {
    const DoctorRun doctor(world);
    EXPECT_EQ(doctor.result.exitCode, 0) << doctor.findings();
    const std::vector<NamedSymptom> symptoms = doctor.symptoms();
    if (symptoms.size() != 1) {
        ADD_FAILURE() << doctor.findings();
        return {};
    }
    EXPECT_EQ(symptoms[0].kind, "no-home");
    EXPECT_EQ(symptoms[0].step, "environment");
    EXPECT_TRUE(symptoms[0].isNote);
    return doctor.findings();
}

TEST(Doctor, NotesAHomeThatIsNotSetOrNotThere) {
    DoctorWorld unset;
    unset.environment["HOMEPATH"] = std::nullopt;
    unset.environment["HOMEDRIVE"] = std::nullopt;
    // Wine sets both anew.
    if (fs::path::preferred_separator == '/') {
        EXPECT_EQ(noteOnTheHome(unset),
                  "HOMEDRIVE and HOMEPATH are not set, so the user's files are looked for in the current directory.\n");
        unset.environment["HOMEDRIVE"] = "Z:";
        EXPECT_EQ(noteOnTheHome(unset),
                  "HOMEPATH is not set, so the user's files are looked for on the drive Z: itself.\n");
    }
    DoctorWorld missing;
    fs::remove_all(missing.home);
    EXPECT_EQ(noteOnTheHome(missing),
              "The user's home directory \"" + fs::path(missing.home).make_preferred().string() + "\" is not there.\n");
}

TEST(Doctor, SaysThatNoSaveMakesAHomeThatIsAFile) {
    DoctorWorld world;
    fs::remove_all(world.home);
    writeTextFile(world.home, "");
    const DoctorRun doctor(world);
    EXPECT_EQ(doctor.result.exitCode, 1);
    EXPECT_NE(doctor.findings().find("The user's home \"" + fs::path(world.home).make_preferred().string() +
                                     "\" is no directory.\n"),
              std::string::npos)
        << doctor.findings();
    EXPECT_EQ(doctor.result.out.find("a save makes it"), std::string::npos) << doctor.result.out;
    DoctorWorld missing;
    fs::remove_all(missing.home);
    EXPECT_NE(DoctorRun(missing).result.out.find("a save makes it"), std::string::npos);
}

TEST(Doctor, SaysWhichDriveIsThereOutsideWindows) {
    DoctorWorld world;
    world.environment["HOMEDRIVE"] = "C:";
    if (fs::path::preferred_separator != '/') {
        GTEST_SKIP() << "Windows has that drive.";
    }
    const DoctorRun doctor(world);
    EXPECT_EQ(doctor.result.exitCode, 1);
    EXPECT_NE(doctor.findings().find("because there is no drive C: on this system.\n"), std::string::npos)
        << doctor.findings();
    EXPECT_NE(doctor.result.out.find("The only drive is Z:, which is the root directory"), std::string::npos);
}

// --- Places ---------------------------------------------------------------------------------------------------------

struct PlaceRow {
    const char* text;
    int line;
    int column;
    const char* there;
};

constexpr PlaceRow kPlaces[] = {
    {"{\"meta\":[]\n\"a\":1}", 2, 1, "There stands: \"a\":1}"},
    {"{\"meta\": [\n  {\"header\": ?}\n]}", 2, 14, "There stands: ?}"},
    {"{\"meta\":[", 1, 10, "The text ends there."},
    {kUserTwice, 1, 0, "more than one section \"s\""},
    {"{\"meta\":[],\n\"\xE4\":1}", 2, 2, "The byte 0xE4 in it is no part of UTF-8."},
};

TEST(Doctor, SaysInWhichLineAndColumnAFileIsWrong) {
    for (const PlaceRow& row : kPlaces) {
        SCOPED_TRACE(row.text);
        DoctorWorld world;
        writeTextFile(world.userFile(), row.text);
        const DoctorRun doctor(world);
        const auto findings = doctor.document.root().member("findings").elements();
        ASSERT_FALSE(findings.empty());
        const json::View finding = *findings.begin();
        EXPECT_EQ(finding.member("file").text(), world.userFile().string());
        EXPECT_EQ(finding.member("line").integer(), row.line);
        // The second section begins behind the first one and its comma.
        const std::string text = row.text;
        const int column = row.column != 0 ? row.column : static_cast<int>(text.find(",{\"header\"")) + 2;
        EXPECT_EQ(finding.member("column").integer(), column);
        EXPECT_NE(doctor.findings().find(row.there), std::string::npos) << doctor.findings();
    }
}

// --- The command in its place ---------------------------------------------------------------------------------------

/// Copies a program and the modules that the compiler's runtime has beside it.
fs::path installedIn(const fs::path& directory, const fs::path& program) {
    fs::create_directories(directory);
    for (const fs::directory_entry& entry : fs::directory_iterator(program.parent_path())) {
        const std::string name = entry.path().filename().string();
        if (entry.path() == program || (entry.path().extension() == ".dll" && name.rfind("lib", 0) == 0)) {
            fs::copy(entry.path(), directory, fs::copy_options::overwrite_existing);
        }
    }
    return directory / program.filename();
}

TEST(Doctor, BesideTheLibraryFindsTheProductByItsOwnFile) {
    DoctorWorld world;
    world.setPath({world.here});
    const fs::path program = installedIn(world.product / "tools/bin", ZELUTIL_TEST_COMMAND);
    const DoctorRun doctor(world, program);
    EXPECT_EQ(doctor.result.exitCode, 0) << doctor.findings();
    EXPECT_EQ(doctor.resultOf("root"), windowsText(world.product));
    EXPECT_EQ(doctor.resultOf("defaults"), windowsText(world.defaults()));
}

TEST(Doctor, NamesAVariableOfAnotherProductThatDoesNotCount) {
    DoctorWorld world;
    makeInstallation(world.other);
    world.name("QTXROOT", world.other);
    const fs::path program = installedIn(world.product / "tools/bin", ZELUTIL_TEST_COMMAND);
    const DoctorRun doctor(world, program);
    EXPECT_EQ(doctor.result.exitCode, 1);
    EXPECT_EQ(doctor.resultOf("root"), windowsText(world.product));
    ASSERT_EQ(doctor.symptoms().size(), 1U);
    EXPECT_EQ(doctor.symptoms()[0].kind, "other-product");
}

// --- The text for people --------------------------------------------------------------------------------------------

TEST(Doctor, SaysForPeopleWhatWasTakenAndWhyTheRestWasNot) {
    DoctorWorld world;
    world.setPath({world.here, world.product / "tools/bin"});
    const ChildResult result = run({ZELUTIL_TEST_COMMAND, {"doctor"}, world.environment, world.here});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.err, "");
    const auto quoted = [](const fs::path& path) { return '"' + fs::path(path).make_preferred().string() + '"'; };
    const std::string programs = quoted(world.product / "tools/bin");
    for (const std::string& line : {
             "Installation: " + quoted(world.product),
             std::string("  - the tools directory of the common library: knows none"),
             std::string("  - the variable QTXROOT: not set"),
             "  - a directory of PATH " + quoted(world.here) + ": has no " + libraryFileName(),
             "  + a directory of PATH " + programs + ": taken, leads to " + quoted(world.product),
             "  - the variable HOMEDRIVE \"" + *world.environment["HOMEDRIVE"] + '"',
             "  + the installation " + quoted(world.defaults()) + ": taken",
             "    " + std::to_string(std::string(kHealthyDefaults).size()) + " bytes.",
             std::string("    It is not there."),
         }) {
        EXPECT_NE(('\n' + result.out).find('\n' + line + '\n'), std::string::npos) << line << '\n' << result.out;
    }
}

TEST(Doctor, SaysThatTheProgramsOfAVariableAreSearched) {
    DoctorWorld world;
    world.name("QTXROOT", world.product);
    const ChildResult result = run({ZELUTIL_TEST_COMMAND, {"doctor"}, world.environment, world.here});
    const std::string programs = '"' + (world.product / "tools/bin").make_preferred().string() + '"';
    EXPECT_NE(result.out.find("\n  - the variable QTXROOT, whose programs are in " + programs + '\n'),
              std::string::npos)
        << result.out;
    world.environment["QTXROOT"] = "";
    const std::string empty = run({ZELUTIL_TEST_COMMAND, {"doctor"}, world.environment, world.here}).out;
    const std::string current = '"' + std::filesystem::path(world.here).make_preferred().string();
    EXPECT_NE(
        empty.find("\n  - the variable QTXROOT, which is set but empty: the current directory's programs are in " +
                   current),
        std::string::npos)
        << empty;
    world.environment["QTXROOT"] = "a\rb";
    const std::string none = run({ZELUTIL_TEST_COMMAND, {"doctor"}, world.environment, world.here}).out;
    EXPECT_NE(none.find("\n  - the variable QTXROOT, whose value is no path: the current directory's programs are in " +
                        current),
              std::string::npos)
        << none;
}

}  // namespace
}  // namespace zelutil::test
