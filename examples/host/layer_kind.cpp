#include "layer_kind.h"

namespace {

/// In the order of the enumerators.
constexpr const char* const kLayerKinds[] = {"Signal", "Plane", "Solder mask", "Silkscreen"};

}  // namespace

template <>
const Smart::Enum::HRES<LayerKind>& Smart::Enum::HRES<LayerKind>::Instance() {
    static constexpr HRES_Impl<LayerKind, 4, kLayerKinds> kMap;
    return kMap;
}
