#include "command/command_line.h"

#include <zelutil/host/start.h>
#include <zelutil/version.h>

#include <algorithm>
#include <exception>
#include <utility>

#include "command/arguments.h"
#include "command/nearest_names.h"
#include "command/output.h"
#include "command/subcommands/table.h"
#include "command/system/console.h"
#include "command/text.h"
#include "command/world/bundled_world.h"

namespace zelutil::command {
namespace {

constexpr char kDescription[] = "Shows and sets the preferences of the design applications, and says why they are so.";

constexpr char kExitCodes[] =
    "Exit codes: 0 fine, 1 findings, 2 called wrongly, 3 could not be done.\n"
    "zelutil SUBCOMMAND --help says more of each.\n\n"
    "Example:\n  $ zelutil list --changed";

constexpr char kCommonOptions[] =
    "--json, --color, --paths-with-blanks and --world are for every subcommand: zelutil --help.";

constexpr std::size_t kHelpColumn = 26;

/// Holds the parser and what it fills in.
class CommandLine {
public:
    CommandLine();

    ExitCode run(const std::vector<std::string>& arguments);

private:
    struct Declared {
        const Subcommand* subcommand;
        const CLI::App* parser;
        Work work;
    };

    void addCommonOptions();
    void add(const Subcommand& subcommand);
    bool entersWorld(Output& output) const;
    ExitCode runParsed() const;
    ExitCode runNow(const Declared& declared) const;
    OutputChoices outputChoices() const;
    ExitCode wrongUsage(const std::string& text, const std::string& advice) const;
    std::string unknownSubcommand() const;
    std::string unknownOption() const;
    std::string leftOverOption() const;
    ExitCode printHelp(const std::string& text) const;
    std::string versionText() const;
    ExitCode tellParseError(const CLI::ParseError& error) const;
    std::string helpCall() const;

