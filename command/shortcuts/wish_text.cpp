#include "command/shortcuts/wish_text.h"

#include <algorithm>
#include <charconv>

#include "command/text.h"
#include "json/document.h"

namespace zelutil::shortcuts {
namespace {

using json::View;

constexpr std::string_view kBlanksInLists = " \t";
constexpr std::string_view kLineEnds = "\r\n";

std::string_view withoutOuterBlanks(std::string_view text) {
    const std::size_t begin = text.find_first_not_of(kBlanksInLists);
    return begin == std::string_view::npos ? std::string_view()
                                           : text.substr(begin, text.find_last_not_of(kBlanksInLists) - begin + 1);
}

/// Returns the text without the comment at its end. That begins with a # behind a blank, or is all that there is behind
/// the equals sign; a # alone, or one behind a plus sign, is a key.
std::string_view withoutComment(std::string_view text) {
    std::size_t at = text.find('#');
    while (at != std::string_view::npos) {
        const std::string_view before = withoutOuterBlanks(text.substr(0, at));
        const bool isKey = before.empty() ? withoutOuterBlanks(text) == "#" : before.back() == '+';
        const bool isApart = at == 0 || kBlanksInLists.find(text[at - 1]) != std::string_view::npos;
        if (isApart && !isKey) {
            return text.substr(0, at);
        }
        at = text.find('#', at + 1);
    }
    return text;
}

/// Returns whether people can read and write the text: it is UTF-8 and has no control characters.
bool isReadable(std::string_view text) { return command::printable(text) == text; }

bool isReadable(const Wish& wish) {
    return isReadable(wish.context) && isReadable(wish.command) && isReadable(wish.shortcut.value_or(""));
}

constexpr char kUnreadableText[] = "It has a control character or a byte that is no UTF-8.";

bool isNumber(std::string_view text) {
    return !text.empty() && std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

/// Returns the number, or 0 for one that no action can have as its id.
int idOf(std::string_view digits) {
    int id = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), id);
    return error == std::errc() && end == digits.data() + digits.size() ? id : 0;
}

/// Reads a list, a wish a line.
class LineReader {
public:
    WishText read(std::string_view text) {
        result_.isLines = true;
        for (int number = 1; !text.empty(); ++number) {
            const std::size_t end = std::min(text.find_first_of(kLineEnds), text.size());
            readLine(withoutOuterBlanks(text.substr(0, end)), number);
            text.remove_prefix(end + (text.substr(end, 2) == "\r\n" ? 2 : end < text.size() ? 1 : 0));
        }
        return std::move(result_);
    }

private:
    void readLine(std::string_view line, int number) {
        if (line.empty() || line.front() == '#') {
            return;
        }
        const std::size_t equals = line.find('=');
        if (equals == std::string_view::npos) {
            result_.faults.push_back(
                {number, "It has no equals sign: write ID = KEY or CONTEXT COMMAND = KEY, such as 1 = Ctrl+O."});
            return;
        }
        Wish wish;
        wish.place = number;
        wish.shortcut = std::string(withoutOuterBlanks(withoutComment(line.substr(equals + 1))));
        if (!nameAction(withoutOuterBlanks(line.substr(0, equals)), wish)) {
            result_.faults.push_back({number, "It names no action: that is an id, or a context and a command."});
        } else if (!isReadable(wish)) {
            result_.faults.push_back({number, kUnreadableText});
        } else {
            result_.wishes.push_back(std::move(wish));
        }
    }

    static bool nameAction(std::string_view name, Wish& wish) {
        if (isNumber(name)) {
            wish.id = idOf(name);
            return wish.id > 0;
        }
        const std::size_t end = name.find_first_of(kBlanksInLists);
        if (end == std::string_view::npos) {
            return false;
        }
        wish.context = std::string(name.substr(0, end));
        wish.command = std::string(withoutOuterBlanks(name.substr(end)));
        return true;
    }

    WishText result_;
};

std::string textOfMember(View value) { return std::string(value.text().value_or(std::string_view())); }

/// Says what is wrong with an element; empty for nothing.
std::string faultOf(View element, const Wish& wish) {
    const View shortcut = element.member("shortcut");
    const View flag = element.member("inMenu");
    if (!element.isObject()) {
        return "It is no object.";
    }
    if (wish.id < 1 && (wish.context.empty() || wish.command.empty())) {
        return "It names no action: that is an \"id\" of 1 or more, or a \"context\" and a \"command\".";
    }
    if ((shortcut && !shortcut.text()) || (flag && !flag.isTruth())) {
        return "Its \"shortcut\" is no text, or its \"inMenu\" is neither true nor false.";
    }
    if (!isReadable(wish)) {
        return kUnreadableText;
    }
    return shortcut || flag ? "" : "It has neither a \"shortcut\" nor \"inMenu\".";
}

Wish wishOf(View element, int place) {
    Wish wish;
    wish.place = place;
    wish.id = std::max(element.member("id").integer().value_or(0), 0);
    wish.context = textOfMember(element.member("context"));
    wish.command = textOfMember(element.member("command"));
    if (const auto shortcut = element.member("shortcut").text()) {
        wish.shortcut = std::string(*shortcut);
    }
    if (const View flag = element.member("inMenu"); flag.isTruth()) {
        wish.inMenu = flag.isTrue();
    }
    return wish;
}

void readElements(View list, WishText& result) {
    int place = 0;
    for (const View element : list.elements()) {
        Wish wish = wishOf(element, ++place);
        std::string fault = faultOf(element, wish);
        if (fault.empty()) {
            result.wishes.push_back(std::move(wish));
        } else {
            result.faults.push_back({place, std::move(fault)});
        }
    }
}

enum class Version { Required, Optional };

std::string unreadableBecauseOf(View root, Version version) {
    const View form = root.member("zelutilProfile");
    if (form && form.integer() != kProfileForm) {
        const auto number = form.integer();
        return number ? "It is a profile of form " + std::to_string(*number) + ", and this command reads form " +
                            std::to_string(kProfileForm) + "."
                      : "Its member \"zelutilProfile\" is no number.";
    }
    if (!form && version == Version::Required) {
        return "It is no profile: it has no member \"zelutilProfile\".";
    }
    return root.member("actions").isArray() ? "" : "It has no array \"actions\".";
}

WishText readJson(std::string_view text, Version version) {
    WishText result;
    const json::Document document(text);
    result.unreadable = document.valid() ? unreadableBecauseOf(document.root(), version) : "It is no JSON.";
    if (result.unreadable.empty()) {
        readElements(document.root().member("actions"), result);
    }
    return result;
}

std::string_view withoutMark(std::string_view text) {
    return text.substr(0, json::kByteOrderMark.size()) == json::kByteOrderMark
               ? text.substr(json::kByteOrderMark.size())
               : text;
}

}  // namespace

WishText readWishes(std::string_view text) {
    const std::string_view content = withoutMark(text);
    const std::size_t begin = content.find_first_not_of(" \t\r\n");
    if (begin != std::string_view::npos && content[begin] == '{') {
        return readJson(content, Version::Optional);
    }
    return LineReader().read(content);
}

WishText readProfile(std::string_view text) { return readJson(text, Version::Required); }

}  // namespace zelutil::shortcuts
