#include "host/ungranted_entries.h"

#include <algorithm>
#include <map>
#include <string>
#include <utility>

#include "host/action_restore.h"

namespace zelutil::host {
namespace {

/// So many of them are tried one by one where not all can be added.
constexpr std::size_t kMostTried = 16;

std::map<int, std::string> lastShortcuts(const ActionEntries& entries) {
    std::map<int, std::string> last;
    for (const ActionEntry& entry : entries) {
        if (entry.shortcut) {
            last[entry.id] = *entry.shortcut;
        }
    }
    return last;
}

bool addIfNothingChanges(const actions::ActionCatalogue& current, const ActionEntries& more, ActionEntries& entries) {
    ActionEntries all = entries;
    all.insert(all.end(), more.begin(), more.end());
    if (!bringAboutTheSame(current, userTextOf(entries), userTextOf(all))) {
        return false;
    }
    entries = std::move(all);
    return true;
}

}  // namespace

ActionEntries ungrantedEntries(const ShippedActions& shipped, const ActionEntries& inFile, const ActionState& loaded,
                               const std::set<int>& replaced) {
    ActionEntries ungranted;
    for (auto& [id, shortcut] : lastShortcuts(inFile)) {
        // An empty one clears the way for others.
        const bool isGranted = shortcut.empty() || shortcut == valuesOf(loaded, id).shortcut;
        if (!isGranted && shipped.topAbove(id) == id && replaced.count(id) == 0) {
            ungranted.push_back({id, shortcut, std::nullopt});
        }
    }
    return ungranted;
}

bool keepUngranted(const actions::ActionCatalogue& current, const ActionEntries& ungranted, ActionEntries& entries) {
    const std::map<int, std::string> there = lastShortcuts(entries);
    ActionEntries missing;
    for (const ActionEntry& entry : ungranted) {
        const auto found = there.find(entry.id);
        if (found == there.end() || found->second.empty()) {
            missing.push_back(entry);
        }
    }
    if (missing.empty() || addIfNothingChanges(current, missing, entries)) {
        return true;
    }
    bool areAllKept = missing.size() <= kMostTried;
    missing.resize(std::min(missing.size(), kMostTried));
    for (const ActionEntry& entry : missing) {
        areAllKept = addIfNothingChanges(current, {entry}, entries) && areAllKept;
    }
    return areAllKept;
}

}  // namespace zelutil::host
