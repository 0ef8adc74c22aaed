#ifndef ZELUTIL_PLATFORM_WINDOWS_NAMED_MUTEX_H
#define ZELUTIL_PLATFORM_WINDOWS_NAMED_MUTEX_H

#include <string>

#include "platform/windows/windows_h.h"

/// Mutexes that processes share by name, those of other users and sessions too where the system allows it.
namespace zelutil::platform::windows {

/// Returns the mutex of that name, made where it is not there yet; null where the system does not give it.
HANDLE openMutex(const std::wstring& name);

/// Waits for the mutex. One of a process that died is had like a free one.
bool takeMutex(HANDLE mutex, DWORD milliseconds);

}  // namespace zelutil::platform::windows

#endif
