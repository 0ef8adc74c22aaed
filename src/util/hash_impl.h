#ifndef ZELUTIL_UTIL_HASH_IMPL_H
#define ZELUTIL_UTIL_HASH_IMPL_H

#include <zelutil/util/hash.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>

#include "util/entry_index.h"

// NOLINTBEGIN(readability-identifier-naming): these names continue those of the public class.
namespace ZelU::Hash::Impl {

template <class Key>
class Hash;

/// The table itself: chains, look-up, rehash. What it is to compare and hash a key, and which sizes there are, is left
/// to the derived class.
///
/// A node keeps the full hash of its entry's key. So a look-up asks only entries that are all but certain to be the one
/// for their key, and a rehash asks none. What is there is found by an index beside the chains; these say where an
/// entry is added, how far a look-up that finds nothing walks, and in which order entries go.
template <>
class Hash<const char*> : public ZelU::Hash::Hash<const char*> {
public:
    Hash(std::size_t size, IEntry::IFactory* factory, bool autoRehash);
    Hash& operator=(const Hash&) = delete;
    ~Hash() override;

    IEntry& Acquire(const char* key) override;
    IEntry* Find(const char* key) override;
    void Remove(const char* key) override;
    void Initialize() override;

    std::uint64_t bucketCount() const { return bucketCount_; }
    std::int32_t insertions() const { return insertions_; }
    std::int32_t longestWalk() const { return longestWalk_; }

protected:
    // Programs that were compiled earlier find these three by their order, behind the public ones.

    virtual bool Equal(const char* a, const char* b) const = 0;

    /// Returns the index of the bucket of `key`; 0 while the count is 0.
    virtual unsigned Index(const char* key) const = 0;

    /// Sets the bucket count to the next size.
    virtual void Grow() = 0;

    /// Equal keys have equal hashes.
    virtual std::uint32_t FullHash(const char* key) const = 0;

private:
    struct Node {
        IEntry* entry;
        Node* next;
        std::uint32_t hash;
        /// Counts the nodes of the chain, in the first of them.
        std::uint32_t chainLength;
    };
    /// Is the place that points to a node: a bucket or the node before.
    using Link = Node**;

    struct FreeBuckets {
        void operator()(Node** buckets) const { std::free(buckets); }
    };
    using Buckets = std::unique_ptr<Node*[], FreeBuckets>;

    static Buckets makeBuckets(std::uint64_t count);
    static void deleteAll(Node* const* nodes, std::size_t count);

    /// Returns the bucket in a table that has buckets, whose number never exceeds 32 bits.
    Link bucketOf(std::uint32_t hash) { return &buckets_[hash % static_cast<std::uint32_t>(bucketCount_)]; }

    bool holds(const Node& node, const char* key, std::uint32_t hash) const;
    IEntry* findByIndex(const char* key, std::uint32_t hash);
    void recordMiss(std::uint32_t hash);
    void append(Node& node, Link end);
    Link lookUp(const char* key, std::uint32_t hash);
    Link endOfChain(std::uint32_t hash);
    void recordWalk(std::size_t walk);
    Node& add(const char* key, std::uint32_t hash, Link end);
    IEntry* newEntry(const char* key);
    void rehash();
    void moveAll(const Buckets& from, std::uint64_t count);

    Buckets buckets_;
    zelutil::hash::EntryIndex<IEntry> index_;
    bool initialised_ = false;
    std::int32_t insertions_ = 0;
    bool autoRehash_;
    std::int32_t longestWalk_ = 0;
    IEntry::IFactory* factory_;
    /// Counts what may make a link invalid.
    std::uint64_t changes_ = 0;

protected:
    /// The size asked for, until there are buckets.
    std::uint64_t bucketCount_;
};

/// Keys compared without regard to the case of ASCII letters.
class StringHash final : public Hash<const char*> {
public:
    using Hash<const char*>::Hash;

protected:
    bool Equal(const char* a, const char* b) const override;
    unsigned Index(const char* key) const override;
    void Grow() override;
    std::uint32_t FullHash(const char* key) const override;
};

}  // namespace ZelU::Hash::Impl
// NOLINTEND(readability-identifier-naming)

#endif
