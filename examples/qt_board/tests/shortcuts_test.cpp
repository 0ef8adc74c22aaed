#include <zelutil/actions/action_manager.h>

#include <QAction>
#include <QPushButton>
#include <QTableView>
#include <QTest>

#include "actions/action_binder.h"
#include "dialogs/action_model.h"
#include "dialogs/shortcut_dialog.h"
#include "keys/key_capture.h"
#include "keys/key_holders.h"
#include "runner.h"
#include "shown_window.h"

namespace viewer {

namespace {

using test::ShownWindow;

constexpr int kSave = 2;
constexpr int kQuit = 6;
constexpr int kCopy = 12;
constexpr int kDelete = 13;
constexpr int kZoomIn = 20;
constexpr int kGrid = 24;
constexpr int kZoomInSpace = 201;
constexpr int kSortNext = 311;

UCPActionManager& manager() { return UCPActionManager::instance(); }

QString shortcut(int id) { return QString::fromStdString(manager().getShortcut(id)); }

ShortcutDialog* openShortcuts(ShownWindow& window) {
    window.press(Qt::Key_K, Qt::ControlModifier);
    return test::shownDialog<ShortcutDialog>(window);
}

void pressKey(ShortcutDialog& dialog, Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
    QTest::keyClick(dialog.findChild<KeyCapture*>(), key, modifiers);
}

QPushButton& button(ShortcutDialog& dialog, const char* name) {
    return *dialog.findChild<QPushButton*>(QString::fromLatin1(name));
}

void click(ShortcutDialog& dialog, const char* name) { QTest::mouseClick(&button(dialog, name), Qt::LeftButton); }

void type(ShortcutDialog& dialog, const QString& text) {
    auto* const field = dialog.findChild<QLineEdit*>("typed");
    field->clear();
    QTest::keyClicks(field, text);
}

}  // namespace

class ShortcutsTest : public QObject {
    Q_OBJECT

private slots:
    void swappedShortcutsAreThereAfterARestart() {
        ShownWindow window(test::boardCopy());
        ShortcutDialog* const dialog = openShortcuts(window);
        QVERIFY(dialog != nullptr);
        dialog->selectAction(kGrid);
        pressKey(*dialog, Qt::Key_S, Qt::ControlModifier);
        QCOMPARE(dialog->verdict(), "Ctrl+S is taken. \"Save board\" (Board) has it.");
        click(*dialog, "take");
        QCOMPARE(dialog->verdict(), "Ctrl+S is taken over.");
        dialog->selectAction(kSave);
        pressKey(*dialog, Qt::Key_G);
        QCOMPARE(dialog->verdict(), "G is free.");
        click(*dialog, "assign");
        // In force at once, in the window, too.
        QCOMPARE(window.binder().action(kSave)->shortcut(), QKeySequence(Qt::Key_G));
        QCOMPARE(dialog->afterRestart(), "After a restart everything will be as it is shown here.");
        click(*dialog, "save");
        QVERIFY(test::shownDialog<ShortcutDialog>(window) == nullptr);
        QVERIFY(test::restartWith("againShortcutsAreSwapped"));
    }

    void againShortcutsAreSwapped() {
        ShownWindow window(test::boardCopy());
        QVERIFY(window.isReady());
        QCOMPARE(window.binder().action(kSave)->shortcut(), QKeySequence(Qt::Key_G));
        QCOMPARE(window.binder().action(kGrid)->shortcut(),
                 QKeySequence(QKeyCombination(Qt::ControlModifier, Qt::Key_S)));
        window.press(Qt::Key_G);
        QCOMPARE(window.statusText(), "Saved node.board.");
        window.press(Qt::Key_S, Qt::ControlModifier);
        QVERIFY(!window.settings().gridVisible);
    }

