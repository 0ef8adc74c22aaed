// The reader tells of what it takes and of what is odd. What it has passed over is looked for afterwards.
#include "command/explain/user_entries.h"

#include <algorithm>
#include <set>
#include <string_view>
#include <unordered_map>
#include <utility>

#include "prefs/catalogue_reader.h"
#include "prefs/joined_names.h"
#include "prefs/section_walk.h"

namespace zelutil::command {
namespace {

/// Has the sections of the defaults, also those without settings.
class ShippedSections {
public:
    explicit ShippedSections(json::View defaults) : root_(defaults) {}

    bool has(const std::string& attributePath) { return sections().count(attributePath) != 0; }

    /// Returns whether the section has a member of that name, which a save copies into the user's file. The empty path
    /// stands for the top, too.
    bool hasMember(const std::string& attributePath, std::string_view name) {
        const auto section = sections().find(attributePath);
        if (section == sections().end()) {
            return attributePath.empty() && root_.member(name);
        }
        return static_cast<bool>(section->second.member(name));
    }

private:
    using Sections = std::unordered_map<std::string, json::View>;

    const Sections& sections() {
        if (!std::exchange(areThere_, true)) {
            prefs::forEachSection(root_, [this](const prefs::VisitedSection& visited) {
                sections_.try_emplace(visited.attributePath, visited.element);
            });
        }
        return sections_;
    }

    json::View root_;
    bool areThere_ = false;
    Sections sections_;
};

/// Holds the entries that were found, by the places of their values.
class EntryList {
public:
    EntryList(const json::LocatedDocument& user, const prefs::Catalogue& catalogue)
        : user_(user), catalogue_(catalogue) {}

    std::size_t placeOf(json::View value) const { return user_.offsetOf(value).value_or(0); }
    bool has(json::View value) const { return numbers_.count(placeOf(value)) != 0; }

    /// Returns its number in the list.
    std::size_t add(std::string_view section, const json::Member& member, UserEntry::Effect effect) {
        FoundEntry entry;
        entry.section = section;
        entry.name = member.key;
        entry.value = member.value;
        entry.effect = effect;
        entry.means = meant(section, member.key);
        const auto there = numberOf(catalogue_.settings().find(
            prefs::keyOf(member.key, prefs::keyOf(prefs::kNameSeparator, prefs::keyOf(section)))));
        // An empty name means nothing, whatever a setting is called.
        entry.seems = !entry.means || there == entry.means ? std::nullopt : there;
        const auto [number, isNew] = numbers_.try_emplace(placeOf(member.value), entries_.size());
        if (isNew) {
            entries_.push_back(std::move(entry));
        } else {
            entries_[number->second] = std::move(entry);
        }
        return number->second;
    }

    FoundEntry& operator[](std::size_t number) { return entries_[number]; }

    std::optional<std::uint32_t> meant(std::string_view section, std::string_view name) const {
        return numberOf(catalogue_.findEntry(name, section));
    }

    /// Returns them in the order of the text.
    std::vector<FoundEntry> take() {
        const auto isBefore = [this](const FoundEntry& a, const FoundEntry& b) {
            return user_.offsetOf(a.value) < user_.offsetOf(b.value);
        };
        if (!std::is_sorted(entries_.begin(), entries_.end(), isBefore)) {
            std::sort(entries_.begin(), entries_.end(), isBefore);
        }
        return std::move(entries_);
    }

private:
    static std::optional<std::uint32_t> numberOf(const prefs::Setting* setting) {
        return setting == nullptr ? std::nullopt : std::optional(setting->number);
    }

    const json::LocatedDocument& user_;
    const prefs::Catalogue& catalogue_;
    std::vector<FoundEntry> entries_;
    /// Their numbers in that list, by the places of their values.
    std::unordered_map<std::size_t, std::size_t> numbers_;
};

/// Takes down what the reader tells.
class ToldEntries {
public:
    ToldEntries(EntryList& entries, ShippedSections& shipped) : entries_(entries), shipped_(shipped) {}

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
                effectsInside_[entries_.placeOf(place)] = shipped_.has(finding.section)
                                                              ? UserEntry::Effect::GroupingSection
                                                              : UserEntry::Effect::UnknownSection;
                return;
            // The list finds out itself which setting an entry means.
            case prefs::EntryFinding::Kind::AnotherSection:
            case prefs::EntryFinding::Kind::NotOfTheForm:
                return;
        }
    }

    void accept(const prefs::AcceptedEntry& accepted) {
        const std::uint32_t number = accepted.setting.number;
        const std::size_t entry = entries_.add(accepted.attributePath, accepted.entry, UserEntry::Effect::InForce);
        const auto [last, isFirst] = last_.try_emplace(number, entry);
        if (!isFirst) {
            entries_[last->second].effect = UserEntry::Effect::Overruled;
            last->second = entry;
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
    EntryList& entries_;
    ShippedSections& shipped_;
    /// By the places of the containers.
    std::unordered_map<std::size_t, UserEntry::Effect> effectsInside_;
    /// The number of each setting's last entry.
    std::unordered_map<std::uint32_t, std::size_t> last_;
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
    PassedOver(EntryList& entries, const ToldEntries& told, const prefs::Catalogue& catalogue, ShippedSections& shipped)
        : entries_(entries), told_(told), catalogue_(catalogue), shipped_(shipped) {}

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
        if (!isOfSectionForm(member.key) && !shipped_.hasMember(path_.text(), member.key)) {
            consider(member, UserEntry::Effect::NotRead);
            searchAnything(member.value, UserEntry::Effect::NotRead);
        }
    }

    void consider(const json::Member& member, UserEntry::Effect effect) {
        if (!member.value.text() || entries_.has(member.value)) {
            return;
        }
        const bool isInSection =
            effect == UserEntry::Effect::UnknownSection || effect == UserEntry::Effect::GroupingSection;
        if (isInSection || entries_.meant(path_.text(), member.key)) {
            entries_.add(path_.text(), member, effect);
        }
    }

    EntryList& entries_;
    const ToldEntries& told_;
    const prefs::Catalogue& catalogue_;
    ShippedSections& shipped_;
    prefs::JoinedNames path_;
};

}  // namespace

std::vector<FoundEntry> readUserEntries(const json::LocatedDocument& user, const json::LocatedDocument& defaults,
                                        prefs::Catalogue& catalogue) {
    EntryList entries(user, catalogue);
    ShippedSections shipped(defaults.root());
    ToldEntries told(entries, shipped);
    prefs::readUserSettings(
        user.root(), catalogue,
        prefs::EntrySinks{[&](const prefs::EntryFinding& finding, json::View place) { told.find(finding, place); },
                          [&](const prefs::AcceptedEntry& accepted) { told.accept(accepted); }});
    PassedOver(entries, told, catalogue, shipped).search(user.root());
    return entries.take();
}

}  // namespace zelutil::command
