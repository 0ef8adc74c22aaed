#ifndef ZELUTIL_EXAMPLES_REGISTRY_NET_REPORT_H
#define ZELUTIL_EXAMPLES_REGISTRY_NET_REPORT_H

#include "net_report_export.h"

/// The plug-in's command: prints how many nets the open document has. It takes no document; the plug-in finds it.
NET_REPORT_EXPORT void reportNets();

#endif
