#include "command/shortcuts/action_reset.h"

#include <zelutil/actions/action_manager.h>
#include <zelutil/host/save.h>

#include <algorithm>
#include <cstdint>
#include <functional>
#include <set>
#include <unordered_set>
#include <utility>

#include "actions/action_text.h"
#include "actions/manager_access.h"
#include "actions/observer_registry.h"
#include "command/explain/entry_cut.h"
#include "command/explain/entry_reset.h"
#include "command/obstacle_advice.h"
#include "command/shortcuts/known_shortcuts.h"
#include "command/shortcuts/shortcut_changes.h"
#include "host/action_families.h"
#include "host/action_reset.h"
#include "json/writer.h"
#include "prefs/preference_files.h"

namespace zelutil::shortcuts {
namespace {

using command::Finding;
using command::Severity;
using host::ActionState;

ActionState stateAfterLoad(const std::string& shipped, const std::string& user) {
    const actions::ObserverRegistry nobody;
    actions::ActionCatalogue catalogue(nobody);
    catalogue.load(shipped, user);
    return host::stateOf(catalogue);
}

int holderOf(const ActionState& state, const ActionState::Place& place) {
    const auto found = state.holders.find(place);
    return found == state.holders.end() ? 0 : found->second;
}

/// Compares a start after a cut with what is shipped and with one before it.
class CutCheck {
public:
    CutCheck(const host::ShippedActions& shipped, ActionState before, ActionState after, const std::vector<int>& ids)
        : shipped_(shipped), before_(std::move(before)), after_(std::move(after)) {
        collect(ids);
    }

    bool isEnough() const { return areValuesRight() && areHoldersRight(); }

private:
    /// Adds those below the actions.
    void collect(std::vector<int> pending) {
        while (!pending.empty()) {
            const host::ShippedAction* const action = shipped_.find(pending.back());
            pending.pop_back();
            if (action != nullptr && reset_.insert(action->id).second) {
                pending.insert(pending.end(), action->children.begin(), action->children.end());
            }
        }
    }

    bool isReset(int id) const { return reset_.count(id) != 0; }

    bool areValuesRight() const {
        return std::all_of(after_.values.begin(), after_.values.end(), [this](const auto& entry) {
            const auto& [id, values] = entry;
            return values == host::valuesOf(isReset(id) ? shipped_.loaded() : before_, id);
        });
    }

    bool areHoldersRight() const { return isHeldWhereReset() && isHeldElsewhere() && doAllRun(); }

    bool isHeldWhereReset() const {
        return std::all_of(
            shipped_.loaded().holders.begin(), shipped_.loaded().holders.end(),
            [this](const auto& entry) { return !isReset(entry.second) || isHeldAsShipped(entry.first); });
    }

    bool isHeldElsewhere() const {
        return std::all_of(before_.holders.begin(), before_.holders.end(), [this](const auto& entry) {
            return isReset(entry.second) || holderOf(after_, entry.first) == entry.second ||
                   isHeldAsShipped(entry.first);
        });
    }

    /// Returns whether each action that is reset runs by what it shows, or the one does that is shipped to.
    bool doAllRun() const {
        return std::all_of(reset_.begin(), reset_.end(), [this](int id) {
            const ActionState::Place place(shipped_.find(id)->context, host::valuesOf(after_, id).shortcut);
            return place.second.empty() || holderOf(after_, place) == id || isHeldAsShipped(place);
        });
    }

    bool isHeldAsShipped(const ActionState::Place& place) const {
        return holderOf(after_, place) == holderOf(shipped_.loaded(), place);
    }

