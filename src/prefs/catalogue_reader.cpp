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

/// Is told of definitions and does nothing. The library's own reading has nobody to tell, and none of it is left in the
/// machine code then.
struct NoDefinitionSink {
    void operator()(const Definition& /*definition*/) const {}
};

template <typename Sink>
void addSettings(View settings, const Section& section, SettingIndex::Builder& builder, const Sink& sink) {
    const std::uint64_t prefixKey = keyOf(kNameSeparator, keyOf(section.attributePath));
    for (const View element : settings.elements()) {
        const auto setting = defaultSetting(element);
        if (!setting) {
            continue;
        }
        const std::uint32_t number = builder.add(keyOf(setting->name, prefixKey), setting->value);
        if (section.unique) {
            builder.addKey(keyOf(setting->name));
        }
        sink(Definition{number, setting->name, section.attributePath, section.unique, element});
    }
}

/// Reads one section; one that only groups others has nothing of its own.
template <typename Sink>
void readDefaultSection(const VisitedSection& visited, Catalogue& catalogue, SettingIndex::Builder& builder,
                        const Sink& sink) {
    const bool ownSettings = hasOwnSettings(visited.element);
    if (!ownSettings && !hasSubManager(visited.element)) {
        return;
    }
    auto section = makeSection(visited);
    const View settings = visited.element.member(kDefaultSettings);
    if (ownSettings) {
        addSettings(settings, *section, builder, sink);
    } else {
        catalogue.addDefaultSubManagerText(SubManagerType{section->submanagerId}, textOf(settings));
    }
    catalogue.addSection(std::move(section));
}

template <typename Sink>
void readSections(View root, Catalogue& catalogue, SettingIndex::Builder& builder, const Sink& sink) {
    forEachSection(root, [&](const VisitedSection& visited) { readDefaultSection(visited, catalogue, builder, sink); });
}

template <typename Sink>
void readAll(View root, Catalogue& catalogue, const Sink& sink) {
    SettingIndex::Builder builder;
    readSections(root, catalogue, builder, sink);
    catalogue.setSettings(builder.build());
}

/// Is told of entries and does nothing, as `NoDefinitionSink`.
struct NoEntrySinks {
    struct Nothing {
        template <typename... Parts>
        void operator()(const Parts&... /*parts*/) const {}
    };
    Nothing finding;
    Nothing accepted;
};

/// Reads a user's text into a catalogue, and tells what it finds there.
template <typename Sinks>
class UserTextReader {
public:
    UserTextReader(Catalogue& catalogue, const Sinks& sinks) : catalogue_(catalogue), sinks_(sinks) {}

    void readSection(const VisitedSection& visited);
    void reportUnread(View root);

private:
    using Kind = EntryFinding::Kind;

    void report(Kind kind, std::string_view section, std::string_view name, View place);
    void readValue(const json::Member& entry, const std::string& attributePath);
    void readValues(View overridden, const std::string& attributePath);
    void readSubManagerText(SubManagerType type, View overridden, const std::string& attributePath);

    Catalogue& catalogue_;
    const Sinks& sinks_;
};

template <typename Sinks>
void UserTextReader<Sinks>::report(Kind kind, std::string_view section, std::string_view name, View place) {
    EntryFinding finding{kind, std::string(section), std::string(name)};
    sinks_.finding(finding, place);
    catalogue_.addFinding(std::move(finding));
}

/// Returns whether a setting that was found under a name is meant by it: it stands in that section, or is named in
/// full.
bool isMeant(const Setting& setting, std::string_view name, std::string_view attributePath) {
    return setting.key == keyOf(name) || setting.key == keyOf(name, keyOf(kNameSeparator, keyOf(attributePath)));
}

