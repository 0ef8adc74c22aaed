#ifndef ZELUTIL_HOST_SAVE_TEXT_H
#define ZELUTIL_HOST_SAVE_TEXT_H

#include <zelutil/host/result.h>

#include <string>

namespace zelutil::host {

/// Returns the result's text, made of everything else that is in it.
std::string textOf(const SaveResult& result);

}  // namespace zelutil::host

#endif
