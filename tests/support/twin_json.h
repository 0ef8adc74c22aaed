#ifndef ZELUTIL_TESTS_SUPPORT_TWIN_JSON_H
#define ZELUTIL_TESTS_SUPPORT_TWIN_JSON_H

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// JSON read and written the slow and plain way, to check the library's own.
namespace zelutil::test {

/// Members keep their order, and a name may stand twice.
struct TwinJson {
    enum class Kind { Null, False, True, Integer, Decimal, String, Array, Object };

    Kind kind = Kind::Null;
    /// The characters of a string; of a number, its digits as they are printed.
    std::string text;
    /// The names of an object's members, one for each of `values`.
    std::vector<std::string> names;
    /// The elements of an array or the values of an object's members.
    std::vector<TwinJson> values;

    bool is(Kind other) const { return kind == other; }
};

/// Levels of arrays and objects that a text may have inside each other.
inline constexpr std::size_t kTwinDeepest = 1024;

/// The value, or nothing when the text is malformed. A text ends at its first zero byte; a byte-order mark before it is
/// skipped. The text must have plain numbers only.
std::optional<TwinJson> readTwinJson(std::string_view text);

/// Whether every number in the text, inside strings too, is short, has no exponent and at most three decimals.
bool hasPlainNumbersOnly(std::string_view text);

/// The value of the first member of that name, or null; null also when `object` is no object.
const TwinJson* memberOf(const TwinJson& object, std::string_view name);
TwinJson* memberOf(TwinJson& object, std::string_view name);

/// Without white space.
std::string compactText(const TwinJson& value);

/// With a line for each value and four blanks for each level, or nothing when it is too deep to be read again.
std::optional<std::string> prettyText(const TwinJson& value);

}  // namespace zelutil::test

#endif
