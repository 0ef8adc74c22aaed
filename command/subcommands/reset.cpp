// zelutil reset: gives settings their shipped defaults again, by taking their entries out of the user's file.
#include <memory>
#include <unordered_set>

#include "command/arguments.h"
#include "command/explain/entry_reset.h"
#include "command/explain/unread_user_file.h"
#include "command/known_settings.h"
#include "command/saved_settings.h"
#include "command/subcommands/table.h"

namespace zelutil::command {
namespace {

struct ResetChoices {
    std::vector<std::string> names;
    bool all = false;
};

/// Returns the numbers of the settings that are to be reset, each once; nothing where a name is unknown.
std::optional<std::vector<std::uint32_t>> settingsToReset(const ResetChoices& choices, const SettingAccounts& accounts,
                                                          Output& output) {
    std::vector<std::uint32_t> numbers;
    std::unordered_set<std::uint32_t> known;
    bool areAllKnown = true;
    for (const std::string& name : choices.names) {
        const auto number = accounts.find(name);
        areAllKnown = areAllKnown && number;
        if (!number) {
            output.add(unknownSetting(name, accounts.names()));
        } else if (known.insert(*number).second) {
            numbers.push_back(*number);
        }
    }
    if (!areAllKnown) {
        output.add({Severity::Note, "Nothing was done.", "", std::nullopt});
        return std::nullopt;
    }
    for (const std::uint32_t number : choices.all ? accounts.numbers() : std::vector<std::uint32_t>()) {
        if (accounts.info(number).setByUser) {
            numbers.push_back(number);
        }
    }
    return numbers;
}

void tellReset(const std::vector<host::SettingInfo>& before, const host::SaveResult& result, Output& output) {
    std::vector<SettingChange> changes;
    for (const host::SettingInfo& setting : result.ok() ? before : std::vector<host::SettingInfo>()) {
        changes.push_back({setting, setting.defaultValue});
    }
    tellChanged(changes, result, output, result.text);
}

void tellMissingTurn(Output& output) {
    output.add({Severity::Warning,
                "Other processes could not be kept from saving at the same moment, which this reset may have undone.",
                "See whether their values are still there: \"zelutil diff\" shows all.", std::nullopt});
}

void resetSettings(const ResetChoices& choices, Output& output) {
    if (choices.all != choices.names.empty()) {
        throw UsageError("A reset takes either names or --all.");
    }
    EntryReset reset;
    const SettingAccounts& accounts = reset.accounts();
    if (accounts.numbers().empty()) {
        failWithoutDefaults("setting", output);
        return;
    }
    tellUnreadUserFile(accounts, output);
    const auto numbers = settingsToReset(choices, accounts, output);
    if (!numbers) {
        return;
    }
    std::vector<host::SettingInfo> before;
    for (const std::uint32_t number : *numbers) {
        before.push_back(accounts.info(number));
    }
    const host::SaveResult result = reset.cut(*numbers);
    tellReset(before, result, output);
    if (result.status == host::SaveResult::Status::Saved && !reset.hasTurn()) {
        tellMissingTurn(output);
    }
}

Work declareReset(CLI::App& arguments) {
    const auto choices = std::make_shared<ResetChoices>();
    addTexts(arguments, "NAME", choices->names, "Settings, by bare or full name; either these or --all");
    arguments.add_flag("--all", choices->all, "Reset everything that the user has set");
    return [choices](Output& output) { resetSettings(*choices, output); };
}

}  // namespace

const Subcommand kReset{"reset",
                        "Take settings out of the user's file, so that they have their shipped defaults again",
                        "$ zelutil reset grid\n"
                        "display::grids::grid: 0.25 -> 0.635\n"
                        "Saved in /home/ann/pcbenv/tessel/tessel_settings.cfg",
                        FindingsAre::BesideResult,
                        declareReset,
                        Completes::Settings};

}  // namespace zelutil::command
