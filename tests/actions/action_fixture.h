#ifndef ZELUTIL_TESTS_ACTIONS_ACTION_FIXTURE_H
#define ZELUTIL_TESTS_ACTIONS_ACTION_FIXTURE_H

#include <zelutil/actions/action_manager.h>

#include <string>
#include <utility>
#include <vector>

namespace zelutil::test {

inline UCPActionManager& manager() { return UCPActionManager::instance(); }

inline std::string quoted(const std::string& text) { return "\"" + text + "\""; }

/// An element of a shipped text. The texts must need no escape.
inline std::string action(int id, const std::string& context, const std::string& command,
                          const std::string& shortcut = "", int parent = 0) {
    return "{\"id\":" + std::to_string(id) + ",\"parent_id\":" + std::to_string(parent) +
           ",\"context\":" + quoted(context) + ",\"command\":" + quoted(command) + ",\"shortcut\":" + quoted(shortcut) +
           "}";
}

/// An element of a shipped text whose shortcut is its parent's.
inline std::string child(int id, int parent, const std::string& context, const std::string& command) {
    return action(id, context, command, "", parent);
}

/// Elements joined by commas.
inline std::string list(const std::vector<std::string>& elements) {
    std::string text;
    for (const std::string& element : elements) {
        text += (text.empty() ? "" : ",") + element;
    }
    return text;
}

/// The form of a shipped text.
inline std::string object(const std::string& elements) { return "{\"actions\":[" + elements + "]}"; }

/// The form of a user's text.
inline std::string wrapped(const std::string& elements) { return "[" + object(elements) + "]"; }

/// Loads shipped actions and a user's list.
inline void load(const std::vector<std::string>& definitions, const std::string& userEntries = "") {
    manager().load(object(list(definitions)), wrapped(userEntries));
}

/// Writes down what it is told: "7: 'F1' -> 'F2'", "7: in menu", "7: out of menu". Detached at the end of its scope.
class Recorder final : public IUCPActionObserver {
public:
    Recorder() = default;
    Recorder(const Recorder&) = delete;
    Recorder& operator=(const Recorder&) = delete;
    ~Recorder() { manager().detachObserver(this); }

    void onShortcutChanged(int actionId, const std::string& oldShortcut, const std::string& newShortcut) override {
        events.push_back(std::to_string(actionId) + ": '" + oldShortcut + "' -> '" + newShortcut + "'");
    }

    void onRMBMenuChanged(int actionId, bool inMenu) override {
        events.push_back(std::to_string(actionId) + (inMenu ? ": in menu" : ": out of menu"));
    }

    /// Returns what it was told since the last call.
    std::vector<std::string> take() { return std::exchange(events, {}); }

    std::vector<std::string> events;
};

using Events = std::vector<std::string>;

}  // namespace zelutil::test

#endif
