#ifndef ZELUTIL_JSON_TAPE_PARSER_H
#define ZELUTIL_JSON_TAPE_PARSER_H

#include <cstdint>
#include <string_view>

#include "json/tape.h"

namespace zelutil::json {

/// Reads a text onto a tape in one pass. It accepts what RapidJSON accepts with its default flags, but for what
/// `Document` refuses besides, and a zero byte behind the value ends the text.
class TapeParser {
public:
    /// The text is the one to which the tape refers; reading begins at an offset in it.
    TapeParser(Tape& tape, std::string_view text, std::size_t begin)
        : tape_(tape), begin_(text.data()), end_(begin_ + text.size()), c_(begin_ + begin) {}

    /// Returns false for a malformed text, of which the tape then holds a part.
    bool parse();

private:
    using Kind = Node::Kind;

    /// Stands for the place of a container where there is none.
    static constexpr std::uint32_t kNone = ~std::uint32_t{0};

    char peek() const { return c_ == end_ ? '\0' : *c_; }
    bool skip(char c);
    void skipSpace();
    bool skipDigits();
    void add(Kind kind, const char* begin, std::size_t extent);

    bool readValue();
    bool readOn();
    bool readMember();
    bool readLiteral(std::string_view literal, Kind kind);
    bool readNumber();
    bool readString(Kind plain, Kind escaped);
    bool readEscaped(Kind kind, const char* begin, const char* stop);
    bool readEscape();
    bool readUnicodeEscape();
    bool readFourHexDigits(std::uint32_t& code);

    bool open(Kind kind);
    void close();
    void setClosing();

    Tape& tape_;
    const char* begin_;
    const char* end_;
    const char* c_;
    /// The innermost container that is open. While one is, its extent is the place of the one around it.
    std::uint32_t open_ = kNone;
    char closing_ = '\0';
    unsigned depth_ = 0;
};

}  // namespace zelutil::json

#endif
