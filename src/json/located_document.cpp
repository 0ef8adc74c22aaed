#include "json/located_document.h"

#include <algorithm>
#include <cstring>
#include <functional>

#include "json/string_end.h"

namespace zelutil::json {
namespace {

/// Returns whether a byte is a later one of a character in UTF-8.
bool continuesCharacter(char c) { return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U; }

std::size_t laterBytesIn(std::string_view text) {
    return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), continuesCharacter));
}

constexpr std::size_t kCountedBlock = 1024;

bool endsScalar(char c) { return std::strchr(" \t\r\n,]}", c) != nullptr; }

/// Returns the place behind the array or object that begins at `c`.
const char* behindContainer(const char* c, const char* end) {
    std::size_t depth = 0;
    while (c < end) {
        if (*c == '"') {
            c = behindString(c, end);
            continue;
        }
        if (*c == '[' || *c == '{') {
            ++depth;
        } else if ((*c == ']' || *c == '}') && --depth == 0) {
            return c + 1;
        }
        ++c;
    }
    return end;
}

const char* behindValue(const char* c, const char* end) {
    if (*c == '"') {
        return behindString(c, end);
    }
    return *c == '[' || *c == '{' ? behindContainer(c, end) : std::find_if(c, end, endsScalar);
}

const char* bytesOf(const rapidjson::Value* value) { return reinterpret_cast<const char*>(value); }

std::vector<std::size_t> beginsOfLines(std::string_view text) {
    std::vector<std::size_t> begins = {0};
    for (std::size_t end = text.find('\n'); end != std::string_view::npos; end = text.find('\n', end + 1)) {
        begins.push_back(end + 1);
    }
    return begins;
}

/// The parser may read past a character that it refuses only for where it stands, so an earlier fault counts first.
void lookForEarlierFailure(std::string_view text, ParseNotes& notes) {
    if (!notes.stoppedAtControlCharacter) {
        return;
    }
    ParseNotes before;
    const Document part(text.substr(0, notes.failureOffset), before);
    if (before.failure != nullptr && before.failureOffset < notes.failureOffset) {
        notes = before;
    }
}

}  // namespace

/// Goes over a document as the parser went over its text, so that each note meets its value.
class LocatedDocument::Survey {
public:
    explicit Survey(const LocatedDocument& document) : document_(document), next_(document.notes_.offsets.begin()) {}

    void run() {
        const View root = document_.root();
        document_.places_.reserve(document_.notes_.offsets.size());
        document_.places_.push_back({0, *next_++});
        descend(*root.value_);
        const char* const begin = bytesOf(root.value_);
        document_.blocks_.push_back({begin, begin + sizeof(rapidjson::Value), sizeof(rapidjson::Value), 0, false});
        const auto isBefore = [](const Block& a, const Block& b) { return std::less<>()(a.begin, b.begin); };
        if (!std::is_sorted(document_.blocks_.begin(), document_.blocks_.end(), isBefore)) {
            std::sort(document_.blocks_.begin(), document_.blocks_.end(), isBefore);
        }
    }

private:
    /// Recurses as deep as a document nests.
    void descend(const rapidjson::Value& value) {
        if (value.IsArray() && !value.Empty()) {
            descendInto(bytesOf(value.Begin()), sizeof(rapidjson::Value), value.Size(), false);
        } else if (value.IsObject() && !value.ObjectEmpty()) {
            descendInto(bytesOf(&value.MemberBegin()->name), sizeof(rapidjson::Value::Member), value.MemberCount(),
                        true);
        }
    }

    void descendInto(const char* begin, std::size_t stride, std::size_t count, bool ofObject) {
        const std::size_t firstPlace = document_.places_.size();
        document_.places_.resize(firstPlace + count);
        for (std::size_t i = 0; i < count; ++i) {
            const auto* value = reinterpret_cast<const rapidjson::Value*>(begin + i * stride);
            if (ofObject) {
                document_.places_[firstPlace + i].key = *next_++;
                ++value;
            }
            document_.places_[firstPlace + i].value = *next_++;
            descend(*value);
        }
        // The parser makes a block when it has met the end of it, and each behind the last one as long as there is
        // room.
        document_.blocks_.push_back({begin, begin + stride * count, stride, firstPlace, ofObject});
    }

    const LocatedDocument& document_;
    std::vector<std::uint32_t>::const_iterator next_;
};

