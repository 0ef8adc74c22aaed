// zelutil sheet, run as a process.
#include <gtest/gtest.h>

#include "command/command_world.h"

namespace {

using zelutil::test::ChildResult;
using zelutil::test::CommandWorld;
using zelutil::test::readTextFile;
using zelutil::test::writeTextFile;

/// An action with a child of another context, one without a shortcut, and one that has the key of another.
constexpr char kSheetDefaults[] = R"({"meta":[
{"header":"Shortcuts","attribute":"shortcuts","tclCommand":"t","submanagerId":100,"defaultsettings":{"actions":[
  {"id":1,"name":"Move","context":"board","command":"edit move","shortcut":"M"},
  {"id":2,"name":"","parent_id":1,"context":"3d","command":"turn move"},
  {"id":3,"name":"Text","context":"board","command":"draw text"},
  {"id":4,"name":"Zoom, in","context":"board","command":"zoom","shortcut":"F2"},
  {"id":5,"context":"board","command":"quiet","shortcut":"F3"}]}}
]})";

/// Gives the first action another shortcut, and takes that of the fourth away.
constexpr char kSheetUser[] =
    R"({"meta":[{"header":"Shortcuts","attribute":"shortcuts","submanagerId":100,"overriddensettings":[)"
    R"({"actions":[{"id":1,"shortcut":"Shift+M"},{"id":4,"shortcut":""}]}]}]})";

constexpr char kBoardInMarkdown[] =
    "\n## board\n\n"
    "| Shortcut | Action | Command | Remark |\n|---|---|---|---|\n"
    "| Shift+M | Move | edit move | changed, was M |\n"
    "|  | Zoom, in | zoom | changed, was F2 |\n"
    "| F3 | quiet | quiet |  |\n";

constexpr char kAllInCsv[] =
    "context,shortcut,action,command,id,shipped,changed,remark\r\n"
    "3d,Shift+M,Move,turn move,2,M,yes,\"changed, was M\"\r\n"
    "board,Shift+M,Move,edit move,1,M,yes,\"changed, was M\"\r\n"
    "board,,\"Zoom, in\",zoom,4,F2,yes,\"changed, was F2\"\r\n"
    "board,F3,quiet,quiet,5,F3,no,\r\n";

class SheetCommand : public testing::Test {
protected:
    SheetCommand() {
        writeTextFile(world_.defaultsFile(), kSheetDefaults);
        world_.writeUser(kSheetUser);
    }

    std::string textOf(const std::string& name) const { return readTextFile(world_.home().path() / name); }

    CommandWorld world_;
};

