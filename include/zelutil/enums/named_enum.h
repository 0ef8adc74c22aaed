#ifndef ZELUTIL_ENUMS_NAMED_ENUM_H
#define ZELUTIL_ENUMS_NAMED_ENUM_H

#include <zelutil/enums/name_index.h>
#include <zelutil/export.h>

#include <cstdint>
#include <type_traits>

/// Enumerations whose values have names. An enumeration is bound to a table of texts, entry k being the name of value
/// k; its map, reached through `HRES<E>::Instance()`, turns a value into its name and a name into its value.
///
/// A map is immutable, made by the compiler and there from load to unload. Any number of threads may use it at once,
/// from the first call on. No operation allocates, throws or prints.
///
/// A host binds an enumeration of its own like this, the declaration beside the enumeration and the rest in one source
/// file:
///
///     enum class Side : int { Top, Bottom };
///     template <> const Smart::Enum::HRES<Side>& Smart::Enum::HRES<Side>::Instance();
///
///     namespace { constexpr const char* const kSides[] = {"Top", "Bottom"}; }
///     template <> const Smart::Enum::HRES<Side>& Smart::Enum::HRES<Side>::Instance() {
///         static constexpr HRES_Impl<Side, 2, kSides> map;
///         return map;
///     }
namespace Smart::Enum {

/// The map of an enumeration that is not known, with its values as `int`. Maps are never deleted through it.
class ZELUTIL_API IRawMap {
    // The order of the virtual functions, this one included, is part of the binary interface: hosts call them by
    // position. This one answers `RawLookup(name)`. Its name is not `Lookup`, which the typed face declares with
    // another result: there it would be an override that cannot be, or else hide a virtual function.
    virtual int LookupValue(const char* name) const;

public:
    IRawMap(const IRawMap&) = delete;
    IRawMap& operator=(const IRawMap&) = delete;

    /// Number of values, N: they are 0 to N-1. N itself is the answer of a look-up that finds nothing.
    virtual int Size() const = 0;

    /// The table of N names; entry k names value k. It belongs to the map.
    virtual const char* const* Names() const = 0;

    /// The name of `value`, which belongs to the map; null when `value` is N or greater. A negative value is undefined
    /// behaviour.
    virtual const char* Name(int value) const = 0;

    /// The value whose name equals `name`, ignoring the case of ASCII letters; N when none does or `name` is null.
    /// Of names that are equal ignoring case the first of the table is found: the name of a later one does not lead
    /// back to its value.
    ///
    ///     on the names "Basic", "Advanced": "Advanced" => 1, "advanced" => 1, "Advanced " => 2, "" => 2
    virtual int RawLookup(const char* name) const = 0;

    /// The same as `RawLookup`.
    int Lookup(const char* name) const { return LookupValue(name); }

protected:
    constexpr IRawMap() = default;
    ~IRawMap() = default;
};

/// The map of the enumeration `E`, which has a fixed underlying type, so that N is one of its values too.
template <typename E>
class HRES : public IRawMap {
    static_assert(std::is_enum_v<E>, "HRES maps enumerations");

public:
    /// The one map of `E`. Defined only for enumerations that were bound, by an explicit specialisation.
    static const HRES& Instance();

    /// `RawLookup(name)` as a value of the enumeration; `E(N)` when the name is not found.
    E Lookup(const char* name) const { return static_cast<E>(IRawMap::Lookup(name)); }

protected:
    constexpr HRES() = default;
    ~HRES() = default;
};

/// The map itself, on a table of `N` texts, none of them null, that is best declared `constexpr`: the names are then
/// indexed by the compiler.
template <typename E, int N, const char* const (&table)[N]>
class HRES_Impl final : public HRES<E> {
    static_assert(N <= UINT16_MAX + 1, "tables of more names take too much of a compiler");

public:
    // Kept deliberately: of names that are equal ignoring case the first keeps the place. The later value has a name
    // that leads to the first one; a table needs no check for that to be usable.
    constexpr HRES_Impl() : m_index(table) {}

    int Size() const override { return N; }

    const char* const* Names() const override { return table; }

    const char* Name(int value) const override { return value >= N ? nullptr : table[value]; }

    int RawLookup(const char* name) const override { return name == nullptr ? N : m_index.find(name); }

private:
    zelutil::enums::NameIndex<N> m_index;
};

}  // namespace Smart::Enum

#endif
