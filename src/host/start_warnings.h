#ifndef ZELUTIL_HOST_START_WARNINGS_H
#define ZELUTIL_HOST_START_WARNINGS_H

#include <zelutil/host/start.h>

#include "prefs/entry_finding.h"

namespace zelutil::host {

/// Returns the warning of what the reader of the user's file has found.
StartWarning aboutEntry(const prefs::EntryFinding& finding);

}  // namespace zelutil::host

#endif
