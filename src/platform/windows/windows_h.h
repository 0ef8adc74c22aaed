#ifndef ZELUTIL_PLATFORM_WINDOWS_WINDOWS_H_H
#define ZELUTIL_PLATFORM_WINDOWS_WINDOWS_H_H

/// The only place that includes <windows.h>, so that it comes with the same macros everywhere.
#ifndef NOMINMAX
#define NOMINMAX
#endif
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#include <windows.h>

#endif
