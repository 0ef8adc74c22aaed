#ifndef ZELUTIL_JSON_LOCATED_DOCUMENT_H
#define ZELUTIL_JSON_LOCATED_DOCUMENT_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "json/document.h"
#include "json/parse_failure.h"
#include "json/view.h"

namespace zelutil::json {

/// Says where in a text something stands, as an editor shows it.
struct Position {
    std::size_t offset = 0;  ///< Bytes before it, a byte-order mark included.
    std::size_t line = 1;    ///< From 1 on. A line ends with LF or CR LF; a lone CR ends none.
    /// From 1 on, in code points: every byte of the line before it counts, but for the later bytes of a character in
    /// UTF-8 and for a byte-order mark.
    std::size_t column = 1;
};

/// A JSON text, parsed as a `Document` parses it, that knows where its values stand. The text itself must stay.
class LocatedDocument {
public:
    /// Says why a text is malformed, and where.
    struct Failure {
        Position position;
        const char* text = nullptr;  ///< A sentence for people.
    };

    explicit LocatedDocument(std::string_view text);

    bool valid() const { return document_.valid(); }
    View root() const { return document_.root(); }
    std::string_view text() const { return text_; }

    /// Returns nothing for a text that is not malformed.
    std::optional<Failure> failure() const;

    /// Returns where a value of the document begins; that of a string or a container is its first sign. Returns nothing
    /// for an absent value and for one of another document.
    std::optional<Position> positionOf(View value) const;

    /// Returns the `Position::offset` of that, which is found faster than the line and the column.
    std::optional<std::size_t> offsetOf(View value) const;

    /// Returns where the value ends: the position behind its last byte.
    std::optional<Position> endOf(View value) const;

    /// Returns where the key begins whose value this is; nothing for a value that is no member's.
    std::optional<Position> keyPositionOf(View value) const;

    /// Returns where the byte with that offset stands. An offset behind the text counts as its end.
    Position positionAt(std::size_t offset) const;

private:
    std::size_t laterBytesBetween(std::size_t begin, std::size_t end) const;
    std::size_t laterBytesBefore(std::size_t offset) const;
    bool isHere(View value) const { return value && value.tape() == document_.root().tape(); }

    std::string_view text_;
    Document document_;
    std::optional<ParseFailure> failure_;
    // The tables are made when somebody asks: many documents are only searched.
    mutable std::vector<std::size_t> lineBegins_;
    /// Holds for each block of the text how many bytes before it are later ones of a character: a file may be one long
    /// line, on which each column would be counted from its beginning.
    mutable std::vector<std::size_t> laterBytes_;
};

}  // namespace zelutil::json

#endif
