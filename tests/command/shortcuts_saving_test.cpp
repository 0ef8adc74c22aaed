// The subcommands that change shortcuts or take them elsewhere: plan, export, import, roundtrip.
#include <gtest/gtest.h>

#include <sstream>
#include <tuple>

#include "command/shortcuts_world.h"

namespace {

using zelutil::test::ChildResult;
using zelutil::test::inJson;
using zelutil::test::kShortcutActions;
using zelutil::test::readTextFile;
using zelutil::test::ShortcutsWorld;
using zelutil::test::writeTextFile;

/// A world with a file that is handed over.
class FileWorld : public ShortcutsWorld {
public:
    explicit FileWorld(const std::string& actions = kShortcutActions) : ShortcutsWorld(actions) {
        // No save says that it has made it.
        std::filesystem::create_directories(userFile().parent_path());
    }

    std::filesystem::path file() const { return home() / "handed.over"; }
    std::string fileText() const { return file().u8string(); }

    ChildResult runWith(const std::string& subcommand, const std::string& text,
                        std::vector<std::string> options = {}) const {
        writeTextFile(file(), text);
        options.insert(options.begin(), {subcommand, fileText()});
        return run(options);
    }

    std::string userText() const { return std::filesystem::exists(userFile()) ? readTextFile(userFile()) : ""; }
    std::string saved() const { return "Saved in " + userFile().u8string() + "\n"; }
    std::string unchanged() const { return "Nothing changed in " + userFile().u8string() + "\n"; }
};

void expectDone(const ChildResult& result, const std::string& out, const std::string& err = "") {
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.out, out);
    EXPECT_EQ(result.err, err);
}

void expectNotDone(const ChildResult& result, int exitCode, const std::string& err) {
    EXPECT_EQ(result.exitCode, exitCode);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err, err);
}

// --- plan
// -------------------------------------------------------------------------------------------------------------

constexpr char kSwap[] = "# Rotate and move change places.\n2 = R\nucpedit rotate = M\n";
constexpr char kSwapSteps[] =
    "STEP  ID  CONTEXT  COMMAND  SHORTCUT\n"
    "1     2   ucpedit  move     take away\n"
    "2     3   ucpedit  rotate   M\n"
    "3     2   ucpedit  move     R\n"
    "3 edits, and no fewer do.\n";

TEST(PlanCommand, ShowsTheStepsAndWritesNothing) {
    const FileWorld world;
    expectDone(world.runWith("plan", kSwap), kSwapSteps);
    EXPECT_EQ(world.userText(), "");
    EXPECT_EQ(world.json({"plan", world.fileText()}),
              R"({"zelutil":{"format":1,"command":"plan"},"outcome":"possible","minimal":true,"edits":[)"
              R"({"id":2,"shortcut":""},{"id":3,"shortcut":"M"},{"id":2,"shortcut":"R"}],"menuFlags":[],"inTheWay":[],)"
              R"("sideEffects":[],"notRestored":[],"findings":[]})");
}

TEST(PlanCommand, AppliesTheStepsOnce) {
    const FileWorld world;
    expectDone(world.runWith("plan", kSwap, {"--apply"}), kSwapSteps +
                                                              std::string("21 panel move: M -> R\n"
                                                                          "2 ucpedit move: M -> R\n"
                                                                          "3 ucpedit rotate: R -> M\n") +
                                                              world.saved());
    const std::string text = world.userText();
    expectDone(world.runWith("plan", kSwap, {"--apply"}), "All is as wished for.\n" + world.unchanged());
    EXPECT_EQ(world.userText(), text);
    expectDone(world.run({"who", "R", "M", "--context", "ucpedit"}),
               "SHORTCUT  ID  COMMAND  WHY\n"
               "R         2   move     given by the user\n"
               "M         3   rotate   given by the user\n");
}

TEST(PlanCommand, LeavesAFileAloneThatSaysItAlready) {
    const FileWorld world;
    world.writeUserActions(R"( {"id": 2, "shortcut": "F7"} )");
    const std::string text = world.userText();
    expectDone(world.runWith("plan", "2 = F7\n", {"--apply"}), "All is as wished for.\n" + world.unchanged());
    EXPECT_EQ(world.userText(), text);
    std::filesystem::remove(world.file());
    ASSERT_EQ(world.run({"export", world.fileText()}).exitCode, 0);
    expectDone(world.run({"import", world.fileText()}), world.unchanged());
    EXPECT_EQ(world.userText(), text);
}

