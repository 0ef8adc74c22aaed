#include <algorithm>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "command/explain/setting_account.h"
#include "command/explain/unread_user_file.h"
#include "command/explain/user_entries.h"
#include "command/sections.h"
#include "file/hierarchy_root.h"
#include "host/setting_definition.h"
#include "host/user_file_reading.h"
#include "platform/files.h"
#include "prefs/catalogue_reader.h"
#include "prefs/preference_files.h"
#include "prefs/setting_name.h"
#include "prefs/user_settings_file.h"

namespace zelutil::command {
namespace {

std::string pathOfDefaults() {
    text::SearchTrace trace(text::SearchTrace::Until::Found);
    ZelU::File::Path root;
    const bool isInstalled = file::locateRoot(root, trace);
    return prefs::defaultsFilePath(isInstalled ? &root : nullptr, trace);
}

std::string textOfDefaults(const std::string& path) {
    return platform::readFile(path.c_str(), json::kMaximumTextSize).value_or("");
}

/// Returns the text; a file that is there and out of reach is noted.
std::string textOfUserFile(PreferenceFile& user) {
    std::string text;
    prefs::UserSettingsFile file;
    file.read(user.path, [&](std::string_view bytes) {
        text = bytes;
        return !bytes.empty();
    });
    user.isUnread =
        file.unreadAtStart() || file.wasDirectoryAtStart() || isOutOfReach(user.path) || isHidden(user.path);
    return text;
}

/// Returns a catalogue that holds the text and has read nothing of it yet.
prefs::Catalogue catalogueWith(std::string defaultsText) {
    prefs::Catalogue catalogue;
    catalogue.setDefaultsText(std::move(defaultsText));
    return catalogue;
}

/// Returns whether a name ends with the other one, at the beginning of it or behind a separator.
bool endsWithName(std::string_view fullName, std::string_view name) {
    if (name.empty() || name.size() > fullName.size()) {
        return false;
    }
    const std::string_view before = fullName.substr(0, fullName.size() - name.size());
    const std::size_t separator = prefs::kNameSeparator.size();
    const bool isAtName = before.empty() || (before.size() >= separator &&
                                             before.substr(before.size() - separator) == prefs::kNameSeparator);
    return isAtName && prefs::keyOf(fullName.substr(before.size())) == prefs::keyOf(name);
}

/// Returns whether an entry without a setting, in a section that only groups others, names a setting further below by
/// a part of its full name.
bool seemsToMean(const FoundEntry& entry, std::string_view fullName) {
    const std::string above = entry.section + std::string(prefs::kNameSeparator);
    return fullName.size() > above.size() && prefs::keyOf(fullName.substr(0, above.size())) == prefs::keyOf(above) &&
           endsWithName(fullName.substr(above.size()), entry.name);
}

/// Returns whether the library takes the entry's value, which a later entry may replace.
bool setsSomething(const FoundEntry& entry) {
    return entry.effect == UserEntry::Effect::InForce || entry.effect == UserEntry::Effect::Overruled;
}

/// Tells the overruled entries which one counts.
void nameWhatCounts(SettingAccount& account) {
    const UserEntry* const counting = account.entryInForce();
    for (UserEntry& entry : account.entries) {
        if (counting != nullptr && entry.effect == UserEntry::Effect::Overruled) {
            entry.overruledBy = counting->place.name;
        }
    }
}

}  // namespace

/// Holds both documents and what the readers made of them and told.
class SettingAccounts::Readings {
public:
    Readings(PreferenceFile defaultsFile, std::string defaultsText, PreferenceFile userFile, std::string userText);

    PreferenceFile defaultsFile;
    PreferenceFile userFile;

    const prefs::Catalogue& catalogue() const { return catalogue_; }
    const json::LocatedDocument& defaults() const { return defaults_; }
    const json::LocatedDocument& user() const { return user_; }
    const std::vector<FoundEntry>& entries() const { return entries_; }
    const std::vector<UserEntry>& entriesWithoutSetting() const { return entriesWithoutSetting_; }
    bool empty() const { return definitions_.empty(); }
    const std::vector<std::uint32_t>& numbers() const;
    host::SettingInfo info(std::uint32_t number) const;
    SettingAccount account(std::uint32_t number) const;
    std::vector<SettingAccount::Namesake> lenders(std::uint32_t number) const;

private:
    /// Keys of definitions with the numbers of their records, in the order of both.
    class Keys {
    public:
        void add(std::uint64_t key, std::uint32_t number) { keys_.emplace_back(key, number); }
        void sort() { std::sort(keys_.begin(), keys_.end()); }

