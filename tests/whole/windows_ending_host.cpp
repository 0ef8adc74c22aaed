// A host that ends while threads of its plug-in use the library. Its argument is the plug-in's file.
#include <windows.h>

#include "support/shared_module.h"

int main(int, char** arguments) {
    void* const plugin = zelutil::test::loadModule(arguments[1]);
    zelutil::test::functionOf<void (*)()>(plugin, "keepBusy")();
    Sleep(50);
    return 0;
}
