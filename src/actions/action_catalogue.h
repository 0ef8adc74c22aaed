#ifndef ZELUTIL_ACTIONS_ACTION_CATALOGUE_H
#define ZELUTIL_ACTIONS_ACTION_CATALOGUE_H

#include <zelutil/actions/action_item.h>

#include "actions/observer_registry.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace zelutil::actions {

struct ActionDefinition;

/// The actions, who holds which shortcut, and the edits. `UCPActionManager` is the door to the process's one catalogue
/// and documents the operations of the same meaning.
///
/// Parents and children are given by id and may form chains of any length and circles, so no procedure recurses along
/// them. An observer that edits or loads from inside a notification changes the tables under a running edit: what runs
/// on after a notification holds ids, never references.
class ActionCatalogue {
public:
    struct Context;

    /// An action in a form that is cheap to load: texts that never change are views into the catalogue.
    struct Action {
        int id = 0;
        int parentId = 0;
        std::string_view name;
        std::string_view icon;
        std::string_view command;
        OverwritableValue<std::string> shortcut;
        OverwritableValue<bool> rmb;
        Context* context = nullptr;
        /// The first action with the same context and command, this one or another.
        Action* first = nullptr;
        /// What the command is bound to now; kept by the first action with it.
        ///
        /// Kept deliberately: a command is bound once per context, so all actions with one command share that.
        std::string bound;

        UCPActionItem item() const;
    };

    explicit ActionCatalogue(const ObserverRegistry& observers);
    ActionCatalogue(const ActionCatalogue&) = delete;
    ActionCatalogue& operator=(const ActionCatalogue&) = delete;
    ~ActionCatalogue();

    void load(std::string_view defaultsText, std::string_view userText);
    std::string userText() const;
    bool modified() const { return modified_; }

    /// Null for an unknown id. Valid until the next load.
    const Action* find(int id) const;
    std::vector<UCPActionItem> items() const;
    std::vector<UCPActionItem> menuItems() const;
    const std::vector<int>& childIds(int id) const;

    int idByCommand(std::string_view context, std::string_view command) const;
    int idByShortcut(std::string_view context, const std::string& shortcut) const;

    /// Empty for none. Valid until the next load.
    std::string_view command(std::string_view context, const std::string& shortcut, bool fallback) const;

    int shortcutTakenBy(int id, const std::string& shortcut) const;

    bool updateShortcut(int id, const std::string& shortcut);
    void updateMenu(int id, bool inMenu);
    bool stealShortcut(int id, const std::string& shortcut);

private:
    struct Holder;
    struct Tables;

    void loadDefaults(std::string_view text);
    void loadUserEntries(std::string_view text);
    void updateFromParents();
    void define(const ActionDefinition& definition);
    void index(Action& action);
    Action& parentOf(const Action& child);
    void takeOverFromParent(int id);

    Action* findForEdit(int id);
    const Context* findContext(std::string_view name) const;
    const Holder* findHolder(std::string_view context, const std::string& shortcut) const;
    int conflictIn(const Context* context, const Action& action, const std::string& shortcut) const;
    int conflictOf(const Action& action, const std::string& shortcut) const;
    int topLevelAbove(int id) const;

    std::string rebind(Action& action, int id, const std::string& shortcut);
    void spreadShortcut(int id, std::string before, const std::string& shortcut);

    const ObserverRegistry& observers_;
    std::unique_ptr<Tables> tables_;
    bool modified_ = false;
};

}  // namespace zelutil::actions

#endif
