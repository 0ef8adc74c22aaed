#ifndef ZELUTIL_JSON_JSON_H
#define ZELUTIL_JSON_JSON_H

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

// Vector instructions nearly halve the time of a parse. The parser then reads whole aligned blocks of 16 bytes, past
// the end of the text too; Text pads its copy for that.
#if defined(__SSE2__) || defined(_M_X64)
#define RAPIDJSON_SSE2
#endif
#include <rapidjson/document.h>

/// The one place that knows how JSON text is read and written. Everything that comes from a file is met here without a
/// crash, an assertion or a deep recursion, whatever it holds.
namespace zelutil::json {

using Document = rapidjson::Document;
using Value = rapidjson::Value;

/// A text with more bytes is unreadable.
inline constexpr std::uint64_t kMaximumTextSize = std::uint64_t{64} << 20;

/// A text with more arrays and objects inside each other is malformed.
inline constexpr unsigned kMaximumDepth = 1024;

/// A JSON text parsed into a document of its own. The document's strings may point into this object.
///
/// Malformed is what RapidJSON refuses with its default flags, and also a text that nests deeper than `kMaximumDepth`,
/// is longer than `kMaximumTextSize` or holds a number that is not finite. A leading byte-order mark is skipped.
class Text {
public:
    explicit Text(std::string_view text);
    Text(const Text&) = delete;
    Text& operator=(const Text&) = delete;

    /// False for a malformed text; the root is then null.
    bool valid() const { return valid_; }

    Value& root() { return document_; }
    const Value& root() const { return document_; }
    Document::AllocatorType& allocator() { return document_.GetAllocator(); }

private:
    std::unique_ptr<char[]> buffer_;
    Document document_;
    bool valid_ = false;
};

// Typed readers. Each answers "absent" when `object` is no object, has no member `name`, or has one of another type; of
// members with the same name the first counts.

/// The member of any type, or null.
const Value* member(const Value& object, const char* name);
Value* member(Value& object, const char* name);

/// The member when it is an array, or null.
const Value* arrayMember(const Value& object, const char* name);
Value* arrayMember(Value& object, const char* name);

/// The member's text, valid as long as the value; nothing when it is no string.
std::optional<std::string_view> stringMember(const Value& object, const char* name);

/// The member when it is an integer that fits 32 bits with a sign. 3.0 is no integer.
std::optional<std::int32_t> integerMember(const Value& object, const char* name);

/// The value's text, zeros inside included; nothing when it is no string.
std::optional<std::string_view> string(const Value& value);

// Writers. Nothing when the value cannot be written whole, as one that holds a number that is not finite, and when the
// text could not be read back: it would nest too deep or be too long.

/// Without any white space.
std::optional<std::string> compactText(const Value& value);

/// With 4 blanks a level.
std::optional<std::string> prettyText(const Value& value);

}  // namespace zelutil::json

#endif
