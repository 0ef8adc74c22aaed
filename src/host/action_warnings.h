#ifndef ZELUTIL_HOST_ACTION_WARNINGS_H
#define ZELUTIL_HOST_ACTION_WARNINGS_H

#include <zelutil/host/start.h>

#include "actions/action_catalogue.h"

#include <string_view>
#include <vector>

namespace zelutil::host {

/// Return which entries of the user's text have no effect when it is loaded after the shipped one, in the order of the
/// text; of a catalogue those of its last load.
std::vector<StartWarning> actionWarnings(std::string_view defaultsText, std::string_view userText);
std::vector<StartWarning> actionWarnings(const actions::ActionCatalogue& catalogue);

}  // namespace zelutil::host

#endif
