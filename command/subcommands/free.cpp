// zelutil free: the shortcuts that nobody has.
#include <algorithm>
#include <iterator>
#include <memory>

#include "command/arguments.h"
#include "command/nearest_names.h"
#include "command/shortcuts/columns.h"
#include "command/shortcuts/free_keys.h"
#include "command/shortcuts/known_shortcuts.h"
#include "command/subcommands/table.h"

namespace zelutil::command {
namespace {

using shortcuts::Cell;
using shortcuts::FreeKey;
using shortcuts::KnownShortcuts;

struct FreeChoices {
    std::string context;
    std::string modifiers;
    bool chosenModifiers = false;
};

/// Stands for no modifiers, in the table and in the option.
constexpr char kNoModifiers[] = "none";

/// Returns the modifiers in the spelling of the keys.
std::string chosenModifiers(const FreeChoices& choices) {
    auto named = shortcuts::modifierSetNamed(choices.modifiers == kNoModifiers ? "" : choices.modifiers);
    if (!named) {
        throw UsageError("\"" + choices.modifiers +
                         "\" is none of the modifiers, as \"Ctrl\", \"Ctrl+Shift\" and \"none\" are.");
    }
    return *std::move(named);
}

/// Returns the names of the keys, in a line: those that run nothing now, or those that run something by the fallback.
std::string namesIn(const std::vector<FreeKey>& keys, const std::string& modifiers, bool byFallback) {
    std::string names;
    for (const FreeKey& key : keys) {
        if (key.modifiers == modifiers && (key.runsByFallback != 0) == byFallback) {
            names += (names.empty() ? "" : " ") + key.shortcut.substr(modifiers.empty() ? 0 : modifiers.size() + 1);
        }
    }
    return names;
}

void showLines(const std::vector<FreeKey>& keys, Output& output) {
    std::vector<std::vector<Cell>> lines;
    for (const std::string& modifiers : shortcuts::modifierSets()) {
        for (const bool byFallback : {false, true}) {
            const std::string names = namesIn(keys, modifiers, byFallback);
            if (!names.empty()) {
                lines.push_back({{modifiers.empty() ? kNoModifiers : modifiers, Role::Name},
                                 {byFallback ? "by fallback" : "nothing", Role::Faint},
                                 {names, Role::Value}});
            }
        }
    }
    shortcuts::showColumns({"MODIFIERS", "RUN NOW", "FREE KEYS"}, lines, output);
}

void showFree(const FreeChoices& choices, Output& output) {
    const std::string modifiers = chosenModifiers(choices);
    const KnownShortcuts known(output);
    if (!known.areThere() || !known.hasContext(choices.context, output)) {
        return;
    }
    std::vector<FreeKey> keys = shortcuts::freeKeys(choices.context, known.rows());
    if (choices.chosenModifiers) {
        keys.erase(
            std::remove_if(keys.begin(), keys.end(), [&](const FreeKey& key) { return key.modifiers != modifiers; }),
            keys.end());
    }
    showLines(keys, output);
    output.members([&](JsonWriter& json) {
        json.member("context", choices.context);
        json.objects("free", keys, [&](const FreeKey& key) {
            json.member("shortcut", key.shortcut);
            json.member("modifiers", key.modifiers);
            json.member("runsByFallback", key.runsByFallback);
        });
    });
}

std::vector<std::string> valuesOfFree(std::string_view option) {
    std::vector<std::string> values;
    if (option == "--modifiers") {
        // No shell offers the empty text.
        const auto& sets = shortcuts::modifierSets();
        std::transform(sets.begin(), sets.end(), std::back_inserter(values),
                       [](const std::string& modifiers) { return modifiers.empty() ? kNoModifiers : modifiers; });
    }
    return values;
}

Work declareFree(CLI::App& arguments) {
    const auto choices = std::make_shared<FreeChoices>();
    addName(arguments, "--context", choices->context, "The context whose actions are to be given one")
        ->required()
        ->type_name("CONTEXT");
    const CLI::Option* const modifiers = addText(arguments, "--modifiers", choices->modifiers,
                                                 "Show only those with these modifiers, as Ctrl+Shift, or none")
                                             ->type_name("MODIFIERS");
    return [choices, modifiers](Output& output) {
        choices->chosenModifiers = modifiers->count() != 0;
        showFree(*choices, output);
    };
}

}  // namespace

const Subcommand kFree{"free",
                       "List the shortcuts that no action of a context has",
                       "$ zelutil free --context ucpedit --modifiers Alt+Shift",
                       FindingsAre::BesideResult,
                       declareFree,
                       Completes::Files,
                       false,
                       valuesOfFree};

}  // namespace zelutil::command
