#include "actions/action_text.h"

#include <algorithm>
#include <array>

namespace zelutil::actions {
namespace {

constexpr const char* kActions = "actions";

/// The members of a definition, found in one walk over the element: eight searches by name cost as much as the parse.
struct DefinitionMembers {
    const json::Value* id = nullptr;
    const json::Value* parentId = nullptr;
    const json::Value* name = nullptr;
    const json::Value* icon = nullptr;
    const json::Value* context = nullptr;
    const json::Value* command = nullptr;
    const json::Value* shortcut = nullptr;
    const json::Value* rmb = nullptr;
};

struct Slot {
    std::string_view key;
    const json::Value* DefinitionMembers::*member;
};

constexpr std::array<Slot, 8> kSlots = {{
    {"id", &DefinitionMembers::id},
    {"parent_id", &DefinitionMembers::parentId},
    {"name", &DefinitionMembers::name},
    {"icon", &DefinitionMembers::icon},
    {"context", &DefinitionMembers::context},
    {"command", &DefinitionMembers::command},
    {"shortcut", &DefinitionMembers::shortcut},
    {"rmb", &DefinitionMembers::rmb},
}};

DefinitionMembers membersOf(const json::Value& element) {
    DefinitionMembers members;
    if (!element.IsObject()) {
        return members;
    }
    for (auto member = element.MemberBegin(); member != element.MemberEnd(); ++member) {
        const std::string_view key(member->name.GetString(), member->name.GetStringLength());
        const auto slot =
            std::find_if(kSlots.begin(), kSlots.end(), [key](const Slot& candidate) { return candidate.key == key; });
        // Of members with one name the first counts.
        if (slot != kSlots.end() && members.*slot->member == nullptr) {
            members.*slot->member = &member->value;
        }
    }
    return members;
}

int integerOrZero(const json::Value* value) { return value != nullptr && value->IsInt() ? value->GetInt() : 0; }

std::string_view stringOrEmpty(const json::Value* value) {
    return value == nullptr ? std::string_view() : json::string(*value).value_or(std::string_view());
}

bool isTrue(const json::Value* value) { return value != nullptr && value->IsTrue(); }

/// The one object that the user's text wraps in an array.
const json::Value* wrapped(const json::Value& root) {
    return root.IsArray() && root.Size() == 1 ? root.Begin() : nullptr;
}

}  // namespace

DefinitionReader::DefinitionReader(std::string_view text) : text_(text) {
    if (const json::Value* const list = json::arrayMember(text_.root(), kActions)) {
        next_ = list->Begin();
        end_ = list->End();
    }
}

bool DefinitionReader::next(ActionDefinition& definition) {
    if (next_ == end_) {
        return false;
    }
    const DefinitionMembers members = membersOf(*next_++);
    definition.id = integerOrZero(members.id);
    definition.parentId = integerOrZero(members.parentId);
    definition.name = stringOrEmpty(members.name);
    definition.icon = stringOrEmpty(members.icon);
    definition.context = stringOrEmpty(members.context);
    definition.command = stringOrEmpty(members.command);
    definition.shortcut = stringOrEmpty(members.shortcut);
    definition.inMenu = isTrue(members.rmb);
    return true;
}

UserEntryReader::UserEntryReader(std::string_view text) : text_(text) {
    const json::Value* const object = wrapped(text_.root());
    const json::Value* const list = object == nullptr ? nullptr : json::arrayMember(*object, kActions);
    if (list != nullptr) {
        next_ = list->Begin();
        end_ = list->End();
    }
}

bool UserEntryReader::next(UserEntry& entry) {
    // Kept deliberately: an element without an id ends the reading, and the later ones are lost. A damaged list is
    // applied up to the damage and no further.
    const int id = next_ == end_ ? 0 : json::integerMember(*next_, "id").value_or(0);
    if (id < 1) {
        next_ = end_;
        return false;
    }
    const json::Value* const shortcut = json::member(*next_, "shortcut");
    const json::Value* const rmb = json::member(*next_, "rmb");
    entry.id = id;
    entry.shortcut = shortcut == nullptr ? std::nullopt : std::optional(stringOrEmpty(shortcut));
    entry.inMenu = rmb == nullptr ? std::nullopt : std::optional(isTrue(rmb));
    ++next_;
    return true;
}

UserTextWriter::UserTextWriter() { list_.SetArray(); }

void UserTextWriter::add(int id, const OverwritableValue<std::string>& shortcut, const OverwritableValue<bool>& rmb) {
    json::Document::AllocatorType& allocator = document_.GetAllocator();
    json::Value entry;
    entry.SetObject();
    // Kept deliberately: an item that stands in for a missing parent is written, once it was edited, with its id 0.
    entry.AddMember("id", id, allocator);
    if (shortcut.overwritten) {
        const std::string& value = shortcut.userValue;
        json::Value text(value.data(), static_cast<unsigned>(value.size()), allocator);
        entry.AddMember("shortcut", text, allocator);
    }
    if (rmb.overwritten) {
        entry.AddMember("rmb", rmb.userValue, allocator);
    }
    list_.PushBack(entry, allocator);
}

std::string UserTextWriter::text() {
    document_.SetObject();
    document_.AddMember("actions", list_, document_.GetAllocator());
    return json::compactText(document_).value_or(std::string());
}

}  // namespace zelutil::actions
