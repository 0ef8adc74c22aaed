// zelutil lint: what in files does not do what it seems to.
#include "command/lint/lint.h"

#include <algorithm>
#include <atomic>
#include <fstream>
#include <iterator>
#include <memory>

#include "command/arguments.h"
#include "command/input_file.h"
#include "command/json_failure.h"
#include "command/lint/sarif.h"
#include "command/progress.h"
#include "command/subcommands/table.h"
#include "command/text.h"

namespace zelutil::command {
namespace {

using lint::CheckedFile;

struct LintChoices {
    std::vector<std::string> files;
    std::vector<std::string> rules;
    bool namesDefaults = false;
    std::string defaults;
    std::string format = "text";
};

/// A file and its text, parsed.
struct ReadFile {
    ReadFile(std::string name, std::string bytes) : path(std::move(name)), text(std::move(bytes)), source(text) {}
    ReadFile(const ReadFile&) = delete;
    ReadFile& operator=(const ReadFile&) = delete;

    std::string path;
    std::string text;
    lint::Source source;
};

using ReadFiles = std::vector<std::unique_ptr<ReadFile>>;

/// Returns null, and says so, for a file that cannot be read.
std::unique_ptr<ReadFile> readFile(const std::string& argument, Output& output) {
    const auto place = placeOfInput(argument, "checked", output);
    if (!place) {
        return nullptr;
    }
    std::ifstream stream(*place, std::ios::binary);
    std::string text{std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
    return std::make_unique<ReadFile>(textOf(pathOf(argument)), std::move(text));
}

const std::vector<std::string> kLintFormats = {"text", "json", "sarif"};

std::vector<std::string> numbersOfRules() {
    std::vector<std::string> numbers;
    for (const lint::RuleInfo& info : lint::rules()) {
        numbers.emplace_back(info.number);
    }
    return numbers;
}

std::vector<std::string> valuesOfLint(std::string_view option) {
    if (option == "--format") {
        return kLintFormats;
    }
    return option == "--rule" ? numbersOfRules() : std::vector<std::string>();
}

std::set<lint::Rule> rulesOf(const std::vector<std::string>& numbers) {
    std::set<lint::Rule> rules;
    const std::vector<std::string> known = numbersOfRules();
    for (const std::string& number : numbers) {
        const auto rule = lint::ruleOf(number);
        if (!rule) {
            throw UsageError("There is no rule \"" + number + "\". The rules are " + known.front() + " to " +
                             known.back() + '.');
        }
        rules.insert(*rule);
    }
    return rules;
}

/// Returns the first defaults among the files.
const lint::Source* defaultsAmong(const ReadFiles& files) {
    for (const auto& file : files) {
        if (file->source.kind() == lint::FileKind::Defaults) {
            return &file->source;
        }
    }
    return nullptr;
}

/// Returns whether the file that is named as the defaults can be used so. Against any other a user's file would look
/// as if all of it were wrong, or as if nothing were.
bool areUsable(const ReadFile& defaults, Output& output) {
    if (const auto failure = defaults.source.document().failure()) {
        output.fail("The defaults \"" + defaults.path + "\" are no JSON (line " +
                        std::to_string(failure->position.line) + ", column " +
                        std::to_string(failure->position.column) + "): " + textOfFailure(defaults.source.document()),
                    "Correct the file at that place, or name the file that the product ships.");
        return false;
    }
    if (!lint::areDefaults(defaults.source.kind())) {
        output.fail(
            "The file \"" + defaults.path + "\" holds no defaults, but " + lint::nameOf(defaults.source.kind()) + '.',
            "Name the file that the product ships: --defaults FILE.");
        return false;
    }
    return true;
}

Finding shownFinding(const std::string& path, const lint::Finding& finding) {
    const lint::RuleInfo& rule = lint::infoOf(finding.rule);
    return {rule.severity, std::string(rule.number) + ": " + finding.message, finding.hint,
            Place{path, static_cast<int>(finding.begin.line), static_cast<int>(finding.begin.column)}};
}

void writeResult(JsonWriter& json, const lint::Finding& finding) {
    json.member("rule", lint::infoOf(finding.rule).number);
    json.member("severity", nameOf(lint::infoOf(finding.rule).severity));
    json.member("line", static_cast<int>(finding.begin.line));
    json.member("column", static_cast<int>(finding.begin.column));
    json.member("endLine", static_cast<int>(finding.end.line));
    json.member("endColumn", static_cast<int>(finding.end.column));
    json.member("text", finding.message);
    json.member("hint", finding.hint);
}

void print(const std::vector<CheckedFile>& files, Output& output) {
    output.members([&](JsonWriter& json) {
        json.objects("files", files, [&](const CheckedFile& file) {
            json.member("file", file.path);
            json.objects("results", file.findings, [&](const lint::Finding& finding) { writeResult(json, finding); });
        });
    });
    for (const CheckedFile& file : files) {
        for (const lint::Finding& finding : file.findings) {
            output.add(shownFinding(file.path, finding));
        }
    }
}

void printSarif(const std::vector<CheckedFile>& files, Output& output) {
    const auto text = lint::sarifText(files, output.failureText());
    if (!text) {
        output.fail("The result is too large for SARIF.", "Check fewer files at once.");
    }
    output.printInstead(text ? *text + '\n' : "");
}

void tellUnchecked(const ReadFile& file, const lint::Source* defaults, Output& output) {
    const lint::FileKind kind = file.source.kind();
    if (defaults == nullptr && (kind == lint::FileKind::User || kind == lint::FileKind::UserActions)) {
        output.add({Severity::Note,
                    "Only the form of the file was checked. Without the defaults nobody knows whether its " +
                        std::string(kind == lint::FileKind::User
                                        ? "sections, settings and actions exist, which setting an entry means, and "
                                        : "actions exist, and ") +
                        "whether an action gets the shortcut that it is given.",
                    "Name them too: --defaults FILE.", Place{file.path, std::nullopt, std::nullopt}});
    }
}

/// Counts the files that have been read, and those that have been checked.
using Steps = std::atomic<std::size_t>;
constexpr std::size_t kStepsOfEach = 2;

void checkAgainst(const lint::Source* defaults, const ReadFiles& files, const LintChoices& choices, Steps& steps,
                  Output& output) {
    std::vector<CheckedFile> checked;
    for (const auto& file : files) {
        checked.push_back({file->path, lint::lint(file->source, {defaults, rulesOf(choices.rules)})});
        tellUnchecked(*file, defaults, output);
        ++steps;
    }
    print(checked, output);
    if (choices.format == "sarif") {
        printSarif(checked, output);
    }
}

/// Throws for a value that an option does not have, and for two forms at once.
void checkChoices(const LintChoices& choices, const Output& output) {
    if (std::find(kLintFormats.begin(), kLintFormats.end(), choices.format) == kLintFormats.end()) {
        throw UsageError("There is no format \"" + choices.format + "\". The formats are text, json and sarif.");
    }
    if (choices.format == "sarif" && output.isJson()) {
        throw UsageError("--json and --format sarif are two forms, of which the output has one.");
    }
    rulesOf(choices.rules);
}

void checkFiles(const LintChoices& choices, Steps& steps, Output& output) {
    ReadFiles files;
    for (const std::string& argument : choices.files) {
        if (auto file = readFile(argument, output)) {
            files.push_back(std::move(file));
        }
        ++steps;
    }
    const auto named = choices.namesDefaults ? readFile(choices.defaults, output) : nullptr;
    const bool lacksDefaults = choices.namesDefaults && (named == nullptr || !areUsable(*named, output));
    if (!lacksDefaults) {
        checkAgainst(named != nullptr ? &named->source : defaultsAmong(files), files, choices, steps, output);
    } else if (choices.format == "sarif") {
        printSarif({}, output);
    }
}

void check(const LintChoices& choices, Output& output) {
    checkChoices(choices, output);
    if (choices.format == "json") {
        output.useJson();
    }
    workWithProgress(choices.files.size(), kStepsOfEach, progressOnTerminal(),
                     [&](Steps& steps) { checkFiles(choices, steps, output); });
}

Work declareLint(CLI::App& arguments) {
    const auto choices = std::make_shared<LintChoices>();
    addNames(arguments, "FILE", choices->files, "Defaults, user's, action and facet files")->required();
    const CLI::Option* const defaults = addName(arguments, "--defaults", choices->defaults,
                                                "The defaults for user's files; else the first ones among the files")
                                            ->type_name("FILE");
    addTexts(arguments, "--rule", choices->rules, "Tell of this rule only, as ZU003; may be repeated")
        ->type_name("RULE");
    addText(arguments, "--format", choices->format, "text, json or sarif (SARIF 2.1.0)")->type_name("FORMAT");
    return [choices, defaults](Output& output) {
        choices->namesDefaults = defaults->count() > 0;
        check(*choices, output);
    };
}

}  // namespace

const Subcommand kLint{"lint",
                       "Say what in files does not do what it seems to",
                       "$ zelutil lint facet_settings.cfg\n"
                       "facet_settings.cfg:2:31: warning: ZU028: A facet is numerical only when its type is exactly "
                       "\"Numerical\".\n"
                       "    Did you mean Numerical?",
                       FindingsAre::TheResult,
                       declareLint,
                       Completes::Files,
                       false,
                       valuesOfLint};

}  // namespace zelutil::command
