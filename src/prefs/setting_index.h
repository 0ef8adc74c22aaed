#ifndef ZELUTIL_PREFS_SETTING_INDEX_H
#define ZELUTIL_PREFS_SETTING_INDEX_H

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include <zelutil/prefs/user_preference_manager.h>

/// The record of one setting.
struct UserPreferenceManager::MetaSettings {
    std::string name;      ///< As the defaults file has it.
    std::string fullName;  ///< Behind its section's attribute path, likewise.
    std::string defaultValue;
    std::string userValue;
    bool hasUserValue = false;  ///< Whether `userValue` is in force, empty or not.
};

namespace zelutil::prefs {

/// Settings by key. An ordered map in flat arrays: it is filled once and then only read, so it needs no nodes. The keys
/// are hashes and so spread evenly; a directory by their highest bits leads to the few that share them, and within
/// these a binary search keeps even keys made to collide from costing more than a map would.
class SettingIndex {
public:
    using Setting = UserPreferenceManager::MetaSettings;

    /// Notes a setting under `key`; of several under one key the first counts. Seen by look-ups after `build`.
    void add(std::uint64_t key, std::shared_ptr<Setting> setting);

    /// Makes what was added ready for look-ups.
    void build();

    /// The setting under `key`, or null.
    Setting* find(std::uint64_t key) const;

    /// Settings in the order of their keys; one with two keys occurs twice.
    const std::vector<std::shared_ptr<Setting>>& inKeyOrder() const { return settings_; }

private:
    std::size_t bucketOf(std::uint64_t key) const { return static_cast<std::size_t>(key >> shift_); }
    void chooseDirectorySize();
    std::vector<std::uint32_t> additionsInKeyOrder() const;
    void indexKeys();

    struct Addition {
        std::uint64_t key;
        std::shared_ptr<Setting> setting;
    };

    std::vector<Addition> additions_;
    std::vector<std::uint64_t> keys_;
    std::vector<std::shared_ptr<Setting>> settings_;
    /// Where each bucket of keys begins, and after the last one where it ends.
    std::vector<std::uint32_t> directory_ = {0, 0, 0};
    unsigned shift_ = 63;
};

}  // namespace zelutil::prefs

#endif