    const host::ShippedActions& shipped_;
    ActionState before_;
    ActionState after_;
    std::set<int> reset_;
};

/// Returns whether the library's reset of these actions would find anything to change after a load of these texts.
bool wouldBeChanged(const std::string& shipped, const std::string& user, const std::vector<int>& ids) {
    const actions::ObserverRegistry nobody;
    actions::ActionCatalogue catalogue(nobody);
    catalogue.load(shipped, user);
    const std::uint64_t before = catalogue.work().changes;
    host::resetActions(catalogue, ids);
    return catalogue.work().changes != before;
}

/// Returns whether the list has an element that goes.
bool hasAny(json::View list, const std::function<bool(json::View)>& goes) {
    for (const json::View element : list.elements()) {
        if (goes(element)) {
            return true;
        }
    }
    return false;
}

/// Says that an action shows a shortcut and does not run by it.
Finding findingOfSilent(const ShortcutRow& row, const std::vector<ShortcutRow>& rows,
                        const host::ShippedActions& shipped) {
    const host::ActionInfo& action = row.action;
    const bool isHeld = action.heldBy != 0;
    const bool isShipped =
        !isChangedByUser(row) && holderOf(shipped.loaded(), {action.item.context, action.shortcut}) == action.heldBy;
    return {
        Severity::Warning,
        "Action " + labelOf(rows, action.id) + " does not run by \"" + action.shortcut + '"' +
            (isHeld ? ": action " + labelOf(rows, action.heldBy) + " has it" : ", which no action has") +
            (isShipped ? ", as it is shipped." : "."),
        std::string("Give ") + (isHeld ? "one of the two" : "it") + " another shortcut; \"zelutil free\" lists some.",
        std::nullopt};
}

/// Returns whether the action shows a shortcut by which neither it nor its parent or child runs.
bool isSilent(const host::ActionInfo& action) {
    const auto& catalogue = actions::ManagerAccess::catalogueOf(UCPActionManager::instance());
    return !action.shortcut.empty() && !action.runs &&
           (action.heldBy == 0 ||
            !catalogue.find(action.id)->sharesWith(action.heldBy, catalogue.find(action.heldBy)->parentId));
}

/// Returns whether the one in the way would leave it by a reset of its own.
bool isInTheWayByItsUser(const host::NotRestored& refused, const ResetTold& told,
                         const std::vector<ShortcutRow>& rows) {
    const ShortcutRow* const holder = findRow(rows, refused.otherAction);
    return refused.obstacle == host::Obstacle::TakenByAnother && holder != nullptr &&
           holder->action.item.parent_id < 1 && holder->changedByUser && told.asked.count(refused.otherAction) == 0;
}

std::string adviceOnRefused(const host::NotRestored& refused, const ResetTold& told,
                            const std::vector<ShortcutRow>& rows) {
    if (isInTheWayByItsUser(refused, told, rows)) {
        return "\"zelutil reset --shortcuts " + std::to_string(refused.action) + ' ' +
               std::to_string(refused.otherAction) + "\" resets both.";
    }
    const bool isAlone = refused.otherAction == 0 && !told.isAll;
    return isAlone ? "\"zelutil reset --shortcuts --all\" resets all together." : command::adviceOn(refused.obstacle);
}

}  // namespace

EntriesCut planEntriesCut(const command::SettingAccounts& accounts, const std::vector<int>& ids) {
    const std::unordered_set<int> wanted(ids.begin(), ids.end());
    const auto goes = [&](json::View element) { return wanted.count(actions::userEntryOf(element).id) != 0; };
    const json::View user = accounts.userActions();
    const json::View entries = actions::userEntriesOf(user);
    const std::string before = json::compactText(user).value_or("");
    EntriesCut cut{std::nullopt, before};
    if (hasAny(entries, goes)) {
        const json::LocatedDocument part(before);
        cut.file = command::withoutElements(accounts.userDocument(), entries, goes);
        cut.userActions = command::withoutElements(part, actions::userEntriesOf(part.root()), goes);
    }
    const host::ShippedActions shipped(accounts.shippedActions());
    cut.isEnough =
        CutCheck(shipped, stateAfterLoad(shipped.text(), before), stateAfterLoad(shipped.text(), cut.userActions), ids)
            .isEnough();
    return cut;
}

ActionReset resetActions(const std::vector<int>& ids) {
    ActionReset done;
    {
        command::EntryReset reset;
        if (reset.accounts().shippedActions().empty()) {
            // The defaults were read at the start, and cannot be now: nothing tells what the actions are to get.
            done.save.status = host::SaveResult::Status::NoDefaults;
            done.save.path = reset.accounts().userFile().path;
            return done;
        }
        const EntriesCut cut = planEntriesCut(reset.accounts(), ids);
        const bool isDone = !cut.file && !wouldBeChanged(reset.accounts().shippedActions(), cut.userActions, ids);
        if (cut.isEnough || isDone || prefs::isWrittenUserFileRedirected()) {
            done.save = reset.put(cut.file);
            done.reason = done.save.text;
            done.hasTurn = reset.hasTurn();
            if (done.save.status == host::SaveResult::Status::Saved) {
                UCPActionManager::instance().load(reset.accounts().shippedActions(), cut.userActions);
            }
            return done;
        }
    }
    done.save = host::resetShortcuts(ids);
    return done;
}

void tellRefused(const std::vector<host::NotRestored>& refused, const ResetTold& told, command::Output& output) {
    const std::vector<ShortcutRow> rows = shortcutTable();
    std::vector<Finding> findings;
    for (const host::NotRestored& one : refused) {
        findings.push_back({Severity::Warning, one.text, adviceOnRefused(one, told, rows), std::nullopt});
    }
    addTheFirst(std::move(findings), output);
}

void tellWhoRuns(const std::vector<ShortcutRow>& before, const ResetTold& told, command::Output& output) {
    const std::vector<ShortcutRow> rows = shortcutTable();
    const host::ShippedActions shipped(
        actions::ManagerAccess::catalogueOf(UCPActionManager::instance()).texts().defaults);
    std::vector<Finding> again;
    std::vector<Finding> silent;
    for (const ShortcutRow& row : rows) {
        const host::ActionInfo& now = row.action;
        const ShortcutRow* const old = findRow(before, now.id);
        const bool isSame = old != nullptr && old->action.shortcut == now.shortcut;
        const bool isChanged = !isSame || old->action.runs != now.runs;
        if (isSame && now.runs && !old->action.runs) {
            again.push_back({Severity::Note,
                             "Action " + labelOf(rows, now.id) + " runs by \"" + now.shortcut + "\" again.", "",
                             std::nullopt});
        }
        const bool isAsked = told.asked.count(now.id) != 0 && (row.runsChangedByUser || !told.isAll);
        if (isSilent(now) && told.refused.count(now.id) == 0 && (isChanged || isAsked)) {
            silent.push_back(findingOfSilent(row, rows, shipped));
        }
    }
    addTheFirst(std::move(again), output);
    addTheFirst(std::move(silent), output);
}

}  // namespace zelutil::shortcuts
