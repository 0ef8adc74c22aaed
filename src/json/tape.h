#ifndef ZELUTIL_JSON_TAPE_H
#define ZELUTIL_JSON_TAPE_H

// The values of a JSON text, side by side in the order of the text. It has this shape for bench/start_bench.cpp (10000
// settings) and bench/action_load_bench.cpp (10000 actions): a value takes 8 bytes that are written once and that a
// walk over the document meets in order, and strings stay where they stand in the text.

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace zelutil::json {

/// Says how numbers that are no integers are read and written.
enum class Numbers {
    Fast,   ///< Up to a few units in the last place off.
    Exact,  ///< So that reading and writing them again and again changes none.
};

/// One value, or the key of a member, which stands right before its value.
class Node {
public:
    enum class Kind : std::uint32_t { Null, False, True, Number, Text, EscapedText, Array, Object, Key, EscapedKey };

    Node(Kind kind, std::uint32_t offset, std::uint32_t newExtent)
        : extent(newExtent), kindAndOffset_(static_cast<std::uint32_t>(kind) << kOffsetBits | offset) {}

    Kind kind() const { return static_cast<Kind>(kindAndOffset_ >> kOffsetBits); }
    bool isContainer() const { return kind() == Kind::Array || kind() == Kind::Object; }
    bool isKey() const { return kind() == Kind::Key || kind() == Kind::EscapedKey; }

    /// Returns where it begins in the text; a string begins with its quotation mark.
    std::uint32_t offset() const { return kindAndOffset_ & ((std::uint32_t{1} << kOffsetBits) - 1); }

    /// The length of a number and of what stands between the quotation marks of a string, the place of an escaped
    /// string among these, and for a container the place of the node behind all that it holds.
    std::uint32_t extent;

private:
    /// They tell the bytes of a text of `kMaximumTextSize` and a byte-order mark apart.
    static constexpr unsigned kOffsetBits = 27;

    std::uint32_t kindAndOffset_;
};

/// All values of a text, the whole of it first and each container before what it holds.
class Tape {
public:
    /// Refers to the text, which stays where it is as long as the tape.
    explicit Tape(const char* text, Numbers numbers) : text_(text), numbers_(numbers) {}

    Numbers numbers() const { return numbers_; }
    const Node& operator[](std::uint32_t place) const { return nodes_[place]; }

    /// Returns the place behind a value and all that it holds.
    std::uint32_t behind(std::uint32_t place) const {
        return nodes_[place].isContainer() ? nodes_[place].extent : place + 1;
    }

    /// Returns the bytes of a string or key.
    std::string_view text(std::uint32_t place) const {
        const Node node = nodes_[place];
        if (node.kind() == Node::Kind::Text || node.kind() == Node::Kind::Key) {
            return {text_ + node.offset() + 1, node.extent};
        }
        const Piece piece = pieces_[node.extent];
        return std::string_view(unescaped_).substr(piece.begin, piece.size);
    }

    /// Returns a number as it is written.
    std::string_view digits(std::uint32_t place) const {
        return {text_ + nodes_[place].offset(), nodes_[place].extent};
    }

private:
    friend class TapeParser;

    /// A string without its escapes.
    struct Piece {
        std::size_t begin;
        std::size_t size;
    };

    const char* text_;
    Numbers numbers_;
    std::vector<Node> nodes_;
    std::vector<Piece> pieces_;
    std::string unescaped_;
};

}  // namespace zelutil::json

#endif
