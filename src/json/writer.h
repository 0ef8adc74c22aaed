#ifndef ZELUTIL_JSON_WRITER_H
#define ZELUTIL_JSON_WRITER_H

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "json/view.h"

namespace zelutil::json {

enum class Layout {
    Compact,  ///< Without any white space.
    Pretty,   ///< A line for each element and member, with 4 blanks a level.
};

/// Writes one JSON text from beginning to end. Each member of an object is its key and then its value; what is begun is
/// ended.
///
/// From the first value on that cannot be written whole, as one that nests too deep, the rest is ignored.
template <Layout kLayout>
class Writer {
public:
    /// `depth` says how many arrays and objects will stand around the text, which nests the less itself.
    explicit Writer(Numbers numbers = Numbers::Fast, unsigned depth = 0);
    ~Writer();
    Writer(const Writer&) = delete;
    Writer& operator=(const Writer&) = delete;

    void beginObject();
    void endObject();
    void beginArray();
    void endArray();
    void key(std::string_view name);
    void text(std::string_view value);
    void integer(std::int32_t value);
    void truth(bool value);
    /// Writes the value with all it holds. An absent one cannot be written.
    void copy(View value);
    /// Writes a value without any character, to be filled in by whoever has the text. Returns its place there.
    std::size_t gap();

    /// Returns how many arrays and objects are begun and not ended.
    unsigned depth() const;

    /// Returns the text; nothing when a part of it is missing, and when it could not be read back: it nests deeper than
    /// `kMaximumDepth` or is longer than `kMaximumTextSize`.
    std::optional<std::string> take();

private:
    struct Target;

    std::unique_ptr<Target> target_;
    bool whole_ = true;
};

extern template class Writer<Layout::Compact>;
extern template class Writer<Layout::Pretty>;

using CompactWriter = Writer<Layout::Compact>;
using PrettyWriter = Writer<Layout::Pretty>;

/// The text of a value without any white space; nothing where `Writer::take` returns nothing.
std::optional<std::string> compactText(View value, Numbers numbers = Numbers::Fast);

/// The text of a value as `PrettyWriter` writes it inside `depth` arrays and objects; nothing where it writes nothing.
std::optional<std::string> prettyText(View value, unsigned depth);

/// Appends a string as a writer writes it, in its quotes.
void appendString(std::string& text, std::string_view value);

/// Blanks that `PrettyWriter` puts before a line for each array and object around it.
inline constexpr unsigned kIndent = 4;

}  // namespace zelutil::json

#endif