    void refusedKeyShowsItsHolder() {
        ShownWindow window(test::boardCopy());
        ShortcutDialog* const dialog = openShortcuts(window);
        QVERIFY(dialog != nullptr);
        dialog->selectAction(kDelete);
        // In the linked editor.
        pressKey(*dialog, Qt::Key_X);
        QCOMPARE(dialog->verdict(),
                 "X is taken. \"Pull layers apart\" (3D view) has it; the two editors share their keys.");
        QVERIFY(!button(*dialog, "assign").isEnabled());
        QVERIFY(button(*dialog, "take").isEnabled());
        // The same holds where an action that follows this one would need it.
        dialog->selectAction(kCopy);
        pressKey(*dialog, Qt::Key_T, Qt::ControlModifier);
        QCOMPARE(dialog->verdict(),
                 "Ctrl+T is taken. \"Sort by the next column\" (Table) has it where the action's key holds, too.");
        // An action of the table does not mind the board's keys.
        dialog->selectAction(kSortNext);
        pressKey(*dialog, Qt::Key_X);
        QCOMPARE(dialog->verdict(), "X is free.");
        QCOMPARE(shortcut(kDelete), "Del");
    }

    void holdersAreWhatTheCatalogueRefuses() {
        ShownWindow window(test::boardCopy());
        for (const UCPActionItem& action : manager().getAllActions()) {
            for (const UCPActionItem& other : manager().getAllActions()) {
                const QString wanted = shortcut(other.id);
                const bool isRefused = manager().isShortcutTaken(topOf(action.id), wanted.toStdString()) != 0;
                QCOMPARE(!holdersOf(action.id, wanted).empty(), isRefused);
            }
        }
    }

    void anotherSpellingOfTheKeyIsItsHolder() {
        ShownWindow window(test::boardCopy());
        QVERIFY(manager().updateShortcut(kQuit, "shift+ctrl+q"));
        ShortcutDialog* const dialog = openShortcuts(window);
        QVERIFY(dialog != nullptr);
        dialog->selectAction(kDelete);
        pressKey(*dialog, Qt::Key_Q, Qt::ControlModifier | Qt::ShiftModifier);
        QCOMPARE(dialog->verdict(), "Ctrl+Shift+Q is taken. \"Quit\" (Board) has it.");
        click(*dialog, "take");
        QCOMPARE(shortcut(kQuit), QString());
        QCOMPARE(shortcut(kDelete), "Ctrl+Shift+Q");
    }

    void actionThatFollowsIsChangedThroughItsParent() {
        ShownWindow window(test::boardCopy());
        ShortcutDialog* const dialog = openShortcuts(window);
        QVERIFY(dialog != nullptr);
        dialog->selectAction(kZoomInSpace);
        pressKey(*dialog, Qt::Key_F11);
        click(*dialog, "assign");
        QCOMPARE(shortcut(kZoomIn), "F11");
        QCOMPARE(shortcut(kZoomInSpace), "F11");
        QCOMPARE(dialog->afterRestart(), "After a restart everything will be as it is shown here.");
    }

    void whatARestartDoesNotBringBackIsShownBeforeSaving() {
        ShownWindow window(test::boardCopy());
        // By another module of the host: an action that follows another one has a shortcut of its own for now.
        QVERIFY(manager().updateShortcut(kZoomInSpace, "F11"));
        ShortcutDialog* const dialog = openShortcuts(window);
        QVERIFY(dialog != nullptr);
        QVERIFY2(dialog->afterRestart().startsWith("After a restart this will be otherwise: "),
                 qPrintable(dialog->afterRestart()));
        QVERIFY2(dialog->afterRestart().contains("201"), qPrintable(dialog->afterRestart()));
        QCOMPARE(button(*dialog, "save").text(), "Save all the same");
        // The parent's shortcut reaches the child again.
        dialog->selectAction(kZoomIn);
        pressKey(*dialog, Qt::Key_F12);
        click(*dialog, "assign");
        QCOMPARE(dialog->afterRestart(), "After a restart everything will be as it is shown here.");
        QCOMPARE(button(*dialog, "save").text(), "Save");
    }

    void senselessTextIsToldAndChangesNothing() {
        ShownWindow window(test::boardCopy());
        ShortcutDialog* const dialog = openShortcuts(window);
        QVERIFY(dialog != nullptr);
        dialog->selectAction(kDelete);
        type(*dialog, "Strg+Q");
        QCOMPARE(dialog->verdict(), "\"Strg+Q\" makes no key. Nothing is changed.");
        QVERIFY(!button(*dialog, "assign").isEnabled());
        QVERIFY(!button(*dialog, "take").isEnabled());
        type(*dialog, "shift+f9");
        QCOMPARE(dialog->verdict(), "Shift+F9 is free.");
        click(*dialog, "assign");
        QCOMPARE(shortcut(kDelete), "Shift+F9");
    }

