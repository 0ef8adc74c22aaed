#include "support/counting_entries.h"
#include "support/murmur_twin.h"
#include "support/random_text.h"
#include "util/folded_murmur.h"
#include "util/hash_impl.h"
#include "util/hash_sizes.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace zelutil::test {
namespace {

// --- Sizes ----------------------------------------------------------------------------------------------------------

constexpr std::uint64_t kSizes[] = {
    211,      431,      863,      1609,     3221,     4799,     6577,     8231,      10289,
    12889,    16127,    20161,    25219,    31531,    39419,    49277,    61603,     367453,
    459317,   574157,   717697,   897133,   1121423,  1401791,  1752239,  2190299,   2744457,
    13055587, 16319519, 20399411, 25499291, 31874149, 39842687, 49803361, 237481091, 296851369,
};

TEST(HashSizes, TheStepsAreUnevenOddity) {
    std::uint64_t count = 0;
    for (const std::uint64_t size : kSizes) {
        count = hash::grownBucketCount(count);
        EXPECT_EQ(count, size);
    }
    EXPECT_EQ(hash::grownBucketCount(count), 296851369U);
}

TEST(HashSizes, EachIsReachedFromTwoBelowAtTheMostOddity) {
    for (std::size_t i = 0; i + 1 < std::size(kSizes); ++i) {
        EXPECT_EQ(hash::grownBucketCount(kSizes[i] - 2), kSizes[i]);
        EXPECT_EQ(hash::grownBucketCount(kSizes[i] - 1), kSizes[i + 1]);
        EXPECT_EQ(hash::grownBucketCount(kSizes[i]), kSizes[i + 1]);
        EXPECT_EQ(hash::grownBucketCount(kSizes[i] + 1), kSizes[i + 1]);
    }
}

TEST(HashSizes, StopAtTheLargest) {
    for (const std::uint64_t count : std::initializer_list<std::uint64_t>{
             296851367, 296851368, 296851369, 296851370, 4294967295, 4294967296, UINT64_MAX - 1, UINT64_MAX}) {
        EXPECT_EQ(hash::grownBucketCount(count), 296851369U) << count;
    }
}

// --- Hash -----------------------------------------------------------------------------------------------------------

/// The published check of a hash function: the hash, with seed 0, of its values for the byte strings "", 00, 00 01, ...
/// with the seeds 256, 255, ...
TEST(MurmurTwin, HasThePublishedVerificationValue) {
    std::vector<unsigned char> key;
    std::vector<unsigned char> hashes;
    for (std::uint32_t length = 0; length < 256; ++length) {
        const std::uint32_t value = murmurHash2(key, 256 - length);
        for (unsigned shift = 0; shift < 32; shift += 8) {
            hashes.push_back(static_cast<unsigned char>(value >> shift));
        }
        key.push_back(static_cast<unsigned char>(length));
    }
    EXPECT_EQ(murmurHash2(hashes, 0), 0x27864C1EU);
}

TEST(FoldedMurmur, IsThePublishedHashOfTheFoldedBytes) {
    std::string everyByte;
    for (int byte = 1; byte < 256; ++byte) {
        everyByte += static_cast<char>(byte);
    }
    RandomText random(1);
    for (int i = 0; i < 20'000; ++i) {
        const std::string key = random.text(everyByte, 40);
        ASSERT_EQ(hash::foldedMurmur(key.c_str()), keyHash(key)) << ::testing::PrintToString(key);
    }
}

TEST(FoldedMurmur, ReadsAKeyAtAnyAddress) {
    const std::string text = "....NETS/clock_0001";
    for (std::size_t start = 0; start < text.size(); ++start) {
        EXPECT_EQ(hash::foldedMurmur(text.c_str() + start), keyHash(std::string_view(text).substr(start))) << start;
    }
}

TEST(FoldedMurmur, IgnoresBitFiveOfEveryByteOddity) {
    EXPECT_EQ(hash::foldedMurmur("Net/CLOCK"), hash::foldedMurmur("nET/clock"));
    EXPECT_EQ(hash::foldedMurmur("\x41\x40"), hash::foldedMurmur("\x61\x60"));
    EXPECT_EQ(hash::foldedMurmur("\xC4\x0F^"), hash::foldedMurmur("\xE4/~"));
    EXPECT_NE(hash::foldedMurmur("net1"), hash::foldedMurmur("net2"));
}

// --- What the table keeps to itself ---------------------------------------------------------------------------------

class InsideOfTheTable : public ::testing::Test {
protected:
    EntryLog log;
    CountingFactory factory{log};
    ZelU::Hash::Impl::StringHash table{0, &factory, false};
    std::vector<std::string> keys = keysOfBucket(7, 211, 12);
};

TEST_F(InsideOfTheTable, AMissPassesAllNodesButTheFirst) {
    for (int length = 0; length < 12; ++length) {
        // The miss when the chain was one shorter recorded the first of these, this miss the second.
        EXPECT_EQ(table.longestWalk(), length >= 2 ? length - 2 : 0);
        table.Initialize();
        EXPECT_EQ(table.Find(keys[11].c_str()), nullptr);
        EXPECT_EQ(table.longestWalk(), length >= 2 ? length - 1 : 0) << length;
        table.Acquire(keys[static_cast<std::size_t>(length)].c_str());
    }
}

TEST_F(InsideOfTheTable, AHitPassesNoMoreThanWasPassedAtTheAddition) {
    for (const std::string& key : keys) {
        table.Acquire(key.c_str());
    }
    EXPECT_EQ(table.longestWalk(), 10);
    for (const std::string& key : keys) {
        EXPECT_NE(table.Find(key.c_str()), nullptr);
        EXPECT_EQ(table.longestWalk(), 10) << key;
    }
}

TEST_F(InsideOfTheTable, RemovalIsNotCountedBackOddity) {
    EXPECT_EQ(table.insertions(), 0);
    table.Acquire("via");
    table.Acquire("VIA");
    table.Acquire("pin");
    EXPECT_EQ(table.insertions(), 2);
    table.Remove("via");
    EXPECT_EQ(table.insertions(), 2);
    table.Acquire("via");
    EXPECT_EQ(table.insertions(), 3);
}

TEST_F(InsideOfTheTable, TheSizeAskedForIsTheCountUntilThereAreBuckets) {
    EXPECT_EQ(table.bucketCount(), 0U);
    table.Initialize();
    EXPECT_EQ(table.bucketCount(), 211U);
    table.Initialize();
    EXPECT_EQ(table.bucketCount(), 211U);
}

}  // namespace
}  // namespace zelutil::test
