#include "support/twin_json.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>

namespace zelutil::test {
namespace {

using Kind = TwinJson::Kind;

struct Malformed {};

bool isDigitCharacter(char c) { return c >= '0' && c <= '9'; }

/// Reads by recursive descent; throws `Malformed`.
class Reader {
public:
    explicit Reader(std::string_view text) : text_(text.substr(0, text.find('\0'))) {
        if (text_.substr(0, 3) == "\xEF\xBB\xBF") {
            text_.remove_prefix(3);
        }
    }

    TwinJson document() {
        TwinJson value = readValue(0);
        skipWhiteSpace();
        demand(position_ == text_.size());
        return value;
    }

private:
    static void demand(bool condition) {
        if (!condition) {
            throw Malformed{};
        }
    }

    /// Zero at the end.
    char peek() const { return position_ < text_.size() ? text_[position_] : '\0'; }

    char next() {
        demand(position_ < text_.size());
        return text_[position_++];
    }

    bool skip(char c) {
        if (peek() != c) {
            return false;
        }
        ++position_;
        return true;
    }

    void skipWhiteSpace() {
        while (peek() == ' ' || peek() == '\n' || peek() == '\r' || peek() == '\t') {
            ++position_;
        }
    }

    void word(std::string_view expected) {
        demand(text_.substr(position_, expected.size()) == expected);
        position_ += expected.size();
    }

    TwinJson readValue(std::size_t levelsAround) {
        skipWhiteSpace();
        TwinJson value;
        switch (peek()) {
            case 'n':
                word("null");
                break;
            case 'f':
                word("false");
                value.kind = Kind::False;
                break;
            case 't':
                word("true");
                value.kind = Kind::True;
                break;
            case '"':
                value.kind = Kind::String;
                value.text = readString();
                break;
            case '[':
                readArray(value, levelsAround + 1);
                break;
            case '{':
                readObject(value, levelsAround + 1);
                break;
            default:
                readNumber(value);
        }
        return value;
    }

    void readArray(TwinJson& array, std::size_t level) {
        demand(level <= kTwinDeepest);
        array.kind = Kind::Array;
        demand(skip('['));
        skipWhiteSpace();
        if (skip(']')) {
            return;
        }
        do {
            array.values.push_back(readValue(level));
            skipWhiteSpace();
        } while (skip(','));
        demand(skip(']'));
    }

    void readObject(TwinJson& object, std::size_t level) {
        demand(level <= kTwinDeepest);
        object.kind = Kind::Object;
        demand(skip('{'));
        skipWhiteSpace();
        if (skip('}')) {
            return;
        }
        do {
            skipWhiteSpace();
            object.names.push_back(readString());
            skipWhiteSpace();
            demand(skip(':'));
            object.values.push_back(readValue(level));
            skipWhiteSpace();
        } while (skip(','));
        demand(skip('}'));
    }

    std::string readString() {
        demand(skip('"'));
        std::string text;
        for (char c = next(); c != '"'; c = next()) {
            demand(static_cast<unsigned char>(c) >= 0x20);
            if (c == '\\') {
                readEscape(text);
            } else {
                text += c;
            }
        }
        return text;
    }

    void readEscape(std::string& text) {
        constexpr std::string_view kEscapes = "\"\\/bfnrt";
        constexpr std::string_view kMeanings = "\"\\/\b\f\n\r\t";
        const char c = next();
        if (c == 'u') {
            readCodePoint(text);
            return;
        }
        const std::size_t index = kEscapes.find(c);
        demand(index != std::string_view::npos);
        text += kMeanings[index];
    }

    void readCodePoint(std::string& text) {
        std::uint32_t code = hexDigits();
        if (code >= 0xD800 && code <= 0xDBFF) {
            word("\\u");
            const std::uint32_t low = hexDigits();
            demand(low >= 0xDC00 && low <= 0xDFFF);
            code = 0x10000 + ((code - 0xD800) << 10) + (low - 0xDC00);
        }
        const auto add = [&](std::uint32_t byte) { text += static_cast<char>(byte); };
        if (code < 0x80) {
            add(code);
        } else if (code < 0x800) {
            add(0xC0 | (code >> 6));
            add(0x80 | (code & 0x3F));
        } else if (code < 0x10000) {
            add(0xE0 | (code >> 12));
            add(0x80 | ((code >> 6) & 0x3F));
            add(0x80 | (code & 0x3F));
        } else {
            add(0xF0 | (code >> 18));
            add(0x80 | ((code >> 12) & 0x3F));
            add(0x80 | ((code >> 6) & 0x3F));
            add(0x80 | (code & 0x3F));
        }
    }

    std::uint32_t hexDigits() {
        constexpr std::string_view kHexDigits = "0123456789abcdef";
        std::uint32_t code = 0;
        for (int i = 0; i < 4; ++i) {
            const char c = next();
            const std::size_t digit = kHexDigits.find(c >= 'A' && c <= 'F' ? static_cast<char>(c - 'A' + 'a') : c);
            demand(digit != std::string_view::npos);
            code = code * 16 + static_cast<std::uint32_t>(digit);
        }
        return code;
    }

