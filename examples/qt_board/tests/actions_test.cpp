#include <zelutil/actions/action_manager.h>
#include <zelutil/server/server.h>

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QMenu>
#include <QMenuBar>
#include <QTableView>
#include <QTest>

#include "actions/action_binder.h"
#include "board/board_reader.h"
#include "runner.h"
#include "shown_window.h"
#include "table/property_panel.h"
#include "views/space_view.h"
#include "window/editors.h"

namespace viewer {

namespace {

using test::ShownWindow;

UCPActionManager& manager() { return UCPActionManager::instance(); }

QMenu* menuTitled(QMenuBar& bar, const QString& title) {
    for (QAction* const action : bar.actions()) {
        if (action->text() == title) {
            return action->menu();
        }
    }
    return nullptr;
}

QStringList textsOf(const QMenu& menu) {
    QStringList texts;
    for (const QAction* const action : menu.actions()) {
        texts << action->text();
    }
    return texts;
}

QStringList contextMenuOf(const ActionBinder& binder) {
    QMenu menu;
    binder.fillContextMenu(&menu);
    return textsOf(menu);
}

/// Clicks on the middle of the first pad.
void clickFirstPad(ShownWindow& window) {
    const QPointF place = window.boardView().placeOf(window.design().board().pads.front().at);
    QTest::mouseClick(&window.boardView(), Qt::LeftButton, {}, place.toPoint());
}

}  // namespace

class ActionsTest : public QObject {
    Q_OBJECT

private slots:
    void controlSSavesTheBoard() {
        const QString path = test::boardCopy();
        ShownWindow window(path);
        QVERIFY(window.isReady());
        clickFirstPad(window);
        QCOMPARE(window.statusText(), "Pad U1.1, net IO0");
        window.press(Qt::Key_Delete);
        QVERIFY(window.isWindowModified());
        QCOMPARE(readBoardFile(path).board->pads.size(), std::size_t{136});
        window.press(Qt::Key_S, Qt::ControlModifier);
        QCOMPARE(readBoardFile(path).board->pads.size(), std::size_t{135});
        QVERIFY(!window.isWindowModified());
        QCOMPARE(window.statusText(), "Saved node.board.");
    }

