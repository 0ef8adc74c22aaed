// The real normalisation against its literal twin, on random texts.
#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "file/path_text.h"
#include "support/literal_normalise.h"
#include "support/random_text.h"

namespace {

using zelutil::file::normalise;
using zelutil::file::PathFlags;
using zelutil::test::literalNormalise;
using zelutil::test::LiteralPath;
using zelutil::test::RandomText;

/// Half of the letters are separators and dots: the interesting texts are made of them.
constexpr std::string_view kAlphabet = R"(////////\\\\\\\\............""" abcde:C)";
constexpr std::string_view kRareCharacters = "?*|<>\n\r\t\x01\xe9";
constexpr std::size_t kLongestText = 20;

constexpr std::array<const char*, 8> kDirectories = {
    R"(C:\work)",       R"(C:\)",   R"(C:\my work\.b\a.)", R"(\\server\share)", "",
    R"(Z:/home//ann/)", R"(C:\a?)", R"(C:\a\..\.\b)"};

/// A beginning of some kind, and behind it a text in which now and then a rare character stands.
std::string pathText(RandomText& random) {
    constexpr std::array<const char*, 6> kBeginnings = {"", "", "", "c:/", R"(\\)", "//"};
    std::string text = random.text(kAlphabet, kLongestText);
    if (!text.empty() && random.below(20) == 0) {
        text[random.below(text.size())] = kRareCharacters[random.below(kRareCharacters.size())];
    }
    return kBeginnings[random.below(kBeginnings.size())] + text;
}

/// A text, where it begins to be new, and what is known of it.
struct Case {
    std::string text;
    std::size_t start;
    PathFlags flags;
    std::string directory;
};

/// Puts the case through both. Leaves the outcome in it, for something to be appended.
void expectSame(Case& tried) {
    LiteralPath literal{tried.text, tried.flags.hasSpace, tried.flags.absolute};
    literalNormalise(literal, tried.start, tried.directory);
    std::string text = tried.text;
    PathFlags flags = tried.flags;
    normalise(text, flags, tried.start, [&] { return tried.directory; });
    const bool same = text == literal.text && flags.hasSpace == literal.hasSpace && flags.absolute == literal.absolute;
    ASSERT_TRUE(same) << "text [" << tried.text << "] from " << tried.start << ", blank " << tried.flags.hasSpace
                      << ", absolute " << tried.flags.absolute << ", in [" << tried.directory << "]\nreal    [" << text
                      << "] blank " << flags.hasSpace << " absolute " << flags.absolute << "\nliteral [" << literal.text
                      << "] blank " << literal.hasSpace << " absolute " << literal.absolute;
    tried.text = text;
    tried.flags = flags;
}

/// Whole texts, each followed by a few appended ones.
void compareChains(unsigned seed, int chains) {
    RandomText random(seed);
    for (int chain = 0; chain < chains && !testing::Test::HasFatalFailure(); ++chain) {
        Case tried{pathText(random),
                   0,
                   {random.below(2) == 0, random.below(3) == 0},
                   kDirectories[random.below(kDirectories.size())]};
        expectSame(tried);
        for (std::size_t appends = random.below(4); appends > 0 && !testing::Test::HasFatalFailure(); --appends) {
            tried.start = tried.text.size();
            tried.text += "/" + pathText(random);
            expectSame(tried);
        }
    }
}

/// Texts that are new from some place on, whatever stands before it.
void compareSplits(unsigned seed, int splits) {
    RandomText random(seed);
    for (int split = 0; split < splits && !testing::Test::HasFatalFailure(); ++split) {
        Case tried{pathText(random),
                   0,
                   {random.below(2) == 0, random.below(3) == 0},
                   kDirectories[random.below(kDirectories.size())]};
        tried.start = random.below(tried.text.size() + 1);
        expectSame(tried);
    }
}

// Two and a half texts a chain: a million and a quarter in all, in parts that may run beside each other.
TEST(PathTextTwin, FirstChainsOfRandomTexts) { compareChains(1, 200'000); }
TEST(PathTextTwin, SecondChainsOfRandomTexts) { compareChains(2, 200'000); }
TEST(PathTextTwin, RandomTextsNewFromARandomPlace) { compareSplits(3, 250'000); }

/// Long texts of ordinary characters with a few others among them, so that each of these meets every place of a block.
TEST(PathTextTwin, RandomLongTextsWithFewSpecialCharacters) {
    constexpr std::string_view kSpecial = R"(/\.." *?<>|=)";
    RandomText random(5);
    for (int i = 0; i < 20'000 && !HasFatalFailure(); ++i) {
        std::string text = "c:/" + std::string(random.below(70), 'n');
        for (std::size_t changes = random.below(4); changes > 0; --changes) {
            text[random.below(text.size())] = kSpecial[random.below(kSpecial.size())];
        }
        Case tried{text, random.below(2) == 0 ? 0 : random.below(text.size() + 1), {false, false}, R"(C:\work)"};
        expectSame(tried);
    }
}

/// Every text up to a length over the characters that matter.
TEST(PathTextTwin, EveryShortText) {
    constexpr std::string_view kCharacters = R"(/\."a: )";
    constexpr std::size_t kLength = 6;
    std::size_t count = 1;
    for (std::size_t length = 1; length <= kLength; ++length) {
        count *= kCharacters.size();
        for (std::size_t number = 0; number < count; ++number) {
            std::string text;
            for (std::size_t rest = number; text.size() < length; rest /= kCharacters.size()) {
                text += kCharacters[rest % kCharacters.size()];
            }
            for (const bool absolute : {false, true}) {
                Case tried{text, 0, {false, absolute}, R"(C:\w)"};
                expectSame(tried);
                if (HasFatalFailure()) {
                    return;
                }
            }
        }
    }
}

}  // namespace
