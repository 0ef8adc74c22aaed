#include <zelutil/enums/panel_enums.h>

#include "support/letter_case.h"

#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <thread>
#include <vector>

namespace {

using Smart::Enum::HRES;
using Smart::Enum::IRawMap;
using namespace ZelU::ZelPanel;

template <typename E>
struct Entry {
    E enumerator;
    int value;
    std::string name;
};

/// `entries` is all that the map of `E` holds, in order: each value has its name and each name its value, and a look-up
/// that finds nothing is answered with the number of entries.
template <typename E>
void expectMap(const std::vector<Entry<E>>& entries) {
    const HRES<E>& map = HRES<E>::Instance();
    const int size = static_cast<int>(entries.size());
    ASSERT_EQ(map.Size(), size);
    EXPECT_EQ(map.Name(size), nullptr);
    EXPECT_EQ(map.RawLookup("no such name"), size);
    EXPECT_EQ(map.RawLookup(""), size);

    for (const Entry<E>& entry : entries) {
        SCOPED_TRACE(entry.name);
        EXPECT_EQ(static_cast<int>(entry.enumerator), entry.value);
        EXPECT_EQ(entry.value, &entry - entries.data());
        EXPECT_EQ(map.Name(entry.value), entry.name);
        EXPECT_EQ(map.Names()[entry.value], entry.name);
        EXPECT_EQ(map.RawLookup(entry.name.c_str()), entry.value);
        EXPECT_EQ(map.Lookup(entry.name.c_str()), entry.enumerator);
        EXPECT_EQ(map.RawLookup(zelutil::test::lowered(entry.name).c_str()), entry.value);
        EXPECT_EQ(map.RawLookup(zelutil::test::raised(entry.name).c_str()), entry.value);
        EXPECT_EQ(map.RawLookup((entry.name + " ").c_str()), size);
        EXPECT_EQ(map.RawLookup(entry.name.substr(1).c_str()), size);
    }
}

TEST(PanelEnums, Worksheets) {
    expectMap<ZelWorksheets>({
        {ZelWorksheets::TotalEtchLength, 0, "Total Etch Length"},
        {ZelWorksheets::DifferentialPair, 1, "Differential Pair"},
        {ZelWorksheets::RelativePropagationDelay, 2, "Relative Propagation Delay"},
        {ZelWorksheets::Wiring, 3, "Wiring"},
        {ZelWorksheets::Vias, 4, "Vias"},
        {ZelWorksheets::AllLayers, 5, "All Layers"},
        {ZelWorksheets::ByLayer, 6, "By Layer"},
        {ZelWorksheets::Impedance, 7, "Impedance"},
        {ZelWorksheets::ReturnPath, 8, "Return Path"},
        {ZelWorksheets::MinMaxPropagationDelays, 9, "Min/Max Propagation Delays"},
        {ZelWorksheets::Holes, 10, "Holes"},
    });
}

TEST(PanelEnums, ObjectTypes) {
    expectMap<ObjectType>({
        {ObjectType::ElectricalConstraintSet, 0, "Electrical Constraint Set"},
        {ObjectType::PhysicalConstraintSet, 1, "Physical Constraint Set"},
        {ObjectType::SpacingConstraintSet, 2, "Spacing Constraint Set"},
        {ObjectType::SameNetSpacingConstraintSet, 3, "Same Net Spacing Constraint Set"},
        {ObjectType::Net, 4, "Net"},
        {ObjectType::Region, 5, "Region"},
        {ObjectType::NetClassClass, 6, "Net Class-Class"},
    });
}

TEST(PanelEnums, ANameThatBeginsAnotherIsFoundAloneAndALongerPieceIsNot) {
    const HRES<ObjectType>& map = HRES<ObjectType>::Instance();
    EXPECT_EQ(map.RawLookup("net class-class"), 6);
    EXPECT_EQ(map.RawLookup("Net"), 4);
    EXPECT_EQ(map.RawLookup("Net Class"), 7);
    EXPECT_EQ(map.RawLookup("Net Class-Clas"), 7);
}

TEST(PanelEnums, SvgWidgets) {
    expectMap<SvgWidgets>({
        {SvgWidgets::RatsNestSchedule, 0, "RatsNestSchedule"},
        {SvgWidgets::AdvancedRatsNestSchedule, 1, "Adv_RatsNestSchedule"},
        {SvgWidgets::HoleSpacing, 2, "HoleSpacing"},
        {SvgWidgets::PadSpacing, 3, "PadSpacing"},
        {SvgWidgets::HoleTypeSpacing, 4, "HoleTypeSpacing"},
        {SvgWidgets::DeltaRpd, 5, "Delta_RPD"},
    });
}

TEST(PanelEnums, HoleSpacings) {
    expectMap<HoleSpacing>({
        {HoleSpacing::HoleToShape, 0, "Hole To Shape"},
        {HoleSpacing::AllHoles, 1, "All Holes"},
        {HoleSpacing::HoleToVia, 2, "Hole To Via"},
        {HoleSpacing::HoleToPin, 3, "Hole To Pin"},
        {HoleSpacing::HoleToLine, 4, "Hole To Line"},
    });
}

TEST(PanelEnums, PadSpacings) {
    expectMap<PadSpacing>({
        {PadSpacing::ThruPinPad, 0, "Thru Pin Pad"},
        {PadSpacing::SmdPinPad, 1, "SMD Pin Pad"},
        {PadSpacing::ThruViaPad, 2, "Thru Via Pad"},
        {PadSpacing::BbViaPad, 3, "BB Via Pad"},
        {PadSpacing::MicroViaPad, 4, "Micro Via Pad"},
    });
}

TEST(PanelEnums, HoleTypeSpacings) {
    expectMap<HoleTypeSpacing>({
        {HoleTypeSpacing::ThruViaHole, 0, "Thru Via Hole"},
        {HoleTypeSpacing::BbViaHole, 1, "BB Via Hole"},
        {HoleTypeSpacing::MicroViaHole, 2, "Micro Via Hole"},
        {HoleTypeSpacing::PinHole, 3, "Pin Hole"},
    });
}

TEST(PanelEnums, SSTypes) {
    expectMap<SSType>({
        {SSType::Domain, 0, "domain"},
        {SSType::ObjectType, 1, "objectType"},
        {SSType::Workbook, 2, "workbook"},
        {SSType::Worksheet, 3, "worksheet"},
        {SSType::McfType, 4, "mcfType"},
    });
}

TEST(PanelEnums, LayerTypes) {
    expectMap<LayerType>({
        {LayerType::AllLayers, 0, "All Layers"},
        {LayerType::Internal, 1, "Internal"},
        {LayerType::External, 2, "External"},
        {LayerType::Advanced, 3, "Advanced"},
    });
}

TEST(PanelEnums, TheModes) {
    expectMap<Modes>({
        {Modes::Basic, 0, "Basic"},
        {Modes::Advanced, 1, "Advanced"},
    });
    EXPECT_EQ(HRES<Modes>::Instance().RawLookup("BASIC"), 0);
    EXPECT_EQ(HRES<Modes>::Instance().RawLookup("advanced"), 1);
    EXPECT_EQ(HRES<Modes>::Instance().RawLookup("Advanced "), 2);
}

TEST(PanelEnums, TheOnlyMcfType) { expectMap<McfType>({{McfType::Holes, 0, "Holes"}}); }

TEST(PanelEnums, TheOnlyModel) { expectMap<Model>({{Model::Rpd, 0, "RPD"}}); }

TEST(PanelEnums, Controls) {
    expectMap<UI>({
        {UI::RuleSet, 0, "ruleSet"},
        {UI::DrcModesButton, 1, "drcModesButton"},
        {UI::EnableBasicChecksButton, 2, "enableBasicChecksButton"},
        {UI::LayerType, 3, "layerType"},
        {UI::Svg, 4, "svg"},
        {UI::ToolbarButton, 5, "toolbarButton"},
        {UI::UiElement, 6, "uiElem"},
        {UI::Separator, 7, "separator"},
        {UI::Tabs, 8, "tabs"},
        {UI::AttributeName, 9, "attrName"},
        {UI::AdvancedLayerType, 10, "adv_layer_type"},
        {UI::SvgWidget, 11, "svgWidget"},
        {UI::HideUnits, 12, "hideUnits"},
        {UI::Model, 13, "model"},
        {UI::ViaList, 14, "viaList"},
        {UI::CreateViaList, 15, "create_via_list"},
        {UI::LaunchPadstackEditor, 16, "launch_padstack_editor"},
        {UI::ViaListChart, 17, "via_list_chart"},
        {UI::PhysicalAdvanced, 18, "phy_advanced"},
        {UI::ReturnPath, 19, "return_path"},
        {UI::Impedance, 20, "impedance"},
        {UI::Topxp, 21, "topxp"},
        {UI::SpacingAdvanced, 22, "spac_adv"},
        {UI::SameNetCheckByLayer, 23, "sn_check_by_layer"},
    });
}

TEST(PanelEnums, ATextThatSeveralEnumerationsShareIsFoundInEach) {
    EXPECT_EQ(HRES<LayerType>::Instance().Lookup("Advanced"), LayerType::Advanced);
    EXPECT_EQ(HRES<Modes>::Instance().Lookup("Advanced"), Modes::Advanced);
    EXPECT_EQ(HRES<ZelWorksheets>::Instance().Lookup("All Layers"), ZelWorksheets::AllLayers);
    EXPECT_EQ(HRES<LayerType>::Instance().Lookup("All Layers"), LayerType::AllLayers);
    EXPECT_EQ(HRES<ZelWorksheets>::Instance().Lookup("Holes"), ZelWorksheets::Holes);
    EXPECT_EQ(HRES<McfType>::Instance().Lookup("Holes"), McfType::Holes);
}

TEST(PanelEnums, AMapServesThroughItsUntypedFace) {
    const IRawMap& map = HRES<UI>::Instance();
    EXPECT_EQ(map.Size(), 24);
    EXPECT_EQ(map.Lookup("SN_CHECK_BY_LAYER"), 23);
    EXPECT_STREQ(map.Name(23), "sn_check_by_layer");
    EXPECT_EQ(map.Name(24), nullptr);
}

TEST(PanelEnums, FirstLookupsMayRace) {
    std::atomic<int> waiting{8};
    std::atomic<int> found{0};
    std::vector<std::thread> threads;
    for (int k = 0; k < 8; ++k) {
        threads.emplace_back([&waiting, &found] {
            --waiting;
            while (waiting > 0) {
            }
            found += HRES<UI>::Instance().Lookup("IMPEDANCE") == UI::Impedance ? 1 : 0;
            found += HRES<ZelWorksheets>::Instance().RawLookup("vias") == 4 ? 1 : 0;
            found += HRES<ZelWorksheets>::Instance().RawLookup("via") == 11 ? 1 : 0;
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(found, 24);
}

}  // namespace
