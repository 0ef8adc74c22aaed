#include <zelutil/enums/named_enum.h>

#include "support/letter_case.h"
#include "support/virtual_function.h"

#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <random>
#include <string>
#include <thread>
#include <type_traits>
#include <utility>
#include <vector>

// Enumerations that a host binds for itself, outside the library.

namespace {

enum class Finish : int { Bare, Tin, ImmersionGold, HardGold, Silver };

enum class Single : int { Only };

enum class Repeated : int { First, Other, Again, Last };

constexpr const char* const kFinishes[] = {"bare", "Tin", "Immersion Gold", "HARD_GOLD", "silver"};
constexpr const char* const kSingle[] = {"only"};
constexpr const char* const kRepeated[] = {"Pad", "Via", "PAD", "Trace"};

}  // namespace

template <>
const Smart::Enum::HRES<Finish>& Smart::Enum::HRES<Finish>::Instance() {
    static constexpr HRES_Impl<Finish, 5, kFinishes> map;
    return map;
}

template <>
const Smart::Enum::HRES<Single>& Smart::Enum::HRES<Single>::Instance() {
    static constexpr HRES_Impl<Single, 1, kSingle> map;
    return map;
}

template <>
const Smart::Enum::HRES<Repeated>& Smart::Enum::HRES<Repeated>::Instance() {
    static constexpr HRES_Impl<Repeated, 4, kRepeated> map;
    return map;
}

namespace {

using Smart::Enum::HRES;
using Smart::Enum::HRES_Impl;
using Smart::Enum::IRawMap;
using zelutil::test::virtualFunction;

struct LookupRow {
    const char* name;
    int value;
};

constexpr LookupRow kFinishLookups[] = {
    // As the table has them.
    {"bare", 0},
    {"Tin", 1},
    {"Immersion Gold", 2},
    {"HARD_GOLD", 3},
    {"silver", 4},
    // In other letter case.
    {"BARE", 0},
    {"tIN", 1},
    {"immersion gold", 2},
    {"hard_gold", 3},
    {"Silver", 4},
    // Near-misses: blanks, a part, something more, 32 apart but no letters, a character that looks alike.
    {"Tin ", 5},
    {" Tin", 5},
    {"Immersion  Gold", 5},
    {"Immersion", 5},
    {"Tins", 5},
    {"HARD\x7FGOLD", 5},
    {"HARD-GOLD", 5},
    {"", 5},
    {"no such finish", 5},
    // Before the least name and after the greatest.
    {"\x01", 5},
    {"\xFF", 5},
};

TEST(NamedEnum, ANameIsFoundIgnoringCaseAndNothingElse) {
    const HRES<Finish>& map = HRES<Finish>::Instance();
    for (const LookupRow& row : kFinishLookups) {
        EXPECT_EQ(map.RawLookup(row.name), row.value) << '"' << row.name << '"';
    }
}

TEST(NamedEnum, TheTypedAndTheUntypedLookupAnswerAsTheRawOne) {
    const HRES<Finish>& map = HRES<Finish>::Instance();
    const IRawMap& untyped = map;
    for (const LookupRow& row : kFinishLookups) {
        EXPECT_EQ(map.Lookup(row.name), static_cast<Finish>(row.value)) << '"' << row.name << '"';
        EXPECT_EQ(untyped.Lookup(row.name), row.value) << '"' << row.name << '"';
    }
    static_assert(std::is_same_v<decltype(map.Lookup("")), Finish>);
    static_assert(std::is_same_v<decltype(untyped.Lookup("")), int>);
}

TEST(NamedEnum, LaterLookupsAnswerAsTheFirst) {
    const HRES<Finish>& map = HRES<Finish>::Instance();
    for (int round = 0; round < 3; ++round) {
        EXPECT_EQ(map.RawLookup("hard_gold"), 3);
        EXPECT_EQ(map.RawLookup("gold"), 5);
        EXPECT_EQ(map.RawLookup("BARE"), 0);
    }
}

TEST(NamedEnum, NullIsNoName) {
    EXPECT_EQ(HRES<Finish>::Instance().RawLookup(nullptr), 5);
    EXPECT_EQ(HRES<Finish>::Instance().Lookup(nullptr), static_cast<Finish>(5));
}

TEST(NamedEnum, AValueHasItsNameAndTheFirstBeyondHasNone) {
    const HRES<Finish>& map = HRES<Finish>::Instance();
    EXPECT_EQ(map.Size(), 5);
    EXPECT_STREQ(map.Name(0), "bare");
    EXPECT_STREQ(map.Name(4), "silver");
    EXPECT_EQ(map.Name(5), nullptr);
    EXPECT_EQ(map.Name(6), nullptr);
    EXPECT_EQ(map.Name(2147483647), nullptr);
}

TEST(NamedEnum, TheNamesAreTheTableItself) {
    const HRES<Finish>& map = HRES<Finish>::Instance();
    EXPECT_EQ(map.Names(), kFinishes);
    EXPECT_EQ(map.Name(3), kFinishes[3]);
}

TEST(NamedEnum, AMapOfOneFindsItsOnlyName) {
    const HRES<Single>& map = HRES<Single>::Instance();
    EXPECT_EQ(map.Size(), 1);
    EXPECT_EQ(map.RawLookup("only"), 0);
    EXPECT_EQ(map.RawLookup("ONLY"), 0);
    EXPECT_EQ(map.RawLookup("onl"), 1);
    EXPECT_EQ(map.RawLookup("onlz"), 1);
    EXPECT_EQ(map.RawLookup(""), 1);
    EXPECT_EQ(map.Name(1), nullptr);
}

TEST(NamedEnum, OfNamesEqualButForCaseTheFirstIsFoundOddity) {
    const HRES<Repeated>& map = HRES<Repeated>::Instance();
    EXPECT_EQ(map.RawLookup("Pad"), 0);
    EXPECT_EQ(map.RawLookup("PAD"), 0);
    EXPECT_STREQ(map.Name(2), "PAD");
    EXPECT_EQ(map.RawLookup("via"), 1);
    EXPECT_EQ(map.RawLookup("trace"), 3);
    EXPECT_EQ(map.RawLookup("pads"), 4);
}

TEST(NamedEnum, EveryCallAnswersTheSameMap) {
    EXPECT_EQ(&HRES<Finish>::Instance(), &HRES<Finish>::Instance());
    static_assert(!std::is_copy_constructible_v<HRES_Impl<Finish, 5, kFinishes>>);
}

const Finish kFoundWhileStarting = HRES<Finish>::Instance().Lookup("TIN");

TEST(NamedEnum, AMapServesStaticInitialisers) { EXPECT_EQ(kFoundWhileStarting, Finish::Tin); }

class CountingMap final : public HRES<Finish> {
public:
    int Size() const override { return 0; }
    const char* const* Names() const override { return nullptr; }
    const char* Name(int) const override { return nullptr; }
    int RawLookup(const char* name) const override {
        asked.emplace_back(name);
        return 3;
    }

