#include "util/hash_impl.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <iterator>
#include <limits>
#include <new>

#include "util/folded_murmur.h"
#include "util/hash_sizes.h"

#include <zelutil/util/ascii.h>

namespace ZelU::Hash::Impl {
namespace {

/// A longer walk makes a table with auto rehash move to its next size.
constexpr std::int32_t kLongestWalk = 6;

const char* orEmpty(const char* key) { return key != nullptr ? key : ""; }

}  // namespace

Hash<const char*>::Hash(std::size_t size, IEntry::IFactory* factory, bool autoRehash)
    : autoRehash_(autoRehash), factory_(factory), bucketCount_(size) {}

Hash<const char*>::~Hash() {
    if (!initialised_) {
        return;
    }
    Node* batch[32];
    std::size_t size = 0;
    for (std::uint64_t i = 0; i < bucketCount_; ++i) {
        for (Node* node = buckets_[i]; node != nullptr;) {
            Node* const next = node->next;
            batch[size++] = node;
            if (size == std::size(batch)) {
                deleteAll(batch, size);
                size = 0;
            }
            node = next;
        }
    }
    deleteAll(batch, size);
}

/// The entries lie all over the memory. Reading from each of them first, with none of the reads waiting for another,
/// makes the end of a table of a million entries a quarter faster.
void Hash<const char*>::deleteAll(Node* const* nodes, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        static_cast<void>(*reinterpret_cast<const volatile char*>(nodes[i]->entry));
    }
    for (std::size_t i = 0; i < count; ++i) {
        delete nodes[i]->entry;
        delete nodes[i];
    }
}

Hash<const char*>::IEntry& Hash<const char*>::Acquire(const char* key) {
    Initialize();
    key = orEmpty(key);
    const std::uint32_t hash = FullHash(key);
    if (index_.isWhole()) {
        if (IEntry* const entry = findByIndex(key, hash)) {
            return *entry;
        }
    }
    const Link link = index_.isWhole() ? endOfChain(hash) : lookUp(key, hash);
    if (*link != nullptr) {
        return *(*link)->entry;
    }
    Node& node = add(key, hash, link);
    // Kept deliberately: the walk alone decides, not what the last step brought, so keys of one hash take a step each.
    if (autoRehash_ && longestWalk_ > kLongestWalk) {
        rehash();
    }
    // Looking the key up again after a rehash would find this node, after no longer walk than its move there took.
    return *node.entry;
}

Hash<const char*>::IEntry* Hash<const char*>::Find(const char* key) {
    if (!initialised_) {
        return nullptr;
    }
    key = orEmpty(key);
    const std::uint32_t hash = FullHash(key);
    if (!index_.isWhole()) {
        const Node* const node = *lookUp(key, hash);
        return node != nullptr ? node->entry : nullptr;
    }
    IEntry* const entry = findByIndex(key, hash);
    if (entry == nullptr) {
        recordMiss(hash);
    }
    return entry;
}

/// A walk to an entry that is there need not be recorded: none is longer than that of its addition or of its last move.
Hash<const char*>::IEntry* Hash<const char*>::findByIndex(const char* key, std::uint32_t hash) {
    return index_.find(hash, [this, key](const IEntry& entry) { return Equal(entry.Key(), key); });
}

/// Records the walk of a look-up that has found nothing: it passes all nodes but the first of the chain.
void Hash<const char*>::recordMiss(std::uint32_t hash) {
    if (const Node* const first = *bucketOf(hash)) {
        recordWalk(first->chainLength - 1);
    }
}

void Hash<const char*>::Remove(const char* key) {
    if (!initialised_) {
        return;
    }
    key = orEmpty(key);
    const std::uint32_t hash = FullHash(key);
    const Link link = lookUp(key, hash);
    if (*link == nullptr) {
        return;
    }
    const std::uint32_t length = (*bucketOf(hash))->chainLength;
    const std::unique_ptr<Node> node(*link);
    *link = node->next;
    if (Node* const first = *bucketOf(hash)) {
        first->chainLength = length - 1;
    }
    index_.remove(hash, *node->entry);
    ++changes_;
    delete node->entry;  // last: its destructor may use the table
}

void Hash<const char*>::Initialize() {
    if (initialised_) {
        return;
    }
    const std::uint64_t asked = bucketCount_;
    Grow();
    buckets_ = makeBuckets(bucketCount_);
    if (buckets_ == nullptr) {
        bucketCount_ = asked;
        throw std::bad_alloc();
    }
    initialised_ = true;
    longestWalk_ = 0;
}

