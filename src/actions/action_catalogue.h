#ifndef ZELUTIL_ACTIONS_ACTION_CATALOGUE_H
#define ZELUTIL_ACTIONS_ACTION_CATALOGUE_H

#include <zelutil/actions/action_item.h>

#include "actions/observer_registry.h"
#include "json/view.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zelutil::actions {

class UserEntryReader;

/// The actions, who holds which shortcut, and the edits. `UCPActionManager` is the door to the process's one catalogue
/// and documents the operations of the same meaning.
///
/// Parents and children are given by id and may form chains of any length and circles, so no procedure recurses along
/// them. An observer that edits or loads from inside a notification changes the tables under a running edit: what runs
/// on after a notification holds ids, never references.
///
///     action_tables.cpp      the tables and how they are filled
///     action_loading.cpp     loading, and what children take over from their parents
///     action_catalogue.cpp   the queries
///     action_conflicts.cpp   who is in whose way, with examples
///     action_edits.cpp       the edits
class ActionCatalogue {
public:
    struct Command;
    struct Context;

    /// An action in a form that is cheap to load: texts that never change are views into the catalogue.
    struct Action {
        // The first line of the processor's cache holds all that a question about conflicts asks.
        int id = 0;
        int parentId = 0;
        Context* context = nullptr;
        /// In the order of the text.
        std::vector<Action*> children;
        /// The context's record of the command.
        Command* binding = nullptr;
        std::string_view name;
        std::string_view icon;
        std::string_view command;
        OverwritableValue<std::string> shortcut;
        OverwritableValue<bool> rmb;
        /// The place that the last survey of `Followers` gave the action.
        std::size_t place = 0;

        UCPActionItem item() const;

        std::string_view contextName() const;

        /// The shortcut to which the context binds the action's command.
        const std::string& boundTo() const;

        /// The id of the action that is in the way of giving this one the shortcut, whoever is below it; 0 for none.
        int inTheWay(const std::string& wanted) const;

        /// Returns whether an action with this id and parent shares its shortcut with this one in one context: it is
        /// the action, its parent or its child.
        bool sharesWith(int holder, int parentOfHolder) const {
            return holder == id || holder == parentId || parentOfHolder == id;
        }

        /// The ids of all of them: there may be one in this context and one in the linked one.
        std::vector<int> allInTheWay(const std::string& wanted) const;

    private:
        int inTheWayIn(const Context* names, const std::string& wanted) const;
    };

    /// The action of a family in whose way somebody is, and who that is.
    struct Conflict {
        int id = 0;
        int holder = 0;
    };

    /// The context that `command` falls back to.
    static constexpr std::string_view kFallbackContext = "ucpedit";

    /// Returns the context whose shortcuts count as taken in this one, too; empty for one that is linked with none.
    static std::string_view linkedContext(std::string_view context);

    /// Counts the work of loads and edits, so that tests can tell how it grows.
    struct Work {
        /// Counts the questions whether somebody is in the way of one action.
        std::uint64_t looks = 0;
        /// Counts the times a command was bound to another shortcut.
        std::uint64_t changes = 0;
    };

    explicit ActionCatalogue(const ObserverRegistry& observers);
    ActionCatalogue(const ActionCatalogue&) = delete;
    ActionCatalogue& operator=(const ActionCatalogue&) = delete;
    ~ActionCatalogue();

    /// The texts of a load, as they were handed over.
    struct Texts {
        std::string defaults;
        std::string user;
    };

    void load(std::string_view defaultsText, std::string_view userText);

    /// Loads the shipped actions and calls `edit` where a load would apply the entries of a user's text: before
    /// children take over from their parents. What it edits is what a text with these entries in this order would edit.
    void loadAndEdit(std::string_view defaultsText, const std::function<void(ActionCatalogue&)>& edit);
    /// Does the same with a value that was parsed. The catalogue does not learn the text.
    void loadAndEdit(json::View defaults, const std::function<void(ActionCatalogue&)>& edit);

    /// Becomes what the other catalogue is now, for edits to be tried on. Observers of the other are told nothing.
    void becomeCopyOf(const ActionCatalogue& other);

    /// Returns the texts of the last load: an edit forgets nothing that they say, but a load overwrites what is shipped
    /// of a child.
    const Texts& texts() const { return texts_; }

    /// Returns whether a load is in progress, from inside which an observer asks.
    bool isLoading() const { return loading_ != 0; }

    /// Counts the loads.
    std::uint64_t loads() const { return loads_; }

    std::string userText() const;
    bool modified() const { return modified_; }

    /// Null for an unknown id. Valid until the next load.
    const Action* find(int id) const;
    /// Calls `call` with the id under which it stands and every action, ascending.
    void forEachAction(const std::function<void(int, const Action&)>& call) const;
    std::vector<UCPActionItem> items() const;
    std::vector<UCPActionItem> menuItems() const;
    const std::vector<int>& childIds(int id) const;

    /// Calls `call` with the context, the shortcut and the id of every holder, in no order.
    void forEachHolder(const std::function<void(std::string_view, const std::string&, int)>& call) const;

    int idByCommand(std::string_view context, std::string_view command) const;
    /// Returns the action that holds the shortcut there or, with `fallback`, else in `kFallbackContext`; 0 for none.
    int idByShortcut(std::string_view context, const std::string& shortcut, bool fallback = false) const;

    /// Empty for none. Valid until the next load.
    std::string_view command(std::string_view context, const std::string& shortcut, bool fallback) const;

    int shortcutTakenBy(int id, const std::string& shortcut) const;

    /// Returns everybody who is in the way of the action or of one below it, of whom `shortcutTakenBy` returns the
    /// first.
    std::vector<Conflict> conflicts(int id, const std::string& shortcut) const;

    bool updateShortcut(int id, const std::string& shortcut);
    void updateMenu(int id, bool inMenu);
    bool stealShortcut(int id, const std::string& shortcut);

    const Work& work() const { return work_; }

private:
    struct Holder;
    struct Tables;
    class Followers;
    class Refusals;
    class Loading;

    static std::unique_ptr<Tables> tablesOf(std::string_view defaultsText);
    void replaceAndEdit(std::unique_ptr<Tables> tables, Texts texts, const std::function<void(ActionCatalogue&)>& edit);
    void replace(std::unique_ptr<Tables> tables, Texts texts);
    void applyUserEntries(UserEntryReader& reader);
    void updateFromParents();
    void takeOverFromParent(int id, Refusals& refusals);

    Action* findForEdit(int id);
    const Holder* findHolder(std::string_view context, const std::string& shortcut, bool fallback) const;
    std::optional<Conflict> firstConflict(int id, const std::string& shortcut, std::uint64_t& looks) const;
    int topLevelAbove(int id) const;

    void changeShortcut(int id, Action& action, const std::string& shortcut);
    std::string rebind(int id, Action& action, const std::string& shortcut, Followers& followers);
    void bind(int id, Action& action, const std::string& shortcut, Followers& followers);
    void spreadShortcut(int id, std::string before, const std::string& shortcut, Followers& followers);

    const ObserverRegistry& observers_;
    std::unique_ptr<Tables> tables_;
    Texts texts_;
    std::uint64_t loads_ = 0;
    int loading_ = 0;
    bool modified_ = false;
    /// Changes with every load and with every edit that changes a shortcut.
    std::uint64_t edits_ = 0;
    Work work_;
};

}  // namespace zelutil::actions

#endif
