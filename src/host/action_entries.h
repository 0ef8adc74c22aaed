#ifndef ZELUTIL_HOST_ACTION_ENTRIES_H
#define ZELUTIL_HOST_ACTION_ENTRIES_H

#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace zelutil::host {

/// One element of a user's text.
struct ActionEntry {
    int id = 0;
    std::optional<std::string> shortcut;
    std::optional<bool> inMenu;
};

using ActionEntries = std::vector<ActionEntry>;

/// An element for an action that the shipped text does not define, as it stands in the file.
struct ForeignEntry {
    int id = 0;
    std::string text;
};

/// Returns the elements of a user's text whose ids are none of `known`. An element without an id of 1 or more is left
/// out, since it would end the reading of what a later version may know.
std::vector<ForeignEntry> foreignEntries(std::string_view userText, const std::set<int>& known);

/// Returns [{"actions":[...]}] with the entries and then the foreign ones.
std::string userTextOf(const ActionEntries& entries, const std::vector<ForeignEntry>& foreign = {});

}  // namespace zelutil::host

#endif
