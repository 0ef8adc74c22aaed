#include <cstdio>

#include "chapters.h"
#include "layer_kind.h"

#include <zelutil/c_api.h>
#include <zelutil/enums/panel_enums.h>
#include <zelutil/server/server.h>

namespace {

using Smart::Enum::HRES;
using ZelU::Marl::Server;

void showFacet(const char* header, const char* name) {
    static constexpr const char* kKinds[] = {"unknown", "not numerical", "numerical"};
    std::printf("  %-18s %-18s %s\n", header, name, kKinds[ZelUGetFacetType(header, name) + 1]);
}

class SwitchListener : public ZelU::Marl::IServerObserver {
public:
    void activeAppChanged(int appId, bool editorSwitch) override {
        std::printf("    heard: application %d is active%s\n", appId, editorSwitch ? " (another editor)" : "");
    }
};

void showModes() {
    const auto& modes = HRES<ZelU::ZelPanel::Modes>::Instance();
    for (int value = 0; value < modes.Size(); ++value) {
        std::printf("  mode %d is \"%s\"\n", value, modes.Name(value));
    }
    std::printf("  \"ADVANCED\" is mode %d, \"expert\" is none (%d)\n", modes.RawLookup("ADVANCED"),
                modes.RawLookup("expert"));
}

/// A layer as a user's file names it.
void showLayer(const char* name) {
    const LayerKind kind = HRES<LayerKind>::Instance().Lookup(name);
    const bool isConducting = kind == LayerKind::Signal || kind == LayerKind::Plane;
    std::printf("  a layer \"%s\" %s\n", name, isConducting ? "conducts" : "does not conduct");
}

void showLayerKinds() {
    std::printf("  layer kind %d is \"%s\"\n", static_cast<int>(LayerKind::SolderMask),
                HRES<LayerKind>::Instance().Name(static_cast<int>(LayerKind::SolderMask)));
    showLayer("plane");
    showLayer("Silkscreen");
}

}  // namespace

void showFacets() {
    std::puts("\nFacets");
    showFacet("Net", "Length");
    showFacet("Net", "Layer");
    showFacet("net", "Length");  // case matters
    showFacet("Region", "Length");
}

void switchApplications() {
    std::puts("\nApplications");
    // Editors are known by an address of the host's choice, and observers live as long as the process.
    static int boardEditor;
    static int view3d;
    static SwitchListener listener;
    Server& server = Server::getInstance();
    server.attach(&listener);
    server.registerApp(&boardEditor);
    server.registerApp(&view3d);
    std::printf("  the board editor is %d, the 3D view %d\n", server.getApplicationId(&boardEditor),
                server.getApplicationId(&view3d));
    std::puts("  the 3D view becomes active");
    server.setActiveAppId(&view3d, false);
    std::puts("  the user goes back to the board editor");
    server.notifyEditorSwitch(&boardEditor);
    std::printf("  active %d, before that %d\n", MarlActiveAppId(), server.getPreviousAppId());
}

void showEnumerations() {
    std::puts("\nEnumerations");
    showModes();
    showLayerKinds();
}