/// The second one is a child of the first, in the linked context.
TEST(PlanCommand, NamesAllWhoAreInTheWay) {
    const FileWorld world;
    expectNotDone(world.runWith("plan", "4 = Home\n", {"--apply"}), 1,
                  "warning: Action 4 (ucpedit, lock) cannot have \"Home\": action 1 (ucpedit, zoom fit) has it.\n"
                  "    Wish another shortcut for one of the two, or none.\n"
                  "warning: Action 4 (ucpedit, lock) cannot have \"Home\": action 11 (brisk3d, zoom fit), which "
                  "follows action 1, "
                  "has it.\n"
                  "    Wish another shortcut for one of the two, or none.\n"
                  "error: The wishes cannot be granted together.\n"
                  "    Change or take away one of those that the warnings name.\n");
    EXPECT_EQ(world.userText(), "");
    EXPECT_EQ(world.json({"plan", world.fileText()})
                  .find(R"({"zelutil":{"format":1,"command":"plan"},"outcome":"impossible","minimal":false,"edits":[],)"
                        R"("menuFlags":[],"inTheWay":[{"id":4,"shortcut":"Home","asked":4,"holder":1},)"
                        R"({"id":4,"shortcut":"Home","asked":4,"holder":11}],"sideEffects":[],"findings":[)"),
              0U);
}

/// Action 2 does not have F1: it is to have it, and so is 3.
TEST(PlanCommand, SaysThatAnotherWishIsInTheWay) {
    const FileWorld world;
    expectNotDone(world.runWith("plan", "3 = F1\n4 = F1\n"), 1,
                  "warning: Action 4 (ucpedit, lock) cannot have \"F1\": action 3 (ucpedit, rotate) is to have it by "
                  "another wish.\n"
                  "    Wish another shortcut for one of the two, or none.\n"
                  "error: The wishes cannot be granted together.\n"
                  "    Change or take away one of those that the warnings name.\n");
}

TEST(PlanCommand, SaysWhatWasMeantByAMisspeltName) {
    const FileWorld world;
    expectNotDone(
        world.runWith("plan", "ucpedit rotaet = F1\nucpedti lock = F2\npanel zoom = F3\nucpedit Rotate = F4\n"), 1,
        "error: In line 1: There is no action \"ucpedit rotaet\".\n    Did you mean ucpedit rotate?\n"
        "error: In line 2: There is no action \"ucpedti lock\".\n    Did you mean ucpedit lock?\n"
        "error: In line 3: There is no action \"panel zoom\".\n    \"zelutil shortcuts\" shows all.\n"
        "error: In line 4: There is no action \"ucpedit Rotate\".\n    Did you mean ucpedit rotate?\n"
        "note: Nothing was planned.\n");
}

TEST(PlanCommand, AListThatIsNotUnderstoodIsNotGrantedInPart) {
    const FileWorld world;
    expectNotDone(world.runWith("plan", "99 = F1\n21 = F1\n4 = F4\n4 = F5\nucpedit fly = F6\n", {"--apply"}), 1,
                  "error: In line 1: There is no action 99.\n    \"zelutil shortcuts\" shows all.\n"
                  "error: In line 2: Action 21 takes over what its parent, action 2, has. Wish it for that one.\n"
                  "error: In line 4: Action 4 has a wish before this one.\n"
                  "error: In line 5: There is no action \"ucpedit fly\".\n    \"zelutil shortcuts\" shows all.\n"
                  "note: Nothing was planned.\n");
    EXPECT_EQ(world.userText(), "");
    expectNotDone(world.runWith("plan", "{"), 3,
                  "zelutil: error: \"" + world.fileText() +
                      "\" is no wish list. It is no JSON.\n"
                      "    \"zelutil plan --help\" shows one.\n");
    expectNotDone(world.run({"plan", (world.home() / "none").u8string()}), 3,
                  "zelutil: error: The file \"" + (world.home() / "none").u8string() +
                      "\" could not be read.\n    See whether it is there, is a file and may be read.\n");
}

