// The examples in docs/shortcuts.md, replayed. What they print was worked out by hand.
#include <zelutil/actions/action_manager.h>

#include "actions/manager_access.h"
#include "actions/steal_shortcut.h"
#include "host/action_fixture.h"
#include "support/text_file.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace zelutil::test {
namespace {

struct Example {
    std::string heading;
    std::vector<std::string> lines;
};

/// Returns the blocks of the document in their order, each with the heading that it stands under.
std::vector<Example> readExamples() {
    std::istringstream lines(readTextFile(ZELUTIL_TEST_DATA "/../../docs/shortcuts.md"));
    std::vector<Example> examples;
    std::string heading;
    bool inBlock = false;
    for (std::string line; std::getline(lines, line);) {
        if (line.rfind("###", 0) == 0) {
            heading = line;
        } else if (line == "```shortcuts") {
            inBlock = true;
            examples.push_back({heading, {}});
        } else if (line == "```") {
            inBlock = false;
        } else if (inBlock) {
            examples.back().lines.push_back(line);
        }
    }
    return examples;
}

/// Returns the ids in the form "2, 1".
std::string listed(const std::vector<int>& ids, const std::string& ifNone) {
    std::string text;
    for (const int id : ids) {
        text += (text.empty() ? "" : ", ") + std::to_string(id);
    }
    return text.empty() ? ifNone : text;
}

/// Writes down of which actions it is told.
class Listener final : public IUCPActionObserver {
public:
    void onShortcutChanged(int actionId, const std::string& /*oldShortcut*/,
                           const std::string& /*newShortcut*/) override {
        told_.push_back(actionId);
    }
    void onRMBMenuChanged(int actionId, bool /*inMenu*/) override { told_.push_back(actionId); }

    std::string take() { return "told: " + listed(std::exchange(told_, {}), "nobody"); }

private:
    std::vector<int> told_;
};

/// Runs the lines of one example. A line that is indented was printed, so it is no line to be run.
class Replay {
public:
    Replay() { manager_.attachObserver(&listener_); }
    Replay(const Replay&) = delete;
    Replay& operator=(const Replay&) = delete;
    ~Replay() { manager_.detachObserver(&listener_); }

    /// Returns the lines with what they print, as the example should have it.
    std::string run(const std::vector<std::string>& lines) {
        for (const std::string& line : lines) {
            if (line.rfind("  ", 0) != 0) {
                output_ += line + "\n";
                runLine(line);
            }
        }
        return output_;
    }

private:
    void runLine(const std::string& line) {
        std::istringstream words(line);
        std::string verb;
        words >> verb;
        if (verb == "ship") {
            ship(words, line);
        } else if (verb == "user") {
            addUserEntry(words);
        } else {
            start();
            runInProcess(verb, words, line);
        }
    }

    void runInProcess(const std::string& verb, std::istream& words, const std::string& line) {
        if (verb == "set" || verb == "steal") {
            edit(verb == "steal", words);
        } else if (verb == "show" || verb == "hide") {
            int id = 0;
            words >> id;
            manager_.updateRMBMenu(id, verb == "show");
            print(listener_.take());
        } else if (verb == "press") {
            press(words, line);
        } else if (line == "table") {
            printTable();
        } else if (line == "save") {
            save();
        } else if (line == "save by the old calls") {
            saveByOldCalls();
        } else if (line == "restart") {
            isStarted_ = false;
        } else {
            print("this line means nothing");
        }
    }

    void print(const std::string& text) { output_ += "  " + text + "\n"; }

    /// Reads a shortcut, which is "-" in the document where there is none.
    std::string readShortcut(std::istream& words) {
        std::string shortcut;
        words >> shortcut;
        shortcuts_.insert(shortcut);
        return shortcut == "-" ? "" : shortcut;
    }

    void ship(std::istream& words, const std::string& line) {
        int id = 0;
        std::string context;
        words >> id >> context;
        const std::string shortcut = readShortcut(words);
        const std::size_t child = line.find(" child of ");
        const int parent = child == std::string::npos ? 0 : std::stoi(line.substr(child + 10));
        const bool inMenu = line.find(" in menu") != std::string::npos;
        contexts_[id] = context;
        shipped_ += (shipped_.empty() ? "" : ",") +
                    shippedAction(id, context, shortcut, parent, inMenu ? R"(,"rmb":true)" : "");
    }

