#include "command/world/redaction.h"

#include <algorithm>
#include <array>
#include <functional>
#include <optional>
#include <vector>

#include "host/typed_values.h"
#include "json/document.h"
#include "json/located_document.h"
#include "prefs/section_walk.h"
#include "text/ascii.h"
#include "text/list.h"

namespace zelutil::command::world {
namespace {

namespace fs = std::filesystem;

/// Directories that tell nothing about a user, and names that the library itself puts into paths.
constexpr std::array<std::string_view, 35> kPublicWords = {"home",
                                                           "users",
                                                           "documents",
                                                           "and",
                                                           "settings",
                                                           "root",
                                                           "usr",
                                                           "var",
                                                           "export",
                                                           "tmp",
                                                           "temp",
                                                           "tools",
                                                           "bin",
                                                           "lib",
                                                           "64bit",
                                                           "share",
                                                           "pcb",
                                                           "zelmgr",
                                                           "zeldict",
                                                           "qtxsetup",
                                                           "canvas",
                                                           "resources",
                                                           "tessel",
                                                           "pcbenv",
                                                           "local",
                                                           "zelutil",
                                                           "libzelutil",
                                                           "facet",
                                                           "tessel_settings",
                                                           "facet_settings",
                                                           "cfg",
                                                           "dll",
                                                           "so",
                                                           "bad",
                                                           "qtxcommon"};

std::string lowerCase(std::string_view text) {
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(), ascii::lowerCase);
    return lower;
}

bool isBeyondAscii(char c) { return (static_cast<unsigned char>(c) & 0x80) != 0; }

bool isLaterByte(char c) { return (static_cast<unsigned char>(c) & 0xC0) == 0x80; }

bool isOfWord(char c) { return ascii::isLetter(c) || ascii::isDigit(c) || isBeyondAscii(c); }

/// A character of several bytes becomes one "x", so that columns stay, which count characters.
std::string masked(std::string_view text) {
    std::string result;
    for (const char c : text) {
        if (!isLaterByte(c)) {
            result += ascii::isLetter(c) || isBeyondAscii(c) ? 'x' : ascii::isDigit(c) ? '0' : c;
        }
    }
    return result;
}

/// Returns the text with those of its bytes masked for which the mask says so.
std::string masked(std::string_view text, const std::vector<bool>& mask) {
    std::string result;
    for (std::size_t at = 0; at < text.size(); ++at) {
        result += mask[at] ? masked(text.substr(at, 1)) : std::string(1, text[at]);
    }
    return result;
}

bool isPublic(std::string_view word) {
    return std::find(kPublicWords.begin(), kPublicWords.end(), word) != kPublicWords.end();
}

/// Adds a word and its parts. A single letter may be a drive.
void addWord(const std::string& word, std::set<std::string>& words) {
    const std::vector<std::string_view> parts = text::split(std::string_view(word), " ");
    const bool isAllPublic = std::all_of(parts.begin(), parts.end(), isPublic);
    if (word.size() > 1 && !isAllPublic) {
        words.insert(word);
    }
    for (const std::string_view part : parts) {
        if (part.size() > 1 && !isPublic(part)) {
            words.emplace(part);
        }
    }
}

/// Returns a name as Windows takes its first characters for a short one.
std::string withoutBlanksAndDots(std::string_view name) {
    std::string compact(name);
    compact.erase(std::remove_if(compact.begin(), compact.end(), [](char c) { return c == ' ' || c == '.'; }),
                  compact.end());
    return compact;
}

bool isHexadecimal(std::string_view text) {
    return text.find_first_not_of("0123456789abcdef") == std::string_view::npos;
}

// --- Files ----------------------------------------------------------------------------------------------------------

/// Masks what stands between quotes in a JSON text. An escaped character becomes letters too.
std::string maskedString(std::string_view content) {
    std::string result = masked(content);
    for (std::size_t at = result.find('\\'); at != std::string::npos; at = result.find('\\', at)) {
        result.replace(at, std::min<std::size_t>(2, result.size() - at), 2, 'x');
    }
    return result;
}

/// A character of a JSON string as it is written, and the place of what it stands for in the decoded text.
struct WrittenCharacter {
    std::string_view written;
    std::size_t begin = 0;
    std::size_t end = 0;
};

/// Decodes what stands between the quotes of a JSON string. What cannot be decoded stands for itself.
class DecodedString {
public:
    explicit DecodedString(std::string_view content) {
        for (std::size_t at = 0; at < content.size();) {
            const std::string_view written = content.substr(at, lengthOf(content.substr(at)));
            const std::size_t begin = text_.size();
            text_ += written.front() == '\\' ? meaningOf(written) : std::string(written);
            characters_.push_back({written, begin, text_.size()});
            at += written.size();
        }
    }

