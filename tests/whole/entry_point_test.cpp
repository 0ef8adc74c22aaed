#include <gtest/gtest.h>

#include "support/shared_module.h"
#include "support/windows_loader.h"

/// The library's entry point, here called as a plain function. Its types are the system's BOOL, HINSTANCE, DWORD,
/// LPVOID.
extern "C" int DllMain(void* module, unsigned long reason, void* reserved);

namespace {

using zelutil::test::hearsOfThreads;

enum Reason : unsigned long { kProcessDetach = 0, kProcessAttach = 1, kThreadAttach = 2, kThreadDetach = 3 };

TEST(EntryPoint, SwitchesThreadNotificationsOffAtProcessAttach) {
    void* const module = zelutil::test::loadModule(ZELUTIL_TEST_BARE_MODULE);
    ASSERT_TRUE(hearsOfThreads(module));
    EXPECT_EQ(DllMain(module, kProcessAttach, nullptr), 1);
    EXPECT_FALSE(hearsOfThreads(module));
}

TEST(EntryPoint, LeavesThemAloneAtAnyOtherTime) {
    void* const module = zelutil::test::loadModule(ZELUTIL_TEST_BARE_MODULE);
    for (const Reason reason : {kThreadAttach, kThreadDetach, kProcessDetach}) {
        EXPECT_EQ(DllMain(module, reason, nullptr), 1) << reason;
        EXPECT_TRUE(hearsOfThreads(module)) << reason;
    }
}

}  // namespace
