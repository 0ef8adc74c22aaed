#ifndef ZELUTIL_PREFS_SETTING_INDEX_H
#define ZELUTIL_PREFS_SETTING_INDEX_H

// An ordered map from keys to settings, in flat arrays. It has this shape for bench/settings_lookup_bench.cpp (10000
// settings in random order) and bench/start_bench.cpp: it is filled once, by the thousand, and then only searched, by
// keys that the processor cannot foresee.
//
// The keys are hashes and so spread evenly; a directory by their highest bits has more buckets than there are keys, so
// that the first key of a bucket mostly is the one that is sought, and no branch on the way to it is a surprise. Where
// keys were made to share their highest bits, a binary search keeps them from costing more than a map would.

#include <cstddef>
#include <cstdint>
#include <deque>
#include <string_view>
#include <vector>

#include "prefs/setting.h"

namespace zelutil::prefs {

/// The settings by their keys. Which there are does not change; their values may.
class SettingIndex {
public:
    class Builder;

    /// Without settings.
    SettingIndex() = default;
    SettingIndex(SettingIndex&&) = default;
    SettingIndex& operator=(SettingIndex&&) = default;

    /// Returns the setting under `key`, or null.
    const Setting* find(std::uint64_t key) const { return locate(key); }
    Setting* find(std::uint64_t key) { return locate(key); }

    // The keys have places from 0 on, in their order, so that a table of one's own can stand beside the index. A
    // setting with two keys has two places. Behind the last of them the greatest key ends every search.

    std::size_t size() const { return entries_.size() - 1; }
    std::uint64_t keyAt(std::size_t place) const { return entries_[place].key; }
    const Setting& at(std::size_t place) const { return *entries_[place].setting; }

    // The records have numbers from 0 on, in the order of their definitions. One whose names all belong to earlier ones
    // has no place, but a number.

    std::size_t recordCount() const { return settings_.size(); }
    const Setting& record(std::size_t number) const { return settings_[number]; }
    Setting& record(std::size_t number) { return settings_[number]; }

    /// Returns the place of a key; `size()` for one that is not there.
    std::size_t placeOf(std::uint64_t key) const {
        const std::size_t place = placeNotBefore(key);
        return entries_[place].key == key ? place : size();
    }

private:
    struct Entry {
        std::uint64_t key;
        Setting* setting;
    };
    static constexpr Entry kLast = {~std::uint64_t{0}, nullptr};

    std::size_t bucketOf(std::uint64_t key) const { return static_cast<std::size_t>(key >> shift_); }
    Setting* locate(std::uint64_t key) const {
        const Entry& entry = entries_[placeNotBefore(key)];
        return entry.key == key ? entry.setting : nullptr;
    }
    std::size_t placeNotBefore(std::uint64_t key) const {
        std::size_t place = directory_[bucketOf(key)];
        for (unsigned steps = 0; entries_[place].key < key; ++place, ++steps) {
            if (steps == kMostSteps) {
                return searchInBucket(key, place);
            }
        }
        return place;
    }
    std::size_t searchInBucket(std::uint64_t key, std::size_t place) const;

    /// A bucket that holds more keys is searched by halves.
    static constexpr unsigned kMostSteps = 8;

    std::deque<Setting> settings_;
    /// In key order. The last one ends every search: it has the greatest key and no setting.
    std::vector<Entry> entries_ = {kLast};
    /// Holds the place where each bucket of entries begins, and after the last one where it ends.
    std::vector<std::uint32_t> directory_ = {0, 0, 0};
    unsigned shift_ = 63;
};

/// Collects settings for an index. Of several for one key the first counts.
class SettingIndex::Builder {
public:
    /// Adds a setting, to be found under `key`, the hash of its full name. Returns its number.
    std::uint32_t add(std::uint64_t key, std::string_view defaultValue);

    /// Has the setting that was added last found under `key` too.
    void addKey(std::uint64_t key);

    /// Makes the index; nothing may be added afterwards.
    SettingIndex build();

private:
    struct Addition {
        std::uint64_t key;
        std::uint32_t setting;  ///< Its place among the settings, which is also its age.
    };

    void chooseDirectorySize();
    void dealOut();
    void sortBuckets();

    SettingIndex index_;
    /// A deque copies nothing when it grows.
    std::deque<Addition> additions_;
};

}  // namespace zelutil::prefs

#endif
