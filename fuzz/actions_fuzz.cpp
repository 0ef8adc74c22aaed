// Whatever the texts, loading and editing end quietly, and the catalogue holds and tells what its slow twin does. The
// first line of the input is the shipped text, the rest is the user's; without a line break the input is both.
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

#include "actions/action_catalogue.h"
#include "actions/action_text.h"
#include "support/action_twin.h"

namespace {

using namespace zelutil::actions;
using zelutil::test::ActionEvent;
using zelutil::test::ActionTwin;
using zelutil::test::TwinDefinition;
using zelutil::test::TwinItem;
using zelutil::test::TwinProperty;
using zelutil::test::TwinUserEntry;

void require(bool condition) {
    if (!condition) {
        std::abort();
    }
}

class Recorder final : public IUCPActionObserver {
public:
    void onShortcutChanged(int actionId, const std::string& oldShortcut, const std::string& newShortcut) override {
        ActionEvent& event = events.emplace_back();
        event.id = actionId;
        event.isShortcut = true;
        event.oldShortcut = oldShortcut;
        event.newShortcut = newShortcut;
    }

    void onRMBMenuChanged(int actionId, bool inMenu) override {
        ActionEvent& event = events.emplace_back();
        event.id = actionId;
        event.inMenu = inMenu;
    }

    std::vector<ActionEvent> events;
};

/// Ties together what both logs have of an event.
auto toldIn(const ActionEvent& event) {
    return std::tie(event.id, event.isShortcut, event.oldShortcut, event.newShortcut, event.inMenu);
}

template <typename T>
bool same(const OverwritableValue<T>& real, const TwinProperty<T>& twin) {
    return std::tie(real.defaultValue, real.userValue, real.resetValue, real.overwritten) ==
           std::tie(twin.defaultValue, twin.userValue, twin.resetValue, twin.overwritten);
}

/// The catalogue and its twin, given the same texts and edits.
class Pair {
public:
    Pair() {
        observers_.attach(ObserverRegistry::kAllActions, &recorder_);
        twin_.attachToAll(0);
    }

    void load(std::string_view defaultsText, std::string_view userText) {
        std::vector<TwinDefinition> definitions;
        DefinitionReader definitionReader(defaultsText);
        for (ActionDefinition read; definitionReader.next(read);) {
            definitions.push_back({read.id, read.parentId, std::string(read.name), std::string(read.icon),
                                   std::string(read.context), std::string(read.command), std::string(read.shortcut),
                                   read.inMenu});
        }
        std::vector<TwinUserEntry> entries;
        UserEntryReader entryReader(userText);
        for (UserEntry read; entryReader.next(read);) {
            entries.push_back({read.id, std::optional<std::string>(read.shortcut), read.inMenu});
        }
        catalogue_.load(defaultsText, userText);
        twin_.load(definitions, entries);
        compare();
    }

    /// Every action of the first few wants the shortcut of the next, as an edit and by theft, and changes its flag.
    void edit() {
        constexpr std::size_t kEdited = 12;
        std::vector<int> ids;
        for (const auto& [id, item] : twin_.items()) {
            ids.push_back(id);
        }
        for (std::size_t i = 0; i < std::min(ids.size(), kEdited); ++i) {
            const int id = ids[i];
            const std::string shortcut = twin_.shortcut(ids[(i + 1) % ids.size()]);
            require(catalogue_.shortcutTakenBy(id, shortcut) == twin_.isShortcutTaken(id, shortcut));
            require(catalogue_.updateShortcut(id, shortcut) == twin_.updateShortcut(id, shortcut));
            require(catalogue_.updateShortcut(id, "F1") == twin_.updateShortcut(id, "F1"));
            require(catalogue_.stealShortcut(id, shortcut) == twin_.stealShortcut(id, shortcut));
            const bool inMenu = !twin_.items().at(id).rmb.effective();
            catalogue_.updateMenu(id, inMenu);
            twin_.updateRMBMenu(id, inMenu);
        }
        compare();
    }

    /// Reads back, wrapped in an array, what is written.
    void readBack(std::string_view defaultsText) {
        require(catalogue_.modified() != catalogue_.userText().empty());
        load(defaultsText, "[" + catalogue_.userText() + "]");
    }

private:
    void compare() {
        const std::vector<UCPActionItem> items = catalogue_.items();
        require(items.size() == twin_.items().size());
        auto real = items.begin();
        for (const auto& [id, item] : twin_.items()) {
            compareItem(*real++, item);
            require(catalogue_.childIds(id) == twin_.childIds(id));
        }
        require(catalogue_.modified() == twin_.modified());
        const std::vector<ActionEvent> expected = twin_.takeEvents();
        require(std::equal(expected.begin(), expected.end(), recorder_.events.begin(), recorder_.events.end(),
                           [](const ActionEvent& a, const ActionEvent& b) { return toldIn(a) == toldIn(b); }));
        recorder_.events.clear();
    }

    void compareItem(const UCPActionItem& real, const TwinItem& twin) const {
        require(std::tie(real.id, real.parent_id, real.name, real.icon, real.context, real.command) ==
                std::tie(twin.id, twin.parentId, twin.name, twin.icon, twin.context, twin.command));
        require(same(real.shortcut, twin.shortcut) && same(real.rmb, twin.rmb));
        const std::string& shortcut = real.shortcut.defaultValue;
        require(catalogue_.idByCommand(real.context, real.command) == twin_.idByCommand(real.context, real.command));
        require(catalogue_.idByShortcut(real.context, shortcut) == twin_.idByShortcut(real.context, shortcut));
        require(catalogue_.command(real.context, shortcut, true) == twin_.command(real.context, shortcut, true));
    }

    Recorder recorder_;
    ObserverRegistry observers_;
    ActionCatalogue catalogue_{observers_};
    ActionTwin twin_{{}};
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr std::size_t kLargestInput = 1 << 13;
    if (size > kLargestInput) {
        return 0;
    }
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const std::size_t lineEnd = text.find('\n');
    const std::string_view defaultsText = text.substr(0, lineEnd);
    Pair pair;
    pair.load(defaultsText, lineEnd == std::string_view::npos ? text : text.substr(lineEnd + 1));
    pair.edit();
    pair.readBack(defaultsText);
    return 0;
}
