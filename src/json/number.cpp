#include "json/number.h"

#include <rapidjson/reader.h>

#include <cmath>
#include <cstdint>
#include <memory>
#include <optional>
#include <system_error>

#include "text/from_chars.h"

namespace zelutil::json {
namespace {

/// The iterative parser accepts and builds the same as the recursive one and needs no stack.
constexpr unsigned kNumberFlags = rapidjson::kParseInsituFlag | rapidjson::kParseIterativeFlag;
constexpr unsigned kExactNumberFlags = kNumberFlags | rapidjson::kParseNumbersAsStringsFlag;

template <typename Number>
std::optional<Number> numberFrom(std::string_view digits) {
    Number number = 0;
    const auto result = text::fromChars(digits.data(), digits.data() + digits.size(), number);
    return result.ec == std::errc() ? std::optional<Number>(number) : std::nullopt;
}

/// Returns false for a number that is too large.
bool setExactNumber(std::string_view digits, rapidjson::Value& value) {
    if (digits.find_first_of(".eE") == std::string_view::npos) {
        if (const auto integer = numberFrom<std::int64_t>(digits)) {
            value.SetInt64(*integer);
            return true;
        }
        if (const auto integer = numberFrom<std::uint64_t>(digits)) {
            value.SetUint64(*integer);
            return true;
        }
    }
    // Out of range are also numbers next to zero.
    const std::size_t exponent = digits.find_first_of("eE");
    const bool isSmall = exponent == std::string_view::npos ? digits.find('.') != std::string_view::npos
                                                            : digits.substr(exponent + 1, 1) == "-";
    const auto number = numberFrom<double>(digits);
    value.SetDouble(number.value_or(0.0));
    return number || isSmall;
}

/// Takes the number that the parser meets, and refuses one that is not finite.
class NumberTaker : public rapidjson::BaseReaderHandler<rapidjson::UTF8<>, NumberTaker> {
public:
    explicit NumberTaker(rapidjson::Value& value) : value_(value) {}

    // The parser calls them by these names.
    // NOLINTBEGIN(readability-identifier-naming)
    bool Default() { return false; }
    bool Int(int i) {
        return set([&] { value_.SetInt(i); });
    }
    bool Uint(unsigned i) {
        return set([&] { value_.SetUint(i); });
    }
    bool Int64(std::int64_t i) {
        return set([&] { value_.SetInt64(i); });
    }
    bool Uint64(std::uint64_t i) {
        return set([&] { value_.SetUint64(i); });
    }
    bool Double(double d) {
        return std::isfinite(d) && set([&] { value_.SetDouble(d); });
    }
    /// Comes for every number where they are read exactly, which the parser itself does not always do.
    bool RawNumber(const char* digits, rapidjson::SizeType length, bool /*copy*/) {
        return setExactNumber(std::string_view(digits, length), value_);
    }
    // NOLINTEND(readability-identifier-naming)

private:
    template <typename Set>
    static bool set(Set setValue) {
        setValue();
        return true;
    }

    rapidjson::Value& value_;
};

}  // namespace

bool readNumber(std::string_view digits, Numbers numbers, rapidjson::Value& value) {
    const std::unique_ptr<char[]> text = readyForRapidJson(digits);
    rapidjson::InsituStringStream stream(text.get());
    NumberTaker taker(value);
    rapidjson::Reader reader;
    const bool isExact = numbers == Numbers::Exact;
    const auto result =
        isExact ? reader.Parse<kExactNumberFlags>(stream, taker) : reader.Parse<kNumberFlags>(stream, taker);
    return !result.IsError();
}

bool isNumberInRange(std::string_view digits, Numbers numbers) {
    rapidjson::Value value;
    return readNumber(digits, numbers, value);
}

}  // namespace zelutil::json