TEST(PlanCommand, NamesTheMenuFlagsToo) {
    const FileWorld world;
    constexpr char kFlags[] = R"({"actions":[{"id":4,"inMenu":true},{"id":1,"inMenu":true}]})";
    expectDone(world.runWith("plan", kFlags), "4 ucpedit lock: into the menu\n");
    EXPECT_EQ(world.userText(), "");
    EXPECT_EQ(world.json({"plan", world.fileText()}),
              R"({"zelutil":{"format":1,"command":"plan"},"outcome":"possible","minimal":true,"edits":[],)"
              R"("menuFlags":[{"id":4,"inMenu":true}],"inTheWay":[],"sideEffects":[],"notRestored":[],"findings":[]})");
    ASSERT_EQ(world.runWith("plan", kFlags, {"--apply"}).exitCode, 0);
    expectDone(world.runWith("plan", kFlags), "All is as wished for.\n");
}

TEST(PlanCommand, SaysWhoLosesAShortcutBesides) {
    const FileWorld world(R"({"actions":[{"id":1,"context":"c","command":"a","shortcut":"F1"},)"
                          R"({"id":2,"context":"c","command":"b","shortcut":"F1"}]})");
    const ChildResult result = world.runWith("plan", "2 = F2\n");
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_NE(result.err.find("warning: Action 1 (c, a) loses \"F1\", since another action that "
                              "shows it is given another one.\n    Wish this action another shortcut, too: "
                              "\"zelutil free\" lists some.\n"),
              std::string::npos)
        << result.err;
    const std::string json = world.json({"plan", world.fileText()});
    EXPECT_NE(json.find(R"("sideEffects":[{"id":1,"loses":["F1"],"gains":[]}],"notRestored":[)"), std::string::npos)
        << json;
    const std::string done = world.runWith("plan", "2 = F2\n", {"--apply"}).err;
    EXPECT_EQ(
        done.find("warning: Action 1 (c, a) has lost \"F1\", since another action that shows it was given another "
                  "one.\n"),
        0U)
        << done;
}

TEST(PlanCommand, NamesAKeyThatIsShownInAnotherSpelling) {
    const FileWorld world;
    const ChildResult result = world.runWith("plan", "4 = o\n");
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.err, "note: \"o\" is another shortcut than \"O\".\n    Shortcuts are compared byte by byte.\n");
    EXPECT_EQ(world.runWith("plan", "4 = F5\n").err, "");
}

TEST(PlanCommand, SaysForWhomAWishIsToBeInstead) {
    const FileWorld world(R"({"actions":[{"id":1,"context":"c","command":"a"},
        {"id":2,"parent_id":1,"context":"d","command":"a"},{"id":3,"parent_id":2,"context":"e","command":"a"},
        {"id":5,"parent_id":9,"context":"d","command":"b"},{"id":6,"parent_id":7,"context":"d","command":"c"},
        {"id":7,"parent_id":6,"context":"d","command":"d"}]})");
    expectNotDone(
        world.runWith("plan", "2 = F1\n3 = F1\n5 = F1\n6 = F1\n"), 1,
        "error: In line 1: Action 2 takes over what its parent, action 1, has. Wish it for that one.\n"
        "error: In line 2: Action 3 takes over what its parent, action 2, has. Wish it for the topmost one, "
        "action 1.\n"
        "error: In line 3: Action 5 takes over what its parent, action 9, has. No shipped text defines action "
        "9, so nobody can be given one for it.\n"
        "error: In line 4: Action 6 takes over what its parent, action 7, has. Its parents go round in a "
        "circle, so nobody can be given one for it.\n"
        "note: Nothing was planned.\n");
}

TEST(PlanCommand, TellsTheFirstOfManyFaults) {
    const FileWorld world;
    std::string list;
    for (int id = 101; id <= 130; ++id) {
        list += std::to_string(id) + " = F1\n";
    }
    const ChildResult result = world.runWith("plan", list);
    EXPECT_NE(result.err.find("error: In line 20: There is no action 120.\n    \"zelutil shortcuts\" shows all.\n"
                              "note: There are 10 more of that kind.\n"
                              "note: Nothing was planned.\n"),
              std::string::npos)
        << result.err;
    const std::string json = world.json({"plan", world.fileText()});
    EXPECT_NE(json.find(R"({"place":30,"action":0,"why":"There is no action 130."}])"), std::string::npos) << json;
}

// --- export and import
// ------------------------------------------------------------------------------------------------

constexpr char kProfile[] = R"({
    "zelutilProfile": 1,
    "actions": [
        {
            "id": 1,
            "context": "ucpedit",
            "command": "zoom fit",
            "name": "Fit",
            "shortcut": "F1"
        },
        {
            "id": 4,
            "context": "ucpedit",
            "command": "lock",
            "name": "Lock",
            "inMenu": true
        }
    ]
}
)";

