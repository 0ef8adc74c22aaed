#include "json/writer.h"

#include <rapidjson/prettywriter.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>
#include "json/rapid_text.h"

#include <algorithm>
#include <charconv>
#include <functional>
#include <type_traits>

#include "json/document.h"
#include "json/number.h"
#include "text/from_chars.h"

namespace zelutil::json {
namespace {

/// RapidJSON writes to its own StringBuffer with vector instructions, and then leaves 0x1A to 0x1F unescaped; to a
/// buffer of another type it writes correctly.
struct BufferAllocator : rapidjson::CrtAllocator {};
using Buffer = rapidjson::GenericStringBuffer<rapidjson::UTF8<>, BufferAllocator>;

constexpr std::size_t kMostDigits = 32;

/// Returns the digits of a number, which is finite as all that are read, where those that the packaged RapidJSON writes
/// are another number's; empty otherwise.
std::string exactDigits(double value) {
    char digits[kMostDigits];
    const char* const end = rapidjson::internal::dtoa(value, digits);
    double readBack = 0;
    text::fromChars(digits, end, readBack);
    if (std::equal_to<>()(readBack, value)) {
        return {};
    }
    return {digits, std::to_chars(digits, digits + kMostDigits, value).ptr};
}

/// A writer that refuses what the parser would not take back.
template <typename Base>
class BoundedWriter : public Base {
public:
    BoundedWriter(Buffer& buffer, Numbers numbers, unsigned depth)
        : Base(buffer), exact_(numbers == Numbers::Exact), depth_(depth) {}

    unsigned depth() const { return depth_; }

    // A value that is copied calls them by these names.
    // NOLINTBEGIN(readability-identifier-naming)
    bool Double(double value) {
        const std::string digits = exact_ ? exactDigits(value) : std::string();
        return digits.empty() ? Base::Double(value)
                              : Base::RawValue(digits.data(), digits.size(), rapidjson::kNumberType);
    }
    bool StartObject() { return ++depth_ <= kMaximumDepth && Base::StartObject(); }
    bool EndObject(rapidjson::SizeType count = 0) {
        --depth_;
        return Base::EndObject(count);
    }
    bool StartArray() { return ++depth_ <= kMaximumDepth && Base::StartArray(); }
    bool EndArray(rapidjson::SizeType count = 0) {
        --depth_;
        return Base::EndArray(count);
    }
    // NOLINTEND(readability-identifier-naming)

private:
    bool exact_;
    unsigned depth_;
};

constexpr char kEmpty[] = "";

/// The characters of a text, which RapidJSON wants not to be null.
const char* charactersOf(std::string_view text) { return text.empty() ? kEmpty : text.data(); }

rapidjson::SizeType sizeOf(std::string_view text) { return static_cast<rapidjson::SizeType>(text.size()); }

bool isTooLong(std::string_view text) { return text.size() > kMaximumTextSize; }

/// Writes what stands on a tape.
template <typename Target>
class TapeCopy {
public:
    TapeCopy(const Tape& tape, Target& target) : tape_(tape), target_(target) {}

    /// Recurses as deep as a document nests. Returns false from the first value on that cannot be written.
    bool value(std::uint32_t place) {
        switch (tape_[place].kind()) {
            case Node::Kind::Null:
                return target_.Null();
            case Node::Kind::False:
            case Node::Kind::True:
                return target_.Bool(tape_[place].kind() == Node::Kind::True);
            case Node::Kind::Number:
                return number(tape_.digits(place));
            case Node::Kind::Array:
                return target_.StartArray() && elements(place + 1, tape_.behind(place)) && target_.EndArray();
            case Node::Kind::Object:
                return target_.StartObject() && members(place + 1, tape_.behind(place)) && target_.EndObject();
            default:
                return target_.String(charactersOf(tape_.text(place)), sizeOf(tape_.text(place)));
        }
    }

private:
    bool number(std::string_view digits) {
        rapidjson::Value value;
        return readNumber(digits, tape_.numbers(), value) && value.Accept(target_);
    }

    bool elements(std::uint32_t place, std::uint32_t end) {
        for (; place != end; place = tape_.behind(place)) {
            if (!value(place)) {
                return false;
            }
        }
        return true;
    }

    bool members(std::uint32_t key, std::uint32_t end) {
        for (; key != end; key = tape_.behind(key + 1)) {
            const std::string_view name = tape_.text(key);
            if (!target_.Key(charactersOf(name), sizeOf(name)) || !value(key + 1)) {
                return false;
            }
        }
        return true;
    }

