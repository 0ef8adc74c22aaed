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
    void add(std::uint64_t key) {
        auto setting = std::make_shared<Setting>();
        map_.emplace(key, setting);
        index_.add(std::move(setting));
        index_.addKey(key);
    }

    void expectSame() {
        index_.build();
        const std::vector<Setting*> settings = index_.inKeyOrder();
        ASSERT_EQ(settings.size(), map_.size());
        auto inIndex = settings.begin();
        for (const auto& [key, setting] : map_) {
            EXPECT_EQ(index_.find(key), setting.get()) << key;
            EXPECT_EQ(*inIndex++, setting.get()) << key;
            expectAbsentUnlessMapped(key + 1);
            expectAbsentUnlessMapped(key - 1);
            expectAbsentUnlessMapped(~key);
        }
    }

private:
    void expectAbsentUnlessMapped(std::uint64_t key) const {
        const auto found = map_.find(key);
        EXPECT_EQ(index_.find(key), found == map_.end() ? nullptr : found->second.get()) << key;
    }

    SettingIndex index_;
    std::map<std::uint64_t, std::shared_ptr<Setting>> map_;
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
