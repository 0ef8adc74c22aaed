#ifndef ZELUTIL_HOST_UNREAD_PARTS_H
#define ZELUTIL_HOST_UNREAD_PARTS_H

#include <set>
#include <string>
#include <string_view>

#include "json/view.h"
#include "prefs/unread_content.h"

namespace zelutil::host {

/// Collects what the user's file holds and a save, which writes it anew, may leave out.
struct UnreadParts {
    std::set<prefs::UnreadContent> contents;
    /// Numbers with more digits than are held of them.
    std::set<std::string> numbers;
    /// Bytes behind a null character, at which a text ends for every reader.
    std::string behindEnd;

    bool empty() const { return contents.empty() && numbers.empty() && behindEnd.empty(); }
    bool areAllIn(const UnreadParts& others) const;
};

/// `root` is that of the text.
UnreadParts unreadPartsOf(std::string_view text, json::View root);

/// Returns whether a new text for the actions leaves out anything that the old one holds beside entries that are read.
bool losesPartsOfActions(std::string_view oldText, std::string_view newText);

}  // namespace zelutil::host

#endif
