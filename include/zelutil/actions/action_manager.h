#ifndef ZELUTIL_ACTIONS_ACTION_MANAGER_H
#define ZELUTIL_ACTIONS_ACTION_MANAGER_H

#include <zelutil/actions/action_item.h>
#include <zelutil/actions/action_observer.h>
#include <zelutil/export.h>
#include <zelutil/prefs/user_settings_manager.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace zelutil::actions {
struct ManagerAccess;
}

/// The process's one store of actions: what each command is called, which key combination runs it in which context,
/// which commands the right-mouse-button menu shows, and what the user changed of that.
///
/// The preferences fill it: their first use in the process (the first look-up of a setting, say, or
/// `UserPreferenceManager::GetInstance`) loads the actions of both preference files. Until then, and where the shipped
/// preferences have no section for actions, there are none. That load forgets what a host has loaded before it.
///
/// Contexts, commands and shortcuts are compared byte by byte. The contexts "ucpedit" and "brisk3d" are linked: a
/// shortcut held in one counts as taken in the other. An action with a parent shares the parent's shortcut and menu
/// flag; an edit of the parent is passed on to its children, their children and so on.
///
/// Nothing here throws but for lack of memory, and nothing is printed. Queries may run on several threads at once;
/// loads, edits and registrations are serialised by the host, and no query may run at the same time.
class ZELUTIL_API UCPActionManager : public IUserSettingsManager {
public:
    /// The manager, empty at the first call. It is destroyed when the library goes: exit functions and destructors of
    /// static objects of a program that is linked with this library may still ask it.
    static UCPActionManager& instance();

    UCPActionManager(const UCPActionManager&) = delete;
    UCPActionManager& operator=(const UCPActionManager&) = delete;

    // --- Sub-manager of the preferences ---

    /// Forgets all actions and reads them anew. Observers stay attached, also to ids that are gone. They are told of
    /// the shortcuts that the user's text and the parents change and of the menu flags that the user's text changes; a
    /// menu flag taken over from a parent is told to nobody.
    ///
    /// Where memory runs out, std::bad_alloc passes through: the actions are then as before, or those of `defaultsText`
    /// with only a part of the changes that `userText` and the parents make.
    ///
    /// `defaultsText` is {"actions":[...]}, the shipped actions; an element without a valid "id", "context" and
    /// "command" or with a negative "parent_id" is skipped, and of two with one id the first counts. `userText` is the
    /// same form wrapped in an array of exactly one element: [{"actions":[...]}]; any other text changes nothing. Its
    /// list is read up to the first element without an "id" of 1 or more; an entry for an unknown action or a shortcut
    /// that another action holds is dropped.
    void load(const std::string& defaultsText, const std::string& userText) override;

    /// Returns what the user changed, without white space: {"actions":[...]}, the changed top-level actions in
    /// ascending id, each with "id" and, where overwritten, "shortcut" and "rmb". It is the bare object: who stores it
    /// for the next `load` wraps it in an array of one element. It is empty while `isModified` is false.
    const std::string getAllUserSettings() const override;

    /// Whether a shortcut changed since (or during) the last load. A menu flag alone does not count.
    bool isModified() const override;

    // --- Queries ---

    /// True and a copy of the action, or false and an empty item.
    std::pair<bool, const UCPActionItem> getAction(int id) const;

    /// Id of the action with that command, 0 for none.
    int getActionIdByCommand(const std::string& context, const std::string& command) const;

    /// Id of the action that holds the shortcut in that context, 0 for none. Linked contexts are not looked at.
    int getActionIdByShortcut(const std::string& context, const std::string& shortcut) const;

    /// Copies of all actions, ascending by id. An item with id 0 stands in for a parent that no text defines.
    std::vector<UCPActionItem> getAllActions() const;

    /// Ids of the action's children in the order of the shipped text; empty for none.
    std::vector<int> getChildActionIds(int id) const;

    /// The command that the shortcut runs in that context or, with `fallback`, else in "ucpedit". Empty for none, and
    /// for the empty shortcut.
    std::string getCommand(const std::string& context, const std::string& shortcut, bool fallback) const;

    /// The action's shortcut in force; empty for none and for an unknown id.
    std::string getShortcut(int id) const;

    /// Copies of the actions that the right-mouse-button menu shows, ascending by id.
    std::vector<UCPActionItem> getRMBMenuItems() const;

    /// Returns the id of the action that stands in the way of giving `shortcut` to action `id`, 0 when none does. In
    /// the way is a holder in the action's context, in the context linked with it, or in those of its children, their
    /// children and so on. Each of these actions is looked at by itself: in its way are all but itself, its own parent
    /// and its own children. So a family can be in its own way, and an action may be refused the shortcut that it has,
    /// even because of itself:
    ///
    ///     1 in "board" has F1, its child 2 is in "panel", whose child 3 is in "board" => 1: F1 is refused to 3
    ///     1 in "board" has F1, its children 2, which has F1 too, and 3 are in "panel" => 2: F1 is refused to 3
    ///
    /// 0 for an unknown id and for the empty shortcut.
    int isShortcutTaken(int id, const std::string& shortcut) const;

    // --- Edits ---

    /// Gives the action another shortcut, the empty text for none; children follow where nobody is in their way.
    /// Returns false, with nothing changed, when `isShortcutTaken` finds somebody in the way, be it for the shortcut
    /// that the action has, or when the id is unknown. Otherwise true; nobody is told where nothing had to change.
    ///
    /// True does not promise that the key runs the action, which `getActionIdByShortcut` tells. A parent or a child
    /// that holds the key in the same context keeps it. And an action that is bound to the shortcut already stays as it
    /// is, also when another one holds the key, and also when `getShortcut` shows another shortcut: that of the parent,
    /// which a child shows even where it could not take it over.
    bool updateShortcut(int id, const std::string& shortcut);

    /// The same for the action with that command; false when there is none.
    bool updateShortcut(const std::string& context, const std::string& command, const std::string& shortcut);

    /// Shows the action in the right-mouse-button menu or hides it; children follow. Nothing for an unknown id and
    /// where it is so already. Does not make `isModified` true.
    void updateRMBMenu(int id, bool inMenu);

    // --- Observers ---

    /// Has the observer told of the changes of one action. False for null and for an id that no action has now.
    /// Attaching a pair again changes nothing and answers true.
    bool attachObserver(int id, IUCPActionObserver* observer);

    /// Has the observer told of the changes of every action; one that is also attached to the action's id is called
    /// twice. False for null.
    bool attachObserver(IUCPActionObserver* observer);

    /// Ends all attachments of the observer. Null and an observer that is not attached do nothing.
    void detachObserver(IUCPActionObserver* observer);

private:
    friend struct UCPActionManagerTestPeer;
    friend struct zelutil::actions::ManagerAccess;
    struct State;

    UCPActionManager();
    ~UCPActionManager();

    /// Gives the shortcut to the action, or to the top-level action above it, and takes it from its holder in that
    /// action's context; no other context is looked at. True when it is in force. False, with nothing changed, for an
    /// unknown id and where the parents go round in a circle, so that none is on top. No other operation calls it.
    bool stealShortcut(int id, const std::string& shortcut);

    std::unique_ptr<State> state_;
};

#endif