    mutable std::vector<std::string> asked;
};

TEST(NamedEnum, ALookupAsksTheMapsRawLookupOnce) {
    const CountingMap map;
    EXPECT_EQ(map.Lookup("a"), Finish::HardGold);
    EXPECT_EQ(static_cast<const IRawMap&>(map).Lookup("b"), 3);
    EXPECT_EQ(map.asked, (std::vector<std::string>{"a", "b"}));
}

TEST(NamedEnum, TheVirtualFunctionsKeepTheirPositions) {
    const IRawMap& map = HRES<Finish>::Instance();
    using ByName = int (*)(const void*, const char*);
    EXPECT_EQ(virtualFunction<ByName>(&map, 0)(&map, "hard_gold"), 3);
    EXPECT_EQ(virtualFunction<int (*)(const void*)>(&map, 1)(&map), 5);
    EXPECT_EQ(virtualFunction<const char* const* (*)(const void*)>(&map, 2)(&map), kFinishes);
    EXPECT_EQ(virtualFunction<const char* (*)(const void*, int)>(&map, 3)(&map, 1), kFinishes[1]);
    EXPECT_EQ(virtualFunction<ByName>(&map, 4)(&map, "hard_gold"), 3);
}

TEST(NamedEnum, FirstLookupsMayRace) {
    constexpr int kThreads = 8;
    std::atomic<int> waiting{kThreads};
    std::array<int, kThreads> wrong{};
    std::vector<std::thread> threads;
    for (int& mistakes : wrong) {
        threads.emplace_back([&waiting, &mistakes] {
            --waiting;
            while (waiting > 0) {
            }
            for (const LookupRow& row : kFinishLookups) {
                mistakes += HRES<Finish>::Instance().RawLookup(row.name) == row.value ? 0 : 1;
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    for (const int mistakes : wrong) {
        EXPECT_EQ(mistakes, 0);
    }
}

// Random tables: texts of a few letters and their neighbours, so that many are equal but for case or nearly so.

constexpr int kRandomSize = 40;
const char* randomTable[kRandomSize];
enum class Random : int {};

std::string randomText(std::mt19937& random) {
    static const std::string alphabet = "aAbBzZ@`_[{ \xE4\xC4";
    std::string text(random() % 4, ' ');
    for (char& c : text) {
        c = alphabet[random() % alphabet.size()];
    }
    return text;
}

int firstEqualIgnoringCase(const std::vector<std::string>& names, const std::string& name) {
    int value = 0;
    while (value < static_cast<int>(names.size()) &&
           zelutil::test::lowered(names[static_cast<std::size_t>(value)]) != zelutil::test::lowered(name)) {
        ++value;
    }
    return value;
}

TEST(NamedEnum, RandomTablesAnswerAsAScanOfTheTableDoes) {
    std::mt19937 random(20240601);
    for (int round = 0; round < 200; ++round) {
        std::vector<std::string> names;
        for (int value = 0; value < kRandomSize; ++value) {
            names.push_back(randomText(random));
        }
        for (int value = 0; value < kRandomSize; ++value) {
            randomTable[value] = names[static_cast<std::size_t>(value)].c_str();
        }
        const HRES_Impl<Random, kRandomSize, randomTable> map;
        for (int question = 0; question < 100; ++question) {
            const std::string name = randomText(random);
            ASSERT_EQ(map.RawLookup(name.c_str()), firstEqualIgnoringCase(names, name))
                << "round " << round << ", \"" << name << '"';
        }
    }
}

}  // namespace
