#ifndef ZELUTIL_ENUMS_PANEL_ENUMS_H
#define ZELUTIL_ENUMS_PANEL_ENUMS_H

#include <zelutil/enums/named_enum.h>
#include <zelutil/export.h>

/// The enumerations of the constraint editor's panels. Their names, reached through `Smart::Enum::HRES<E>::Instance()`,
/// are the texts that users see and that panel descriptions are written with; they may differ from the enumerators:
///
///     HRES<ZelWorksheets>::Instance().Name(9) => "Min/Max Propagation Delays"
///     HRES<UI>::Instance().Lookup("RETURN_PATH") => UI::ReturnPath
///
/// One text may name values of several enumerations ("Advanced" is a LayerType and a mode): each map is searched alone.
namespace ZelU::ZelPanel {

/// The worksheets of the constraint editor.
enum class ZelWorksheets : int {
    TotalEtchLength,
    DifferentialPair,
    RelativePropagationDelay,
    Wiring,
    Vias,
    AllLayers,
    ByLayer,
    Impedance,
    ReturnPath,
    MinMaxPropagationDelays,
    Holes,
};

/// The kinds of objects that have constraints.
enum class ObjectType : int {
    ElectricalConstraintSet,
    PhysicalConstraintSet,
    SpacingConstraintSet,
    SameNetSpacingConstraintSet,
    Net,
    Region,
    NetClassClass,
};

/// The pictures in which constraints are shown and edited.
enum class SvgWidgets : int {
    RatsNestSchedule,
    AdvancedRatsNestSchedule,
    HoleSpacing,
    PadSpacing,
    HoleTypeSpacing,
    DeltaRpd,
};

/// The distances from a hole to other objects.
enum class HoleSpacing : int {
    HoleToShape,
    AllHoles,
    HoleToVia,
    HoleToPin,
    HoleToLine,
};

/// The kinds of pads to which a distance is kept.
enum class PadSpacing : int {
    ThruPinPad,
    SmdPinPad,
    ThruViaPad,
    BbViaPad,
    MicroViaPad,
};

/// The kinds of holes to which a distance is kept.
enum class HoleTypeSpacing : int {
    ThruViaHole,
    BbViaHole,
    MicroViaHole,
    PinHole,
};

/// The levels on which a panel is chosen.
enum class SSType : int {
    Domain,
    ObjectType,
    Workbook,
    Worksheet,
    McfType,
};

/// The layers that a constraint is about.
enum class LayerType : int {
    AllLayers,
    Internal,
    External,
    Advanced,
};

/// The modes of a panel.
enum class Modes : int {
    Basic,
    Advanced,
};

/// The kinds of panels that a type names.
enum class McfType : int {
    Holes,
};

/// The models of a panel.
enum class Model : int {
    Rpd,
};

/// Identifiers of the panels' controls.
enum class UI : int {
    RuleSet,
    DrcModesButton,
    EnableBasicChecksButton,
    LayerType,
    Svg,
    ToolbarButton,
    UiElement,
    Separator,
    Tabs,
    AttributeName,
    AdvancedLayerType,
    SvgWidget,
    HideUnits,
    Model,
    ViaList,
    CreateViaList,
    LaunchPadstackEditor,
    ViaListChart,
    PhysicalAdvanced,
    ReturnPath,
    Impedance,
    Topxp,
    SpacingAdvanced,
    SameNetCheckByLayer,
};

}  // namespace ZelU::ZelPanel

namespace Smart::Enum {

template <>
ZELUTIL_API const HRES<ZelU::ZelPanel::ZelWorksheets>& HRES<ZelU::ZelPanel::ZelWorksheets>::Instance();
template <>
ZELUTIL_API const HRES<ZelU::ZelPanel::ObjectType>& HRES<ZelU::ZelPanel::ObjectType>::Instance();
template <>
ZELUTIL_API const HRES<ZelU::ZelPanel::SvgWidgets>& HRES<ZelU::ZelPanel::SvgWidgets>::Instance();
template <>
ZELUTIL_API const HRES<ZelU::ZelPanel::HoleSpacing>& HRES<ZelU::ZelPanel::HoleSpacing>::Instance();
template <>
ZELUTIL_API const HRES<ZelU::ZelPanel::PadSpacing>& HRES<ZelU::ZelPanel::PadSpacing>::Instance();
template <>
ZELUTIL_API const HRES<ZelU::ZelPanel::HoleTypeSpacing>& HRES<ZelU::ZelPanel::HoleTypeSpacing>::Instance();
template <>
ZELUTIL_API const HRES<ZelU::ZelPanel::SSType>& HRES<ZelU::ZelPanel::SSType>::Instance();
template <>
ZELUTIL_API const HRES<ZelU::ZelPanel::LayerType>& HRES<ZelU::ZelPanel::LayerType>::Instance();
template <>
ZELUTIL_API const HRES<ZelU::ZelPanel::Modes>& HRES<ZelU::ZelPanel::Modes>::Instance();
template <>
ZELUTIL_API const HRES<ZelU::ZelPanel::McfType>& HRES<ZelU::ZelPanel::McfType>::Instance();
template <>
ZELUTIL_API const HRES<ZelU::ZelPanel::Model>& HRES<ZelU::ZelPanel::Model>::Instance();
template <>
ZELUTIL_API const HRES<ZelU::ZelPanel::UI>& HRES<ZelU::ZelPanel::UI>::Instance();

}  // namespace Smart::Enum

#endif
