#include "command/section_owners.h"

#include "prefs/section_walk.h"

namespace zelutil::command {

/// Of several sections of one path the first counts, as for the reader of the defaults.
SectionOwners::SectionOwners(json::View defaults) {
    prefs::forEachSection(defaults, [this](const prefs::VisitedSection& visited) {
        if (prefs::hasOwnSettings(visited.element) || prefs::hasSubManager(visited.element)) {
            const prefs::SubManagerType owner{prefs::subManagerNumber(visited.element)};
            owners_.try_emplace(visited.attributePath, owner);
        }
    });
}

SectionOwner SectionOwners::ownerOf(const std::string& attributePath) const {
    const auto owner = owners_.find(attributePath);
    return owner == owners_.end() ? std::nullopt : SectionOwner(owner->second);
}

}  // namespace zelutil::command
