#include "keys/key_holders.h"

#include <zelutil/actions/action_manager.h>

#include <algorithm>
#include <set>

#include "actions/reachable_actions.h"
#include "keys/key_text.h"
#include "window/editors.h"

namespace viewer {

namespace {

UCPActionManager& manager() { return UCPActionManager::instance(); }

/// The contexts whose shortcuts exclude each other.
std::string linkedContext(const std::string& context) {
    if (context == "ucpedit") {
        return "brisk3d";
    }
    return context == "brisk3d" ? "ucpedit" : "";
}

/// Returns the text itself and every other one of the catalogue that makes the same key.
std::vector<std::string> spellingsOf(const QString& shortcut) {
    const std::optional<QKeySequence> key = keyOf(shortcut);
    std::set<std::string> spellings{shortcut.toStdString()};
    for (const UCPActionItem& item : manager().getAllActions()) {
        const QString other = shortcutOf(item);
        if (key && keyOf(other) == key) {
            spellings.insert(other.toStdString());
        }
    }
    return {spellings.begin(), spellings.end()};
}

QString sentence(int holder, KeyHolder::Place place) {
    switch (place) {
        case KeyHolder::Place::SameContext:
            return QStringLiteral("%1 has it.").arg(titleOf(holder));
        case KeyHolder::Place::LinkedContext:
            return QStringLiteral("%1 has it; the two editors share their keys.").arg(titleOf(holder));
        case KeyHolder::Place::ChildsContext:
            break;
    }
    return QStringLiteral("%1 has it where the action's key holds, too.").arg(titleOf(holder));
}

/// Collects holders for one action and those that follow it.
class Search {
public:
    Search(int top, const QString& shortcut) : top_(top), spellings_(spellingsOf(shortcut)) {}

    std::vector<KeyHolder> run() {
        look(top_);
        return std::move(holders_);
    }

private:
    void look(int id) {
        const auto [isKnown, item] = manager().getAction(id);
        if (!isKnown || !seen_.insert(id).second) {
            return;
        }
        const bool isTop = id == top_;
        lookIn(item.context, isTop ? KeyHolder::Place::SameContext : KeyHolder::Place::ChildsContext);
        lookIn(linkedContext(item.context), isTop ? KeyHolder::Place::LinkedContext : KeyHolder::Place::ChildsContext);
        for (const int child : manager().getChildActionIds(id)) {
            look(child);
        }
    }

    void lookIn(const std::string& context, KeyHolder::Place place) {
        for (const std::string& spelling : spellings_) {
            const int holder = manager().getActionIdByShortcut(context, spelling);
            if (holder > 0 && topOf(holder) != top_ && !isListed(holder)) {
                holders_.push_back({holder, place, QString::fromStdString(spelling), sentence(holder, place)});
            }
        }
    }

    bool isListed(int id) const {
        return std::any_of(holders_.begin(), holders_.end(), [id](const KeyHolder& holder) { return holder.id == id; });
    }

    int top_;
    std::vector<std::string> spellings_;
    std::set<int> seen_;
    std::vector<KeyHolder> holders_;
};

}  // namespace

std::vector<KeyHolder> holdersOf(int id, const QString& shortcut) {
    return shortcut.isEmpty() ? std::vector<KeyHolder>() : Search(topOf(id), shortcut).run();
}

int topOf(int id) {
    std::set<int> seen;
    while (seen.insert(id).second) {
        const auto [isKnown, item] = manager().getAction(id);
        if (!isKnown || item.parent_id <= 0 || !manager().getAction(item.parent_id).first) {
            return id;
        }
        id = item.parent_id;
    }
    return id;
}

QString titleOf(int id) {
    const UCPActionItem item = manager().getAction(id).second;
    return QStringLiteral("\"%1\" (%2)")
        .arg(QString::fromStdString(item.name), contextTitle(QString::fromStdString(item.context)));
}

}  // namespace viewer
