// The reader tells of what it takes and of what is odd. What it has passed over is looked for afterwards.
#include "command/explain/user_entries.h"

#include <algorithm>
#include <map>
#include <set>
#include <string_view>
#include <unordered_map>
#include <utility>

#include "prefs/catalogue_reader.h"
#include "prefs/joined_names.h"
#include "prefs/section_walk.h"

namespace zelutil::command {
namespace {

/// Holds the entries that were found, by the places of their values.
class EntryList {
public:
    EntryList(const json::LocatedDocument& user, const prefs::Catalogue& catalogue)
        : user_(user), catalogue_(catalogue) {}

    std::size_t placeOf(json::View value) const { return user_.positionOf(value).value_or(json::Position()).offset; }
    bool has(json::View value) const { return entries_.count(placeOf(value)) != 0; }

    FoundEntry& add(std::string_view section, const json::Member& member, UserEntry::Effect effect) {
        FoundEntry entry;
        entry.section = section;
        entry.name = member.key;
        entry.value = member.value;
        entry.nameAt = user_.keyPositionOf(member.value).value_or(json::Position());
        entry.effect = effect;
        entry.means = meant(section, member.key);
        return entries_.insert_or_assign(placeOf(member.value), std::move(entry)).first->second;
    }

    std::optional<std::uint32_t> meant(std::string_view section, std::string_view name) const {
        const prefs::Setting* const setting = catalogue_.findEntry(name, section);
        return setting == nullptr ? std::nullopt : std::optional(setting->number);
    }

    std::vector<FoundEntry> take() {
        std::vector<FoundEntry> all;
        all.reserve(entries_.size());
        for (auto& [place, entry] : entries_) {
            all.push_back(std::move(entry));
        }
        return all;
    }

private:
    const json::LocatedDocument& user_;
    const prefs::Catalogue& catalogue_;
    std::map<std::size_t, FoundEntry> entries_;
};

/// Takes down what the reader tells.
class ToldEntries {
public:
    ToldEntries(EntryList& entries, const prefs::Catalogue& catalogue) : entries_(entries), catalogue_(catalogue) {}

    void find(const prefs::EntryFinding& finding, json::View place) {
        switch (finding.kind) {
            case prefs::EntryFinding::Kind::UnknownName:
                entries_.add(finding.section, {finding.name, place}, UserEntry::Effect::UnknownName);
                return;
            case prefs::EntryFinding::Kind::NoText:
                // An element that is no object has no name.
                if (!finding.name.empty()) {
                    entries_.add(finding.section, {finding.name, place}, UserEntry::Effect::NoText);
                }
                return;
            case prefs::EntryFinding::Kind::NoList:
                effectsInside_[entries_.placeOf(place)] = UserEntry::Effect::NoList;
                return;
            case prefs::EntryFinding::Kind::UnknownSection:
                effectsInside_[entries_.placeOf(place)] = UserEntry::Effect::UnknownSection;
                return;
            case prefs::EntryFinding::Kind::AnotherSection:
                ofAnotherSection_ = place;
                return;
            case prefs::EntryFinding::Kind::NotOfTheForm:
                return;
        }
    }

    void accept(const prefs::AcceptedEntry& accepted) {
        const std::uint32_t number = accepted.setting.number;
        FoundEntry& entry = entries_.add(accepted.attributePath, accepted.entry, UserEntry::Effect::InForce);
        if (accepted.entry.value.isSame(ofAnotherSection_)) {
            const auto there = numberOf(accepted.attributePath + std::string(prefs::kNameSeparator) + entry.name);
            entry.seems = there == number ? std::nullopt : there;
        }
        const auto [last, isFirst] = last_.try_emplace(number, &entry);
        if (!isFirst) {
            last->second->effect = UserEntry::Effect::Overruled;
            last->second = &entry;
        }
    }

    /// Returns what entries have for an effect inside of an array or object that the reader told of.
    std::optional<UserEntry::Effect> effectInside(json::View container) const {
        if (effectsInside_.empty()) {
            return std::nullopt;
        }
        const auto found = effectsInside_.find(entries_.placeOf(container));
        return found == effectsInside_.end() ? std::nullopt : std::optional(found->second);
    }

private:
    std::optional<std::uint32_t> numberOf(const std::string& fullName) const {
        const prefs::Setting* const setting = catalogue_.find(fullName);
        return setting == nullptr ? std::nullopt : std::optional(setting->number);
    }

    EntryList& entries_;
    const prefs::Catalogue& catalogue_;
    std::map<std::size_t, UserEntry::Effect> effectsInside_;
    /// By the numbers of the settings. The list keeps its entries where they are.
    std::unordered_map<std::uint32_t, FoundEntry*> last_;
    json::View ofAnotherSection_;
};

/// Has the members of the defaults' sections that have nothing to do with settings: a save copies them into the user's
/// file.
class ShippedMembers {
public:
    explicit ShippedMembers(json::View defaults) : root_(defaults) {}

