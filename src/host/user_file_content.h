#ifndef ZELUTIL_HOST_USER_FILE_CONTENT_H
#define ZELUTIL_HOST_USER_FILE_CONTENT_H

#include <cstddef>
#include <list>
#include <string>
#include <vector>

#include "host/unread_parts.h"
#include "json/document.h"
#include "prefs/user_file_text.h"

namespace zelutil::host {

/// Holds what a user's file is to be written of, and everything that its views point into.
struct UserFileContent {
    /// The texts that the views point into. Lists, because their elements stay where they are.
    std::list<json::Document> documents;
    std::list<std::string> strings;

    json::View defaults;
    /// One for each section of the defaults, in the order of a walk.
    std::vector<prefs::SavedSection> sections;
    /// Indexes of the sections that belong to the actions.
    std::vector<std::size_t> sectionsOfActions;
    std::vector<prefs::KeptSection> kept;
    /// Members of the whole that the defaults lack.
    std::vector<json::Member> members;
    /// All that the file holds now and the reader passes over.
    UnreadParts unread;
};

}  // namespace zelutil::host

#endif
