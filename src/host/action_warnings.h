#ifndef ZELUTIL_HOST_ACTION_WARNINGS_H
#define ZELUTIL_HOST_ACTION_WARNINGS_H

#include <zelutil/host/start.h>

#include "actions/action_catalogue.h"

#include <vector>

namespace zelutil::host {

/// Returns which entries of the user's text had no effect at the last load of the catalogue, in the order of the text.
std::vector<StartWarning> actionWarnings(const actions::ActionCatalogue& catalogue);

}  // namespace zelutil::host

#endif
