// zelutil reset: gives settings their shipped defaults again, by taking their entries out of the user's file, and
// actions their shipped shortcuts, by the same or by the library's own reset.
#include <zelutil/host/save.h>

#include <algorithm>
#include <charconv>
#include <memory>
#include <unordered_set>
#include <utility>

#include "command/arguments.h"
#include "command/explain/entry_reset.h"
#include "command/explain/unread_user_file.h"
#include "command/known_settings.h"
#include "command/saved_settings.h"
#include "command/shortcuts/action_reset.h"
#include "command/shortcuts/known_shortcuts.h"
#include "command/shortcuts/shortcut_changes.h"
#include "command/subcommands/table.h"
#include "prefs/preference_files.h"

namespace zelutil::command {
namespace {

struct ResetChoices {
    std::vector<std::string> names;
    bool all = false;
    bool shortcuts = false;
};

/// Returns the numbers of the settings that are to be reset, each once; nothing where a name is unknown.
std::optional<std::vector<std::uint32_t>> settingsToReset(const ResetChoices& choices, const SettingAccounts& accounts,
                                                          Output& output) {
    std::vector<std::uint32_t> numbers;
    std::unordered_set<std::uint32_t> known;
    std::optional<UnknownSettings> unknown;
    for (const std::string& name : choices.names) {
        const auto number = accounts.find(name);
        if (!number) {
            if (!unknown) {
                unknown.emplace(accounts.names());
            }
            output.add(unknown->finding(name));
        } else if (known.insert(*number).second) {
            numbers.push_back(*number);
        }
    }
    if (unknown) {
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
        changes.push_back({setting, setting.defaultValue, false});
    }
    // A file that is not there, or is not read, is not written.
    tellChanged(changes, {}, result, output, result.text);
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
    if (accounts.userFile().isUnread) {
        tellUnreadUserFile(accounts, output);
    }
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

// --- Shortcuts ------------------------------------------------------------------------------------------------------

std::vector<int> idsOf(const std::vector<std::string>& texts) {
    std::vector<int> ids;
    for (const std::string& text : texts) {
        int id = 0;
        const char* const end = text.data() + text.size();
        if (std::from_chars(text.data(), end, id).ptr != end || id < 1) {
            throw UsageError('"' + text + "\" is no id of an action.");
        }
        ids.push_back(id);
    }
    return ids;
}

/// Returns whether each of the actions can be reset, and tells of those that cannot.
bool areResettable(const std::vector<int>& ids, const shortcuts::KnownShortcuts& known, Output& output) {
    bool areAll = true;
    for (const int id : ids) {
        const shortcuts::ShortcutRow* const row = findRow(known.rows(), id);
        const int parent = row == nullptr ? 0 : row->action.item.parent_id;
        areAll = areAll && row != nullptr && parent < 1;
        if (row == nullptr) {
            output.add({Severity::Error, "There is no action " + std::to_string(id) + '.',
                        "\"zelutil shortcuts\" shows all.", std::nullopt});
        } else if (parent >= 1) {
            output.add(
                {Severity::Error,
                 "Action " + labelOf(known.rows(), id) + " follows its parent and has nothing of its own to reset.",
                 "Name its parent, action " + labelOf(known.rows(), parent) + '.', std::nullopt});
        }
    }
    if (!areAll) {
        output.add({Severity::Note, "Nothing was done.", "", std::nullopt});
    }
    return areAll;
}

/// Returns the ids of the shipped actions; one that stands in for a missing parent has none.
std::vector<int> idsOfAll(const std::vector<shortcuts::ShortcutRow>& rows) {
    std::vector<int> ids;
    for (const shortcuts::ShortcutRow& row : rows) {
        if (row.action.item.id > 0) {
            ids.push_back(row.action.id);
        }
    }
    return ids;
}

void resetKeys(const std::vector<int>& ids, bool isAll, const shortcuts::KnownShortcuts& known, Output& output) {
    const BeforeSave places = lookBeforeSave();
    shortcuts::ActionReset done = shortcuts::resetActions(ids);
    const std::vector<host::NotRestored> refused = std::exchange(done.save.notRestored, {});
    tellSavedShortcuts(known.rows(), places, done.save, output, done.reason);
    if (done.save.ok()) {
        shortcuts::ResetTold told{{ids.begin(), ids.end()}, isAll, {}};
        for (const host::NotRestored& one : refused) {
            told.refused.insert(one.action);
        }
        tellRefused(refused, told, output);
        tellWhoRuns(known.rows(), told, output);
    }
    if (done.save.status == host::SaveResult::Status::Saved && !done.hasTurn) {
        tellMissingTurn(output);
    }
}

void resetShortcuts(const ResetChoices& choices, Output& output) {
    const std::vector<int> ids = idsOf(choices.names);
    if (choices.all != ids.empty()) {
        throw UsageError("A reset of shortcuts takes either ids of actions or --all.");
    }
    const shortcuts::KnownShortcuts known(output);
    if (known.areThere() && isUserFileUnread()) {
        output.fail("Nothing can be taken out of the user's file, because it is not read.",
                    isOutOfReach(prefs::userFilePath())
                        ? adviceOnUserPath(prefs::userFilePath())
                        : "Mend it first: \"zelutil doctor\" says what is wrong with it.");
    } else if (known.areThere() && areResettable(ids, known, output)) {
        resetKeys(choices.all ? idsOfAll(known.rows()) : ids, choices.all, known, output);
    }
}

void reset(const ResetChoices& choices, Output& output) {
    choices.shortcuts ? resetShortcuts(choices, output) : resetSettings(choices, output);
}

Work declareReset(CLI::App& arguments) {
    const auto choices = std::make_shared<ResetChoices>();
    addTexts(arguments, "NAME", choices->names,
             "Settings, by bare or full name, or with --shortcuts ids of actions; either these or --all");
    arguments.add_flag("--all", choices->all, "Reset all settings, or with --shortcuts all actions");
    arguments.add_flag("--shortcuts", choices->shortcuts,
                       "Give actions their shipped shortcuts and menu flags again, and no settings");
    return [choices](Output& output) { reset(*choices, output); };
}

}  // namespace

const Subcommand kReset{"reset",
                        "Give settings, or actions their shortcuts, as they are shipped, again",
                        "$ zelutil reset grid\n"
                        "display::grids::grid: 0.25 -> 0.635\n"
                        "Saved in /home/ann/pcbenv/tessel/tessel_settings.cfg\n"
                        "$ zelutil reset --shortcuts 1\n"
                        "1 ucpedit design new: Ctrl+K -> Ctrl+N\n"
                        "Saved in /home/ann/pcbenv/tessel/tessel_settings.cfg",
                        FindingsAre::BesideResult,
                        declareReset,
                        Completes::Settings};

}  // namespace zelutil::command
