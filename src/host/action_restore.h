#ifndef ZELUTIL_HOST_ACTION_RESTORE_H
#define ZELUTIL_HOST_ACTION_RESTORE_H

#include <zelutil/host/result.h>

#include "actions/action_catalogue.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// The user's text of the actions that brings back what is in force.
namespace zelutil::host {

/// Holds what is in force for one action.
struct ActionValues {
    std::string shortcut;
    bool inMenu = false;

    bool operator==(const ActionValues& other) const { return shortcut == other.shortcut && inMenu == other.inMenu; }
    bool operator!=(const ActionValues& other) const { return !(*this == other); }
};

/// Remembers what this process and the user's file last had in common.
///
/// A fresh one stands for the last load of the catalogue: what its two texts bring about, and the user's text of it. Of
/// one of an earlier load only the file's text holds: what is in force by the load and is not in the file was changed
/// here.
struct ActionsBase {
    /// The load of the catalogue for which `inForce` and `aim` hold; 0 for none.
    std::uint64_t load = 0;
    /// The values that were in force here then, by id.
    std::map<int, ActionValues> inForce;
    /// The values that the file is to bring about. They differ from `inForce` where another process saved something
    /// else.
    std::map<int, ActionValues> aim;
    /// The action that is to hold a shortcut then, by context and shortcut.
    std::map<std::pair<std::string, std::string>, int> aimHolders;
    /// The text that the file held then: a user's text, [{"actions":[...]}], or an empty one. Nothing in a fresh one.
    std::optional<std::string> fileText;
    /// Whether that is the text that was planned for the aim.
    bool isPlanned = false;
};

/// Returns the base of a process that knows no more of its file than its text for the actions.
ActionsBase baseOfFile(std::string fileText);

/// Returns the base after a save by the old calls has written the file with another text for the actions: one that the
/// host handed over (`isHosts`), or that of the start. What it changed there is what this process and the file have in
/// common; an action for which the file had what another process saved is still to get that, unless the host had given
/// it something else by then.
ActionsBase baseAfterOldSave(const actions::ActionCatalogue& current, const ActionsBase& before, std::string text,
                             bool isHosts);

/// Returns whether two user's texts bring about the same when they are loaded after the shipped text of the catalogue.
bool bringAboutTheSame(const actions::ActionCatalogue& current, std::string_view one, std::string_view other);

/// Holds what a save of the actions writes, and what is to be said about it.
struct ActionsPlan {
    /// [{"actions":[...]}] without white space.
    std::string text;
    /// Whether the list in `text` has an element. Without one, no text says the same.
    bool anyEntry = false;
    /// Ids of the elements, ascending, each once.
    std::vector<int> savedActions;
    std::vector<NotRestored> notRestored;
    std::vector<Conflict> conflicts;
    /// Ids of the actions for which the text has what another process saved and what is not in force here.
    std::vector<int> ofOthers;
    /// Whether the file gives a shortcut that its action does not get, and that the text cannot give without bringing
    /// about something else.
    bool losesEntries = false;
    /// To be handed to the next `planActions` once the file holds `text`.
    ActionsBase base;
};

/// So many loads of a part of the actions may the search of one plan take where nothing simpler brings all back.
inline constexpr std::size_t kSearchLoads = 12000;

/// Returns the plan for what is in force in the catalogue. `fileText` is the user's text that the file holds now, empty
/// where a file that was read has none, and nothing where there is no file or it cannot be read; then all that is in
/// force here is planned. The actions `touched` count as changed here, whatever they have.
ActionsPlan planActions(const actions::ActionCatalogue& current, const ActionsBase& before,
                        std::optional<std::string_view> fileText, const std::set<int>& touched = {},
                        std::size_t searchLoads = kSearchLoads);

/// Has the plan of a save after a reset keep the file's text, byte for byte, where that brings about the same as the
/// planned one and has no entry for the actions `touched`. Returns whether that is so.
bool keepTextOfFile(ActionsPlan& plan, const actions::ActionCatalogue& current, std::string_view fileText,
                    const std::set<int>& touched);

}  // namespace zelutil::host

#endif
