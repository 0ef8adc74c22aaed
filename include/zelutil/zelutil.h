#ifndef ZELUTIL_ZELUTIL_H
#define ZELUTIL_ZELUTIL_H

/// Everything zelutil offers to a host. Each header can also be included by itself.

#include <zelutil/actions/action_item.h>
#include <zelutil/actions/action_manager.h>
#include <zelutil/actions/action_observer.h>
#include <zelutil/c_api.h>
#include <zelutil/enums/name_index.h>
#include <zelutil/enums/named_enum.h>
#include <zelutil/enums/panel_enums.h>
#include <zelutil/export.h>
#include <zelutil/facet/facet_config_manager.h>
#include <zelutil/file/hierarchy.h>
#include <zelutil/file/path.h>
#include <zelutil/host/actions.h>
#include <zelutil/host/c_api.h>
#include <zelutil/host/callback.h>
#include <zelutil/host/host.h>
#include <zelutil/host/native_path.h>
#include <zelutil/host/observers.h>
#include <zelutil/host/result.h>
#include <zelutil/host/save.h>
#include <zelutil/host/settings.h>
#include <zelutil/host/start.h>
#include <zelutil/prefs/user_preference_manager.h>
#include <zelutil/prefs/user_preference_server.h>
#include <zelutil/prefs/user_preference_settings.h>
#include <zelutil/prefs/user_settings_manager.h>
#include <zelutil/server/server.h>
#include <zelutil/util/ascii.h>
#include <zelutil/util/csv.h>
#include <zelutil/util/dbg_chk.h>
#include <zelutil/util/hash.h>
#include <zelutil/util/mutex.h>
#include <zelutil/util/registry.h>
#include <zelutil/util/smart_pointer.h>
#include <zelutil/util/strutl.h>
#include <zelutil/util/thread.h>
#include <zelutil/version.h>

#endif
