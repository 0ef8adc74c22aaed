// The rules for the user's text for the actions. What an entry does is asked of the library's own warnings at a start.
#include <set>
#include <string>
#include <unordered_map>
#include <vector>

#include "actions/action_catalogue.h"
#include "actions/action_text.h"
#include "actions/observer_registry.h"
#include "command/later_entry.h"
#include "command/lint/action_forms.h"
#include "command/lint/checks.h"
#include "command/lint/shortcut_spelling.h"
#include "host/action_warnings.h"
#include "json/writer.h"

namespace zelutil::lint {
namespace {

using json::View;

const ObjectForm& entryForm() {
    static const ObjectForm kForm{
        "an entry",
        {{kId, Type::IntegerFrom1, Need::Required},
         {kShortcut, Type::Text, Need::Optional, "This one counts as \"\", so it takes the action's shortcut away."},
         {kMenuFlag, Type::Truth, Need::Optional,
          "This one counts as false, so it takes the action out of the menu."}}};
    return kForm;
}

/// Returns the list in the one form that is read; absent, and reported, where it has another.
View listOf(View value, Report& report) {
    const json::Elements elements = value.elements();
    if (elements.size() == 1) {
        checkObject(*elements.begin(), actionListForm(), report);
    } else if (!value.isArray() || !elements.empty()) {
        const char* const what = value.isObject() ? "the bare object" : value.isArray() ? "several" : "something else";
        report.add(Rule::NotWrapped, value,
                   std::string("The user's actions must stand in an array of exactly one object, and here is ") + what +
                       ", so none is read and no shortcut or menu flag of the user's is in force.",
                   "Write [{\"actions\": [...]}].");
    }
    return actions::userEntriesOf(value);
}

/// Returns the entries that are read: those before the first one without an id, which is reported.
std::vector<View> readEntries(View list, Report& report) {
    std::vector<View> entries;
    for (const View entry : list.elements()) {
        if (actions::userEntryOf(entry).id < 1) {
            const std::size_t after = list.elements().size() - entries.size() - 1;
            report.add(Rule::EntriesWithoutId, entry,
                       "This entry has no id of 1 or more, so it and the " + std::to_string(after) +
                           " after it are not read.");
            break;
        }
        entries.push_back(entry);
    }
    return entries;
}

/// Tells what the library itself finds when it loads the entries.
class EntryFindings {
public:
    explicit EntryFindings(Report& report) : report_(report) {}

    /// Tells what a load of the user's value after the shipped object says.
    void tellAll(View shipped, View value) {
        const std::string text = json::compactText(shipped).value_or(std::string());
        for (const auto& finding : host::actionEntryFindings(catalogue_, text, value)) {
            tell(finding);
        }
    }

    bool isShortcutRefused(View entry) const { return refused_.count(placeOf(entry)) != 0; }

private:
    void tell(const host::ActionEntryFinding& finding) {
        using Kind = host::ActionEntryFinding::Kind;
        switch (finding.kind) {
            case Kind::UnknownAction:
                report_.add(Rule::UnknownAction, finding.entry.member(kId),
                            "There is no action " + std::to_string(finding.warning.action) + '.');
                return;
            case Kind::ShortcutRefused:
                refused_.insert(placeOf(finding.entry));
                return isChild(finding.warning.action) ? tellInVain(finding) : tellRefused(finding);
            case Kind::InVain:
                return tellInVain(finding);
            // The form tells more of these.
            case Kind::NotOfTheForm:
            case Kind::WithoutId:
            case Kind::SaysNothing:
            case Kind::NoText:
            case Kind::NoTruth:
                return;
        }
    }

    /// Whatever holds the shortcut, a child would not keep it.
    bool isChild(int id) const { return catalogue_.find(id)->parentId >= 1; }

    std::size_t placeOf(View entry) const {
        return report_.document().positionOf(entry).value_or(json::Position()).offset;
    }

