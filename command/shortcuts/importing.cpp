#include "command/shortcuts/importing.h"

#include <zelutil/actions/action_manager.h>
#include <zelutil/host/save.h>

#include <algorithm>
#include <optional>

#include "actions/manager_access.h"
#include "actions/observer_registry.h"
#include "command/saved_settings.h"
#include "command/shortcuts/shortcut_changes.h"
#include "host/action_state.h"

namespace zelutil::shortcuts {
namespace {

/// Adds the shortcuts with somebody in the way to what is skipped.
void addRefusedWishes(const PartialPlan& partial, NamedWishes& wishes) {
    const std::vector<ShortcutRow> rows = shortcutTable();
    for (const int id : partial.refused) {
        std::string why;
        for (const InTheWay& one : partial.inTheWay) {
            why += one.action != id ? "" : (why.empty() ? "" : " ") + textOf(one, rows);
        }
        wishes.skipped.push_back(
            {wishes.places.at(id), id, why.empty() ? "No order was found in which the shortcut is accepted." : why});
    }
    std::stable_sort(wishes.skipped.begin(), wishes.skipped.end(),
                     [](const SkippedWish& left, const SkippedWish& right) { return left.place < right.place; });
}

/// Whether all is as the user's file brought it about at the start.
bool isAsLoaded(const actions::ActionCatalogue& catalogue) {
    const actions::ObserverRegistry nobody;
    actions::ActionCatalogue loaded(nobody);
    loaded.load(catalogue.texts().defaults, catalogue.texts().user);
    const host::ActionState now = host::stateOf(catalogue);
    const host::ActionState then = host::stateOf(loaded);
    return now.values == then.values && now.holders == then.holders;
}

}  // namespace

Import importWishes(const WishText& text) {
    const auto& catalogue = actions::ManagerAccess::catalogueOf(UCPActionManager::instance());
    Import import;
    import.wishes = nameWishes(text, catalogue);
    import.partial = planWhatCanBe(catalogue, import.wishes.keys);
    addRefusedWishes(import.partial, import.wishes);
    import.save = applyWishes(import.partial.plan, import.wishes.menuFlags);
    return import;
}

host::SaveResult applyWishes(const WishPlan& plan, const std::map<int, bool>& menuFlags) {
    UCPActionManager& manager = UCPActionManager::instance();
    for (const KeyWish& edit : plan.edits) {
        manager.updateShortcut(edit.action, edit.shortcut);
    }
    for (const auto& [id, inMenu] : menuFlags) {
        manager.updateRMBMenu(id, inMenu);
    }
    const bool isInFile = isAsLoaded(actions::ManagerAccess::catalogueOf(manager));
    const auto result = isInFile ? command::nothingToSave() : std::nullopt;
    return result ? *result : host::save();
}

}  // namespace zelutil::shortcuts
