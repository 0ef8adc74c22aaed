#include "facet/text_table.h"

#include <gtest/gtest.h>

#include <map>
#include <random>
#include <string>

namespace zelutil::facet {
namespace {

TEST(TextTable, FindsNothingInAnEmptyTable) {
    const TextTable<int> table;
    EXPECT_EQ(table.find("a"), nullptr);
    EXPECT_EQ(table.find(""), nullptr);
}

TEST(TextTable, TheFirstValueOfAKeyStays) {
    TextTable<int> table;
    table.add("a", 1);
    table.add("a", 2);
    ASSERT_NE(table.find("a"), nullptr);
    EXPECT_EQ(*table.find("a"), 1);
}

TEST(TextTable, KeysOfAnyLengthDifferInAnyByte) {
    for (std::size_t length = 1; length <= 40; ++length) {
        TextTable<std::size_t> table;
        for (std::size_t changed = 0; changed < length; ++changed) {
            std::string key(length, 'x');
            key[changed] = 'y';
            table.add(key, changed);
        }
        EXPECT_EQ(table.find(std::string(length, 'x')), nullptr) << length;
        for (std::size_t changed = 0; changed < length; ++changed) {
            std::string key(length, 'x');
            key[changed] = 'y';
            ASSERT_NE(table.find(key), nullptr) << length << ' ' << changed;
            EXPECT_EQ(*table.find(key), changed) << length;
        }
        EXPECT_EQ(table.find(""), nullptr) << length;
    }
}

TEST(TextTable, AnswersWhatAMapAnswers) {
    std::mt19937 random(2024);
    TextTable<int> table;
    std::map<std::string, int> map;
    for (int i = 0; i < 20000; ++i) {
        std::string key(1 + random() % 12, 'a');
        for (char& c : key) {
            c = "ab\0\xC4"[random() % 4];
        }
        if (random() % 2 == 0) {
            table.add(key, i);
            map.emplace(key, i);
        }
        const int* const value = table.find(key);
        const auto expected = map.find(key);
        ASSERT_EQ(value != nullptr, expected != map.end()) << i;
        if (value != nullptr) {
            ASSERT_EQ(*value, expected->second) << i;
        }
    }
}

}  // namespace
}  // namespace zelutil::facet
