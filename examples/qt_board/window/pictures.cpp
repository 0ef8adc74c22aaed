#include "window/pictures.h"

#include <QApplication>
#include <QDir>
#include <QKeyEvent>
#include <QMenu>

#include "actions/action_binder.h"
#include "dialogs/preferences_dialog.h"
#include "dialogs/setting_model.h"
#include "dialogs/shortcut_dialog.h"
#include "keys/key_capture.h"
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

/// Shows the dialog as it is in use.
template <typename Dialog, typename Use>
void takeDialog(MainWindow& window, Camera& camera, const char* name, Use use) {
    Dialog dialog(window.messages(), &window);
    dialog.show();
    use(dialog);
    camera.take(dialog, QString::fromLatin1(name));
}

void takeDialogs(MainWindow& window, Camera& camera) {
    takeDialog<PreferencesDialog>(window, camera, "preferences", [](PreferencesDialog& dialog) {
        SettingModel& settings = dialog.settings();
        const int row = settings.rowOf(QStringLiteral("display::colors::top_copper"));
        settings.setData(settings.index(row, SettingModel::Value), QStringLiteral("#e06a20"), Qt::EditRole);
        dialog.selectSetting(QStringLiteral("display::colors::board"));
    });
    takeDialog<ShortcutDialog>(window, camera, "shortcuts", [](ShortcutDialog& dialog) {
        dialog.selectAction(13);
        QKeyEvent press(QEvent::KeyPress, Qt::Key_PageUp, Qt::NoModifier);
        QApplication::sendEvent(dialog.findChild<KeyCapture*>(), &press);
    });
}

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
    takeDialogs(window, camera);
    QMenu menu(&window);
    window.binder().fillContextMenu(&menu);
    menu.popup(window.mapToGlobal(QPoint(300, 300)));
    camera.take(menu, QStringLiteral("context_menu"));
    menu.close();
    return camera.works();
}

}  // namespace viewer
