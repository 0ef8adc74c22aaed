#ifndef ZELUTIL_COMMAND_SECTIONS_H
#define ZELUTIL_COMMAND_SECTIONS_H

#include <string>
#include <unordered_map>

#include "prefs/section_walk.h"

namespace zelutil::command {

/// Returns whether a section of a preference file says something itself. One that only groups others may be there
/// twice.
inline bool hasContent(json::View section) {
    return prefs::hasOwnSettings(section) || prefs::hasSubManager(section) ||
           prefs::hasEntries(section.member(prefs::kOverriddenSettings));
}

/// Returns whether a user's text is JSON that holds something and no section, so that nothing in it counts. An object
/// without members and a list of sections without elements hold nothing.
inline bool holdsNoSection(json::View root) {
    const json::View sections = root.member(prefs::kMeta);
    const bool isEmpty = root.isObject() && (sections ? sections.isArray() && sections.elements().empty()
                                                      : root.members().begin() == root.members().end());
    bool holdsNone = !isEmpty;
    prefs::forEachSection(root, [&](const prefs::VisitedSection&) { holdsNone = false; });
    return holdsNone;
}

/// Calls `tell` with every section that has the attribute path of an earlier one, and with that one's element. Sections
/// without content do not count.
template <typename Tell>
void forEachRepeatedSection(json::View root, Tell tell) {
    std::unordered_map<std::string, json::View> firsts;
    prefs::forEachSection(root, [&](const prefs::VisitedSection& visited) {
        if (hasContent(visited.element)) {
            const auto [first, isNew] = firsts.try_emplace(visited.attributePath, visited.element);
            if (!isNew) {
                tell(visited, first->second);
            }
        }
    });
}

}  // namespace zelutil::command

#endif