TEST(Profiles, HoldWhatTheUserChanged) {
    const FileWorld world;
    world.writeUserActions(R"({"id":1,"shortcut":"F1"},{"id":4,"rmb":true},{"id":3,"shortcut":"R"})");
    expectDone(world.run({"export", world.fileText()}), "Written to " + world.fileText() + "\nActions in it: 2\n");
    EXPECT_EQ(readTextFile(world.file()), kProfile);
    EXPECT_EQ(world.json({"export", world.fileText()}), R"({"zelutil":{"format":1,"command":"export"},"file":")" +
                                                            inJson(world.file()) +
                                                            R"(","actions":[1,4],"skipped":[],"findings":[]})");
}

/// A user's file that is no JSON would make a profile that has nothing.
TEST(Profiles, AreNotWrittenWhereTheUsersFileIsNotRead) {
    const FileWorld world;
    writeTextFile(world.file(), kProfile);
    world.writeUser("{\"meta\":[");
    const ChildResult result = world.run({"export", world.fileText()});
    EXPECT_EQ(result.exitCode, 3);
    EXPECT_EQ(result.out, "");
    EXPECT_NE(result.err.find("zelutil: error: The user's file was not read, so \"" + world.fileText() +
                              "\" is not written.\n    \"zelutil doctor\" says what is wrong with the user's file.\n"),
              std::string::npos)
        << result.err;
    EXPECT_EQ(readTextFile(world.file()), kProfile);
}

/// Nobody knows there what the user changed.
TEST(Profiles, AreNotWrittenWhereTheUsersFileCannotBeLookedFor) {
    const FileWorld world;
    const zelutil::test::EnvironmentChanges nowhere{{"HOMEPATH", "\\a?b"}};
    const ChildResult result = world.run({"export", world.fileText()}, nowhere);
    EXPECT_EQ(result.exitCode, 3);
    EXPECT_FALSE(std::filesystem::exists(world.file()));
    EXPECT_EQ(world.run({"reset", "--shortcuts", "--all"}, nowhere).exitCode, 3);
    EXPECT_NE(world.run({"shortcuts"}, nowhere).err.find("The user's file could not be looked for"), std::string::npos);
}

/// The entry is odd, and what it does is in the profile.
TEST(Profiles, HoldWhatAnOddEntryDoes) {
    const FileWorld world;
    world.writeUserActions(R"({"id":1,"rmb":"yes"},{"id":3,"shortcut":7})");
    const ChildResult result = world.run({"export", world.fileText()});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.out, "Written to " + world.fileText() + "\nActions in it: 2\n");
    EXPECT_EQ(result.err,
              "warning: The entry for action 1 has a menu flag that is neither true nor false and counts as false.\n"
              "    Correct the entry if the profile is to have something else than what it counts as.\n"
              "warning: The entry for action 3 has a shortcut that is no text and counts as none.\n"
              "    Correct the entry if the profile is to have something else than what it counts as.\n");
    EXPECT_NE(world.json({"export", world.fileText()}).find(R"("actions":[1,3],"skipped":[],)"), std::string::npos);
}

TEST(Profiles, SayWhichEntriesTheyLack) {
    const FileWorld world;
    world.writeUserActions(R"({"id":1,"shortcut":"F1"},{"id":4,"shortcut":"R"},{"shortcut":"F2"},{"id":3,"rmb":true})");
    const ChildResult result = world.run({"export", world.fileText()});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.out, "Written to " + world.fileText() + "\nActions in it: 1\n");
    EXPECT_EQ(
        result.err,
        "warning: Not in the profile: Action 4 did not get the shortcut \"R\": action 3 has it.\n"
        "    \"zelutil roundtrip\" says more.\n"
        "warning: Not in the profile: Element 3 of the list of the changed actions has no id; it and all after it "
        "are not read.\n"
        "    \"zelutil roundtrip\" says more.\n");
    const std::string json = world.json({"export", world.fileText()});
    EXPECT_NE(json.find(R"("actions":[1],"skipped":[{"action":4,"holder":3,"why":"Action 4 did not get the shortcut )"
                        R"(\"R\": action 3 has it."},{"action":0,"holder":0,"why":"Element 3 of)"),
              std::string::npos)
        << json;
}

