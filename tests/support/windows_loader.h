#ifndef ZELUTIL_TESTS_SUPPORT_WINDOWS_LOADER_H
#define ZELUTIL_TESTS_SUPPORT_WINDOWS_LOADER_H

namespace zelutil::test {

/// Whether the loader calls the module's entry point for every thread that starts or ends. Throws for a module that the
/// loader does not know. Windows only.
bool hearsOfThreads(void* module);

}  // namespace zelutil::test

#endif