    void cancelTakesEverythingBack() {
        ShownWindow window(test::boardCopy());
        std::vector<std::string> before;
        for (const UCPActionItem& action : manager().getAllActions()) {
            before.push_back(manager().getShortcut(action.id));
        }
        ShortcutDialog* const dialog = openShortcuts(window);
        QVERIFY(dialog != nullptr);
        dialog->selectAction(kGrid);
        pressKey(*dialog, Qt::Key_S, Qt::ControlModifier);
        click(*dialog, "take");
        dialog->selectAction(kSave);
        pressKey(*dialog, Qt::Key_G);
        click(*dialog, "assign");
        dialog->selectAction(kZoomIn);
        click(*dialog, "remove");
        manager().updateRMBMenu(kQuit, true);
        click(*dialog, "cancel");
        std::vector<std::string> after;
        for (const UCPActionItem& action : manager().getAllActions()) {
            after.push_back(manager().getShortcut(action.id));
        }
        QVERIFY(after == before);
        QVERIFY(!manager().getAction(kQuit).second.hasOverwrite());
        QCOMPARE(test::contents(test::userFile()), QByteArray());
    }

    void menuFlagIsSavedAlone() {
        ShownWindow window(test::boardCopy());
        ShortcutDialog* const dialog = openShortcuts(window);
        QVERIFY(dialog != nullptr);
        dialog->selectAction(kQuit);
        auto* const table = dialog->findChild<QTableView*>();
        const QModelIndex box = table->currentIndex().siblingAtColumn(ActionModel::Menu);
        QVERIFY(table->model()->setData(box, Qt::Checked, Qt::CheckStateRole));
        click(*dialog, "save");
        QVERIFY(test::restartWith("againQuitIsInTheMenu"));
    }

    void againQuitIsInTheMenu() {
        ShownWindow window(test::boardCopy());
        const UCPActionItem quit = manager().getAction(kQuit).second;
        QVERIFY(isInMenu(quit));
        QCOMPARE(shortcutOf(quit), "Ctrl+Q");
    }

    void resetBringsBackWhatWasShipped() {
        ShownWindow window(test::boardCopy());
        ShortcutDialog* const dialog = openShortcuts(window);
        QVERIFY(dialog != nullptr);
        dialog->selectAction(kGrid);
        pressKey(*dialog, Qt::Key_F11);
        click(*dialog, "assign");
        // Another action has the shipped key by now: it is named, and can be taken.
        dialog->selectAction(kQuit);
        pressKey(*dialog, Qt::Key_G);
        click(*dialog, "assign");
        dialog->selectAction(kGrid);
        click(*dialog, "reset");
        QCOMPARE(dialog->verdict(), "G is taken. \"Quit\" (Board) has it.");
        click(*dialog, "take");
        QCOMPARE(shortcut(kGrid), "G");
        dialog->selectAction(kQuit);
        click(*dialog, "reset");
        QVERIFY(!manager().getAction(kGrid).second.hasOverwrite());
        QVERIFY(!manager().getAction(kQuit).second.hasOverwrite());
    }

    void resetOfAllIsSavedAtOnce() {
        ShownWindow window(test::boardCopy());
        ShortcutDialog* const dialog = openShortcuts(window);
        QVERIFY(dialog != nullptr);
        dialog->selectAction(kGrid);
        pressKey(*dialog, Qt::Key_S, Qt::ControlModifier);
        click(*dialog, "take");
        click(*dialog, "resetAll");
        QCOMPARE(shortcut(kGrid), "G");
        QCOMPARE(shortcut(kSave), "Ctrl+S");
        click(*dialog, "cancel");
        QCOMPARE(shortcut(kGrid), "G");
    }
};

const test::Registration kShortcutsTest("shortcuts", [] { return std::make_unique<ShortcutsTest>(); });

}  // namespace viewer

#include "shortcuts_test.moc"
