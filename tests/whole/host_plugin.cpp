// A host's plug-in: a module that brings the library into the process and takes it out again.
#include <zelutil/zelutil.h>

#include <string>

#ifdef _WIN32
#define PLUGIN_EXPORT extern "C" __declspec(dllexport)
#else
#define PLUGIN_EXPORT extern "C" __attribute__((visibility("default")))
#endif

/// Has the library remove the file when it goes.
PLUGIN_EXPORT void enterForDeletion(const char* file) { ZelU::File::Path(std::string(file)).DeleteMeOnExit(); }
