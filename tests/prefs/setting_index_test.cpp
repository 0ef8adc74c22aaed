// The index against an ordered map filled in the same order.
#include "prefs/setting_index.h"

#include <gtest/gtest.h>

#include <map>
#include <random>

namespace zelutil::prefs {
namespace {

using Setting = SettingIndex::Setting;

class IndexAndMap {
public:
    void add(std::uint64_t key) { map_.emplace(key, index_.add("section::", "name", key, "value")); }

    void expectSame() {
        index_.build();
        const std::vector<Setting*> settings = index_.inKeyOrder();
        ASSERT_EQ(settings.size(), map_.size());
        auto inIndex = settings.begin();
        for (const auto& [key, setting] : map_) {
            EXPECT_EQ(index_.find(key), setting) << key;
            EXPECT_EQ(*inIndex++, setting) << key;
            expectAbsentUnlessMapped(key + 1);
            expectAbsentUnlessMapped(key - 1);
            expectAbsentUnlessMapped(~key);
        }
    }

private:
    void expectAbsentUnlessMapped(std::uint64_t key) const {
        const auto found = map_.find(key);
        EXPECT_EQ(index_.find(key), found == map_.end() ? nullptr : found->second) << key;
    }

    SettingIndex index_;
    std::map<std::uint64_t, Setting*> map_;
};

TEST(SettingIndex, FindsNothingInAnEmptyOneBuiltOrNot) {
    SettingIndex index;
    for (int round = 0; round < 2; ++round) {
        EXPECT_EQ(index.find(0), nullptr);
        EXPECT_EQ(index.find(~std::uint64_t{0}), nullptr);
        EXPECT_TRUE(index.inKeyOrder().empty());
        index.build();
    }
}

TEST(SettingIndex, ARecordHoldsWhatItWasMadeOf) {
    SettingIndex index;
    const Setting* const setting = index.add("display::", "Grid", 7, "0.5");
    index.addKey(9);
    index.build();
    EXPECT_EQ(index.find(7), setting);
    EXPECT_EQ(index.find(9), setting);
    EXPECT_EQ(setting->fullName, "display::Grid");
    EXPECT_EQ(setting->name(), "Grid");
    EXPECT_EQ(setting->defaultValue, "0.5");
    EXPECT_EQ(setting->key, 7U);
    EXPECT_EQ(setting->userValue, "");
    EXPECT_FALSE(setting->hasUserValue);
}

TEST(SettingIndex, ACopyKeepsTheRecordsWhenTheOriginalIsGone) {
    auto original = std::make_unique<SettingIndex>();
    original->add("display::", "a name longer than any small buffer", 7, "a value longer than any small buffer");
    original->build();
    const SettingIndex copy(*original);
    original.reset();
    ASSERT_NE(copy.find(7), nullptr);
    EXPECT_EQ(copy.find(7)->fullName, "display::a name longer than any small buffer");
    EXPECT_EQ(copy.find(7)->defaultValue, "a value longer than any small buffer");
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
