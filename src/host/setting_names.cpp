#include "host/setting_names.h"

#include <algorithm>
#include <map>

#include "host/setting_definition.h"
#include "json/document.h"

namespace zelutil::host {

using prefs::VisitedSection;

SettingNames::SettingNames(const prefs::Catalogue& catalogue) {
    const json::Document defaults(catalogue.defaultsText());
    prefs::DefinitionCount count;
    std::map<std::string, std::uint32_t> places;
    prefs::forEachSection(defaults.root(), [&](const VisitedSection& visited) {
        if (!prefs::hasOwnSettings(visited.element) && !prefs::hasSubManager(visited.element)) {
            return;
        }
        const auto [place, isNew] =
            places.try_emplace(visited.attributePath, static_cast<std::uint32_t>(sections_.size()));
        if (isNew) {
            sections_.push_back(visited.attributePath);
        }
        count.inSection(visited, [&, section = place->second](std::uint32_t number, const prefs::DefaultSetting& made) {
            if (const auto one = settingDefinition(catalogue, number, made.name, visited.attributePath)) {
                settings_.push_back({number, std::string(made.name), section, one->foundInFull, one->foundByName});
            }
        });
    });
}

const SettingNames::Names* SettingNames::find(const prefs::Setting& setting) const {
    const auto found = std::lower_bound(settings_.begin(), settings_.end(), setting.number,
                                        [](const Names& names, std::uint32_t number) { return names.number < number; });
    return found == settings_.end() || found->number != setting.number ? nullptr : &*found;
}

}  // namespace zelutil::host
