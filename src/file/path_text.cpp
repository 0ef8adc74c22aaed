#include "file/path_text.h"

#include <array>
#include <cstring>
#include <utility>

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
    // the second stays, and of three separators the third stays as it was written. Hosts have such names on disk.
    const auto keepUnexamined = [&](std::size_t& in) {
        if (++in < size) {
            data[out++] = data[in];
        }
    };
    for (std::size_t in = start; in < size; ++in) {
        const char c = data[in];
        switch (kindOf(c)) {
            case CharacterKind::Ordinary:
                data[out++] = c;
                break;
            case CharacterKind::Blank:
                blank = true;
                data[out++] = c;
                break;
            case CharacterKind::Quote:
                keepUnexamined(in);
                break;
            case CharacterKind::Separator:
                // At position 1 a doubled separator is a network path's leading pair.
                if (out > 1 && data[out - 1] == kSeparator) {
                    keepUnexamined(in);
                } else {
                    data[out++] = kSeparator;
                }
                break;
            case CharacterKind::Invalid:
                text.clear();
                return false;
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

bool isLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

bool beginsAbsolute(const std::string& text) {
    if (text.size() < 2) {
        return false;
    }
    return (isLetter(text[0]) && text[1] == ':') || (text[0] == kSeparator && text[1] == kSeparator);
}

/// Kept deliberately: the joined text is not gone through again, so a text with a single leading separator ends up with
/// two of them behind the current directory. Hosts compare such texts byte by byte.
void putCurrentDirectoryInFront(std::string& text, PathFlags& flags, std::string directory) {
    flags.hasSpace |= fixCharacters(directory, 0);
    removeTrailingSeparators(directory);
    directory.reserve(directory.size() + 1 + text.size());
    directory += kSeparator;
    directory += text;
    text = std::move(directory);
    flags.absolute = true;
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

void removeDotComponents(std::string& text, PathFlags& flags, std::size_t start) {
    if (start >= text.size() || text.find("\\.") == std::string::npos) {
        return;
    }
    if (!DotComponentWalk(text, start).run()) {
        text.clear();
        flags.hasSpace = false;
    }
}

}  // namespace

void normalise(std::string& text, PathFlags& flags, std::size_t start, const CurrentDirectory& currentDirectory) {
    const bool blank = fixCharacters(text, start);
    const bool blankBefore = start != 0 && flags.hasSpace;
    flags.hasSpace = !text.empty() && (blank || blankBefore);
    removeTrailingSeparators(text);
    if (text.empty()) {
        return;
    }
    if (!flags.absolute && !beginsAbsolute(text)) {
        putCurrentDirectoryInFront(text, flags, currentDirectory());
    }
    removeDotComponents(text, flags, start);
}

}  // namespace zelutil::file
