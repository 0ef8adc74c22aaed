#ifndef ZELUTIL_PREFS_DEFINITION_WALK_H
#define ZELUTIL_PREFS_DEFINITION_WALK_H

#include <cstdint>

#include "prefs/section_walk.h"

namespace zelutil::prefs {

/// Tells which definition of the defaults made which record: it counts as the reader does, over a walk from the first
/// section on.
class DefinitionCount {
public:
    /// Calls `visit` with the number of its record and the definition, for each one of a section that the walk has come
    /// to. To be called for every section of the walk.
    template <typename Visit>
    void inSection(const VisitedSection& visited, Visit visit) {
        if (!hasOwnSettings(visited.element)) {
            return;
        }
        for (const json::View element : visited.element.member(kDefaultSettings).elements()) {
            if (const auto setting = defaultSetting(element)) {
                visit(next_++, *setting);
            }
        }
    }

private:
    std::uint32_t next_ = 0;
};

}  // namespace zelutil::prefs

#endif
