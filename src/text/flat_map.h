#ifndef ZELUTIL_TEXT_FLAT_MAP_H
#define ZELUTIL_TEXT_FLAT_MAP_H

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <utility>
#include <vector>

#include "text/text_hash.h"

namespace zelutil::text {

/// A map from texts, for "getCommand" and "isShortcutTaken" of bench/action_lookup_bench.cpp: each key that a user
/// presses is looked up in a context, among hundreds of shortcuts. A place of four bytes each of hash and number leads
/// to the entry, and all entries lie in one array, so that a look-up reads two lines of the cache where nodes take
/// four. "2000 facets, found" of bench/facets_bench.cpp is two such look-ups.
///
/// `Text` is a std::string, or a view of a text that outlives the map. A change invalidates pointers into it.
template <typename Text, typename Value>
class FlatMap {
public:
    struct Entry {
        Text text;
        Value value;
    };

    /// The entries, in no order.
    auto begin() const { return entries_.begin(); }
    auto end() const { return entries_.end(); }

    std::size_t size() const { return entries_.size(); }

    const Value* find(std::string_view text) const {
        const Place* const place = placeOf(text, hashOf(text));
        return place == nullptr ? nullptr : &entries_[place->number].value;
    }

    /// Enters a value where the text has none. Returns the value that is there then, and whether it is the new one.
    /// Where memory runs out, nothing has changed.
    // NOLINTNEXTLINE(readability-identifier-naming): the name that it has in standard maps.
    std::pair<Value*, bool> try_emplace(std::string_view text, Value value) {
        const std::uint32_t hash = hashOf(text);
        if (const Place* const place = placeOf(text, hash)) {
            return {&entries_[place->number].value, false};
        }
        if (2 * (entries_.size() + 1) > places_.size()) {
            grow();
        }
        entries_.push_back({Text(text), std::move(value)});
        enter(places_, {hash, static_cast<std::uint32_t>(entries_.size() - 1)});
        return {&entries_.back().value, true};
    }

    void erase(std::string_view text) {
        Place* const place = placeOf(text, hashOf(text));
        if (place == nullptr) {
            return;
        }
        const std::uint32_t number = place->number;
        leave(static_cast<std::size_t>(place - places_.data()));
        // The last entry takes the number over.
        const auto last = static_cast<std::uint32_t>(entries_.size() - 1);
        if (number != last) {
            placeOf(entries_[last].text, hashOf(entries_[last].text))->number = number;
            entries_[number] = std::move(entries_[last]);
        }
        entries_.pop_back();
    }

private:
    static constexpr std::uint32_t kFree = 0xFFFFFFFF;

    struct Place {
        std::uint32_t hash = 0;
        std::uint32_t number = kFree;
    };
    /// As many as a power of two, at least half of them free. An entry has the first free one from the place of its
    /// hash on, round the end.
    using Places = std::vector<Place>;

    static std::size_t mask(const Places& places) { return places.size() - 1; }

    const Place* placeOf(std::string_view text, std::uint32_t hash) const {
        if (places_.empty()) {
            return nullptr;
        }
        for (std::size_t at = hash & mask(places_); places_[at].number != kFree; at = (at + 1) & mask(places_)) {
            if (places_[at].hash == hash && entries_[places_[at].number].text == text) {
                return &places_[at];
            }
        }
        return nullptr;
    }

    Place* placeOf(std::string_view text, std::uint32_t hash) {
        return const_cast<Place*>(std::as_const(*this).placeOf(text, hash));
    }

    static void enter(Places& places, Place place) {
        std::size_t at = place.hash & mask(places);
        while (places[at].number != kFree) {
            at = (at + 1) & mask(places);
        }
        places[at] = place;
    }

    void grow() {
        Places larger(places_.empty() ? 16 : 2 * places_.size());
        for (const Place& place : places_) {
            if (place.number != kFree) {
                enter(larger, place);
            }
        }
        places_.swap(larger);
    }

    /// Frees a place. Entries behind it that would be found no more move up.
    void leave(std::size_t hole) {
        for (std::size_t at = (hole + 1) & mask(places_); places_[at].number != kFree; at = (at + 1) & mask(places_)) {
            const std::size_t fromHome = (at - places_[at].hash) & mask(places_);
            const std::size_t fromHole = (at - hole) & mask(places_);
            if (fromHome >= fromHole) {
                places_[hole] = places_[at];
                hole = at;
            }
        }
        places_[hole] = Place();
    }

    Places places_;
    std::vector<Entry> entries_;
};

}  // namespace zelutil::text

#endif
