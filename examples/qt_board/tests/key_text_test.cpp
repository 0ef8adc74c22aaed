#include "keys/key_text.h"

#include <QTest>

#include "runner.h"

namespace viewer {

namespace {

QKeySequence press(Qt::KeyboardModifiers modifiers, Qt::Key key) {
    return QKeySequence(QKeyCombination(modifiers, key));
}

}  // namespace

class KeyTextTest : public QObject {
    Q_OBJECT

private slots:
    void textsAndKeysBelongTogether_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QKeySequence>("key");
        const auto row = [](const char* text, const QKeySequence& key) {
            QTest::newRow(text) << QString::fromUtf8(text) << key;
        };
        row("", QKeySequence());
        row("S", press({}, Qt::Key_S));
        row("Ctrl+S", press(Qt::ControlModifier, Qt::Key_S));
        row("Ctrl+Shift+S", press(Qt::ControlModifier | Qt::ShiftModifier, Qt::Key_S));
        row("Ctrl+Alt+Shift+Meta+F12",
            press(Qt::ControlModifier | Qt::AltModifier | Qt::ShiftModifier | Qt::MetaModifier, Qt::Key_F12));
        row("F1", press({}, Qt::Key_F1));
        row("F35", press({}, Qt::Key_F35));
        row("F", press({}, Qt::Key_F));
        row("PgUp", press({}, Qt::Key_PageUp));
        row("PgDown", press({}, Qt::Key_PageDown));
        row("Del", press({}, Qt::Key_Delete));
        row("Shift+Del", press(Qt::ShiftModifier, Qt::Key_Delete));
        row("Ins", press({}, Qt::Key_Insert));
        row("Esc", press({}, Qt::Key_Escape));
        row("Alt+Return", press(Qt::AltModifier, Qt::Key_Return));
        row("Enter", press({}, Qt::Key_Enter));
        row("Space", press({}, Qt::Key_Space));
        row("Ctrl+Down", press(Qt::ControlModifier, Qt::Key_Down));
        // Signs, those of the grammar too.
        row("+", press({}, Qt::Key_Plus));
        row("Ctrl++", press(Qt::ControlModifier, Qt::Key_Plus));
        row("Ctrl+-", press(Qt::ControlModifier, Qt::Key_Minus));
        row("Ctrl+,", press(Qt::ControlModifier, Qt::Key_Comma));
        row("1", press({}, Qt::Key_1));
        row("!", press({}, Qt::Key_Exclam));
        row("\xc3\x84", press({}, Qt::Key_Adiaeresis));
        // Several presses.
        row("Ctrl+K, Ctrl+C", QKeySequence(QKeyCombination(Qt::ControlModifier, Qt::Key_K),
                                           QKeyCombination(Qt::ControlModifier, Qt::Key_C)));
        row("Ctrl+,, A", QKeySequence(QKeyCombination(Qt::ControlModifier, Qt::Key_Comma), QKeyCombination(Qt::Key_A)));
        row("1, 2, 3, 4", QKeySequence(Qt::Key_1, Qt::Key_2, Qt::Key_3, Qt::Key_4));
    }

    void textsAndKeysBelongTogether() {
        QFETCH(QString, text);
        QFETCH(QKeySequence, key);
        const std::optional<QKeySequence> made = keyOf(text);
        QVERIFY(made.has_value());
        QCOMPARE(*made, key);
        QCOMPARE(textOf(key), text);
    }

    void otherSpellingsMakeTheSameKey_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("same");
        QTest::newRow("small letters") << "ctrl+s"
                                       << "Ctrl+S";
        QTest::newRow("another order") << "Shift+Ctrl+S"
                                       << "Ctrl+Shift+S";
        QTest::newRow("long names") << "Control+Delete"
                                    << "Ctrl+Del";
        QTest::newRow("page") << "PageDown"
                              << "PgDown";
        QTest::newRow("page, short") << "pgdn"
                                     << "PgDown";
        QTest::newRow("escape") << "Escape"
                                << "Esc";
        QTest::newRow("super") << "Super+E"
                               << "Meta+E";
        QTest::newRow("function key") << "f5"
                                      << "F5";
    }

    void otherSpellingsMakeTheSameKey() {
        QFETCH(QString, text);
        QFETCH(QString, same);
        QVERIFY(keyOf(text).has_value());
        QCOMPARE(textOf(*keyOf(text)), same);
    }

    void senselessTextsMakeNoKey_data() {
        QTest::addColumn<QString>("text");
        for (const char* const text :
             {" ",   "Strg+Q", "Ctrl+", "Ctrl",     "Ctrl+Shift", "Ctrl+Ctrl+A",          "Ctrl+AB",       "F0",
              "F36", "F01",    "F 1",   "Ctrl + S", "Ctrl-S",     "Ctrl+K,Ctrl+C",        "1, 2, 3, 4, 5", ", ",
              "A, ", "PgUp ",  "++",    "Hyper+A",  "\x01",       "Ctrl+\xf0\x9f\x98\x80"}) {
            QTest::newRow(text) << QString::fromUtf8(text);
        }
    }

    void senselessTextsMakeNoKey() {
        QFETCH(QString, text);
        QVERIFY(!keyOf(text).has_value());
    }

    void keysWithoutTextHaveNone() {
        QCOMPARE(textOf(QKeySequence()), QString());
        QCOMPARE(textOf(press({}, Qt::Key_VolumeUp)), QString());
        QCOMPARE(textOf(press(Qt::ControlModifier, Qt::Key_Control)), QString());
        QCOMPARE(textOf(QKeySequence(Qt::Key_A, Qt::Key_VolumeUp)), QString());
    }
};

const test::Registration kKeyTextTest("key_text", [] { return std::make_unique<KeyTextTest>(); });

}  // namespace viewer

#include "key_text_test.moc"
