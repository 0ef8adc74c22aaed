#include "prefs/save_layout.h"

#include <utility>

#include "json/document.h"
#include "prefs/setting_name.h"

namespace zelutil::prefs {
namespace {

std::uint32_t placeIn(const SettingIndex& settings, std::uint64_t key) {
    const std::size_t place = settings.placeOf(key);
    return place == settings.size() ? SaveLayout::kNone : static_cast<std::uint32_t>(place);
}

}  // namespace

SaveLayout::SaveLayout(const Catalogue& catalogue)
    : firstAtPlaces_(catalogue.settings().size(), kNone), placesOfRecords_(catalogue.settings().recordCount(), kNone) {
    findPlaces(catalogue.settings());
    const json::Document defaults(json::TextStays(), catalogue.defaultsText());
    form_ = userFileForm(defaults.root());
    definitions_.reserve(placesOfRecords_.size());
    forEachSection(defaults.root(), [&](const VisitedSection& visited) { addSection(catalogue, visited); });
}

std::shared_ptr<SaveLayout> SaveLayout::of(const Catalogue& catalogue) {
    std::shared_ptr<SaveLayout>& kept = catalogue.keptForSaves().layout;
    if (kept == nullptr) {
        kept = std::make_shared<SaveLayout>(catalogue);
    }
    return kept;
}

std::uint32_t SaveLayout::recordRead(const Catalogue& catalogue, const Section& section, std::uint32_t definition) {
    std::uint32_t& record = definitions_[definition].recordRead;
    if (record == kNotAsked) {
        const Setting* const found =
            section.isRead ? catalogue.findEntry(nameOf(definition), section.attributePath) : nullptr;
        record = found == nullptr ? kNone : found->number;
    }
    return record;
}

/// Goes over the index in its order, which takes less time than to ask it for each record.
void SaveLayout::findPlaces(const SettingIndex& settings) {
    std::vector<std::uint32_t> otherPlaces;
    for (std::uint32_t place = 0; place < settings.size(); ++place) {
        const Setting& setting = settings.at(place);
        if (settings.keyAt(place) == setting.key) {
            placesOfRecords_[setting.number] = place;
        } else {
            otherPlaces.push_back(place);
        }
    }
    std::vector<std::uint32_t> sharers;
    for (const std::uint32_t place : otherPlaces) {
        const Setting& setting = settings.at(place);
        if (placesOfRecords_[setting.number] == kNone) {
            sharers.push_back(placeIn(settings, setting.key));
            placesOfRecords_[setting.number] = sharers.back();
        }
    }
    if (!sharers.empty()) {
        findSharedPlaces(settings, std::set<std::uint32_t>(sharers.begin(), sharers.end()));
    }
}

void SaveLayout::findSharedPlaces(const SettingIndex& settings, const std::set<std::uint32_t>& fullNames) {
    for (std::uint32_t place = 0; place < settings.size(); ++place) {
        if (fullNames.count(placesOfRecords_[settings.at(place).number]) != 0) {
            sharedPlaces_.push_back(place);
        }
    }
}

void SaveLayout::addSection(const Catalogue& catalogue, const VisitedSection& visited) {
    const auto section = catalogue.sections().find(visited.attributePath);
    const bool isRead = section != catalogue.sections().end();
    const SubManagerType owner = isRead ? SubManagerType{section->second->submanagerId} : SubManagerType::None;
    const auto begin = static_cast<std::uint32_t>(definitions_.size());
    addDefinitions(catalogue.settings(), visited, owner == SubManagerType::None);
    const auto end = static_cast<std::uint32_t>(definitions_.size());
    // Paths repeat those of the sections around them: deep sections that only group would hold most of the memory.
    sections_.push_back({begin == end ? std::string() : visited.attributePath, owner, isRead, begin, end});
}

/// Adds them where the section has no owner. Those that made a record are counted in any case, and their names need no
/// hash.
void SaveLayout::addDefinitions(const SettingIndex& settings, const VisitedSection& visited, bool isWithoutOwner) {
    const bool haveRecords = hasOwnSettings(visited.element);
    const std::uint64_t prefixKey = keyOf(kNameSeparator, keyOf(visited.attributePath));
    for (const json::View element : visited.element.member(kDefaultSettings).elements()) {
        const auto setting = defaultSetting(element);
        if (!setting) {
            continue;
        }
        const std::uint32_t place = haveRecords ? placesOfRecords_[recordsMet_++] : kNone;
        if (isWithoutOwner) {
            addDefinition(setting->name, place == kNone ? placeIn(settings, keyOf(setting->name, prefixKey)) : place);
        }
    }
}

void SaveLayout::addDefinition(std::string_view name, std::uint32_t place) {
    const auto begin = static_cast<std::uint32_t>(names_.size());
    std::uint32_t next = kNone;
    if (place != kNone) {
        next = std::exchange(firstAtPlaces_[place], static_cast<std::uint32_t>(definitions_.size()));
    }
    names_ += name;
    definitions_.push_back({begin, static_cast<std::uint32_t>(name.size()), place, next});
}

}  // namespace zelutil::prefs
