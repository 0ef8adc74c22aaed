#include "host/unread_parts.h"

#include <algorithm>

#include "json/document.h"
#include "json/inexact_numbers.h"
#include "json/writer.h"

namespace zelutil::host {
namespace {

using json::View;

constexpr std::string_view kActions = "actions";
constexpr std::string_view kId = "id";
constexpr std::string_view kShortcut = "shortcut";
constexpr std::string_view kMenuFlag = "rmb";

template <typename Set>
bool isSubset(const Set& some, const Set& all) {
    return std::includes(all.begin(), all.end(), some.begin(), some.end());
}

/// Collects what a text of the actions holds beside entries that are read.
class UnreadActions {
public:
    std::set<std::string> run(View root) {
        const json::Elements elements = root.elements();
        const View object = elements.size() == 1 ? *elements.begin() : View();
        const View list = object.member(kActions);
        if (!list.isArray()) {
            addUnlessEmpty(root);
            return std::move(found_);
        }
        for (const auto& [key, value] : object.members()) {
            if (!value.isSame(list)) {
                add(0, key, value);
            }
        }
        search(list);
        return std::move(found_);
    }

private:
    /// An element without an id ends the reading.
    void search(View list) {
        bool isRead = true;
        for (const View element : list.elements()) {
            const int id = element.member(kId).integer().value_or(0);
            isRead = isRead && id > 0;
            if (isRead) {
                searchEntry(id, element);
            } else {
                add(0, kActions, element);
            }
        }
    }

    void searchEntry(int id, View entry) {
        const View idMember = entry.member(kId);
        const View shortcut = entry.member(kShortcut);
        const View flag = entry.member(kMenuFlag);
        for (const auto& [key, value] : entry.members()) {
            const bool isRead = value.isSame(idMember) || (value.isSame(shortcut) && value.text()) ||
                                (value.isSame(flag) && value.isTruth());
            if (!isRead) {
                add(id, key, value);
            }
        }
    }

    void addUnlessEmpty(View root) {
        const bool isEmpty = root.isArray() ? root.elements().empty() : json::compactText(root) == "{}";
        if (root && !isEmpty) {
            add(0, "", root);
        }
    }

    void add(int id, std::string_view key, View value) {
        found_.insert(std::to_string(id) + " " + std::string(key) + " " +
                      json::compactText(value, json::Numbers::Exact).value_or(""));
    }

    std::set<std::string> found_;
};

/// Returns "" where there is nothing but white space and more null characters, with which file systems fill up files
/// after a crash.
std::string_view behindEndOf(std::string_view text) {
    constexpr std::string_view kNothing("\0 \t\r\n", 5);
    text.remove_prefix(std::min(text.find('\0'), text.size()));
    text.remove_prefix(std::min(text.find_first_not_of(kNothing), text.size()));
    return text;
}

std::set<std::string> unreadOfActions(std::string_view text) {
    const json::Document document(text, json::Numbers::Exact);
    return UnreadActions().run(document.root());
}

}  // namespace

bool UnreadParts::areAllIn(const UnreadParts& others) const {
    return isSubset(contents, others.contents) && isSubset(numbers, others.numbers) &&
           (behindEnd.empty() || behindEnd == others.behindEnd);
}

UnreadParts unreadPartsOf(std::string_view text, View root) {
    UnreadParts parts;
    if (root) {
        parts.contents = prefs::unreadContentOf(root);
        for (const std::string_view number : json::inexactNumbers(text)) {
            parts.numbers.emplace(number);
        }
        parts.behindEnd = std::string(behindEndOf(text));
    }
    return parts;
}

bool losesPartsOfActions(std::string_view oldText, std::string_view newText) {
    const auto before = unreadOfActions(oldText);
    return !before.empty() && !isSubset(before, unreadOfActions(newText));
}

}  // namespace zelutil::host
