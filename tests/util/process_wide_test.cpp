// The static objects of this program are destroyed in the order that the language gives, and then those of the library
// that is linked into it; so each case ends the program and reads what was printed.
#include "util/process_wide.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <new>
#include <thread>
#include <type_traits>
#include <vector>

namespace zelutil {
namespace {

std::atomic<int> made{0};

struct Noisy {
    explicit Noisy(char itsName) : name(itsName) { ++made; }
    Noisy(const Noisy&) = delete;
    Noisy& operator=(const Noisy&) = delete;
    ~Noisy() { std::fprintf(stderr, "~%c ", name); }

    char name;
};

using Object = ProcessWide<Noisy>;

// It takes no part in the destruction of static objects.
static_assert(std::is_trivially_destructible_v<Object>);

Noisy& first() {
    static Object object([] { return new Noisy('a'); });
    return object.get();
}

/// Its making asks for the first.
Noisy& second() {
    static Object object([] {
        first();
        return new Noisy('b');
    });
    return object.get();
}

Noisy& third() {
    static Object object([] { return new Noisy('c'); });
    return object.get();
}

void askForAll() {
    for (Noisy& (*const object)() : {first, second, third}) {
        std::fprintf(stderr, "%c", object().name);
    }
    std::fputs(" ", stderr);
}

struct AskingStaticObject {
    ~AskingStaticObject() {
        if (isToAsk) {
            askForAll();
        }
    }

    bool isToAsk = false;
};

/// Its destructor asks for an object of which there was none.
struct Asking {
    ~Asking() { std::fprintf(stderr, "~asking %c ", third().name); }
};

Asking& asking() {
    static ProcessWide<Asking> object([] { return new Asking; });
    return object.get();
}

class ProcessWideObject : public testing::Test {
protected:
    ProcessWideObject() { GTEST_FLAG_SET(death_test_style, "threadsafe"); }
};

TEST_F(ProcessWideObject, IsMadeAtItsFirstUse) {
    EXPECT_EQ(made, 0);
    Noisy& object = first();
    EXPECT_EQ(made, 1);
    EXPECT_EQ(&first(), &object);
    EXPECT_EQ(made, 1);
}

TEST_F(ProcessWideObject, IsMadeOnceByManyThreads) {
    std::vector<Noisy*> seen(8);
    std::vector<std::thread> threads;
    for (Noisy*& one : seen) {
        threads.emplace_back([&one] { one = &third(); });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(seen, std::vector<Noisy*>(8, &third()));
    EXPECT_EQ(made, 1);
}

TEST_F(ProcessWideObject, GoesBeforeThoseThatWereMadeEarlier) {
    EXPECT_EXIT(
        {
            third();
            second();
            std::exit(0);
        },
        testing::ExitedWithCode(0), "^~b ~a ~c $");
}

TEST_F(ProcessWideObject, IsThereForExitFunctionsThatAreOlder) {
    EXPECT_EXIT(
        {
            std::atexit(askForAll);
            second();
            std::exit(0);
        },
        testing::ExitedWithCode(0), "^abc ~c ~b ~a $");
}

TEST_F(ProcessWideObject, IsThereForStaticObjectsThatAreOlder) {
    EXPECT_EXIT(
        {
            static AskingStaticObject staticObject;
            staticObject.isToAsk = true;
            first();
            std::exit(0);
        },
        testing::ExitedWithCode(0), "^abc ~c ~b ~a $");
}

TEST_F(ProcessWideObject, ThatAnotherOnesDestructorMakesGoesNext) {
    EXPECT_EXIT(
        {
            first();
            asking();
            std::exit(0);
        },
        testing::ExitedWithCode(0), "^~asking c ~c ~a $");
}

/// Its destructor asks for an object that is gone already.
struct AskingForLater {
    ~AskingForLater() { std::fprintf(stderr, "~asking %c%c ", first().name, first().name); }
};

TEST_F(ProcessWideObject, IsMadeAgainForWhomItLeftTooEarlyAndStays) {
    EXPECT_EXIT(
        {
            static ProcessWide<AskingForLater> older([] { return new AskingForLater; });
            first();
            std::exit(0);
        },
        testing::ExitedWithCode(0), "^~a ~asking aa $");
}

TEST_F(ProcessWideObject, ThatCannotBeMadeIsTriedAgain) {
    static bool fails = true;
    const auto get = []() -> Noisy& {
        static Object object([] { return fails ? throw std::bad_alloc() : new Noisy('d'); });
        return object.get();
    };
    EXPECT_THROW(get(), std::bad_alloc);
    fails = false;
    EXPECT_EQ(get().name, 'd');
}

}  // namespace
}  // namespace zelutil
