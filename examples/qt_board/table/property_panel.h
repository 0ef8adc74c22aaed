#ifndef QT_BOARD_TABLE_PROPERTY_PANEL_H
#define QT_BOARD_TABLE_PROPERTY_PANEL_H

#include <QWidget>

#include "board/design.h"
#include "views/view_settings.h"

class QComboBox;
class QTableView;

namespace viewer {

class PropertyModel;
class PropertySorter;

/// The table of the board's objects, an editor of its own: a row that is clicked is selected on the board.
class PropertyPanel : public QWidget {
    Q_OBJECT

public:
    explicit PropertyPanel(Design& design, QWidget* parent = nullptr);

    void setSettings(const ViewSettings& settings);
    void showNextKind();
    void sortByNextColumn();

    /// Selects on the board what the current row tells of.
    void showCurrentOnBoard();

    /// Returns the net of the current row; empty for none.
    QString currentNet() const;

    /// Returns the current row as a text, its cells with tabs between them; empty for none.
    QString currentText() const;

    QTableView& table() { return *table_; }

private:
    int currentRow() const;
    void tellHowColumnsSort();

    Design& design_;
    PropertyModel* model_;
    PropertySorter* sorter_;
    QComboBox* kinds_;
    QTableView* table_;
};

}  // namespace viewer

#endif
