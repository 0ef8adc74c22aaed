#include "command/report/report_content.h"

#include <zelutil/host/start.h>

#include <algorithm>
#include <cstdint>
#include <set>
#include <utility>

#include "command/explain/setting_account.h"
#include "command/explain/unread_user_file.h"
#include "command/known_settings.h"
#include "command/lint/lint.h"
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

Stray strayOf(const UserEntry& entry) {
    return {entry.name, entry.value.value_or("(no text)"), entry.place.name, reasonOf(entry), entry.section};
}

void addWithoutEffect(const SettingAccount& account, std::vector<Stray>& strays) {
    for (const UserEntry& entry : account.entries) {
        if (entry.effect != UserEntry::Effect::InForce && entry.effect != UserEntry::Effect::SetsAnother) {
            strays.push_back(strayOf(entry));
        }
    }
}

/// Adds the members that no reader knows, as a misspelt list of a section.
void addUnknownMembers(const json::LocatedDocument& user, std::vector<Stray>& strays) {
    const lint::Source source(user.text());
    if (!user.valid() || source.kind() != lint::FileKind::User) {
        return;
    }
    for (const lint::Finding& finding : lint::lint(source, {nullptr, {lint::Rule::UnknownMember}})) {
        const std::size_t size = finding.end.offset - finding.begin.offset;
        // The quotes around the name are not told.
        std::string name(user.text().substr(finding.begin.offset, size));
        name.erase(std::remove(name.begin(), name.end(), '"'), name.end());
        strays.push_back({std::move(name), "", finding.begin, finding.message, ""});
    }
}

/// Orders them by their places; an entry that concerns two settings is told once.
void sortByPlace(std::vector<Stray>& strays) {
    std::stable_sort(strays.begin(), strays.end(),
                     [](const Stray& left, const Stray& right) { return left.at->offset < right.at->offset; });
    const auto isSame = [](const Stray& left, const Stray& right) { return left.at->offset == right.at->offset; };
    strays.erase(std::unique(strays.begin(), strays.end(), isSame), strays.end());
}

/// Adds what the start has found beside what is told already, as entries of actions.
void addWarned(std::vector<Stray>& strays) {
    using Kind = host::StartWarning::Kind;
    std::set<std::string> told;
    for (const Stray& stray : strays) {
        told.insert(stray.name);
        told.insert(stray.section);
    }
    for (const host::StartWarning& warning : host::startWarnings()) {
        const bool hasEffect = warning.kind == Kind::FileNotRead || warning.kind == Kind::EntryForAnotherSection;
        if (!hasEffect && (warning.name.empty() || told.count(warning.name) == 0)) {
            const std::string action = "Action " + std::to_string(warning.action);
            strays.push_back({warning.action != 0 ? action : warning.name, "", std::nullopt, warning.text, ""});
        }
    }
}

void addSettings(Content& content) {
    const SettingAccounts accounts;
    std::vector<Stray>& strays = content.strays;
    for (const std::uint32_t number : accounts.numbers()) {
        SettingAccount account = accounts.account(number);
        addWithoutEffect(account, strays);
        content.settings.push_back(settingOf(std::move(account)));
    }
    for (const UserEntry& entry : accounts.entriesWithoutSetting()) {
        strays.push_back(strayOf(entry));
    }
    addUnknownMembers(accounts.userDocument(), strays);
    sortByPlace(strays);
    addWarned(strays);
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

Content contentHere(std::atomic<std::size_t>& done) {
    Content content;
    content.diagnosis = diagnose();
    content.defaultsFile = pathOfStep(content.diagnosis, kDefaultsStep);
    content.userFile = pathOfStep(content.diagnosis, kUserFileReadStep);
    ++done;
    if (areDefaultsNamed()) {
        addSettings(content);
        content.isUserFileUnread = isUserFileUnread();
        ++done;
        addShortcuts(content);
    }
    done = kStepsToContent;
    return content;
}

}  // namespace zelutil::command::report
