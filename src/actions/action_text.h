#ifndef ZELUTIL_ACTIONS_ACTION_TEXT_H
#define ZELUTIL_ACTIONS_ACTION_TEXT_H

#include <zelutil/actions/action_item.h>

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "json/document.h"
#include "json/writer.h"

/// The JSON form of the shipped action text and of the user's. Both are read one element at a time; what an element
/// lacks, or has in another type, gets the value that stands for it, and whether it then makes sense is not decided
/// here.
namespace zelutil::actions {

/// One element of a shipped text. The texts live as long as their reader and its text.
struct ActionDefinition {
    int id = 0;
    int parentId = 0;
    std::string_view name;
    std::string_view icon;
    std::string_view context;
    std::string_view command;
    std::string_view shortcut;
    bool inMenu = false;

    /// Returns whether it makes sense as an action. A load passes over one that does not.
    bool isUsable() const { return id >= 1 && parentId >= 0 && !command.empty() && !context.empty(); }
};

/// Reads one element of a shipped text; the texts live as long as its document.
ActionDefinition definitionOf(json::View element);

/// Reads {"actions":[...]}. Any other text has no elements.
class DefinitionReader {
public:
    /// The text must stay.
    explicit DefinitionReader(std::string_view text);
    /// Reads a value that was parsed, whose document must stay.
    explicit DefinitionReader(json::View root);

    /// The next element; false at the end.
    bool next(ActionDefinition& definition);

    /// Elements of the text, as far as they can be actions: one that makes sense takes some characters.
    std::size_t count() const;

private:
    std::size_t textSize_;
    std::optional<json::Document> document_;
    json::Elements elements_;
    json::Elements::Iterator next_;
};

/// One element of a user's text. The shortcut lives as long as its reader.
struct UserEntry {
    /// 1 or more, as a reader returns it.
    int id = 0;
    std::optional<std::string_view> shortcut;
    std::optional<bool> inMenu;
};

/// Returns the array with the elements of a user's text, [{"actions":[...]}]; absent for any other value.
json::View userEntriesOf(json::View root);

/// Reads one element of a user's text; the shortcut lives as long as its document. The id is less than 1 for one
/// without an id, from which on nothing is read.
UserEntry userEntryOf(json::View element);

/// Reads [{"actions":[...]}]. Any other text has no elements.
class UserEntryReader {
public:
    explicit UserEntryReader(std::string_view text);

    /// The next element; false at the end and from the first element on that has no id of 1 or more.
    bool next(UserEntry& entry);

private:
    json::Document document_;
    json::Elements elements_;
    json::Elements::Iterator next_;
};

/// Writes {"actions":[...]} without white space.
///
/// Kept deliberately: this is the bare object, although the reader wants it wrapped in an array. Wrapping it is the
/// task of the host that stores it.
class UserTextWriter {
public:
    UserTextWriter();

    /// An element of the id and the overwritten properties.
    void add(int id, const OverwritableValue<std::string>& shortcut, const OverwritableValue<bool>& rmb);

    /// Ends the text and returns it; nothing may be added or asked for afterwards.
    std::string text();

private:
    json::CompactWriter writer_;
};

}  // namespace zelutil::actions

#endif