    const std::string& text() const { return text_; }

    /// Returns the content with those characters masked of which the mask of the decoded text masks any byte.
    std::string masked(const std::vector<bool>& mask) const {
        std::string result;
        for (const WrittenCharacter& one : characters_) {
            const auto begin = mask.begin() + static_cast<std::ptrdiff_t>(one.begin);
            const auto end = mask.begin() + static_cast<std::ptrdiff_t>(one.end);
            const bool isMasked = std::find(begin, end, true) != end;
            result += !isMasked                     ? std::string(one.written)
                      : one.written.front() == '\\' ? std::string(one.written.size(), 'x')
                                                    : world::masked(one.written);
        }
        return result;
    }

private:
    static constexpr std::size_t kUnicodeEscape = 6;

    /// Returns the length of the first character. Two escapes may stand for one.
    static std::size_t lengthOf(std::string_view content) {
        if (content.front() != '\\') {
            return 1;
        }
        if (content.substr(0, 2) != "\\u") {
            return std::min<std::size_t>(2, content.size());
        }
        const bool isHigh = lowerCase(content.substr(2, 1)) == "d" && content.size() > 3 &&
                            std::string_view("89abAB").find(content[3]) != std::string_view::npos;
        return std::min(isHigh ? 2 * kUnicodeEscape : kUnicodeEscape, content.size());
    }

    static std::string meaningOf(std::string_view written) {
        const json::Document document('"' + std::string(written) + '"');
        return std::string(document.root().text().value_or(written));
    }

    std::string text_;
    std::vector<WrittenCharacter> characters_;
};

/// A string of a JSON text that is no key.
struct StringValue {
    std::string_view key;        ///< The key before it.
    std::string_view container;  ///< The key under which the nearest array around it stands, or the object.
    std::string_view content;    ///< As it is written, without the quotes.
};

using Replace = std::function<std::string(const StringValue&)>;

/// Replaces every string that is a value in a text that begins as a JSON text does.
class StringReplacement {
public:
    StringReplacement(std::string_view text, const Replace& replace) : text_(text), replace_(replace) {}

    std::string run() {
        while (at_ < text_.size()) {
            text_[at_] == '"' ? takeString() : takeSign();
        }
        return std::move(result_);
    }

private:
    void takeSign() {
        const char sign = text_[at_++];
        result_ += sign;
        if (sign == '[' || (sign == '{' && !isElement())) {
            containers_.push_back({key_, sign == '['});
        } else if (sign == '{') {
            containers_.push_back({containers_.back().key, false});
        } else if ((sign == ']' || sign == '}') && !containers_.empty()) {
            containers_.pop_back();
        }
    }

    bool isElement() const { return !containers_.empty() && containers_.back().isArray; }

    void takeString() {
        const std::size_t end = endOfString(at_ + 1);
        const std::string_view content = text_.substr(at_ + 1, end - at_ - 1);
        const bool isKey = isFollowedByColon(end);
        key_ = isKey ? content : key_;
        const std::string_view container = containers_.empty() ? std::string_view() : containers_.back().key;
        result_ += '"' + (isKey ? std::string(content) : replace_({key_, container, content}));
        result_ += end < text_.size() ? "\"" : "";
        at_ = end + 1;
    }

    /// Returns where a string ends whose content begins there: at its closing quote or the end of the text.
    std::size_t endOfString(std::size_t begin) const {
        std::size_t at = begin;
        while (at < text_.size() && text_[at] != '"') {
            at += text_[at] == '\\' ? 2 : 1;
        }
        return std::min(at, text_.size());
    }

    bool isFollowedByColon(std::size_t quote) const {
        const std::size_t next = text_.find_first_not_of(" \t\r\n", quote + 1);
        return next != std::string_view::npos && text_[next] == ':';
    }

    struct Container {
        std::string_view key;
        bool isArray = false;
    };

    std::string_view text_;
    const Replace& replace_;
    std::size_t at_ = 0;
    std::string_view key_;
    std::vector<Container> containers_;
    std::string result_;
};

/// Returns whether a string names something of the form, and is no value of a user.
bool isNameOfTheForm(const StringValue& value) {
    if (value.container == prefs::kMeta || value.container == prefs::kChildren) {
        return value.key == prefs::kHeader || value.key == prefs::kAttribute || value.key == prefs::kTclCommand;
    }
    return (value.container == prefs::kDefaultSettings && value.key == prefs::kName) ||
           (value.container == "actions" && value.key == "shortcut");
}

bool isNumberOrTruth(const std::string& value) {
    return host::doubleOf(value).has_value() || host::boolOf(value).has_value();
}

}  // namespace

