#ifndef ZELUTIL_COMMAND_LATER_ENTRY_H
#define ZELUTIL_COMMAND_LATER_ENTRY_H

#include <string>

#include "json/located_document.h"

namespace zelutil::command {

/// Names the entry of a user's file that is read after another one, with the place of its name, as the beginning of a
/// sentence: "A later entry (line 3, column 9)". The entries of a section are read before those of its children, so the
/// one that is read later may stand before the other one.
inline std::string nameOfLaterEntry(const json::Position& other, const json::Position& later) {
    const std::string place = " (line " + std::to_string(later.line) + ", column " + std::to_string(later.column) + ')';
    return later.offset < other.offset
               ? "An entry before it" + place + ", which is read later because a section is read before its children,"
               : "A later entry" + place;
}

}  // namespace zelutil::command

#endif
