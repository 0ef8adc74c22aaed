#include "host/action_restore.h"

#include "actions/action_text.h"
#include "actions/manager_access.h"
#include "host/action_aim_plan.h"
#include "host/action_entries.h"
#include "host/action_families.h"
#include "host/action_merge.h"
#include "host/action_obstacles.h"
#include "host/action_state.h"

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

ActionsBase baseOfLoad(const ActionCatalogue& current) {
    ActionsBase base;
    base.load = current.loads();
    base.fileText = current.texts().user;
    ActionState loaded = loadedState(current, base.fileText);
    base.inForce = loaded.values;
    base.aim = std::move(loaded.values);
    base.aimHolders = std::move(loaded.holders);
    return base;
}

/// Returns the aim where the file is known.
MergedActions mergeWith(std::string_view fileText, const ActionCatalogue& current, const ShippedActions& shipped,
                        const ActionsBase& before, const std::set<int>& touched) {
    const ActionsBase base = before.load == current.loads() ? before : baseOfLoad(current);
    const ActionState here = stateOf(current);
    const ActionState file = loadedState(current, fileText);
    const ActionState fileBefore = loadedState(current, base.fileText);
    return mergeActions(shipped, {here, base.inForce, {base.aim, base.aimHolders}, file, fileBefore, touched});
}

/// Whether the file still has the text that was planned for this aim.
bool isWritten(std::optional<std::string_view> fileText, const ActionState& aim, const ActionCatalogue& current,
               const ActionsBase& before) {
    return before.load == current.loads() && fileText == before.fileText && aim.values == before.aim &&
           aim.holders == before.aimHolders;
}

std::set<int> idsOf(const ShippedActions& shipped) {
    std::set<int> ids;
    for (const ShippedAction& action : shipped.inOrder()) {
        ids.insert(action.id);
    }
    return ids;
}

/// Returns the elements of the file for shipped actions, as far as a load reads them.
ActionEntries knownEntries(std::string_view userText, const ShippedActions& shipped) {
    ActionEntries entries;
    actions::UserEntryReader reader(userText);
    actions::UserEntry entry;
    while (reader.next(entry)) {
        if (shipped.find(entry.id) != nullptr) {
            entries.push_back({entry.id, std::nullopt, entry.inMenu});
            if (entry.shortcut) {
                entries.back().shortcut = std::string(*entry.shortcut);
            }
        }
    }
    return entries;
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

ActionsPlan planActions(const ActionCatalogue& current, const ActionsBase& before,
                        std::optional<std::string_view> fileText, const std::set<int>& touched,
                        std::size_t searchLoads) {
    const ShippedActions shipped(current.texts().defaults);
    MergedActions merged = fileText ? mergeWith(*fileText, current, shipped, before, touched)
                                    : MergedActions{stateOf(current), {}, {}, {}};
    const ActionEntries inFile = knownEntries(fileText.value_or(std::string_view()), shipped);
    AimPlan aimed = isWritten(fileText, merged.aim, current, before)
                        ? AimPlan{inFile, notRestoredBy(shipped, merged.aim, inFile)}
                        : planAim(shipped, merged.aim, merged.known, inFile, searchLoads);
    const std::string& fileBefore = before.load == current.loads() ? before.fileText : current.texts().user;
    ActionsPlan plan;
    setText(plan, aimed.entries, foreignEntries(fileText.value_or(fileBefore), idsOf(shipped)));
    plan.notRestored = std::move(aimed.notRestored);
    plan.conflicts = std::move(merged.conflicts);
    plan.ofOthers = std::move(merged.ofOthers);
    plan.base.load = current.loads();
    plan.base.inForce = stateOf(current).values;
    plan.base.aim = std::move(merged.aim.values);
    plan.base.aimHolders = std::move(merged.aim.holders);
    plan.base.fileText = plan.text;
    return plan;
}

RestorableText restorableActionsText(const UCPActionManager& manager) {
    const ActionCatalogue& catalogue = actions::ManagerAccess::catalogueOf(manager);
    ActionsPlan plan = planActions(catalogue, {}, std::nullopt);
    return {std::move(plan.text), std::move(plan.notRestored)};
}

}  // namespace zelutil::host
