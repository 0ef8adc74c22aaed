#include "command/world/redaction.h"

#include <algorithm>
#include <array>
#include <functional>
#include <optional>
#include <vector>

#include "host/typed_values.h"
#include "json/located_document.h"
#include "prefs/section_walk.h"
#include "text/ascii.h"
#include "text/list.h"

namespace zelutil::command::world {
namespace {

namespace fs = std::filesystem;

/// Directories that tell nothing about a user, and names that the library itself puts into paths.
constexpr std::array<std::string_view, 34> kPublicWords = {"home",
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

bool isOfWord(char c) { return ascii::isLetter(c) || ascii::isDigit(c) || isBeyondAscii(c) || c == '_'; }

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

// --- Files ----------------------------------------------------------------------------------------------------------

/// Masks what stands between quotes in a JSON text. An escaped character becomes letters too.
std::string maskedString(std::string_view content) {
    std::string result = masked(content);
    for (std::size_t at = result.find('\\'); at != std::string::npos; at = result.find('\\', at)) {
        result.replace(at, std::min<std::size_t>(2, result.size() - at), 2, 'x');
    }
    return result;
}

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

bool isNumberOrTruth(std::string_view value) {
    return host::doubleOf(value).has_value() || host::boolOf(value).has_value();
}

}  // namespace

Redaction::Redaction(const std::set<std::string>& words, const std::string& home) : isOn_(true) {
    std::set<std::string> all = words;
    for (const std::string_view directory : text::split(std::string_view(home), "/\\:")) {
        all.emplace(directory);
    }
    for (const std::string& word : all) {
        const std::string lower = lowerCase(word);
        const bool isPublic = std::find(kPublicWords.begin(), kPublicWords.end(), lower) != kPublicWords.end();
        // A single letter may be a drive.
        if (lower.size() > 1 && !isPublic) {
            words_.insert(lower);
        }
    }
}

std::string Redaction::words(std::string_view text) const {
    std::string result(text);
    const std::string lower = lowerCase(text);
    for (const std::string& word : words_) {
        for (std::size_t at = lower.find(word); at != std::string::npos; at = lower.find(word, at + 1)) {
            const std::size_t end = at + word.size();
            const bool isWhole = (at == 0 || !isOfWord(lower[at - 1]) || !isOfWord(word.front())) &&
                                 (end == lower.size() || !isOfWord(lower[end]) || !isOfWord(word.back()));
            for (std::size_t place = at; isWhole && place < end; ++place) {
                result[place] = isBeyondAscii(lower[place]) ? 'x' : masked({&lower[place], 1})[0];
            }
        }
    }
    return result;
}

fs::path Redaction::path(const fs::path& path) const { return fs::u8path(words(path.u8string())); }

std::string Redaction::usersFile(std::string_view text, const std::set<std::string>& shippedValues) const {
    if (!isOn_) {
        return std::string(text);
    }
    const json::LocatedDocument document(text);
    const std::size_t good = document.valid() ? text.size() : document.failure()->position.offset;
    const Replace replace = [&](const StringValue& value) {
        const bool stays = isNameOfTheForm(value) || isNumberOrTruth(value.content) ||
                           shippedValues.count(std::string(value.content)) != 0;
        return stays ? std::string(value.content) : maskedString(value.content);
    };
    return StringReplacement(text.substr(0, good), replace).run() + masked(text.substr(good));
}

std::string Redaction::shippedFile(std::string_view text) const {
    if (!isOn_) {
        return std::string(text);
    }
    const Replace replace = [&](const StringValue& value) {
        const bool isPath = value.content.find_first_of("/\\") != std::string_view::npos;
        return isPath ? words(value.content) : std::string(value.content);
    };
    return StringReplacement(text, replace).run();
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
