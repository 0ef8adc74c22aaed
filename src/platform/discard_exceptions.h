#ifndef ZELUTIL_PLATFORM_DISCARD_EXCEPTIONS_H
#define ZELUTIL_PLATFORM_DISCARD_EXCEPTIONS_H

namespace zelutil::platform {

/// Calls the function and discards what it throws; false when it threw. Where the system kills a thread by unwinding
/// its stack, that unwinding is no exception to be caught and goes on.
bool callDiscardingExceptions(void (*function)(void*), void* argument);

/// The same for any object that can be called.
template <typename Action>
bool discardExceptions(Action action) {
    return callDiscardingExceptions([](void* object) { (*static_cast<Action*>(object))(); }, &action);
}

}  // namespace zelutil::platform

#endif
