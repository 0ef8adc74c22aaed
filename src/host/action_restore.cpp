#include "host/action_restore.h"

#include "actions/manager_access.h"
#include "host/action_aim_plan.h"
#include "host/action_entries.h"
#include "host/action_families.h"
#include "host/action_merge.h"
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
    base.inForce = loadedState(current, base.fileText).values;
    base.aim = base.inForce;
    return base;
}

/// Returns the aim where the file is known.
MergedActions mergeWith(std::string_view fileText, const ActionCatalogue& current, const ShippedActions& shipped,
                        const ActionsBase& before, const std::set<int>& touched) {
    const ActionsBase base = before.load == current.loads() ? before : baseOfLoad(current);
    const ActionState here = stateOf(current);
    const ActionState file = loadedState(current, fileText);
    const ActionValuesById fileBefore = loadedState(current, base.fileText).values;
    return mergeActions(shipped, {here, base.inForce, base.aim, file, fileBefore, touched});
}

std::set<int> idsOf(const ShippedActions& shipped) {
    std::set<int> ids;
    for (const ShippedAction& action : shipped.inOrder()) {
        ids.insert(action.id);
    }
    return ids;
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
    MergedActions merged =
        fileText ? mergeWith(*fileText, current, shipped, before, touched) : MergedActions{stateOf(current), {}, {}};
    AimPlan aimed = planAim(shipped, merged.aim, searchLoads);
    const std::string& fileBefore = before.load == current.loads() ? before.fileText : current.texts().user;
    ActionsPlan plan;
    setText(plan, aimed.entries, foreignEntries(fileText.value_or(fileBefore), idsOf(shipped)));
    plan.notRestored = std::move(aimed.notRestored);
    plan.conflicts = std::move(merged.conflicts);
    plan.ofOthers = std::move(merged.ofOthers);
    plan.base.load = current.loads();
    plan.base.inForce = stateOf(current).values;
    plan.base.aim = std::move(merged.aim.values);
    plan.base.fileText = plan.text;
    return plan;
}

RestorableText restorableActionsText(const UCPActionManager& manager) {
    const ActionCatalogue& catalogue = actions::ManagerAccess::catalogueOf(manager);
    ActionsPlan plan = planActions(catalogue, {}, std::nullopt);
    return {std::move(plan.text), std::move(plan.notRestored)};
}

}  // namespace zelutil::host
