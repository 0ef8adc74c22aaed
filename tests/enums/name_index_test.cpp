#include <zelutil/enums/name_index.h>

#include "support/letter_case.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <memory>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace zelutil::enums {
namespace {

TEST(NameIndexWord, HasTheFirstByteLowest) {
    EXPECT_EQ(wordAt("ABCDEFGH"), 0x4847464544434241U);
    EXPECT_EQ(wordAt("\xFF\x80\x01 \x7F\x81\xFE@"), 0x40FE817F200180FFU);
}

TEST(NameIndexWord, FoldsEachByteAsTheByteAlone) {
    for (int byte = 0; byte < 256; ++byte) {
        for (std::size_t place = 0; place < 8; ++place) {
            for (const char neighbour : {'\0', 'A', 'z', '\x7F', '\xFF'}) {
                std::string text(8, neighbour);
                text[place] = static_cast<char>(byte);
                ASSERT_EQ(lowerCaseWord(wordAt(text.c_str())), wordAt(test::lowered(text).c_str()))
                    << "byte " << byte << " at " << place;
            }
        }
    }
}

TEST(NameIndexWord, ShortTextsOfOneLengthDifferWhereAnyByteDoes) {
    for (std::size_t length = 1; length < 8; ++length) {
        const std::string text = std::string("abcdefg").substr(0, length);
        for (std::size_t place = 0; place < length; ++place) {
            std::string other = text;
            other[place] = '#';
            EXPECT_NE(shortWordOf(text.c_str(), length), shortWordOf(other.c_str(), length)) << text << ", " << other;
        }
    }
}

bool areSame(const std::string& a, const std::string& b) {
    return same(a.c_str(), nameKeyOf(a.c_str()), b.c_str(), nameKeyOf(b.c_str()));
}

bool areEqualIgnoringCase(const std::string& a, const std::string& b) {
    return equalIgnoringCase(a.c_str(), nameKeyOf(a.c_str()), b.c_str(), nameKeyOf(b.c_str()));
}

TEST(NameIndexComparison, EveryByteOfANameCounts) {
    for (std::size_t length = 1; length <= 40; ++length) {
        const std::string name(length, 'n');
        EXPECT_TRUE(areSame(name, std::string(length, 'n')));
        EXPECT_FALSE(areSame(name, name + "n"));
        EXPECT_FALSE(areEqualIgnoringCase(name, name + "n"));
        for (std::size_t place = 0; place < length; ++place) {
            std::string capital = name;
            capital[place] = 'N';
            EXPECT_FALSE(areSame(name, capital)) << capital;
            EXPECT_TRUE(areEqualIgnoringCase(name, capital)) << capital;
            std::string other = name;
            other[place] = 'm';
            EXPECT_FALSE(areSame(name, other)) << other;
            EXPECT_FALSE(areEqualIgnoringCase(name, other)) << other;
        }
    }
}

constexpr const char* const kLayers[] = {"Top", "inner copper layer number 1", "inner copper layer number 2", "",
                                         "TOP"};
constexpr NameIndex<5> kLayerIndex(kLayers);
static_assert(kLayerIndex.find("top") == 0, "the compiler makes the index and can ask it");

struct Row {
    const char* name;
    int value;
};

constexpr Row kRows[] = {
    {"Top", 0},
    {"tOp", 0},
    {"TOP", 0},
    {"", 3},
    {"inner copper layer number 1", 1},
    {"INNER COPPER LAYER NUMBER 2", 2},
    // They differ in the first, the last and a byte between.
    {"jnner copper layer number 1", 5},
    {"inner copper layer number 3", 5},
    {"inner copper_layer number 1", 5},
    {"inner copper layeR_number 1", 5},
    // Parts, and more.
    {"To", 5},
    {"Tops", 5},
    {"inner copper layer number ", 5},
    {"inner copper layer number 11", 5},
};

TEST(NameIndex, FindsEachNameIgnoringCaseAndNothingElse) {
    for (const Row& row : kRows) {
        EXPECT_EQ(kLayerIndex.find(row.name), row.value) << '"' << row.name << '"';
    }
}

/// Texts of one length, or of any, that differ in a few places.
std::string randomName(std::mt19937& random, std::size_t length) {
    static const std::string alphabet = "aAbBzZ@`[{\xE4";
    std::string text(length, 'n');
    for (int changes = 0; changes < 3 && length != 0; ++changes) {
        text[random() % length] = alphabet[random() % alphabet.size()];
    }
    return text;
}

template <int N>
void expectAsAScan(std::mt19937& random, std::size_t longest) {
    std::vector<std::string> texts;
    for (int value = 0; value < N; ++value) {
        texts.push_back(randomName(random, random() % (longest + 1)));
    }
    const char* names[N];
    for (int value = 0; value < N; ++value) {
        names[value] = texts[static_cast<std::size_t>(value)].c_str();
    }
    const auto index = std::make_unique<NameIndex<N>>(names);
    for (int question = 0; question < 3 * N; ++question) {
        const std::string name =
            question < N ? texts[static_cast<std::size_t>(question)] : randomName(random, random() % (longest + 1));
        int expected = 0;
        while (expected < N && test::lowered(texts[static_cast<std::size_t>(expected)]) != test::lowered(name)) {
            ++expected;
        }
        ASSERT_EQ(index->find(name.c_str()), expected) << '"' << name << '"';
    }
}

TEST(NameIndex, RandomNamesOfAllLengthsAreFoundAsByAScan) {
    std::mt19937 random(20240602);
    for (int round = 0; round < 12 && !HasFatalFailure(); ++round) {
        expectAsAScan<1>(random, 12);
        expectAsAScan<24>(random, 8);
        expectAsAScan<30>(random, 40);
        expectAsAScan<130>(random, 30);
    }
}

}  // namespace
}  // namespace zelutil::enums
