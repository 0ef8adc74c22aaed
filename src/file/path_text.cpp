#include "file/path_text.h"

#include <array>
#include <cstring>
#include <utility>

#include "file/plain_text.h"
#include "text/ascii.h"

// Both passes over a text work in place with two positions: `in` reads, `out` writes and never overtakes. What lies
// before `out` is what a procedure that erases character by character would have before its position, so that looking
// back from `out` sees what that procedure sees, without moving the rest of the text at every removal.
namespace zelutil::file {
namespace {

enum class CharacterKind : unsigned char { Ordinary, Blank, Quote, Separator, Invalid };

constexpr std::array<CharacterKind, 256> makeCharacterKinds() {
    std::array<CharacterKind, 256> kinds{};
    for (const char c : {'\n', '\r', '*', '<', '>', '?', '|'}) {
        kinds[static_cast<unsigned char>(c)] = CharacterKind::Invalid;
    }
    kinds[' '] = CharacterKind::Blank;
    kinds['"'] = CharacterKind::Quote;
    kinds['/'] = CharacterKind::Separator;
    kinds['\\'] = CharacterKind::Separator;
    return kinds;
}

constexpr std::array<CharacterKind, 256> kCharacterKinds = makeCharacterKinds();

CharacterKind kindOf(char c) { return kCharacterKinds[static_cast<unsigned char>(c)]; }

/// Converts and removes the characters from `start` on. Tells whether there is a blank among them; an invalid character
/// empties the text.
bool fixCharacters(std::string& text, std::size_t start) {
    bool blank = false;
    const std::size_t size = text.size();
    char* const data = text.data();
    std::size_t out = start;
    // Kept deliberately: what slides into the place of a removed character is not examined, so of two quotes in a row
    // the second stays, and of three separators the third stays as it was written. Paths are compared as texts, so
    // their form must not change.
    const auto keepUnexamined = [&](std::size_t& in) {
        if (++in < size) {
            data[out++] = data[in];
        }
    };
    for (std::size_t in = start; in < size; ++in) {
        const char c = data[in];
        const CharacterKind kind = kindOf(c);
        // Nearly every character ends here. One switch over all kinds is mispredicted at each separator: half as long
        // again for a path of ten components.
        if (kind == CharacterKind::Ordinary) {
            data[out++] = c;
            continue;
        }
        if (kind == CharacterKind::Invalid) {
            text.clear();
            return false;
        }
        blank = blank || kind == CharacterKind::Blank;
        // At position 1 a separator that follows one is part of a network path's leading pair.
        const bool doubled = kind == CharacterKind::Separator && out > 1 && data[out - 1] == kSeparator;
        if (doubled || kind == CharacterKind::Quote) {
            keepUnexamined(in);
        } else {
            data[out++] = kind == CharacterKind::Separator ? kSeparator : c;
        }
    }
    text.resize(out);
    return blank;
}

void removeTrailingSeparators(std::string& text) {
    while (!text.empty() && text.back() == kSeparator) {
        text.pop_back();
    }
}

bool beginsAbsolute(const std::string& text) {
    if (text.size() < 2) {
        return false;
    }
    return (ascii::isLetter(text[0]) && text[1] == ':') || (text[0] == kSeparator && text[1] == kSeparator);
}

/// A text that cannot be made absolute names no file: with a separator alone in front it would name one of the root
/// directory.
///
/// Kept deliberately: the joined text is not gone through again, so a text with a single leading separator ends up with
/// two of them behind the current directory, as has a name appended to the empty path. The system reads two as one.
void putCurrentDirectoryInFront(std::string& text, PathFlags& flags, std::string directory) {
    const bool blank = fixCharacters(directory, 0);
    removeTrailingSeparators(directory);
    if (directory.empty()) {
        text.clear();
        flags.hasSpace = false;
        return;
    }
    flags.hasSpace |= blank;
    directory.reserve(directory.size() + 1 + text.size());
    directory += kSeparator;
    directory += text;
    text = std::move(directory);
    flags.absolute = true;
}

/// Looks for the dots: they are rarer than separators.
bool hasDotAfterSeparator(const std::string& text) {
    for (std::size_t dot = text.find('.'); dot != std::string::npos; dot = text.find('.', dot + 1)) {
        if (dot > 0 && text[dot - 1] == kSeparator) {
            return true;
        }
    }
    return false;
}

/// Walks the components from `start` on and takes out "." and "..".
class DotComponentWalk {
public:
    DotComponentWalk(std::string& text, std::size_t start)
        : text_(text), data_(text.data()), size_(text.size()), in_(start), out_(start) {}

