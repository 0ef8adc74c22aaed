#include <zelutil/enums/panel_enums.h>

namespace ZelU::ZelPanel {
namespace {

// The tables bear their given names.
// NOLINTBEGIN(readability-identifier-naming)
constexpr const char* const _wrkSheet[] = {
    "Total Etch Length", "Differential Pair", "Relative Propagation Delay", "Wiring", "Vias", "All Layers", "By Layer",
    "Impedance",         "Return Path",       "Min/Max Propagation Delays", "Holes",
};

constexpr const char* const _objType[] = {
    "Electrical Constraint Set",
    "Physical Constraint Set",
    "Spacing Constraint Set",
    "Same Net Spacing Constraint Set",
    "Net",
    "Region",
    "Net Class-Class",
};

constexpr const char* const _svgWidgets[] = {
    "RatsNestSchedule", "Adv_RatsNestSchedule", "HoleSpacing", "PadSpacing", "HoleTypeSpacing", "Delta_RPD",
};

constexpr const char* const _holeSpacing[] = {
    "Hole To Shape", "All Holes", "Hole To Via", "Hole To Pin", "Hole To Line",
};

constexpr const char* const _padTypeSpacing[] = {
    "Thru Pin Pad", "SMD Pin Pad", "Thru Via Pad", "BB Via Pad", "Micro Via Pad",
};

constexpr const char* const _holeTypeSpacing[] = {
    "Thru Via Hole",
    "BB Via Hole",
    "Micro Via Hole",
    "Pin Hole",
};

constexpr const char* const _ssType[] = {
    "domain", "objectType", "workbook", "worksheet", "mcfType",
};

constexpr const char* const _layerType[] = {
    "All Layers",
    "Internal",
    "External",
    "Advanced",
};

constexpr const char* const _modes[] = {
    "Basic",
    "Advanced",
};

constexpr const char* const _mcfType[] = {
    "Holes",
};

constexpr const char* const _modelType[] = {
    "RPD",
};

constexpr const char* const _uicontrols[] = {
    "ruleSet",
    "drcModesButton",
    "enableBasicChecksButton",
    "layerType",
    "svg",
    "toolbarButton",
    "uiElem",
    "separator",
    "tabs",
    "attrName",
    "adv_layer_type",
    "svgWidget",
    "hideUnits",
    "model",
    "viaList",
    "create_via_list",
    "launch_padstack_editor",
    "via_list_chart",
    "phy_advanced",
    "return_path",
    "impedance",
    "topxp",
    "spac_adv",
    "sn_check_by_layer",
};

// NOLINTEND(readability-identifier-naming)

// `constexpr` makes sure that the index is made by the compiler: no look-up can then be the first.
template <typename E, int N, const char* const (&table)[N]>
constexpr Smart::Enum::HRES_Impl<E, N, table> kMap;

}  // namespace
}  // namespace ZelU::ZelPanel

namespace Smart::Enum {

using namespace ZelU::ZelPanel;

template <>
const HRES<ZelWorksheets>& HRES<ZelWorksheets>::Instance() {
    return kMap<ZelWorksheets, 11, _wrkSheet>;
}

template <>
const HRES<ObjectType>& HRES<ObjectType>::Instance() {
    return kMap<ObjectType, 7, _objType>;
}

template <>
const HRES<SvgWidgets>& HRES<SvgWidgets>::Instance() {
    return kMap<SvgWidgets, 6, _svgWidgets>;
}

template <>
const HRES<HoleSpacing>& HRES<HoleSpacing>::Instance() {
    return kMap<HoleSpacing, 5, _holeSpacing>;
}

template <>
const HRES<PadSpacing>& HRES<PadSpacing>::Instance() {
    return kMap<PadSpacing, 5, _padTypeSpacing>;
}

template <>
const HRES<HoleTypeSpacing>& HRES<HoleTypeSpacing>::Instance() {
    return kMap<HoleTypeSpacing, 4, _holeTypeSpacing>;
}

template <>
const HRES<SSType>& HRES<SSType>::Instance() {
    return kMap<SSType, 5, _ssType>;
}

template <>
const HRES<LayerType>& HRES<LayerType>::Instance() {
    return kMap<LayerType, 4, _layerType>;
}

template <>
const HRES<Modes>& HRES<Modes>::Instance() {
    return kMap<Modes, 2, _modes>;
}

template <>
const HRES<McfType>& HRES<McfType>::Instance() {
    return kMap<McfType, 1, _mcfType>;
}

template <>
const HRES<Model>& HRES<Model>::Instance() {
    return kMap<Model, 1, _modelType>;
}

template <>
const HRES<UI>& HRES<UI>::Instance() {
    return kMap<UI, 24, _uicontrols>;
}

}  // namespace Smart::Enum
