#ifndef ZELUTIL_ENUMS_NAME_INDEX_H
#define ZELUTIL_ENUMS_NAME_INDEX_H

#include <cstddef>
#include <cstdint>
#include <string>

/// An index of names in which the case of ASCII letters does not count, made by the compiler.
///
/// Panels ask for the value of a name for each element of their descriptions: "24 controls, found" of
/// bench/enums_bench.cpp. A slot holds the first and the last eight bytes of its name in lower case, and so all of a
/// name of up to 16 bytes: a name is found after its length, two words and one multiplication of each, where ordered
/// names take five comparisons from the first byte on.
namespace zelutil::enums {

/// Returns the first byte as a number without sign.
constexpr std::uint64_t byteAt(const char* text) { return static_cast<unsigned char>(*text); }

/// Returns four bytes, the first the lowest. Compilers make one load of this expression, not of a loop, where the
/// system's own order is this one.
constexpr std::uint64_t halfWordAt(const char* text) {
    return byteAt(text) | byteAt(text + 1) << 8 | byteAt(text + 2) << 16 | byteAt(text + 3) << 24;
}

/// Returns eight bytes in the same order.
constexpr std::uint64_t wordAt(const char* text) { return halfWordAt(text) | halfWordAt(text + 4) << 32; }

/// Returns the word of a text of less than eight bytes. Texts of one length have different words.
constexpr std::uint64_t shortWordOf(const char* text, std::size_t length) {
    if (length >= 4) {
        return halfWordAt(text) | halfWordAt(text + length - 4) << 32;
    }
    std::uint64_t word = 0;
    for (std::size_t i = 0; i < length; ++i) {
        word = word << 8 | byteAt(text + i);
    }
    return word;
}

/// Returns `word` with each of its bytes that is an ASCII capital in lower case.
constexpr std::uint64_t lowerCaseWord(std::uint64_t word) {
    constexpr std::uint64_t kEach = 0x0101010101010101;
    // The highest bit of a byte tells, and no sum of two numbers below 0x80 carries into the next one.
    const std::uint64_t low = word & kEach * 0x7F;
    const std::uint64_t fromA = low + kEach * (0x80 - 'A');
    const std::uint64_t behindZ = low + kEach * (0x7F - 'Z');
    const std::uint64_t capital = fromA & ~behindZ & ~word & kEach * 0x80;
    return word | capital >> 2;
}

/// A name as the index knows it.
struct NameKey {
    std::uint64_t first = 0;   ///< Its first eight bytes in lower case; all of it where it is shorter.
    std::uint64_t last = 0;    ///< Its last eight bytes in lower case; 0 where it is shorter.
    std::uint64_t length = 0;  ///< In bytes.
};

/// Returns the key of a name, which must not be null.
constexpr NameKey nameKeyOf(const char* name) {
    const std::size_t length = std::char_traits<char>::length(name);
    return length < 8 ? NameKey{shortWordOf(name, length), 0, length}
                      : NameKey{wordAt(name), wordAt(name + length - 8), length};
}

/// Returns the hash of a name of which `key` is the key; the multiplier is odd. It folds more than letters: it has only
/// to be equal where names are, and one operation folds eight bytes.
constexpr std::uint64_t hashOf(const char* name, const NameKey& key, std::uint64_t multiplier) {
    constexpr std::uint64_t kFold = 0x2020202020202020;
    constexpr std::uint64_t kApart = 0x632BE59BD9B4E018;
    std::uint64_t hash = ((key.first | kFold) + key.length) * multiplier + (key.last | kFold) * (multiplier + kApart);
    for (std::size_t at = 8; at + 8 < key.length; at += 8) {
        hash = (hash ^ (wordAt(name + at) | kFold)) * multiplier;
    }
    return hash;
}

/// Returns whether two names are the same byte for byte.
constexpr bool same(const char* a, const NameKey& keyOfA, const char* b, const NameKey& keyOfB) {
    if (((keyOfA.first ^ keyOfB.first) | (keyOfA.last ^ keyOfB.last) | (keyOfA.length ^ keyOfB.length)) != 0) {
        return false;
    }
    for (std::size_t at = 8; at + 8 < keyOfA.length; at += 8) {
        if (wordAt(a + at) != wordAt(b + at)) {
            return false;
        }
    }
    return true;
}

/// Returns whether two names are equal ignoring case.
constexpr bool equalIgnoringCase(const char* a, const NameKey& keyOfA, const char* b, const NameKey& keyOfB) {
    if (keyOfA.length != keyOfB.length || lowerCaseWord(keyOfA.first) != lowerCaseWord(keyOfB.first) ||
        lowerCaseWord(keyOfA.last) != lowerCaseWord(keyOfB.last)) {
        return false;
    }
    for (std::size_t at = 8; at + 8 < keyOfA.length; at += 8) {
        if (lowerCaseWord(wordAt(a + at)) != lowerCaseWord(wordAt(b + at))) {
            return false;
        }
    }
    return true;
}

/// Returns the number of bits of a slot's place: a few names get so many slots that a multiplier is soon found under
/// which no two of them want one.
constexpr unsigned placeBitsFor(std::size_t names) {
    const std::size_t wanted = names <= 64 ? 4 * names : 2 * names;
    unsigned bits = 1;
    while ((std::size_t{1} << bits) < wanted) {
        ++bits;
    }
    return bits;
}

/// Holds the values 0 to N-1 by their names. The table of the names must stay.
template <int N>
class NameIndex {
public:
    /// Enters the names, none of them null. Of names that are equal ignoring case the first one counts.
    constexpr explicit NameIndex(const char* const (&names)[N]) : m_names(names) {
        for (int attempt = 1; attempt < kAttempts; ++attempt) {
            if (enterAll(false)) {
                return;
            }
            m_multiplier += 2 * kFirstMultiplier;
        }
        enterAll(true);
    }

