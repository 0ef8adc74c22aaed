// A module that a program loads before the library, so that it goes after it: it asks the library when that has already
// destroyed what it had.
#include <array>
#include <cstdio>

#include "support/module_export.h"

namespace {

struct LateCaller {
    ~LateCaller() {
        if (facetType == nullptr) {
            return;
        }
        std::array<char, 8> shortcut{};
        getShortcut(1, shortcut.data(), static_cast<int>(shortcut.size()));
        const int before = setActiveAppId(7, 0);
        std::fprintf(stderr, "facet %d, shortcut \"%s\", application %d, then %d\n", facetType("Net", "Length"),
                     shortcut.data(), before, activeAppId());
        std::fflush(stderr);
    }

    int (*facetType)(const char*, const char*) = nullptr;
    void (*getShortcut)(int, char*, int) = nullptr;
    int (*setActiveAppId)(int, int) = nullptr;
    int (*activeAppId)() = nullptr;
};

LateCaller lateCaller;

}  // namespace

/// Has the functions called at the very end, and what they answer printed on standard error.
ZELUTIL_TEST_EXPORT void callLast(int (*facetType)(const char*, const char*), void (*getShortcut)(int, char*, int),
                                  int (*setActiveAppId)(int, int), int (*activeAppId)()) {
    lateCaller.facetType = facetType;
    lateCaller.getShortcut = getShortcut;
    lateCaller.setActiveAppId = setActiveAppId;
    lateCaller.activeAppId = activeAppId;
}