namespace {

/// Whether the text begins with a byte-order mark of UTF-16, or with a sign of ASCII in two bytes.
bool isUtf16(std::string_view text) {
    if (text.size() < 2) {
        return false;
    }
    const auto first = static_cast<unsigned char>(text[0]);
    const auto second = static_cast<unsigned char>(text[1]);
    const bool isMarked = (first == 0xFF && second == 0xFE) || (first == 0xFE && second == 0xFF);
    return isMarked || (first == 0) != (second == 0);
}

}  // namespace

LocatedDocument::LocatedDocument(std::string_view text) : text_(text), document_(text, notes_) {
    lookForEarlierFailure(text, notes_);
}

std::optional<LocatedDocument::Failure> LocatedDocument::failure() const {
    if (notes_.failure == nullptr) {
        return std::nullopt;
    }
    if (isUtf16(text_)) {
        return Failure{positionAt(0), "The text is in UTF-16, and only UTF-8 is read: save it as that."};
    }
    return Failure{positionAt(notes_.failureOffset), notes_.failure};
}

std::optional<Position> LocatedDocument::positionOf(View value) const {
    const Place* const place = placeOf(value);
    return place == nullptr ? std::nullopt : std::optional<Position>(positionAt(place->value));
}

std::optional<std::size_t> LocatedDocument::offsetOf(View value) const {
    const Place* const place = placeOf(value);
    return place == nullptr ? std::nullopt : std::optional<std::size_t>(place->value);
}

std::optional<Position> LocatedDocument::endOf(View value) const {
    const Place* const place = placeOf(value);
    if (place == nullptr) {
        return std::nullopt;
    }
    const char* const end = behindValue(text_.data() + place->value, text_.data() + text_.size());
    return positionAt(static_cast<std::size_t>(end - text_.data()));
}

std::optional<Position> LocatedDocument::keyPositionOf(View value) const {
    const Place* const place = placeOf(value);
    return place == nullptr || !blockOf(value)->ofObject ? std::nullopt
                                                         : std::optional<Position>(positionAt(place->key));
}

Position LocatedDocument::positionAt(std::size_t offset) const {
    if (lineBegins_.empty()) {
        lineBegins_ = beginsOfLines(text_);
    }
    offset = std::min(offset, text_.size());
    const auto behind = std::upper_bound(lineBegins_.begin(), lineBegins_.end(), offset);
    std::size_t begin = *(behind - 1);
    if (begin == 0 && text_.substr(0, kByteOrderMark.size()) == kByteOrderMark) {
        begin = std::min(kByteOrderMark.size(), offset);
    }
    return {offset, static_cast<std::size_t>(behind - lineBegins_.begin()),
            offset - begin - laterBytesBetween(begin, offset) + 1};
}

std::size_t LocatedDocument::laterBytesBetween(std::size_t begin, std::size_t end) const {
    return end - begin <= kCountedBlock ? laterBytesIn(text_.substr(begin, end - begin))
                                        : laterBytesBefore(end) - laterBytesBefore(begin);
}

std::size_t LocatedDocument::laterBytesBefore(std::size_t offset) const {
    if (laterBytes_.empty()) {
        laterBytes_.push_back(0);
        for (std::size_t begin = 0; begin + kCountedBlock <= text_.size(); begin += kCountedBlock) {
            laterBytes_.push_back(laterBytes_.back() + laterBytesIn(text_.substr(begin, kCountedBlock)));
        }
    }
    const std::size_t block = offset / kCountedBlock;
    return laterBytes_[block] + laterBytesIn(text_.substr(block * kCountedBlock, offset % kCountedBlock));
}

const LocatedDocument::Block* LocatedDocument::blockOf(View value) const {
    if (!value || !valid()) {
        return nullptr;
    }
    makeTable();
    const char* const at = bytesOf(value.value_);
    const auto isBefore = [](const char* a, const Block& b) { return std::less<>()(a, b.begin); };
    const auto behind = std::upper_bound(blocks_.begin(), blocks_.end(), at, isBefore);
    const bool found = behind != blocks_.begin() && std::less<>()(at, (behind - 1)->end);
    return found ? &*(behind - 1) : nullptr;
}

const LocatedDocument::Place* LocatedDocument::placeOf(View value) const {
    const Block* const block = blockOf(value);
    if (block == nullptr) {
        return nullptr;
    }
    const auto bytes = static_cast<std::size_t>(bytesOf(value.value_) - block->begin);
    return &places_[block->firstPlace + bytes / block->stride];
}

void LocatedDocument::makeTable() const {
    if (blocks_.empty()) {
        Survey(*this).run();
    }
}

}  // namespace zelutil::json