    void addUserEntry(std::istream& words) {
        int id = 0;
        words >> id;
        userEntries_ += (userEntries_.empty() ? "" : ",") + std::string(R"({"id":)") + std::to_string(id) +
                        R"(,"shortcut":")" + readShortcut(words) + "\"}";
        userText_ = userText(userEntries_);
    }

    /// Loads the actions where that is still to be done.
    void start() {
        if (!isStarted_) {
            manager_.load("{\"actions\":[" + shipped_ + "]}", userText_);
            listener_.take();
            isStarted_ = true;
        }
    }

    void edit(bool byTheft, std::istream& words) {
        int id = 0;
        words >> id;
        const std::string shortcut = readShortcut(words);
        const int holder = manager_.isShortcutTaken(id, shortcut);
        const bool done =
            byTheft ? UCPActionManagerTestPeer::steal(id, shortcut) : manager_.updateShortcut(id, shortcut);
        const std::string told = listener_.take();
        print(done ? "done; " + told : "refused: " + std::to_string(holder) + " has it");
    }

    void press(std::istream& words, const std::string& line) {
        std::string context;
        words >> context;
        const std::string shortcut = readShortcut(words);
        const bool fallback = line.find(" or ucpedit") != std::string::npos;
        const std::string command = manager_.getCommand(context, shortcut, fallback);
        // The fixture calls the command of action 7 "run7".
        print(command.empty() ? "runs nothing" : "runs " + command.substr(3));
    }

    /// Returns the shortcuts of the example that the action holds in its context.
    std::string heldBy(int id) const {
        std::string held;
        for (const std::string& shortcut : shortcuts_) {
            if (manager_.getActionIdByShortcut(contexts_.at(id), shortcut) == id) {
                held += (held.empty() ? "" : " ") + shortcut;
            }
        }
        return held.empty() ? "-" : held;
    }

    void printTable() {
        print("id  shows  runs on");
        for (const auto& [id, context] : contexts_) {
            const std::string shown = manager_.getShortcut(id);
            const UCPActionItem item = manager_.getAction(id).second;
            std::string row = std::to_string(id);
            row.resize(4, ' ');
            row += shown.empty() ? "-" : shown;
            row.resize(11, ' ');
            row += heldBy(id);
            if (actions::effectiveValue(item.rmb)) {
                row.resize(20, ' ');
                row += "in menu";
            }
            print(row);
        }
    }

    void save() {
        const host::ActionsPlan plan =
            host::planActions(actions::ManagerAccess::catalogueOf(manager_), {}, std::nullopt);
        std::vector<int> lost;
        for (const host::NotRestored& item : plan.notRestored) {
            lost.push_back(item.action);
        }
        userText_ = plan.text;
        print(plan.text);
        if (!lost.empty()) {
            print("do not come back: " + listed(lost, ""));
        }
    }

    void saveByOldCalls() {
        const std::string text = manager_.getAllUserSettings();
        userText_ = "[" + text + "]";
        print(text.empty() ? "nothing" : userText_);
    }

    UCPActionManager& manager_ = UCPActionManager::instance();
    Listener listener_;
    std::map<int, std::string> contexts_;
    std::set<std::string> shortcuts_;
    std::string shipped_;
    std::string userEntries_;
    std::string userText_;
    std::string output_;
    bool isStarted_ = false;
};

TEST(ShortcutsExamples, PrintWhatTheDocumentSays) {
    const std::vector<Example> examples = readExamples();
    ASSERT_FALSE(examples.empty());
    for (const Example& example : examples) {
        std::string written;
        for (const std::string& line : example.lines) {
            written += line + "\n";
        }
        EXPECT_EQ(Replay().run(example.lines), written) << example.heading;
    }
}

TEST(ShortcutsExamples, AreNumberedFromOneOn) {
    int number = 0;
    std::string last;
    for (const Example& example : readExamples()) {
        number += example.heading != last ? 1 : 0;
        last = example.heading;
        EXPECT_EQ(example.heading.rfind("### " + std::to_string(number) + ". ", 0), 0U) << example.heading;
    }
}

}  // namespace
}  // namespace zelutil::test
