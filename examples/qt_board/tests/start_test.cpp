#include <zelutil/actions/action_manager.h>
#include <zelutil/host/settings.h>

#include <QDir>
#include <QLabel>
#include <QListWidget>
#include <QTest>
#include <QToolButton>

#include "actions/action_binder.h"

#include "runner.h"
#include "shown_window.h"
#include "views/space_view.h"

namespace viewer {

namespace {

using test::ShownWindow;

constexpr const char* kCorrupt = "{\"meta\": [ this is no JSON";

QByteArray userText(const char* attribute, const char* entries) {
    return QByteArray("{\"meta\": [{\"header\": \"x\", \"attribute\": \"") + attribute +
           "\", \"overriddensettings\": " + entries + "}]}";
}

}  // namespace

class StartTest : public QObject {
    Q_OBJECT

private slots:
    void startWithoutAUserFileHasNoWarnings() {
        const ShownWindow window(test::boardCopy());
        QCOMPARE(window.statusText(), "node.board: 136 pads, 110 tracks.");
        QVERIFY(!window.findChild<QToolButton*>("warnings")->isVisible());
    }

    void corruptUserFileLeadsToDefaultsAndAKeptCopy() {
        test::writeUserFile(kCorrupt);
        MainWindow window;
        window.show();
        QCOMPARE(window.settings().grid, 1.27);
        QCOMPARE(window.messages().warnings(), 1);
        const QString warning = window.messages().texts().first();
        QCOMPARE(window.statusText(), warning);
        QVERIFY2(warning.contains("tessel_settings.cfg"), qPrintable(warning));
        QVERIFY(window.findChild<QToolButton*>("warnings")->isVisible());
        // The first save keeps the file's bytes, and says where.
        emit window.binder().requested("view grid", "ucpedit");
        QCOMPARE(test::contents(test::userFile() + ".bad"), QByteArray(kCorrupt));
        QVERIFY2(window.statusText().contains("tessel_settings.cfg.bad"), qPrintable(window.statusText()));
        QVERIFY(test::contents(test::userFile()).contains("grid_visible"));
        QVERIFY(test::restartWith("againTheNewFileIsRead"));
    }

    void againTheNewFileIsRead() {
        const ShownWindow window(test::boardCopy());
        QVERIFY(!window.settings().gridVisible);
        QCOMPARE(window.statusText(), "node.board: 136 pads, 110 tracks.");
    }

    void senselessValueOfTheUserFileCountsAsDefaultAndIsTold() {
        test::writeUserFile(userText("display::grid", "[{\"display::grid::grid\": \"wide\"}]"));
        ShownWindow window(test::boardCopy());
        QCOMPARE(window.settings().grid, 1.27);
        QVERIFY(window.messages().texts().contains(
            "The setting display::grid::grid counts as its default. \"wide\" is no number from 0.05 to 50."));
        // It is still the user's, for the program that understands it.
        QCOMPARE(zelutil::host::get<std::string>("display::grid::grid", ""), std::string("wide"));
    }

    void shortcutThatMakesNoKeyIsToldAndKept() {
        test::writeUserFile(userText("shortcuts", "[{\"actions\": [{\"id\": 6, \"shortcut\": \"Strg+Q\"}]}]"));
        MainWindow window;
        QVERIFY(window.messages().texts().contains(
            "The shortcut \"Strg+Q\" of \"Quit\" makes no key. It is kept, and no key runs it."));
        emit window.binder().requested("view grid", "ucpedit");
        QVERIFY(test::contents(test::userFile()).contains("Strg+Q"));
    }

    void startsInTheEditorThatTheUserSet() {
        test::writeUserFile(userText("general::startup", "[{\"general::startup::start_editor\": \"space\"}]"));
        ShownWindow window(test::boardCopy());
        QVERIFY(window.spaceView().isVisible());
    }

    void brokenBoardFileIsToldAndTheBoardBeforeStays() {
        ShownWindow window(test::boardCopy());
        QFile broken(test::home() + "/broken.board");
        QVERIFY(broken.open(QIODevice::WriteOnly));
        broken.write("board b\noutline 0 0 1 0 1 1\nlayer top top_copper\npad P top rect 0 zero 1 1\n");
        broken.close();
        QVERIFY(!window.openBoard(broken.fileName()));
        const auto* const banner = window.findChild<QLabel*>("banner");
        QVERIFY(banner->isVisible());
        QCOMPARE(banner->text(),
                 "broken.board could not be opened. Line 4: \"zero\" is no number, where a y coordinate "
                 "is expected.");
        QCOMPARE(window.statusText(), banner->text());
        QCOMPARE(window.design().board().pads.size(), std::size_t{136});
        // It goes with the next board that can be read.
        QVERIFY(window.openBoard(test::home() + "/node.board"));
        QVERIFY(!banner->isVisible());
        // The messages have it still.
        QCOMPARE(window.findChild<QListWidget*>("messageList")->item(1)->text().left(12), "broken.board");
    }
};

const test::Registration kStartTest("start", [] { return std::make_unique<StartTest>(); });

}  // namespace viewer

#include "start_test.moc"
