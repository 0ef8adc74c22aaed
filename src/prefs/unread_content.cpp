#include "prefs/unread_content.h"

#include <string_view>
#include <tuple>
#include <utility>

#include "json/writer.h"
#include "prefs/joined_names.h"
#include "prefs/section_walk.h"

namespace zelutil::prefs {
namespace {

using json::View;

/// Looks through a file as the walk over the sections goes, and takes what that passes over.
class UnreadSearch {
public:
    std::set<UnreadContent> run(View root) {
        if (root && !root.isObject()) {
            add("", root);
        }
        searchMember(root, kMeta);
        return std::move(found_);
    }

private:
    /// Looks through a member that holds sections.
    void searchMember(View object, std::string_view name) {
        const View first = object.member(name);
        addRepetitions(object, name);
        if (first && !first.isArray()) {
            add(name, first);
        }
        for (const View element : first.elements()) {
            if (const auto names = sectionNames(element)) {
                searchSection(element, names->attribute);
            } else {
                add(name, element);
            }
        }
    }

    void searchSection(View section, std::string_view attribute) {
        const JoinedNames::Level level(path_, attribute);
        addRepetitions(section, kOverriddenSettings);
        searchMember(section, kChildren);
    }

    void addRepetitions(View object, std::string_view name) {
        const View first = object.member(name);
        for (const auto& [key, value] : object.members()) {
            if (key == name && !value.isSame(first)) {
                add(name, value);
            }
        }
    }

    void add(std::string_view name, View value) {
        found_.insert({path_.text(), std::string(name), json::compactText(value, json::Numbers::Exact).value_or("")});
    }

    JoinedNames path_;
    std::set<UnreadContent> found_;
};

}  // namespace

bool UnreadContent::operator<(const UnreadContent& other) const {
    return std::tie(section, name, text) < std::tie(other.section, other.name, other.text);
}

std::set<UnreadContent> unreadContentOf(View root) { return UnreadSearch().run(root); }

}  // namespace zelutil::prefs
