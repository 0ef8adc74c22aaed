#ifndef ZELUTIL_PREFS_UNREAD_CONTENT_H
#define ZELUTIL_PREFS_UNREAD_CONTENT_H

#include <set>
#include <string>

#include "json/view.h"

namespace zelutil::prefs {

/// Something in a preference file at which no reader looks, because it does not stand in the form that is read.
struct UnreadContent {
    std::string section;  ///< The attribute path of the section around it; empty at the top.
    std::string name;     ///< The key of the member that it is, or of the array in which it stands.
    std::string text;     ///< The value without white space.

    bool operator<(const UnreadContent& other) const;
};

/// Returns what is not read of a file: a root that is no object, arrays of sections that are none, elements of them
/// that are no sections, and all but the first of several members of one name.
std::set<UnreadContent> unreadContentOf(json::View root);

}  // namespace zelutil::prefs

#endif