    std::string digits() {
        std::string text;
        while (isDigitCharacter(peek())) {
            text += next();
        }
        demand(!text.empty());
        return text;
    }

    void readNumber(TwinJson& number) {
        const bool negative = skip('-');
        number.kind = Kind::Integer;
        number.text = skip('0') ? "0" : digits();
        if (skip('.')) {
            number.kind = Kind::Decimal;
            std::string decimals = digits();
            while (decimals.size() > 1 && decimals.back() == '0') {
                decimals.pop_back();
            }
            number.text += "." + decimals;
        }
        // An integer has one zero only.
        if (negative && number.text != "0") {
            number.text.insert(0, "-");
        }
    }

    std::string_view text_;
    std::size_t position_ = 0;
};

std::string quoted(const std::string& text) {
    constexpr std::string_view kSpecial = "\"\\\b\f\n\r\t";
    constexpr std::string_view kLetters = "\"\\bfnrt";
    std::string result = "\"";
    for (const char c : text) {
        const std::size_t index = kSpecial.find(c);
        if (index != std::string_view::npos) {
            result += '\\';
            result += kLetters[index];
        } else if (static_cast<unsigned char>(c) < 0x20) {
            char escape[8];
            std::snprintf(escape, sizeof escape, "\\u%04X", static_cast<unsigned>(c));
            result += escape;
        } else {
            result += c;
        }
    }
    return result + "\"";
}

std::string scalarText(const TwinJson& value) {
    switch (value.kind) {
        case Kind::False:
            return "false";
        case Kind::True:
            return "true";
        case Kind::String:
            return quoted(value.text);
        case Kind::Integer:
        case Kind::Decimal:
            return value.text;
        default:
            return "null";
    }
}

void appendLineBreak(std::string& text, std::size_t level) { text += "\n" + std::string(4 * level, ' '); }

void appendValue(std::string& text, const TwinJson& value, bool pretty, std::size_t level) {
    const bool isObject = value.is(Kind::Object);
    if (!isObject && !value.is(Kind::Array)) {
        text += scalarText(value);
        return;
    }
    text += isObject ? '{' : '[';
    for (std::size_t i = 0; i < value.values.size(); ++i) {
        text += i == 0 ? "" : ",";
        if (pretty) {
            appendLineBreak(text, level + 1);
        }
        if (isObject) {
            text += quoted(value.names[i]) + (pretty ? ": " : ":");
        }
        appendValue(text, value.values[i], pretty, level + 1);
    }
    if (pretty && !value.values.empty()) {
        appendLineBreak(text, level);
    }
    text += isObject ? '}' : ']';
}

std::string textOf(const TwinJson& value, bool pretty) {
    std::string text;
    appendValue(text, value, pretty, 0);
    return text;
}

std::size_t levelsOf(const TwinJson& value) {
    if (!value.is(Kind::Object) && !value.is(Kind::Array)) {
        return 0;
    }
    std::size_t deepest = 0;
    for (const TwinJson& inner : value.values) {
        deepest = std::max(deepest, levelsOf(inner));
    }
    return deepest + 1;
}

}  // namespace

std::optional<TwinJson> readTwinJson(std::string_view text) {
    try {
        return Reader(text).document();
    } catch (const Malformed&) {
        return std::nullopt;
    }
}

bool hasPlainNumbersOnly(std::string_view text) {
    constexpr std::size_t kLongest = 12;
    constexpr std::size_t kMostDecimals = 3;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (!isDigitCharacter(text[i])) {
            continue;
        }
        const std::size_t end = std::min(text.find_first_not_of("0123456789.", i), text.size());
        const std::size_t point = std::min(text.find('.', i), end);
        const bool hasExponent = end < text.size() && (text[end] == 'e' || text[end] == 'E');
        if (hasExponent || end - i > kLongest || end - point > kMostDecimals + 1) {
            return false;
        }
        i = end;
    }
    return true;
}

const TwinJson* memberOf(const TwinJson& object, std::string_view name) {
    const auto found = std::find(object.names.begin(), object.names.end(), name);
    return found == object.names.end() ? nullptr
                                       : &object.values[static_cast<std::size_t>(found - object.names.begin())];
}

TwinJson* memberOf(TwinJson& object, std::string_view name) {
    return const_cast<TwinJson*>(memberOf(static_cast<const TwinJson&>(object), name));
}

std::string compactText(const TwinJson& value) { return textOf(value, false); }

std::optional<std::string> prettyText(const TwinJson& value) {
    if (levelsOf(value) > kTwinDeepest) {
        return std::nullopt;
    }
    return textOf(value, true);
}

}  // namespace zelutil::test
