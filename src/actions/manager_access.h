#ifndef ZELUTIL_ACTIONS_MANAGER_ACCESS_H
#define ZELUTIL_ACTIONS_MANAGER_ACCESS_H

#include <zelutil/actions/action_manager.h>

#include "actions/action_catalogue.h"

namespace zelutil::actions {

/// Lets code beside the manager's public door reach the catalogue behind it: what was shipped, and in which order.
struct ManagerAccess {
    static ActionCatalogue& catalogueOf(UCPActionManager& manager);
    static const ActionCatalogue& catalogueOf(const UCPActionManager& manager);
};

}  // namespace zelutil::actions

#endif
