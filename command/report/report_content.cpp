#include "command/report/report_content.h"

#include <cstdint>
#include <utility>

#include "command/explain/setting_account.h"
#include "command/known_settings.h"
#include "command/sheet/sheet_rows.h"
#include "command/shortcuts/key_conflicts.h"
#include "command/text.h"

namespace zelutil::command::report {
namespace {

std::string pathOfStep(const Diagnosis& diagnosis, const char* name) {
    const std::string& result = diagnosis.step(name).result;
    return result.empty() ? result : nativeOrAsItStands(result);
}

/// Returns why entries that concern the setting do not set it.
std::vector<std::string> notesOn(const SettingAccount& account) {
    std::vector<std::string> notes;
    for (const UserEntry& entry : account.entries) {
        if (entry.effect != UserEntry::Effect::InForce) {
            notes.push_back("Line " + std::to_string(entry.place.name.line) +
                            " of the user's file: " + reasonOf(entry));
        }
    }
    for (const SettingAccount::Namesake& repetition : account.repetitions) {
        notes.push_back("Line " + std::to_string(repetition.place.name.line) +
                        " of the defaults defines it again, without effect.");
    }
    return notes;
}

Setting settingOf(SettingAccount account) {
    Setting setting;
    setting.definedAt = account.definition.name;
    if (const UserEntry* const entry = account.entryInForce()) {
        setting.setAt = entry->place.name;
    }
    setting.notes = notesOn(account);
    setting.info = std::move(account.info);
    return setting;
}

void addSettings(Content& content) {
    const SettingAccounts accounts;
    for (const std::uint32_t number : accounts.numbers()) {
        content.settings.push_back(settingOf(accounts.account(number)));
    }
    for (const UserEntry& entry : accounts.entriesWithoutSetting()) {
        content.strays.push_back({entry.name, entry.value.value_or("(no text)"), entry.place.name, reasonOf(entry)});
    }
    content.sections = host::sectionsInFileOrder();
}

Conflict conflictOf(const shortcuts::KeyConflict& conflict, const std::vector<shortcuts::ShortcutRow>& rows) {
    const shortcuts::ShortcutRow* const row = shortcuts::findRow(rows, conflict.action);
    const std::string name = row == nullptr ? std::string() : sheet::nameOf(*row, rows);
    return {conflict.shortcut, conflict.context, name + " (" + std::to_string(conflict.action) + ')',
            effectOf(conflict)};
}

void addShortcuts(Content& content) {
    content.actions = shortcuts::shortcutTable();
    for (const shortcuts::KeyConflict& conflict : shortcuts::keyConflicts(content.actions)) {
        content.conflicts.push_back(conflictOf(conflict, content.actions));
    }
}

}  // namespace

Content contentHere() {
    Content content;
    content.diagnosis = diagnose();
    content.defaultsFile = pathOfStep(content.diagnosis, kDefaultsStep);
    content.userFile = pathOfStep(content.diagnosis, kUserFileReadStep);
    if (areDefaultsNamed()) {
        addSettings(content);
        addShortcuts(content);
    }
    return content;
}

}  // namespace zelutil::command::report
