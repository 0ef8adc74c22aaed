#ifndef ZELUTIL_PREFS_SETTING_INDEX_H
#define ZELUTIL_PREFS_SETTING_INDEX_H

#include <cstdint>
#include <deque>
#include <memory>
#include <memory_resource>
#include <string>
#include <string_view>
#include <vector>

#include <zelutil/prefs/user_preference_manager.h>

/// The record of one setting. There are thousands, so that each text counts at the start of a process.
struct UserPreferenceManager::MetaSettings {
    /// The section's attribute path, "::" and the name, as the defaults file has them. It lives as long as the index.
    std::string_view fullName;
    std::string defaultValue;
    std::string userValue;
    std::uint64_t key = 0;  ///< Hash of the full name in lower case.
    std::uint32_t nameLength = 0;
    bool hasUserValue = false;  ///< Whether `userValue` is in force, empty or not.

    /// The name without the section's path.
    std::string_view name() const { return fullName.substr(fullName.size() - nameLength); }
};

namespace zelutil::prefs {

/// Settings by key. An ordered map in flat arrays: it is filled once and then only read, so it needs no nodes. The keys
/// are hashes and so spread evenly; a directory by their highest bits leads to the few that share them, and within
/// these a binary search keeps even keys made to collide from costing more than a map would.
class SettingIndex {
public:
    using Setting = UserPreferenceManager::MetaSettings;

    SettingIndex() = default;
    /// A copy shares the records.
    SettingIndex(const SettingIndex&) = default;
    /// Records must not outlive their memory, as those of the left side would for a moment.
    SettingIndex& operator=(const SettingIndex&) = delete;

    /// Makes the record of a setting: its section's path with "::" behind it, and its name. `key` is that of both
    /// together; the setting is found under it after the next `build`. Answers the record.
    Setting* add(std::string_view section, std::string_view name, std::uint64_t key, std::string_view defaultValue);

    /// Has the setting that was added last found under `key` too, unless an earlier one is.
    void addKey(std::uint64_t key);

    /// Makes what was added ready for look-ups.
    void build();

    /// The setting under `key`, or null.
    Setting* find(std::uint64_t key) const;

    /// Settings in the order of their keys; one with two keys occurs twice.
    std::vector<Setting*> inKeyOrder() const;

private:
    struct Entry {
        std::uint64_t key;
        std::uint32_t setting;  ///< Its place in `settings_`, which is also its age.
    };

    std::size_t bucketOf(std::uint64_t key) const { return static_cast<std::size_t>(key >> shift_); }
    void chooseDirectorySize();
    void dealOutAdditions();
    void sortBuckets();
    void dropLaterEntriesOfOneKey();
    void indexEntries();

    std::string_view joined(std::string_view section, std::string_view name);

    /// Records and names are made by the thousand, one after another, and go together.
    std::shared_ptr<std::pmr::monotonic_buffer_resource> memory_ =
        std::make_shared<std::pmr::monotonic_buffer_resource>();
    std::vector<std::shared_ptr<Setting>> settings_;
    /// What `build` has not seen yet. A deque copies nothing when it grows.
    std::deque<Entry> additions_;
    /// In key order.
    std::vector<Entry> entries_;
    /// Where each bucket of entries begins, and after the last one where it ends.
    std::vector<std::uint32_t> directory_ = {0, 0, 0};
    unsigned shift_ = 63;
};

}  // namespace zelutil::prefs

#endif
