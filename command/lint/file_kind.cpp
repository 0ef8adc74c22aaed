#include "command/lint/file_kind.h"

#include <zelutil/util/ascii.h>

#include <algorithm>
#include <array>

#include "prefs/section_walk.h"

namespace zelutil::lint {
namespace {

using json::View;

/// As many members tell a file of any size.
constexpr std::size_t kMostMembers = 2000;

struct Votes {
    std::size_t defaults = 0;
    std::size_t user = 0;
    std::size_t facets = 0;
    std::size_t left = kMostMembers;
};

/// Returns whether members inside have names of the user's or of a sub-manager's, which tell nothing.
bool holdsNames(const json::Member& member) {
    return member.key == prefs::kOverriddenSettings || member.key == prefs::kDefaultSettings;
}

void countMember(const json::Member& member, View object, Votes& votes) {
    const std::string_view key = member.key;
    if (key == prefs::kDefaultSettings || key == prefs::kTclCommand) {
        ++votes.defaults;
    } else if (key == prefs::kOverriddenSettings) {
        ++votes.user;
    } else if (key == "facets" ? member.value.isArray() : key == "type" && object.member(prefs::kName)) {
        ++votes.facets;
    }
}

/// Recurses as deep as the document nests.
void countMembers(View value, Votes& votes) {
    for (const json::Member& member : value.members()) {
        if (votes.left == 0) {
            return;
        }
        --votes.left;
        countMember(member, value, votes);
        if (!holdsNames(member)) {
            countMembers(member.value, votes);
        }
    }
    for (const View element : value.elements()) {
        countMembers(element, votes);
    }
}

bool isShippedAction(View element) { return element.member("context") || element.member("command"); }

/// Returns whether most elements are entries of a user.
bool isOfUser(View list) {
    std::size_t shipped = 0;
    for (const View element : list.elements()) {
        shipped += isShippedAction(element) ? 1U : 0U;
    }
    return 2 * shipped < list.elements().size();
}

FileKind kindOfActions(View root) {
    if (root.isArray()) {
        return FileKind::UserActions;
    }
    return isOfUser(root.member("actions")) ? FileKind::UserActions : FileKind::Actions;
}

bool holdsActions(View root) {
    if (root.member("actions")) {
        return true;
    }
    for (const View element : root.elements()) {
        if (element.member("actions")) {
            return true;
        }
    }
    return false;
}

/// Without a member that tells: sections have attributes, groups of facets have not.
FileKind kindOfSections(View sections) {
    for (const View element : sections.elements()) {
        if (element.member(prefs::kAttribute)) {
            return FileKind::User;
        }
    }
    return sections.elements().empty() ? FileKind::User : FileKind::Facets;
}

}  // namespace

FileKind kindOf(View root) {
    if (root.member("zelutilProfile")) {
        return FileKind::Profile;
    }
    if (holdsActions(root)) {
        return kindOfActions(root);
    }
    Votes votes;
    countMembers(root, votes);
    const std::size_t most = std::max({votes.defaults, votes.user, votes.facets});
    if (most == 0) {
        return root.member(prefs::kMeta) ? kindOfSections(root.member(prefs::kMeta)) : FileKind::Unknown;
    }
    if (votes.user == most) {
        return FileKind::User;
    }
    return votes.defaults == most ? FileKind::Defaults : FileKind::Facets;
}

const char* nameOf(FileKind kind) {
    constexpr std::array kNames = {
        "preference defaults",    "user's preferences",  "shipped actions", "user's actions", "facets",
        "a profile of shortcuts", "nothing that is read"};
    return kNames[static_cast<std::size_t>(kind)];
}

}  // namespace zelutil::lint
