#ifndef ZELUTIL_JSON_DOCUMENT_H
#define ZELUTIL_JSON_DOCUMENT_H

#include <cstdint>
#include <memory>
#include <string_view>

#include "json/tape.h"
#include "json/view.h"

/// The one place that knows how JSON text is read and written, and by which parser. Everything that comes from a file
/// is met here without a crash, an assertion or a deep recursion, whatever it holds.
namespace zelutil::json {

/// A text with more bytes is unreadable.
inline constexpr std::uint64_t kMaximumTextSize = std::uint64_t{64} << 20;

/// A text with more arrays and objects inside each other is malformed.
inline constexpr unsigned kMaximumDepth = 1024;

/// At the beginning of a text it is skipped.
inline constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

/// Says that a text stays, unchanged, as long as the document that is made of it.
struct TextStays {};

/// A JSON text, parsed. The text itself may go away afterwards unless `TextStays` says otherwise.
///
/// Malformed is what RapidJSON refuses with its default flags, and also a text that nests deeper than `kMaximumDepth`,
/// is longer than `kMaximumTextSize` or holds a number that is not finite. A leading byte-order mark is skipped.
class Document {
public:
    explicit Document(std::string_view text, Numbers numbers = Numbers::Fast);
    /// Does the same without a copy of the text.
    Document(TextStays tag, std::string_view text, Numbers numbers = Numbers::Fast);
    Document(const Document&) = delete;
    Document& operator=(const Document&) = delete;

    /// False for a malformed text.
    bool valid() const { return valid_; }

    /// The whole value; absent for a malformed text.
    View root() const { return valid_ ? View(tape_, 0) : View(); }

private:
    /// The tape points into it, or into the text that stays.
    std::unique_ptr<char[]> copy_;
    Tape tape_;
    bool valid_ = false;
};

}  // namespace zelutil::json

#endif
