#include "actions/action_text.h"

#include <algorithm>
#include <array>
#include <utility>

namespace zelutil::actions {
namespace {

constexpr std::string_view kActions = "actions";
constexpr std::string_view kId = "id";
constexpr std::string_view kShortcut = "shortcut";
constexpr std::string_view kRmb = "rmb";

/// The members of a definition, found in one walk over the element: eight searches by name cost as much as the parse.
struct DefinitionMembers {
    json::View id;
    json::View parentId;
    json::View name;
    json::View icon;
    json::View context;
    json::View command;
    json::View shortcut;
    json::View rmb;
};

struct Slot {
    std::string_view key;
    json::View DefinitionMembers::*member;
};

constexpr std::array<Slot, 8> kSlots = {{
    {kId, &DefinitionMembers::id},
    {"parent_id", &DefinitionMembers::parentId},
    {"name", &DefinitionMembers::name},
    {"icon", &DefinitionMembers::icon},
    {"context", &DefinitionMembers::context},
    {"command", &DefinitionMembers::command},
    {kShortcut, &DefinitionMembers::shortcut},
    {kRmb, &DefinitionMembers::rmb},
}};

DefinitionMembers membersOf(json::View element) {
    DefinitionMembers members;
    for (const auto& [key, value] : element.members()) {
        const auto slot = std::find_if(kSlots.begin(), kSlots.end(),
                                       [key = key](const Slot& candidate) { return candidate.key == key; });
        // Of members with one name the first counts.
        if (slot != kSlots.end() && !(members.*slot->member)) {
            members.*slot->member = value;
        }
    }
    return members;
}

std::string_view textOrEmpty(json::View value) { return value.text().value_or(std::string_view()); }

/// The one object that the user's text wraps in an array.
json::View wrapped(json::View root) {
    const json::Elements elements = root.elements();
    return elements.size() == 1 ? *elements.begin() : json::View();
}

}  // namespace

ActionDefinition definitionOf(json::View element) {
    const DefinitionMembers members = membersOf(element);
    ActionDefinition definition;
    definition.id = members.id.integer().value_or(0);
    definition.parentId = members.parentId.integer().value_or(0);
    definition.name = textOrEmpty(members.name);
    definition.icon = textOrEmpty(members.icon);
    definition.context = textOrEmpty(members.context);
    definition.command = textOrEmpty(members.command);
    definition.shortcut = textOrEmpty(members.shortcut);
    definition.inMenu = members.rmb.isTrue();
    return definition;
}

DefinitionReader::DefinitionReader(std::string_view text)
    : textSize_(text.size()),
      document_(std::in_place, json::TextStays(), text),
      elements_(document_->root().member(kActions).elements()),
      next_(elements_.begin()) {}

DefinitionReader::DefinitionReader(json::View root)
    : textSize_(json::kMaximumTextSize), elements_(root.member(kActions).elements()), next_(elements_.begin()) {}

std::size_t DefinitionReader::count() const {
    constexpr std::string_view kShortest = R"({"id":1,"context":"c","command":"c"})";
    return std::min(elements_.size(), textSize_ / kShortest.size());
}

bool DefinitionReader::next(ActionDefinition& definition) {
    if (next_ == elements_.end()) {
        return false;
    }
    definition = definitionOf(*next_);
    ++next_;
    return true;
}

json::View userEntriesOf(json::View root) {
    const json::View list = wrapped(root).member(kActions);
    return list.isArray() ? list : json::View();
}

UserEntry userEntryOf(json::View element) {
    const json::View shortcut = element.member(kShortcut);
    const json::View rmb = element.member(kRmb);
    UserEntry entry;
    entry.id = element.member(kId).integer().value_or(0);
    entry.shortcut = shortcut ? std::optional(textOrEmpty(shortcut)) : std::nullopt;
    entry.inMenu = rmb ? std::optional(rmb.isTrue()) : std::nullopt;
    return entry;
}

UserEntryReader::UserEntryReader(std::string_view text)
    : document_(text), elements_(userEntriesOf(document_.root()).elements()), next_(elements_.begin()) {}

bool UserEntryReader::next(UserEntry& entry) {
    if (next_ == elements_.end()) {
        return false;
    }
    entry = userEntryOf(*next_);
    // Kept deliberately: an element without an id ends the reading, and the later ones are lost. A damaged list is
    // applied up to the damage and no further.
    if (entry.id < 1) {
        next_ = elements_.end();
        return false;
    }
    ++next_;
    return true;
}

UserTextWriter::UserTextWriter() {
    writer_.beginObject();
    writer_.key(kActions);
    writer_.beginArray();
}

void UserTextWriter::add(int id, const OverwritableValue<std::string>& shortcut, const OverwritableValue<bool>& rmb) {
    writer_.beginObject();
    // Kept deliberately: an item that stands in for a missing parent is written, once it was edited, with its id 0.
    writer_.key(kId);
    writer_.integer(id);
    if (shortcut.overwritten) {
        writer_.key(kShortcut);
        writer_.text(shortcut.userValue);
    }
    if (rmb.overwritten) {
        writer_.key(kRmb);
        writer_.truth(rmb.userValue);
    }
    writer_.endObject();
}

std::string UserTextWriter::text() {
    writer_.endArray();
    writer_.endObject();
    return writer_.take().value_or(std::string());
}

}  // namespace zelutil::actions