    void undoAndRedoFollowTheirKeys() {
        ShownWindow window(test::boardCopy());
        QVERIFY(window.isReady());
        clickFirstPad(window);
        window.press(Qt::Key_Delete);
        window.press(Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(window.design().board().pads.size(), std::size_t{136});
        window.press(Qt::Key_Y, Qt::ControlModifier);
        QCOMPARE(window.design().board().pads.size(), std::size_t{135});
    }

    void menusAreTheCatalogues() {
        ShownWindow window(test::boardCopy());
        QMenu* const edit = menuTitled(*window.menuBar(), "Edit");
        QVERIFY(edit != nullptr);
        QCOMPARE(textsOf(*edit), (QStringList{"Undo", "Redo", "Copy as text", "Delete", "Deselect"}));
        QCOMPARE(edit->actions().first()->shortcut(), QKeySequence(QKeyCombination(Qt::ControlModifier, Qt::Key_Z)));
        QVERIFY(menuTitled(*window.menuBar(), "Camera") == nullptr);
    }

    void keysAndMenusFollowTheCatalogueAtOnce() {
        ShownWindow window(test::boardCopy());
        QVERIFY(window.isReady());
        ActionBinder& binder = window.binder();
        QVERIFY(manager().updateShortcut(24, "Ctrl+Alt+G"));
        QCOMPARE(binder.action(24)->shortcut(),
                 QKeySequence(QKeyCombination(Qt::ControlModifier | Qt::AltModifier, Qt::Key_G)));
        window.press(Qt::Key_G);
        QVERIFY(window.settings().gridVisible);
        window.press(Qt::Key_G, Qt::ControlModifier | Qt::AltModifier);
        QVERIFY(!window.settings().gridVisible);
        QVERIFY(!contextMenuOf(binder).contains("Undo"));
        manager().updateRMBMenu(10, true);
        QVERIFY(contextMenuOf(binder).contains("Undo"));
    }

    void shortcutThatMakesNoKeyIsShownAndTold() {
        ShownWindow window(test::boardCopy());
        QVERIFY(manager().updateShortcut(6, "Strg+Q"));
        QCOMPARE(window.binder().action(6)->text(), "Quit\tStrg+Q (no key)");
        QVERIFY(window.binder().action(6)->shortcut().isEmpty());
        QCOMPARE(shortcutsWithoutKey(),
                 QStringList{"The shortcut \"Strg+Q\" of \"Quit\" makes no key. It is kept, and no key runs it."});
    }

    void twoSpellingsOfOneKeyRunOneActionOnly() {
        ShownWindow window(test::boardCopy());
        QVERIFY(window.isReady());
        // The catalogue takes these for two shortcuts; Qt would run neither.
        QVERIFY(manager().updateShortcut(41, "ctrl+s"));
        QVERIFY(window.binder().action(41)->shortcut().isEmpty());
        window.press(Qt::Key_S, Qt::ControlModifier);
        QCOMPARE(window.statusText(), "Saved node.board.");
    }

    void switchOfEditorsGoesThroughTheServer() {
        ShownWindow window(test::boardCopy());
        QVERIFY(window.isReady());
        QCOMPARE(window.editors().activeContext(), "ucpedit");
        window.press(Qt::Key_F3);
        QCOMPARE(window.editors().activeContext(), "brisk3d");
        QVERIFY(window.spaceView().isVisible());
        QVERIFY(menuTitled(*window.menuBar(), "Camera") != nullptr);
        const double before = window.spaceView().turn();
        window.press(Qt::Key_Right);
        QCOMPARE(window.spaceView().turn(), before + 15);
        // The server is asked for by another module of the host, and the window follows.
        ZelU::Marl::Server::getInstance().notifyEditorSwitch(&window.boardView());
        QCOMPARE(window.editors().activeContext(), "ucpedit");
        QVERIFY(menuTitled(*window.menuBar(), "Camera") == nullptr);
        QVERIFY(window.boardView().isVisible());
    }

    void editorHasTheActionsOfTheBoardThatItLacks() {
        const QString path = test::boardCopy();
        ShownWindow window(path);
        QVERIFY(window.isReady());
        window.press(Qt::Key_F3);
        window.press(Qt::Key_S, Qt::ControlModifier);
        QCOMPARE(window.statusText(), "Saved node.board.");
    }

    void tableIsAnEditorWithActionsOfItsOwn() {
        ShownWindow window(test::boardCopy());
        QVERIFY(window.isReady());
        window.press(Qt::Key_F4);
        QCOMPARE(window.editors().activeContext(), "table");
        QVERIFY(menuTitled(*window.menuBar(), "Table") != nullptr);
        window.properties().table().selectRow(0);
        window.press(Qt::Key_C, Qt::ControlModifier);
        QVERIFY(QApplication::clipboard()->text().startsWith("C1.1\tVDD\tbottom\t"));
    }

    void rightMouseButtonShowsTheContextMenu() {
        ShownWindow window(test::boardCopy());
        QVERIFY(window.isReady());
        const QPoint place = window.boardView().rect().center();
        QContextMenuEvent event(QContextMenuEvent::Mouse, place, window.boardView().mapToGlobal(place));
        QApplication::sendEvent(&window.boardView(), &event);
        auto* const menu = window.findChild<QMenu*>(QStringLiteral("contextMenu"));
        QVERIFY(menu != nullptr);
        QCOMPARE(textsOf(*menu), (QStringList{"Copy as text", "Delete", "Zoom to fit", "Zoom to selection",
                                              "Show or hide layer", "Highlight net"}));
        menu->close();
    }

    void commandThatTheViewerLacksIsTold() {
        ShownWindow window(test::boardCopy());
        emit window.binder().requested("route track", "ucpedit");
        QCOMPARE(window.statusText(), "The viewer has no command \"route track\".");
    }
};

const test::Registration kActionsTest("actions", [] { return std::make_unique<ActionsTest>(); });

}  // namespace viewer

#include "actions_test.moc"
