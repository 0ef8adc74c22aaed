#include "prefs/catalogue_reader.h"

#include <memory>
#include <utility>

#include "json/document.h"
#include "json/writer.h"
#include "prefs/section_walk.h"
#include "prefs/setting_name.h"
#include "prefs/unread_content.h"

namespace zelutil::prefs {
namespace {

using json::View;

/// Returns the text of a value that was parsed, and so can be written.
std::string textOf(View value) { return json::compactText(value).value_or(""); }

std::shared_ptr<Section> makeSection(const VisitedSection& visited) {
    const View unique = visited.element.member(kUnique);
    auto section = std::make_shared<Section>();
    section->parentHeader = visited.parentHeader;
    section->header = visited.header;
    section->attributePath = visited.attributePath;
    section->tclCommand = *visited.element.member(kTclCommand).text();
    section->unique = !unique || unique.isTrue();
    section->submanagerId = subManagerNumber(visited.element);
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
    const bool ownSettings = hasOwnSettings(visited.element);
    if (!ownSettings && !hasSubManager(visited.element)) {
        return;
    }
    auto section = makeSection(visited);
    const View settings = visited.element.member(kDefaultSettings);
    if (ownSettings) {
        addSettings(settings, *section, builder);
    } else {
        catalogue.addDefaultSubManagerText(SubManagerType{section->submanagerId}, textOf(settings));
    }
    catalogue.addSection(std::move(section));
}

void report(EntryFinding::Kind kind, std::string_view section, std::string_view name, Catalogue& catalogue) {
    catalogue.addFinding({kind, std::string(section), std::string(name)});
}

/// Returns whether a setting that was found under a name is meant by it: it stands in that section, or is named in
/// full.
bool isMeant(const Setting& setting, std::string_view name, std::string_view attributePath) {
    return setting.key == keyOf(name) || setting.key == keyOf(name, keyOf(kNameSeparator, keyOf(attributePath)));
}

void readValue(const json::Member& entry, const std::string& attributePath, Catalogue& catalogue) {
    using Kind = EntryFinding::Kind;
    const auto value = entry.value.text();
    const Setting* const found = value ? catalogue.findEntry(entry.key, attributePath) : nullptr;
    if (found == nullptr) {
        report(value ? Kind::UnknownName : Kind::NoText, attributePath, entry.key, catalogue);
        return;
    }
    if (!isMeant(*found, entry.key, attributePath)) {
        report(Kind::AnotherSection, attributePath, entry.key, catalogue);
    }
    catalogue.settings().record(found->number).setUserValue(std::string(*value));
}

void readValues(View overridden, const std::string& attributePath, Catalogue& catalogue) {
    if (!overridden.isArray()) {
        report(EntryFinding::Kind::NoList, attributePath, "", catalogue);
    }
    for (const View element : overridden.elements()) {
        if (!element.isObject()) {
            report(EntryFinding::Kind::NoText, attributePath, "", catalogue);
        }
        for (const json::Member& entry : element.members()) {
            readValue(entry, attributePath, catalogue);
        }
    }
}

void readSubManagerText(SubManagerType type, View overridden, const std::string& attributePath, Catalogue& catalogue) {
    catalogue.addUserSubManagerText(type, textOf(overridden));
    if (hasEntries(overridden) && catalogue.userSubManagerTexts().at(type) != textOf(overridden)) {
        report(EntryFinding::Kind::NotOfTheForm, attributePath, kOverriddenSettings, catalogue);
    }
}

/// A member that the defaults hold too came from them.
void reportUnread(View root, Catalogue& catalogue) {
    const auto unread = unreadContentOf(root);
    if (unread.empty()) {
        return;
    }
    const json::Document defaults(catalogue.defaultsText());
    const auto ofDefaults = unreadContentOf(defaults.root());
    for (const UnreadContent& content : unread) {
        if (ofDefaults.count(content) == 0) {
            report(EntryFinding::Kind::NotOfTheForm, content.section, content.name, catalogue);
        }
    }
}

void readUserSection(const VisitedSection& visited, Catalogue& catalogue) {
    const View overridden = visited.element.member(kOverriddenSettings);
    const auto section = catalogue.sections().find(visited.attributePath);
    if (section == catalogue.sections().end()) {
        if (hasEntries(overridden)) {
            report(EntryFinding::Kind::UnknownSection, visited.attributePath, "", catalogue);
        }
        return;
    }
    if (!overridden) {
        return;
    }
    const SubManagerType type{section->second->submanagerId};
    if (type != SubManagerType::None) {
        readSubManagerText(type, overridden, visited.attributePath, catalogue);
        return;
    }
    readValues(overridden, visited.attributePath, catalogue);
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
    reportUnread(document.root(), catalogue);
    return document.valid();
}

}  // namespace zelutil::prefs
