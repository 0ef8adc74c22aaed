#ifndef QT_BOARD_WINDOW_MAIN_WINDOW_H
#define QT_BOARD_WINDOW_MAIN_WINDOW_H

#include <zelutil/host/observers.h>

#include <QMainWindow>
#include <QString>

#include "board/design.h"
#include "views/view_settings.h"
#include "window/message_log.h"

class QLabel;
class QListWidget;
class QTabWidget;
class QToolButton;

namespace viewer {

class ActionBinder;
class BoardView;
class Commands;
class Editors;
class PropertyPanel;
class SpaceView;

/// The viewer's window: two editors of one board, the table of its objects, and what the actions do with them.
class MainWindow : public QMainWindow {
    Q_OBJECT

public:
    MainWindow();
    ~MainWindow() override;

    /// Reads a board file. A file that makes no sense is told in the window, and the board before it stays.
    bool openBoard(const QString& path);
    bool saveBoard(const QString& path);

    /// Writes what the window shows as a picture.
    bool savePicture(const QString& path);

    Design& design() { return design_; }
    MessageLog& messages() { return messages_; }
    ActionBinder& binder() { return *binder_; }
    Editors& editors() { return *editors_; }
    BoardView& boardView() { return *boardView_; }
    SpaceView& spaceView() { return *spaceView_; }
    PropertyPanel& properties() { return *properties_; }
    const ViewSettings& settings() const { return settings_; }

    /// Shows one of the two views, or goes to the table.
    void showEditor(QWidget* editor);
    void showMessages();

    /// Has the status bar tell the outcome.
    QString statusText() const;

protected:
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    void build();
    void buildDocks();
    void buildStatusBar();
    void applySettings();
    void followSwitch(const QString& context);
    void tell(const QString& text, bool isWarning);
    void showBanner(const QString& text);
    void tellStart();
    void showTitle();

    Design design_;
    MessageLog messages_;
    ViewSettings settings_;
    Editors* editors_;
    ActionBinder* binder_;
    Commands* commands_;
    BoardView* boardView_;
    SpaceView* spaceView_;
    PropertyPanel* properties_;
    QTabWidget* tabs_;
    QLabel* banner_;
    QLabel* status_;
    QLabel* pointer_;
    QToolButton* warnings_;
    QListWidget* messageList_;
    zelutil::host::Subscription settingsSubscription_;
};

}  // namespace viewer

#endif
