#ifndef ZELUTIL_PREFS_VALUES_BY_HASH_H
#define ZELUTIL_PREFS_VALUES_BY_HASH_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace zelutil::prefs {

/// The values of one save by the keys of the settings' full names. It is filled with every value the user ever set and
/// asked for every setting there is, so it is a flat table: keys are hashes already and find their slots themselves.
class ValuesByHash {
public:
    /// For at most `count` calls of `set`.
    explicit ValuesByHash(std::size_t count) {
        std::size_t size = 2;
        while (size < 2 * count) {
            size *= 2;
        }
        slots_.resize(size);
    }

    /// Of several values for one key the last counts. The value is not copied.
    void set(std::uint64_t key, const std::string& value) {
        Slot& slot = slots_[slotOf(key)];
        slot.key = key;
        slot.value = &value;
    }

    /// Null for a key without a value.
    const std::string* find(std::uint64_t key) const { return slots_[slotOf(key)].value; }

private:
    struct Slot {
        std::uint64_t key = 0;
        const std::string* value = nullptr;
    };

    /// That of the key, or the free one where it belongs.
    std::size_t slotOf(std::uint64_t key) const {
        const std::size_t mask = slots_.size() - 1;
        std::size_t slot = static_cast<std::size_t>(key) & mask;
        while (slots_[slot].value != nullptr && slots_[slot].key != key) {
            slot = (slot + 1) & mask;
        }
        return slot;
    }

    std::vector<Slot> slots_;
};

}  // namespace zelutil::prefs

#endif
