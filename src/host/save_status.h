#ifndef ZELUTIL_HOST_SAVE_STATUS_H
#define ZELUTIL_HOST_SAVE_STATUS_H

#include <zelutil/host/result.h>

#include "prefs/user_settings_file.h"

namespace zelutil::host {

/// Returns the status of a save whose writing of the user's file had that outcome.
constexpr SaveResult::Status statusOf(prefs::UserSettingsFile::Written written) {
    using Written = prefs::UserSettingsFile::Written;
    switch (written) {
        case Written::Yes:
            return SaveResult::Status::Saved;
        case Written::NoPath:
            return SaveResult::Status::NoPath;
        case Written::NotKept:
            return SaveResult::Status::NotKept;
        case Written::Torn:
            return SaveResult::Status::Torn;
        case Written::No:
            break;
    }
    return SaveResult::Status::NotWritten;
}

}  // namespace zelutil::host

#endif
