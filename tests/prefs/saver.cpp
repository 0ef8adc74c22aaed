// A host that saves one value and another for many settings in turn until it is killed. Writes a line as soon as it
// has saved once.
#include <cstdio>

#include "prefs/many_settings.h"

int main() {
    zelutil::test::saveMany(zelutil::test::kLongValue);
    std::puts("saving");
    std::fflush(stdout);
    for (;;) {
        zelutil::test::saveMany(zelutil::test::kShortValue);
        zelutil::test::saveMany(zelutil::test::kLongValue);
    }
}