    void tellRefused(const host::ActionEntryFinding& finding) {
        const View shortcut = finding.entry.member(kShortcut);
        const std::string holder = std::to_string(finding.warning.holder);
        report_.add(Rule::RefusedShortcut, shortcut,
                    "Action " + std::to_string(finding.warning.action) + " does not get " +
                        inQuotes(shortcut.text().value_or("")) + ": action " + holder + " has it by then.",
                    "Take it away first: {\"id\": " + holder + ", \"shortcut\": \"\"}.");
    }

    /// One finding tells of all that a child is given.
    void tellInVain(const host::ActionEntryFinding& finding) {
        if (children_.insert(finding.warning.action).second) {
            report_.add(Rule::ChildProperty, finding.entry.member(kId),
                        "Action " + std::to_string(finding.warning.action) +
                            " is a child and takes over the shortcut and the menu flag of its parent.",
                        "Write the entry for the parent.");
        }
    }

    Report& report_;
    const actions::ObserverRegistry nobody_;
    actions::ActionCatalogue catalogue_{nobody_};
    std::set<int> children_;
    /// The places of entries that do not get their shortcuts.
    std::set<std::size_t> refused_;
};

/// Looks for entries that give an action something else than an earlier one. To take a shortcut away first may be
/// necessary, and an entry may give the same again.
class RepeatedGifts {
public:
    explicit RepeatedGifts(Report& report) : report_(report) {}

    void see(View element, bool isShortcutRefused) {
        const actions::UserEntry entry = actions::userEntryOf(element);
        Last& last = lasts_[entry.id];
        if (entry.shortcut && !isShortcutRefused) {
            if (last.shortcut.text().value_or("") != "" && last.shortcut.text() != entry.shortcut) {
                tell(entry.id, last.shortcut, kShortcut, element.member(kShortcut));
            }
            last.shortcut = element.member(kShortcut);
        }
        if (entry.inMenu) {
            if (last.menuFlag && last.menuFlag.isTrue() != *entry.inMenu) {
                tell(entry.id, last.menuFlag, kMenuFlag, element.member(kMenuFlag));
            }
            last.menuFlag = element.member(kMenuFlag);
        }
    }

private:
    struct Last {
        View shortcut;
        View menuFlag;
    };

    void tell(int id, View earlier, std::string_view key, View later) {
        report_.addAtKey(Rule::RepeatedEntry, earlier, key,
                         command::nameOfLaterEntry(report_.keyPlaceOf(earlier), report_.keyPlaceOf(later)) +
                             " gives action " + std::to_string(id) + " another " +
                             (key == kShortcut ? "shortcut" : "menu flag") + ", and the last one counts.");
    }

    Report& report_;
    std::unordered_map<int, Last> lasts_;
};

void checkEntry(View entry, Report& report) {
    if (checkObject(entry, entryForm(), report) && !entry.member(kShortcut) && !entry.member(kMenuFlag)) {
        report.add(Rule::EmptyEntry, entry, "The entry has neither a shortcut nor a menu flag.");
    }
}

void addShortcuts(View list, bool areNeighbours, std::vector<WrittenShortcut>& shortcuts) {
    for (const View element : list.elements()) {
        const View shortcut = element.member(kShortcut);
        shortcuts.push_back({shortcut.text().value_or(std::string_view()), areNeighbours ? View() : shortcut});
    }
}

}  // namespace

void checkUserActions(View value, View shipped, Report& report) {
    const View list = listOf(value, report);
    const std::vector<View> entries = readEntries(list, report);
    for (const View entry : entries) {
        checkEntry(entry, report);
    }
    std::vector<WrittenShortcut> shortcuts;
    addShortcuts(list, false, shortcuts);
    addShortcuts(shipped.member(kActions), true, shortcuts);
    checkSpelling(shortcuts, report);
    EntryFindings findings(report);
    if (shipped) {
        findings.tellAll(shipped, value);
    }
    RepeatedGifts gifts(report);
    for (const View entry : entries) {
        gifts.see(entry, findings.isShortcutRefused(entry));
    }
}

}  // namespace zelutil::lint
