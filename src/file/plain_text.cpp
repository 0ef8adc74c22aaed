#include "file/plain_text.h"

#include <array>
#include <cstdint>
#include <cstring>

#include "file/path_text.h"

namespace zelutil::file {
namespace {

/// Characters that are compared and exchanged together; a comparison yields 0xFF for true.
using Block = unsigned char __attribute__((vector_size(16)));

constexpr std::size_t kBlock = sizeof(Block);

Block blockAt(const char* text) {
    Block block;
    std::memcpy(&block, text, kBlock);
    return block;
}

Block equal(Block block, char c) { return reinterpret_cast<Block>(block == static_cast<unsigned char>(c)); }

bool isSeparator(char c) { return c == '/' || c == '\\'; }

/// Marks quotes and the characters that no path may have, and some others, to do with fewer comparisons: all control
/// characters, and "=" between "<" and ">". A text with one of those takes the way by single characters.
Block unusualOf(Block block) {
    const Block quoteOrAsterisk = equal(block & static_cast<unsigned char>(~('"' ^ '*')), '"');
    const Block lessToQuestionMark = equal(block & static_cast<unsigned char>(~('<' ^ '?')), '<');
    const auto control = reinterpret_cast<Block>(block < static_cast<unsigned char>(' '));
    return quoteOrAsterisk | lessToQuestionMark | control | equal(block, '|');
}

/// Marks separators and dots. Bit 0 is all in which "/" and "." differ.
Block separatorsAndDotsOf(Block block) {
    return equal(block | static_cast<unsigned char>('/' ^ '.'), '/') | equal(block, '\\');
}

bool any(Block marks) {
    std::uint64_t halves[2];
    static_assert(sizeof halves == kBlock);
    std::memcpy(halves, &marks, kBlock);
    return (halves[0] | halves[1]) != 0;
}

/// What has been found in some blocks.
struct Marks {
    Block unusual{};
    Block slashes{};
    Block blanks{};

    /// Looks at the characters from `text` on and at what follows each of them.
    void look(const char* text) {
        const Block block = blockAt(text);
        const Block slash = equal(block, '/');
        const Block separator = slash | equal(block, '\\');
        unusual |= unusualOf(block) | (separator & separatorsAndDotsOf(blockAt(text + 1)));
        slashes |= slash;
        blanks |= equal(block, ' ');
    }

    PlainText result() const { return {!any(unusual), any(slashes), any(blanks)}; }
};

/// A text that is shorter than a block, with what may be read behind it.
struct ShortText {
    ShortText(const char* text, std::size_t size) { std::memcpy(characters.data(), text, size); }
    std::array<char, kBlock + 1> characters{};
};

void convertBlock(char* text) {
    const Block block = blockAt(text);
    const Block slashes = equal(block, '/');
    // A slash and a backslash differ in these bits.
    const Block converted = block ^ (slashes & static_cast<unsigned char>('/' ^ kSeparator));
    std::memcpy(text, &converted, kBlock);
}

}  // namespace

PlainText lookAtText(const std::string& text, std::size_t start) {
    const char* const begin = text.data() + start;
    const std::size_t size = text.size() - start;
    const bool follows = start > 0 && isSeparator(begin[-1]);
    if (follows && (isSeparator(*begin) || *begin == '.')) {
        return {};
    }
    Marks marks;
    if (size < kBlock) {
        marks.look(ShortText(begin, size).characters.data());
        return marks.result();
    }
    // The end of the string is the one character that is read behind the last block.
    for (std::size_t at = 0; at + kBlock < size; at += kBlock) {
        marks.look(begin + at);
    }
    marks.look(begin + size - kBlock);
    return marks.result();
}

void convertSeparators(std::string& text, std::size_t start) {
    const std::size_t size = text.size() - start;
    char* const begin = text.data() + start;
    if (size < kBlock) {
        ShortText copy(begin, size);
        convertBlock(copy.characters.data());
        std::memcpy(begin, copy.characters.data(), size);
        return;
    }
    for (std::size_t at = 0; at + kBlock < size; at += kBlock) {
        convertBlock(begin + at);
    }
    convertBlock(begin + size - kBlock);
}

}  // namespace zelutil::file
