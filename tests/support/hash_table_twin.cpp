#include "support/hash_table_twin.h"

#include "support/murmur_twin.h"

namespace zelutil::test {
namespace {

std::string folded(std::string text) {
    for (char& c : text) {
        if (c >= 'A' && c <= 'Z') {
            c = static_cast<char>(c - 'A' + 'a');
        }
    }
    return text;
}

}  // namespace

void HashTableTwin::initialize() {
    if (initialised_) {
        return;
    }
    initialised_ = true;
    grow();
    longestWalk_ = 0;
    buckets_ = std::vector<Chain>(bucketCount_);
}

void HashTableTwin::grow() {
    bucketCount_ += 1;
    for (const std::uint64_t size : {211, 431, 863, 1609, 3221, 4799, 6577, 8231, 10289, 12889, 16127, 20161, 25219,
                                     31531, 39419, 49277, 61603, 367453, 459317}) {
        if (size > bucketCount_) {
            bucketCount_ = size;
            return;
        }
    }
}

HashTableTwin::Chain& HashTableTwin::chainOf(const std::string& key) {
    return buckets_[keyHash(key) % static_cast<std::uint32_t>(bucketCount_)];
}

/// The key's place in its chain, or the chain's length.
std::size_t HashTableTwin::lookUp(const Chain& chain, const std::string& key) {
    if (!chain.empty() && folded(chain[0]) == folded(key)) {
        return 0;
    }
    int walk = 0;
    std::size_t place = 1;
    while (place < chain.size() && folded(chain[place]) != folded(key)) {
        ++walk;
        ++place;
    }
    if (walk > longestWalk_) {
        longestWalk_ = walk;
    }
    return chain.empty() ? 0 : place;
}

std::string HashTableTwin::acquire(const std::string& key) {
    initialize();
    Chain& chain = chainOf(key);
    const std::size_t place = lookUp(chain, key);
    if (place < chain.size()) {
        return chain[place];
    }
    chain.push_back(key);
    ++insertions_;
    if (autoRehash_ && longestWalk_ > 6) {
        rehash();
        const Chain& now = chainOf(key);
        return now[lookUp(now, key)];
    }
    return key;
}

std::optional<std::string> HashTableTwin::find(const std::string& key) {
    const Chain& chain = chainOf(key);
    const std::size_t place = lookUp(chain, key);
    return place < chain.size() ? std::optional(chain[place]) : std::nullopt;
}

void HashTableTwin::remove(const std::string& key) {
    Chain& chain = chainOf(key);
    const std::size_t place = lookUp(chain, key);
    if (place < chain.size()) {
        chain.erase(chain.begin() + static_cast<std::ptrdiff_t>(place));
    }
}

void HashTableTwin::rehash() {
    printed_ += "Rehashing " + std::to_string(bucketCount_) + " (" + std::to_string(longestWalk_) + ")\n";
    const std::vector<Chain> old = buckets_;
    bucketCount_ += 1;
    initialised_ = false;
    initialize();
    for (const Chain& from : old) {
        for (const std::string& key : from) {
            Chain& chain = chainOf(key);
            lookUp(chain, key);
            chain.push_back(key);
        }
    }
}

std::vector<std::string> HashTableTwin::keys() const {
    std::vector<std::string> all;
    for (const Chain& chain : buckets_) {
        all.insert(all.end(), chain.begin(), chain.end());
    }
    return all;
}

}  // namespace zelutil::test
