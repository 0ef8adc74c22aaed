// A kill at any moment of a thread's life. On Windows, a thread that is killed while the system starts or ends it may
// take a lock of the loader with it, and the next thread waits for ever.
#include <zelutil/file/path.h>
#include <zelutil/util/thread.h>

#include <gtest/gtest.h>
#include <pthread.h>

#include <atomic>
#include <fstream>
#include <memory>
#include <thread>

#include "support/killable.h"
#include "support/random_text.h"
#include "support/temp_directory.h"
#include "support/wait_until.h"

namespace ZelU::Thrd {
namespace {

void* count(void* counter) {
    ++*static_cast<std::atomic<int>*>(counter);
    return nullptr;
}

TEST(ThreadKill, MeetsTheThreadAnywhere) {
    zelutil::test::RandomText random(5);
    std::atomic<int> calls{0};
    Thread thread;
    for (int i = 0; i < 500; ++i) {
        auto sleep = static_cast<unsigned>(random.below(300));
        thread.Start(zelutil::test::sleepMicroseconds, &sleep);
        Thread copy(thread);
        for (std::size_t yields = random.below(60); yields > 0; --yields) {
            std::this_thread::yield();
        }
        thread.Kill();
        ASSERT_FALSE(thread.IsRunning());
        // However the thread ended, it has let go of the object, which can be started again and is told of the end.
        thread.Start(count, &calls);
        ASSERT_TRUE(zelutil::test::waitUntil([&] { return !thread.IsRunning(); }));
        copy.Join();
    }
    EXPECT_EQ(calls, 500);
}

struct Own {
    void (*prepare)();
    Thread thread;
    std::atomic<bool> entered{false};
    std::atomic<bool> returned{false};
};

void* killItself(void* argument) {
    auto* const own = static_cast<Own*>(argument);
    own->prepare();
    own->entered = true;
    own->thread.Kill();
    own->returned = true;
    return nullptr;
}

TEST(ThreadKill, OfItselfDoesNotReturnHoweverTheThreadMayBeCancelled) {
    void (*const preparations[])() = {
        [] {},
        [] { pthread_setcanceltype(PTHREAD_CANCEL_DEFERRED, nullptr); },
        [] { pthread_setcancelstate(PTHREAD_CANCEL_DISABLE, nullptr); },
        [] { const Thread destroyed; },
        [] {
            std::atomic<int> calls{0};
            Thread destroyed(count, &calls);
            destroyed.Join();
        },
    };
    for (void (*const prepare)() : preparations) {
        Own own;
        own.prepare = prepare;
        own.thread.Start(killItself, &own);
        Thread copy(own.thread);
        copy.Join();
        EXPECT_TRUE(own.entered);
        EXPECT_FALSE(own.returned);
    }
}

TEST(ThreadKill, LeavesHowTheThreadMayBeCancelledAsItWas) {
    struct Seen {
        int type = -1;
        int state = -1;
    };
    static constexpr int kTypes[] = {PTHREAD_CANCEL_ASYNCHRONOUS, PTHREAD_CANCEL_DEFERRED};
    static constexpr int kStates[] = {PTHREAD_CANCEL_ENABLE, PTHREAD_CANCEL_DISABLE};
    struct Row {
        int type = -1;
        int state = -1;
        Seen seen;
        std::atomic<int> calls{0};
        std::unique_ptr<Thread> helper;
    };
    for (const int type : kTypes) {
        for (const int state : kStates) {
            Row row;
            row.type = type;
            row.state = state;
            Thread thread(
                [](void* argument) -> void* {
                    auto* const asked = static_cast<Row*>(argument);
                    pthread_setcanceltype(asked->type, nullptr);
                    pthread_setcancelstate(asked->state, nullptr);
                    {
                        // Destroyed while its own thread is still to come.
                        Thread helper;
                        helper.Start(count, &asked->calls, 10);
                        asked->helper = std::make_unique<Thread>(helper);
                    }
                    pthread_setcancelstate(PTHREAD_CANCEL_DISABLE, &asked->seen.state);
                    pthread_setcanceltype(PTHREAD_CANCEL_DEFERRED, &asked->seen.type);
                    return nullptr;
                },
                &row);
            thread.Join();
            ASSERT_NE(row.helper, nullptr);
            row.helper->Join();
            EXPECT_EQ(row.calls, 1);
            EXPECT_EQ(row.seen.type, type);
            EXPECT_EQ(row.seen.state, state);
        }
    }
}

// Nothing here needs cleaning up, so that it may be killed at any instruction.
void* destroyIdleObjectsForEver(void* progress) {
    for (;;) {
        const Thread idle;
        static_cast<zelutil::test::Progress*>(progress)->fetch_add(1);
    }
}

void* useObjectsForEver(void* progress) {
    static std::atomic<int> calls{0};
    pthread_setcanceltype(PTHREAD_CANCEL_DEFERRED, nullptr);
    for (;;) {
        {
            Thread helper;
            helper.Start(count, &calls);
        }
        static_cast<zelutil::test::Progress*>(progress)->fetch_add(1);
        pthread_testcancel();
    }
}

TEST(ThreadKill, MeetsAThreadThatMakesAndDestroysObjectsAnywhere) {
#ifdef __SANITIZE_THREAD__
    GTEST_SKIP() << "the kill may meet the thread inside the thread sanitizer, which does not survive that";
#endif
    zelutil::test::RandomText random(6);
    for (int i = 0; i < 40; ++i) {
        zelutil::test::Progress progress{0};
        Thread thread(i % 2 == 0 ? destroyIdleObjectsForEver : useObjectsForEver, &progress);
        const unsigned long least = random.below(20);
        ASSERT_TRUE(zelutil::test::waitUntil([&] { return progress > least; }));
        thread.Kill();
        ASSERT_TRUE(zelutil::test::waitUntil([&] { return zelutil::test::standsStill(progress); }));
    }
}

struct Copying {
    ZelU::File::Path from;
    ZelU::File::Path to;
    zelutil::test::Progress progress{0};
};

void* copyForEver(void* argument) {
    pthread_setcanceltype(PTHREAD_CANCEL_DEFERRED, nullptr);
    auto* const copying = static_cast<Copying*>(argument);
    for (;;) {
        copying->from.CopyTheFile(copying->to);
        copying->progress.fetch_add(1);
    }
}

TEST(ThreadKill, InTheMiddleOfFileOperationsEndsTheThreadAlone) {
#if defined(__SANITIZE_THREAD__) || defined(__SANITIZE_ADDRESS__)
    GTEST_SKIP() << "a sanitizer does not survive that functions it has compiled are unwound; preset release runs this";
#endif
    const zelutil::test::TempDirectory directory;
    std::ofstream(directory / "from") << "bytes";
    zelutil::test::RandomText random(7);
    for (int i = 0; i < 200; ++i) {
        Copying copying;
        copying.from = ZelU::File::Path(zelutil::test::windowsText(directory / "from"));
        copying.to = ZelU::File::Path(zelutil::test::windowsText(directory / "to"));
        Thread thread(copyForEver, &copying);
        Thread copy(thread);
        const unsigned long least = random.below(10);
        ASSERT_TRUE(zelutil::test::waitUntil([&] { return copying.progress > least; }));
        thread.Kill();
        copy.Join();
    }
}

}  // namespace
}  // namespace ZelU::Thrd
