#include "prefs/setting_index.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace zelutil::prefs {
namespace {

constexpr unsigned kKeyBits = 64;

}  // namespace

void SettingIndex::add(std::uint64_t key, std::shared_ptr<Setting> setting) {
    additions_.push_back({key, std::move(setting)});
}

void SettingIndex::build() {
    chooseDirectorySize();
    keys_.reserve(additions_.size());
    settings_.reserve(additions_.size());
    for (const std::uint32_t position : additionsInKeyOrder()) {
        Addition& addition = additions_[position];
        if (keys_.empty() || keys_.back() != addition.key) {
            keys_.push_back(addition.key);
            settings_.push_back(std::move(addition.setting));
        }
    }
    additions_ = {};
    indexKeys();
}

SettingIndex::Setting* SettingIndex::find(std::uint64_t key) const {
    const std::size_t bucket = bucketOf(key);
    const std::uint64_t* const begin = keys_.data() + directory_[bucket];
    const std::uint64_t* const end = keys_.data() + directory_[bucket + 1];
    const std::uint64_t* const found = std::lower_bound(begin, end, key);
    if (found == end || *found != key) {
        return nullptr;
    }
    return settings_[static_cast<std::size_t>(found - keys_.data())].get();
}

/// One bucket to two keys on the average.
void SettingIndex::chooseDirectorySize() {
    unsigned bits = 1;
    while ((std::size_t{1} << bits) < additions_.size() / 2) {
        ++bits;
    }
    shift_ = kKeyBits - bits;
    directory_.assign((std::size_t{1} << bits) + 1, 0);
}

/// Positions of the additions by key and, for one key, by age. Dealing them out to the buckets first is several times
/// faster than sorting them all.
std::vector<std::uint32_t> SettingIndex::additionsInKeyOrder() const {
    std::vector<std::uint32_t> ends(directory_.size(), 0);
    for (const Addition& addition : additions_) {
        ++ends[bucketOf(addition.key) + 1];
    }
    std::partial_sum(ends.begin(), ends.end(), ends.begin());
    // What was the end of the bucket before becomes the end of the bucket itself.
    std::vector<std::uint32_t> positions(additions_.size());
    for (std::uint32_t i = 0; i < positions.size(); ++i) {
        positions[ends[bucketOf(additions_[i].key)]++] = i;
    }
    const auto isBefore = [this](std::uint32_t a, std::uint32_t b) {
        return additions_[a].key != additions_[b].key ? additions_[a].key < additions_[b].key : a < b;
    };
    auto begin = positions.begin();
    for (const std::uint32_t end : ends) {
        std::sort(begin, positions.begin() + end, isBefore);
        begin = positions.begin() + end;
    }
    return positions;
}

void SettingIndex::indexKeys() {
    for (const std::uint64_t key : keys_) {
        ++directory_[bucketOf(key) + 1];
    }
    std::partial_sum(directory_.begin(), directory_.end(), directory_.begin());
}

}  // namespace zelutil::prefs
