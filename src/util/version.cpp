#include <zelutil/c_api.h>
#include <zelutil/version.h>

const char* zelutil_version() { return ZELUTIL_VERSION; }
