// The doctor's word on the sections of the user's file beside what a save makes of them.
#include <gtest/gtest.h>

#include <initializer_list>
#include <iterator>
#include <random>
#include <set>

#include "command/doctor_world.h"

namespace zelutil::test {
namespace {

namespace fs = std::filesystem;

/// Two sections with settings, one that groups others and holds a third, one of the actions and one of a sub-manager
/// that the library does not have.
constexpr char kManySections[] = R"({"meta":[
{"header":"S","attribute":"s","tclCommand":"t","defaultsettings":[{"name":"value","value":"1"},{"name":"other","value":"1"}],
 "children":[{"header":"I","attribute":"i","tclCommand":"t","defaultsettings":[{"name":"size","value":"1"}]}]},
{"header":"G","attribute":"g","children":[
 {"header":"B","attribute":"b","tclCommand":"t","defaultsettings":[{"name":"zoom","value":"1"}]}]},
{"header":"K","attribute":"keys","submanagerId":100,"tclCommand":"t","defaultsettings":{"actions":[
 {"id":1,"context":"c","command":"a","shortcut":"F1"},{"id":2,"context":"c","command":"b"}]}},
{"header":"L","attribute":"l","submanagerId":102,"tclCommand":"t","defaultsettings":[]}]})";

struct UserFileWorld : DoctorWorld {
    UserFileWorld() { writeTextFile(defaults(), kManySections); }

    void write(const std::string& sections) const { writeTextFile(userFile(), "{\"meta\":[" + sections + "]}"); }

    ChildResult set(const std::string& value) const {
        return run({ZELUTIL_TEST_COMMAND, {"set", "s::value=" + value}, environment, here});
    }

    bool hasKeptCopy() const { return fs::exists(userFile().string() + ".bad"); }
};

std::string sectionWith(const std::string& attribute, const std::string& overridden) {
    return R"({"header":"H","attribute":")" + attribute + R"(","overriddensettings":)" + overridden + "}";
}

/// Returns the kinds of all that is more than a note.
std::set<std::string> faultsOf(const DoctorRun& doctor) {
    std::set<std::string> kinds;
    for (const NamedSymptom& symptom : doctor.symptoms()) {
        if (!symptom.isNote) {
            kinds.insert(symptom.kind);
        }
    }
    return kinds;
}

TEST(DoctorOnUserFiles, ASecondSectionOfASubManagerIsToldAlsoBehindAnEmptyOne) {
    constexpr char kMine[] = R"([{"actions":[{"id":2,"shortcut":"F2"}]}])";
    for (const char* const first : {"[]", "{}", R"([{"actions":[]}])", R"([{"actions":[{"id":1,"shortcut":""}]}])"}) {
        SCOPED_TRACE(first);
        const UserFileWorld world;
        world.write(sectionWith("keys", first) + "," + sectionWith("keys", kMine));
        const DoctorRun doctor(world);
        EXPECT_EQ(doctor.result.exitCode, 1);
        EXPECT_EQ(faultsOf(doctor), (std::set<std::string>{"left-out", "section-twice"}));
        EXPECT_NE(
            doctor.findings().find("what stands under \"overriddensettings\" of the section keys "
                                   "([{\"actions\":[{\"id\":2,\"shortcut\":\"F2\"}]}]), because only the first is "
                                   "read."),
            std::string::npos)
            << doctor.findings();
        EXPECT_EQ(world.set("2").exitCode, 1);
        EXPECT_TRUE(world.hasKeptCopy());
    }
}

TEST(DoctorOnUserFiles, ASecondSectionThatSaysTheSameIsNotLeftOut) {
    const UserFileWorld world;
    world.write(sectionWith("l", "[5]") + "," + sectionWith("l", "[5]"));
    EXPECT_EQ(faultsOf(DoctorRun(world)), std::set<std::string>{"section-twice"});
    EXPECT_EQ(world.set("2").exitCode, 0);
    EXPECT_FALSE(world.hasKeptCopy());
}

/// The value of a section inside two others lies four levels deeper than that of one at the top.
TEST(DoctorOnUserFiles, AValueThatNestsTooDeepForItsSectionIsLeftOut) {
    const std::string deep = std::string(1018, '[') + std::string(1018, ']');
    const UserFileWorld world;
    writeTextFile(world.defaults(), R"({"meta":[
{"header":"S","attribute":"s","tclCommand":"t","defaultsettings":[{"name":"value","value":"1"}]},
{"header":"G","attribute":"g","children":[{"header":"H","attribute":"h","children":[
 {"header":"L","attribute":"l","submanagerId":102,"tclCommand":"t","defaultsettings":[]}]}]}]})");
    world.write(sectionWith("g::h::l", deep));
    const DoctorRun doctor(world);
    EXPECT_EQ(faultsOf(doctor), std::set<std::string>{"left-out"});
    EXPECT_NE(doctor.findings().find("what would make the file too long or nest it too deeply"), std::string::npos)
        << doctor.findings();
    EXPECT_EQ(world.set("2").exitCode, 1);
    EXPECT_TRUE(world.hasKeptCopy());
}

