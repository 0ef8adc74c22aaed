#include <zelutil/host/settings.h>

#include <QDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <QTest>
#include <QTreeWidget>

#include "dialogs/preferences_dialog.h"
#include "dialogs/setting_model.h"
#include "runner.h"
#include "shown_window.h"

namespace viewer {

namespace {

using test::ShownWindow;
using zelutil::host::get;

PreferencesDialog* openPreferences(ShownWindow& window) {
    window.press(Qt::Key_Comma, Qt::ControlModifier);
    return test::shownDialog<PreferencesDialog>(window);
}

void click(QWidget& dialog, const char* button) {
    QTest::mouseClick(dialog.findChild<QPushButton*>(QString::fromLatin1(button)), Qt::LeftButton);
}

/// Returns the field in which a cell of the table is edited; null for none.
QLineEdit* openEditor(const QTableView& table) {
    for (QLineEdit* const editor : table.viewport()->findChildren<QLineEdit*>()) {
        if (editor->isVisible()) {
            return editor;
        }
    }
    return nullptr;
}

/// Types the value into the table's cell, as a user does who goes there and presses Enter at the end.
void typeValue(PreferencesDialog& dialog, const char* name, const QString& value) {
    dialog.selectSetting(QString::fromLatin1(name));
    auto* const table = dialog.findChild<QTableView*>();
    table->setFocus();
    QTest::keyClick(table, Qt::Key_F2);
    QLineEdit* const editor = openEditor(*table);
    QVERIFY2(editor != nullptr, name);
    editor->selectAll();
    QTest::keyClicks(editor, value);
    QTest::keyClick(editor, Qt::Key_Return);
    // The table takes the text over when the key has been dealt with.
    QCoreApplication::processEvents();
}

}  // namespace

class PreferencesTest : public QObject {
    Q_OBJECT

private slots:
    void sectionsAreATreeInTheFilesOrder() {
        ShownWindow window(test::boardCopy());
        PreferencesDialog* const dialog = openPreferences(window);
        QVERIFY(dialog != nullptr);
        const auto* const tree = dialog->findChild<QTreeWidget*>();
        QStringList tops;
        for (int i = 0; i < tree->topLevelItemCount(); ++i) {
            tops << tree->topLevelItem(i)->text(0);
        }
        QCOMPARE(tops, (QStringList{"General", "Display", "3D view", "Table", "Shortcuts and menus"}));
        QCOMPARE(tree->topLevelItem(0)->child(1)->text(0), "Units");
        QCOMPARE(tree->topLevelItem(1)->childCount(), 2);
    }

    void savedValuesTakeEffectAtOnceAndAfterARestart() {
        ShownWindow window(test::boardCopy());
        PreferencesDialog* const dialog = openPreferences(window);
        QVERIFY(dialog != nullptr);
        typeValue(*dialog, "display::grid::grid", "0.5");
        typeValue(*dialog, "display::colors::grid", "#010203");
        dialog->settings().setData(dialog->settings().index(dialog->settings().rowOf("general::units::units"), 1),
                                   "mil", Qt::EditRole);
        QCOMPARE(window.settings().grid, 1.27);
        click(*dialog, "save");
        QCOMPARE(window.settings().grid, 0.5);
        QCOMPARE(window.settings().gridColor, QColor(1, 2, 3));
        QCOMPARE(lengthTextWithUnit(25.4, window.settings()), "1000.000 mil");
        QVERIFY(!window.statusText().isEmpty());
        const int row = dialog->settings().rowOf("display::grid::grid");
        QCOMPARE(dialog->settings().index(row, SettingModel::Value).data().toString(), "0.5");
        QCOMPARE(dialog->settings().index(row, SettingModel::Default).data().toString(), "1.27");
        QCOMPARE(dialog->settings().index(row, SettingModel::Origin).data().toString(), "Yours");
        dialog->reject();
        QVERIFY(test::restartWith("againSavedValuesAreInForce"));
    }

    void againSavedValuesAreInForce() {
        const ShownWindow window(test::boardCopy());
        QCOMPARE(window.settings().grid, 0.5);
        QCOMPARE(window.settings().gridColor, QColor(1, 2, 3));
        QCOMPARE(static_cast<int>(window.settings().unit), static_cast<int>(Unit::Mil));
    }

