#include "host/save_state.h"

#include <utility>

#include "host/save_plan.h"
#include "util/process_wide.h"

namespace zelutil::host {
namespace {

/// Returns what the file of the start had for the actions. A text that a host has loaded since is not in the file.
std::string actionsTextAtStart(const prefs::Catalogue& settings) {
    const auto text = settings.userSubManagerTexts().find(prefs::SubManagerType::Actions);
    return text == settings.userSubManagerTexts().end() ? std::string() : text->second;
}

}  // namespace

SaveState& saveState() {
    static ProcessWide<SaveState> state([] { return new SaveState; });
    return state.get();
}

void bringUpToDate(prefs::Catalogue& settings, const actions::ActionCatalogue& actions,
                   const prefs::UserSettingsFile& file) {
    SaveState& state = saveState();
    if (!state.path) {
        state.actions = baseOfFile(actionsTextAtStart(settings));
        state.path = file.pathAtStart();
    }
    if (auto written = settings.handedOver().takeActions()) {
        state.actions = baseAfterOldSave(actions, state.actions, std::move(written->text), written->isHosts);
        state.path = std::move(written->path);
    }
}

void forgetOtherFile(prefs::Catalogue& settings, const prefs::UserSettingsFile& file, const std::string& path,
                     const std::optional<std::string>& textNow) {
    SaveState& state = saveState();
    if (state.path != path && !(textNow && file.knows(*textNow))) {
        settings.restartJournalForUnknownFile();
        state.actions = baseOfFile({});
    }
}

void remember(prefs::Catalogue& settings, SavePlan& plan, std::optional<std::string> path) noexcept {
    SaveState& state = saveState();
    settings.restartJournal(std::move(plan.settings.journal));
    settings.handedOver().settle();
    if (plan.savesActions) {
        state.actions = std::move(plan.actions.base);
        state.resetActions.clear();
    }
    if (path) {
        state.path = std::move(path);
    }
}

void rememberReset(const actions::ActionCatalogue& actions, std::set<int> touched) {
    SaveState& state = saveState();
    if (state.resetLoad != actions.loads()) {
        state.resetActions.clear();
        state.resetLoad = actions.loads();
    }
    state.resetActions.merge(touched);
}

}  // namespace zelutil::host
