// A host application in small: it links zelutil and shows, chapter by chapter, what the library found and answers. With
// --read-back it only shows what an earlier run saved.
#include <cstdio>
#include <cstring>

#include "chapters.h"

#include <zelutil/file/hierarchy.h>
#include <zelutil/host/start.h>

int main(int argc, char** argv) {
    if (argc == 2 && std::strcmp(argv[1], "--read-back") == 0) {
        showReadBack();
        return 0;
    }
    try {
        showPlaces();
    } catch (const ZelU::File::Exceptions::HierarchyNotFound&) {
        std::puts("Run the demo from its installation tree, or set QTXROOT to one.");
        std::fputs(zelutil::host::diagnose().c_str(), stdout);
        return 1;
    }
    showSettings();
    showActions();
    showFacets();
    switchApplications();
    showEnumerations();
    editAndSave();
    return 0;
}
