#ifndef ZELUTIL_TESTS_SUPPORT_HASH_TABLE_TWIN_H
#define ZELUTIL_TESTS_SUPPORT_HASH_TABLE_TWIN_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace zelutil::test {

/// A hash table by the letter: every chain is a list of keys, every look-up hashes and compares anew.
class HashTableTwin {
public:
    HashTableTwin(std::size_t size, bool autoRehash) : bucketCount_(size), autoRehash_(autoRehash) {}

    void initialize();

    /// The key of the entry that is there afterwards.
    std::string acquire(const std::string& key);

    std::optional<std::string> find(const std::string& key);
    void remove(const std::string& key);

    /// Keys by bucket, and in each from the head of its chain.
    std::vector<std::string> keys() const;

    /// All that has been printed.
    const std::string& printed() const { return printed_; }

    int longestWalk() const { return longestWalk_; }
    int insertions() const { return insertions_; }

private:
    using Chain = std::vector<std::string>;

    Chain& chainOf(const std::string& key);
    std::size_t lookUp(const Chain& chain, const std::string& key);
    void grow();
    void rehash();

    std::vector<Chain> buckets_;
    bool initialised_ = false;
    int insertions_ = 0;
    int longestWalk_ = 0;
    std::uint64_t bucketCount_;
    bool autoRehash_;
    std::string printed_;
};

}  // namespace zelutil::test

#endif
