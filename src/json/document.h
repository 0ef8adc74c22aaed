#ifndef ZELUTIL_JSON_DOCUMENT_H
#define ZELUTIL_JSON_DOCUMENT_H

#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

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

/// Holds what a parse can report besides the document.
struct ParseNotes {
    /// Holds where the parser stood at each value and each key of an object, in the order of the text: an object stands
    /// before its keys, and a key before its value. The offsets count bytes from the beginning of the text.
    std::vector<std::uint32_t> offsets;
    /// Says for people why the text is malformed; null for one that is not.
    const char* failure = nullptr;
    std::size_t failureOffset = 0;
    bool stoppedAtControlCharacter = false;
};

/// A JSON text, parsed. The text itself may go away afterwards.
///
/// Malformed is what RapidJSON refuses with its default flags, and also a text that nests deeper than `kMaximumDepth`,
/// is longer than `kMaximumTextSize` or holds a number that is not finite. A leading byte-order mark is skipped.
class Document {
public:
    explicit Document(std::string_view text, Numbers numbers = Numbers::Fast);
    /// Parses in the same way and fills the notes, which are empty before.
    Document(std::string_view text, ParseNotes& notes);
    Document(const Document&) = delete;
    Document& operator=(const Document&) = delete;

    /// False for a malformed text.
    bool valid() const { return valid_; }

    /// The whole value; absent for a malformed text.
    View root() const { return valid_ ? View(document_) : View(); }

private:
    template <typename Notes>
    bool parse(std::string_view text, Numbers numbers, Notes notes);

    /// The document's strings point into it.
    std::unique_ptr<char[]> buffer_;
    rapidjson::Document document_;
    bool valid_ = false;
};

}  // namespace zelutil::json

#endif
