#ifndef ZELUTIL_UTIL_ENTRY_INDEX_H
#define ZELUTIL_UTIL_ENTRY_INDEX_H

#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>
#include <utility>

namespace zelutil::hash {

/// An index of the entries of a hash table by their hashes, for "1,000 keys, found" and "100,000 keys, found" of
/// bench/hash_bench.cpp: hosts fill a table once and then ask it millions of times. A chain of nodes takes a line of
/// the cache for the bucket and one for each node before the entry is read; a place of this index, which holds hash and
/// entry, takes one.
///
/// An index never fails: where there is no memory for it, it is given up, and the table goes by its chains.
template <typename Entry>
class EntryIndex {
public:
    /// Returns whether every entry of the table is in it.
    bool isWhole() const { return !givenUp_; }

    /// Returns the entry with this hash for which `isWanted` is true, or null; of several the one that was added first.
    /// To be asked while it is whole.
    template <typename IsWanted>
    Entry* find(std::uint32_t hash, IsWanted isWanted) const {
        if (places_ == nullptr) {
            return nullptr;
        }
        for (std::size_t at = hash & mask_; places_[at].entry != nullptr; at = (at + 1) & mask_) {
            if (places_[at].hash == hash && isWanted(*places_[at].entry)) {
                return places_[at].entry;
            }
        }
        return nullptr;
    }

    void add(std::uint32_t hash, Entry& entry) {
        if (givenUp_ || (2 * (count_ + 1) > placeCount() && !grow())) {
            return;
        }
        enter(places_.get(), mask_, {&entry, hash});
        ++count_;
    }

    /// Takes out an entry that was added. Entries behind it that would be found no more move up.
    void remove(std::uint32_t hash, const Entry& entry) {
        if (givenUp_) {
            return;
        }
        std::size_t hole = hash & mask_;
        while (places_[hole].entry != &entry) {
            hole = (hole + 1) & mask_;
        }
        for (std::size_t at = (hole + 1) & mask_; places_[at].entry != nullptr; at = (at + 1) & mask_) {
            const std::size_t fromHome = (at - places_[at].hash) & mask_;
            const std::size_t fromHole = (at - hole) & mask_;
            if (fromHome >= fromHole) {
                places_[hole] = places_[at];
                hole = at;
            }
        }
        places_[hole] = Place();
        --count_;
    }

private:
    struct Place {
        Entry* entry = nullptr;
        std::uint32_t hash = 0;
    };
    using Places = std::unique_ptr<Place[]>;

    std::size_t placeCount() const { return places_ == nullptr ? 0 : mask_ + 1; }

    static void enter(Place* places, std::size_t mask, Place place) {
        std::size_t at = place.hash & mask;
        while (places[at].entry != nullptr) {
            at = (at + 1) & mask;
        }
        places[at] = place;
    }

    /// Returns 0 where there are no places.
    std::size_t firstFreePlace() const {
        std::size_t at = 0;
        while (at < placeCount() && places_[at].entry != nullptr) {
            ++at;
        }
        return at;
    }

    /// Doubles the number of places, or gives up.
    bool grow() {
        const std::size_t before = placeCount();
        const std::size_t count = before == 0 ? 16 : 2 * before;
        Places larger(new (std::nothrow) Place[count]);
        givenUp_ = larger == nullptr;
        // From behind a free place on, so that entries which lie round the end keep their order.
        const std::size_t first = firstFreePlace();
        for (std::size_t i = 0; i < before && !givenUp_; ++i) {
            const Place& place = places_[(first + i) & mask_];
            if (place.entry != nullptr) {
                enter(larger.get(), count - 1, place);
            }
        }
        places_ = std::move(larger);
        mask_ = count - 1;
        return !givenUp_;
    }

    /// As many as a power of two, at least half of them free. An entry has the first free one from the place of its
    /// hash on, round the end.
    Places places_;
    std::size_t mask_ = 0;
    std::size_t count_ = 0;
    bool givenUp_ = false;
};

}  // namespace zelutil::hash

#endif