    /// Returns the value of the name, or N where there is none.
    constexpr int find(const char* name) const {
        const NameKey key = nameKeyOf(name);
        const std::size_t home = homeOf(name, key);
        const Slot& slot = m_slots[home];
        // Most names are in their own slot, and asked for as the table has them.
        return slot.value != N && same(m_names[slot.value], slot.key(), name, key) ? slot.value
                                                                                   : findFrom(home, name, key);
    }

private:
    /// A key with its value, in three words.
    struct Slot {
        constexpr NameKey key() const { return {first, last, length}; }

        std::uint64_t first = 0;
        std::uint64_t last = 0;
        std::uint32_t length = 0;
        std::int32_t value = N;
    };

    /// Returns whether all names were entered: with `mayMove` false it stops at one whose slot another has.
    constexpr bool enterAll(bool mayMove) {
        for (Slot& slot : m_slots) {
            slot = Slot();
        }
        for (int value = 0; value < N; ++value) {
            const NameKey key = nameKeyOf(m_names[value]);
            const std::size_t home = homeOf(m_names[value], key);
            const std::size_t at = place(home, m_names[value], key);
            if (at != home && !mayMove) {
                return false;
            }
            if (m_slots[at].value == N) {
                m_slots[at] = {key.first, key.last, static_cast<std::uint32_t>(key.length), value};
            }
        }
        return true;
    }

    constexpr std::size_t homeOf(const char* name, const NameKey& key) const {
        return hashOf(name, key, m_multiplier) >> (64 - kPlaceBits);
    }

    constexpr int findFrom(std::size_t home, const char* name, const NameKey& key) const {
        return m_slots[place(home, name, key)].value;
    }

    /// Returns where the name is, from its home on, or else the free slot where it would be.
    constexpr std::size_t place(std::size_t home, const char* name, const NameKey& key) const {
        std::size_t at = home;
        while (m_slots[at].value != N && !equalIgnoringCase(m_names[m_slots[at].value], m_slots[at].key(), name, key)) {
            at = (at + 1) % kSlots;
        }
        return at;
    }

    static constexpr unsigned kPlaceBits = placeBitsFor(N);
    static constexpr std::size_t kSlots = std::size_t{1} << kPlaceBits;
    static constexpr std::uint64_t kFirstMultiplier = 0x9E3779B97F4A7C15;
    static constexpr int kAttempts = N <= 64 ? 64 : 1;

    const char* const* m_names;
    std::uint64_t m_multiplier = kFirstMultiplier;
    Slot m_slots[kSlots] = {};
};

}  // namespace zelutil::enums

#endif
