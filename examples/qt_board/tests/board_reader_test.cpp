#include "board/board_reader.h"

#include <QRandomGenerator>
#include <QTest>

#include "board/board_writer.h"
#include "runner.h"

namespace viewer {

namespace {

constexpr const char* kSmallBoard =
    "# a comment\n"
    "board \"Two pads\"\n"
    "outline 0 0 20 0 20 10.5 0 10.5\n"
    "\n"
    "layer top top_copper\n"
    "layer low bottom_copper   # another comment\n"
    "pad A.1 top rect 2 3 1.5 0.8 net GND\n"
    "pad B.1 all round -4 5 2 2 hole 1.1 net \"NET 2\"\n"
    "track low 0.25 0 0 3 4 3 10 net GND\r\n"
    "part U1 top 5 5 3 2 1.2\n"
    "part U2 bottom 6 5 3 2 1\n";

}  // namespace

class BoardReaderTest : public QObject {
    Q_OBJECT

private slots:
    void readsEveryKindOfLine() {
        const ReadBoard read = readBoard(kSmallBoard);
        QVERIFY2(read.board.has_value(), qPrintable(read.errors.join('\n')));
        const Board& board = *read.board;
        QCOMPARE(board.name, "Two pads");
        QCOMPARE(board.outline.size(), 4);
        QCOMPARE(board.outline[2], QPointF(20, 10.5));
        QCOMPARE(board.layers.size(), std::size_t{2});
        QCOMPARE(static_cast<int>(board.layers[1].kind), static_cast<int>(LayerKind::BottomCopper));
        QCOMPARE(board.pads.size(), std::size_t{2});
        QCOMPARE(board.pads[0].layer, 0);
        QCOMPARE(board.pads[0].size, QSizeF(1.5, 0.8));
        QCOMPARE(board.pads[0].hole, 0.0);
        QCOMPARE(board.pads[1].layer, kAllLayers);
        QCOMPARE(board.pads[1].at, QPointF(-4, 5));
        QCOMPARE(board.pads[1].hole, 1.1);
        QCOMPARE(board.pads[1].net, "NET 2");
        QCOMPARE(board.tracks.size(), std::size_t{1});
        QCOMPARE(board.tracks[0].layer, 1);
        QCOMPARE(lengthOf(board.tracks[0]), 11.0);
        QCOMPARE(board.tracks[0].net, "GND");
        QVERIFY(board.parts[0].onTop);
        QVERIFY(!board.parts[1].onTop);
        QCOMPARE(board.parts[0].height, 1.2);
    }

    void tellsLineAndReason_data() {
        QTest::addColumn<QString>("line");
        QTest::addColumn<QString>("error");
        const auto row = [](const char* line, const char* error) {
            QTest::newRow(line) << QString::fromUtf8(line) << QStringLiteral("Line 4: %1.").arg(QLatin1String(error));
        };
        row("pda A top rect 1 1 1 1", "\"pda\" begins no line of a board file");
        row("pad", "the line ends where a name is expected");
        row("pad A", "the line ends where a layer is expected");
        row("pad A tpo rect 1 1 1 1", "no line above names a layer \"tpo\"");
        row("pad A top square 1 1 1 1", "\"square\" is none of round, rect, oval");
        row("pad A top rect 1 one 1 1", "\"one\" is no number, where a y coordinate is expected");
        row("pad A top rect 1 1,5 1 1", "\"1,5\" is no number, where a y coordinate is expected");
        row("pad A top rect nan 1 1 1", "\"nan\" is no number, where an x coordinate is expected");
        row("pad A top rect 1e300 1 1 1", "1e300 is farther out than 10,000 mm");
        row("pad A top rect 1 1 0 1", "a width is not above 0");
        row("pad A top rect 1 1 1 -2", "a height is not above 0");
        row("pad A top rect 1 1 1", "the line ends where a height is expected");
        row("pad A top rect 1 1 1 1 hole 0", "the hole's diameter is not above 0");
        row("pad A top rect 1 1 1 1 net", "the line ends where a net is expected");
        row("pad A top rect 1 1 1 1 net GND x", "\"x\" is not expected here");
        row("track top 0.2 0 0", "the line ends where an x coordinate is expected");
        row("track top 0.2 0 0 1 1 2", "the line ends where a y coordinate is expected");
        row("track all 0.2 0 0 1 1", "no line above names a layer \"all\"");
        row("layer top top_copper", "the name \"top\" is taken");
        row("layer all top_copper", "the name \"all\" is taken");
        row("layer new copper",
            "\"copper\" is none of top_copper, inner_copper, bottom_copper, top_silkscreen, bottom_silkscreen");
        row("outline 0 0 1 0 1 1", "the board has an outline already");
        row("part U above 0 0 1 1 1", "\"top\" or \"bottom\" is expected after the part's name");
        row("board \"open", "a quotation mark is not closed");
    }

