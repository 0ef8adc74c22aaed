#include "host/save_plan.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "actions/observer_registry.h"
#include "host/action_state.h"
#include "host/unread_parts.h"
#include "json/document.h"
#include "json/writer.h"

namespace zelutil::host {
namespace {

/// What the section of the actions holds where the user has changed none.
constexpr std::string_view kNoEntries = "[]";

bool sayTheSame(std::string_view one, std::string_view other) {
    return one == other ||
           json::compactText(json::Document(one).root()) == json::compactText(json::Document(other).root());
}

std::optional<std::string_view> actionsIn(const SettingsPlan& plan) {
    if (!plan.fileKnown) {
        return std::nullopt;
    }
    return plan.actionsInFile ? std::string_view(*plan.actionsInFile) : std::string_view();
}

const std::set<int>& resetActionsIn(const SaveState& state, const actions::ActionCatalogue& actions) {
    static const std::set<int> none;
    return state.resetLoad == actions.loads() ? state.resetActions : none;
}

bool saysNothing(const SavePlan& plan) {
    const auto& sections = plan.settings.content.sections;
    const bool hasValues =
        std::any_of(sections.begin(), sections.end(), [](const auto& section) { return !section.values.empty(); });
    return !hasValues && plan.settings.content.kept.empty() && !plan.actions.anyEntry;
}

template <typename T>
void append(std::vector<T>& list, std::vector<T>& more) {
    list.insert(list.end(), std::make_move_iterator(more.begin()), std::make_move_iterator(more.end()));
}

/// Returns the actions that are not as the shipped text alone brings them about.
std::set<int> changedActions(const actions::ActionCatalogue& actions) {
    const actions::ObserverRegistry nobody;
    actions::ActionCatalogue shipped(nobody);
    shipped.load(actions.texts().defaults, "");
    const ActionState now = stateOf(actions);
    const ActionState then = stateOf(shipped);
    std::set<int> changed = differentKeys(now, then);
    changed.merge(differentFlags(now, then));
    return changed;
}

NotRestored withoutPlace(int action) {
    NotRestored named;
    named.action = action;
    named.obstacle = Obstacle::NoPlaceInFile;
    named.text = "Action " + std::to_string(action) +
                 " cannot be saved, because the shipped defaults have no section for actions.";
    return named;
}

}  // namespace

SavePlan planSave(const prefs::Catalogue& settings, const actions::ActionCatalogue& actions, const SaveState& state,
                  const SettingsRequest& request, std::optional<std::string_view> fileNow) {
    SavePlan plan;
    plan.settings = planSettings(settings, request, fileNow);
    plan.actions = planActions(actions, state.actions, actionsIn(plan.settings), resetActionsIn(state, actions));
    plan.hasPlaceForActions = !plan.settings.content.sectionsOfActions.empty();
    if (!plan.hasPlaceForActions) {
        plan.actionsWithoutPlace = changedActions(actions);
    }
    const std::string_view value = plan.actions.anyEntry ? std::string_view(plan.actions.text) : kNoEntries;
    const std::string_view valueInFile =
        plan.settings.actionsInFile ? std::string_view(*plan.settings.actionsInFile) : kNoEntries;
    plan.changesActions = plan.hasPlaceForActions && value != valueInFile;
    plan.text = fileText(plan.settings, value);
    plan.losesContent = plan.settings.losesContent || losesPartsOfActions(valueInFile, value);
    const bool isInFile = fileNow && plan.text && sayTheSame(*fileNow, *plan.text);
    plan.isToBeWritten = plan.text && !isInFile && (plan.settings.fileKnown || !saysNothing(plan));
    return plan;
}

void report(SavePlan& plan, SaveResult& result) {
    result.changedSettings = std::move(plan.settings.changedSettings);
    result.unknownSettings = std::move(plan.settings.unknownSettings);
    append(result.notRestored, plan.settings.notRestored);
    append(result.conflicts, plan.settings.conflicts);
    result.settingsOfOthers = std::move(plan.settings.settingsOfOthers);
    if (plan.hasPlaceForActions) {
        result.savedActions = std::move(plan.actions.savedActions);
        append(result.notRestored, plan.actions.notRestored);
        append(result.conflicts, plan.actions.conflicts);
        result.actionsOfOthers = std::move(plan.actions.ofOthers);
        return;
    }
    for (const int action : plan.actionsWithoutPlace) {
        result.notRestored.push_back(withoutPlace(action));
    }
}

}  // namespace zelutil::host
