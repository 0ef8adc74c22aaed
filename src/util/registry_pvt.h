#ifndef ZELUTIL_UTIL_REGISTRY_PVT_H
#define ZELUTIL_UTIL_REGISTRY_PVT_H

#include <zelutil/util/registry.h>
#include <zelutil/util/smart_pointer.h>

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

// NOLINTBEGIN(readability-identifier-naming): these names continue those of the public classes.
namespace ZelU::Registry::Pvt {

class Ctnr;

/// Containers by the address of their value.
using ContainerMap = std::map<const IValue*, Ctnr*>;

/// A stack; its last element is the top.
using Slot = std::vector<Smart::Pointer<Ctnr>>;

/// Holds one value in a slot, and is the value's container in the registry's map unless the value has one already.
class Ctnr {
public:
    /// Throws `Exceptions::Misuse` for null.
    explicit Ctnr(IValue* value);
    Ctnr(const Ctnr&) = delete;
    Ctnr& operator=(const Ctnr&) = delete;
    virtual ~Ctnr();

    virtual bool IsPermanent() const = 0;

    IValue* value() const { return value_; }

private:
    IValue* value_;
    /// Nothing where the value had a container before this one.
    std::optional<ContainerMap::iterator> entry_;
};

/// Owns its value.
class PermanentCtnr final : public Ctnr {
public:
    explicit PermanentCtnr(std::unique_ptr<IValue> value) : Ctnr(value.get()) { static_cast<void>(value.release()); }
    ~PermanentCtnr() override;

    bool IsPermanent() const override { return true; }
};

/// Knows where the value was lent to.
class TempCtnr final : public Ctnr {
public:
    TempCtnr(IValue& value, Slot& slot) : Ctnr(&value), slot_(&slot) {}

    bool IsPermanent() const override { return false; }

    bool onTop() const { return !slot_->empty() && slot_->back().get() == this; }

private:
    Slot* slot_;
};

/// Names, slots and containers of the process.
class Registry {
public:
    /// Makes the registry at the first call. Null once its destruction has begun.
    static Registry* instance();

    /// Null too where there is none yet.
    static Registry* ifThere();

    Registry(const Registry&) = delete;
    Registry& operator=(const Registry&) = delete;
    ~Registry();

    /// Returns for a new name the number of names known before it.
    std::int32_t indexOf(const char* name);

    /// The first call makes the slots. Throws `Exceptions::Misuse` for the index of a later name.
    Slot& slot(std::int32_t index);

    /// Makes `container` the value's own. Nothing when the value has one already.
    std::optional<ContainerMap::iterator> enter(Ctnr& container);

    /// Undoes `enter`.
    void leave(ContainerMap::iterator entry);

    /// Takes away a value that is being destroyed. Returns false when it was lent but lay not on top of its slot; no
    /// slot holds it afterwards in any case.
    bool withdraw(const IValue& value);

private:
    Registry();

    void removeLent(const IValue& value);

    std::map<std::string, std::int32_t, std::less<>> names_;
    ContainerMap containers_;
    std::vector<Slot> slots_;
};

}  // namespace ZelU::Registry::Pvt
// NOLINTEND(readability-identifier-naming)

#endif
