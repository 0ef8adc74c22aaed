#ifndef ZELUTIL_HOST_SAVE_H
#define ZELUTIL_HOST_SAVE_H

#include <zelutil/export.h>
#include <zelutil/host/result.h>

#include <map>
#include <string>
#include <vector>

class UCPActionManager;

/// Saves that a new process reads back exactly.
///
/// They differ from `UserPreferenceManager::updateUserPrefSettings` in four ways. The actions are saved with the
/// settings, menu flags included, without a host's doing. The file is written so that reading brings everything back:
/// settings are named in full, so that none is taken for another, and shortcuts are first taken away where they stand
/// in another's way and then given in an order in which each is accepted. What another process of the user saved
/// meanwhile stays, unless it was changed here too. And the result says what was done and what cannot come back.
///
/// A host saves before its main function returns: the preferences are destroyed like its static objects, and a save
/// after that has no shipped defaults and writes nothing.
///
/// From inside a load of the actions, by an observer, the settings are saved, and the file keeps what it has for the
/// actions. From inside the first use of the preferences nothing is done: see `SaveResult::Status::Starting`.
///
/// None of these may run at the same time as a look-up, an edit or another save of this process. Saves of several
/// processes take turns. Nothing is thrown but for lack of memory, and what an observer throws passes through: by then
/// everything is done, but nobody gets the result.
namespace zelutil::host {

/// Puts the values in force and saves them together with all that is in force and not yet saved: other settings and
/// the actions.
///
/// `settings` holds values by name, bare or in full, in any case; unknown names are returned in the result. The values
/// are in force from then on, also when the file could not be written; the next save tries again. A value that is in
/// force already counts as untouched, so that a host may hand over all that a dialog shows without undoing what another
/// process saved. Then the observers of `ZelU::Marl::UserPreferenceServer` are told, when something has changed.
///
/// Three states are compared for each setting and each action: what the file held when this process last read or wrote
/// it, what it holds now, and what is in force here. What was changed only elsewhere stays in the file as it is there,
/// and this process goes on with what it has; what was changed here is written. Entries of the file that mean nothing
/// to the shipped defaults of this process are kept.
ZELUTIL_API SaveResult save(const std::map<std::string, std::string>& settings = {});

/// Gives the settings of these names, bare or in full, their shipped defaults again and takes their entries out of the
/// file. Otherwise as `save`.
ZELUTIL_API SaveResult reset(const std::vector<std::string>& settings);

/// Gives the actions their shipped shortcuts and menu flags again and takes their entries out of the file. Children
/// follow. One whose shortcut another action holds that is not among them keeps what it has, and so do its children; it
/// is named in the result. Unknown ids do nothing. Where nothing changes the file stays. Otherwise as `save`.
ZELUTIL_API SaveResult resetShortcuts(const std::vector<int>& ids);

/// The same for all actions.
ZELUTIL_API SaveResult resetAllShortcuts();

/// A text of the user's changes to the actions, for hosts that save themselves.
struct RestorableText {
    /// [{"actions":[...]}], to be handed to `UserPreferenceManager::updateUserPrefSettings` or `UCPActionManager::load`
    /// as it is. Never empty: without changes its list is.
    std::string text;
    /// The actions that the text cannot bring back as they are now.
    std::vector<NotRestored> notRestored;
};

/// Returns the text that brings back what is in force in the manager, when it is loaded after the same shipped actions.
ZELUTIL_API RestorableText restorableActionsText(const UCPActionManager& manager);

}  // namespace zelutil::host

#endif
