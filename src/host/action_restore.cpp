#include "host/action_restore.h"

#include "actions/action_text.h"
#include "actions/manager_access.h"
#include "host/action_aim_plan.h"
#include "host/action_entries.h"
#include "host/action_families.h"
#include "host/action_merge.h"
#include "host/action_obstacles.h"
#include "host/action_state.h"
#include "host/ungranted_entries.h"

#include <algorithm>
#include <map>
#include <utility>

#include <zelutil/host/save.h>

namespace zelutil::host {
namespace {

using actions::ActionCatalogue;

ActionState loadedState(const ActionCatalogue& current, std::string_view userText) {
    const actions::ObserverRegistry nobody;
    ActionCatalogue catalogue(nobody);
    catalogue.load(current.texts().defaults, userText);
    return stateOf(catalogue);
}

const std::string& fileTextOf(const ActionsBase& base, const ActionCatalogue& current) {
    return base.fileText ? *base.fileText : current.texts().user;
}

/// Returns a base that holds for the last load.
ActionsBase wholeBase(const ActionCatalogue& current, const ActionsBase& before) {
    if (before.fileText && before.load == current.loads()) {
        return before;
    }
    ActionsBase base;
    base.load = current.loads();
    base.fileText = fileTextOf(before, current);
    ActionState loaded = loadedState(current, *base.fileText);
    base.inForce = loaded.values;
    base.aim = std::move(loaded.values);
    base.aimHolders = std::move(loaded.holders);
    return base;
}

/// Has the base share one property of an action with the file, in which this process changed it. Where the file is
/// still to get what another process saved, only a new value that a host `gave` is a change; what a load makes of the
/// host's text may be another value, since a load can refuse a shortcut.
template <typename T>
void share(T ActionValues::*property, const ActionValues& written, const ActionValues& before,
           const std::optional<T>& gave, ActionValues& inForce, ActionValues& aim) {
    const bool isPending = inForce.*property != aim.*property;
    const bool isNew = gave && *gave != inForce.*property;
    if (written.*property != before.*property && (!isPending || isNew)) {
        inForce.*property = written.*property;
        aim.*property = written.*property;
    }
}

/// Returns who is to hold a shortcut: by the text where the action has what the text gives it, else as before.
std::map<ActionState::Place, int> heldIn(const ActionState& written, const ActionsBase& base) {
    const auto isAsWritten = [&](int id) {
        const auto aim = base.aim.find(id);
        const auto found = written.values.find(id);
        return aim != base.aim.end() && found != written.values.end() && aim->second.shortcut == found->second.shortcut;
    };
    std::map<ActionState::Place, int> holders;
    for (const auto& [place, id] : written.holders) {
        if (isAsWritten(id)) {
            holders.emplace(place, id);
        }
    }
    for (const auto& [place, id] : base.aimHolders) {
        if (!isAsWritten(id)) {
            holders.emplace(place, id);
        }
    }
    return holders;
}

/// Returns the aim where the file is known.
MergedActions mergeWith(const ActionState& file, const ActionCatalogue& current, const ShippedActions& shipped,
                        const ActionsBase& before, const std::set<int>& touched) {
    const ActionsBase base = wholeBase(current, before);
    const ActionState here = stateOf(current);
    const ActionState fileBefore = loadedState(current, *base.fileText);
    return mergeActions(shipped, {here, base.inForce, {base.aim, base.aimHolders}, file, fileBefore, touched});
}

/// Whether the file still has the text that was planned for this aim.
bool isWritten(std::optional<std::string_view> fileText, const ActionState& aim, const ActionCatalogue& current,
               const ActionsBase& before) {
    return before.isPlanned && before.load == current.loads() && fileText && fileText == before.fileText &&
           aim.values == before.aim && aim.holders == before.aimHolders;
}

std::set<int> idsOf(const ShippedActions& shipped) {
    std::set<int> ids;
    for (const ShippedAction& action : shipped.inOrder()) {
        ids.insert(action.id);
    }
    return ids;
}

/// Returns the elements of a user's text, as far as a load reads them.
ActionEntries entriesOf(std::string_view userText) {
    ActionEntries entries;
    actions::UserEntryReader reader(userText);
    actions::UserEntry entry;
    while (reader.next(entry)) {
        entries.push_back({entry.id, std::nullopt, entry.inMenu});
        if (entry.shortcut) {
            entries.back().shortcut = std::string(*entry.shortcut);
        }
    }
    return entries;
}

/// Returns those for shipped actions.
ActionEntries knownEntries(std::string_view userText, const ShippedActions& shipped) {
    ActionEntries entries = entriesOf(userText);
    entries.erase(std::remove_if(entries.begin(), entries.end(),
                                 [&](const ActionEntry& entry) { return shipped.find(entry.id) == nullptr; }),
                  entries.end());
    return entries;
}

/// Returns the last element for each action.
std::map<int, ActionEntry> lastEntries(std::string_view userText) {
    std::map<int, ActionEntry> last;
    for (ActionEntry& entry : entriesOf(userText)) {
        last[entry.id] = std::move(entry);
    }
    return last;
}

void setText(ActionsPlan& plan, const ActionEntries& entries, const std::vector<ForeignEntry>& foreign) {
    plan.text = userTextOf(entries, foreign);
    plan.anyEntry = !entries.empty() || !foreign.empty();
    std::set<int> saved;
    for (const ActionEntry& entry : entries) {
        saved.insert(entry.id);
    }
    for (const ForeignEntry& entry : foreign) {
        saved.insert(entry.id);
    }
    plan.savedActions.assign(saved.begin(), saved.end());
}

}  // namespace

ActionsBase baseOfFile(std::string fileText) {
    ActionsBase base;
    base.fileText = std::move(fileText);
    return base;
}

ActionsBase baseAfterOldSave(const ActionCatalogue& current, const ActionsBase& before, std::string text,
                             bool isHosts) {
    ActionsBase base = wholeBase(current, before);
    const ActionValuesById fileBefore = loadedState(current, *base.fileText).values;
    const ActionState state = loadedState(current, text);
    const auto given = isHosts ? lastEntries(text) : std::map<int, ActionEntry>();
    for (const auto& [id, written] : state.values) {
        const auto known = fileBefore.find(id);
        const ActionValues inFileBefore = known == fileBefore.end() ? ActionValues() : known->second;
        const auto entry = given.find(id);
        const ActionEntry gave = entry == given.end() ? ActionEntry() : entry->second;
        share(&ActionValues::shortcut, written, inFileBefore, gave.shortcut, base.inForce[id], base.aim[id]);
        share(&ActionValues::inMenu, written, inFileBefore, gave.inMenu, base.inForce[id], base.aim[id]);
    }
    base.aimHolders = heldIn(state, base);
    base.isPlanned = false;
    base.fileText = std::move(text);
    return base;
}

bool bringAboutTheSame(const ActionCatalogue& current, std::string_view one, std::string_view other) {
    if (one == other) {
        return true;
    }
    const ActionState first = loadedState(current, one);
    const ActionState second = loadedState(current, other);
    return first.values == second.values && first.holders == second.holders;
}

ActionsPlan planActions(const ActionCatalogue& current, const ActionsBase& before,
                        std::optional<std::string_view> fileText, const std::set<int>& touched,
                        std::size_t searchLoads) {
    const ShippedActions shipped(current.texts().defaults);
    const ActionState file = fileText ? loadedState(current, *fileText) : ActionState();
    MergedActions merged =
        fileText ? mergeWith(file, current, shipped, before, touched) : MergedActions{stateOf(current), {}, {}, {}};
    const ActionEntries inFile = knownEntries(fileText.value_or(std::string_view()), shipped);
    AimPlan aimed = isWritten(fileText, merged.aim, current, before)
                        ? AimPlan{inFile, notRestoredBy(shipped, merged.aim, inFile)}
                        : planAim(shipped, merged.aim, merged.known, inFile, searchLoads);
    const std::string& fileBefore = fileTextOf(before, current);
    const ActionEntries ungranted = ungrantedEntries(shipped, inFile, file, merged.known.shortcutChangedHere);
    ActionsPlan plan;
    plan.losesEntries = !keepUngranted(current, ungranted, aimed.entries);
    setText(plan, aimed.entries, foreignEntries(fileText.value_or(fileBefore), idsOf(shipped)));
    plan.notRestored = std::move(aimed.notRestored);
    plan.conflicts = std::move(merged.conflicts);
    plan.ofOthers = std::move(merged.ofOthers);
    plan.base.load = current.loads();
    plan.base.isPlanned = true;
    plan.base.inForce = stateOf(current).values;
    plan.base.aim = std::move(merged.aim.values);
    plan.base.aimHolders = std::move(merged.aim.holders);
    plan.base.fileText = plan.text;
    return plan;
}

bool keepTextOfFile(ActionsPlan& plan, const ActionCatalogue& current, std::string_view fileText,
                    const std::set<int>& touched) {
    std::set<int> inFile;
    for (const ActionEntry& entry : entriesOf(fileText)) {
        inFile.insert(entry.id);
    }
    const bool hasTouched = std::any_of(inFile.begin(), inFile.end(), [&](int id) { return touched.count(id) != 0; });
    if (hasTouched || !bringAboutTheSame(current, plan.text, fileText)) {
        return false;
    }
    if (!fileText.empty()) {
        plan.text = fileText;
        plan.savedActions.assign(inFile.begin(), inFile.end());
        plan.base.fileText = plan.text;
        plan.base.isPlanned = false;
    }
    plan.losesEntries = false;
    return true;
}

RestorableText restorableActionsText(const UCPActionManager& manager) {
    const ActionCatalogue& catalogue = actions::ManagerAccess::catalogueOf(manager);
    ActionsPlan plan = planActions(catalogue, {}, std::nullopt);
    return {std::move(plan.text), std::move(plan.notRestored)};
}

}  // namespace zelutil::host