    void tellsLineAndReason() {
        QFETCH(QString, line);
        QFETCH(QString, error);
        const QString text = QStringLiteral("board b\noutline 0 0 9 0 9 9\nlayer top top_copper\n") + line + u'\n';
        const ReadBoard read = readBoard(text);
        QVERIFY(!read.board.has_value());
        QCOMPARE(read.errors, QStringList{error});
    }

    void tellsWhatIsMissing() {
        QCOMPARE(readBoard({}).errors,
                 (QStringList{"The file has no line \"outline\".", "The file has no line \"layer\"."}));
    }

    void tellsAtMostTwentyErrors() {
        const ReadBoard read = readBoard(QStringLiteral("x\n").repeated(100));
        QCOMPARE(read.errors.size(), kMostErrors);
        QCOMPARE(read.errors.last(), "Line 20: \"x\" begins no line of a board file.");
    }

    void tellsWhyAFileIsNoBoard() {
        QVERIFY(readBoardFile(test::home() + "/none.board").errors.value(0).startsWith("The file cannot be opened: "));
        QFile file(test::home() + "/bytes.board");
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("board \xff\xfe\n");
        file.close();
        QCOMPARE(readBoardFile(file.fileName()).errors, QStringList{"The file is no text in UTF-8."});
        QVERIFY(!readBoardFile(test::home()).board.has_value());
    }

    void readsBackWhatIsWritten() {
        const Board board = *readBoard(kSmallBoard).board;
        const QString text = boardText(board);
        const ReadBoard again = readBoard(text);
        QVERIFY2(again.board.has_value(), qPrintable(again.errors.join('\n')));
        QCOMPARE(boardText(*again.board), text);
        QCOMPARE(again.board->pads[1].net, board.pads[1].net);
        QCOMPARE(again.board->tracks[0].points, board.tracks[0].points);
    }

    void exampleBoardIsWhole() {
        const ReadBoard read = readBoardFile(test::boardCopy());
        QVERIFY2(read.board.has_value(), qPrintable(read.errors.join('\n')));
        QCOMPARE(read.board->pads.size(), std::size_t{136});
        QCOMPARE(read.board->tracks.size(), std::size_t{110});
    }

    void survivesBrokenTexts() {
        const QString example = QString::fromUtf8(test::contents(test::boardCopy()));
        QRandomGenerator random(1);
        for (int round = 0; round < 60; ++round) {
            QString text = example;
            for (int change = random.bounded(1, 6); change > 0; --change) {
                const int at = random.bounded(static_cast<int>(text.size()));
                text.replace(at, random.bounded(4), QString(QChar(random.bounded(32, 127))));
            }
            const ReadBoard read = readBoard(text);
            QCOMPARE(read.board.has_value(), read.errors.isEmpty());
        }
    }
};

const test::Registration kBoardReaderTest("board_reader", [] { return std::make_unique<BoardReaderTest>(); });

}  // namespace viewer

#include "board_reader_test.moc"