/// Both actions are shipped with F1, and the first has it. The user gives it to the second.
TEST(Profiles, HoldWhoHasAShortcutThatIsShippedTwice) {
    const FileWorld world(R"({"actions":[{"id":1,"context":"c","command":"a","shortcut":"F1"},)"
                          R"({"id":2,"context":"c","command":"b","shortcut":"F1"}]})");
    world.writeUserActions(R"({"id":2,"shortcut":""},{"id":2,"shortcut":"F1"})");
    EXPECT_EQ(world.run({"who", "F1", "--context", "c"}).out.find("F1        2   b"), 27U);
    expectDone(world.run({"export", world.fileText()}), "Written to " + world.fileText() + "\nActions in it: 1\n");
    std::filesystem::remove(world.userFile());
    EXPECT_EQ(world.run({"who", "F1", "--context", "c"}).out.find("F1        1   a"), 27U);
    world.run({"import", world.fileText()});
    EXPECT_EQ(world.run({"who", "F1", "--context", "c"}).out.find("F1        2   b"), 27U);
}

TEST(Profiles, AreNotWrittenOverAnotherFile) {
    const FileWorld world;
    writeTextFile(world.file(), "my poem");
    expectNotDone(world.run({"export", world.fileText()}), 3,
                  "zelutil: error: \"" + world.fileText() +
                      "\" is there and is no profile, so it stays as it is.\n"
                      "    Name another file, or take it away.\n");
    EXPECT_EQ(readTextFile(world.file()), "my poem");
}

TEST(Profiles, AreNotWrittenInThePlaceOfTheUsersFileOrWithoutIt) {
    const FileWorld world;
    const std::string user = world.userFile().u8string();
    expectNotDone(world.run({"export", user}), 3,
                  "zelutil: error: \"" + user +
                      "\" is where preferences are kept, so nothing else is written there.\n    Name another file.\n");
    EXPECT_FALSE(std::filesystem::exists(world.userFile()));
    world.writeUser("[]");
    EXPECT_EQ(world.run({"export", world.fileText()}).exitCode, 3);
    EXPECT_FALSE(std::filesystem::exists(world.file()));
}

TEST(Profiles, BringTheSameToAnotherHomeOnce) {
    const FileWorld world;
    expectDone(world.runWith("import", kProfile),
               "11 brisk3d zoom fit: Home -> F1\n"
               "1 ucpedit zoom fit: Home -> F1\n"
               "4 ucpedit lock: into the menu\n" +
                   world.saved());
    const std::string text = world.userText();
    expectDone(world.runWith("import", kProfile), world.unchanged());
    EXPECT_EQ(world.userText(), text);
    expectDone(world.run({"export", world.fileText()}), "Written to " + world.fileText() + "\nActions in it: 2\n");
    EXPECT_EQ(readTextFile(world.file()), kProfile);
}

TEST(Profiles, AndPlansThatCannotBeSavedSayWhy) {
    for (const auto& [subcommand, text, options] :
         {std::tuple<const char*, const char*, std::vector<std::string>>("import", kProfile, {}),
          {"plan", kSwap, {"--apply"}}}) {
        const FileWorld world;
        std::filesystem::remove_all(world.home() / "pcbenv");
        writeTextFile(world.home() / "pcbenv", "in the way");
        const ChildResult result = world.runWith(subcommand, text, options);
        EXPECT_EQ(result.exitCode, 3) << result.out;
        EXPECT_NE(result.err.find("zelutil: error: Nothing was saved. The file \"" + world.userFile().u8string() +
                                  "\" cannot be written, because \"" +
                                  (world.home().path() / "pcbenv").make_preferred().u8string() +
                                  "\" is no directory.\n    Remove it or give it another name.\n"),
                  std::string::npos)
            << result.err;
    }
}

