#include "prefs/catalogue_reader.h"

#include <memory>
#include <utility>

#include "json/document.h"
#include "json/writer.h"
#include "prefs/section_walk.h"
#include "prefs/setting_name.h"

namespace zelutil::prefs {
namespace {

using json::View;

/// Returns the text of a value that was parsed, and so can be written.
std::string textOf(View value) { return json::compactText(value).value_or(""); }

SubManagerType subManagerOf(View section) {
    const auto id = section.member(kSubmanagerId).integer();
    return id ? SubManagerType{*id} : SubManagerType::None;
}

std::shared_ptr<Section> makeSection(const VisitedSection& visited, std::string_view tclCommand) {
    const View unique = visited.element.member(kUnique);
    auto section = std::make_shared<Section>();
    section->parentHeader = visited.parentHeader;
    section->header = visited.header;
    section->attributePath = visited.attributePath;
    section->tclCommand = tclCommand;
    section->unique = !unique || unique.isTrue();
    section->submanagerId = static_cast<std::int32_t>(subManagerOf(visited.element));
    section->hasChildren = visited.element.member(kChildren).isArray();
    return section;
}

void addSettings(View settings, const Section& section, SettingIndex::Builder& builder) {
    const std::uint64_t prefixKey = keyOf(kNameSeparator, keyOf(section.attributePath));
    for (const View element : settings.elements()) {
        const auto setting = defaultSetting(element);
        if (!setting) {
            continue;
        }
        builder.add(keyOf(setting->name, prefixKey), setting->value);
        if (section.unique) {
            builder.addKey(keyOf(setting->name));
        }
    }
}

/// Reads one section; one that only groups others has nothing of its own.
void readDefaultSection(const VisitedSection& visited, Catalogue& catalogue, SettingIndex::Builder& builder) {
    const auto tclCommand = visited.element.member(kTclCommand).text();
    const View settings = visited.element.member(kDefaultSettings);
    const SubManagerType type = subManagerOf(visited.element);
    const bool hasSubManager = type != SubManagerType::None;
    if (!tclCommand || !settings || !(hasSubManager || settings.isArray())) {
        return;
    }
    auto section = makeSection(visited, *tclCommand);
    if (hasSubManager) {
        catalogue.addDefaultSubManagerText(type, textOf(settings));
    } else {
        addSettings(settings, *section, builder);
    }
    catalogue.addSection(std::move(section));
}

// Kept deliberately: a name is tried bare or in full before it is tried within its section, so it may mean a setting of
// another section, even though a save wrote it. Part of the published behaviour; hosts may depend on it.
Setting* findNamed(std::string_view name, const std::string& attributePath, SettingIndex& settings) {
    if (Setting* const setting = settings.find(keyOf(name))) {
        return setting;
    }
    return settings.find(keyOf(name, keyOf(kNameSeparator, keyOf(attributePath))));
}

void readValues(View object, const std::string& attributePath, SettingIndex& settings) {
    for (const auto& [name, given] : object.members()) {
        const auto value = given.text();
        if (name.empty() || !value) {
            continue;
        }
        if (Setting* const setting = findNamed(name, attributePath, settings)) {
            setting->setUserValue(std::string(*value));
        }
    }
}

void readUserSection(const VisitedSection& visited, Catalogue& catalogue) {
    const View overridden = visited.element.member(kOverriddenSettings);
    const auto section = catalogue.sections().find(visited.attributePath);
    if (!overridden || section == catalogue.sections().end()) {
        return;
    }
    const SubManagerType type{section->second->submanagerId};
    if (type != SubManagerType::None) {
        catalogue.addUserSubManagerText(type, textOf(overridden));
        return;
    }
    for (const View object : overridden.elements()) {
        readValues(object, visited.attributePath, catalogue.settings());
    }
}

}  // namespace

void readDefaults(std::string text, Catalogue& catalogue) {
    SettingIndex::Builder builder;
    {
        const json::Document document(text);
        forEachSection(document.root(),
                       [&](const VisitedSection& visited) { readDefaultSection(visited, catalogue, builder); });
    }
    // After the document is gone: the index takes over its memory, which the system would have to find anew.
    catalogue.setSettings(builder.build());
    catalogue.setDefaultsText(std::move(text));
}

bool readUserSettings(std::string_view text, Catalogue& catalogue) {
    const json::Document document(text);
    forEachSection(document.root(), [&](const VisitedSection& visited) { readUserSection(visited, catalogue); });
    return document.valid();
}

}  // namespace zelutil::prefs
