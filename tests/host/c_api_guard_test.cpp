#include "host/c_api_guard.h"

#include <gtest/gtest.h>
#include <zelutil/file/hierarchy.h>

#include <new>
#include <stdexcept>
#include <string>

#include "host/c_api_records.h"
#include "support/scarce_memory.h"

namespace zelutil::host::c {
namespace {

TEST(CApiGuard, SaysWhatWasThrown) {
    EXPECT_EQ(guarded([]() -> zelutil_status { return ZELUTIL_REFUSED; }), ZELUTIL_REFUSED);
    EXPECT_EQ(guarded([]() -> zelutil_status { throw std::bad_alloc(); }), ZELUTIL_NO_MEMORY);
    EXPECT_EQ(guarded([]() -> zelutil_status { throw true; }), ZELUTIL_FAILED);
    EXPECT_EQ(guarded([]() -> zelutil_status { throw std::runtime_error("a system's"); }), ZELUTIL_FAILED);
    EXPECT_EQ(guarded([]() -> zelutil_status { throw 7; }), ZELUTIL_FAILED);
    EXPECT_EQ(guarded([]() -> zelutil_status { throw ZelU::File::Exceptions::HierarchyNotFound(); }),
              ZELUTIL_NO_INSTALLATION);
}

TEST(CApiGuard, AHandleIsNullUnlessItWasMade) {
    int made = 0;
    int before = 0;
    int* handle = &before;
    EXPECT_EQ(guardedInto(&handle, [&]() -> int* { return &made; }), ZELUTIL_OK);
    EXPECT_EQ(handle, &made);
    EXPECT_EQ(guardedInto(&handle, []() -> int* { return nullptr; }), ZELUTIL_UNKNOWN);
    EXPECT_EQ(handle, nullptr);
    handle = &before;
    EXPECT_EQ(guardedInto(&handle, []() -> int* { throw std::bad_alloc(); }), ZELUTIL_NO_MEMORY);
    EXPECT_EQ(handle, nullptr);
}

std::string longText(int number) { return "a text that needs memory of its own, number " + std::to_string(number); }

std::vector<SettingInfo> someSettings() {
    SettingInfo first;
    first.fullName = longText(1);
    first.bareNames = {longText(2), longText(3)};
    SettingInfo second;
    second.fullName = longText(4);
    return {first, second};
}

TEST(CApiGuard, AListIsMadeWholeOrNotAtAll) {
    using List = HandedOut<zelutil_setting_list, Settings>;
    int failures = 0;
    for (bool enough = false; !enough; ++failures) {
        std::vector<SettingInfo> sources = someSettings();
        const zelutil_setting_list* list = nullptr;
        zelutil_status status = ZELUTIL_FAILED;
        {
            const test::ScarceMemory scarce(failures);
            status = guardedInto(&list, [&] { return new List(std::move(sources)); });
            enough = !scarce.ranOut();
        }
        ASSERT_EQ(status, enough ? ZELUTIL_OK : ZELUTIL_NO_MEMORY);
        ASSERT_EQ(list != nullptr, enough);
        if (enough) {
            ASSERT_EQ(list->count, 2);
            EXPECT_EQ(list->items[0]->fullName, longText(1));
            ASSERT_EQ(list->items[0]->bareNames.count, 2);
            EXPECT_EQ(list->items[0]->bareNames.items[1], longText(3));
            EXPECT_EQ(list->items[1]->fullName, longText(4));
            EXPECT_EQ(list->items[1]->bareNames.count, 0);
            List::free(list);
        }
    }
    // The handle, two tables, two records and a table of names are six requests at least, each of which has failed.
    EXPECT_GT(failures, 6);
}

}  // namespace
}  // namespace zelutil::host::c
