// zelutil reset: gives settings their shipped defaults again, by taking their entries out of the user's file.
#include <algorithm>
#include <memory>

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
    bool areAllKnown = true;
    for (const std::string& name : choices.names) {
        const auto number = accounts.find(name);
        areAllKnown = areAllKnown && number;
        if (!number) {
            output.add(unknownSetting(name, accounts.names()));
        } else if (std::find(numbers.begin(), numbers.end(), *number) == numbers.end()) {
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
    if (!result.text.empty()) {
        output.fail(result.text, "Nothing was done. Try again once that is mended.");
        return;
    }
    std::vector<SettingChange> changes;
    for (const host::SettingInfo& setting : result.ok() ? before : std::vector<host::SettingInfo>()) {
        changes.push_back({setting, setting.defaultValue});
    }
    tellChanged(changes, result, output);
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
    tellReset(before, reset.cut(*numbers), output);
}

Work declareReset(CLI::App& arguments) {
    const auto choices = std::make_shared<ResetChoices>();
    addTexts(arguments, "NAME", choices->names, "Settings, by bare or full name");
    arguments.add_flag("--all", choices->all, "Reset everything that the user has set");
    return [choices](Output& output) { resetSettings(*choices, output); };
}

}  // namespace

const Subcommand kReset{"reset",
                        "Give settings their shipped defaults again and take them out of the user's file",
                        "$ zelutil reset grid",
                        FindingsAre::BesideResult,
                        declareReset,
                        Completes::Settings};

}  // namespace zelutil::command
