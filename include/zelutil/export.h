#ifndef ZELUTIL_EXPORT_H
#define ZELUTIL_EXPORT_H

/// `ZELUTIL_API` marks what the shared library exports; everything else in it is hidden. A program that links the
/// static form defines `ZELUTIL_STATIC`.

#if defined(_WIN32) && defined(ZELUTIL_BUILDING)
#define ZELUTIL_API __declspec(dllexport)
#elif defined(_WIN32) && !defined(ZELUTIL_STATIC)
#define ZELUTIL_API __declspec(dllimport)
#elif defined(__GNUC__) && !defined(_WIN32)
#define ZELUTIL_API __attribute__((visibility("default")))
#else
#define ZELUTIL_API
#endif

/// `ZELUTIL_NATIVE_CHARACTER` is the type of the characters in the system's own paths. It stands here because no other
/// header knows the system.

#ifdef _WIN32
#define ZELUTIL_NATIVE_CHARACTER wchar_t
#else
#define ZELUTIL_NATIVE_CHARACTER char
#endif

#endif
