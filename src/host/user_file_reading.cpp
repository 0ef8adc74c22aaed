#include "host/user_file_reading.h"

#include <utility>

namespace zelutil::host {

using json::View;
using prefs::KeptSection;
using prefs::Setting;
using prefs::SubManagerType;
using prefs::VisitedSection;

UserFileReading::UserFileReading(const prefs::Catalogue& catalogue, View root)
    : catalogue_(catalogue), values_(catalogue.settings().recordCount()) {
    prefs::forEachSection(root, [this](const VisitedSection& visited) { readSection(visited); });
}

View UserFileReading::subManagerValue(SubManagerType type) const {
    const auto found = subManagerValues_.find(type);
    return found == subManagerValues_.end() ? View() : found->second;
}

std::vector<prefs::SavedSection::Value> UserFileReading::takeUnknownEntries(const std::string& attributePath) {
    const auto found = unknownEntries_.find(attributePath);
    return found == unknownEntries_.end() ? std::vector<prefs::SavedSection::Value>()
                                          : std::exchange(found->second, {});
}

void UserFileReading::readSection(const VisitedSection& visited) {
    const View overridden = visited.element.member(prefs::kOverriddenSettings);
    const auto section = catalogue_.sections().find(visited.attributePath);
    const bool known = section != catalogue_.sections().end();
    if (known && overridden && section->second->submanagerId != prefs::kNoSubManager) {
        subManagerValues_.try_emplace(SubManagerType{section->second->submanagerId}, overridden);
    } else if (known && overridden.isArray()) {
        readEntries(visited, overridden);
    } else if (prefs::hasEntries(overridden)) {
        kept_.push_back({visited.header, visited.attributePath, {}, overridden});
    }
}

void UserFileReading::readEntries(const VisitedSection& visited, View overridden) {
    KeptSection rest{visited.header, visited.attributePath, {}, {}};
    for (const View element : overridden.elements()) {
        if (!element.isObject()) {
            rest.entries.push_back({std::nullopt, element});
        }
        for (const json::Member& entry : element.members()) {
            readEntry(entry, visited.attributePath, rest);
        }
    }
    if (!rest.entries.empty()) {
        kept_.push_back(std::move(rest));
    }
}

/// A value that is no text may nest deeply, so it is not left to the depth of its section.
void UserFileReading::readEntry(const json::Member& entry, const std::string& attributePath, KeptSection& rest) {
    const auto value = entry.value.text();
    if (!value) {
        rest.entries.push_back({entry.key, entry.value});
    } else if (const Setting* const setting = catalogue_.findEntry(entry.key, attributePath)) {
        values_[setting->number] = value;
    } else {
        unknownEntries_[attributePath].push_back({entry.key, *value});
    }
}

}  // namespace zelutil::host
