#include "support/counting_entries.h"
#include "support/murmur_twin.h"
#include "support/printed.h"
#include "support/scarce_memory.h"
#include "util/hash_impl.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

namespace zelutil::test {
namespace {

using ZelU::Hash::Impl::StringHash;

class HashTableOutOfMemory : public ::testing::Test {
protected:
    // The log itself is to need no memory.
    HashTableOutOfMemory() { log.asked.reserve(1000); }

    EntryLog log;
    CountingFactory factory{log};
    std::vector<std::string> keys = keysOfOneHash(12);
};

TEST_F(HashTableOutOfMemory, CreateThrowsAndLeaksNothing) {
    int failures = 0;
    while (failsWith(failures, [this] { Table::Create(0, &factory, true); })) {
        ++failures;
    }
    EXPECT_EQ(failures, 2);  // the table, the count of its holders
}

TEST_F(HashTableOutOfMemory, InitializeLeavesTheTableAsItWas) {
    StringHash table(100, &factory, true);
    EXPECT_TRUE(failsWith(0, [&] { table.Initialize(); }));
    EXPECT_EQ(table.bucketCount(), 100U);
    EXPECT_EQ(table.Find("via"), nullptr);
    table.Initialize();
    EXPECT_EQ(table.bucketCount(), 211U);
}

TEST_F(HashTableOutOfMemory, AcquireAddsTheEntryOrChangesNothing) {
    StringHash table(0, &factory, true);
    table.Acquire(keys[0].c_str());
    int failures = 0;
    while (failsWith(failures, [&] { table.Acquire(keys[1].c_str()); })) {
        EXPECT_EQ(table.Find(keys[1].c_str()), nullptr) << failures;
        EXPECT_EQ(table.insertions(), 1) << failures;
        ++failures;
    }
    EXPECT_GE(failures, 2);  // the node, the entry
    EXPECT_EQ(table.insertions(), 2);
    EXPECT_NE(table.Find(keys[0].c_str()), nullptr);
    EXPECT_NE(table.Find(keys[1].c_str()), nullptr);
    EXPECT_TRUE(log.deleted.empty());
}

TEST_F(HashTableOutOfMemory, WithoutMemoryForItsIndexATableFindsEntriesByTheirChains) {
    StringHash table(0, &factory, false);
    table.Initialize();
    // Each time but the last some allocation fails; the one that is let fail quietly is that of the index.
    for (int allowed = 0; failsWith(allowed, [&] { table.Acquire(keys[0].c_str()); }); ++allowed) {
    }
    for (const std::string& key : keys) {
        table.Acquire(key.c_str());
    }
    EXPECT_EQ(table.insertions(), 12);
    EXPECT_EQ(table.longestWalk(), 10);
    table.Remove(keys[3].c_str());
    for (const std::string& key : keys) {
        EXPECT_EQ(table.Find(key.c_str()) == nullptr, key == keys[3]) << key;
    }
    EXPECT_EQ(&table.Acquire(keys[5].c_str()), table.Find(keys[5].c_str()));
    EXPECT_EQ(table.insertions(), 12);
}

TEST_F(HashTableOutOfMemory, ARehashThatCannotBeMadeKeepsTheOldBucketsAndTheNewEntry) {
    StringHash table(0, &factory, true);
    for (int i = 0; i < 8; ++i) {
        table.Acquire(keys[static_cast<std::size_t>(i)].c_str());
    }
    // The last allocation of this call is the one of the new buckets.
    int allowed = 0;
    const std::string printed = printedBy([&] {
        while (table.insertions() == 8) {
            EXPECT_TRUE(failsWith(allowed++, [&] { table.Acquire(keys[8].c_str()); }));
        }
    });
    EXPECT_EQ(printed, "Rehashing 211 (7)\n");
    EXPECT_EQ(table.bucketCount(), 211U);
    EXPECT_EQ(table.longestWalk(), 7);
    for (std::size_t i = 0; i < 9; ++i) {
        EXPECT_NE(table.Find(keys[i].c_str()), nullptr) << i;
    }
    // The next addition tries again.
    EXPECT_EQ(printedBy([&] { table.Acquire(keys[9].c_str()); }), "Rehashing 211 (8)\n");
    EXPECT_EQ(table.bucketCount(), 431U);
    EXPECT_TRUE(log.deleted.empty());
}

TEST_F(HashTableOutOfMemory, EveryEntryIsStillDeletedOnce) {
    {
        StringHash table(0, &factory, true);
        for (const std::string& key : keys) {
            int allowed = 0;
            printedBy([&] {
                while (failsWith(allowed, [&] { table.Acquire(key.c_str()); })) {
                    ++allowed;
                }
            });
        }
        EXPECT_TRUE(log.deleted.empty());
    }
    EXPECT_THAT(log.deleted, ::testing::UnorderedElementsAreArray(keys));
}

TEST_F(HashTableOutOfMemory, ASizeBeyondTheLargestAsksForTheLargest) {
    for (const std::size_t size :
         {std::size_t{296851370}, std::size_t{4294967296}, std::numeric_limits<std::size_t>::max()}) {
        StringHash table(size, &factory, true);
        EXPECT_TRUE(failsWith(0, [&] { table.Initialize(); }));
        EXPECT_EQ(ScarceMemory::lastCleared(), 296851369 * sizeof(void*)) << size;
        EXPECT_EQ(table.bucketCount(), size);
    }
}

}  // namespace
}  // namespace zelutil::test
