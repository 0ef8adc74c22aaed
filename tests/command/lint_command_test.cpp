// `zelutil lint` as a shell calls it.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "command/lint/sarif.h"
#include "json/document.h"
#include "support/child_process.h"
#include "support/temp_directory.h"
#include "support/text_file.h"

namespace zelutil::test {
namespace {

constexpr char kDefaults[] = R"({"meta": [{"header": "A", "attribute": "a", "tclCommand": "t",
    "defaultsettings": [{"name": "grid", "value": "1"}]}]})";
constexpr char kUser[] =
    "{\"meta\": [{\"header\": \"\xC3\x84\", \"attribute\": \"a\", \"overriddensettings\":\n"
    "    [{\"\xC3\xA4\": \"1\", \"gird\": \"2\"}]}]}";

/// A directory with files, in which the command runs.
class LintCommand : public testing::Test {
protected:
    LintCommand() {
        write("defaults.cfg", kDefaults);
        write("user.cfg", kUser);
    }

    void write(const std::string& name, const std::string& text) const {
        writeTextFile(std::filesystem::path(directory_) / name, text);
    }

    ChildResult lint(std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), "lint");
        return run({ZELUTIL_TEST_COMMAND, std::move(arguments), withoutProductVariables(), directory_});
    }

private:
    TempDirectory work_;
    std::filesystem::path directory_ = work_ / "files";
};

