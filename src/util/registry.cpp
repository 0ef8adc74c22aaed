#include <zelutil/util/registry.h>

#include <cstdio>
#include <exception>
#include <memory>
#include <utility>

#include "util/registry_pvt.h"

namespace ZelU::Registry {

Exceptions::Base::~Base() = default;
Exceptions::EmptyValueAccess::~EmptyValueAccess() = default;
Exceptions::SlotAlreadyOccupied::~SlotAlreadyOccupied() = default;
Exceptions::Misuse::~Misuse() = default;

IValue::~IValue() noexcept(false) {
    Pvt::Registry* const registry = Pvt::Registry::ifThere();
    if (registry == nullptr || registry->withdraw(*this)) {
        return;
    }
    if (std::uncaught_exceptions() == 0) {
        throw Exceptions::Misuse();
    }
    // A second exception would end the process.
    std::fputs("zelutil: a lent registry value was destroyed while it was not on top of its slot\n", stderr);
}

namespace {

/// Throws `Exceptions::Misuse` when nothing can be installed any more, or not under this name.
Pvt::Slot& slotToFill(std::int32_t index) {
    Pvt::Registry* const registry = Pvt::Registry::instance();
    if (registry == nullptr) {
        throw Exceptions::Misuse();
    }
    return registry->slot(index);
}

std::int32_t indexOf(const char* name) {
    Pvt::Registry* const registry = Pvt::Registry::instance();
    return registry != nullptr ? registry->indexOf(name) : -1;
}

}  // namespace

ShortcutBase::ShortcutBase(const char* name) : slot_(indexOf(name)), name_(name) {}

IValue* ShortcutBase::get(bool mustExist) const {
    if (Pvt::Registry* const registry = Pvt::Registry::instance()) {
        const Pvt::Slot& slot = registry->slot(slot_);
        if (!slot.empty()) {
            return slot.back()->value();
        }
    }
    if (mustExist) {
        throw Exceptions::EmptyValueAccess();
    }
    return nullptr;
}

IValue& ShortcutBase::set(IValue& value) const {
    Pvt::Slot& slot = slotToFill(slot_);
    Smart::Pointer<Pvt::Ctnr> container(new Pvt::TempCtnr(value, slot));
    slot.push_back(std::move(container));
    return *slot.back()->value();
}

IValue& ShortcutBase::set(const IValueFactory& factory) const {
    Pvt::Slot& slot = slotToFill(slot_);
    if (!slot.empty()) {
        throw Exceptions::SlotAlreadyOccupied();
    }
    std::unique_ptr<IValue> made(factory.Make());
    Smart::Pointer<Pvt::Ctnr> container(new Pvt::PermanentCtnr(std::move(made)));
    if (!slot.empty()) {
        throw Exceptions::SlotAlreadyOccupied();  // the factory itself has used the slot
    }
    slot.push_back(std::move(container));
    return *slot.back()->value();
}

}  // namespace ZelU::Registry
