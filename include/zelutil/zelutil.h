#ifndef ZELUTIL_ZELUTIL_H
#define ZELUTIL_ZELUTIL_H

/// Everything zelutil offers to a host. Each header can also be included by itself.

#include <zelutil/c_api.h>
#include <zelutil/export.h>
#include <zelutil/file/hierarchy.h>
#include <zelutil/file/path.h>
#include <zelutil/util/ascii.h>
#include <zelutil/util/dbg_chk.h>

#endif
