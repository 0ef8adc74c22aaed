#ifndef ZELUTIL_UTIL_REGISTRY_H
#define ZELUTIL_UTIL_REGISTRY_H

#include <zelutil/export.h>
#include <zelutil/util/smart_pointer.h>

#include <cstdint>

/// A process-wide registry of named slots through which separate parts of a host share one object without knowing each
/// other. Whoever owns a value installs it in a slot; every shortcut of that name then reaches the value on top.
///
/// A host derives a shortcut class with the type of its values, and declares the shortcuts as static objects:
///
///     class RouterShortcut : public ZelU::Registry::ShortcutBase {
///     public:
///         using ShortcutBase::ShortcutBase;
///         Router* get() const { return static_cast<Router*>(ShortcutBase::get(false)); }
///         void lend(Router& router) const { ShortcutBase::set(router); }
///     };
///     static const RouterShortcut router("router");   // Router derives from IValue
///
/// Every name must be declared before the first `get` or `set` anywhere in the process: the slots are made then, one
/// for each name known. Only the making of the registry is safe on several threads; slots are used from one thread at a
/// time.
namespace ZelU::Registry {

namespace Exceptions {

/// Every exception of this namespace derives from this.
class ZELUTIL_API Base {
public:
    Base() = default;
    Base(const Base&) = default;
    Base& operator=(const Base&) = default;
    virtual ~Base();
};

/// A value was demanded of an empty slot.
class ZELUTIL_API EmptyValueAccess : public Base {
public:
    EmptyValueAccess() = default;
    EmptyValueAccess(const EmptyValueAccess&) = default;
    EmptyValueAccess& operator=(const EmptyValueAccess&) = default;
    ~EmptyValueAccess() override;
};

/// A permanent value was to be installed in a slot that has a value.
class ZELUTIL_API SlotAlreadyOccupied : public Base {
public:
    SlotAlreadyOccupied() = default;
    SlotAlreadyOccupied(const SlotAlreadyOccupied&) = default;
    SlotAlreadyOccupied& operator=(const SlotAlreadyOccupied&) = default;
    ~SlotAlreadyOccupied() override;
};

/// A lent value was destroyed while another lay on top of it, a factory made no value, or the shortcut's name was
/// declared after the slots had been made.
class ZELUTIL_API Misuse : public Base, public Smart::Exceptions::Misuse {
public:
    Misuse() = default;
    Misuse(const Misuse&) = default;
    Misuse& operator=(const Misuse&) = default;
    ~Misuse() override;
};

}  // namespace Exceptions

/// Base of every value that is kept in the registry. A copy of an installed value is not installed.
class ZELUTIL_API IValue {
public:
    IValue() = default;
    IValue(const IValue&) = default;
    IValue& operator=(const IValue&) = default;

    /// Takes a lent value out of its slot; the value below it is on top again. Lent values must be destroyed in the
    /// reverse order of their installation, like scope guards: one that is not on top of its slot, or that was lent
    /// twice to one slot, throws `Exceptions::Misuse`. While another exception is in flight it writes a line to
    /// standard error instead. Either way no slot holds the value any longer, and the order of the others stays.
    ///
    /// Does nothing for a value that was never installed, and after the registry's own destruction at the end of the
    /// process. Inside an object whose destructor must not throw, std::unique_ptr for one, a misuse ends the process.
    virtual ~IValue() noexcept(false);
};

/// Makes the permanent value of a slot. Not owned by the registry.
class ZELUTIL_API IValueFactory {
public:
    /// A new value, which the registry will own and delete at the end of the process.
    virtual IValue* Make() const = 0;

protected:
    IValueFactory() = default;
    IValueFactory(const IValueFactory&) = default;
    IValueFactory& operator=(const IValueFactory&) = default;
    ~IValueFactory() = default;
};

/// The name of a slot, with access for derived classes that know the type of its values.
///
/// Every operation throws `Exceptions::Misuse` when the name was declared after the first `get` or `set` of the
/// process. An operation that throws leaves the slot as it was.
class ZELUTIL_API ShortcutBase {
public:
    /// Declares the name, compared byte by byte; shortcuts of one name share a slot. The text is not copied and must
    /// live as long as the shortcut. Null counts as "".
    ShortcutBase(const char* name);

    ShortcutBase(const ShortcutBase&) = default;
    ShortcutBase(ShortcutBase&&) = default;
    ShortcutBase& operator=(const ShortcutBase&) = default;
    ShortcutBase& operator=(ShortcutBase&&) = default;

protected:
    /// The value on top of the slot. When the slot is empty: throws `Exceptions::EmptyValueAccess` if `mustExist`, else
    /// answers null. The pointer is valid until the value is destroyed.
    IValue* get(bool mustExist) const;

    /// Lends `value` to the slot until it is destroyed, over whatever is there. Answers `value`.
    IValue& set(IValue& value) const;

    /// Installs what the factory makes, for the rest of the process. Answers the new value.
    ///
    /// Throws `Exceptions::SlotAlreadyOccupied`, without asking the factory, when the slot has a value, and
    /// `Exceptions::Misuse` when the factory answers null. What the factory throws passes through.
    IValue& set(const IValueFactory& factory) const;

private:
    std::int32_t slot_;
    [[maybe_unused]] const char* name_;  // for a reader with a debugger
};

}  // namespace ZelU::Registry

#endif
