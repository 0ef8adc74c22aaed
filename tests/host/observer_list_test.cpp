#include "host/observer_list.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>

namespace zelutil::host {
namespace {

/// An observer by its letter, and what it does when it is told.
struct Letter {
    char letter;
    std::function<void()> whenTold;
};

class ObserverListOfLetters : public ::testing::Test {
protected:
    using Entry = ObserverList<Letter>::Entry;

    void attach(
        char letter, std::function<void()> whenTold = [] {}) {
        const auto observer = std::make_shared<Letter>(Letter{letter, std::move(whenTold)});
        entries_[letter] = std::make_unique<Entry>(list_, observer, lastRound_);
    }

    void detach(char letter) { entries_.erase(letter); }

    /// Has all told.
    void tell() {
        list_.tell(++lastRound_, [this](const Letter& observer) {
            told_ += observer.letter;
            observer.whenTold();
        });
    }

    /// Returns who was told since the last question, in order.
    std::string told() { return std::exchange(told_, ""); }

    std::string tellAll() {
        tell();
        return told();
    }

    /// Returns a function that does something once only.
    static std::function<void()> once(std::function<void()> act) {
        return [act = std::move(act), done = std::make_shared<bool>(false)] {
            if (!std::exchange(*done, true)) {
                act();
            }
        };
    }

private:
    ObserverList<Letter> list_;
    std::uint64_t lastRound_ = 0;
    std::string told_;
    std::map<char, std::unique_ptr<Entry>> entries_;
};

TEST_F(ObserverListOfLetters, TellsNobodyAtFirst) { EXPECT_EQ(tellAll(), ""); }

TEST_F(ObserverListOfLetters, TellsInTheOrderOfAttachment) {
    attach('c');
    attach('a');
    attach('b');
    EXPECT_EQ(tellAll(), "cab");
    EXPECT_EQ(tellAll(), "cab");
}

TEST_F(ObserverListOfLetters, OneThatIsAttachedAgainComesLast) {
    attach('a');
    attach('b');
    attach('c');
    detach('a');
    attach('a');
    EXPECT_EQ(tellAll(), "bca");
}

TEST_F(ObserverListOfLetters, ForgetsTheFirstOneInTheMiddleAndTheLast) {
    for (const char letter : {'a', 'b', 'c', 'd', 'e'}) {
        attach(letter);
    }
    detach('a');
    EXPECT_EQ(tellAll(), "bcde");
    detach('c');
    EXPECT_EQ(tellAll(), "bde");
    detach('e');
    EXPECT_EQ(tellAll(), "bd");
    attach('f');
    EXPECT_EQ(tellAll(), "bdf");
    detach('b');
    detach('d');
    detach('f');
    EXPECT_EQ(tellAll(), "");
    attach('g');
    EXPECT_EQ(tellAll(), "g");
}

// --- From inside a round --------------------------------------------------------------------------------------------

struct DetachRow {
    const char* what;
    /// The letter of the observer that detaches, and those that it detaches.
    char actor;
    const char* detached;
    /// The observers that are told in that round, and in the next.
    const char* first;
    const char* second;
};

constexpr DetachRow kDetached[] = {
    {"itself, at the beginning", 'a', "a", "abcd", "bcd"},
    {"itself, in the middle", 'b', "b", "abcd", "acd"},
    {"itself, at the end", 'd', "d", "abcd", "abc"},
    {"the one that comes next", 'a', "b", "acd", "acd"},
    {"the next two", 'a', "bc", "ad", "ad"},
    {"the next two, the later first", 'a', "cb", "ad", "ad"},
    {"the last one", 'b', "d", "abc", "abc"},
    {"all that follow", 'b', "cd", "ab", "ab"},
    {"one that was told already", 'c', "a", "abcd", "bcd"},
    {"itself and the next", 'b', "bc", "abd", "ad"},
    {"itself and the one before", 'b', "ab", "abcd", "cd"},
    {"all", 'a', "abcd", "a", ""},
    {"all but itself", 'c', "dba", "abc", "c"},
    {"all, at the end", 'd', "dcba", "abcd", ""},
};

TEST_F(ObserverListOfLetters, TellsNoneThatIsDetachedMeanwhile) {
    for (const DetachRow& row : kDetached) {
        SCOPED_TRACE(row.what);
        for (const char letter : {'a', 'b', 'c', 'd'}) {
            attach(letter, [this, letter, &row] {
                for (const char detached : std::string(letter == row.actor ? row.detached : "")) {
                    detach(detached);
                }
            });
        }
        EXPECT_EQ(tellAll(), row.first);
        EXPECT_EQ(tellAll(), row.second);
        for (const char letter : {'a', 'b', 'c', 'd'}) {
            detach(letter);
        }
    }
}

TEST_F(ObserverListOfLetters, TellsOneThatIsAttachedMeanwhileFromTheNextRoundOn) {
    attach('a', once([this] { attach('c'); }));
    attach('b', once([this] { attach('d'); }));
    EXPECT_EQ(tellAll(), "ab");
    EXPECT_EQ(tellAll(), "abcd");
}

TEST_F(ObserverListOfLetters, TheOnlyObserverMayTakeAnothersPlace) {
    attach('a', [this] {
        detach('a');
        attach('b');
    });
    EXPECT_EQ(tellAll(), "a");
    EXPECT_EQ(tellAll(), "b");
}

// Otherwise an observer that attaches itself anew at each notification would be told for ever.
TEST_F(ObserverListOfLetters, OneThatIsAttachedAnewMeanwhileIsNotToldAgain) {
    attach('a');
    std::function<void()> anew = [this, &anew] { attach('b', anew); };
    attach('b', anew);
    attach('c');
    EXPECT_EQ(tellAll(), "abc");
    EXPECT_EQ(tellAll(), "acb");
}

TEST_F(ObserverListOfLetters, AnAttachedOneMayBeDetachedInTheSameRound) {
    attach('a', once([this] { attach('c'); }));
    attach('b', once([this] { detach('c'); }));
    EXPECT_EQ(tellAll(), "ab");
    EXPECT_EQ(tellAll(), "ab");
}

TEST_F(ObserverListOfLetters, KeepsAnObserverThatDetachesItselfUntilItReturns) {
    const auto alive = std::make_shared<int>(1);
    std::weak_ptr<int> seen = alive;
    bool keptWhileTold = false;
    attach('a', [this, &seen, &keptWhileTold, kept = alive] {
        const auto& own = seen;
        detach('a');
        keptWhileTold = own.use_count() == 2;
    });
    tell();
    EXPECT_TRUE(keptWhileTold);
    EXPECT_EQ(seen.use_count(), 1);
}

// --- Nested rounds --------------------------------------------------------------------------------------------------

TEST_F(ObserverListOfLetters, ARoundInsideARoundTellsEverybodyAndTheOuterOneGoesOn) {
    attach('a');
    attach('b', once([this] { tell(); }));
    attach('c');
    EXPECT_EQ(tellAll(),
              "ab"
              "abc"
              "c");
}

TEST_F(ObserverListOfLetters, NoRoundTellsOneThatTheInnerOneDetached) {
    attach('a', once([this] { tell(); }));
    attach('b', [this] { detach('c'); });
    attach('c');
    attach('d');
    EXPECT_EQ(tellAll(),
              "a"
              "abd"
              "bd");
}

TEST_F(ObserverListOfLetters, TheNextOfSeveralRoundsMayGo) {
    attach('a', once([this] { tell(); }));
    attach('b', once([this] { tell(); }));
    attach('c', [this] {
        detach('c');
        detach('d');
    });
    attach('d');
    attach('e');
    // Three rounds: the innermost begins inside b and detaches what comes next in each of the others.
    EXPECT_EQ(tellAll(),
              "a"
              "ab"
              "abce"
              "e"
              "be");
}

TEST_F(ObserverListOfLetters, TheInnerRoundTellsOneThatTheOuterOneDoesNot) {
    attach('a', once([this] {
               attach('c');
               tell();
           }));
    attach('b');
    EXPECT_EQ(tellAll(),
              "a"
              "abc"
              "b");
    EXPECT_EQ(tellAll(), "abc");
}

TEST_F(ObserverListOfLetters, AllMayGoInsideAnInnerRound) {
    attach('a', once([this] { tell(); }));
    attach('b', [this] {
        for (const char letter : {'a', 'b', 'c'}) {
            detach(letter);
        }
        attach('d');
    });
    attach('c');
    EXPECT_EQ(tellAll(),
              "a"
              "ab");
    EXPECT_EQ(tellAll(), "d");
}

// --- Exceptions -----------------------------------------------------------------------------------------------------

TEST_F(ObserverListOfLetters, AnExceptionEndsTheRoundAndTheListStaysUsable) {
    attach('a');
    attach('b', once([] { throw std::runtime_error("b"); }));
    attach('c');
    EXPECT_THROW(tell(), std::runtime_error);
    EXPECT_EQ(told(), "ab");
    detach('c');
    attach('d');
    EXPECT_EQ(tellAll(), "abd");
}

TEST_F(ObserverListOfLetters, AnExceptionOfAnInnerRoundThatIsCaughtLeavesTheOuterOneGoing) {
    attach('a', once([this] { EXPECT_THROW(tell(), std::runtime_error); }));
    attach('b', once([] { throw std::runtime_error("b"); }));
    attach('c', [this] { detach('d'); });
    attach('d');
    EXPECT_EQ(tellAll(),
              "a"
              "ab"
              "bc");
}

TEST_F(ObserverListOfLetters, OneThatDetachesItselfMayThrow) {
    attach('a', [this] {
        detach('a');
        throw std::runtime_error("a");
    });
    attach('b');
    EXPECT_THROW(tell(), std::runtime_error);
    EXPECT_EQ(tellAll(), "ab");
}

}  // namespace
}  // namespace zelutil::host
