#ifndef ZELUTIL_HOST_C_API_GUARD_H
#define ZELUTIL_HOST_C_API_GUARD_H

#include <zelutil/file/hierarchy.h>
#include <zelutil/host/c_api.h>

#include <new>
#include <string>

#include "host/current_preferences.h"
#include "platform/discard_exceptions.h"

/// The way of every C function into C++ and back: nothing that is thrown goes on into the caller.
namespace zelutil::host::c {

/// Returns the status that the action returns, or the one that says what it has thrown.
template <typename Action>
zelutil_status statusOf(Action action) {
    try {
        return action();
    } catch (const std::bad_alloc&) {
        return ZELUTIL_NO_MEMORY;
    } catch (const ZelU::File::Exceptions::HierarchyNotFound&) {
        return ZELUTIL_NO_INSTALLATION;
    } catch (bool) {
        // UserPreferenceManager::GetInstance throws one once its destruction has begun, and a host's function any time.
        return currentPreferences() == nullptr ? ZELUTIL_TOO_LATE : ZELUTIL_FAILED;
    }
}

/// The same for whatever the action throws; a thread's kill goes on.
template <typename Action>
zelutil_status guarded(Action action) {
    zelutil_status status = ZELUTIL_FAILED;
    platform::discardExceptions([&] { status = statusOf(action); });
    return status;
}

/// Has `make` make what is put into `*out`, which is null before and where that fails. No place for it is a bad
/// argument, and making null is `ZELUTIL_UNKNOWN`.
template <typename Handle, typename Action>
zelutil_status guardedInto(Handle** out, Action make) {
    if (out == nullptr) {
        return ZELUTIL_BAD_ARGUMENT;
    }
    *out = nullptr;
    return guarded([&] {
        *out = make();
        return *out == nullptr ? ZELUTIL_UNKNOWN : ZELUTIL_OK;
    });
}

/// The same for what takes a text, which must be there; `make` is given it.
template <typename Handle, typename Action>
zelutil_status guardedInto(Handle** out, const char* text, Action make) {
    if (out != nullptr && text == nullptr) {
        *out = nullptr;
        return ZELUTIL_BAD_ARGUMENT;
    }
    return guardedInto(out, [&] { return make(std::string(text)); });
}

}  // namespace zelutil::host::c

#endif
