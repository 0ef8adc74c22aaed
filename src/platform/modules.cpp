// The part of modules.h that is the same on all systems.
#include "platform/modules.h"

namespace zelutil::platform {

const char* libraryFileName() { return ZELUTIL_LIBRARY_FILE_NAME; }

}  // namespace zelutil::platform
