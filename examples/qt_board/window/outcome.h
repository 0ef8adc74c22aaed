#ifndef QT_BOARD_WINDOW_OUTCOME_H
#define QT_BOARD_WINDOW_OUTCOME_H

#include <zelutil/host/result.h>

#include "window/message_log.h"

namespace viewer {

/// Tells all that a user may want to know of a save: what became of the file, where a copy of an unread one was kept,
/// what will be otherwise after a restart, and what another process changed, too.
void tellOutcome(const zelutil::host::SaveResult& result, MessageLog& messages);

}  // namespace viewer

#endif
