#ifndef ZELUTIL_TESTS_HOST_ACTION_FIXTURE_H
#define ZELUTIL_TESTS_HOST_ACTION_FIXTURE_H

#include "actions/action_catalogue.h"
#include "actions/overwritable.h"
#include "host/action_restore.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace zelutil::test {

/// An element of a shipped text.
inline std::string shippedAction(int id, const std::string& context, const std::string& shortcut, int parent = 0,
                                 const std::string& more = "") {
    return "{\"id\":" + std::to_string(id) + ",\"parent_id\":" + std::to_string(parent) + ",\"context\":\"" + context +
           "\",\"command\":\"run" + std::to_string(id) + "\",\"shortcut\":\"" + shortcut + "\"" + more + "}";
}

/// Three actions of one context.
inline const std::vector<std::string> kThree = {shippedAction(1, "board", "F1"), shippedAction(2, "board", "F2"),
                                                shippedAction(3, "board", "F3")};

/// A user's text of these elements.
inline std::string userText(const std::string& elements) { return "[{\"actions\":[" + elements + "]}]"; }

/// One process with actions of its own, and what its file says of them.
class ActionProcess {
public:
    ActionProcess(const std::vector<std::string>& shipped, const std::string& user = "") {
        for (const std::string& element : shipped) {
            text_ += (text_.empty() ? "" : ",") + element;
        }
        text_ = "{\"actions\":[" + text_ + "]}";
        catalogue.load(text_, user);
    }

    ActionProcess(const ActionProcess&) = delete;
    ActionProcess& operator=(const ActionProcess&) = delete;
    ~ActionProcess() = default;

    std::string shortcut(int id) const { return actions::effectiveValue(catalogue.find(id)->shortcut); }
    bool inMenu(int id) const { return actions::effectiveValue(catalogue.find(id)->rmb); }
    int holder(const std::string& context, const std::string& shortcut) const {
        return catalogue.idByShortcut(context, shortcut);
    }

    /// Gives each of two actions the shortcut of the other, as a user does it.
    void swap(int first, int second) {
        const std::string one = shortcut(first);
        const std::string other = shortcut(second);
        EXPECT_TRUE(catalogue.updateShortcut(second, ""));
        EXPECT_TRUE(catalogue.updateShortcut(first, other));
        EXPECT_TRUE(catalogue.updateShortcut(second, one));
    }

    /// Plans for a file that nobody knows anything of.
    host::ActionsPlan plan() const { return host::planActions(catalogue, {}, std::nullopt); }

    /// Saves to a file with this text, and returns what was planned; the text is the new one afterwards.
    host::ActionsPlan save(std::string& file, const std::set<int>& touched = {}) {
        host::ActionsPlan plan = host::planActions(catalogue, base_, file, touched);
        base_ = plan.base;
        file = plan.text;
        return plan;
    }

    /// Starts anew, as the next process does.
    void restart(const std::string& user) { catalogue.load(text_, user); }

private:
    actions::ObserverRegistry nobody_;

public:
    actions::ActionCatalogue catalogue{nobody_};

private:
    std::string text_;
    host::ActionsBase base_;
};

}  // namespace zelutil::test

#endif
