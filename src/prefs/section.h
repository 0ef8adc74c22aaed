#ifndef ZELUTIL_PREFS_SECTION_H
#define ZELUTIL_PREFS_SECTION_H

#include <zelutil/prefs/user_preference_manager.h>

#include <map>
#include <memory>
#include <string>

/// The two declarations of the exported class that the parts beneath it share, under names of their own. The manager
/// hands out the very map of sections, and observers get the very map of texts, so these records are the hosts' own
/// types; a second set of them would only have to be copied back and forth. They are nested in the exported class,
/// whose header is included here for that reason alone: no part beneath the shells uses the class itself.
namespace zelutil::prefs {

using Section = UserPreferenceManager::UserPreferenceUISection;
using SubManagerType = UserPreferenceManager::SubManagerType;

/// Sections by attribute path, case significant.
using Sections = std::map<std::string, std::shared_ptr<Section>>;

/// The JSON text of each sub-manager.
using SubManagerTexts = std::map<SubManagerType, std::string>;

}  // namespace zelutil::prefs

#endif
