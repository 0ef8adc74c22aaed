#include <QTableView>
#include <QTest>

#include "board/board_reader.h"
#include "runner.h"
#include "table/property_model.h"
#include "table/property_panel.h"
#include "table/property_sorter.h"

namespace viewer {

namespace {

/// Three pads whose numbers and texts sort differently.
Board board() {
    return *readBoard(QStringLiteral("board b\noutline 0 0 99 0 99 99\nlayer top top_copper\n"
                                     "pad P10 top rect 9 1 1 1 net B\n"
                                     "pad P9 top rect 10 1 1 1 net A\n"
                                     "pad P1 top rect -2 1 1 1 net A\n"
                                     "track top 0.2 0 0 10 0 net A\n"
                                     "track top 0.2 0 0 9 0 1 0 net A\n"))
                .board;
}

QStringList column(const QAbstractItemModel& model, int which) {
    QStringList texts;
    for (int row = 0; row < model.rowCount(); ++row) {
        texts << model.index(row, which).data().toString();
    }
    return texts;
}

}  // namespace

class PropertyTableTest : public QObject {
    Q_OBJECT

private slots:
    void facetsDecideHowAColumnSorts() {
        Design design;
        design.open(board(), {});
        PropertyModel model(design);
        PropertySorter sorter(model);
        const int x = static_cast<int>(model.columns().indexOf("X"));
        QVERIFY(sorter.isNumerical(x));
        QVERIFY(!sorter.isNumerical(0));
        sorter.sort(x);
        QCOMPARE(column(sorter, x), (QStringList{"-2.000", "9.000", "10.000"}));
        sorter.sort(0);
        QCOMPARE(column(sorter, 0), (QStringList{"P1", "P10", "P9"}));
        sorter.setNumbersAsNumbers(false);
        sorter.sort(x);
        QCOMPARE(column(sorter, x), (QStringList{"-2.000", "10.000", "9.000"}));
    }

    void everyColumnIsAFacetOfTheProduct_data() {
        QTest::addColumn<int>("kind");
        QTest::newRow("pads") << 0;
        QTest::newRow("tracks") << 1;
        QTest::newRow("nets") << 2;
    }

    void everyColumnIsAFacetOfTheProduct() {
        QFETCH(int, kind);
        Design design;
        design.open(board(), {});
        PropertyModel model(design);
        model.setKind(static_cast<ObjectKind>(kind));
        const PropertySorter sorter(model);
        for (int i = 0; i < model.columnCount(); ++i) {
            QCOMPARE(sorter.isNumerical(i), model.cell(0, i).kind != Cell::Kind::Text);
        }
    }

    void netsAreCounted() {
        Design design;
        design.open(board(), {});
        PropertyModel model(design);
        model.setKind(ObjectKind::Net);
        QCOMPARE(column(model, 0), (QStringList{"A", "B"}));
        QCOMPARE(column(model, 1), (QStringList{"2", "1"}));
        QCOMPARE(column(model, 2), (QStringList{"2", "0"}));
        QCOMPARE(column(model, 3), (QStringList{"27.000", "0.000"}));
    }

    void rowThatIsClickedIsSelectedOnTheBoard() {
        Design design;
        design.open(board(), {});
        PropertyPanel panel(design);
        panel.resize(500, 300);
        panel.show();
        QTableView& table = panel.table();
        const QRect cell = table.visualRect(table.model()->index(1, 0));
        QTest::mouseClick(table.viewport(), Qt::LeftButton, {}, cell.center());
        // The rows stand in the order of their names: P1, P10, P9.
        QCOMPARE(design.describe(design.selection()), "Pad P10, net B");
        QVERIFY(panel.currentText().startsWith("P10\tB\ttop\t9.000"));
    }
};

const test::Registration kPropertyTableTest("property_table", [] { return std::make_unique<PropertyTableTest>(); });

}  // namespace viewer

#include "property_table_test.moc"
