#include "command/shortcuts/round_trip.h"

#include <zelutil/host/save.h>

#include <map>
#include <set>

#include "actions/action_text.h"
#include "actions/manager_access.h"
#include "actions/overwritable.h"
#include "command/shortcuts/wish_attempt.h"
#include "host/action_state.h"
#include "host/action_warnings.h"
#include "json/document.h"

namespace zelutil::shortcuts {
namespace {

using actions::ActionCatalogue;

/// Holds what the last entries for actions ask for.
struct Asked {
    std::map<int, std::string> shortcuts;
    std::map<int, bool> menuFlags;
};

/// Looks for entries in any form that somebody may have meant: in one object or several, with or without an array
/// around them or the member "actions", and also behind an element without an id.
void collectAsked(json::View value, Asked& asked) {
    for (const json::View element : value.elements()) {
        collectAsked(element, asked);
    }
    if (const json::View list = value.member("actions")) {
        collectAsked(list, asked);
        return;
    }
    const actions::UserEntry entry = actions::userEntryOf(value);
    if (entry.id > 0 && value.member("shortcut").text()) {
        asked.shortcuts[entry.id] = std::string(*entry.shortcut);
    }
    if (entry.id > 0 && value.member("rmb").isTruth()) {
        asked.menuFlags[entry.id] = *entry.inMenu;
    }
}

/// Returns the action if it can be wished something: it has no parent and is no stand-in.
const ActionCatalogue::Action* wishable(const ActionCatalogue& catalogue, int id) {
    const ActionCatalogue::Action* const action = catalogue.find(id);
    return action != nullptr && action->id != 0 && action->parentId == 0 ? action : nullptr;
}

Asked askedBy(const std::string& read, const UnreadActions& unread) {
    Asked asked;
    collectAsked(json::Document(read).root(), asked);
    for (const std::string& value : unread.values) {
        collectAsked(json::Document(value).root(), asked);
    }
    return asked;
}

void addUngranted(const ActionCatalogue& catalogue, const UnreadActions& unread, RoundTrip& trip) {
    const Asked asked = askedBy(catalogue.texts().user, unread);
    for (const auto& [id, shortcut] : asked.shortcuts) {
        if (wishable(catalogue, id) != nullptr && !isGranted(catalogue, {id, shortcut})) {
            trip.wishes.push_back({id, shortcut});
        }
    }
    for (const auto& [id, inMenu] : asked.menuFlags) {
        const ActionCatalogue::Action* const action = wishable(catalogue, id);
        if (action != nullptr && actions::effectiveValue(action->rmb) != inMenu) {
            trip.menuWishes[id] = inMenu;
        }
    }
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

RoundTrip roundTrip(const UCPActionManager& manager, const UnreadActions& unread) {
    const ActionCatalogue& catalogue = actions::ManagerAccess::catalogueOf(manager);
    RoundTrip trip;
    trip.withoutEffect = host::actionWarnings(catalogue.texts().defaults, catalogue.texts().user);
    trip.withoutEffect.insert(trip.withoutEffect.begin(), unread.warnings.begin(), unread.warnings.end());
    addUngranted(catalogue, unread, trip);
    trip.cure = planWhatCanBe(catalogue, trip.wishes);
    host::RestorableText text = host::restorableActionsText(manager);
    trip.notRestored = std::move(text.notRestored);
    trip.text = std::move(text.text);
    trip.lostByOldCalls = lostByOldCalls(manager, catalogue);
    return trip;
}

}  // namespace zelutil::shortcuts