TEST(Profiles, FindActionsByIdAndElseByContextAndCommandAndSayWhatIsSkipped) {
    const FileWorld world;
    const ChildResult result = world.runWith("import", R"({"zelutilProfile":1,"actions":[
        {"id":3,"context":"brisk3d","command":"orbit","shortcut":"F3"},
        {"id":77,"context":"x","command":"y","shortcut":"F4"},
        {"id":4,"context":"ucpedit","command":"lock","shortcut":"R","inMenu":true},
        {"id":21,"context":"panel","command":"move","shortcut":"F5"},
        {"id":2,"context":"x","command":"y","shortcut":"F6"},
        {"id":22}]})");
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.out, "12 brisk3d orbit: O -> F3\n4 ucpedit lock: into the menu\n" + world.saved());
    EXPECT_EQ(result.err,
              "warning: Element 2 was skipped: There is no action \"x y\".\n"
              "    \"zelutil shortcuts\" shows all.\n"
              "warning: Element 3 was skipped: Action 4 (ucpedit, lock) cannot have \"R\": action 3 (ucpedit, rotate) "
              "has it.\n"
              "warning: Element 4 was skipped: Action 21 takes over what its parent, action 2, has. Wish it for that "
              "one.\n"
              "warning: Element 5 was skipped: Action 2 is \"ucpedit move\" here, and not \"x y\".\n"
              "    \"zelutil shortcuts\" shows all.\n"
              "warning: Element 6 was skipped: It has neither a \"shortcut\" nor \"inMenu\".\n");
}

TEST(Profiles, WriteJson) {
    const FileWorld world;
    writeTextFile(world.file(), R"({"zelutilProfile":1,"actions":[{"id":4,"shortcut":"R","inMenu":true}]})");
    EXPECT_EQ(world.json({"import", world.fileText()}),
              R"({"zelutil":{"format":1,"command":"import"},"changes":[{"id":4,"context":"ucpedit","command":"lock",)"
              R"("shortcutBefore":"","shortcut":"","inMenuBefore":false,"inMenu":true}],"settings":[],)"
              R"("save":{"status":"saved","file":")" +
                  inJson(world.userFile()) +
                  R"("},"skipped":[{"place":1,"action":4,"why":"Action 4 (ucpedit, lock) cannot have \"R\": )"
                  R"(action 3 (ucpedit, rotate) has it."}],)"
                  R"("inTheWay":[{"id":4,"shortcut":"R","asked":4,"holder":3}],"sideEffects":[],"findings":[)"
                  R"({"severity":"warning","text":"Element 1 was skipped: Action 4 (ucpedit, lock) cannot have )"
                  R"(\"R\": action 3 (ucpedit, rotate) has it."}]})");
}

TEST(Profiles, OfAnotherFormAreNotImported) {
    const FileWorld world;
    expectNotDone(world.runWith("import", R"({"zelutilProfile":2,"actions":[{"id":4,"shortcut":"F4"}]})"), 3,
                  "zelutil: error: \"" + world.fileText() +
                      "\" could not be imported. It is a profile of form 2, and "
                      "this command reads form 1.\n    \"zelutil export\" writes profiles.\n");
    EXPECT_EQ(world.userText(), "");
}

// --- roundtrip
// --------------------------------------------------------------------------------------------------------

constexpr char kAllComesBack[] = "A restart brings back all shortcuts and menu flags.\n";

TEST(RoundTripCommand, SaysThatAllComesBack) {
    const FileWorld world;
    expectDone(world.run({"roundtrip"}), kAllComesBack);
    world.writeUserActions(R"({"id":1,"shortcut":"F1"},{"id":4,"rmb":true})");
    const std::string text = world.userText();
    expectDone(world.run({"roundtrip"}), kAllComesBack);
    EXPECT_EQ(world.userText(), text);
}

TEST(RoundTripCommand, SaysThatTheFileWasNotReadAndNotThatAllComesBack) {
    const FileWorld world;
    world.writeUser("{");
    const ChildResult result = world.run({"roundtrip"});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.out.find("Nothing is known of what a restart brings back: the user's file is not read.\n"), 0U)
        << result.out;
    EXPECT_EQ(result.out.find(kAllComesBack), std::string::npos) << result.out;
    EXPECT_NE(world.json({"roundtrip"}).find(R"("userFileRead":false)"), std::string::npos);
}

/// A host that has saved a swap by the old calls has lost it.
TEST(RoundTripCommand, NamesWhatWasRefusedAndTheCureThatBringsItBack) {
    const FileWorld world;
    world.writeUserActions(R"({"id":2,"shortcut":"R"},{"id":3,"shortcut":"M"})");
    const ChildResult result = world.run({"roundtrip"});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.out,
              "The user's file asks for what its actions did not get. \"zelutil plan --apply\" of a file with\n"
              "these lines gives it:\n"
              "  2 = R\n"
              "  3 = M\n"
              "warning: Action 2 did not get the shortcut \"R\": action 3 has it.\n"
              "warning: Action 3 did not get the shortcut \"M\": action 2 has it.\n");
    ASSERT_EQ(world.runWith("plan", "2 = R\n3 = M\n", {"--apply"}).exitCode, 0);
    const ChildResult cured = world.run({"roundtrip"});
    EXPECT_EQ(cured.exitCode, 0);
    EXPECT_EQ(cured.out.find(kAllComesBack), 0U) << cured.out;
    // The old calls would lose the swap again, and with it what the child of 2 has.
    for (const char* const label : {"2 (ucpedit, move)", "3 (ucpedit, rotate)", "21 (panel, move)"}) {
        EXPECT_NE(cured.out.find(std::string("loses something of action ") + label), std::string::npos) << cured.out;
    }
}

