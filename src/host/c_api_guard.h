#ifndef ZELUTIL_HOST_C_API_GUARD_H
#define ZELUTIL_HOST_C_API_GUARD_H

#include <zelutil/host/c_api.h>

#include <string>

/// The way of every C function into C++ and back: nothing that is thrown goes on into the caller.
namespace zelutil::host::c {

/// Calls a function with its argument and returns the status that it returns, or the one that says what it has thrown;
/// a thread's kill goes on. The handlers stand in one place, because they are larger than most of what is called.
zelutil_status callGuarded(zelutil_status (*function)(void*), void* argument);

/// Returns the status of an action in the same way.
template <typename Action>
zelutil_status guarded(Action action) {
    return callGuarded([](void* object) { return (*static_cast<Action*>(object))(); }, &action);
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
