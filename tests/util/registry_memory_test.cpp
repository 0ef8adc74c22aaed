#include "support/scarce_memory.h"
#include "support/typed_shortcut.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <new>
#include <utility>

namespace zelutil::test {
namespace {

const ToolShortcut router("router");

/// Runs the work with memory for one allocation more each time, until it succeeds; `afterFailure` looks at what a
/// failure left. Answers the number of failures.
int retryWithMore(const std::function<void()>& work, const std::function<void()>& afterFailure) {
    for (int allowed = 0;; ++allowed) {
        bool failed = false;
        {
            const ScarceMemory scarce(allowed);
            try {
                work();
            } catch (const std::bad_alloc&) {
                failed = true;
            }
        }
        if (!failed) {
            return allowed;
        }
        afterFailure();
    }
}

TEST(RegistryOutOfMemory, TheSlotsAreMadeLater) {
    const int failures = retryWithMore([] { router.find(); }, [] {});
    EXPECT_EQ(failures, 1);
    EXPECT_EQ(router.find(), nullptr);
}

TEST(RegistryOutOfMemory, AValueIsLentOrTheSlotIsAsBefore) {
    auto below = std::make_unique<Tool>("below");
    auto tool = std::make_unique<Tool>("tool");
    router.lend(*below);
    const int failures =
        retryWithMore([&tool] { router.lend(*tool); }, [&below] { EXPECT_EQ(router.find(), below.get()); });
    EXPECT_GE(failures, 3);  // the container, the count of its holders, its entry in the map
    EXPECT_EQ(router.find(), tool.get());
    tool.reset();
    EXPECT_EQ(router.find(), below.get());
}

TEST(RegistryOutOfMemory, AValueThatCouldNotBeLentMayDieInAnyOrder) {
    EXPECT_EQ(router.find(), nullptr);
    auto above = std::make_unique<Tool>("above");
    auto tool = std::make_unique<Tool>("tool");
    {
        const ScarceMemory scarce(2);
        EXPECT_THROW(router.lend(*tool), std::bad_alloc);
    }
    router.lend(*above);
    EXPECT_NO_THROW(tool.reset());
    EXPECT_EQ(router.find(), above.get());
}

TEST(RegistryOutOfMemory, AFactorysValueIsInstalledOrDeletedOnce) {
    EXPECT_EQ(router.find(), nullptr);
    int made = 0;
    int deleted = 0;
    const ToolFactory factory([&] {
        Tool* const tool = new Tool("tool", [&deleted] { ++deleted; });
        ++made;
        return tool;
    });
    const int failures = retryWithMore([&factory] { router.install(factory); },
                                       [&] {
                                           EXPECT_EQ(router.find(), nullptr);
                                           EXPECT_EQ(deleted, made);
                                       });
    EXPECT_GE(failures, 4);  // the value itself, the container, the count of its holders, its entry in the map
    EXPECT_EQ(deleted, made - 1);
    EXPECT_EQ(router.demand().name, "tool");
}

}  // namespace
}  // namespace zelutil::test
