#include "file/plain_text.h"

#include <algorithm>
#include <array>

#include "file/path_text.h"
#include "text/blocks.h"

namespace zelutil::file {
namespace {

using text::any;
using text::Block;
using text::blockAt;
using text::equal;
using text::kBlock;

bool isSeparator(char c) { return c == '/' || c == '\\'; }

/// Marks quotes and the characters that no path may have, and some others, to do with fewer comparisons: all control
/// characters, and "=" between "<" and ">". A text with one of those takes the way by single characters.
Block unusualOf(Block block) {
    const Block quoteOrAsterisk = equal(block & static_cast<unsigned char>(~('"' ^ '*')), '"');
    const Block lessToQuestionMark = equal(block & static_cast<unsigned char>(~('<' ^ '?')), '<');
    const Block control = equal(block & static_cast<unsigned char>(~(' ' - 1)), '\0');
    return quoteOrAsterisk | lessToQuestionMark | control | equal(block, '|');
}

/// Marks separators and dots. Bit 0 is all in which "/" and "." differ.
Block separatorsAndDotsOf(Block block) {
    return equal(block | static_cast<unsigned char>('/' ^ '.'), '/') | equal(block, '\\');
}

/// Holds what has been found in some blocks.
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

/// A text that is shorter than a block, with ordinary characters behind it.
struct ShortText {
    ShortText(const char* text, std::size_t size) {
        characters.fill('x');
        std::copy_n(text, size, characters.begin());
    }
    std::array<char, kBlock + 1> characters;
};

void convertBlock(char* text) { text::putBlock(text, text::replaced(blockAt(text), '/', kSeparator)); }

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
    text::forEachBlock(begin, size, [&marks](const char* block) { marks.look(block); });
    return marks.result();
}

void convertSeparators(std::string& text, std::size_t start) {
    const std::size_t size = text.size() - start;
    char* const begin = text.data() + start;
    if (size < kBlock) {
        ShortText copy(begin, size);
        convertBlock(copy.characters.data());
        std::copy_n(copy.characters.begin(), size, begin);
        return;
    }
    text::forEachBlock(begin, size, convertBlock);
}

}  // namespace zelutil::file
