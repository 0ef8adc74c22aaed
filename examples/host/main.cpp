// A host application in small: it links zelutil and shows, chapter by chapter, what the library found and answers.
#include <cstdio>

#include "chapters.h"

#include <zelutil/file/hierarchy.h>

int main() {
    try {
        showPlaces();
    } catch (const ZelU::File::Exceptions::HierarchyNotFound&) {
        std::puts("Run the demo from its installation tree, or set QTXROOT to one.");
        return 1;
    }
    showSettings();
    showActions();
    return 0;
}