    bool has(const std::string& attributePath, std::string_view name) {
        if (sections_.empty()) {
            prefs::forEachSection(root_, [this](const prefs::VisitedSection& visited) {
                sections_.try_emplace(visited.attributePath, visited.element);
            });
            sections_.try_emplace("", root_);
        }
        const auto section = sections_.find(attributePath);
        return section != sections_.end() && section->second.member(name);
    }

private:
    json::View root_;
    std::unordered_map<std::string, json::View> sections_;
};

/// Returns whether members of that name are of a section's form and never entries.
bool isOfSectionForm(std::string_view name) {
    static const std::set<std::string_view> kNames = {prefs::kHeader,          prefs::kAttribute, prefs::kTclCommand,
                                                      prefs::kDefaultSettings, prefs::kUnique,    prefs::kSubmanagerId};
    return kNames.count(name) != 0;
}

/// Looks for texts with the names of settings where the reader has found no entry.
class PassedOver {
public:
    PassedOver(EntryList& entries, const ToldEntries& told, const prefs::Catalogue& catalogue, json::View defaults)
        : entries_(entries), told_(told), catalogue_(catalogue), shipped_(defaults) {}

    void search(json::View root) {
        searchElements(root, UserEntry::Effect::NotRead);
        for (const json::Member& member : root.members()) {
            if (member.key == prefs::kMeta) {
                searchAnything(member.value, UserEntry::Effect::NotRead);
            } else {
                searchOddMember(member);
            }
        }
    }

private:
    /// Recurses as deep as the document nests.
    void searchAnything(json::View value, UserEntry::Effect around) {
        const UserEntry::Effect effect = told_.effectInside(value).value_or(around);
        searchElements(value, effect);
        if (const auto names = prefs::sectionNames(value)) {
            searchSection(value, names->attribute);
            return;
        }
        for (const json::Member& member : value.members()) {
            consider(member, effect);
            searchAnything(member.value, effect);
        }
    }

    void searchElements(json::View array, UserEntry::Effect effect) {
        for (const json::View element : array.elements()) {
            searchAnything(element, effect);
        }
    }

    void searchSection(json::View section, std::string_view attribute) {
        const prefs::JoinedNames::Level level(path_, attribute);
        const UserEntry::Effect effect = told_.effectInside(section).value_or(UserEntry::Effect::NotRead);
        for (const json::Member& member : section.members()) {
            if (member.key == prefs::kChildren) {
                searchAnything(member.value, UserEntry::Effect::NotRead);
            } else if (member.key != prefs::kOverriddenSettings) {
                searchOddMember(member);
            } else if (catalogue_.subManagerOf(path_.text()) == prefs::SubManagerType::None) {
                searchAnything(member.value, effect);
            } else {
                considerEntries(member.value);
            }
        }
    }

    /// Looks at entries in the form that is read. What lies deeper is the sub-manager's.
    void considerEntries(json::View overridden) {
        for (const json::View element : overridden.elements()) {
            for (const json::Member& member : element.members()) {
                consider(member, UserEntry::Effect::OfSubManager);
            }
        }
    }

    void searchOddMember(const json::Member& member) {
        if (!isOfSectionForm(member.key) && !shipped_.has(path_.text(), member.key)) {
            consider(member, UserEntry::Effect::NotRead);
            searchAnything(member.value, UserEntry::Effect::NotRead);
        }
    }

    void consider(const json::Member& member, UserEntry::Effect effect) {
        const bool isEntry = effect == UserEntry::Effect::UnknownSection || entries_.meant(path_.text(), member.key);
        if (isEntry && member.value.text() && !entries_.has(member.value)) {
            entries_.add(path_.text(), member, effect);
        }
    }

    EntryList& entries_;
    const ToldEntries& told_;
    const prefs::Catalogue& catalogue_;
    ShippedMembers shipped_;
    prefs::JoinedNames path_;
};

}  // namespace

std::vector<FoundEntry> readUserEntries(const json::LocatedDocument& user, const json::LocatedDocument& defaults,
                                        prefs::Catalogue& catalogue) {
    EntryList entries(user, catalogue);
    ToldEntries told(entries, catalogue);
    prefs::readUserSettings(
        user.root(), catalogue,
        prefs::EntrySinks{[&](const prefs::EntryFinding& finding, json::View place) { told.find(finding, place); },
                          [&](const prefs::AcceptedEntry& accepted) { told.accept(accepted); }});
    PassedOver(entries, told, catalogue, defaults.root()).search(user.root());
    return entries.take();
}

}  // namespace zelutil::command
