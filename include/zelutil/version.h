#ifndef ZELUTIL_VERSION_H
#define ZELUTIL_VERSION_H

/// The version of these headers, for the preprocessor of a host; `zelutil_version` in c_api.h returns that of the
/// library in the process. It is a semantic version: a host that was compiled with one version runs with every later
/// one of the same first number. Compiles as C99 and as C++.

/// Grows when a host must be compiled again or adapted.
#define ZELUTIL_VERSION_MAJOR 1
/// Grows when something is added.
#define ZELUTIL_VERSION_MINOR 0
/// Grows when a defect is mended.
#define ZELUTIL_VERSION_PATCH 0
/// The three numbers as a text, with dots between them.
#define ZELUTIL_VERSION "1.0.0"

#endif
