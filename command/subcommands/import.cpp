// zelutil import: the shortcuts and menu flags of a profile, by the library's own save.
#include <memory>

#include "command/arguments.h"
#include "command/input_file.h"
#include "command/shortcuts/importing.h"
#include "command/shortcuts/known_shortcuts.h"
#include "command/shortcuts/shortcut_changes.h"
#include "command/subcommands/table.h"

namespace zelutil::command {
namespace {

using shortcuts::KnownShortcuts;
using shortcuts::NamedWishes;
using shortcuts::SkippedWish;

void tellSkipped(const NamedWishes& wishes, Output& output) {
    output.members([&](JsonWriter& json) { writeSkipped(json, wishes.skipped); });
    std::vector<Finding> findings;
    for (const SkippedWish& skipped : wishes.skipped) {
        findings.push_back({Severity::Warning,
                            "Element " + std::to_string(skipped.place) + " was skipped: " + skipped.text,
                            skipped.advice, std::nullopt});
    }
    shortcuts::addTheFirst(std::move(findings), output);
}

void importProfile(const std::string& file, Output& output) {
    const std::optional<std::string> bytes = readInput(file, output);
    if (!bytes) {
        return;
    }
    const shortcuts::WishText text = shortcuts::readProfile(*bytes);
    if (!text.unreadable.empty()) {
        output.fail("\"" + file + "\" could not be imported. " + text.unreadable,
                    "\"zelutil export\" writes profiles.");
        return;
    }
    const KnownShortcuts known(output);
    if (!known.areThere()) {
        return;
    }
    const BeforeSave places = lookBeforeSave();
    const shortcuts::Import import = shortcuts::importWishes(text);
    tellSavedShortcuts(known.rows(), places, import.save, output);
    tellSkipped(import.wishes, output);
    output.members([&](JsonWriter& json) {
        writeInTheWay(json, import.partial.inTheWay);
        writeSideEffects(json, import.partial.plan);
    });
    tellOtherSpellings(import.wishes.keys, known.rows(), output);
    tellSideEffects(import.partial.plan, import.save.ok(), known.rows(), output);
}

Work declareImport(CLI::App& arguments) {
    const auto file = std::make_shared<std::string>();
    addName(arguments, "PROFILE", *file, "A file that \"zelutil export\" has written")->required();
    return [file](Output& output) { importProfile(*file, output); };
}

}  // namespace

const Subcommand kImport{"import", "Give the actions what a profile has for them, and save it in the user's file",
                         "$ zelutil import mine.json", FindingsAre::BesideResult, declareImport};

}  // namespace zelutil::command
