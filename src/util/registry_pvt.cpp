#include "util/registry_pvt.h"

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <string_view>

namespace ZelU::Registry::Pvt {
namespace {

/// Set while the registry lives. A plain address, so that values and shortcuts which outlive it can still ask.
std::atomic<Registry*> theRegistry = nullptr;

}  // namespace

Ctnr::Ctnr(IValue* value) : value_(value) {
    if (value == nullptr) {
        throw Exceptions::Misuse();
    }
    if (Registry* const registry = Registry::ifThere()) {
        entry_ = registry->enter(*this);
    }
}

Ctnr::~Ctnr() {
    Registry* const registry = Registry::ifThere();
    if (registry != nullptr && entry_.has_value()) {
        registry->leave(*entry_);
    }
}

PermanentCtnr::~PermanentCtnr() { delete value(); }

Registry::Registry() { theRegistry = this; }

Registry::~Registry() {
    // First: the destructors of the values that go now may ask for others.
    theRegistry = nullptr;
}

Registry* Registry::instance() {
    static Registry registry;
    return theRegistry;
}

Registry* Registry::ifThere() { return theRegistry; }

std::int32_t Registry::indexOf(const char* name) {
    const std::string_view text(name != nullptr ? name : "");
    const auto known = names_.find(text);
    if (known != names_.end()) {
        return known->second;
    }
    return names_.emplace(text, static_cast<std::int32_t>(names_.size())).first->second;
}

Slot& Registry::slot(std::int32_t index) {
    if (slots_.empty()) {
        // Kept deliberately: the slots are made once, and a name that is declared later never gets one. Containers know
        // their slot by its address.
        slots_.resize(names_.size());
    }
    if (index < 0 || static_cast<std::size_t>(index) >= slots_.size()) {
        throw Exceptions::Misuse();
    }
    return slots_[static_cast<std::size_t>(index)];
}

std::optional<ContainerMap::iterator> Registry::enter(Ctnr& container) {
    // Kept deliberately: a value that is lent again keeps its first container, so that its destruction is then a
    // misuse.
    const auto [entry, entered] = containers_.emplace(container.value(), &container);
    return entered ? std::optional(entry) : std::nullopt;
}

void Registry::leave(ContainerMap::iterator entry) { containers_.erase(entry); }

bool Registry::withdraw(const IValue& value) {
    const auto entered = containers_.find(&value);
    if (entered == containers_.end() || entered->second->IsPermanent()) {
        return true;  // never installed, or its container is deleting it
    }
    const bool onTop = static_cast<const TempCtnr*>(entered->second)->onTop();
    removeLent(value);
    return onTop;
}

/// From every slot: a value that was lent several times must not be found dead in any of them.
void Registry::removeLent(const IValue& value) {
    for (Slot& slot : slots_) {
        const auto isLent = [&value](const Smart::Pointer<Ctnr>& container) {
            return container->value() == &value && !container->IsPermanent();
        };
        slot.erase(std::remove_if(slot.begin(), slot.end(), isLent), slot.end());
    }
}

}  // namespace ZelU::Registry::Pvt