TEST(RoundTripCommand, AnObjectOutsideAnArrayIsNotReadAndCanBeHad) {
    const FileWorld world;
    world.writeUser(R"({"meta":[{"header":"Keys","attribute":"keys","overriddensettings":)"
                    R"({"actions":[{"id":3,"shortcut":"F7"}]}}]})");
    const ChildResult result = world.run({"roundtrip"});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_NE(result.out.find("  3 = F7\n"), std::string::npos) << result.out;
    EXPECT_NE(result.out.find("not in the form that is read"), std::string::npos) << result.out;
}

/// Returns the wish list that the output shows.
std::string listIn(const std::string& out) {
    constexpr char kBefore[] = "these lines gives it:\n";
    std::istringstream lines(out.substr(out.find(kBefore) + sizeof kBefore - 1));
    std::string list;
    for (std::string line; std::getline(lines, line) && line.substr(0, 2) == "  ";) {
        list += line.substr(2) + '\n';
    }
    return list;
}

/// Returns two sections of the actions, of which only the first is read.
std::string twoSections(const std::string& first, const std::string& entriesOfSecond) {
    constexpr char kBegin[] = R"({"header":"Keys","attribute":"keys","overriddensettings":)";
    return R"({"meta":[)" + (kBegin + first) + "}," + kBegin + R"([{"actions":[)" + entriesOfSecond + "]}]}]}";
}

TEST(RoundTripCommand, ASecondSectionIsNotReadAndCanBeHad) {
    for (const char* const first : {"[]", "{}", R"([{"actions":[]}])", R"([{"actions":[{"id":4,"shortcut":"F6"}]}])"}) {
        SCOPED_TRACE(first);
        const FileWorld world;
        world.writeUser(twoSections(first, R"({"id":3,"shortcut":"F7"},{"id":2,"rmb":true})"));
        const ChildResult result = world.run({"roundtrip"});
        EXPECT_EQ(result.exitCode, 1);
        EXPECT_NE(result.out.find("warning: Something under \"overriddensettings\" of the section keys has no effect, "
                                  "because only the first is read.\n"),
                  std::string::npos)
            << result.out;
        world.runWith("plan", listIn(result.out), {"--apply"});
        EXPECT_EQ(world.run({"roundtrip"}).out.find(kAllComesBack), 0U);
        const std::string changed = world.run({"shortcuts", "--changed"}).out;
        EXPECT_NE(changed.find("ucpedit  3   rotate   F7"), std::string::npos) << changed;
        EXPECT_NE(changed.find("put into the menu by the user"), std::string::npos) << changed;
    }
}

TEST(RoundTripCommand, OthersTellASecondSectionToo) {
    const FileWorld world;
    world.writeUser(twoSections("[]", R"({"id":3,"shortcut":"F7"})"));
    constexpr char kWhy[] =
        "Something under \"overriddensettings\" of the section keys has no effect, because only the first is read.\n";
    for (const char* const context : {"ucpedit", "panel"}) {
        const ChildResult conflicts = world.run({"conflicts", "--context", context});
        EXPECT_EQ(conflicts.exitCode, 1);
        EXPECT_NE(conflicts.out.find(std::string("warning: ") + kWhy), std::string::npos) << conflicts.out;
    }
    const ChildResult exported = world.run({"export", world.fileText()});
    EXPECT_EQ(exported.exitCode, 1);
    EXPECT_NE(exported.err.find(std::string("warning: Not in the profile: ") + kWhy), std::string::npos)
        << exported.err;
}