/// Null when there is no memory. Not by operator new: the system hands out large cleared blocks page by page as they
/// are touched, which matters at the largest sizes (2.4 GB).
Hash<const char*>::Buckets Hash<const char*>::makeBuckets(std::uint64_t count) {
    // NOLINTNEXTLINE(bugprone-sizeof-expression): a bucket is a pointer.
    return Buckets(static_cast<Node**>(std::calloc(count, sizeof(Node*))));
}

bool Hash<const char*>::holds(const Node& node, const char* key, std::uint32_t hash) const {
    return node.hash == hash && Equal(node.entry->Key(), key);
}

/// The link to the node of the key, or the null link at the end of its chain.
Hash<const char*>::Link Hash<const char*>::lookUp(const char* key, std::uint32_t hash) {
    Link link = bucketOf(hash);
    if (*link == nullptr || holds(**link, key, hash)) {
        return link;
    }
    std::size_t walk = 0;
    for (link = &(*link)->next; *link != nullptr && !holds(**link, key, hash); link = &(*link)->next) {
        ++walk;
    }
    recordWalk(walk);
    return link;
}

/// Returns what `lookUp` gives for a key that the table does not have.
Hash<const char*>::Link Hash<const char*>::endOfChain(std::uint32_t hash) {
    Link link = bucketOf(hash);
    if (*link == nullptr) {
        return link;
    }
    std::size_t walk = 0;
    for (link = &(*link)->next; *link != nullptr; link = &(*link)->next) {
        ++walk;
    }
    recordWalk(walk);
    return link;
}

void Hash<const char*>::recordWalk(std::size_t walk) {
    constexpr std::size_t kMost = std::numeric_limits<std::int32_t>::max();
    longestWalk_ = std::max(longestWalk_, static_cast<std::int32_t>(std::min(walk, kMost)));
}

Hash<const char*>::Node& Hash<const char*>::add(const char* key, std::uint32_t hash, Link end) {
    // Before the entry, so that nothing can fail once there is one.
    auto node = std::make_unique<Node>(Node{nullptr, nullptr, hash, 0});
    const std::uint64_t changes = changes_;
    node->entry = newEntry(key);
    if (changes_ != changes) {
        end = endOfChain(hash);  // the factory has used the table
    }
    append(*node, end);
    index_.add(hash, *node->entry);
    ++changes_;
    // Kept deliberately: removal does not count back, this is no number of entries.
    insertions_ += insertions_ < std::numeric_limits<std::int32_t>::max() ? 1 : 0;
    return *node.release();
}

/// Puts a node without a successor at the end of its chain.
void Hash<const char*>::append(Node& node, Link end) {
    node.chainLength = 0;
    *end = &node;
    ++(*bucketOf(node.hash))->chainLength;
}

Hash<const char*>::IEntry* Hash<const char*>::newEntry(const char* key) {
    IEntry* const entry = factory_ != nullptr ? factory_->NewEntry(key) : nullptr;
    if (entry == nullptr) {
        throw std::bad_alloc();
    }
    return entry;
}

void Hash<const char*>::rehash() {
    const std::uint64_t oldCount = bucketCount_;
    // Kept deliberately: the line comes whatever the debug switch says. It is the one sign of a crowded table that
    // hosts have.
    std::printf("Rehashing %d (%d)\n", static_cast<int>(oldCount), static_cast<int>(longestWalk_));
    Buckets old = std::move(buckets_);
    initialised_ = false;
    bucketCount_ = oldCount + 1;
    try {
        Initialize();
    } catch (const std::bad_alloc&) {
        buckets_ = std::move(old);
        bucketCount_ = oldCount;
        initialised_ = true;
        throw;
    }
    moveAll(old, oldCount);
    ++changes_;
}

/// By bucket and along each chain, so that the order of the new chains follows from the one of the old.
void Hash<const char*>::moveAll(const Buckets& from, std::uint64_t count) {
    for (std::uint64_t i = 0; i < count; ++i) {
        for (Node* node = from[i]; node != nullptr;) {
            Node* const next = node->next;
            node->next = nullptr;
            append(*node, endOfChain(node->hash));
            node = next;
        }
    }
}

/// Most keys are asked for as they were entered, and the C library compares many bytes at once.
bool StringHash::Equal(const char* a, const char* b) const {
    return std::strcmp(a, b) == 0 || zelutil::ascii::compareIgnoringCase(a, b) == 0;
}

unsigned StringHash::Index(const char* key) const {
    return bucketCount_ == 0 ? 0 : static_cast<unsigned>(FullHash(orEmpty(key)) % bucketCount_);
}

void StringHash::Grow() { bucketCount_ = zelutil::hash::grownBucketCount(bucketCount_); }

std::uint32_t StringHash::FullHash(const char* key) const { return zelutil::hash::foldedMurmur(key); }

}  // namespace ZelU::Hash::Impl
