#include "window/pictures.h"

#include <QApplication>
#include <QDir>
#include <QMenu>

#include "actions/action_binder.h"
#include "views/board_view.h"
#include "views/space_view.h"
#include "window/main_window.h"

namespace viewer {

namespace {

/// Takes pictures and remembers whether all could be written.
class Camera {
public:
    explicit Camera(const QString& folder) : folder_(folder) { works_ = QDir().mkpath(folder); }

    void take(QWidget& widget, const QString& name) {
        QApplication::processEvents();
        works_ = widget.grab().save(QDir(folder_).filePath(name + QStringLiteral(".png"))) && works_;
    }

    bool works() const { return works_; }

private:
    QString folder_;
    bool works_ = false;
};

}  // namespace

bool takePictures(MainWindow& window, const QString& folder) {
    Camera camera(folder);
    camera.take(window, QStringLiteral("board"));
    window.showEditor(&window.spaceView());
    camera.take(window, QStringLiteral("space"));
    window.spaceView().setPulledApart(true);
    camera.take(window, QStringLiteral("space_apart"));
    window.spaceView().setPulledApart(false);
    window.showEditor(&window.boardView());
    QMenu menu(&window);
    window.binder().fillContextMenu(&menu);
    menu.popup(window.mapToGlobal(QPoint(300, 300)));
    camera.take(menu, QStringLiteral("context_menu"));
    menu.close();
    return camera.works();
}

}  // namespace viewer
