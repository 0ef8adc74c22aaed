#include "support/counting_entries.h"
#include "support/hash_table_twin.h"
#include "support/murmur_twin.h"
#include "support/printed.h"
#include "support/random_text.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <functional>
#include <iterator>
#include <limits>
#include <optional>
#include <string>
#include <vector>

namespace zelutil::test {
namespace {

using ::testing::ElementsAre;
using ::testing::ElementsAreArray;

std::string lineOf(std::uint64_t buckets, int walk) {
    return "Rehashing " + std::to_string(buckets) + " (" + std::to_string(walk) + ")\n";
}

/// A table with auto rehash that has 211 buckets, and keys for two of them.
class RehashingTable : public ::testing::Test {
protected:
    std::string acquire(const std::string& key) {
        return printedBy([&] { EXPECT_EQ(table->Acquire(key.c_str()).Key(), key); });
    }

    /// Expects silence.
    void fill(std::size_t count) {
        for (std::size_t i = 0; i < count; ++i) {
            EXPECT_EQ(acquire(together[i]), "") << i;
        }
    }

    EntryLog log;
    CountingFactory factory{log};
    Smart::Pointer<Table> table = Table::Create(100, &factory, true);
    std::vector<std::string> together = keysOfBucket(7, 211, 12);
    std::vector<std::string> elsewhere = keysOfBucket(8, 211, 12);
};

// --- The moment -----------------------------------------------------------------------------------------------------

TEST_F(RehashingTable, TheNinthKeyOfABucketMovesTheTableAndSaysSoOddity) {
    fill(8);
    EXPECT_EQ(acquire(together[8]), "Rehashing 211 (7)\n");
    EXPECT_EQ(log.asked.size(), 9U);
    for (std::size_t i = 0; i < 9; ++i) {
        EXPECT_EQ(table->Find(together[i].c_str())->Key(), together[i]);
    }
    // In 431 buckets they are apart: the walks count anew.
    EXPECT_EQ(acquire(together[9]), "");
}

TEST_F(RehashingTable, EntriesKeepTheirAddresses) {
    Table::IEntry* const first = &table->Acquire(together[0].c_str());
    for (std::size_t i = 1; i < 8; ++i) {
        table->Acquire(together[i].c_str());
    }
    EXPECT_EQ(acquire(together[8]), "Rehashing 211 (7)\n");
    EXPECT_EQ(table->Find(together[0].c_str()), first);
    EXPECT_TRUE(log.deleted.empty());
}

TEST(HashTableWithoutAutoRehash, LetsItsChainsGrowInSilence) {
    EntryLog log;
    CountingFactory factory(log);
    const Smart::Pointer<Table> table = Table::Create(100, &factory, false);
    const std::vector<std::string> keys = keysOfBucket(7, 211, 40);
    const std::string printed = printedBy([&] {
        for (const std::string& key : keys) {
            table->Acquire(key.c_str());
        }
        for (const std::string& key : keys) {
            EXPECT_EQ(table->Find(key.c_str())->Key(), key);
        }
    });
    EXPECT_EQ(printed, "");
}

struct WalkRow {
    const char* what;
    std::function<void(Table&, const std::vector<std::string>& keys)> lookUp;
    bool rehashes;
};

TEST_F(RehashingTable, AnyLookUpCountsTheNodesItPassedBehindTheFirst) {
    // Eight keys are in the bucket. The eighth's own addition passed 6 nodes: not more than 6.
    const WalkRow kRows[] = {
        {"nothing looked up", [](Table&, const auto&) {}, false},
        {"the first found", [](Table& t, const auto& keys) { t.Find(keys[0].c_str()); }, false},
        {"the last found, 6 passed", [](Table& t, const auto& keys) { t.Find(keys[7].c_str()); }, false},
        {"the last acquired again", [](Table& t, const auto& keys) { t.Acquire(keys[7].c_str()); }, false},
        {"the last removed", [](Table& t, const auto& keys) { t.Remove(keys[7].c_str()); }, false},
        {"a ninth missed after a removal, 6 passed",
         [](Table& t, const auto& keys) {
             t.Remove(keys[3].c_str());
             t.Find(keys[8].c_str());
         },
         false},
        {"a ninth missed, 7 passed", [](Table& t, const auto& keys) { t.Find(keys[8].c_str()); }, true},
        {"a ninth not there to be removed", [](Table& t, const auto& keys) { t.Remove(keys[8].c_str()); }, true},
        {"a ninth missed, the chain then shortened",
         [](Table& t, const auto& keys) {
             t.Find(keys[8].c_str());
             t.Remove(keys[0].c_str());
         },
         true},
    };
    for (const WalkRow& row : kRows) {
        table = Table::Create(100, &factory, true);
        fill(8);
        EXPECT_EQ(printedBy([&] { row.lookUp(*table, together); }), "") << row.what;
        EXPECT_EQ(acquire(elsewhere[0]), row.rehashes ? "Rehashing 211 (7)\n" : "") << row.what;
    }
}

TEST_F(RehashingTable, OnlyTheAdditionOfAnEntryRehashes) {
    fill(8);
    const std::string printed = printedBy([this] {
        table->Find(together[8].c_str());
        table->Acquire(together[0].c_str());
        table->Remove(together[1].c_str());
        table->Initialize();
    });
    EXPECT_EQ(printed, "");
    EXPECT_EQ(acquire(elsewhere[0]), "Rehashing 211 (7)\n");
}

TEST_F(RehashingTable, AFactoryThatThrowsDoesNotRehash) {
    fill(8);
    factory.before = [](const char*) { throw 1; };
    EXPECT_EQ(printedBy([this] { EXPECT_THROW(table->Acquire(together[8].c_str()), int); }), "");
    factory.before = nullptr;
    EXPECT_EQ(acquire(together[8]), "Rehashing 211 (7)\n");
}

// --- The sizes ------------------------------------------------------------------------------------------------------

struct SizeRow {
    std::size_t asked;
    std::uint64_t buckets;
};

TEST(HashTableSizes, ATableTakesTheNextSizeAboveTheOneAskedForPlusOneOddity) {
    constexpr SizeRow kRows[] = {
        {0, 211},
        {1, 211},
        {100, 211},
        {209, 211},
        // A size of the table's own, or one less, is taken for too small.
        {210, 431},
        {211, 431},
        {212, 431},
        {429, 431},
        {430, 863},
        {431, 863},
        {862, 1609},
        {61601, 61603},
        {61602, 367453},
        {61603, 367453},
    };
    const std::vector<std::string> keys = keysOfOneHash(9);
    for (const SizeRow& row : kRows) {
        EntryLog log;
        CountingFactory factory(log);
        const Smart::Pointer<Table> table = Table::Create(row.asked, &factory, true);
        const std::string printed = printedBy([&] {
            table->Initialize();
            table->Initialize();  // takes no further step
            for (const std::string& key : keys) {
                table->Acquire(key.c_str());
            }
        });
        EXPECT_EQ(printed, lineOf(row.buckets, 7)) << row.asked;
    }
}

TEST(HashTableSizes, EveryFurtherKeyOfOneHashTakesAStepThroughTheSizesOddity) {
    // Such keys stay together in every size: the walk, and so a step, comes with each addition from the ninth on.
    constexpr std::uint64_t kSizes[] = {
        211,    431,    863,     1609,    3221,    4799,    6577,    8231,     10289,  12889,
        16127,  20161,  25219,   31531,   39419,   49277,   61603,   367453,   459317, 574157,
        717697, 897133, 1121423, 1401791, 1752239, 2190299, 2744457, 13055587,
    };
    std::string expected;
    int walk = 7;
    for (const std::uint64_t size : kSizes) {
        expected += lineOf(size, walk++);
    }
    EntryLog log;
    CountingFactory factory(log);
    const Smart::Pointer<Table> table = Table::Create(0, &factory, true);
    const std::vector<std::string> keys = keysOfOneHash(8 + std::size(kSizes));
    const std::string printed = printedBy([&] {
        for (const std::string& key : keys) {
            table->Acquire(key.c_str());
        }
    });
    EXPECT_EQ(printed, expected);
    for (const std::string& key : keys) {
        EXPECT_EQ(table->Find(key.c_str())->Key(), key);
    }
}

TEST(HashTableSizes, AnUnmeasurableSizeCanBeAskedForWhileNothingIsStored) {
    EntryLog log;
    CountingFactory factory(log);
    const Smart::Pointer<Table> table = Table::Create(std::numeric_limits<std::size_t>::max(), &factory, true);
    EXPECT_EQ(table->Find("via"), nullptr);
    EXPECT_TRUE(log.asked.empty());
}

// --- The order ------------------------------------------------------------------------------------------------------

TEST(HashTableOrder, EntriesAreDeletedByBucketAndAlongEachChain) {
    EntryLog log;
    CountingFactory factory(log);
    Smart::Pointer<Table> table = Table::Create(0, &factory, false);
    const std::vector<std::string> low = keysOfBucket(3, 211, 3);
    const std::vector<std::string> high = keysOfBucket(210, 211, 2);
    for (const std::string& key : {high[0], low[0], low[1], high[1], low[2]}) {
        table->Acquire(key.c_str());
    }
    table = Smart::Pointer<Table>();
    EXPECT_THAT(log.deleted, ElementsAre(low[0], low[1], low[2], high[0], high[1]));
}

struct RemovalRow {
    std::size_t removed;
    std::vector<std::size_t> left;
};

TEST(HashTableOrder, RemovalClosesTheGapAndANewKeyGoesToTheEnd) {
    const RemovalRow kRows[] = {
        {0, {1, 2, 3}},
        {1, {0, 2, 3}},
        {2, {0, 1, 3}},
    };
    const std::vector<std::string> keys = keysOfBucket(3, 211, 4);
    for (const RemovalRow& row : kRows) {
        EntryLog log;
        CountingFactory factory(log);
        Smart::Pointer<Table> table = Table::Create(0, &factory, false);
        for (std::size_t i = 0; i < 3; ++i) {
            table->Acquire(keys[i].c_str());
        }
        table->Remove(keys[row.removed].c_str());
        table->Acquire(keys[3].c_str());
        std::vector<std::string> expected = {keys[row.removed]};
        for (const std::size_t place : row.left) {
            expected.push_back(keys[place]);
        }
        table = Smart::Pointer<Table>();
        EXPECT_THAT(log.deleted, ElementsAreArray(expected)) << row.removed;
    }
}

/// A key that is in one bucket of 211 and in another of 431.
std::string keyOfBuckets(std::uint32_t of211, std::uint32_t of431) {
    for (int number = 0;; ++number) {
        const std::string key = "pin" + std::to_string(number);
        const std::uint32_t hash = keyHash(key);
        if (hash % 211 == of211 && hash % 431 == of431) {
            return key;
        }
    }
}

TEST_F(RehashingTable, MovesTheOldBucketsInTheirOrder) {
    // Two keys meet in bucket 20 of the new table. The later one comes from the lower of the old buckets.
    const std::string fromHigh = keyOfBuckets(150, 20);
    const std::string fromLow = keyOfBuckets(2, 20);
    EXPECT_EQ(acquire(fromHigh), "");
    EXPECT_EQ(acquire(fromLow), "");
    fill(8);
    EXPECT_EQ(acquire(together[8]), "Rehashing 211 (7)\n");
    table = Smart::Pointer<Table>();
    const auto placeOf = [this](const std::string& key) {
        return std::find(log.deleted.begin(), log.deleted.end(), key) - log.deleted.begin();
    };
    EXPECT_EQ(placeOf(fromHigh), placeOf(fromLow) + 1);
}

// --- The twin -------------------------------------------------------------------------------------------------------

std::string inSomeCase(std::string key, RandomText& random) {
    for (char& c : key) {
        if (random.below(2) == 0) {
            c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
        }
    }
    return key;
}

/// Keys that meet often: of a few buckets of each of the first sizes.
std::vector<std::string> crowdedKeys() {
    std::vector<std::string> keys = keysOfOneHash(9);
    for (const std::uint32_t size : {211U, 431U, 863U}) {
        for (const std::uint32_t bucket : {0U, 1U, size - 1}) {
            const std::vector<std::string> some = keysOfBucket(bucket, size, 14);
            keys.insert(keys.end(), some.begin(), some.end());
        }
    }
    std::sort(keys.begin(), keys.end());
    keys.erase(std::unique(keys.begin(), keys.end()), keys.end());
    return keys;
}

/// One random operation on both. Adds the keys that must have been deleted to `deleted`.
void operate(Table& table, HashTableTwin& twin, const std::string& key, RandomText& random,
             std::vector<std::string>& deleted) {
    const std::size_t what = random.below(8);
    if (what < 4) {
        EXPECT_EQ(table.Acquire(key.c_str()).Key(), twin.acquire(key));
        return;
    }
    const std::optional<std::string> there = twin.find(key);
    Table::IEntry* const found = table.Find(key.c_str());
    ASSERT_EQ(found != nullptr, there.has_value()) << key;
    if (there.has_value()) {
        EXPECT_EQ(found->Key(), *there);
    }
    if (what == 4) {
        twin.remove(key);
        table.Remove(key.c_str());
        if (there.has_value()) {
            deleted.push_back(*there);
        }
    }
}

TEST(HashTableAndTwin, AgreeOnRandomOperations) {
    const std::vector<std::string> keys = crowdedKeys();
    for (unsigned seed = 1; seed <= 60; ++seed) {
        RandomText random(seed);
        const bool autoRehash = seed % 4 != 0;
        EntryLog log;
        CountingFactory factory(log);
        Smart::Pointer<Table> table = Table::Create(seed, &factory, autoRehash);
        HashTableTwin twin(seed, autoRehash);
        std::vector<std::string> deleted;
        const std::string printed = printedBy([&] {
            table->Initialize();
            twin.initialize();
            for (int i = 0; i < 400; ++i) {
                const std::string key = inSomeCase(keys[random.below(keys.size())], random);
                operate(*table, twin, key, random, deleted);
            }
            const std::vector<std::string> last = twin.keys();
            deleted.insert(deleted.end(), last.begin(), last.end());
            table = Smart::Pointer<Table>();
        });
        EXPECT_EQ(printed, twin.printed()) << "seed " << seed;
        EXPECT_EQ(log.deleted, deleted) << "seed " << seed;
        EXPECT_EQ(log.asked.size(), static_cast<std::size_t>(twin.insertions())) << "seed " << seed;
    }
}

TEST(HashTableAndTwin, AgreeOnManyKeys) {
    EntryLog log;
    CountingFactory factory(log);
    Smart::Pointer<Table> table = Table::Create(0, &factory, true);
    HashTableTwin twin(0, true);
    const std::string printed = printedBy([&] {
        for (int i = 0; i < 20'000; ++i) {
            const std::string key = "board/net_" + std::to_string(i * 7919);
            EXPECT_EQ(table->Acquire(key.c_str()).Key(), key);
            twin.acquire(key);
        }
    });
    EXPECT_EQ(printed, twin.printed());
    EXPECT_GT(twin.printed().size(), 10 * sizeof "Rehashing 211 (7)");
    table = Smart::Pointer<Table>();
    EXPECT_EQ(log.deleted, twin.keys());
}

}  // namespace
}  // namespace zelutil::test
