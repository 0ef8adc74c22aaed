#include "host/c_api_guard.h"

#include <zelutil/file/hierarchy.h>

#include <new>

#include "host/current_preferences.h"
#include "platform/discard_exceptions.h"

namespace zelutil::host::c {
namespace {

zelutil_status statusOf(zelutil_status (*function)(void*), void* argument) {
    try {
        return function(argument);
    } catch (const std::bad_alloc&) {
        return ZELUTIL_NO_MEMORY;
    } catch (const ZelU::File::Exceptions::HierarchyNotFound&) {
        return ZELUTIL_NO_INSTALLATION;
    } catch (bool) {
        // UserPreferenceManager::GetInstance throws one once its destruction has begun, and a host's function any time.
        return currentPreferences() == nullptr ? ZELUTIL_TOO_LATE : ZELUTIL_FAILED;
    }
}

}  // namespace

zelutil_status callGuarded(zelutil_status (*function)(void*), void* argument) {
    zelutil_status status = ZELUTIL_FAILED;
    platform::discardExceptions([&] { status = statusOf(function, argument); });
    return status;
}

}  // namespace zelutil::host::c
