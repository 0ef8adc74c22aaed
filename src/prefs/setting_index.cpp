#include "prefs/setting_index.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace zelutil::prefs {
namespace {

constexpr unsigned kKeyBits = 64;

}  // namespace

SettingIndex::Setting* SettingIndex::add(std::string_view section, std::string_view name, std::uint64_t key,
                                         std::string_view defaultValue) {
    const std::pmr::polymorphic_allocator<Setting> allocator(memory_.get());
    const auto& setting = settings_.emplace_back(std::allocate_shared<Setting>(allocator));
    setting->fullName = joined(section, name);
    setting->defaultValue = defaultValue;
    setting->key = key;
    setting->nameLength = static_cast<std::uint32_t>(name.size());
    addKey(key);
    return setting.get();
}

std::string_view SettingIndex::joined(std::string_view section, std::string_view name) {
    const std::size_t length = section.size() + name.size();
    char* const text = static_cast<char*>(memory_->allocate(length, alignof(char)));
    std::copy(name.begin(), name.end(), std::copy(section.begin(), section.end(), text));
    return {text, length};
}

void SettingIndex::addKey(std::uint64_t key) {
    additions_.push_back({key, static_cast<std::uint32_t>(settings_.size() - 1)});
}

void SettingIndex::build() {
    additions_.insert(additions_.end(), entries_.begin(), entries_.end());
    chooseDirectorySize();
    dealOutAdditions();
    sortBuckets();
    dropLaterEntriesOfOneKey();
    indexEntries();
}

SettingIndex::Setting* SettingIndex::find(std::uint64_t key) const {
    const std::size_t bucket = bucketOf(key);
    const Entry* const begin = entries_.data() + directory_[bucket];
    const Entry* const end = entries_.data() + directory_[bucket + 1];
    const Entry* const found =
        std::lower_bound(begin, end, key, [](const Entry& entry, std::uint64_t wanted) { return entry.key < wanted; });
    return found == end || found->key != key ? nullptr : settings_[found->setting].get();
}

std::vector<SettingIndex::Setting*> SettingIndex::inKeyOrder() const {
    std::vector<Setting*> settings;
    settings.reserve(entries_.size());
    for (const Entry& entry : entries_) {
        settings.push_back(settings_[entry.setting].get());
    }
    return settings;
}

/// One bucket to about two entries.
void SettingIndex::chooseDirectorySize() {
    unsigned bits = 1;
    while ((std::size_t{1} << bits) < additions_.size() / 2) {
        ++bits;
    }
    shift_ = kKeyBits - bits;
    directory_.assign((std::size_t{1} << bits) + 1, 0);
}

/// Moves the additions to the buckets they belong to, which is several times faster than sorting them all. The
/// directory tells afterwards where each bucket ends.
void SettingIndex::dealOutAdditions() {
    for (const Entry& addition : additions_) {
        ++directory_[bucketOf(addition.key) + 1];
    }
    std::partial_sum(directory_.begin(), directory_.end(), directory_.begin());
    entries_.resize(additions_.size());
    for (const Entry& addition : additions_) {
        entries_[directory_[bucketOf(addition.key)]++] = addition;
    }
    additions_ = {};
}

void SettingIndex::sortBuckets() {
    const auto isBefore = [](const Entry& a, const Entry& b) {
        return a.key != b.key ? a.key < b.key : a.setting < b.setting;
    };
    auto begin = entries_.begin();
    for (const std::uint32_t end : directory_) {
        std::sort(begin, entries_.begin() + end, isBefore);
        begin = entries_.begin() + end;
    }
}

void SettingIndex::dropLaterEntriesOfOneKey() {
    const auto sameKey = [](const Entry& a, const Entry& b) { return a.key == b.key; };
    entries_.erase(std::unique(entries_.begin(), entries_.end(), sameKey), entries_.end());
}

void SettingIndex::indexEntries() {
    std::fill(directory_.begin(), directory_.end(), 0);
    for (const Entry& entry : entries_) {
        ++directory_[bucketOf(entry.key) + 1];
    }
    std::partial_sum(directory_.begin(), directory_.end(), directory_.begin());
}

}  // namespace zelutil::prefs
