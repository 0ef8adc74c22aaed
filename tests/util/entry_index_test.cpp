#include "util/entry_index.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <random>
#include <vector>

namespace zelutil::hash {
namespace {

struct Item {
    int name;
};

Item* found(const EntryIndex<Item>& index, std::uint32_t hash, int name) {
    return index.find(hash, [name](const Item& item) { return item.name == name; });
}

TEST(EntryIndex, OfSeveralWithOneHashFindsTheOneThatIsWanted) {
    Item items[] = {{1}, {2}, {3}};
    EntryIndex<Item> index;
    EXPECT_EQ(found(index, 5, 1), nullptr);
    for (Item& item : items) {
        index.add(5, item);
    }
    EXPECT_EQ(found(index, 5, 2), &items[1]);
    EXPECT_EQ(found(index, 6, 2), nullptr);
    index.remove(5, items[0]);
    EXPECT_EQ(found(index, 5, 1), nullptr);
    EXPECT_EQ(found(index, 5, 2), &items[1]);
    EXPECT_EQ(found(index, 5, 3), &items[2]);
}

TEST(EntryIndex, OfTwoThatAreWantedTheEarlierIsFoundHoweverOftenItGrows) {
    Item twins[] = {{1}, {1}};
    Item others[100] = {};
    EntryIndex<Item> index;
    // With 16 places the first lies on the last one, and the second round the end.
    index.add(15, twins[0]);
    index.add(15, twins[1]);
    std::uint32_t hash = 1000;
    for (Item& other : others) {
        index.add(++hash, other);
        ASSERT_EQ(found(index, 15, 1), &twins[0]) << hash;
    }
}

TEST(EntryIndex, AsksForNothingButEntriesOfTheHash) {
    Item items[] = {{1}, {2}};
    EntryIndex<Item> index;
    // With 16 places both begin at the last one, so that the second lies round the end.
    index.add(15, items[0]);
    index.add(31, items[1]);
    int asked = 0;
    EXPECT_EQ(index.find(31, [&asked](const Item&) { return ++asked > 0; }), &items[1]);
    EXPECT_EQ(asked, 1);
    index.remove(15, items[0]);
    EXPECT_EQ(found(index, 31, 2), &items[1]);
}

/// Hashes of few bits, so that entries crowd, round the end of the places too.
TEST(EntryIndex, RandomChangesLeaveWhatAListHas) {
    std::mt19937 random(20240604);
    for (int round = 0; round < 20; ++round) {
        std::vector<Item> items;
        for (int name = 0; name < 100; ++name) {
            items.push_back({name});
        }
        const std::size_t hashes = 1 + random() % 200;
        std::vector<std::uint32_t> hashOf(items.size());
        std::vector<bool> isIn(items.size());
        EntryIndex<Item> index;
        for (int step = 0; step < 1000; ++step) {
            const std::size_t i = random() % items.size();
            if (isIn[i]) {
                index.remove(hashOf[i], items[i]);
            } else {
                hashOf[i] = static_cast<std::uint32_t>(random() % hashes);
                index.add(hashOf[i], items[i]);
            }
            isIn[i] = !isIn[i];
            const std::size_t asked = random() % items.size();
            Item* const expected = isIn[asked] ? &items[asked] : nullptr;
            ASSERT_EQ(found(index, hashOf[asked], items[asked].name), expected) << "round " << round;
        }
    }
}

}  // namespace
}  // namespace zelutil::hash
