// The data of the report and its page.
#include <gtest/gtest.h>

#include "command/command_world.h"
#include "command/report/report_content.h"

namespace {

using zelutil::command::Finding;
using zelutil::command::Severity;
using zelutil::command::Symptom;
using zelutil::shortcuts::ShortcutRow;
using zelutil::test::ChildResult;
using zelutil::test::CommandWorld;
using zelutil::test::kCommandUser;
using zelutil::test::readTextFile;
using zelutil::test::writeTextFile;
namespace report = zelutil::command::report;

report::Setting gridSetting() {
    report::Setting setting;
    setting.info.fullName = "display::grid";
    setting.info.bareNames = {"grid"};
    setting.info.section = "display";
    setting.info.defaultValue = "0.5";
    setting.info.value = "</script>";
    setting.info.setByUser = true;
    setting.definedAt = zelutil::json::Position{40, 3, 5};
    setting.setAt = zelutil::json::Position{90, 7, 11};
    setting.notes = {"A \"note\"."};
    return setting;
}

ShortcutRow moveAction() {
    ShortcutRow row;
    row.action.id = 2;
    row.action.item.context = "board";
    row.action.item.command = "edit move";
    row.action.shortcut = "Shift+M";
    row.action.inMenu = true;
    row.shortcutWithoutUser = "M";
    row.changedByUser = true;
    row.why = "given by the user";
    return row;
}

report::Content smallContent() {
    report::Content content;
    content.defaultsFile = "/d";
    content.userFile = "/u";
    content.settings = {gridSetting()};
    content.strays = {{"no such", "1", {9, 2, 4}, "No setting has its name."}};
    content.sections = {"display", "shortcuts"};
    content.actions = {moveAction()};
    content.conflicts = {{"F1", "board", "Help 9", "runs 4 instead"}};
    content.diagnosis.symptoms = {{Symptom::Kind::Missing, "", Finding{Severity::Warning, "T.", "A.", std::nullopt}}};
    content.diagnosis.steps.push_back({"site", "Site directory", "", {}, std::nullopt});
    return content;
}

TEST(ReportJson, HasAllThatThePageShows) {
    EXPECT_EQ(jsonOf(smallContent()).value_or(""),
              R"({"files":{"defaults":{"path":"/d"},"user":{"path":"/u"}},)"
              R"("settings":[{"name":"display::grid","bare":["grid"],"section":"display","default":"0.5",)"
              R"("value":"</script>","user":true,"at":[3,5],"userAt":[7,11],"notes":["A \"note\"."]}],)"
              R"("strays":[{"name":"no such","value":"1","at":[2,4],"why":"No setting has its name."}],)"
              R"("sections":["display","shortcuts"],)"
              R"("actions":[{"id":2,"context":"board","name":"edit move","command":"edit move","shortcut":"Shift+M",)"
              R"("shortcutWithoutUser":"M","changedByUser":true,"inMenu":true,"menuChangedByUser":false,)"
              R"("why":"given by the user"}],)"
              R"("conflicts":[{"shortcut":"F1","context":"board","action":"Help 9","effect":"runs 4 instead"}],)"
              R"("steps":[{"title":"Site directory","result":"","candidates":[],"file":""}],)"
              R"("findings":[{"severity":"warning","text":"T.","advice":"A."}]})");
}

std::size_t countOf(const std::string& part, const std::string& text) {
    std::size_t count = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
        ++count;
    }
    return count;
}

/// Returns what the page's script reads.
std::string dataOf(const std::string& page) {
    const std::string begin = "<script type=\"application/json\" id=\"data\">";
    const std::size_t at = page.find(begin) + begin.size();
    return page.substr(at, page.find("</script>", at) - at);
}

TEST(ReportPage, HasTheDataWhereNoTextEndsIt) {
    const std::string hostile = "{\"a\":\"</script><!--\xE2\x80\xA8 {{script}} {{style}}\"}";
    const std::string page = report::pageOf(hostile);
    EXPECT_EQ(dataOf(page), "{\"a\":\"\\u003C/script\\u003E\\u003C!--\\u2028 {{script}} {{style}}\"}");
    EXPECT_EQ(countOf("{{", page), 2U) << "The data's own braces stay, and the page's marks are gone.";
    // Two scripts end: the data and the page's own.
    EXPECT_EQ(countOf("</script>", page), 2U);
    EXPECT_EQ(countOf("class Grid", page), 1U);
    EXPECT_EQ(countOf("prefers-color-scheme: dark", page), 1U);
    EXPECT_EQ(page.substr(page.size() - 26), "</script>\n</body>\n</html>\n");
}

TEST(ReportPage, NamesNothingElsewhere) {
    const std::string page = report::pageOf("{}");
    EXPECT_EQ(countOf("http:", page) + countOf("https:", page) + countOf("src=", page) + countOf("@import", page) +
                  countOf("url(", page) + countOf("<link", page),
              0U);
    EXPECT_EQ(countOf("default-src 'none'", page), 1U);
}

TEST(ReportCommand, WritesThePage) {
    const CommandWorld world;
    world.writeUser(kCommandUser);
    const ChildResult result = world.run({"report", "-o", "r.html"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.out, "Written to r.html\n");
    EXPECT_EQ(result.err, "");
    const std::string page = readTextFile(world.home().path() / "r.html");
    EXPECT_EQ(page.substr(0, 15), "<!DOCTYPE html>");
    const auto data = zelutil::test::readTwinJson(dataOf(page));
    ASSERT_TRUE(data);
    EXPECT_NE(compactText(*data).find(
                  R"("name":"display::grids::grid","bare":["grid"],"section":"display::grids",)"
                  R"("default":"0.5","value":"0.25","user":true,"at":[5,15],"userAt":[1,75],"notes":[]})"),
              std::string::npos)
        << compactText(*data);
    EXPECT_EQ(world.run({"report"}).out, page);
    EXPECT_EQ(world.json({"report", "-o", "r.html"}),
              R"({"zelutil":{"format":1,"command":"report"},"settings":5,"changedSettings":1,"actions":0,)"
              R"("conflicts":0,"symptoms":1,"file":"r.html","findings":[]})");
}

TEST(ReportCommand, IsNotWrittenOverAFileThatHoldsJson) {
    const CommandWorld world;
    const std::string defaults = readTextFile(world.defaultsFile());
    const ChildResult result = world.run({"report", "-o", world.defaultsFile().u8string()});
    EXPECT_EQ(result.exitCode, 3);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(readTextFile(world.defaultsFile()), defaults);
    // A page may be written over a page, whatever that begins with.
    const std::filesystem::path page = world.home().path() / "page.html";
    for (const char* const old : {"<html>", "{ no JSON", ""}) {
        writeTextFile(page, old);
        EXPECT_EQ(world.run({"report", "-o", page.u8string()}).exitCode, 0) << old;
        EXPECT_EQ(readTextFile(page).substr(0, 2), "<!") << old;
    }
}

TEST(ReportCommand, TellsOfSearchesWithoutAnInstallation) {
    const CommandWorld world;
    const ChildResult result = world.run({"report", "-o", "r.html"}, {{"QTXROOT", std::nullopt}, {"PATH", ""}});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.out, "Written to r.html\n");
    EXPECT_EQ(result.err, "");
    const std::string data = dataOf(readTextFile(world.home().path() / "r.html"));
    EXPECT_EQ(countOf(R"("settings":[],)", data), 1U);
    EXPECT_EQ(countOf(R"({"title":"Installation","result":"",)", data), 1U);
}

}  // namespace
