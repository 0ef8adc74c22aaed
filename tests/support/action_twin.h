#ifndef ZELUTIL_TESTS_SUPPORT_ACTION_TWIN_H
#define ZELUTIL_TESTS_SUPPORT_ACTION_TWIN_H

#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace zelutil::test {

/// A shipped action as the reader of the text must understand it.
struct TwinDefinition {
    int id = 0;
    int parentId = 0;
    std::string name;
    std::string icon;
    std::string context;
    std::string command;
    std::string shortcut;
    bool rmb = false;
};

/// An entry of the user's list; `id` is 0 where the text gives no usable one.
struct TwinUserEntry {
    int id = 0;
    std::optional<std::string> shortcut;
    std::optional<bool> rmb;
};

template <typename T>
struct TwinProperty {
    T defaultValue{};
    T userValue{};
    T resetValue{};
    bool overwritten = false;

    T effective() const { return overwritten ? userValue : defaultValue; }
    void set(const T& value) {
        if (value == defaultValue) {
            overwritten = false;
            userValue = resetValue;
        } else {
            overwritten = true;
            userValue = value;
        }
    }
};

struct TwinItem {
    int id = 0;
    int parentId = 0;
    std::string name;
    std::string icon;
    std::string context;
    std::string command;
    TwinProperty<std::string> shortcut;
    TwinProperty<bool> rmb;
};

/// Holds what an observer was told, and what it found when it asked back.
struct ActionEvent {
    int observer = 0;
    int id = 0;
    bool isShortcut = false;
    std::string oldShortcut;
    std::string newShortcut;
    bool inMenu = false;
    bool modifiedNow = false;
    std::string shortcutNow;
    std::vector<std::string> childShortcutsNow;
    /// Shortcut holders, for each context of the events' queries and in it for each shortcut.
    std::vector<int> holdersNow;

    bool operator==(const ActionEvent& other) const;
};

/// The action manager's rules, written for being read: plain maps and sets, every step spelled out, recursion.
/// Observers are numbers, in the order in which the manager calls them.
class ActionTwin {
public:
    /// The texts an observer asks for from inside a notification.
    struct EventQueries {
        std::vector<std::string> contexts;
        std::vector<std::string> shortcuts;
    };

    /// An observer does this after it has written down what it was told.
    using Reaction = std::function<void(const ActionEvent&)>;

    explicit ActionTwin(EventQueries queries, Reaction reaction = nullptr)
        : queries_(std::move(queries)), reaction_(std::move(reaction)) {}

    void load(const std::vector<TwinDefinition>& definitions, const std::vector<TwinUserEntry>& entries);

    const std::map<int, TwinItem>& items() const { return actions_; }
    int idByCommand(const std::string& context, const std::string& command) const;
    int idByShortcut(const std::string& context, const std::string& shortcut) const;
    std::vector<int> childIds(int id) const;
    std::string command(const std::string& context, const std::string& shortcut, bool fallback) const;
    std::string shortcut(int id) const;
    int isShortcutTaken(int id, const std::string& shortcut) const;
    bool modified() const { return modified_; }
    std::string userText() const;

    bool updateShortcut(int id, const std::string& shortcut);
    bool updateShortcut(const std::string& context, const std::string& command, const std::string& shortcut);
    bool stealShortcut(int id, const std::string& shortcut);
    void updateRMBMenu(int id, bool inMenu);

    bool attach(int id, int observer);
    bool attachToAll(int observer);
    void detach(int observer);

    /// Everything the observers were told since the last call.
    std::vector<ActionEvent> takeEvents() { return std::exchange(events_, {}); }

private:
    /// Text, id.
    using Entry = std::pair<std::string, int>;
    using Index = std::map<std::string, std::map<std::string, Entry>>;

    void loadDefault(const TwinDefinition& definition);
    void updateFromParents();
    int takenIn(const TwinItem& item, const std::string& context, const std::string& shortcut) const;
    int taken(int id, const std::string& shortcut, std::set<int>& visited) const;
    bool steal(int id, const std::string& shortcut, std::set<int>& visited);
    /// `origin` is where the change began: a circle of parents ends there.
    bool update(int id, const std::string& shortcut, int origin);
    void updateMenu(int id, bool inMenu, int origin);
    void finishShortcut(int id, const std::string& old, const std::string& shortcut, int origin);
    void notify(int id, ActionEvent event);
    void fillInStateNow(ActionEvent& event) const;

    EventQueries queries_;
    Reaction reaction_;
    bool modified_ = false;
    Index shortcutIndex_;
    Index commandIndex_;
    std::map<int, TwinItem> actions_;
    std::map<int, std::vector<int>> childIds_;
    std::map<int, std::set<int>> observersById_;
    std::vector<ActionEvent> events_;
};

}  // namespace zelutil::test

#endif
