// zelutil upgrade: what new shipped defaults do to users' files, before they are rolled out.
#include <algorithm>
#include <memory>
#include <optional>
#include <thread>

#include "command/arguments.h"
#include "command/command_line_text.h"
#include "command/doctor/candidate_text.h"
#include "command/lint/lint.h"
#include "command/progress.h"
#include "command/subcommands/table.h"
#include "command/text.h"
#include "command/upgrade/report.h"
#include "command/upgrade/user_files.h"
#include "file/installed_file.h"
#include "json/document.h"
#include "platform/files.h"
#include "platform/native_paths.h"
#include "platform/world.h"
#include "prefs/preference_files.h"

namespace zelutil::command {
namespace {

namespace fs = std::filesystem;

struct UpgradeChoices {
    std::string oldDefaults;
    std::string newDefaults;
    std::vector<std::string> users;
    int jobs = 0;
    bool jsonLines = false;
};

/// Returns the file that an argument names: itself, or that of an installation.
std::string shippedFileOf(const std::string& argument) {
    const fs::path path = pathOf(argument);
    std::error_code ignored;
    const std::string text = platform::textOfNativePath(path).value_or("");
    if (!fs::is_directory(path, ignored)) {
        return text;
    }
    std::string file(file::placeOfSettingsFile(ZelU::File::Path(text), prefs::kSettingsFileName));
    // A path with a blank stands in quotes.
    file.erase(std::remove(file.begin(), file.end(), '"'), file.end());
    return file;
}

std::optional<std::string> readShipped(const std::string& argument, Output& output) {
    const std::string file = shippedFileOf(argument);
    auto text = platform::readFile(file.c_str(), json::kMaximumTextSize);
    if (!text) {
        output.fail("No shipped defaults can be read from \"" + argument + "\".",
                    "Name a file of shipped defaults, or an installation.");
        return std::nullopt;
    }
    if (upgrade::Version(*text).hasSections()) {
        return text;
    }
    const lint::Source source(*text);
    if (source.document().valid()) {
        output.fail("\"" + argument + "\" holds no shipped defaults, but " + lint::nameOf(source.kind()) + '.',
                    "Name the old shipped defaults, then the new ones, and then the users' files.");
    } else {
        output.fail("\"" + argument + "\" holds no shipped defaults, because it is no JSON.",
                    "This says more of it: " + commandLineFor(nativeOrAsItStands(shippedFileOf(argument))));
    }
    return std::nullopt;
}

/// Tells of links that may lead to users' files and that were not followed.
void tellLinks(const std::vector<fs::path>& links, Output& output) {
    if (!links.empty()) {
        output.add({Severity::Note,
                    fmt::format("Links in directories that were not followed: {}. The first is \"{}\".", links.size(),
                                textOf(links.front())),
                    "Name what they lead to where users' files are there.", std::nullopt});
    }
}

std::string whyNothingIsMeant(const std::string& argument) {
    std::error_code ignored;
    const std::string quoted = '"' + argument + '"';
    if (fs::is_directory(pathOf(argument), ignored)) {
        return "The directory " + quoted + " holds no tessel_settings.cfg, neither itself nor in its directories.";
    }
    const bool isPattern = argument.find_first_of("*?") != std::string::npos;
    return isPattern ? "The pattern " + quoted + " matches no user's file." : quoted + " is not there.";
}

upgrade::UserFiles namedUsersFiles(const std::vector<std::string>& arguments, Output& output) {
    upgrade::UserFiles files;
    for (const std::string& argument : arguments) {
        if (!files.add(pathOf(argument))) {
            output.add({Severity::Warning, whyNothingIsMeant(argument),
                        "Name a user's file, a directory that holds tessel_settings.cfg, or a pattern.", std::nullopt});
        }
    }
    tellLinks(files.linksPassedOver(), output);
    return files;
}

std::size_t threadsFor(const UpgradeChoices& choices) {
    const int jobs = choices.jobs > 0 ? choices.jobs : static_cast<int>(std::thread::hardware_concurrency());
    return static_cast<std::size_t>(std::max(jobs, 1));
}

void runUpgrade(const UpgradeChoices& choices, Output& output) {
    if (choices.jsonLines && output.isJson()) {
        throw UsageError("--json and --json-lines are two forms, of which the output has one.");
    }
    // The files that are named are this machine's.
    const platform::OutsideTheWorld thisMachine;
    const auto oldDefaults = readShipped(choices.oldDefaults, output);
    const auto newDefaults = oldDefaults ? readShipped(choices.newDefaults, output) : std::nullopt;
    if (!newDefaults) {
        return;
    }
    const upgrade::UserFiles users = namedUsersFiles(choices.users, output);
    upgrade::Outcome outcome;
    outcome.notSeen = users.notSeen();
    workWithProgress(users.files().size(), 1, progressOnTerminal(), [&](std::atomic<std::size_t>& done) {
        outcome.results = upgrade::compareAll(*oldDefaults, *newDefaults, users.files(), threadsFor(choices), done);
    });
    upgrade::tell(outcome, output);
    if (choices.jsonLines) {
        const auto lines = upgrade::jsonLines(outcome);
        output.printInstead(lines.value_or(""));
        if (!lines) {
            output.fail("What there is to say of one user is too large for the JSON form.",
                        "Ask without --json-lines.");
        }
    }
}

Work declareUpgrade(CLI::App& arguments) {
    const auto choices = std::make_shared<UpgradeChoices>();
    addName(arguments, "OLD", choices->oldDefaults, "The shipped defaults as they are: a file, or an installation")
        ->required();
    addName(arguments, "NEW", choices->newDefaults, "The shipped defaults as they will be")->required();
    addNames(arguments, "USER", choices->users,
             "Users' files, directories that hold them, and patterns as '/home/*/pcbenv'")
        ->required();
    arguments.add_flag("--json-lines", choices->jsonLines,
                       "Print one JSON text a line: one for each user, and a summary");
    arguments.add_option("--jobs", choices->jobs, "Use that many threads; else as many as the machine has cores")
        ->type_name("NUMBER")
        ->check(CLI::Range(1, 1024));
    return [choices](Output& output) { runUpgrade(*choices, output); };
}

}  // namespace

const Subcommand kUpgrade{"upgrade", "Say what new shipped defaults do to users' files",
                          "$ zelutil upgrade /opt/product-1 /opt/product-2 '/home/*/pcbenv'\n"
                          "/home/ann/pcbenv/tessel/tessel_settings.cfg\n"
                          "  dropped: display::grids::grid=0.25, there is no such setting",
                          FindingsAre::TheResult, declareUpgrade};

}  // namespace zelutil::command
