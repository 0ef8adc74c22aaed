#include "host/action_worlds.h"

#include <algorithm>
#include <set>

namespace zelutil::test {
namespace {

const std::vector<std::string> kContextNames = {"board", "panel", "sheet"};
const std::vector<std::string> kLinkedContexts = {"ucpedit", "brisk3d", "board"};

std::string contextAt(const Kind& kind, int place) {
    return (kind.linked ? kLinkedContexts : kContextNames)[static_cast<std::size_t>(place)];
}

std::string shortcutAt(int place) { return place == 0 ? std::string() : "F" + std::to_string(place); }

bool chance(ActionRandom& random, int inHundred) { return numberBelow(random, 100) < inHundred; }

/// One name for linked contexts.
std::string keyboard(const std::string& context) { return context == "brisk3d" ? "ucpedit" : context; }

std::string answer(const UCPActionItem& item) {
    const auto flag = [](bool value) { return value ? '1' : '0'; };
    std::string text = "#";
    for (const bool value : {item.rmb.defaultValue, item.rmb.userValue, item.rmb.resetValue, item.rmb.overwritten}) {
        text += flag(value);
    }
    return item.shortcut.defaultValue + "," + item.shortcut.userValue + "," + item.shortcut.resetValue +
           (item.shortcut.overwritten ? ",user" : ",shipped") + text;
}

}  // namespace

int numberBelow(ActionRandom& random, int count) {
    return static_cast<int>(random() % static_cast<ActionRandom::result_type>(count));
}

std::vector<Shipped> randomShipped(ActionRandom& random, const Kind& kind) {
    std::vector<int> ids;
    for (int id = 1; id <= kind.actions; ++id) {
        ids.push_back(id);
    }
    if (kind.mixedIds) {
        std::shuffle(ids.begin(), ids.end(), random);
    }
    std::vector<Shipped> shipped;
    std::set<std::pair<std::string, std::string>> used;
    for (const int id : ids) {
        Shipped action;
        action.id = id;
        if (!shipped.empty() && chance(random, kind.withParent)) {
            action.parent = shipped[static_cast<std::size_t>(numberBelow(random, static_cast<int>(shipped.size())))].id;
        } else if (chance(random, kind.withMissingParent)) {
            action.parent = 90 + numberBelow(random, 2);
        }
        action.context = contextAt(kind, numberBelow(random, kind.contexts));
        action.command =
            chance(random, kind.withSharedCommand) ? std::string("shared") : "command" + std::to_string(id);
        action.shortcut = shortcutAt(numberBelow(random, kind.shortcuts + 1));
        if (!kind.shippedTwice && !used.emplace(keyboard(action.context), action.shortcut).second) {
            action.shortcut.clear();
        }
        action.inMenu = chance(random, 30);
        shipped.push_back(action);
    }
    if (kind.mixedIds) {
        std::shuffle(shipped.begin(), shipped.end(), random);
    }
    return shipped;
}

std::string shippedText(const std::vector<Shipped>& shipped) {
    std::string text;
    for (const Shipped& action : shipped) {
        text += (text.empty() ? "{\"id\":" : ",{\"id\":") + std::to_string(action.id) +
                ",\"parent_id\":" + std::to_string(action.parent) + ",\"context\":\"" + action.context +
                "\",\"command\":\"" + action.command + "\",\"shortcut\":\"" + action.shortcut +
                "\",\"rmb\":" + (action.inMenu ? "true" : "false") + "}";
    }
    return "{\"actions\":[" + text + "]}";
}

void editAtRandom(ActionRandom& random, actions::ActionCatalogue& catalogue, const std::vector<Shipped>& shipped,
                  const Kind& kind, int edits) {
    for (int edit = 0; edit < edits; ++edit) {
        const Shipped& action =
            shipped[static_cast<std::size_t>(numberBelow(random, static_cast<int>(shipped.size())))];
        if (action.parent != 0 && !kind.editChildren) {
            continue;
        }
        if (chance(random, 15)) {
            catalogue.updateMenu(action.id, chance(random, 50));
            continue;
        }
        const std::string shortcut = shortcutAt(numberBelow(random, kind.shortcuts + 1));
        const int holder = catalogue.shortcutTakenBy(action.id, shortcut);
        if (holder != 0 && chance(random, 70)) {
            // The user takes it from its holder, as a dialog offers, and often gives the old one in exchange.
            const std::string old = catalogue.find(action.id)->item().shortcut.overwritten
                                        ? catalogue.find(action.id)->item().shortcut.userValue
                                        : catalogue.find(action.id)->item().shortcut.defaultValue;
            catalogue.updateShortcut(holder, std::string());
            catalogue.updateShortcut(action.id, shortcut);
            if (chance(random, 60)) {
                catalogue.updateShortcut(holder, old);
            }
            continue;
        }
        catalogue.updateShortcut(action.id, shortcut);
    }
}

Answers answersOf(const actions::ActionCatalogue& catalogue, const std::vector<Shipped>& shipped) {
    Answers answers;
    for (const Shipped& action : shipped) {
        answers[action.id] = answer(catalogue.find(action.id)->item());
    }
    for (const int id : {90, 91}) {
        if (const actions::ActionCatalogue::Action* const standIn = catalogue.find(id)) {
            answers[id] = answer(standIn->item());
        }
    }
    std::set<std::string> contexts;
    for (const Shipped& action : shipped) {
        contexts.insert(action.context);
    }
    for (const std::string& context : contexts) {
        for (int key = 1; key < 12; ++key) {
            const int holder = catalogue.idByShortcut(context, shortcutAt(key));
            if (holder != 0) {
                answers[holder].insert(0, context + "/" + shortcutAt(key) + "=" +
                                              std::string(catalogue.command(context, shortcutAt(key), true)) + " ");
            }
        }
    }
    return answers;
}

}  // namespace zelutil::test
