#include "command/sheet/keyboard_picture.h"

#include <fmt/format.h>

#include <algorithm>

#include "command/html/html_text.h"
#include "command/sheet/keyboard.h"
#include "command/text.h"

namespace zelutil::command::sheet {
namespace {

using html::escaped;

// In units of the picture, of which a printed line of it has 1850.
constexpr double kKeyWidth = 100;
constexpr double kKeyHeight = 85;
constexpr double kGap = 6;
constexpr double kTextX = 7;
constexpr double kLabelY = 18;
constexpr double kFirstLineY = 36;
constexpr double kLineHeight = 17;
/// The width of a letter, about, in the fonts that the style names. A longer line is written in smaller letters.
constexpr double kLetterWidth = 8.6;
constexpr double kFontSize = 14.5;  // As the style has it for a usual line.
constexpr std::size_t kLinesPerKey = 3;

struct Box {
    double x;
    double y;
    double width;
    double height;
};

Box boxOf(const Key& key) {
    return {key.x * kKeyWidth, key.y * kKeyHeight, key.width * kKeyWidth - kGap, kKeyHeight - kGap};
}

bool isHeld(const Key& key, const Layer& layer) {
    return std::find(layer.modifiers.begin(), layer.modifiers.end(), key.name) != layer.modifiers.end();
}

bool isChanged(const std::vector<const Entry*>& entries) {
    return std::any_of(entries.begin(), entries.end(), [](const Entry* entry) { return entry->changed; });
}

/// Returns what a key runs. Two texts may spell one key, as "s" and "S" do.
std::string namesOf(const std::vector<const Entry*>& entries) {
    std::string names;
    for (const Entry* const entry : entries) {
        names += (names.empty() ? "" : " / ") + entry->name;
    }
    return names;
}

std::string keyShape(const Box& box, const char* kind) {
    return fmt::format(R"(<rect class="{}" x="{:g}" y="{:g}" width="{:g}" height="{:g}" rx="9"/>)", kind, box.x, box.y,
                       box.width, box.height);
}

std::string cornerOf(const Box& box) {
    constexpr double kSide = 20;
    return fmt::format(R"(<path class="mark" d="M{:g} {:g}h-{:g}l{:g} {:g}z"/>)", box.x + box.width - 3, box.y + 3,
                       kSide, kSide, kSide);
}

std::string labelOf(const Key& key, const Box& box, const char* kind) {
    const std::string text = std::string(key.label) + (key.shifted.empty() ? "" : "  ") + std::string(key.shifted);
    return fmt::format(R"(<text class="label {}" x="{:g}" y="{:g}">{}</text>)", kind, box.x + kTextX, box.y + kLabelY,
                       escaped(text));
}

std::size_t lengthOf(std::string_view text) {
    return static_cast<std::size_t>(std::count_if(
        text.begin(), text.end(), [](char c) { return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U; }));
}

std::string lineOf(const std::string& text, const Box& box, double y) {
    const double room = box.width - 2 * kTextX;
    const double width = static_cast<double>(lengthOf(text)) * kLetterWidth;
    const std::string size =
        width > room ? fmt::format(R"( style="font-size:{:.1f}px")", kFontSize * room / width) : "";
    return fmt::format(R"(<text class="what" x="{:g}" y="{:g}"{}>{}</text>)", box.x + kTextX, y, size, escaped(text));
}

std::string boundKey(const Key& key, const std::vector<const Entry*>& entries) {
    const Box box = boxOf(key);
    const bool changed = isChanged(entries);
    std::string drawn = keyShape(box, changed ? "key bound changed" : "key bound") + (changed ? cornerOf(box) : "") +
                        labelOf(key, box, "");
    double y = box.y + kFirstLineY;
    const auto lettersPerLine = static_cast<std::size_t>((box.width - 2 * kTextX) / kLetterWidth);
    for (const std::string& line : wrapped(printable(namesOf(entries)), lettersPerLine, kLinesPerKey)) {
        drawn += lineOf(line, box, y);
        y += kLineHeight;
    }
    return drawn;
}

std::string freeKey(const Key& key, const Layer& layer) {
    const Box box = boxOf(key);
    const bool held = isHeld(key, layer);
    return keyShape(box, held ? "key held" : "key") + labelOf(key, box, held ? "held" : "free");
}

/// Returns all that the picture shows, in words.
std::string descriptionOf(const Layer& layer) {
    std::string text;
    for (const auto& [number, entries] : layer.keys) {
        for (const Entry* const entry : entries) {
            text += (text.empty() ? "" : "; ") + entry->shortcut + ": " + entry->name;
            text += entry->changed ? " (changed)" : "";
        }
    }
    return text + '.';
}

std::string head(const Layer& layer, const std::string& id, std::string_view contextName) {
    const std::string title = fmt::format("Keyboard of {}: {}", contextName, titleOf(layer));
    return fmt::format(R"(<svg role="img" aria-labelledby="{0}-title {0}-text" viewBox="-3 -3 {1:g} {2:g}">)"
                       R"(<title id="{0}-title">{3}</title><desc id="{0}-text">{4}</desc>)",
                       id, kKeyboardWidth * kKeyWidth + 3, kKeyboardHeight * kKeyHeight + 3, escaped(title),
                       escaped(descriptionOf(layer)));
}

std::vector<std::string> wordsOf(std::string_view text) {
    std::vector<std::string> words;
    while (!text.empty()) {
        const std::size_t blank = std::min(text.find(' '), text.size());
        if (blank > 0) {
            words.emplace_back(text.substr(0, blank));
        }
        text.remove_prefix(std::min(blank + 1, text.size()));
    }
    return words;
}

}  // namespace

std::vector<std::string> wrapped(std::string_view text, std::size_t width, std::size_t maximumLines) {
    std::vector<std::string> lines;
    for (const std::string& word : wordsOf(text)) {
        if (!lines.empty() && lengthOf(lines.back()) + 1 + lengthOf(word) <= width) {
            lines.back() += ' ' + word;
        } else if (lines.size() < maximumLines) {
            lines.push_back(word);
        } else {
            lines.back() += "\xE2\x80\xA6";
            break;
        }
    }
    return lines;
}

std::string pictureOf(const Layer& layer, const std::string& id, std::string_view contextName) {
    std::string svg = head(layer, id, contextName);
    const std::vector<Key>& keys = keyboard();
    for (std::size_t number = 0; number < keys.size(); ++number) {
        const auto bound = layer.keys.find(static_cast<int>(number));
        svg += bound == layer.keys.end() ? freeKey(keys[number], layer) : boundKey(keys[number], bound->second);
    }
    return svg + "</svg>";
}

}  // namespace zelutil::command::sheet