TEST_F(LintCommand, AFileWithoutAFaultGivesNothing) {
    const ChildResult result = lint({"defaults.cfg"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err, "");
}

TEST_F(LintCommand, AFindingHasPlaceSeverityNumberAndHint) {
    for (const auto& arguments : {std::vector<std::string>{"user.cfg", "defaults.cfg"},
                                  std::vector<std::string>{"user.cfg", "--defaults", "defaults.cfg"}}) {
        const ChildResult result = lint(arguments);
        EXPECT_EQ(result.exitCode, 1);
        EXPECT_EQ(result.out,
                  "user.cfg:2:7: warning: ZU018: No setting has the name \"\xC3\xA4\".\n"
                  "user.cfg:2:17: warning: ZU018: No setting has the name \"gird\".\n"
                  "    Did you mean grid?\n");
    }
}

TEST_F(LintCommand, WithoutDefaultsAUsersFileIsCheckedByItsFormAndANoteSaysSo) {
    const ChildResult result = lint({"user.cfg"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.out,
              "user.cfg: note: Only the form of the file was checked. Without the defaults nobody knows whether its "
              "sections, settings and actions exist, which setting an entry means, and whether an action gets the "
              "shortcut that it is given.\n"
              "    Name them too: --defaults FILE.\n");
}

TEST_F(LintCommand, RulesCanBeChosen) {
    EXPECT_EQ(lint({"user.cfg", "defaults.cfg", "--rule", "ZU001"}).exitCode, 0);
    EXPECT_EQ(lint({"user.cfg", "defaults.cfg", "--rule", "ZU001", "--rule", "zu018"}).exitCode, 1);
    // That a file cannot be read is told in any case.
    write("bad.cfg", "{\"meta\": [],}");
    const ChildResult result = lint({"bad.cfg", "--rule", "ZU018"});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.out.find("bad.cfg:1:13: error: "), 0U) << result.out;
}

TEST_F(LintCommand, AnOptionTakesOneValueAndLeavesTheFilesBehindIt) {
    const ChildResult result = lint({"--rule", "ZU018", "user.cfg", "defaults.cfg"});
    EXPECT_EQ(result.exitCode, 1) << result.err;
    EXPECT_NE(result.out.find("user.cfg:2:7: "), std::string::npos) << result.out;
}

struct BadDefaults {
    const char* text;
    const char* said;
};

TEST_F(LintCommand, DefaultsThatAreNoneCanNotBeCheckedAgainst) {
    const BadDefaults rows[] = {
        {"{\"meta\": [],}", "The defaults \"bad.cfg\" are no JSON (line 1, column 13): "},
        {"", "The defaults \"bad.cfg\" are no JSON (line 1, column 1): "},
        {kUser, "The file \"bad.cfg\" holds no defaults, but user's preferences."},
        {R"({"meta": [{"header": "N", "facets": []}]})", "holds no defaults, but facets."},
        {R"({"a": 1})", "holds no defaults, but nothing that is read."},
    };
    for (const BadDefaults& row : rows) {
        write("bad.cfg", row.text);
        const ChildResult result = lint({"user.cfg", "--defaults", "bad.cfg"});
        EXPECT_EQ(result.exitCode, 3) << row.text;
        EXPECT_EQ(result.out, "");
        EXPECT_NE(result.err.find(row.said), std::string::npos) << result.err;
    }
    EXPECT_EQ(lint({"user.cfg", "--defaults", ""}).exitCode, 2);
}

TEST_F(LintCommand, EveryFileThatCannotBeReadIsToldAndTheOthersAreChecked) {
    const ChildResult result = lint({"a.cfg", "user.cfg", "defaults.cfg", "b.cfg"});
    EXPECT_EQ(result.exitCode, 3);
    EXPECT_NE(result.out.find("user.cfg:2:7: "), std::string::npos) << result.out;
    EXPECT_EQ(result.err,
              "zelutil: error: The file \"a.cfg\" could not be read. The file \"b.cfg\" could not be read.\n"
              "    See whether it is there, is a file and may be read.\n");
}

TEST_F(LintCommand, WrongUsageAndWhatCannotBeReadHaveExitCodesOfTheirOwn) {
    EXPECT_EQ(lint({}).exitCode, 2);
    EXPECT_EQ(lint({"defaults.cfg", "--rule", "ZU999"}).exitCode, 2);
    EXPECT_EQ(lint({"defaults.cfg", "--format", "xml"}).exitCode, 2);
    EXPECT_EQ(lint({"missing.cfg"}).exitCode, 3);
    EXPECT_EQ(lint({"."}).exitCode, 3);
    EXPECT_EQ(lint({"user.cfg", "--defaults", "missing.cfg"}).exitCode, 3);
}

TEST_F(LintCommand, TheJsonFormIsTheSameByBothOptions) {
    const ChildResult result = lint({"user.cfg", "defaults.cfg", "--format", "json"});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(lint({"user.cfg", "defaults.cfg", "--json"}).out, result.out);
    const json::Document document(result.out);
    const json::Elements files = document.root().member("files").elements();
    ASSERT_EQ(files.size(), 2U) << result.out;
    const json::Elements results = (*files.begin()).member("results").elements();
    ASSERT_EQ(results.size(), 2U);
    EXPECT_EQ((*results.begin()).member("rule").text(), "ZU018");
    EXPECT_EQ((*results.begin()).member("column").integer(), 7);
    EXPECT_EQ((*results.begin()).member("endColumn").integer(), 10);
}

TEST_F(LintCommand, SarifHasTheRulesAndAResultWithItsRegion) {
    const ChildResult result = lint({"user.cfg", "defaults.cfg", "--format", "sarif"});
    EXPECT_EQ(result.exitCode, 1);
    const json::Document document(result.out);
    EXPECT_EQ(document.root().member("version").text(), "2.1.0");
    ASSERT_EQ(document.root().member("runs").elements().size(), 1U) << result.out;
    const json::View sarif = *document.root().member("runs").elements().begin();
    EXPECT_EQ(sarif.member("tool").member("driver").member("rules").elements().size(), lint::kRuleCount);
    EXPECT_EQ(sarif.member("columnKind").text(), "unicodeCodePoints");
    ASSERT_EQ(sarif.member("results").elements().size(), 2U);
    const json::View first = *sarif.member("results").elements().begin();
    EXPECT_EQ(first.member("ruleId").text(), "ZU018");
    EXPECT_EQ(first.member("ruleIndex").integer(), 17);
    EXPECT_EQ(first.member("level").text(), "warning");
    const json::View location = (*first.member("locations").elements().begin()).member("physicalLocation");
    EXPECT_EQ(location.member("artifactLocation").member("uri").text(), "user.cfg");
    EXPECT_EQ(location.member("region").member("startLine").integer(), 2);
    EXPECT_EQ(location.member("region").member("startColumn").integer(), 7);
    EXPECT_EQ(location.member("region").member("endColumn").integer(), 10);
}

TEST_F(LintCommand, SarifDescribesEachRuleThreeTimes) {
    const ChildResult result = lint({"defaults.cfg", "--format", "sarif"});
    const json::Document document(result.out);
    const json::View sarif = *document.root().member("runs").elements().begin();
    const json::View rule = *sarif.member("tool").member("driver").member("rules").elements().begin();
    EXPECT_EQ(rule.member("id").text(), "ZU001");
    EXPECT_EQ(rule.member("shortDescription").member("text").text(), "The file is no JSON.");
    EXPECT_EQ(rule.member("fullDescription").member("text").text(), "The file is no JSON.");
    EXPECT_EQ(rule.member("help").member("text").text(),
              "The page docs/lint.md has a bad and a good example below ZU001.");
}

TEST_F(LintCommand, SarifSaysWhetherAllFilesWereChecked) {
    const auto invocationOf = [](const json::Document& document) {
        const json::View sarif = *document.root().member("runs").elements().begin();
        return *sarif.member("invocations").elements().begin();
    };
    const json::Document clean(lint({"defaults.cfg", "--format", "sarif"}).out);
    EXPECT_TRUE(invocationOf(clean).member("executionSuccessful").isTrue());
    EXPECT_FALSE(invocationOf(clean).member("toolExecutionNotifications"));

    for (const auto& arguments :
         {std::vector<std::string>{"missing.cfg", "defaults.cfg", "--format", "sarif"},
          std::vector<std::string>{"user.cfg", "--defaults", "missing.cfg", "--format", "sarif"}}) {
        const ChildResult result = lint(arguments);
        EXPECT_EQ(result.exitCode, 3);
        const json::Document incomplete(result.out);
        ASSERT_EQ(incomplete.root().member("runs").elements().size(), 1U) << result.out;
        EXPECT_FALSE(invocationOf(incomplete).member("executionSuccessful").isTrue());
        const json::View notifications = invocationOf(incomplete).member("toolExecutionNotifications");
        ASSERT_EQ(notifications.elements().size(), 1U) << result.out;
        const json::View notification = *notifications.elements().begin();
        EXPECT_EQ(notification.member("level").text(), "error");
        EXPECT_NE(notification.member("message").member("text").text().value_or("").find("missing.cfg"),
                  std::string_view::npos);
    }
}

TEST_F(LintCommand, TwoFormsAtOnceAreAWrongCall) {
    const ChildResult result = lint({"defaults.cfg", "--format", "sarif", "--json"});
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_NE((result.out + result.err).find("--json and --format sarif are two forms"), std::string::npos);
}

struct UriRow {
    const char* path;
    const char* posix;
    const char* windows;
};

constexpr UriRow kUris[] = {
    {"a dir/f.cfg", "a%20dir/f.cfg", "a%20dir/f.cfg"},
    {"/f.cfg", "file:///f.cfg", "/f.cfg"},
    {"x/\xC3\xA4#%", "x/%C3%A4%23%25", "x/%C3%A4%23%25"},
    // On POSIX a backslash and a colon are characters of a name.
    {"C:\\a\\f.cfg", "C%3A%5Ca%5Cf.cfg", "file:///C:/a/f.cfg"},
    {"C:/a b", "C%3A/a%20b", "file:///C:/a%20b"},
    {"a\\f.cfg", "a%5Cf.cfg", "a/f.cfg"},
    {"dir/a\\b", "dir/a%5Cb", "dir/a/b"},
    {"C:f.cfg", "C%3Af.cfg", "C%3Af.cfg"},
    // A server is the authority of its URI.
    {"\\\\server\\my share\\f.cfg", "%5C%5Cserver%5Cmy%20share%5Cf.cfg", "file://server/my%20share/f.cfg"},
    {"\\\\?\\C:\\f.cfg", "%5C%5C%3F%5CC%3A%5Cf.cfg", "file:///C:/f.cfg"},
    {"\\\\?\\UNC\\server\\f", "%5C%5C%3F%5CUNC%5Cserver%5Cf", "file://server/f"},
};

TEST(LintSarif, APathBecomesAReferenceOfAUri) {
    for (const UriRow& row : kUris) {
        EXPECT_EQ(lint::uriOf(row.path, lint::PathForm::Posix), row.posix) << row.path;
        EXPECT_EQ(lint::uriOf(row.path, lint::PathForm::Windows), row.windows) << row.path;
    }
}

TEST(LintSarif, SignsThatMeanSomethingInAMessageAreEscaped) {
    EXPECT_EQ(lint::messageText("plain \"text\", (x)."), "plain \"text\", (x).");
    EXPECT_EQ(lint::messageText("{\"id\": 1}"), "{{\"id\": 1}}");
    EXPECT_EQ(lint::messageText("[a](1)"), "\\[a\\](1)");
    EXPECT_EQ(lint::messageText("C:\\a"), "C:\\\\a");
}

TEST_F(LintCommand, SarifEscapesWhatANameBringsIntoAMessage) {
    write("user.cfg", R"({"meta": [{"header": "A", "attribute": "a", "overriddensettings": [{"[x](0) {0}": "1"}]}]})");
    const ChildResult result = lint({"user.cfg", "defaults.cfg", "--format", "sarif"});
    const json::Document document(result.out);
    const json::View run = *document.root().member("runs").elements().begin();
    const json::View first = *run.member("results").elements().begin();
    EXPECT_EQ(first.member("message").member("text").text(), R"(No setting has the name "\[x\](0) {{0}}".)");
}

}  // namespace
}  // namespace zelutil::test
