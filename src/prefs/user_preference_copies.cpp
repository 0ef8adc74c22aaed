// The copying of a manager and its end, apart from its look-ups, which are optimised for speed: a copy of a whole
// catalogue is much code and is seldom made.
#include <zelutil/prefs/user_preference_manager.h>

#include <memory>
#include <type_traits>
#include <utility>

#include "prefs/preferences.h"

using zelutil::prefs::Preferences;

UserPreferenceManager::UserPreferenceManager(const UserPreferenceManager& other)
    : preferences_(std::make_unique<Preferences>(*other.preferences_)) {}

UserPreferenceManager& UserPreferenceManager::operator=(const UserPreferenceManager& other) {
    if (this != &other) {
        Preferences copy(*other.preferences_);
        static_assert(std::is_nothrow_move_assignable_v<Preferences>);
        *preferences_ = std::move(copy);
    }
    return *this;
}

UserPreferenceManager::~UserPreferenceManager() = default;
