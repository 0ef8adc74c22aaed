#ifndef ZELUTIL_COMMAND_SECTIONS_H
#define ZELUTIL_COMMAND_SECTIONS_H

#include <optional>
#include <string>
#include <unordered_map>

#include "prefs/section.h"
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

/// Whom a section of a user's file belongs to: a sub-manager, or `None` where it is one of settings. Nothing where that
/// is not known, as in a file of the defaults, and where the defaults have no such section.
using SectionOwner = std::optional<prefs::SubManagerType>;

/// Returns whether a list has an entry with a text. Nothing else in it sets anything.
inline bool holdsTexts(json::View overridden) {
    for (const json::View element : overridden.elements()) {
        for (const json::Member& entry : element.members()) {
            if (entry.value.text()) {
                return true;
            }
        }
    }
    return false;
}

/// Returns whether a section is one of those that should not be there twice. Of a sub-manager's only the first is read,
/// even when it holds nothing. Where there is no other place for what sets nothing, a save puts it into a section of
/// its own beside the one with the settings, which does no harm.
inline bool countsForPath(json::View section, SectionOwner owner, bool isFirst) {
    if (!owner) {
        return hasContent(section);
    }
    const json::View overridden = section.member(prefs::kOverriddenSettings);
    if (*owner == prefs::SubManagerType::None) {
        return holdsTexts(overridden);
    }
    return isFirst ? static_cast<bool>(overridden) : prefs::hasEntries(overridden);
}

/// Calls `tell` with every section that has the attribute path of an earlier one, and with that one's element. Sections
/// without content do not count. `ownerOf` returns the owner of a visited section.
template <typename OwnerOf, typename Tell>
void forEachRepeatedSection(json::View root, OwnerOf ownerOf, Tell tell) {
    std::unordered_map<std::string, json::View> firsts;
    prefs::forEachSection(root, [&](const prefs::VisitedSection& visited) {
        const auto first = firsts.find(visited.attributePath);
        const bool isFirst = first == firsts.end();
        if (!countsForPath(visited.element, ownerOf(visited), isFirst)) {
            return;
        }
        if (isFirst) {
            firsts.emplace(visited.attributePath, visited.element);
        } else {
            tell(visited, first->second);
        }
    });
}

}  // namespace zelutil::command

#endif
