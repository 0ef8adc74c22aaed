#ifndef ZELUTIL_ACTIONS_OVERWRITABLE_H
#define ZELUTIL_ACTIONS_OVERWRITABLE_H

#include <zelutil/actions/action_item.h>

#include <utility>

namespace zelutil::actions {

/// The value in force.
template <typename T>
const T& effectiveValue(const OverwritableValue<T>& property) {
    return property.overwritten ? property.userValue : property.defaultValue;
}

/// The one rule by which a property gets a new value: going back to the default is no overwrite.
template <typename T>
void setValue(OverwritableValue<T>& property, T value) {
    property.overwritten = value != property.defaultValue;
    if (property.overwritten) {
        property.userValue = std::move(value);
    } else {
        property.userValue = property.resetValue;
    }
}

}  // namespace zelutil::actions

#endif
