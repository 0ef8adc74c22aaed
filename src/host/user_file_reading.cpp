#include "host/user_file_reading.h"

#include <map>
#include <utility>

#include "json/writer.h"

namespace zelutil::host {

using json::View;
using prefs::KeptSection;
using prefs::Setting;
using prefs::SubManagerType;
using prefs::VisitedSection;

namespace {

/// Whether a file has members of that name by its layout. Without anything else they say nothing of the user's.
bool isOfLayout(std::string_view key) {
    static const std::set<std::string_view> keys = {
        prefs::kHeader, prefs::kAttribute,    prefs::kTclCommand, prefs::kDefaultSettings, prefs::kOverriddenSettings,
        prefs::kUnique, prefs::kSubmanagerId, prefs::kChildren};
    return keys.count(key) != 0;
}

/// Whether a kept section has the member in another way.
bool isOfKeptSection(std::string_view key) {
    return key == prefs::kHeader || key == prefs::kAttribute || key == prefs::kChildren ||
           key == prefs::kOverriddenSettings;
}

template <typename Values>
Values taken(std::map<std::string, Values>& byPath, const std::string& attributePath) {
    const auto found = byPath.find(attributePath);
    return found == byPath.end() ? Values() : std::exchange(found->second, {});
}

}  // namespace

UserFileReading::UserFileReading(const prefs::Catalogue& catalogue, View defaults, View root)
    : catalogue_(catalogue), values_(catalogue.settings().recordCount()) {
    readDefaults(defaults);
    readMembers(defaults, root);
    prefs::forEachSection(root, [this](const VisitedSection& visited) { readSection(visited); });
}

View UserFileReading::subManagerValue(SubManagerType type) const {
    const auto found = subManagerValues_.find(type);
    return found == subManagerValues_.end() ? View() : found->second;
}

std::vector<prefs::KeptEntry> UserFileReading::takeUnknownEntries(const std::string& attributePath) {
    return taken(unknownEntries_, attributePath);
}

std::vector<json::Member> UserFileReading::takeMembers(const std::string& attributePath) {
    return taken(sectionMembers_, attributePath);
}

void UserFileReading::readDefaults(View defaults) {
    prefs::forEachSection(defaults, [this](const VisitedSection& visited) {
        auto& keys = defaultMembers_[visited.attributePath];
        for (const json::Member& member : visited.element.members()) {
            keys.insert(member.key);
        }
    });
}

/// Takes as many members of one name for those of the defaults as the defaults have; the ones after them are kept.
void UserFileReading::readMembers(View defaults, View root) {
    std::map<std::string_view, std::size_t> ofDefaults;
    for (const json::Member& member : defaults.members()) {
        ++ofDefaults[member.key];
    }
    for (const json::Member& member : root.members()) {
        std::size_t& left = ofDefaults[member.key];
        if (left == 0) {
            members_.push_back(member);
        } else {
            --left;
        }
    }
}

void UserFileReading::readSection(const VisitedSection& visited) {
    const View overridden = visited.element.member(prefs::kOverriddenSettings);
    if (defaultMembers_.count(visited.attributePath) == 0) {
        readUnknownSection(visited, overridden);
        return;
    }
    const auto members = unknownMembers(visited);
    auto& all = sectionMembers_[visited.attributePath];
    all.insert(all.end(), members.begin(), members.end());
    const auto section = catalogue_.sections().find(visited.attributePath);
    const bool known = section != catalogue_.sections().end();
    if (known && overridden && section->second->submanagerId != prefs::kNoSubManager) {
        readSubManagerValue(SubManagerType{section->second->submanagerId}, visited.attributePath, overridden);
    } else if (known && overridden.isArray()) {
        readEntries(visited.attributePath, overridden);
    } else if (prefs::hasEntries(overridden)) {
        kept_.push_back({visited.header, visited.attributePath, {}, {}, overridden});
    }
}

std::vector<json::Member> UserFileReading::unknownMembers(const VisitedSection& visited) const {
    std::vector<json::Member> unknown;
    const auto known = defaultMembers_.find(visited.attributePath);
    for (const json::Member& member : visited.element.members()) {
        const bool isKnown = known != defaultMembers_.end() && known->second.count(member.key) != 0;
        if (!isKnown && !isOfLayout(member.key)) {
            unknown.push_back(member);
        }
    }
    return unknown;
}

void UserFileReading::readSubManagerValue(SubManagerType type, const std::string& attributePath, View overridden) {
    const auto [first, isNew] = subManagerValues_.try_emplace(type, overridden);
    if (isNew || !prefs::hasEntries(overridden)) {
        return;
    }
    const std::string text = json::compactText(overridden).value_or("");
    if (text != json::compactText(first->second)) {
        secondValues_.push_back({attributePath, std::string(prefs::kOverriddenSettings), text});
    }
}

void UserFileReading::readUnknownSection(const VisitedSection& visited, View overridden) {
    if (!prefs::hasEntries(overridden) && unknownMembers(visited).empty()) {
        return;
    }
    KeptSection section{visited.header, visited.attributePath, {}, {}, overridden};
    for (const json::Member& member : visited.element.members()) {
        if (!isOfKeptSection(member.key)) {
            section.members.push_back(member);
        }
    }
    kept_.push_back(std::move(section));
}

void UserFileReading::readEntries(const std::string& attributePath, View overridden) {
    std::vector<prefs::KeptEntry>& unknown = unknownEntries_[attributePath];
    for (const View element : overridden.elements()) {
        if (!element.isObject()) {
            unknown.push_back({std::nullopt, element});
        }
        for (const json::Member& entry : element.members()) {
            readEntry(entry, attributePath, unknown);
        }
    }
}

void UserFileReading::readEntry(const json::Member& entry, const std::string& attributePath,
                                std::vector<prefs::KeptEntry>& unknown) {
    const auto value = entry.value.text();
    const Setting* const setting = value ? catalogue_.findEntry(entry.key, attributePath) : nullptr;
    if (setting == nullptr) {
        unknown.push_back({entry.key, entry.value});
    } else {
        values_[setting->number] = value;
    }
}

}  // namespace zelutil::host
