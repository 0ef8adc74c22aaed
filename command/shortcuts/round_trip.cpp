#include "command/shortcuts/round_trip.h"

#include <zelutil/host/save.h>

#include <map>
#include <set>

#include "actions/action_text.h"
#include "actions/manager_access.h"
#include "actions/overwritable.h"
#include "host/action_state.h"
#include "host/action_warnings.h"
#include "json/document.h"

namespace zelutil::shortcuts {
namespace {

using actions::ActionCatalogue;

/// Returns the user's text in the form that is read, which an object alone is not.
std::string inReadForm(const std::string& userText) {
    return json::Document(userText).root().isObject() ? "[" + userText + "]" : userText;
}

/// Returns what the last entry for an action asks for, where the action has another shortcut.
std::vector<KeyWish> ungranted(const ActionCatalogue& catalogue) {
    std::map<int, std::string> asked;
    const std::string userText = inReadForm(catalogue.texts().user);
    actions::UserEntryReader reader(userText);
    for (actions::UserEntry entry; reader.next(entry);) {
        if (entry.shortcut) {
            asked[entry.id] = std::string(*entry.shortcut);
        }
    }
    std::vector<KeyWish> wishes;
    for (const auto& [id, shortcut] : asked) {
        const ActionCatalogue::Action* const action = catalogue.find(id);
        if (action != nullptr && action->id != 0 && action->parentId == 0 &&
            actions::effectiveValue(action->shortcut) != shortcut) {
            wishes.push_back({id, shortcut});
        }
    }
    return wishes;
}

/// An empty text is not handed over by such a host, so the file keeps the one that it has.
std::vector<int> lostByOldCalls(const UCPActionManager& manager, const ActionCatalogue& catalogue) {
    const std::string handed = manager.getAllUserSettings();
    if (handed.empty()) {
        return {};
    }
    const actions::ObserverRegistry nobody;
    ActionCatalogue next(nobody);
    next.load(catalogue.texts().defaults, "[" + handed + "]");
    const host::ActionState now = host::stateOf(catalogue);
    const host::ActionState then = host::stateOf(next);
    std::set<int> lost = host::differentKeys(now, then);
    const std::set<int> flags = host::differentFlags(now, then);
    lost.insert(flags.begin(), flags.end());
    return {lost.begin(), lost.end()};
}

}  // namespace

RoundTrip roundTrip(const UCPActionManager& manager) {
    const ActionCatalogue& catalogue = actions::ManagerAccess::catalogueOf(manager);
    RoundTrip trip;
    trip.withoutEffect = host::actionWarnings(catalogue.texts().defaults, catalogue.texts().user);
    trip.wishes = ungranted(catalogue);
    trip.cure = planWishes(catalogue, trip.wishes);
    host::RestorableText text = host::restorableActionsText(manager);
    trip.notRestored = std::move(text.notRestored);
    trip.text = std::move(text.text);
    trip.lostByOldCalls = lostByOldCalls(manager, catalogue);
    return trip;
}

}  // namespace zelutil::shortcuts