template <typename Sinks>
void UserTextReader<Sinks>::readValue(const json::Member& entry, const std::string& attributePath) {
    const auto value = entry.value.text();
    const Setting* const found = value ? catalogue_.findEntry(entry.key, attributePath) : nullptr;
    if (found == nullptr) {
        report(value ? Kind::UnknownName : Kind::NoText, attributePath, entry.key, entry.value);
        return;
    }
    if (!isMeant(*found, entry.key, attributePath)) {
        report(Kind::AnotherSection, attributePath, entry.key, entry.value);
    }
    sinks_.accepted(AcceptedEntry{*found, attributePath, entry});
    catalogue_.settings().record(found->number).setUserValue(std::string(*value));
}

template <typename Sinks>
void UserTextReader<Sinks>::readValues(View overridden, const std::string& attributePath) {
    if (!overridden.isArray()) {
        report(Kind::NoList, attributePath, "", overridden);
    }
    for (const View element : overridden.elements()) {
        if (!element.isObject()) {
            report(Kind::NoText, attributePath, "", element);
        }
        for (const json::Member& entry : element.members()) {
            readValue(entry, attributePath);
        }
    }
}

template <typename Sinks>
void UserTextReader<Sinks>::readSubManagerText(SubManagerType type, View overridden, const std::string& attributePath) {
    catalogue_.addUserSubManagerText(type, textOf(overridden));
    if (hasEntries(overridden) && catalogue_.userSubManagerTexts().at(type) != textOf(overridden)) {
        report(Kind::NotOfTheForm, attributePath, kOverriddenSettings, overridden);
    }
}

/// A member that the defaults hold too came from them.
template <typename Sinks>
void UserTextReader<Sinks>::reportUnread(View root) {
    const auto unread = unreadContentOf(root);
    if (unread.empty()) {
        return;
    }
    const json::Document defaults(json::TextStays(), catalogue_.defaultsText());
    const auto ofDefaults = unreadContentOf(defaults.root());
    for (const UnreadContent& content : unread) {
        if (ofDefaults.count(content) == 0) {
            report(Kind::NotOfTheForm, content.section, content.name, root);
        }
    }
}

template <typename Sinks>
void UserTextReader<Sinks>::readSection(const VisitedSection& visited) {
    const View overridden = visited.element.member(kOverriddenSettings);
    const auto section = catalogue_.sections().find(visited.attributePath);
    if (section == catalogue_.sections().end()) {
        if (hasEntries(overridden)) {
            report(Kind::UnknownSection, visited.attributePath, "", visited.element);
        }
        return;
    }
    if (!overridden) {
        return;
    }
    const SubManagerType type{section->second->submanagerId};
    if (type != SubManagerType::None) {
        readSubManagerText(type, overridden, visited.attributePath);
        return;
    }
    readValues(overridden, visited.attributePath);
}

template <typename Sinks>
void readUser(View root, Catalogue& catalogue, const Sinks& sinks) {
    UserTextReader<Sinks> reader(catalogue, sinks);
    forEachSection(root, [&](const VisitedSection& visited) { reader.readSection(visited); });
    reader.reportUnread(root);
}

}  // namespace

void readDefaults(View root, Catalogue& catalogue) { readAll(root, catalogue, NoDefinitionSink()); }

void readDefaults(View root, Catalogue& catalogue, const DefinitionSink& sink) { readAll(root, catalogue, sink); }

void readDefaults(std::string text, Catalogue& catalogue) {
    SettingIndex::Builder builder;
    {
        const json::Document document(json::TextStays(), text);
        readSections(document.root(), catalogue, builder, NoDefinitionSink());
    }
    // After the document is gone: the index takes over its memory, which the system would have to find anew.
    catalogue.setSettings(builder.build());
    catalogue.setDefaultsText(std::move(text));
}

bool readUserSettings(std::string_view text, Catalogue& catalogue) {
    const json::Document document(json::TextStays(), text);
    readUser(document.root(), catalogue, NoEntrySinks());
    return document.valid();
}

void readUserSettings(View root, Catalogue& catalogue, const FindingSink& sink) {
    readUserSettings(root, catalogue, EntrySinks{sink, [](const AcceptedEntry& /*entry*/) {}});
}

void readUserSettings(View root, Catalogue& catalogue, const EntrySinks& sinks) { readUser(root, catalogue, sinks); }

}  // namespace zelutil::prefs