    /// False when ".." climbs above the beginning.
    bool run() {
        // A walk that does not begin at a component's begin has nothing to decide about that component.
        if (in_ > 0 && in_ < size_ && data_[in_ - 1] != kSeparator) {
            copyUpTo(componentEnd(in_));
        }
        while (in_ < size_) {
            if (data_[in_] == kSeparator) {
                copyUpTo(in_ + 1);
            }
            if (!takeComponent()) {
                return false;
            }
        }
        text_.resize(out_);
        return true;
    }

private:
    bool takeComponent() {
        const std::size_t end = componentEnd(in_);
        const std::size_t length = end - in_;
        if (length == 1 && data_[in_] == '.') {
            out_ -= out_ > 0 ? 1 : 0;
            in_ = end;
            return true;
        }
        if (length == 2 && data_[in_] == '.' && data_[in_ + 1] == '.') {
            in_ = end;
            return dropPreviousComponent();
        }
        copyUpTo(end);
        return true;
    }

    /// Goes back to the separator before the component before `out_`.
    ///
    /// Kept deliberately: an empty component is one like others, so ".." takes the second of two separators, and climbs
    /// out of a network path's server. What is left then begins with one separator and is relative in the next append.
    bool dropPreviousComponent() {
        if (out_ < 2) {
            return false;
        }
        for (std::size_t position = out_ - 1; position-- > 0;) {
            if (data_[position] == kSeparator) {
                out_ = position;
                return true;
            }
        }
        return false;
    }

    std::size_t componentEnd(std::size_t begin) const {
        const void* const found = begin < size_ ? std::memchr(data_ + begin, kSeparator, size_ - begin) : nullptr;
        return found == nullptr ? size_ : static_cast<std::size_t>(static_cast<const char*>(found) - data_);
    }

    void copyUpTo(std::size_t end) {
        const std::size_t length = end - in_;
        if (in_ != out_) {
            std::memmove(data_ + out_, data_ + in_, length);
        }
        in_ = end;
        out_ += length;
    }

    std::string& text_;
    char* data_;
    std::size_t size_;
    std::size_t in_;
    std::size_t out_;
};

/// Kept deliberately: a blank noticed in a component that goes away stays noticed, and separators that end up last when
/// dots are gone stay. Quotes around a text without a blank do no harm, and neither does a separator at the end.
void removeDotComponents(std::string& text, PathFlags& flags, std::size_t start) {
    if (start >= text.size() || !hasDotAfterSeparator(text)) {
        return;
    }
    if (!DotComponentWalk(text, start).run()) {
        text.clear();
        flags.hasSpace = false;
    }
}

}  // namespace

void normalise(std::string& text, PathFlags& flags, std::size_t start, const CurrentDirectory& currentDirectory) {
    const PlainText look = lookAtText(text, start);
    bool blank = look.blank;
    if (!look.plain) {
        blank = fixCharacters(text, start);
    } else if (look.slash) {
        convertSeparators(text, start);
    }
    const bool blankBefore = start != 0 && flags.hasSpace;
    flags.hasSpace = !text.empty() && (blank || blankBefore);
    removeTrailingSeparators(text);
    if (text.empty()) {
        return;
    }
    const bool relative = !flags.absolute && !beginsAbsolute(text);
    if (relative) {
        putCurrentDirectoryInFront(text, flags, currentDirectory());
    }
    // A plain text has none, but for one at its very beginning, which then follows the current directory.
    if (relative || !look.plain) {
        removeDotComponents(text, flags, start);
    }
}

}  // namespace zelutil::file