    CLI::App app_;
    std::vector<Declared> declared_;
    bool json_ = false;
    std::string color_ = "auto";
    bool pathsWithBlanks_ = false;
    std::string world_;
    CLI::Option* worldOption_ = nullptr;
};

CommandLine::CommandLine() : app_(kDescription, "zelutil") {
    app_.allow_windows_style_options(false);
    app_.fallthrough();
    app_.require_subcommand(1);
    app_.get_formatter()->column_width(kHelpColumn);
    app_.footer(kExitCodes);
    addCommonOptions();
    for (const Subcommand* const subcommand : subcommands()) {
        add(*subcommand);
    }
}

void CommandLine::addCommonOptions() {
    app_.set_version_flag("--version", "zelutil " ZELUTIL_VERSION, "Print the version and exit");
    app_.add_flag("--json", json_, "Print one JSON text for programs");
    app_.add_option("--color", color_, "Use colours: auto, always or never")
        ->type_name("WHEN")
        ->transform(CLI::Validator(
            [](std::string& when) {
                const bool known = when == "auto" || when == "always" || when == "never";
                return known ? std::string() : "\"" + when + "\" is none of auto, always and never.";
            },
            ""));
    app_.add_flag("--paths-with-blanks", pathsWithBlanks_,
                  "Read and write files whose path has a blank in it, as some applications do");
    worldOption_ =
        addText(app_, "--world", world_, "Have the machine that the bundle DIR was made on in the place of this one")
            ->type_name("DIR");
}

void CommandLine::add(const Subcommand& subcommand) {
    CLI::App* const parser = app_.add_subcommand(subcommand.name, subcommand.description);
    std::string example = subcommand.example;
    for (std::size_t end = example.find('\n'); end != std::string::npos; end = example.find('\n', end + 1)) {
        example.insert(end + 1, "  ");
    }
    if (subcommand.hidden) {
        parser->group("");
    }
    parser->footer(kCommonOptions + std::string("\n\nExample:\n  ") + example);
    declared_.push_back({&subcommand, parser, subcommand.declare(*parser)});
}

OutputChoices CommandLine::outputChoices() const {
    const ColorChoice color = color_ == "always"  ? ColorChoice::Always
                              : color_ == "never" ? ColorChoice::Never
                                                  : ColorChoice::Auto;
    return {json_, color, widthOf(Stream::Output)};
}

ExitCode CommandLine::wrongUsage(const std::string& text, const std::string& advice) const {
    write(Stream::Error, errorLines(Colors(outputChoices().color, Stream::Error), text, advice));
    return ExitCode::Usage;
}

/// Returns the first word that ought to be a subcommand and is none; empty where there is none.
std::string CommandLine::unknownSubcommand() const {
    if (app_.get_subcommands().empty()) {
        for (const std::string& word : app_.remaining()) {
            if (!word.empty() && word.front() != '-') {
                return word;
            }
        }
    }
    return {};
}

/// Returns the first option before a subcommand that is none; empty where there is none.
std::string CommandLine::unknownOption() const {
    if (app_.get_subcommands().empty()) {
        for (const std::string& word : app_.remaining()) {
            if (word.size() > 1 && word.front() == '-') {
                return word;
            }
        }
    }
    return {};
}

/// Asks whether an option of these parsers was meant; empty where none is near.
std::string questionAboutOption(const std::string& option, const std::vector<const CLI::App*>& parsers) {
    std::vector<std::string> options;
    for (const CLI::App* const parser : parsers) {
        for (const CLI::Option* const known : parser->get_options()) {
            options.push_back(known->get_name());
        }
    }
    return questionAbout(nearestNames(option, options));
}

/// Returns the first option of a subcommand that is none, without its value; empty where there is none.
std::string CommandLine::leftOverOption() const {
    if (app_.get_subcommands().empty()) {
        return {};
    }
    for (const std::string& word : app_.remaining(true)) {
        if (word.size() > 2 && word.substr(0, 2) == "--") {
            return word.substr(0, word.find('='));
        }
    }
    return {};
}

/// Writes what was asked for instead of a subcommand's work.
ExitCode CommandLine::printHelp(const std::string& text) const {
    if (write(Stream::Output, text)) {
        return ExitCode::Fine;
    }
    write(Stream::Error, errorLines(Colors(outputChoices().color, Stream::Error), kNotPrinted, kAdviceWhereNotPrinted));
    return ExitCode::Failed;
}

/// The parser stops at the option of the version, before it gives --json its value.
std::string CommandLine::versionText() const {
    if (app_.get_option("--json")->count() == 0) {
        return "zelutil " ZELUTIL_VERSION "\n";
    }
    OutputChoices choices = outputChoices();
    choices.json = true;
    Output output("version", FindingsAre::BesideResult, choices);
    output.members([](JsonWriter& json) { json.member("version", ZELUTIL_VERSION); });
    return output.text();
}

std::string CommandLine::helpCall() const {
    const auto parsed = app_.get_subcommands();
    return "zelutil " + (parsed.empty() ? std::string() : parsed.front()->get_name() + ' ') + "--help";
}

ExitCode CommandLine::tellParseError(const CLI::ParseError& error) const {
    if (error.get_name() == "CallForVersion") {
        return printHelp(versionText());
    }
    if (error.get_exit_code() == 0) {
        return printHelp(app_.help());
    }
    const std::string word = unknownSubcommand();
    const std::string option = unknownOption();
    if (word.empty() && !option.empty()) {
        const std::string question = questionAboutOption(option, {&app_});
        return wrongUsage("There is no option \"" + option + "\" before a subcommand.",
                          question.empty() ? "\"zelutil --help\" lists them." : question);
    }
    const std::string howCalled = "\"" + helpCall() + "\" says how it is called.";
    if (const std::string leftOver = leftOverOption(); !leftOver.empty()) {
        const std::string question = questionAboutOption(leftOver, {app_.get_subcommands().front(), &app_});
        return wrongUsage("There is no option \"" + leftOver + "\".", question.empty() ? howCalled : question);
    }
    if (word.empty()) {
        return wrongUsage(error.what(), howCalled);
    }
    std::vector<std::string> names;
    for (const Subcommand* const subcommand : subcommands()) {
        if (!subcommand->hidden) {
            names.emplace_back(subcommand->name);
        }
    }
    const std::string question = questionAbout(nearestNames(word, names));
    return wrongUsage("There is no subcommand \"" + word + "\".",
                      question.empty() ? "\"zelutil --help\" lists them." : question);
}

ExitCode CommandLine::runNow(const Declared& declared) const {
    Output output(declared.subcommand->name, declared.subcommand->findingsAre, outputChoices());
    try {
        if (entersWorld(output)) {
            declared.work(output);
        }
    } catch (const UsageError& error) {
        return wrongUsage(error.what(), "\"" + helpCall() + "\" says how it is called.");
    } catch (const std::exception& error) {
        output.fail(std::string("It could not be done: ") + error.what(), "Nothing more is known of the cause.");
    }
    return output.finish();
}

/// Has the machine of a bundle in force, where one is named. Returns false, and says why, where that cannot be.
bool CommandLine::entersWorld(Output& output) const {
    const world::Obstacle obstacle = world_.empty() ? world::Obstacle() : world::enterWorld(pathOf(world_));
    if (obstacle) {
        output.fail(obstacle.text, obstacle.advice);
    }
    return !obstacle;
}

ExitCode CommandLine::runParsed() const {
    // If a script's variable is empty, this machine is not what was meant.
    if (worldOption_->count() > 0 && world_.empty()) {
        return wrongUsage("--world names no directory.", "\"zelutil bundle DIR\" makes one.");
    }
    host::Options options;
    options.pathsWithBlanks = pathsWithBlanks_;
    host::setOptions(options);
    for (const Declared& declared : declared_) {
        if (declared.parser->parsed()) {
            return runNow(declared);
        }
    }
    return wrongUsage("There is no subcommand.", "\"zelutil --help\" lists them.");
}

ExitCode CommandLine::run(const std::vector<std::string>& arguments) {
    try {
        // The parser takes the last one first.
        std::vector<std::string> reversed = protectedArguments(arguments);
        std::reverse(reversed.begin(), reversed.end());
        app_.parse(std::move(reversed));
    } catch (const CLI::ParseError& error) {
        return tellParseError(error);
    }
    return runParsed();
}

}  // namespace

ExitCode run(const std::vector<std::string>& arguments) { return CommandLine().run(arguments); }

}  // namespace zelutil::command
