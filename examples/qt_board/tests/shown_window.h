#ifndef QT_BOARD_TESTS_SHOWN_WINDOW_H
#define QT_BOARD_TESTS_SHOWN_WINDOW_H

#include <QTest>

#include "board/design.h"
#include "views/board_view.h"
#include "window/main_window.h"

namespace viewer::test {

/// A window as the user has it: shown, active, with the example board open.
class ShownWindow : public MainWindow {
public:
    explicit ShownWindow(const QString& board) {
        opened_ = openBoard(board);
        show();
        activateWindow();
        ready_ = QTest::qWaitForWindowActive(this);
        boardView().setFocus();
    }

    bool isReady() const { return opened_ && ready_; }

    /// Presses a key where the focus is.
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        QWidget* const focus = QApplication::focusWidget();
        QTest::keyClick(focus == nullptr ? this : focus, key, modifiers);
    }

private:
    bool opened_ = false;
    bool ready_ = false;
};

/// Returns the dialog of that type that the window shows, or null.
template <typename Dialog>
Dialog* shownDialog(MainWindow& window) {
    for (Dialog* const dialog : window.findChildren<Dialog*>()) {
        if (dialog->isVisible()) {
            return dialog;
        }
    }
    return nullptr;
}

}  // namespace viewer::test

#endif
