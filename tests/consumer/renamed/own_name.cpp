#include <cstdio>
#include <cstring>

#include "platform/modules.h"

int main() {
    const char* const name = zelutil::platform::libraryFileName();
    if (std::strcmp(name, EXPECTED) == 0) {
        return 0;
    }
    std::printf("the library takes itself for %s instead of %s\n", name, EXPECTED);
    return 1;
}