        template <typename Visit>
        void forEach(std::uint64_t key, Visit visit) const {
            for (auto at = std::lower_bound(keys_.begin(), keys_.end(), std::pair(key, std::uint32_t{0}));
                 at != keys_.end() && at->first == key; ++at) {
                visit(at->second);
            }
        }

    private:
        std::vector<std::pair<std::uint64_t, std::uint32_t>> keys_;
    };

    /// A definition without its record.
    struct Definition {
        std::string_view name;
        std::uint32_t section;
        bool lendsBareName;
        json::View element;
    };

    void take(const prefs::Definition& definition);
    void sortEntries();
    void makeKeys() const;
    /// Returns whether every definition has its keys for itself, as it mostly has. There are no namesakes then.
    bool areNamesUnique() const { return catalogue_.settings().size() == keyCount_; }
    void addRepetitions(SettingAccount& account, std::uint32_t number) const;
    void addEntriesOfGroups(SettingAccount& account, std::uint32_t number) const;
    std::string fullName(std::uint32_t number) const;
    SettingAccount::Namesake namesake(std::uint32_t number) const;
    UserEntry entryFor(std::uint32_t number, const FoundEntry& found) const;

    /// Holds the text of the defaults, too.
    prefs::Catalogue catalogue_;
    const std::string userText_;
    const json::LocatedDocument defaults_;
    const json::LocatedDocument user_;
    /// By the numbers of their records.
    std::vector<Definition> definitions_;
    std::vector<std::string> sections_;
    /// The number of all keys of definitions, those that several have counted for each.
    std::size_t keyCount_ = 0;
    std::vector<FoundEntry> entries_;
    std::vector<UserEntry> entriesWithoutSetting_;
    std::unordered_map<std::uint32_t, std::vector<const FoundEntry*>> entriesOf_;
    /// Those without a setting in sections that only group others.
    std::vector<const FoundEntry*> entriesOfGroups_;
    // Made when somebody asks for them.
    mutable std::vector<std::uint32_t> numbers_;
    mutable bool hasKeys_ = false;
    mutable Keys bareKeys_;
    mutable Keys fullKeys_;
};

SettingAccounts::Readings::Readings(PreferenceFile defaultsFileNow, std::string defaultsText,
                                    PreferenceFile userFileNow, std::string userText)
    : defaultsFile(std::move(defaultsFileNow)),
      userFile(std::move(userFileNow)),
      catalogue_(catalogueWith(std::move(defaultsText))),
      userText_(std::move(userText)),
      defaults_(catalogue_.defaultsText()),
      user_(userText_) {
    defaultsFile.isRead = defaults_.valid();
    userFile.isRead = user_.valid();
    userFile.isUnread = userFile.isUnread || (user_.valid() ? holdsNoSection(user_.root()) : !userText_.empty());
    prefs::readDefaults(defaults_.root(), catalogue_, [this](const prefs::Definition& each) { take(each); });
    entries_ = readUserEntries(user_, defaults_, catalogue_);
    sortEntries();
}

void SettingAccounts::Readings::take(const prefs::Definition& definition) {
    if (sections_.empty() || sections_.back() != definition.attributePath) {
        sections_.push_back(definition.attributePath);
    }
    keyCount_ += definition.lendsBareName ? 2 : 1;
    definitions_.push_back({definition.name, static_cast<std::uint32_t>(sections_.size() - 1), definition.lendsBareName,
                            definition.element});
}

void SettingAccounts::Readings::sortEntries() {
    for (const FoundEntry& entry : entries_) {
        if (!entry.means) {
            entriesWithoutSetting_.push_back(entryFor(0, entry));
            if (entry.effect == UserEntry::Effect::GroupingSection) {
                entriesOfGroups_.push_back(&entry);
            }
            continue;
        }
        entriesOf_[*entry.means].push_back(&entry);
        if (entry.seems) {
            entriesOf_[*entry.seems].push_back(&entry);
        }
    }
}

const std::vector<std::uint32_t>& SettingAccounts::Readings::numbers() const {
    if (numbers_.empty()) {
        for (std::uint32_t number = 0; number < definitions_.size(); ++number) {
            const Definition& one = definitions_[number];
            if (host::settingDefinition(catalogue_, number, one.name, sections_[one.section])) {
                numbers_.push_back(number);
            }
        }
    }
    return numbers_;
}

host::SettingInfo SettingAccounts::Readings::info(std::uint32_t number) const {
    const Definition& one = definitions_[number];
    const std::string& section = sections_[one.section];
    const auto found = host::settingDefinition(catalogue_, number, one.name, section);
    return host::settingInfo(catalogue_.settings().record(number), section, one.name, found && found->foundInFull,
                             found && found->foundByName);
}

std::string SettingAccounts::Readings::fullName(std::uint32_t number) const { return info(number).fullName; }

SettingAccount::Namesake SettingAccounts::Readings::namesake(std::uint32_t number) const {
    const json::View element = definitions_[number].element;
    return {fullName(number),
            {defaults_.positionOf(element.member(prefs::kName)).value_or(json::Position()),
             defaults_.positionOf(element.member(prefs::kValue)).value_or(json::Position())}};
}

void SettingAccounts::Readings::makeKeys() const {
    if (std::exchange(hasKeys_, true)) {
        return;
    }
    for (std::uint32_t number = 0; number < definitions_.size(); ++number) {
        fullKeys_.add(catalogue_.settings().record(number).key, number);
        if (definitions_[number].lendsBareName) {
            bareKeys_.add(prefs::keyOf(definitions_[number].name), number);
        }
    }
    fullKeys_.sort();
    bareKeys_.sort();
}

UserEntry SettingAccounts::Readings::entryFor(std::uint32_t number, const FoundEntry& found) const {
    UserEntry entry;
    entry.section = found.section;
    entry.name = found.name;
    entry.value = found.value.text();
    entry.effect = found.effect;
    entry.place = {user_.keyPositionOf(found.value).value_or(json::Position()),
                   user_.positionOf(found.value).value_or(json::Position())};
    if (found.seems) {
        entry.meansOther = found.seems == number;
        entry.other = fullName(entry.meansOther ? *found.means : *found.seems);
    }
    if (entry.meansOther && setsSomething(found)) {
        entry.effect = UserEntry::Effect::SetsAnother;
    }
    return entry;
}

void SettingAccounts::Readings::addRepetitions(SettingAccount& account, std::uint32_t number) const {
    if (areNamesUnique()) {
        return;
    }
    makeKeys();
    fullKeys_.forEach(catalogue_.settings().record(number).key, [&](std::uint32_t other) {
        if (other > number) {
            account.repetitions.push_back(namesake(other));
        }
    });
}

void SettingAccounts::Readings::addEntriesOfGroups(SettingAccount& account, std::uint32_t number) const {
    bool isAnyAdded = false;
    for (const FoundEntry* const entry : entriesOfGroups_) {
        if (seemsToMean(*entry, account.info.fullName)) {
            account.entries.push_back(entryFor(number, *entry));
            isAnyAdded = true;
        }
    }
    if (isAnyAdded) {
        std::sort(account.entries.begin(), account.entries.end(), [](const UserEntry& left, const UserEntry& right) {
            return left.place.name.offset < right.place.name.offset;
        });
    }
}

std::vector<SettingAccount::Namesake> SettingAccounts::Readings::lenders(std::uint32_t number) const {
    if (areNamesUnique()) {
        return definitions_[number].lendsBareName ? std::vector{namesake(number)}
                                                  : std::vector<SettingAccount::Namesake>();
    }
    makeKeys();
    std::vector<SettingAccount::Namesake> lenders;
    bareKeys_.forEach(prefs::keyOf(definitions_[number].name),
                      [&](std::uint32_t lender) { lenders.push_back(namesake(lender)); });
    return lenders;
}

SettingAccount SettingAccounts::Readings::account(std::uint32_t number) const {
    SettingAccount account;
    account.info = info(number);
    account.definition = namesake(number).place;
    const auto entries = entriesOf_.find(number);
    if (entries != entriesOf_.end()) {
        for (const FoundEntry* const entry : entries->second) {
            account.entries.push_back(entryFor(number, *entry));
        }
    }
    addEntriesOfGroups(account, number);
    nameWhatCounts(account);
    addRepetitions(account, number);
    return account;
}

const UserEntry* SettingAccount::entryInForce() const {
    const auto found = std::find_if(entries.begin(), entries.end(),
                                    [](const UserEntry& entry) { return entry.effect == UserEntry::Effect::InForce; });
    return found == entries.end() ? nullptr : &*found;
}

SettingAccounts::SettingAccounts() {
    PreferenceFile defaults{pathOfDefaults()};
    std::string defaultsText = textOfDefaults(defaults.path);
    PreferenceFile user{prefs::userFilePath()};
    std::string userText = textOfUserFile(user);
    readings_ =
        std::make_unique<Readings>(std::move(defaults), std::move(defaultsText), std::move(user), std::move(userText));
}

SettingAccounts::SettingAccounts(std::string defaults, std::string user)
    : readings_(std::make_unique<Readings>(PreferenceFile(), std::move(defaults), PreferenceFile(), std::move(user))) {}

SettingAccounts::SettingAccounts(SettingAccounts&&) noexcept = default;
SettingAccounts& SettingAccounts::operator=(SettingAccounts&&) noexcept = default;
SettingAccounts::~SettingAccounts() = default;

const PreferenceFile& SettingAccounts::defaultsFile() const { return readings_->defaultsFile; }

const PreferenceFile& SettingAccounts::userFile() const { return readings_->userFile; }

bool SettingAccounts::empty() const { return readings_->empty(); }

const std::vector<std::uint32_t>& SettingAccounts::numbers() const { return readings_->numbers(); }

std::optional<std::uint32_t> SettingAccounts::find(std::string_view name) const {
    const prefs::Setting* const setting = readings_->catalogue().find(name);
    return setting == nullptr ? std::nullopt : std::optional(setting->number);
}

bool SettingAccounts::isFullName(std::string_view name, std::uint32_t number) const {
    return readings_->catalogue().settings().record(number).key == prefs::keyOf(name);
}

host::SettingInfo SettingAccounts::info(std::uint32_t number) const { return readings_->info(number); }

SettingAccount SettingAccounts::account(std::uint32_t number) const { return readings_->account(number); }

std::vector<SettingAccount::Namesake> SettingAccounts::lenders(std::uint32_t number) const {
    return readings_->lenders(number);
}

const std::vector<UserEntry>& SettingAccounts::entriesWithoutSetting() const {
    return readings_->entriesWithoutSetting();
}

std::vector<std::string> SettingAccounts::names() const {
    std::vector<std::string> names;
    for (const std::uint32_t number : numbers()) {
        host::SettingInfo info = readings_->info(number);
        names.push_back(std::move(info.fullName));
        names.insert(names.end(), info.bareNames.begin(), info.bareNames.end());
    }
    return names;
}

std::vector<json::View> SettingAccounts::entriesThatSet(const std::vector<std::uint32_t>& numbers) const {
    const std::unordered_set<std::uint32_t> wanted(numbers.begin(), numbers.end());
    std::vector<json::View> values;
    for (const FoundEntry& entry : readings_->entries()) {
        if (setsSomething(entry) && wanted.count(*entry.means) != 0) {
            values.push_back(entry.value);
        }
    }
    return values;
}

json::View SettingAccounts::userActions() const {
    return host::UserFileReading(readings_->catalogue(), readings_->defaults().root(), readings_->user().root())
        .subManagerValue(prefs::SubManagerType::Actions);
}

std::string SettingAccounts::shippedActions() const {
    const prefs::SubManagerTexts& texts = readings_->catalogue().defaultSubManagerTexts();
    const auto found = texts.find(prefs::SubManagerType::Actions);
    return found == texts.end() ? std::string() : found->second;
}

const json::LocatedDocument& SettingAccounts::userDocument() const { return readings_->user(); }

}  // namespace zelutil::command
