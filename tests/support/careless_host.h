// A host may have included all this before any header of the library, with its macros in force. There is no include
// guard: nothing is gained by one.
#ifdef _WIN32
#include <windows.h>
#else
#include <dlfcn.h>
#include <fcntl.h>
#include <pthread.h>
#include <sys/param.h>
#include <sys/stat.h>
#include <unistd.h>
#endif
