#ifndef ZELUTIL_EXAMPLES_HOST_LAYER_KIND_H
#define ZELUTIL_EXAMPLES_HOST_LAYER_KIND_H

#include <zelutil/enums/named_enum.h>

/// An enumeration of the host's own, with names.
enum class LayerKind : int { Signal, Plane, SolderMask, Silkscreen };

template <>
const Smart::Enum::HRES<LayerKind>& Smart::Enum::HRES<LayerKind>::Instance();

#endif
