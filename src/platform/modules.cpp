// Defines what modules.h declares and every system shares.
#include "platform/modules.h"

namespace zelutil::platform {

const char* libraryFileName() { return ZELUTIL_LIBRARY_FILE_NAME; }

}  // namespace zelutil::platform