TEST(DoctorOnUserFiles, WhatSetsNothingMakesNoFaultWhenItIsSaved) {
    for (const char* const entries : {R"([{"":"e"}])", "[5]", R"(["x"])", R"([{"other":false}])", R"({"other":"2"})",
                                      R"([{"other":"2"},{"other":null},[{"other":"3"}]])"}) {
        SCOPED_TRACE(entries);
        const UserFileWorld world;
        world.write(sectionWith("s", entries));
        EXPECT_EQ(DoctorRun(world).result.exitCode, 0);
        EXPECT_EQ(world.set("2").exitCode, 0);
        const DoctorRun doctor(world);
        EXPECT_EQ(doctor.result.exitCode, 0) << doctor.findings() << readTextFile(world.userFile());
    }
}

/// Writes random sections of a user's file, with mistakes in many of them.
class RandomSections {
public:
    explicit RandomSections(unsigned seed) : random_(seed) {}

    std::string sections() {
        std::string text = section();
        for (std::size_t more = below(4); more > 0; --more) {
            text += "," + section();
        }
        return below(8) == 0 ? text + "," + pick({"5", "\"x\"", "[]", "{}"}) : text;
    }

private:
    std::size_t below(std::size_t bound) { return random_() % bound; }

    std::string pick(std::initializer_list<const char*> texts) { return *(texts.begin() + below(texts.size())); }

    std::string entry() {
        return pick({R"({"value":"2"})", R"({"other":"3"})", R"({"size":"4"})", R"({"s::i::size":"5"})",
                     R"({"zoom":"6"})", R"({"none":"7"})", R"({"other":false})", "{}", "5", "\"x\"", "[]",
                     R"({"":"e"})"});
    }

    std::string entries() {
        std::string text;
        for (std::size_t more = below(3); more > 0; --more) {
            text += entry() + ",";
        }
        return pick({"", "", "", "wrong"}) == "wrong" ? R"({"other":"8"})" : "[" + text + entry() + "]";
    }

    std::string action() {
        return pick({R"({"id":1,"shortcut":"F3"})", R"({"id":2,"shortcut":"F4"})", R"({"id":2,"shortcut":"F1"})",
                     R"({"id":1,"rmb":true})", R"({"id":9,"shortcut":"F5"})", R"({"shortcut":"F6"})",
                     R"({"id":2,"note":1})", "\"x\""});
    }

    std::string actions() {
        const std::string list = R"({"actions":[)" + action() + "," + action() + "]}";
        const std::string others[] = {"[]", "{}", "\"x\"", R"([{"actions":[]}])", list, "[" + list + ",{}]"};
        return below(2) == 0 ? "[" + list + "]" : others[below(std::size(others))];
    }

    std::string section() {
        const std::string attribute = pick({"s", "s", "s::i", "g", "g::b", "keys", "keys", "keys", "l", "old"});
        const std::string overridden = attribute == "keys" ? actions()
                                       : attribute == "l"  ? pick({"[]", "[5]", "[6]", "7"})
                                                           : entries();
        return sectionWith(attribute, overridden);
    }

    std::mt19937 random_;
};

constexpr unsigned kUserFiles = 40;

/// A save keeps a copy of just those files of which the doctor says that it leaves something out, and makes no fault.
TEST(DoctorOnUserFiles, SavesKeepACopyOfThoseOfWhichTheDoctorWarns) {
    unsigned kept = 0;
    for (unsigned seed = 0; seed < kUserFiles; ++seed) {
        const UserFileWorld world;
        world.write(RandomSections(seed).sections());
        SCOPED_TRACE(readTextFile(world.userFile()));
        const std::set<std::string> before = faultsOf(DoctorRun(world));
        const bool isTold = before.count("left-out") != 0 || before.count("no-effect") != 0;
        world.set("saved");
        EXPECT_EQ(world.hasKeptCopy(), isTold);
        std::set<std::string> after = faultsOf(DoctorRun(world));
        EXPECT_EQ(after.erase("kept-copy"), isTold ? 1U : 0U);
        for (const std::string& kind : after) {
            EXPECT_TRUE(kind == "section-twice" && before.count(kind) != 0) << kind << readTextFile(world.userFile());
        }
        kept += isTold ? 1 : 0;
    }
    EXPECT_GT(kept, kUserFiles / 5);
    EXPECT_LT(kept, kUserFiles * 4 / 5);
}

}  // namespace
}  // namespace zelutil::test