    void senselessValueIsToldAndNothingIsLost() {
        ShownWindow window(test::boardCopy());
        PreferencesDialog* const dialog = openPreferences(window);
        QVERIFY(dialog != nullptr);
        typeValue(*dialog, "display::grid::grid", "thick");
        typeValue(*dialog, "display::zoom_factor", "2");
        QCOMPARE(dialog->verdict(), "display::grid::grid: \"thick\" is no number from 0.05 to 50.");
        click(*dialog, "save");
        QCOMPARE(dialog->verdict(),
                 "Nothing is saved yet. display::grid::grid: \"thick\" is no number from 0.05 to 50.");
        QCOMPARE(test::contents(test::userFile()), QByteArray());
        // The typed text is still there, and is saved once it makes sense.
        QCOMPARE(dialog->settings().typed(),
                 (std::map<std::string, std::string>{{"display::grid::grid", "thick"}, {"display::zoom_factor", "2"}}));
        typeValue(*dialog, "display::grid::grid", "3");
        click(*dialog, "save");
        QCOMPARE(window.settings().grid, 3.0);
        QCOMPARE(window.settings().zoomFactor, 2.0);
        QVERIFY(dialog->settings().typed().empty());
    }

    void closingWithTypedValuesAsksOnce() {
        ShownWindow window(test::boardCopy());
        PreferencesDialog* const dialog = openPreferences(window);
        QVERIFY(dialog != nullptr);
        typeValue(*dialog, "display::zoom_factor", "2");
        click(*dialog, "close");
        QVERIFY(dialog->isVisible());
        QCOMPARE(dialog->verdict(), "Values that are not saved: 1. Close again to drop them.");
        click(*dialog, "close");
        QVERIFY(test::shownDialog<PreferencesDialog>(window) == nullptr);
        QCOMPARE(get<double>("display::zoom_factor", 0), 1.25);
    }

    void resetBringsBackTheDefaultAndEmptiesTheEntry() {
        ShownWindow window(test::boardCopy());
        PreferencesDialog* const dialog = openPreferences(window);
        QVERIFY(dialog != nullptr);
        typeValue(*dialog, "display::zoom_factor", "2");
        click(*dialog, "save");
        QVERIFY(test::contents(test::userFile()).contains("zoom_factor"));
        dialog->selectSetting("display::zoom_factor");
        click(*dialog, "reset");
        QCOMPARE(window.settings().zoomFactor, 1.25);
        QVERIFY(!test::contents(test::userFile()).contains("zoom_factor"));
        const int row = dialog->settings().rowOf("display::zoom_factor");
        QCOMPARE(dialog->settings().index(row, SettingModel::Origin).data().toString(), "Shipped");
    }

    void searchFindsNamesAndValuesOfAllSections() {
        ShownWindow window(test::boardCopy());
        PreferencesDialog* const dialog = openPreferences(window);
        QVERIFY(dialog != nullptr);
        const QAbstractItemModel& shown = *dialog->findChild<QTableView*>()->model();
        auto* const search = dialog->findChild<QLineEdit*>("search");
        QTest::keyClicks(search, "copper");
        // Three colors of copper and one flag of the 3D view.
        QCOMPARE(shown.rowCount(), 4);
        search->clear();
        QTest::keyClicks(search, "#E6E6DC");
        QCOMPARE(shown.rowCount(), 1);
        QCOMPARE(shown.index(0, 0).data().toString(), "top_silkscreen");
        search->clear();
        QCOMPARE(shown.rowCount(), 1);  // the section "Start"
    }

    void saveThatTheSystemRefusesIsTold() {
        ShownWindow window(test::boardCopy());
        // A file stands where the folder of the user's file would be made.
        QFile obstacle(test::home() + "/pcbenv");
        QVERIFY(obstacle.open(QIODevice::WriteOnly));
        obstacle.close();
        PreferencesDialog* const dialog = openPreferences(window);
        QVERIFY(dialog != nullptr);
        typeValue(*dialog, "display::zoom_factor", "2");
        click(*dialog, "save");
        QCOMPARE(dialog->verdict(), window.statusText());
        QVERIFY(window.messages().warnings() > 0);
        QCOMPARE(window.settings().zoomFactor, 2.0);
    }
};

const test::Registration kPreferencesTest("preferences", [] { return std::make_unique<PreferencesTest>(); });

}  // namespace viewer

#include "preferences_test.moc"
