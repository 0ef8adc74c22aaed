// Memory runs out at each allocation of a load in turn. Afterwards the catalogue is the old one or the new one as far
// as it came, and answers and edits as any other.
#include "actions/action_catalogue.h"

#include <gtest/gtest.h>

#include <map>
#include <new>
#include <string>
#include <tuple>
#include <vector>

#include "actions/overwritable.h"
#include "support/scarce_memory.h"

namespace zelutil::test {
namespace {

using actions::ActionCatalogue;
using actions::ObserverRegistry;

constexpr int kHighestId = 120;

/// Texts too long to lie in their strings, so that each copy needs memory.
std::string longText(const std::string& what, int number) {
    return "A " + what + " with a text that is rather long, number " + std::to_string(number);
}

std::string shippedText() {
    std::string list;
    for (int id = 1; id <= 40; ++id) {
        const int parent = id % 3 == 0 ? id - 1 : (id % 7 == 0 ? 100 + id : 0);
        list += std::string(list.empty() ? "" : ",") + R"({"id":)" + std::to_string(id) + R"(,"name":")" +
                longText("name", id) + R"(","parent_id":)" + std::to_string(parent) + R"(,"context":")" +
                longText("context", id % 9) + R"(","command":")" + longText("command", id) + R"(","shortcut":")" +
                longText("shortcut", id) + R"("})";
    }
    return "{\"actions\":[" + list + "]}";
}

std::string userText() {
    return R"([{"actions":[{"id":2,"shortcut":")" + longText("shortcut", 99) +
           R"(","rmb":true},{"id":4,"shortcut":""}]}])";
}

const std::string kOldShipped = R"({"actions":[{"id":1,"context":"board","command":"open","shortcut":"F1"},)"
                                R"({"id":90,"parent_id":91,"context":"panel","command":"shut","rmb":true}]})";
const std::string kOldUser = R"([{"actions":[{"id":1,"shortcut":"F7"}]}])";

/// Returns one text of all that a catalogue says to its queries.
std::string everythingOf(const ActionCatalogue& catalogue) {
    std::string all = catalogue.userText() + (catalogue.modified() ? " modified" : "");
    for (const UCPActionItem& item : catalogue.items()) {
        all += "\n" + std::to_string(item.id) + "|" + std::to_string(item.parent_id) + "|" + item.name + "|" +
               item.context + "|" + item.command + "|" + item.shortcut.defaultValue + "|" + item.shortcut.userValue +
               (item.shortcut.overwritten ? "|own" : "|") + (item.rmb.defaultValue ? "|in" : "|") +
               (item.rmb.userValue ? "|in" : "|") + (item.rmb.overwritten ? "|own" : "|");
        all += "|" + std::to_string(catalogue.idByCommand(item.context, item.command)) + "|" +
               std::to_string(catalogue.idByShortcut(item.context, actions::effectiveValue(item.shortcut))) + "|" +
               std::string(catalogue.command(item.context, actions::effectiveValue(item.shortcut), true));
    }
    for (int id = -1; id <= kHighestId + 30; ++id) {
        all += catalogue.find(id) != nullptr ? "+" : "-";
        for (const int child : catalogue.childIds(id)) {
            all += std::to_string(child) + ",";
        }
        all += std::to_string(catalogue.shortcutTakenBy(id, longText("shortcut", 8)));
    }
    all += "\n" + std::to_string(catalogue.menuItems().size());
    return all;
}

/// Remembers the last shortcut that each action was said to have.
class Listener final : public IUCPActionObserver {
public:
    void onShortcutChanged(int actionId, const std::string& /*oldShortcut*/, const std::string& newShortcut) override {
        told[actionId] = newShortcut;
    }
    void onRMBMenuChanged(int /*actionId*/, bool /*inMenu*/) override {}

    std::map<int, std::string> told;
};

void loadOld(ActionCatalogue& catalogue) { catalogue.load(kOldShipped, kOldUser); }

