#include "json/document.h"

#include <algorithm>

#include "json/tape_parser.h"

namespace zelutil::json {
namespace {

bool isOfAllowedSize(std::string_view text) { return text.size() <= kMaximumTextSize + kByteOrderMark.size(); }

/// Returns nothing for a text that is too large to be read.
std::unique_ptr<char[]> copyOf(std::string_view text) {
    if (!isOfAllowedSize(text)) {
        return nullptr;
    }
    std::unique_ptr<char[]> copy(new char[text.size()]);
    std::copy(text.begin(), text.end(), copy.get());
    return copy;
}

bool read(Tape& tape, std::string_view text) {
    const std::size_t begin = text.substr(0, kByteOrderMark.size()) == kByteOrderMark ? kByteOrderMark.size() : 0;
    return text.size() - begin <= kMaximumTextSize && TapeParser(tape, text, begin).parse();
}

}  // namespace

Document::Document(std::string_view text, Numbers numbers)
    : copy_(copyOf(text)),
      tape_(copy_.get(), numbers),
      valid_(copy_ != nullptr && read(tape_, {copy_.get(), text.size()})) {}

Document::Document(TextStays /*tag*/, std::string_view text, Numbers numbers)
    : tape_(text.data(), numbers), valid_(read(tape_, text)) {}

}  // namespace zelutil::json
