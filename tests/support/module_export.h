#ifndef ZELUTIL_TESTS_SUPPORT_MODULE_EXPORT_H
#define ZELUTIL_TESTS_SUPPORT_MODULE_EXPORT_H

/// Before a function of a module made for tests: it is exported under its C name.
#ifdef _WIN32
#define ZELUTIL_TEST_EXPORT extern "C" __declspec(dllexport)
#else
#define ZELUTIL_TEST_EXPORT extern "C" __attribute__((visibility("default")))
#endif

#endif
