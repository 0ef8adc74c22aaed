#include "prefs/setting_index.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace zelutil::prefs {
namespace {

constexpr unsigned kKeyBits = 64;
constexpr std::size_t kEntriesPerBucket = 2;

}  // namespace

std::size_t SettingIndex::placeOf(std::uint64_t key) const {
    const std::size_t bucket = bucketOf(key);
    const auto begin = entries_.begin() + directory_[bucket];
    const auto end = entries_.begin() + directory_[bucket + 1];
    const auto found =
        std::lower_bound(begin, end, key, [](const Entry& entry, std::uint64_t wanted) { return entry.key < wanted; });
    return found == end || found->key != key ? size() : static_cast<std::size_t>(found - entries_.begin());
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
    const std::vector<std::uint32_t> begins = bucketBegins();
    std::vector<Addition> additions = dealtOut(begins);
    additions_ = {};
    const auto isBefore = [](const Addition& a, const Addition& b) {
        return a.key != b.key ? a.key < b.key : a.setting < b.setting;
    };
    index_.entries_.reserve(additions.size());
    index_.directory_.clear();
    for (std::size_t bucket = 0; bucket + 1 < begins.size(); ++bucket) {
        index_.directory_.push_back(static_cast<std::uint32_t>(index_.entries_.size()));
        const auto begin = additions.begin() + begins[bucket];
        const auto end = additions.begin() + begins[bucket + 1];
        std::sort(begin, end, isBefore);
        for (auto addition = begin; addition != end; ++addition) {
            // The first setting of a key stays.
            if (addition == begin || addition->key != (addition - 1)->key) {
                index_.entries_.push_back({addition->key, &index_.settings_[addition->setting]});
            }
        }
    }
    index_.directory_.push_back(static_cast<std::uint32_t>(index_.entries_.size()));
    return std::move(index_);
}

void SettingIndex::Builder::chooseDirectorySize() {
    unsigned bits = 1;
    while ((std::size_t{1} << bits) < additions_.size() / kEntriesPerBucket) {
        ++bits;
    }
    index_.shift_ = kKeyBits - bits;
}

/// Returns where each bucket will begin, and after the last one where it ends.
std::vector<std::uint32_t> SettingIndex::Builder::bucketBegins() const {
    std::vector<std::uint32_t> begins((std::size_t{1} << (kKeyBits - index_.shift_)) + 1, 0);
    for (const Addition& addition : additions_) {
        ++begins[index_.bucketOf(addition.key) + 1];
    }
    std::partial_sum(begins.begin(), begins.end(), begins.begin());
    return begins;
}

/// Returns the additions bucket by bucket. To sort them within their buckets afterwards takes much less time than to
/// sort them all.
std::vector<SettingIndex::Builder::Addition> SettingIndex::Builder::dealtOut(std::vector<std::uint32_t> begins) const {
    std::vector<Addition> additions(additions_.size());
    for (const Addition& addition : additions_) {
        additions[begins[index_.bucketOf(addition.key)]++] = addition;
    }
    return additions;
}

}  // namespace zelutil::prefs
