// The index against an ordered map filled in the same order.
#include "prefs/setting_index.h"

#include <gtest/gtest.h>

#include <map>
#include <random>
#include <string>
#include <utility>

namespace zelutil::prefs {
namespace {

class IndexAndMap {
public:
    /// Each setting has a default of its own, by which it is known again.
    void add(std::uint64_t key) {
        const std::string value = std::to_string(++count_);
        builder_.add(key, value);
        map_.emplace(key, value);
    }

    void expectSame() {
        const SettingIndex index = builder_.build();
        ASSERT_EQ(index.size(), map_.size());
        EXPECT_EQ(index.keyAt(index.size()), ~std::uint64_t{0});
        std::size_t place = 0;
        for (const auto& [key, value] : map_) {
            ASSERT_NE(index.find(key), nullptr) << key;
            EXPECT_EQ(index.find(key)->defaultValue, value) << key;
            EXPECT_EQ(index.placeOf(key), place) << key;
            EXPECT_EQ(index.keyAt(place), key);
            EXPECT_EQ(&index.at(place), index.find(key)) << key;
            ++place;
            expectAbsentUnlessMapped(index, key + 1);
            expectAbsentUnlessMapped(index, key - 1);
            expectAbsentUnlessMapped(index, ~key);
        }
    }

private:
    void expectAbsentUnlessMapped(const SettingIndex& index, std::uint64_t key) const {
        EXPECT_EQ(index.find(key) != nullptr, map_.count(key) != 0) << key;
        EXPECT_EQ(index.placeOf(key) != index.size(), map_.count(key) != 0) << key;
    }

    SettingIndex::Builder builder_;
    std::map<std::uint64_t, std::string> map_;
    int count_ = 0;
};

TEST(SettingIndex, FindsNothingInAnEmptyOneBuiltOrNot) {
    const SettingIndex notBuilt;
    const SettingIndex built = SettingIndex::Builder().build();
    for (const SettingIndex* const index : {&notBuilt, &built}) {
        EXPECT_EQ(index->find(0), nullptr);
        EXPECT_EQ(index->find(~std::uint64_t{0}), nullptr);
        EXPECT_EQ(index->size(), 0U);
        EXPECT_EQ(index->placeOf(0), 0U);
    }
}

TEST(SettingIndex, ASettingHoldsWhatItWasMadeOfAndIsFoundUnderEachOfItsKeys) {
    SettingIndex::Builder builder;
    builder.add(7, "0.5");
    builder.addKey(9);
    builder.add(8, "1");
    builder.addKey(9);
    builder.addKey(7);
    SettingIndex index = builder.build();
    const Setting* const setting = index.find(7);
    ASSERT_NE(setting, nullptr);
    EXPECT_EQ(index.find(9), setting);
    ASSERT_EQ(index.size(), 3U);
    EXPECT_EQ(&index.at(0), setting);
    EXPECT_EQ(&index.at(1), index.find(8));
    EXPECT_EQ(&index.at(2), setting);
    EXPECT_EQ(setting->defaultValue, "0.5");
    EXPECT_EQ(setting->key, 7U);
    EXPECT_EQ(setting->userValue, "");
    EXPECT_FALSE(setting->hasUserValue);
    EXPECT_EQ(setting->valueInForce(), "0.5");
    index.find(std::uint64_t{9})->setUserValue("");
    EXPECT_EQ(setting->valueInForce(), "");
    EXPECT_EQ(setting->defaultValue, "0.5");
}

TEST(SettingIndex, SettingsStayWhereTheyAreWhenItIsMoved) {
    SettingIndex::Builder builder;
    for (std::uint64_t key = 0; key < 100; ++key) {
        builder.add(key, "a value longer than any small buffer");
    }
    SettingIndex index = builder.build();
    const Setting* const setting = index.find(50);
    const SettingIndex moved = std::move(index);
    EXPECT_EQ(moved.find(50), setting);
    EXPECT_EQ(setting->defaultValue, "a value longer than any small buffer");
}

TEST(SettingIndex, FindsEachKeyOfAFewAtBothEnds) {
    for (const std::uint64_t count : {1U, 2U, 3U, 4U, 5U, 9U}) {
        IndexAndMap both;
        for (std::uint64_t i = 0; i < count; ++i) {
            both.add(i % 2 == 0 ? i : ~i);
        }
        both.expectSame();
    }
}

TEST(SettingIndex, KeepsTheFirstOfOneKeyAndTheOrderOfTheKeys) {
    std::mt19937_64 random(7);
    for (int round = 0; round < 20; ++round) {
        IndexAndMap both;
        const std::uint64_t keys = 1 + random() % 3000;
        for (std::uint64_t i = 0; i < keys; ++i) {
            // Few distinct keys now and then, so that many are added again.
            both.add(round % 2 == 0 ? random() : random() % keys * 0x9E3779B97F4A7C15);
        }
        both.expectSame();
    }
}

TEST(SettingIndex, BearsKeysMadeToShareTheirHighBits) {
    IndexAndMap both;
    for (std::uint64_t i = 0; i < 20000; ++i) {
        both.add(std::uint64_t{0xABCDEF} << 40 | (i * 7919 % 20011));
    }
    both.expectSame();
}

}  // namespace
}  // namespace zelutil::prefs