    const Tape& tape_;
    Target& target_;
};

constexpr bool isEscaped(char c) { return static_cast<unsigned char>(c) < 0x20 || c == '"' || c == '\\'; }

/// Appends the character in its short form or as a number.
void appendEscaped(std::string& text, char c) {
    constexpr std::string_view kWithShortForm = "\"\\\b\f\n\r\t";
    constexpr std::string_view kShortForms = "\"\\bfnrt";
    constexpr std::string_view kHexDigits = "0123456789ABCDEF";
    text += '\\';
    const std::size_t place = kWithShortForm.find(c);
    if (place != std::string_view::npos) {
        text += kShortForms[place];
        return;
    }
    const auto code = static_cast<unsigned char>(c);
    text += "u00";
    text += kHexDigits[code / kHexDigits.size()];
    text += kHexDigits[code % kHexDigits.size()];
}

/// Returns the text with blanks for `depth` levels more at the beginning of each line but the first. A line break is
/// never part of a string, where it is escaped.
std::string indented(std::string_view text, unsigned depth) {
    std::string result;
    for (std::size_t begin = 0; begin < text.size();) {
        const std::size_t end = std::min(text.find('\n', begin), text.size() - 1) + 1;
        result.append(begin == 0 ? 0 : std::size_t{depth} * kIndent, ' ');
        result.append(text, begin, end - begin);
        begin = end;
    }
    return result;
}

}  // namespace

template <Layout kLayout>
struct Writer<kLayout>::Target {
    using Base =
        std::conditional_t<kLayout == Layout::Pretty, rapidjson::PrettyWriter<Buffer>, rapidjson::Writer<Buffer>>;

    Target(Numbers numbers, unsigned depth) : writer(buffer, numbers, depth) {
        if constexpr (kLayout == Layout::Pretty) {
            writer.SetIndent(' ', kIndent);
        }
    }

    Buffer buffer;
    BoundedWriter<Base> writer;
};

template <Layout kLayout>
Writer<kLayout>::Writer(Numbers numbers, unsigned depth) : target_(std::make_unique<Target>(numbers, depth)) {}

template <Layout kLayout>
Writer<kLayout>::~Writer() = default;

template <Layout kLayout>
void Writer<kLayout>::beginObject() {
    whole_ = whole_ && target_->writer.StartObject();
}

template <Layout kLayout>
void Writer<kLayout>::endObject() {
    whole_ = whole_ && target_->writer.EndObject();
}

template <Layout kLayout>
void Writer<kLayout>::beginArray() {
    whole_ = whole_ && target_->writer.StartArray();
}

template <Layout kLayout>
void Writer<kLayout>::endArray() {
    whole_ = whole_ && target_->writer.EndArray();
}

template <Layout kLayout>
void Writer<kLayout>::key(std::string_view name) {
    whole_ = whole_ && !isTooLong(name) && target_->writer.Key(charactersOf(name), sizeOf(name));
}

template <Layout kLayout>
void Writer<kLayout>::text(std::string_view value) {
    whole_ = whole_ && !isTooLong(value) && target_->writer.String(charactersOf(value), sizeOf(value));
}

template <Layout kLayout>
void Writer<kLayout>::integer(std::int32_t value) {
    whole_ = whole_ && target_->writer.Int(value);
}

template <Layout kLayout>
void Writer<kLayout>::truth(bool value) {
    whole_ = whole_ && target_->writer.Bool(value);
}

template <Layout kLayout>
void Writer<kLayout>::copy(View value) {
    whole_ = whole_ && value && TapeCopy(*value.tape(), target_->writer).value(value.place());
}

template <Layout kLayout>
std::size_t Writer<kLayout>::gap() {
    whole_ = whole_ && target_->writer.RawValue(kEmpty, 0, rapidjson::kNullType);
    return target_->buffer.GetSize();
}

template <Layout kLayout>
unsigned Writer<kLayout>::depth() const {
    return target_->writer.depth();
}

template <Layout kLayout>
std::optional<std::string> Writer<kLayout>::take() {
    const Buffer& buffer = target_->buffer;
    if (!whole_ || !target_->writer.IsComplete() || buffer.GetSize() > kMaximumTextSize) {
        return std::nullopt;
    }
    return std::string(buffer.GetString(), buffer.GetSize());
}

template class Writer<Layout::Compact>;
template class Writer<Layout::Pretty>;

std::optional<std::string> compactText(View value, Numbers numbers) {
    CompactWriter writer(numbers);
    writer.copy(value);
    return writer.take();
}

std::optional<std::string> prettyText(View value, unsigned depth) {
    PrettyWriter writer(Numbers::Fast, depth);
    writer.copy(value);
    const auto text = writer.take();
    return text ? std::optional<std::string>(indented(*text, depth)) : std::nullopt;
}

void appendString(std::string& text, std::string_view value) {
    text += '"';
    for (auto begin = value.begin(); begin != value.end();) {
        const auto end = std::find_if(begin, value.end(), isEscaped);
        text.append(begin, end);
        begin = end;
        if (begin != value.end()) {
            appendEscaped(text, *begin++);
        }
    }
    text += '"';
}

}  // namespace zelutil::json
