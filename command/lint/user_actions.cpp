// The rules for the user's text for the actions. Its entries are applied to the library's own catalogue, one by one,
// and what a start would warn of is asked of the library's own warnings.
#include <map>
#include <string>

#include "actions/action_catalogue.h"
#include "command/lint/action_forms.h"
#include "command/lint/checks.h"
#include "command/lint/shortcut_spelling.h"
#include "host/action_warnings.h"
#include "json/writer.h"

namespace zelutil::lint {
namespace {

using actions::ActionCatalogue;
using json::View;

const ObjectForm& entryForm() {
    static const ObjectForm kForm{
        "an entry", {{kId, Type::IntegerFrom1, Need::Required}, {kShortcut, Type::Text}, {kMenuFlag, Type::Truth}}};
    return kForm;
}

/// Returns the list in the one form that is read; absent, and reported, where it has another.
View listOf(View value, Report& report) {
    const json::Elements elements = value.elements();
    if (value.isArray() && elements.empty()) {
        return {};
    }
    if (elements.size() != 1) {
        const char* const what = value.isObject() ? "the bare object" : value.isArray() ? "several" : "something else";
        report.add(Rule::NotWrapped, value,
                   std::string("The user's actions must stand in an array of exactly one object, and here is ") + what +
                       ", so none is read.",
                   "Write [{\"actions\": [...]}].");
        return {};
    }
    const View object = *elements.begin();
    return checkObject(object, actionListForm(), report) ? object.member(kActions) : View();
}

int idOf(View entry) { return entry.member(kId).integer().value_or(0); }

/// Returns how many entries are read: those before the first one without an id.
std::size_t checkIds(View list, Report& report) {
    std::size_t read = 0;
    for (const View entry : list.elements()) {
        if (idOf(entry) < 1) {
            const std::size_t after = list.elements().size() - read - 1;
            report.add(Rule::EntriesWithoutId, entry,
                       "This entry has no id of 1 or more, so it and the " + std::to_string(after) +
                           " after it are not read.");
            return read;
        }
        ++read;
    }
    return read;
}

class Applying {
public:
    Applying(ActionCatalogue& catalogue, Report& report) : catalogue_(catalogue), report_(report) {}

    void apply(View entry) {
        const int id = idOf(entry);
        if (catalogue_.find(id) == nullptr) {
            report_.add(Rule::UnknownAction, entry.member(kId), "There is no action " + std::to_string(id) + '.');
            return;
        }
        applyShortcut(id, entry.member(kShortcut));
        if (const View flag = entry.member(kMenuFlag)) {
            catalogue_.updateMenu(id, flag.isTrue());
        }
    }

private:
    void applyShortcut(int id, View value) {
        if (!value) {
            return;
        }
        const std::string shortcut(value.text().value_or(std::string_view()));
        if (const int holder = catalogue_.shortcutTakenBy(id, shortcut)) {
            report_.add(Rule::RefusedShortcut, value,
                        "Action " + std::to_string(id) + " does not get " + inQuotes(shortcut) + ": action " +
                            std::to_string(holder) + " has it by then.",
                        "Take it away first: {\"id\": " + std::to_string(holder) + ", \"shortcut\": \"\"}.");
        }
        catalogue_.updateShortcut(id, shortcut);
    }

    ActionCatalogue& catalogue_;
    Report& report_;
};

/// Looks for what children are given in vain. Not every entry for a child is: what it gives until children take over
/// from their parents may decide what others get. So the warnings of a start are asked.
class ChildEntries {
public:
    ChildEntries(View list, std::size_t read, Report& report) : report_(report) {
        for (const View entry : list.elements()) {
            if (read-- == 0) {
                break;
            }
            known_[idOf(entry)] += faultsOf(entry);
            last_[idOf(entry)] = entry;
        }
    }

    void run(const ActionCatalogue& catalogue, const std::string& shippedText, const std::string& userText) {
        for (const host::StartWarning& warning : host::actionWarnings(shippedText, userText)) {
            const ActionCatalogue::Action* const action = catalogue.find(warning.action);
            const bool isOfChild = action != nullptr && action->parentId > 0;
            if (isOfChild && warning.kind == host::StartWarning::Kind::EntryWithoutEffect &&
                known_[warning.action]-- == 0) {
                tell(*action);
            }
        }
    }

private:
    /// Counts what is wrong with the form of an entry, for which there is a warning each.
    static int faultsOf(View entry) {
        const View shortcut = entry.member(kShortcut);
        const View flag = entry.member(kMenuFlag);
        return (!shortcut && !flag ? 1 : 0) + (shortcut && !shortcut.text() ? 1 : 0) +
               (flag && !flag.isTruth() ? 1 : 0);
    }

    void tell(const ActionCatalogue::Action& action) {
        report_.add(Rule::ChildProperty, last_[action.id].member(kId),
                    "Action " + std::to_string(action.id) + " is a child of action " + std::to_string(action.parentId) +
                        ", whose shortcut and menu flag it takes over.",
                    "Write the entry for the parent.");
    }

    Report& report_;
    std::map<int, int> known_;
    std::map<int, View> last_;
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
    const std::size_t read = checkIds(list, report);
    std::size_t place = 0;
    for (const View entry : list.elements()) {
        if (place++ < read) {
            checkEntry(entry, report);
        }
    }
    std::vector<WrittenShortcut> shortcuts;
    addShortcuts(list, false, shortcuts);
    addShortcuts(shipped.member(kActions), true, shortcuts);
    checkSpelling(shortcuts, report);
    if (!shipped) {
        return;
    }
    const std::string shippedText = json::compactText(shipped).value_or("");
    const actions::ObserverRegistry nobody;
    ActionCatalogue catalogue(nobody);
    catalogue.loadAndEdit(shippedText, [&](ActionCatalogue& loading) {
        Applying applying(loading, report);
        std::size_t left = read;
        for (const View entry : list.elements()) {
            if (left-- == 0) {
                break;
            }
            applying.apply(entry);
        }
    });
    ChildEntries(list, read, report).run(catalogue, shippedText, json::compactText(value).value_or(""));
}

}  // namespace zelutil::lint
