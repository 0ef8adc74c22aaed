#include "window/commands.h"

#include <zelutil/host/save.h>
#include <zelutil/host/settings.h>
#include <zelutil/host/start.h>

#include <QClipboard>
#include <QFileDialog>
#include <QGuiApplication>
#include <QMessageBox>
#include <utility>

#include "dialogs/preferences_dialog.h"
#include "dialogs/shortcut_dialog.h"
#include "table/property_panel.h"
#include "views/board_view.h"
#include "views/space_view.h"
#include "window/editors.h"
#include "window/main_window.h"
#include "window/outcome.h"

namespace viewer {

Commands::Commands(MainWindow& window) : QObject(&window), window_(window) {
    addFiles();
    addEditing();
    addViews();
    addLayers();
    addSpace();
    addTable();
    addOptions();
}

void Commands::add(const char* command, std::function<void()> call) {
    calls_.insert(QString::fromLatin1(command), std::move(call));
}

void Commands::run(const QString& command, const QString& context) {
    const auto call = calls_.constFind(command);
    if (call == calls_.constEnd()) {
        window_.messages().warn(tr("The viewer has no command \"%1\".").arg(command));
        return;
    }
    context_ = context;
    (*call)();
}

void Commands::addFiles() {
    add("design open", [this] { openBoard(); });
    add("design save", [this] { saveBoard(false); });
    add("design save_as", [this] { saveBoard(true); });
    add("design reload", [this] { window_.openBoard(window_.design().path()); });
    add("design picture", [this] { savePicture(); });
    add("design quit", [this] { window_.close(); });
}

void Commands::addEditing() {
    Design& design = window_.design();
    add("edit undo", [&design] { design.undo(); });
    add("edit redo", [&design] { design.redo(); });
    add("edit copy", [this] { copyText(); });
    add("edit deselect", [&design] { design.select({}); });
    add("edit delete", [this, &design] {
        const QString what = design.describe(design.selection());
        window_.messages().tell(design.deleteSelection() ? tr("Deleted: %1.").arg(what) : what + u'.');
    });
    add("net highlight", [this] { highlightNet(); });
    add("net clear", [&design] { design.highlightNet({}); });
}

void Commands::addViews() {
    add("view zoom_in", [this] { zoom(true); });
    add("view zoom_out", [this] { zoom(false); });
    add("view zoom_fit", [this] { isInSpace() ? window_.spaceView().zoomToFit() : window_.boardView().zoomToFit(); });
    add("view zoom_selection", [this] { window_.boardView().zoomToSelection(); });
    add("view grid", [this] { toggle("display::grid::grid_visible"); });
    add("view flip", [this] { window_.boardView().flip(); });
    add("view board", [this] { window_.showEditor(&window_.boardView()); });
    add("view space", [this] { window_.showEditor(&window_.spaceView()); });
    add("view table", [this] { window_.showEditor(&window_.properties()); });
}

void Commands::addLayers() {
    Design& design = window_.design();
    add("layer next", [&design] { design.setActiveLayer(design.activeLayer() + 1); });
    add("layer previous", [&design] { design.setActiveLayer(design.activeLayer() - 1); });
    const auto goTo = [&design](LayerKind kind) {
        for (int layer = 0; layer < static_cast<int>(design.board().layers.size()); ++layer) {
            if (design.board().layers[static_cast<std::size_t>(layer)].kind == kind) {
                design.setActiveLayer(layer);
            }
        }
    };
    add("layer top", [goTo] { goTo(LayerKind::TopCopper); });
    add("layer bottom", [goTo] { goTo(LayerKind::BottomCopper); });
    add("layer hide", [&design] { design.setHidden(design.activeLayer(), !design.isHidden(design.activeLayer())); });
}

void Commands::addSpace() {
    SpaceView& view = window_.spaceView();
    add("camera front", [&view] { view.look(0, 15); });
    add("camera left", [&view] { view.look(90, 15); });
    add("camera top", [&view] { view.look(0, 90); });
    add("camera isometric", [&view] { view.look(-35, 38); });
    add("camera turn_left", [&view] { view.turnBy(-15); });
    add("camera turn_right", [&view] { view.turnBy(15); });
    add("space components", [this] { toggle("brisk3d::show_components"); });
    add("space copper", [this] { toggle("brisk3d::show_copper"); });
    add("space pull_apart", [&view] { view.setPulledApart(!view.isPulledApart()); });
}

void Commands::addTable() {
    PropertyPanel& properties = window_.properties();
    add("table show", [&properties] { properties.showCurrentOnBoard(); });
    add("table sort_next", [&properties] { properties.sortByNextColumn(); });
    add("table next_kind", [&properties] { properties.showNextKind(); });
}

void Commands::addOptions() {
    add("options preferences", [this] { open(new PreferencesDialog(window_.messages(), &window_)); });
    add("options shortcuts", [this] { open(new ShortcutDialog(window_.messages(), &window_)); });
    add("options save", [this] { tellOutcome(zelutil::host::save(), window_.messages()); });
    add("help messages", [this] { window_.showMessages(); });
    add("help diagnose", [this] {
        QMessageBox box(QMessageBox::Information, tr("Where files are looked for"),
                        QString::fromStdString(zelutil::host::diagnose()), QMessageBox::Close, &window_);
        box.exec();
    });
}

void Commands::openBoard() {
    const QString path =
        QFileDialog::getOpenFileName(&window_, tr("Open board"), window_.design().path(), tr("Boards (*.board)"));
    if (!path.isEmpty()) {
        window_.openBoard(path);
    }
}

void Commands::saveBoard(bool asks) {
    QString path = window_.design().path();
    if (asks || path.isEmpty()) {
        path = QFileDialog::getSaveFileName(&window_, tr("Save board as"), path, tr("Boards (*.board)"));
    }
    if (!path.isEmpty()) {
        window_.saveBoard(path);
    }
}

void Commands::savePicture() {
    const QString path = QFileDialog::getSaveFileName(&window_, tr("Save picture"), {}, tr("Pictures (*.png)"));
    if (!path.isEmpty()) {
        window_.messages().tell(window_.savePicture(path) ? tr("Saved %1.").arg(path)
                                                          : tr("The picture could not be saved: %1.").arg(path));
    }
}

void Commands::copyText() {
    const QString text = context_ == QLatin1String("table") ? window_.properties().currentText()
                                                            : window_.design().describe(window_.design().selection());
    QGuiApplication::clipboard()->setText(text);
    window_.messages().tell(tr("Copied: %1").arg(text));
}

void Commands::highlightNet() {
    Design& design = window_.design();
    const QString net =
        context_ == QLatin1String("table") ? window_.properties().currentNet() : design.netOf(design.selection());
    design.highlightNet(net);
    window_.messages().tell(net.isEmpty() ? tr("Nothing with a net is selected.")
                                          : tr("Net %1 is highlighted.").arg(net));
}

/// Turns a setting over and saves it: the views follow by themselves.
void Commands::toggle(const char* setting) {
    const bool now = !zelutil::host::get(setting, true);
    tellOutcome(zelutil::host::save({{setting, zelutil::host::textOf(now)}}), window_.messages());
}

void Commands::zoom(bool in) {
    if (isInSpace()) {
        in ? window_.spaceView().zoomIn() : window_.spaceView().zoomOut();
    } else {
        in ? window_.boardView().zoomIn() : window_.boardView().zoomOut();
    }
}

bool Commands::isInSpace() const { return window_.spaceView().isVisible(); }

void Commands::open(QDialog* dialog) {
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->open();
}

}  // namespace viewer