TEST_F(SheetCommand, PrintsMarkdownWhereNothingElseIsAskedFor) {
    const ChildResult result = world_.run({"sheet", "--context", "board"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.out, std::string("# Keyboard shortcuts\n") + kBoardInMarkdown);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(world_.run({"sheet", "--csv"}).out, kAllInCsv);
    EXPECT_EQ(world_.run({"sheet", "--html"}).out.substr(0, 39), "<!DOCTYPE html>\n<html lang=\"en\">\n<head>");
}

TEST_F(SheetCommand, WritesAFileInTheFormOfItsEnding) {
    for (const char* const form : {"csv", "md", "html"}) {
        SCOPED_TRACE(form);
        // A blank in a name is nothing special for this file.
        const std::string name = std::string("my sheet.") + form;
        const ChildResult result = world_.run({"sheet", "-o", name});
        EXPECT_EQ(result.exitCode, 0);
        EXPECT_EQ(result.out, "Written to " + name + "\n");
        EXPECT_EQ(result.err, "");
        EXPECT_EQ(textOf(name), world_.run({"sheet", std::string("--") + form}).out);
    }
    EXPECT_EQ(textOf("my sheet.csv"), kAllInCsv);
    // An option goes before the ending.
    EXPECT_EQ(world_.run({"sheet", "--csv", "-o", "my sheet.html"}).exitCode, 0);
    EXPECT_EQ(textOf("my sheet.html"), kAllInCsv);
    std::size_t files = 0;
    for (const auto& entry : std::filesystem::directory_iterator(world_.home().path())) {
        files += entry.is_regular_file() ? 1 : 0;
    }
    EXPECT_EQ(files, 3U) << "Nothing else is left beside them.";
}

TEST_F(SheetCommand, TakesAnEndingInAnyCaseAndNoneThatSaysNoForm) {
    EXPECT_EQ(world_.run({"sheet", "-o", "SHEET.CSV"}).exitCode, 0);
    EXPECT_EQ(textOf("SHEET.CSV"), kAllInCsv);
    for (const char* const name : {"plain", "plain.txt", "./plain.md"}) {
        EXPECT_EQ(world_.run({"sheet", "-o", name}).exitCode, 0) << name;
        EXPECT_EQ(textOf(name), world_.run({"sheet", "--md"}).out) << name;
    }
    const ChildResult result = world_.run({"sheet", "-o", "sheet.pdf"});
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_EQ(
        result.err,
        "zelutil: error: The ending of \"sheet.pdf\" names no form: end it in .html, .md or .csv, or give --html, "
        "--md or --csv.\n    \"zelutil sheet --help\" says how it is called.\n");
    EXPECT_FALSE(std::filesystem::exists(world_.home().path() / "sheet.pdf"));
    EXPECT_EQ(world_.run({"sheet", "--html", "-o", "sheet.pdf"}).exitCode, 0);
}

TEST_F(SheetCommand, IsNotWrittenWherePreferencesAreKeptOrOverAWishList) {
    const ChildResult result = world_.run({"sheet", "--md", "-o", world_.userFile().u8string()});
    EXPECT_EQ(result.exitCode, 3);
    EXPECT_EQ(result.err.find("zelutil: error: \"" + world_.userFile().u8string() + "\" is where preferences are kept"),
              0U)
        << result.err;
    EXPECT_EQ(readTextFile(world_.userFile()), kSheetUser);
    writeTextFile(world_.home().path() / "wishes", "1 = Ctrl+K\n");
    EXPECT_EQ(world_.run({"sheet", "-o", "wishes"}).exitCode, 3);
    EXPECT_EQ(textOf("wishes"), "1 = Ctrl+K\n");
    // A sheet may take the place of a sheet of any form.
    for (const char* const form : {"--csv", "--md", "--html", "--csv"}) {
        EXPECT_EQ(world_.run({"sheet", form, "-o", "sheet"}).exitCode, 0) << form;
        EXPECT_EQ(textOf("sheet"), world_.run({"sheet", form}).out) << form;
    }
}

TEST_F(SheetCommand, WritesJson) {
    EXPECT_EQ(world_.json({"sheet", "--context", "3d"}),
              R"({"zelutil":{"format":1,"command":"sheet"},"contexts":[{"context":"3d","shortcuts":[{"id":2,)"
              R"("name":"Move","command":"turn move","shortcut":"Shift+M","shipped":"M","changed":true,"runs":true,)"
              R"("remark":"changed, was M"}]}],"findings":[]})");
    EXPECT_NE(world_.json({"sheet", "-o", "s.md"}).find(R"("file":"s.md","findings":[]})"), std::string::npos);
}

TEST_F(SheetCommand, SaysWhyItCannotBeMade) {
    const ChildResult unknown = world_.run({"sheet", "--context", "bord", "-o", "s.md"});
    EXPECT_EQ(unknown.exitCode, 1);
    EXPECT_EQ(unknown.out, "");
    EXPECT_EQ(unknown.err, "error: There is no context \"bord\".\n    Did you mean board?\n");
    EXPECT_FALSE(std::filesystem::exists(world_.home().path() / "s.md"));

    const ChildResult forms = world_.run({"sheet", "--md", "--csv"});
    EXPECT_EQ(forms.exitCode, 2);
    EXPECT_EQ(forms.err,
              "zelutil: error: --html, --md and --csv are three forms, of which a sheet has one.\n"
              "    \"zelutil sheet --help\" says how it is called.\n");

    const ChildResult unspelt = world_.run({"sheet", "-o", "s?.md"});
    EXPECT_EQ(unspelt.exitCode, 3);
    EXPECT_EQ(
        unspelt.err.find("zelutil: error: \"s?.md\" could not be written, because the library has no spelling for "
                         "its path.\n"),
        0U)
        << unspelt.err;

    const ChildResult nowhere = world_.run({"sheet", "-o", "missing/s.md"});
    EXPECT_EQ(nowhere.exitCode, 3);
    EXPECT_EQ(nowhere.out, "");
    EXPECT_EQ(nowhere.err,
              "zelutil: error: \"missing/s.md\" could not be written.\n"
              "    See whether its directory is there, may be written and has room, and try again.\n");
}

}  // namespace
