#include "prefs/setting_index.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace zelutil::prefs {
namespace {

constexpr unsigned kKeyBits = 64;
constexpr std::size_t kBucketsPerEntry = 2;

}  // namespace

/// Goes on from a place in the key's bucket whose key comes before it.
std::size_t SettingIndex::searchInBucket(std::uint64_t key, std::size_t place) const {
    const auto begin = entries_.begin() + static_cast<std::ptrdiff_t>(place);
    const auto end = entries_.begin() + directory_[bucketOf(key) + 1];
    const auto found =
        std::lower_bound(begin, end, key, [](const Entry& entry, std::uint64_t wanted) { return entry.key < wanted; });
    return static_cast<std::size_t>(found - entries_.begin());
}

std::uint32_t SettingIndex::Builder::add(std::uint64_t key, std::string_view defaultValue) {
    const auto number = static_cast<std::uint32_t>(index_.settings_.size());
    Setting& setting = index_.settings_.emplace_back();
    setting.number = number;
    setting.defaultValue = defaultValue;
    setting.key = key;
    addKey(key);
    return number;
}

void SettingIndex::Builder::addKey(std::uint64_t key) {
    additions_.push_back({key, static_cast<std::uint32_t>(index_.settings_.size() - 1)});
}

SettingIndex SettingIndex::Builder::build() {
    chooseDirectorySize();
    dealOut();
    additions_ = {};
    sortBuckets();
    return std::move(index_);
}

void SettingIndex::Builder::chooseDirectorySize() {
    unsigned bits = 1;
    while ((std::size_t{1} << bits) < additions_.size() * kBucketsPerEntry) {
        ++bits;
    }
    index_.shift_ = kKeyBits - bits;
}

/// Makes the additions entries, bucket by bucket: to sort them within their buckets afterwards takes much less time
/// than to sort them all. The directory holds where each bucket ends.
void SettingIndex::Builder::dealOut() {
    std::vector<std::uint32_t>& directory = index_.directory_;
    directory.assign((std::size_t{1} << (kKeyBits - index_.shift_)) + 1, 0);
    for (const Addition& addition : additions_) {
        ++directory[index_.bucketOf(addition.key) + 1];
    }
    std::partial_sum(directory.begin(), directory.end(), directory.begin());
    index_.entries_.assign(additions_.size() + 1, kLast);
    for (const Addition& addition : additions_) {
        const std::uint32_t place = directory[index_.bucketOf(addition.key)]++;
        index_.entries_[place] = {addition.key, &index_.settings_[addition.setting]};
    }
}

/// Sorts each bucket, keeps the first setting of each key and has the directory hold where each bucket begins.
void SettingIndex::Builder::sortBuckets() {
    std::vector<Entry>& entries = index_.entries_;
    const auto isBefore = [](const Entry& a, const Entry& b) {
        return a.key != b.key ? a.key < b.key : a.setting->number < b.setting->number;
    };
    auto begin = entries.begin();
    auto kept = entries.begin();
    for (auto bucket = index_.directory_.begin(); bucket != index_.directory_.end() - 1; ++bucket) {
        const auto end = entries.begin() + *bucket;
        *bucket = static_cast<std::uint32_t>(kept - entries.begin());
        std::sort(begin, end, isBefore);
        for (; begin != end; ++begin) {
            if (kept == entries.begin() || (kept - 1)->key != begin->key) {
                *kept++ = *begin;
            }
        }
    }
    index_.directory_.back() = static_cast<std::uint32_t>(kept - entries.begin());
    *kept = kLast;
    entries.erase(kept + 1, entries.end());
}

}  // namespace zelutil::prefs
