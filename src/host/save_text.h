#ifndef ZELUTIL_HOST_SAVE_TEXT_H
#define ZELUTIL_HOST_SAVE_TEXT_H

#include <zelutil/host/result.h>

#include <string>

namespace zelutil::host {

/// Returns the text for what the result says otherwise. `tookTurn` tells whether other processes were kept from saving
/// meanwhile.
std::string textOf(const SaveResult& result, bool tookTurn);

/// Returns the text for a file that was left as it is because it could not be read.
std::string textOfUnread(const SaveResult& result);

/// Returns the text for a file that nobody could read, so that it was not written.
std::string textOfUnreadable(const SaveResult& result);

}  // namespace zelutil::host

#endif
