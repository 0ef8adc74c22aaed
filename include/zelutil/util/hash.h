#ifndef ZELUTIL_UTIL_HASH_H
#define ZELUTIL_UTIL_HASH_H

#include <zelutil/export.h>
#include <zelutil/util/smart_pointer.h>

#include <cstddef>

namespace ZelU::Hash {

template <class Key>
class Hash;

/// A table of objects that a host makes and the table owns, found by narrow keys in which the case of the 26 ASCII
/// letters does not count. The table keeps no copy of a key: each entry knows its own.
///
///     using NetTable = ZelU::Hash::Hash<const char*>;
///     Smart::Pointer<NetTable> nets = NetTable::Create(1000, &netFactory, true);
///     Net& net = static_cast<Net&>(nets->Acquire("GND"));   // made by netFactory
///     nets->Find("gnd");                                    // => the same entry
///
/// A null key counts as "". A table is used by one thread at a time. It may be used from within a factory, and from
/// within an entry's destructor while the entry is being removed.
///
/// The entries of a bucket form a chain; a new one goes to its end. The bucket is MurmurHash2 (32 bits, seed 12) as
/// published by Austin Appleby, over the key's bytes with bit 0x20 set in each, modulo the number of buckets.
template <>
class ZELUTIL_API Hash<const char*> {
public:
    /// One stored object. The table deletes it when it is removed and when the table goes.
    class ZELUTIL_API IEntry {
    public:
        class IFactory;

        virtual ~IEntry();

        /// The entry's key. Must stay valid and unchanged, but for the case of letters, as long as the entry is in the
        /// table.
        virtual const char* Key() const = 0;

    protected:
        IEntry() = default;
        IEntry(const IEntry&) = default;
        IEntry& operator=(const IEntry&) = default;
    };

    /// An empty table without buckets. It takes them, the next of the table's sizes above `size` + 1, at the first
    /// `Acquire` or `Initialize`:
    ///
    ///     size 0..209 => 211 buckets    210..429 => 431    100000 => 367453    296851369 and more => 296851369
    ///
    /// `factory` makes the entries; it is not owned and must live as long as `Acquire` is called. With `autoRehash` the
    /// table moves to its next size when a chain has grown too long; otherwise it keeps the buckets it took.
    static Smart::Pointer<Hash> Create(std::size_t size, IEntry::IFactory* factory, bool autoRehash);

    /// Deletes every entry: bucket after bucket, and each chain from its head.
    virtual ~Hash();

    /// The entry of `key`, made by the factory when there is none. It stays where it is until it is removed.
    ///
    /// With auto rehash, the addition of an entry moves all of them to the next size when any look-up since the buckets
    /// were taken, this one included, has passed more than 6 nodes without a match behind the first of its chain. That
    /// is so for the ninth key of a bucket. It prints "Rehashing %d (%d)" and a line feed to standard output, with the
    /// old number of buckets and the longest such walk.
    ///
    /// Whatever the factory throws passes through and leaves the table unchanged. So does std::bad_alloc, which is also
    /// thrown when the factory answers null or there is no factory; but when there is only no memory for the buckets of
    /// the next size, the new entry stays in the table.
    virtual IEntry& Acquire(const char* key) = 0;

    /// The entry of `key`, or null, also in a table without buckets. Makes nothing.
    virtual IEntry* Find(const char* key) = 0;

    /// Takes the entry of `key` out of the table and deletes it. Nothing happens when there is none. The table never
    /// shrinks.
    virtual void Remove(const char* key) = 0;

    /// Takes the buckets, unless the table has them. Throws std::bad_alloc and leaves the table as it was when there is
    /// no memory for them.
    virtual void Initialize() = 0;

    Hash(const Hash&) = delete;

    /// Assigns nothing: either table keeps its entries.
    Hash& operator=(const Hash&) = default;

protected:
    Hash() = default;
};

/// Makes the entries of a table. Not owned by it.
class ZELUTIL_API Hash<const char*>::IEntry::IFactory {
public:
    /// A new entry, which the table will own, whose `Key()` equals `key` but perhaps for the case of letters. `key` is
    /// valid during the call only.
    virtual IEntry* NewEntry(const char* key) = 0;

protected:
    IFactory() = default;
    IFactory(const IFactory&) = default;
    IFactory& operator=(const IFactory&) = default;
    ~IFactory() = default;
};

}  // namespace ZelU::Hash

#endif