/// Each action can be given a shortcut of its own and is found by it.
void expectEditable(ActionCatalogue& catalogue) {
    for (int id = 0; id <= kHighestId; ++id) {
        const ActionCatalogue::Action* const action = catalogue.find(id);
        catalogue.updateMenu(id, true);
        const std::string shortcut = longText("new shortcut", id);
        ASSERT_EQ(catalogue.updateShortcut(id, shortcut), action != nullptr) << id;
        if (action != nullptr) {
            ASSERT_EQ(actions::effectiveValue(action->shortcut), shortcut);
            ASSERT_EQ(catalogue.idByShortcut(action->item().context, shortcut), id);
        }
    }
    EXPECT_NE(catalogue.userText(), "");
}

TEST(ActionOutOfMemory, LoadLeavesTheCatalogueWholeWhereverItFails) {
    const std::string shipped = shippedText();
    const std::string user = userText();
    ObserverRegistry observers;
    ActionCatalogue reference(observers);
    loadOld(reference);
    const std::string before = everythingOf(reference);
    reference.load(shipped, user);
    const std::string after = everythingOf(reference);

    int keptOld = 0;
    int stoppedInTheNew = 0;
    for (int allowed = 0;; ++allowed) {
        Listener listener;
        ObserverRegistry registry;
        ActionCatalogue catalogue(registry);
        loadOld(catalogue);
        registry.attach(ObserverRegistry::kAllActions, &listener);
        // The listener's own memory fails with the rest; so what is told is compared only where it got through.
        const bool failed = failsWith(allowed, [&] { catalogue.load(shipped, user); });
        const std::string now = everythingOf(catalogue);
        if (!failed) {
            EXPECT_EQ(now, after);
            break;
        }
        if (now == before) {
            ++keptOld;
            EXPECT_TRUE(listener.told.empty()) << allowed;
        } else {
            ++stoppedInTheNew;
            // All that the text defines is there.
            EXPECT_EQ(catalogue.find(90), nullptr) << allowed;
            for (int id = 1; id <= 40; ++id) {
                ASSERT_NE(catalogue.find(id), nullptr) << allowed;
            }
            EXPECT_TRUE(listener.told.empty() || catalogue.modified()) << allowed;
        }
        expectEditable(catalogue);
        catalogue.load(shipped, user);
        ASSERT_EQ(everythingOf(catalogue), after) << allowed;
        ASSERT_FALSE(testing::Test::HasFailure()) << allowed;
    }
    // Fewer on Windows, where copies of texts are made with the memory of the standard library's DLL.
    EXPECT_GT(keptOld, 50);
    EXPECT_GT(stoppedInTheNew, 10);
}

TEST(ActionOutOfMemory, ChangeOfAShortcutIsMadeOrNot) {
    ObserverRegistry observers;
    const std::string shipped = R"({"actions":[{"id":4,"context":")" + longText("context", 4) +
                                R"(","command":"open","shortcut":")" + longText("shortcut", 4) + R"("}]})";
    for (int allowed = 0;; ++allowed) {
        ActionCatalogue catalogue(observers);
        catalogue.load(shipped, "");
        const std::string before = everythingOf(catalogue);
        const std::string wanted = longText("new shortcut", 1);
        if (!failsWith(allowed, [&] { catalogue.updateShortcut(4, wanted); })) {
            EXPECT_GT(allowed, 0);
            EXPECT_EQ(catalogue.idByShortcut(longText("context", 4), wanted), 4);
            break;
        }
        const bool made = actions::effectiveValue(catalogue.find(4)->shortcut) == wanted;
        EXPECT_EQ(catalogue.idByShortcut(longText("context", 4), wanted), made ? 4 : 0) << allowed;
        EXPECT_EQ(catalogue.modified(), made) << allowed;
        if (!made) {
            EXPECT_EQ(everythingOf(catalogue), before) << allowed;
        }
        // It can be made again, as far as it was not made.
        EXPECT_TRUE(catalogue.updateShortcut(4, wanted)) << allowed;
        EXPECT_EQ(catalogue.idByShortcut(longText("context", 4), wanted), 4) << allowed;
        expectEditable(catalogue);
    }
}

}  // namespace
}  // namespace zelutil::test
