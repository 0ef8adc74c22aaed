#include "text/blocks.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <random>
#include <string>

#include "text/block_words.h"

namespace zelutil::test {
namespace {

using Characters = std::array<char, text::kBlock>;
using text::any;
using text::equal;
using text::words::any;
using text::words::equal;

template <typename Block>
Characters charactersOf(Block block) {
    Characters characters{};
    text::putBlock(characters.data(), block);
    return characters;
}

/// Returns the characters for which a function is true, marked as a comparison marks them.
template <typename IsMarked>
Characters marked(const Characters& characters, IsMarked isMarked) {
    Characters marks{};
    for (std::size_t place = 0; place < characters.size(); ++place) {
        marks[place] = isMarked(characters[place]) ? '\xFF' : '\0';
    }
    return marks;
}

char changed(char c, unsigned char kept, unsigned char set) {
    return static_cast<char>((static_cast<unsigned char>(c) & kept) | set);
}

/// Compares each function with what it does to one character after another.
template <typename Block>
void expectFunctionsOfCharacters(const Characters& characters, char c, char to) {
    const Block block = text::blockAt<Block>(characters.data());
    EXPECT_EQ(charactersOf(block), characters);

    const Characters isC = marked(characters, [c](char one) { return one == c; });
    EXPECT_EQ(charactersOf(equal(block, c)), isC);
    EXPECT_EQ(any(equal(block, c)), isC != Characters{});
    EXPECT_EQ(any(block), characters != Characters{});

    const Characters isEither = marked(characters, [=](char one) { return one == c || one == to; });
    EXPECT_EQ(charactersOf(equal(block, c) | equal(block, to)), isEither);
    Block marks = equal(block, c);
    marks |= equal(block, to);
    EXPECT_EQ(charactersOf(marks), isEither);
    EXPECT_EQ(charactersOf(equal(block, c) & equal(block, to)), c == to ? isC : Characters{});

    const auto bits = static_cast<unsigned char>(to);
    EXPECT_EQ(charactersOf(equal(block & bits, c)),
              marked(characters, [=](char one) { return changed(one, bits, 0) == c; }));
    EXPECT_EQ(charactersOf(equal(block | bits, c)),
              marked(characters, [=](char one) { return changed(one, 0xFF, bits) == c; }));

    Characters exchanged = characters;
    for (char& one : exchanged) {
        one = one == c ? to : one;
    }
    EXPECT_EQ(charactersOf(text::replaced(block, c, to)), exchanged);
}

void expectBothAlike(const Characters& characters, char c, char to) {
    SCOPED_TRACE("characters " + testing::PrintToString(std::string(characters.data(), characters.size())) + ", " +
                 testing::PrintToString(c) + " to " + testing::PrintToString(to));
    expectFunctionsOfCharacters<text::Block>(characters, c, to);
    expectFunctionsOfCharacters<text::words::Block>(characters, c, to);
}

TEST(Blocks, OneCharacterIsFoundAtEachPlace) {
    for (std::size_t place = 0; place < text::kBlock; ++place) {
        Characters characters;
        characters.fill('x');
        characters[place] = '/';
        expectBothAlike(characters, '/', '\\');
    }
}

// The words find a character by sums and shifts, in which a byte must not touch its neighbours.
TEST(Blocks, NeighboursWithEachBitAreNotMistaken) {
    for (const char c : {'\0', '\x01', '\x7F', '\x80', '\x81', '\xFE', '\xFF'}) {
        for (unsigned neighbour = 0; neighbour < 0x100; ++neighbour) {
            Characters characters;
            characters.fill(static_cast<char>(neighbour));
            characters[0] = c;
            characters[7] = c;
            characters[9] = c;
            expectBothAlike(characters, c, '\x20');
        }
    }
}

TEST(Blocks, RandomCharactersAreTreatedOneByOne) {
    std::mt19937 random(5);
    // Few characters, so that most blocks have some that are looked for.
    const std::string kinds("/\\.\" \0\x1F\x7F\x80\xFFx", 11);
    const auto oneOf = [&] { return kinds[random() % kinds.size()]; };
    for (int round = 0; round < 3000; ++round) {
        Characters characters;
        for (char& one : characters) {
            one = random() % 4 == 0 ? static_cast<char>(random()) : oneOf();
        }
        const char c = oneOf();
        expectBothAlike(characters, c, oneOf());
    }
}

TEST(Blocks, BlocksCoverATextToItsEnd) {
    const std::string text("0123456789abcdefghijklmnopqrstuvwxyz");
    struct Row {
        std::size_t size;
        std::string begins;
    };
    const Row rows[] = {{16, "0"}, {17, "01"}, {31, "0f"}, {32, "0g"}, {33, "0gh"}, {36, "0gk"}};
    for (const Row& row : rows) {
        std::string begins;
        text::forEachBlock(text.data(), row.size, [&](const char* place) { begins += *place; });
        EXPECT_EQ(begins, row.begins) << row.size;
    }
}

}  // namespace
}  // namespace zelutil::test
