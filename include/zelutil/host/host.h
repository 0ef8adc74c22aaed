#ifndef ZELUTIL_HOST_HOST_H
#define ZELUTIL_HOST_HOST_H

/// Everything of `zelutil::host`, which a host uses for saving, enumerating, resetting and observing: it stands on the
/// library's classes and changes nothing that they return.

#include <zelutil/host/actions.h>
#include <zelutil/host/native_path.h>
#include <zelutil/host/observers.h>
#include <zelutil/host/result.h>
#include <zelutil/host/save.h>
#include <zelutil/host/settings.h>
#include <zelutil/host/start.h>

#endif
