#include "support/action_twin.h"

#include <tuple>

namespace zelutil::test {
namespace {

constexpr int kAll = 0;

/// The entry, or null.
template <typename Index>
auto entryOf(const Index& index, const std::string& context, const std::string& key)
    -> decltype(&index.begin()->second.begin()->second) {
    const auto inner = index.find(context);
    if (inner == index.end()) {
        return nullptr;
    }
    const auto found = inner->second.find(key);
    return found == inner->second.end() ? nullptr : &found->second;
}

}  // namespace

bool ActionEvent::operator==(const ActionEvent& other) const {
    const auto values = [](const ActionEvent& e) {
        return std::tie(e.observer, e.id, e.isShortcut, e.oldShortcut, e.newShortcut, e.inMenu, e.modifiedNow,
                        e.shortcutNow, e.childShortcutsNow, e.holdersNow);
    };
    return values(*this) == values(other);
}

// --- Loading --------------------------------------------------------------------------------------------------------

void ActionTwin::load(const std::vector<TwinDefinition>& definitions, const std::vector<TwinUserEntry>& entries) {
    commandIndex_.clear();
    shortcutIndex_.clear();
    actions_.clear();
    childIds_.clear();
    modified_ = false;
    for (const TwinDefinition& definition : definitions) {
        loadDefault(definition);
    }
    for (const TwinUserEntry& entry : entries) {
        if (entry.id < 1) {
            break;
        }
        if (entry.shortcut) {
            updateShortcut(entry.id, *entry.shortcut);
        }
        if (entry.rmb) {
            updateRMBMenu(entry.id, *entry.rmb);
        }
    }
    updateFromParents();
}

void ActionTwin::loadDefault(const TwinDefinition& definition) {
    if (definition.id < 1 || definition.parentId < 0 || definition.command.empty() || definition.context.empty()) {
        return;
    }
    if (actions_.count(definition.id) != 0) {
        return;
    }
    TwinItem item;
    item.id = definition.id;
    item.parentId = definition.parentId;
    item.name = definition.name;
    item.icon = definition.icon;
    item.context = definition.context;
    item.command = definition.command;
    item.shortcut.defaultValue = definition.shortcut;
    item.rmb.defaultValue = definition.rmb;
    actions_[item.id] = item;
    if (item.parentId > 0) {
        childIds_[item.parentId].push_back(item.id);
    }
    commandIndex_[item.context].insert({item.command, {definition.shortcut, item.id}});
    if (!definition.shortcut.empty()) {
        shortcutIndex_[item.context].insert({definition.shortcut, {item.command, item.id}});
    }
}

void ActionTwin::updateFromParents() {
    for (auto& [id, child] : actions_) {
        if (child.parentId < 1) {
            continue;
        }
        const TwinItem& parent = actions_[child.parentId];
        child.shortcut = parent.shortcut;
        child.rmb = parent.rmb;
        if (child.name.empty()) {
            child.name = parent.name;
        }
        updateShortcut(child.id, child.shortcut.effective());
    }
}

// --- Queries --------------------------------------------------------------------------------------------------------

int ActionTwin::idByCommand(const std::string& context, const std::string& command) const {
    const Entry* const entry = entryOf(commandIndex_, context, command);
    return entry == nullptr ? 0 : entry->second;
}

int ActionTwin::idByShortcut(const std::string& context, const std::string& shortcut) const {
    const Entry* const entry = entryOf(shortcutIndex_, context, shortcut);
    return entry == nullptr ? 0 : entry->second;
}

std::vector<int> ActionTwin::childIds(int id) const {
    const auto found = childIds_.find(id);
    return found == childIds_.end() ? std::vector<int>() : found->second;
}

std::string ActionTwin::command(const std::string& context, const std::string& shortcut, bool fallback) const {
    if (shortcut.empty()) {
        return "";
    }
    if (const Entry* const entry = entryOf(shortcutIndex_, context, shortcut)) {
        return entry->first;
    }
    if (fallback) {
        if (const Entry* const entry = entryOf(shortcutIndex_, "ucpedit", shortcut)) {
            return entry->first;
        }
    }
    return "";
}

std::string ActionTwin::shortcut(int id) const {
    const auto found = actions_.find(id);
    return found == actions_.end() ? "" : found->second.shortcut.effective();
}

int ActionTwin::takenIn(const TwinItem& item, const std::string& context, const std::string& shortcut) const {
    const Entry* const entry = entryOf(shortcutIndex_, context, shortcut);
    if (entry == nullptr) {
        return 0;
    }
    const int owner = entry->second;
    if (owner < 1 || owner == item.id || owner == item.parentId) {
        return 0;
    }
    const auto found = actions_.find(owner);
    if (found == actions_.end() || found->second.parentId == item.id) {
        return 0;
    }
    return owner;
}

int ActionTwin::isShortcutTaken(int id, const std::string& shortcut) const {
    std::set<int> visited;
    return taken(id, shortcut, visited);
}

int ActionTwin::taken(int id, const std::string& shortcut, std::set<int>& visited) const {
    if (!visited.insert(id).second) {
        return 0;
    }
    const auto found = actions_.find(id);
    if (found == actions_.end()) {
        return 0;
    }
    const TwinItem& item = found->second;
    int owner = takenIn(item, item.context, shortcut);
    if (owner > 0) {
        return owner;
    }
    if (item.context == "brisk3d") {
        owner = takenIn(item, "ucpedit", shortcut);
        if (owner > 0) {
            return owner;
        }
    }
    if (item.context == "ucpedit") {
        owner = takenIn(item, "brisk3d", shortcut);
        if (owner > 0) {
            return owner;
        }
    }
    for (const int child : childIds(id)) {
        owner = taken(child, shortcut, visited);
        if (owner > 0) {
            return owner;
        }
    }
    return 0;
}

std::string ActionTwin::userText() const {
    if (!modified_) {
        return "";
    }
    std::string list;
    for (const auto& [id, item] : actions_) {
        if (item.parentId != 0 || (!item.shortcut.overwritten && !item.rmb.overwritten)) {
            continue;
        }
        list += list.empty() ? "" : ",";
        list += "{\"id\":" + std::to_string(item.id);
        if (item.shortcut.overwritten) {
            list += ",\"shortcut\":\"" + item.shortcut.userValue + "\"";
        }
        if (item.rmb.overwritten) {
            list += std::string(",\"rmb\":") + (item.rmb.userValue ? "true" : "false");
        }
        list += "}";
    }
    return "{\"actions\":[" + list + "]}";
}

// --- Edits ----------------------------------------------------------------------------------------------------------

bool ActionTwin::updateShortcut(int id, const std::string& shortcut) { return update(id, shortcut, id); }

bool ActionTwin::update(int id, const std::string& shortcut, int origin) {
    if (isShortcutTaken(id, shortcut) != 0) {
        return false;
    }
    if (actions_.count(id) == 0) {
        return false;
    }
    TwinItem& item = actions_[id];
    Entry& current = commandIndex_[item.context][item.command];
    if (current.first == shortcut) {
        return true;
    }
    const std::string old = current.first;
    if (!old.empty()) {
        shortcutIndex_[item.context].erase(old);
    }
    if (!shortcut.empty()) {
        shortcutIndex_[item.context].insert({shortcut, {item.command, id}});
    }
    finishShortcut(id, old, shortcut, origin);
    return true;
}

void ActionTwin::finishShortcut(int id, const std::string& old, const std::string& shortcut, int origin) {
    TwinItem& item = actions_[id];
    commandIndex_[item.context][item.command].first = shortcut;
    item.shortcut.set(shortcut);
    for (const int child : childIds(id)) {
        if (child != origin) {
            update(child, shortcut, origin);
        }
    }
    modified_ = true;
    ActionEvent event;
    event.isShortcut = true;
    event.oldShortcut = old;
    event.newShortcut = shortcut;
    notify(id, event);
}

bool ActionTwin::updateShortcut(const std::string& context, const std::string& command, const std::string& shortcut) {
    const Entry* const entry = entryOf(commandIndex_, context, command);
    return entry != nullptr && updateShortcut(entry->second, shortcut);
}

bool ActionTwin::stealShortcut(int id, const std::string& shortcut) {
    std::set<int> visited;
    return steal(id, shortcut, visited);
}

bool ActionTwin::steal(int id, const std::string& shortcut, std::set<int>& visited) {
    if (actions_.count(id) == 0 || !visited.insert(id).second) {
        return false;
    }
    TwinItem& item = actions_[id];
    if (item.parentId >= 1) {
        return steal(item.parentId, shortcut, visited);
    }
    const std::string old = commandIndex_[item.context][item.command].first;
    if (old == shortcut) {
        return true;
    }
    if (!old.empty()) {
        shortcutIndex_[item.context].erase(old);
    }
    if (!shortcut.empty()) {
        const Entry* const entry = entryOf(shortcutIndex_, item.context, shortcut);
        if (entry != nullptr && entry->second != id) {
            stealShortcut(entry->second, "");
        }
        shortcutIndex_[item.context].insert({shortcut, {item.command, id}});
    }
    finishShortcut(id, old, shortcut, id);
    return true;
}

void ActionTwin::updateRMBMenu(int id, bool inMenu) { updateMenu(id, inMenu, id); }

void ActionTwin::updateMenu(int id, bool inMenu, int origin) {
    const auto found = actions_.find(id);
    if (found == actions_.end() || found->second.rmb.effective() == inMenu) {
        return;
    }
    found->second.rmb.set(inMenu);
    for (const int child : childIds(id)) {
        if (child != origin) {
            updateMenu(child, inMenu, origin);
        }
    }
    ActionEvent event;
    event.inMenu = inMenu;
    notify(id, event);
}

// --- Observers ------------------------------------------------------------------------------------------------------

bool ActionTwin::attach(int id, int observer) {
    if (actions_.count(id) == 0) {
        return false;
    }
    observersById_[id].insert(observer);
    return true;
}

bool ActionTwin::attachToAll(int observer) {
    observersById_[kAll].insert(observer);
    return true;
}

void ActionTwin::detach(int observer) {
    for (auto& [id, observers] : observersById_) {
        observers.erase(observer);
    }
}

void ActionTwin::notify(int id, ActionEvent event) {
    event.id = id;
    for (const int key : {id, kAll}) {
        for (const int observer : observersById_[key]) {
            event.observer = observer;
            fillInStateNow(event);
            events_.push_back(event);
            if (reaction_) {
                reaction_(event);
            }
        }
    }
}

void ActionTwin::fillInStateNow(ActionEvent& event) const {
    event.modifiedNow = modified_;
    event.shortcutNow = shortcut(event.id);
    event.childShortcutsNow.clear();
    for (const int child : childIds(event.id)) {
        event.childShortcutsNow.push_back(shortcut(child));
    }
    event.holdersNow.clear();
    for (const std::string& context : queries_.contexts) {
        for (const std::string& text : queries_.shortcuts) {
            event.holdersNow.push_back(idByShortcut(context, text));
        }
    }
}

}  // namespace zelutil::test