/// The list is a profile, since a line has no place for a menu flag.
TEST(RoundTripCommand, TheCureHasMenuFlagsAndWhatStandsBehindAnElementWithoutAnId) {
    const FileWorld world;
    world.writeUserActions(
        R"({"id":3,"shortcut":"F7"},{"shortcut":"F8"},{"id":4,"rmb":true},{"id":2,"shortcut":"F9"})");
    const ChildResult result = world.run({"roundtrip"});
    EXPECT_EQ(result.exitCode, 1);
    const std::string list = listIn(result.out);
    const ChildResult cure = world.runWith("plan", list, {"--apply"});
    EXPECT_NE(cure.out.find(world.saved()), std::string::npos) << list << cure.err;
    EXPECT_EQ(
        world.run({"shortcuts", "--changed", "--context", "ucpedit"}).out,
        "CONTEXT  ID  COMMAND  SHORTCUT  SHIPPED  MENU  WHY\n"
        "ucpedit  2   move     F9        M              given by the user\n"
        "ucpedit  3   rotate   F7        R              given by the user\n"
        "ucpedit  4   lock                        yes   shipped without a shortcut; put into the menu by the user\n");
}

TEST(RoundTripCommand, TheCureHasEntriesInOtherWrappings) {
    const FileWorld world;
    for (const char* const entries :
         {R"([{"actions":[{"id":3,"shortcut":"F7"}]},{"actions":[{"id":4,"shortcut":"F8"}]}])",
          R"([[{"actions":[{"id":3,"shortcut":"F7"},{"id":4,"shortcut":"F8"}]}]])",
          R"([{"id":3,"shortcut":"F7"},{"id":4,"shortcut":"F8"}])"}) {
        world.writeUser(R"({"meta":[{"header":"Keys","attribute":"keys","overriddensettings":)" + std::string(entries) +
                        "}]}");
        EXPECT_EQ(listIn(world.run({"roundtrip"}).out), "3 = F7\n4 = F8\n") << entries;
    }
}

/// Action 2 shows F1, as it is shipped, and action 1 holds it.
TEST(RoundTripCommand, AShortcutThatIsOnlyShownIsNotGranted) {
    const FileWorld world(R"({"actions":[{"id":1,"context":"c","command":"a","shortcut":"F1"},)"
                          R"({"id":2,"context":"c","command":"b","shortcut":"F1"}]})");
    world.writeUserActions(R"({"id":2,"shortcut":"F1"})");
    EXPECT_EQ(listIn(world.run({"roundtrip"}).out), "2 = F1\n");
}

/// Action 12 has O. Action 11 would not keep it, since it follows action 1.
TEST(RoundTripCommand, SendsFromAChildToItsParent) {
    const FileWorld world;
    world.writeUserActions(R"({"id":11,"shortcut":"O"},{"id":11,"rmb":false})");
    const ChildResult result = world.run({"roundtrip"});
    EXPECT_EQ(result.exitCode, 1);
    constexpr char kParent[] = "    Write the entry for its parent, action 1 (ucpedit, zoom fit).\n";
    EXPECT_EQ(result.out,
              std::string("warning: Action 11 did not get the shortcut \"O\": action 12 has it.\n") + kParent +
                  "warning: The menu flag that action 11 is given has no effect, because it follows its parent, action "
                  "1.\n" +
                  kParent);
    EXPECT_NE(
        world.json({"roundtrip"}).find(R"("cure":"Write the entry for its parent, action 1 (ucpedit, zoom fit).")"),
        std::string::npos);
}

TEST(RoundTripCommand, WritesJson) {
    const FileWorld world;
    world.writeUserActions(R"({"id":4,"shortcut":"R"})");
    EXPECT_EQ(world.json({"roundtrip"}),
              R"({"zelutil":{"format":1,"command":"roundtrip"},"withoutEffect":[{"action":4,"holder":3,"refused":true,)"
              R"("text":"Action 4 did not get the shortcut \"R\": action 3 has it.","cure":""}],)"
              R"("wishes":[{"id":4,"shortcut":"R"}],"menuFlags":[],"edits":[],)"
              R"("inTheWay":[{"id":4,"shortcut":"R","asked":4,"holder":3}],"notRestored":[],"userFileRead":true,)"
              R"("lostByOldCalls":[],"text":"[{\"actions\":[]}]","findings":[{"severity":"warning",)"
              R"("text":"Action 4 did not get the shortcut \"R\": action 3 has it."},{"severity":"warning",)"
              R"("text":"Action 4 (ucpedit, lock) cannot have \"R\": action 3 (ucpedit, rotate) has it.",)"
              R"("advice":"Wish another shortcut for one of the two, or none."}]})");
}

}  // namespace
