// The subcommands that change shortcuts or take them elsewhere: plan, export, import, roundtrip.
#include <gtest/gtest.h>

#include "command/shortcuts_world.h"

namespace {

using zelutil::test::ChildResult;
using zelutil::test::inJson;
using zelutil::test::readTextFile;
using zelutil::test::ShortcutsWorld;
using zelutil::test::writeTextFile;

/// A world with a file that is handed over.
class FileWorld : public ShortcutsWorld {
public:
    using ShortcutsWorld::ShortcutsWorld;

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
    std::string unchanged() const { return "Nothing to do in " + userFile().u8string() + "\n"; }
};

void expectDone(const ChildResult& result, const std::string& out) {
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.out, out);
    EXPECT_EQ(result.err, "");
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
    EXPECT_EQ(
        world.json({"plan", world.fileText()}),
        R"({"zelutil":{"format":1,"command":"plan"},"outcome":"possible","minimal":true,"edits":[)"
        R"({"id":2,"shortcut":""},{"id":3,"shortcut":"M"},{"id":2,"shortcut":"R"}],"inTheWay":[],"findings":[]})");
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

/// The second one is a child of the first, in the linked context.
TEST(PlanCommand, NamesAllWhoAreInTheWay) {
    const FileWorld world;
    expectNotDone(world.runWith("plan", "4 = Home\n", {"--apply"}), 1,
                  "warning: Action 4 (ucpedit, lock) cannot have \"Home\": action 1 (ucpedit, zoom fit) has it.\n"
                  "    Wish another shortcut for one of the two, or none.\n"
                  "warning: Action 4 (ucpedit, lock) cannot have \"Home\": action 11 (brisk3d, zoom fit) has it.\n"
                  "    Wish another shortcut for one of the two, or none.\n"
                  "error: The wishes cannot be granted together.\n");
    EXPECT_EQ(world.userText(), "");
    EXPECT_EQ(world.json({"plan", world.fileText()})
                  .find(R"({"zelutil":{"format":1,"command":"plan"},"outcome":"impossible","minimal":false,"edits":[],)"
                        R"("inTheWay":[{"id":4,"shortcut":"Home","asked":4,"holder":1},)"
                        R"({"id":4,"shortcut":"Home","asked":4,"holder":11}],"findings":[)"),
              0U);
}

TEST(PlanCommand, AListThatIsNotUnderstoodIsNotGrantedInPart) {
    const FileWorld world;
    expectNotDone(world.runWith("plan", "99 = F1\n21 = F1\n4 = F4\n4 = F5\nucpedit fly = F6\n", {"--apply"}), 1,
                  "error: In line 1: There is no action 99.\n"
                  "error: In line 2: Action 21 takes over what its parent, action 2, has. Wish it for that one.\n"
                  "error: In line 4: Action 4 has a wish before this one.\n"
                  "error: In line 5: There is no action \"ucpedit fly\".\n"
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
                                                            R"(","actions":[1,4],"findings":[]})");
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
              "warning: Element 3 was skipped: Action 4 (ucpedit, lock) cannot have \"R\": action 3 (ucpedit, rotate) "
              "has it.\n"
              "warning: Element 4 was skipped: Action 21 takes over what its parent, action 2, has. Wish it for that "
              "one.\n"
              "warning: Element 5 was skipped: Action 2 is \"ucpedit move\" here, and not \"x y\".\n"
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
                  R"("inTheWay":[{"id":4,"shortcut":"R","asked":4,"holder":3}],"findings":[)"
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

/// A host that has saved a swap by the old calls has lost it.
TEST(RoundTripCommand, NamesWhatWasRefusedAndTheCureThatBringsItBack) {
    const FileWorld world;
    world.writeUserActions(R"({"id":2,"shortcut":"R"},{"id":3,"shortcut":"M"})");
    const ChildResult result = world.run({"roundtrip"});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.out,
              "The user's file asks for shortcuts that their actions did not get. \"zelutil plan --apply\" of a\n"
              "file with these lines gives them:\n"
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

TEST(RoundTripCommand, WritesJson) {
    const FileWorld world;
    world.writeUserActions(R"({"id":4,"shortcut":"R"})");
    EXPECT_EQ(world.json({"roundtrip"}),
              R"({"zelutil":{"format":1,"command":"roundtrip"},"withoutEffect":[{"action":4,"holder":3,"refused":true,)"
              R"("text":"Action 4 did not get the shortcut \"R\": action 3 has it."}],)"
              R"("wishes":[{"id":4,"shortcut":"R"}],"edits":[],)"
              R"("inTheWay":[{"id":4,"shortcut":"R","asked":4,"holder":3}],"notRestored":[],"lostByOldCalls":[],)"
              R"("text":"[{\"actions\":[]}]","findings":[{"severity":"warning",)"
              R"("text":"Action 4 did not get the shortcut \"R\": action 3 has it."},{"severity":"warning",)"
              R"("text":"Action 4 (ucpedit, lock) cannot have \"R\": action 3 (ucpedit, rotate) has it.",)"
              R"("advice":"Wish another shortcut for one of the two, or none."}]})");
}

}  // namespace
