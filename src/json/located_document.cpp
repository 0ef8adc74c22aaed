#include "json/located_document.h"

#include <algorithm>
#include <cstring>

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

std::vector<std::size_t> beginsOfLines(std::string_view text) {
    std::vector<std::size_t> begins = {0};
    for (std::size_t end = text.find('\n'); end != std::string_view::npos; end = text.find('\n', end + 1)) {
        begins.push_back(end + 1);
    }
    return begins;
}

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

LocatedDocument::LocatedDocument(std::string_view text)
    : text_(text), document_(TextStays(), text), failure_(document_.valid() ? std::nullopt : parseFailureOf(text)) {}

std::optional<LocatedDocument::Failure> LocatedDocument::failure() const {
    if (!failure_) {
        return std::nullopt;
    }
    if (isUtf16(text_)) {
        return Failure{positionAt(0), "The text is in UTF-16, and only UTF-8 is read: save it as that."};
    }
    return Failure{positionAt(failure_->offset), failure_->text};
}

std::optional<Position> LocatedDocument::positionOf(View value) const {
    const auto offset = offsetOf(value);
    return offset ? std::optional<Position>(positionAt(*offset)) : std::nullopt;
}

std::optional<std::size_t> LocatedDocument::offsetOf(View value) const {
    return isHere(value) ? std::optional<std::size_t>((*value.tape())[value.place()].offset()) : std::nullopt;
}

std::optional<Position> LocatedDocument::endOf(View value) const {
    const auto begin = offsetOf(value);
    if (!begin) {
        return std::nullopt;
    }
    const char* const end = behindValue(text_.data() + *begin, text_.data() + text_.size());
    return positionAt(static_cast<std::size_t>(end - text_.data()));
}

std::optional<Position> LocatedDocument::keyPositionOf(View value) const {
    if (!isHere(value) || value.place() == 0) {
        return std::nullopt;
    }
    const Node before = (*value.tape())[value.place() - 1];
    return before.isKey() ? std::optional<Position>(positionAt(before.offset())) : std::nullopt;
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

}  // namespace zelutil::json