Redaction::Redaction(const std::set<std::string>& words, const std::string& home) : isOn_(true) {
    std::set<std::string> all = words;
    for (const std::string_view directory : text::split(std::string_view(home), "/\\:")) {
        all.emplace(directory);
    }
    for (const std::string& word : all) {
        addWord(lowerCase(word), words_);
    }
}

/// Returns for each byte whether it is of a word that is masked.
std::vector<bool> Redaction::maskOf(std::string_view text) const {
    std::vector<bool> mask(text.size());
    const std::string lower = lowerCase(text);
    for (const std::string& word : words_) {
        for (std::size_t at = lower.find(word); at != std::string::npos; at = lower.find(word, at + 1)) {
            const std::size_t end = at + word.size();
            const bool isWhole = (at == 0 || !isOfWord(lower[at - 1]) || !isOfWord(word.front())) &&
                                 (end == lower.size() || !isOfWord(lower[end]) || !isOfWord(word.back()));
            for (std::size_t place = at; isWhole && place < end; ++place) {
                mask[place] = true;
            }
        }
    }
    maskShortNames(lower, mask);
    return mask;
}

/// Masks what stands before a tilde and a digit where it is the beginning of a word.
void Redaction::maskShortNames(std::string_view text, std::vector<bool>& mask) const {
    for (std::size_t tilde = text.find('~'); tilde != std::string_view::npos; tilde = text.find('~', tilde + 1)) {
        const std::size_t before = text.find_last_of("/\\:;\" ", tilde);
        const std::size_t begin = before == std::string_view::npos ? 0 : before + 1;
        const bool isNumbered = tilde + 1 < text.size() && ascii::isDigit(text[tilde + 1]);
        if (isNumbered && isShortNameOfWord(text.substr(begin, tilde - begin))) {
            std::fill(mask.begin() + static_cast<std::ptrdiff_t>(begin),
                      mask.begin() + static_cast<std::ptrdiff_t>(tilde), true);
        }
    }
}

/// A short name has up to six of the first characters, or two of them and a number with four digits.
bool Redaction::isShortNameOfWord(std::string_view name) const {
    return std::any_of(words_.begin(), words_.end(), [&](const std::string& word) {
        const std::string full = withoutBlanksAndDots(word);
        const bool isBeginning = name.size() >= std::min<std::size_t>(full.size(), 5) && name.size() <= 6 &&
                                 full.substr(0, name.size()) == name;
        const bool isHashed =
            name.size() == 6 && full.substr(0, 2) == name.substr(0, 2) && isHexadecimal(name.substr(2));
        return isBeginning || isHashed;
    });
}

std::string Redaction::words(std::string_view text) const { return masked(text, maskOf(text)); }

fs::path Redaction::path(const fs::path& path) const { return fs::u8path(words(path.u8string())); }

std::string Redaction::usersFile(std::string_view text, const std::set<std::string>& shippedValues) const {
    if (!isOn_) {
        return std::string(text);
    }
    const json::LocatedDocument document(text);
    const std::size_t good = document.valid() ? text.size() : document.failure()->position.offset;
    const Replace replace = [&](const StringValue& value) {
        const std::string meaning = DecodedString(value.content).text();
        if (isNameOfTheForm(value) || isNumberOrTruth(meaning)) {
            return std::string(value.content);
        }
        return shippedValues.count(meaning) != 0 ? shippedValue(value.content) : maskedString(value.content);
    };
    return StringReplacement(text.substr(0, good), replace).run() + masked(text.substr(good));
}

std::string Redaction::shippedFile(std::string_view text) const {
    if (!isOn_) {
        return std::string(text);
    }
    if (!json::Document(text).valid()) {
        return usersFile(text, {});
    }
    return StringReplacement(text, [&](const StringValue& value) { return shippedValue(value.content); }).run();
}

/// Returns what stands between the quotes of a shipped value, with the words masked where it is a path.
std::string Redaction::shippedValue(std::string_view content) const {
    const DecodedString decoded(content);
    const bool isPath = decoded.text().find_first_of("/\\") != std::string::npos;
    return isPath ? decoded.masked(maskOf(decoded.text())) : std::string(content);
}

std::set<std::string> shippedValuesIn(std::string_view defaults) {
    std::set<std::string> values;
    const json::Document document(defaults);
    prefs::forEachSection(document.root(), [&](const prefs::VisitedSection& visited) {
        for (const json::View element : visited.element.member(prefs::kDefaultSettings).elements()) {
            if (const auto setting = prefs::defaultSetting(element)) {
                values.emplace(setting->value);
            }
        }
    });
    return values;
}

}  // namespace zelutil::command::world
