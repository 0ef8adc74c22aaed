#include "host/save_plan.h"

#include <iterator>
#include <utility>

#include "actions/observer_registry.h"
#include "host/action_state.h"
#include "host/unread_parts.h"
#include "json/document.h"
#include "json/writer.h"
#include "prefs/section_walk.h"

namespace zelutil::host {
namespace {

/// The section of the actions holds this where the user has changed none.
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

bool saysNothing(const SavePlan& plan, std::string_view actionsValue) {
    const UserFileContent& content = plan.settings.content;
    // They have a value in any case.
    const std::set<std::size_t> ofActions(content.sectionsOfActions.begin(), content.sectionsOfActions.end());
    for (std::size_t place = 0; place < content.sections.size(); ++place) {
        const prefs::SavedSection& section = content.sections[place];
        if (!section.values.empty() || !section.kept.empty() ||
            (ofActions.count(place) == 0 && prefs::hasEntries(section.subManagerValue))) {
            return false;
        }
    }
    return content.kept.empty() && (ofActions.empty() || actionsValue == kNoEntries);
}

std::string_view viewOrEmpty(const std::optional<std::string>& text) { return text ? std::string_view(*text) : ""; }

/// Returns what the sections of the actions are to hold. One that is there and says nothing stays as it is.
std::string_view valueOfActions(const SavePlan& plan, const SaveState& state) {
    const std::optional<std::string>& inFile = plan.settings.actionsInFile;
    if (!plan.savesActions) {
        const std::string_view known = viewOrEmpty(plan.settings.fileKnown ? inFile : state.actions.fileText);
        return known.empty() ? kNoEntries : known;
    }
    return plan.actions.anyEntry || inFile == plan.actions.text ? std::string_view(plan.actions.text) : kNoEntries;
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
    plan.savesActions = !actions.isLoading();
    bool isNothingReset = false;
    if (plan.savesActions) {
        const std::set<int>& touched = resetActionsIn(state, actions);
        plan.actions = planActions(actions, state.actions, actionsIn(plan.settings), touched);
        isNothingReset = request.followsResetOfActions && plan.settings.fileKnown &&
                         keepTextOfFile(plan.actions, actions, viewOrEmpty(plan.settings.actionsInFile), touched);
    }
    plan.hasPlaceForActions = !plan.settings.content.sectionsOfActions.empty();
    if (!plan.hasPlaceForActions && plan.savesActions) {
        plan.actionsWithoutPlace = changedActions(actions);
    }
    const std::string_view value = valueOfActions(plan, state);
    plan.changesActions = plan.hasPlaceForActions && plan.savesActions &&
                          !bringAboutTheSame(actions, value, viewOrEmpty(plan.settings.actionsInFile));
    plan.text = fileText(plan.settings, value);
    plan.losesActions =
        plan.actions.losesEntries || losesPartsOfActions(viewOrEmpty(plan.settings.actionsInFile), value);
    plan.losesContent = plan.settings.losesContent || plan.losesActions;
    const bool isInFile =
        (isNothingReset && !plan.settings.changesValues) || (fileNow && plan.text && sayTheSame(*fileNow, *plan.text));
    // One that is no JSON is replaced, after a copy was kept: else what was reset here would be back once it is mended.
    const bool isNoJson = fileNow && !fileNow->empty() && !plan.settings.fileKnown;
    plan.isToBeWritten = plan.text && !isInFile && (plan.settings.fileKnown || isNoJson || !saysNothing(plan, value));
    return plan;
}

void report(SavePlan& plan, SaveResult& result) {
    result.changedSettings = std::move(plan.settings.changedSettings);
    result.unknownSettings = std::move(plan.settings.unknownSettings);
    append(result.notRestored, plan.settings.notRestored);
    append(result.conflicts, plan.settings.conflicts);
    result.settingsOfOthers = std::move(plan.settings.settingsOfOthers);
    if (!plan.savesActions) {
        return;
    }
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
