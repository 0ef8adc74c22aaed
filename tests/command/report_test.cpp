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
    content.isUserFileUnread = true;
    content.settings = {gridSetting()};
    content.strays = {{"no such", "1", zelutil::json::Position{9, 2, 4}, "No setting has its name.", "s"},
                      {"Action 7", "", std::nullopt, "It was refused.", ""}};
    content.sections = {"display", "shortcuts"};
    content.actions = {moveAction()};
    content.conflicts = {{"F1", "board", "Help 9", "runs 4 instead"}};
    content.diagnosis.symptoms = {{Symptom::Kind::Missing, "", Finding{Severity::Warning, "T.", "A.", std::nullopt}}};
    content.diagnosis.steps.push_back({"site", "Site directory", "", {}, std::nullopt});
    return content;
}

TEST(ReportJson, HasAllThatThePageShows) {
    EXPECT_EQ(jsonOf(smallContent()).value_or(""),
              R"({"files":{"defaults":{"path":"/d"},"user":{"path":"/u","unread":true}},)"
              R"("settings":[{"name":"display::grid","bare":["grid"],"section":"display","default":"0.5",)"
              R"("value":"</script>","user":true,"at":[3,5],"userAt":[7,11],"notes":["A \"note\"."]}],)"
              R"("strays":[{"name":"no such","value":"1","at":[2,4],"why":"No setting has its name."},)"
              R"({"name":"Action 7","value":"","why":"It was refused."}],)"
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

TEST(ReportCommand, IsNotWrittenWherePreferencesAreKept) {
    const CommandWorld world;
    const std::filesystem::path user = world.userFile();
    const std::filesystem::path facets = world.defaultsFile().parent_path() / "facet_settings.cfg";
    std::filesystem::path copy = user;
    copy += ".bad.2";
    const std::string damaged = std::string(kCommandUser, sizeof kCommandUser - 2);
    const auto expectKept = [&](const std::filesystem::path& file, const std::string& old) {
        writeTextFile(file, old);
        EXPECT_EQ(world.run({"report", "-o", file.u8string()}).exitCode, 3) << file << ' ' << old;
        EXPECT_EQ(readTextFile(file), old);
    };
    for (const std::string& old : {damaged, "// mine\n" + damaged, std::string("\xFF\xFE{\0", 4), std::string()}) {
        expectKept(user, old);
    }
    for (const auto& file : {copy, world.defaultsFile(), facets, world.home().path() / "tessel_settings.cfg"}) {
        expectKept(file, damaged);
    }
    std::filesystem::remove(user);
    EXPECT_EQ(world.run({"report", "-o", user.u8string()}).err,
              "zelutil: error: \"" + user.u8string() +
                  "\" is where preferences are kept, so nothing else is written there.\n    Name another file.\n");
    EXPECT_FALSE(std::filesystem::exists(user));
}

TEST(ReportCommand, IsNotWrittenOverTheDefaultsOfAnotherName) {
    const CommandWorld world;
    const std::filesystem::path defaults = world.home().path() / "defaults.html";
    writeTextFile(defaults, "");
    const ChildResult result =
        world.run({"report", "-o", "defaults.html"}, {{"tessel_settings", zelutil::test::systemText(defaults)}});
    EXPECT_EQ(result.exitCode, 3);
    EXPECT_EQ(readTextFile(defaults), "");
}

TEST(ReportCommand, IsWrittenOverAPageOfThisCommandOnly) {
    const CommandWorld world;
    const std::filesystem::path page = world.home().path() / "page.html";
    for (const char* const old : {"<html>", "{ no JSON", R"({"a":1})", "1 = Ctrl+K\n"}) {
        writeTextFile(page, old);
        const ChildResult result = world.run({"report", "-o", "page.html"});
        EXPECT_EQ(result.exitCode, 3) << old;
        EXPECT_EQ(result.err,
                  "zelutil: error: \"page.html\" is there and is no page or sheet of this command, so it stays as it "
                  "is.\n    Name another file, or take it away.\n");
        EXPECT_EQ(readTextFile(page), old);
    }
    writeTextFile(page, "");
    EXPECT_EQ(world.run({"report", "-o", "page.html"}).exitCode, 0);
    const std::string written = readTextFile(page);
    world.writeUser(kCommandUser);
    EXPECT_EQ(world.run({"report", "-o", "page.html"}).exitCode, 0);
    EXPECT_NE(readTextFile(page), written);
}

TEST(ReportCommand, TellsAUsersFileThatIsNotRead) {
    const CommandWorld world;
    world.writeUser("{");
    const ChildResult result = world.run({"report", "-o", "r.html"});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.out, "Written to r.html\n");
    EXPECT_NE(result.err.find("warning: Nothing of the user's file is in force. "), std::string::npos) << result.err;
    EXPECT_EQ(countOf("\"unread\":true", dataOf(readTextFile(world.home().path() / "r.html"))), 1U);
}

/// Returns the names of what sets nothing, in the order of the page.
std::string straysIn(const std::string& page) {
    const zelutil::json::Document data(dataOf(page));
    std::string names;
    for (const zelutil::json::View stray : data.root().member("strays").elements()) {
        const std::string position = compactText(stray.member("at")).value_or("");
        names += std::string(stray.member("name").text().value_or("")) + position + ';';
    }
    return names;
}

TEST(ReportCommand, ListsAllOfTheUsersFileThatSetsNothing) {
    const CommandWorld world;
    writeTextFile(
        world.defaultsFile(),
        R"({"meta":[{"header":"D","attribute":"d","tclCommand":"t","defaultsettings":[{"name":"a","value":""}]},)"
        R"({"header":"E","attribute":"e","tclCommand":"t","defaultsettings":[{"name":"b","value":""}]},)"
        R"({"header":"F","attribute":"f","tclCommand":"t","defaultsettings":[{"name":"g","value":""}]},)"
        R"({"header":"K","attribute":"k","submanagerId":100,"tclCommand":"t","defaultsettings":{"actions":[)"
        R"({"id":1,"context":"c","command":"x","shortcut":"F1"}]}}]})");
    world.writeUser(
        "{\"meta\":[{\"header\":\"D\",\"attribute\":\"d\",\"overriddensettings\":[\n"
        "{\"a\":\"1\"},{\"a\":\"2\"},{\"no\":\"3\"}]},\n"
        "{\"header\":\"N\",\"attribute\":\"nowhere\",\"overriddensettings\":[{\"c\":\"4\"}]},\n"
        "{\"header\":\"E\",\"attribute\":\"e\",\"overridensettings\":[{\"b\":\"4\"}]},\n"
        "{\"header\":\"F\",\"attribute\":\"f\",\"overriddensettings\":{\"g\":\"5\"}},\n"
        "{\"header\":\"K\",\"attribute\":\"k\",\"overriddensettings\":[{\"actions\":["
        "{\"id\":999,\"shortcut\":\"F2\"}]}]}]}");
    EXPECT_EQ(straysIn(world.run({"report"}).out),
              "a[2,2];no[2,22];c[3,60];overridensettings[4,31];b[4,53];g[5,53];Action 999;");
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
