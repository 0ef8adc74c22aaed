// Tests the help, wrong usage, colours and completion, which all subcommands share.
#include <gtest/gtest.h>

#include <algorithm>

#include "command/command_world.h"
#include "command/subcommands/table.h"

namespace {

using zelutil::command::Subcommand;
using zelutil::command::subcommands;
using zelutil::test::ChildResult;
using zelutil::test::CommandWorld;
using zelutil::test::kCommandUser;

std::vector<std::string> visibleSubcommands() {
    std::vector<std::string> names;
    for (const Subcommand* const subcommand : subcommands()) {
        if (!subcommand->hidden) {
            names.emplace_back(subcommand->name);
        }
    }
    return names;
}

std::vector<std::string> linesOf(const std::string& text) {
    std::vector<std::string> lines;
    for (std::size_t from = 0; from < text.size();) {
        const std::size_t end = std::min(text.find('\n', from), text.size());
        lines.push_back(text.substr(from, end - from));
        from = end + 1;
    }
    return lines;
}

TEST(Usage, HelpListsEverySubcommand) {
    const CommandWorld world;
    const ChildResult help = world.run({"--help"});
    EXPECT_EQ(help.exitCode, 0);
    EXPECT_EQ(help.err, "");
    for (const std::string& name : visibleSubcommands()) {
        EXPECT_NE(help.out.find("\n  " + name + " "), std::string::npos) << name;
    }
    EXPECT_EQ(help.out.find("complete"), std::string::npos) << "Only programs call it.";
}

/// Expects that the help names an option's value by a word of capitals.
void expectWordsForValues(const std::string& help) {
    for (const std::string& line : linesOf(help)) {
        for (const char* const option : {"--defaults", "--rule", "--format", "--context", "--section", "--output"}) {
            const std::size_t at = line.find(std::string(option) + ' ');
            const bool isListed = at != std::string::npos && line.find_first_not_of(' ') + 14 > at;
            const char next = isListed ? line[at + std::string(option).size() + 1] : 'X';
            EXPECT_TRUE(next >= 'A' && next <= 'Z') << line;
        }
    }
}

TEST(Usage, HelpOfASubcommandNamesValuesAndEndsWithItsExample) {
    const CommandWorld world;
    for (const Subcommand* const subcommand : subcommands()) {
        SCOPED_TRACE(subcommand->name);
        const ChildResult help = world.run({subcommand->name, "--help"});
        EXPECT_EQ(help.exitCode, 0);
        expectWordsForValues(help.out);
        const std::size_t example = help.out.find("Example:\n  $ zelutil " + std::string(subcommand->name));
        ASSERT_NE(example, std::string::npos) << help.out;
        const auto expected = linesOf(subcommand->example);
        const auto shown = linesOf(help.out.substr(example));
        ASSERT_EQ(shown.size(), expected.size() + 1);
        for (std::size_t number = 0; number < expected.size(); ++number) {
            EXPECT_EQ(shown[number + 1], "  " + expected[number]);
        }
    }
}

TEST(Usage, VersionIsPrinted) {
    const CommandWorld world;
    EXPECT_EQ(world.run({"--version"}).out, "zelutil " ZELUTIL_TEST_VERSION "\n");
    constexpr char kForm[] =
        R"({"zelutil":{"format":1,"command":"version"},"version":")" ZELUTIL_TEST_VERSION R"(","findings":[]})";
    EXPECT_EQ(world.json({"--version"}), kForm);
}

struct WrongUse {
    std::vector<std::string> arguments;
    const char* err;
};

TEST(Usage, WrongUseIsTold) {
    const WrongUse rows[] = {
        {{}, "zelutil: error: A subcommand is required\n    \"zelutil --help\" says how it is called.\n"},
        {{"gte", "grid"}, "zelutil: error: There is no subcommand \"gte\".\n    Did you mean get?\n"},
        {{"unheard-of"},
         "zelutil: error: There is no subcommand \"unheard-of\".\n    \"zelutil --help\" lists them.\n"},
        {{"--bogus"},
         "zelutil: error: There is no option \"--bogus\" before a subcommand.\n"
         "    \"zelutil --help\" lists them.\n"},
        {{"--jsn"}, "zelutil: error: There is no option \"--jsn\" before a subcommand.\n    Did you mean --json?\n"},
        {{"list", "--section", ""},
         "zelutil: error: --section: The text is empty.\n    \"zelutil list --help\" says how it is called.\n"},
        {{"shortcuts", "--context", ""},
         "zelutil: error: --context: The text is empty.\n    \"zelutil shortcuts --help\" says how it is called.\n"},
        {{"conflicts", "--context="},
         "zelutil: error: --context: 1 required CONTEXT missing\n    \"zelutil conflicts --help\" says how it is "
         "called.\n"},
        {{"sheet", "-o", ""},
         "zelutil: error: --output: The text is empty.\n    \"zelutil sheet --help\" says how it is called.\n"},
        {{"report", "--output", ""},
         "zelutil: error: --output: The text is empty.\n    \"zelutil report --help\" says how it is called.\n"},
        {{"export", ""},
         "zelutil: error: PROFILE: The text is empty.\n    \"zelutil export --help\" says how it is called.\n"},
        {{"import", ""},
         "zelutil: error: PROFILE: The text is empty.\n    \"zelutil import --help\" says how it is called.\n"},
        {{"plan", ""},
         "zelutil: error: FILE: The text is empty.\n    \"zelutil plan --help\" says how it is called.\n"},
        {{"lint", ""},
         "zelutil: error: FILE: The text is empty.\n    \"zelutil lint --help\" says how it is called.\n"},
        {{"lint", "--defaults", "", "a.cfg"},
         "zelutil: error: --defaults: The text is empty.\n    \"zelutil lint --help\" says how it is called.\n"},
        {{"upgrade", "--json", "--json-lines", "a", "b", "c"},
         "zelutil: error: --json and --json-lines are two forms, of which the output has one.\n"
         "    \"zelutil upgrade --help\" says how it is called.\n"},
        {{"list", ""},
         "zelutil: error: PATTERN: The text is empty.\n    \"zelutil list --help\" says how it is called.\n"},
        {{"get"}, "zelutil: error: NAME is required\n    \"zelutil get --help\" says how it is called.\n"},
        {{"diff", "grid"},
         "zelutil: error: The following argument was not expected: grid\n"
         "    \"zelutil diff --help\" says how it is called.\n"},
        {{"list", "--nonsense"},
         "zelutil: error: There is no option \"--nonsense\".\n"
         "    \"zelutil list --help\" says how it is called.\n"},
        {{"list", "--chagned", "--section", "display"},
         "zelutil: error: There is no option \"--chagned\".\n    Did you mean --changed?\n"},
        // An option that is missing, too, matters less.
        {{"who", "F5", "--contxt", "x"},
         "zelutil: error: There is no option \"--contxt\".\n    Did you mean --context?\n"},
        {{"who", "F5", "--context=x", "--contxt=y"},
         "zelutil: error: There is no option \"--contxt\".\n    Did you mean --context?\n"},
        {{"list", "--jsno"}, "zelutil: error: There is no option \"--jsno\".\n    Did you mean --json?\n"},
        {{"list", "--color", "often"},
         "zelutil: error: --color: \"often\" is none of auto, always and never.\n"
         "    \"zelutil list --help\" says how it is called.\n"},
    };
    const CommandWorld world;
    for (const WrongUse& row : rows) {
        SCOPED_TRACE(testing::PrintToString(row.arguments));
        const ChildResult result = world.run(row.arguments);
        EXPECT_EQ(result.exitCode, 2);
        EXPECT_EQ(result.out, "");
        EXPECT_EQ(result.err, row.err);
    }
}

TEST(Usage, ColorsAreForTerminalsUnlessAskedFor) {
    const CommandWorld world;
    world.writeUser(kCommandUser);
    const std::string plain = "display::grids::grid=0.25\n";
    const std::string colored = "\x1b[36mdisplay::grids::grid\x1b[0m=\x1b[32m0.25\x1b[0m\n";
    EXPECT_EQ(world.run({"get", "grid"}).out, plain);
    EXPECT_EQ(world.run({"get", "grid", "--color", "auto"}).out, plain);
    EXPECT_EQ(world.run({"get", "grid", "--color=never"}).out, plain);
    EXPECT_EQ(world.run({"get", "grid", "--color=always"}).out, colored);
    EXPECT_EQ(world.run({"get", "grid", "--color=always"}, {{"NO_COLOR", "1"}}).out, colored);
    EXPECT_EQ(world.run({"get", "gird", "--color=always"}).err,
              "\x1b[1m\x1b[31merror:\x1b[0m There is no setting \"gird\".\n    Did you mean grid?\n");
}

struct Completion {
    std::vector<std::string> words;
    std::vector<std::string> candidates;
};

TEST(Usage, CompletionOffersWhatMayFollow) {
    const Completion rows[] = {
        {{"get", "disp"}, {"display::units", "display::zoom", "display::grids::grid", "display::grids::visible"}},
        {{"get", "zoom", "gr"}, {"grid"}},
        {{"set", "GR"}, {"grid="}},
        {{"set", "grid=0"}, {}},
        {{"reset", "saving::"}, {"saving::autosave"}},
        {{"list", "--section", "s"}, {"saving"}},
        {{"list", "--se"}, {"--section"}},
        {{"--color", "a"}, {"auto", "always"}},
        {{"list", "--section=s"}, {"--section=saving"}},
        {{"list", "--color=n"}, {"--color=never"}},
        {{"schema", ""}, {"defaults", "user", "actions", "facets"}},
        {{"schema", "f"}, {"facets"}},
        {{"free", "--modifiers", "Ctrl+A"}, {"Ctrl+Alt", "Ctrl+Alt+Shift"}},
        {{"free", "--modifiers", "n"}, {"none"}},
        {{"list", "--section", "disp"}, {"display", "display::grids"}},
        // Files, which the shell knows.
        {{"get", "--world", "d"}, {}},
        {{"lint", "--defaults", "d"}, {}},
        {{"get", "--v"}, {"--value", "--version"}},
        {{"di"}, {"diff"}},
        {{"unheard-of"}, {}},
    };
    const CommandWorld world;
    for (const Completion& row : rows) {
        SCOPED_TRACE(testing::PrintToString(row.words));
        std::vector<std::string> arguments{"complete", "--"};
        arguments.insert(arguments.end(), row.words.begin(), row.words.end());
        EXPECT_EQ(linesOf(world.run(arguments).out), row.candidates);
    }
    EXPECT_EQ(linesOf(world.run({"complete", "--", ""}).out), visibleSubcommands());
}

TEST(Usage, TheManualHasEverySubcommandAndOption) {
    const CommandWorld world;
    const ChildResult manual = world.run({"manual"});
    EXPECT_EQ(manual.exitCode, 0);
    for (const std::string& name : visibleSubcommands()) {
        EXPECT_NE(manual.out.find("\n.SS \\fBzelutil " + name + "\\fR"), std::string::npos) << name;
    }
    for (const char* const option : {"\\-\\-json", "\\-\\-color", "\\-\\-paths\\-with\\-blanks", "\\-\\-section"}) {
        EXPECT_NE(manual.out.find(std::string("\\fB") + option + "\\fR"), std::string::npos) << option;
    }
    for (const char* const variable : {"QTXROOT", "QTX_SITE", "regression_testing", "QTX_ZELUTIL_DEBUG"}) {
        EXPECT_NE(manual.out.find(variable), std::string::npos) << variable;
    }
}

}  // namespace
