#ifndef QT_BOARD_TABLE_PROPERTY_MODEL_H
#define QT_BOARD_TABLE_PROPERTY_MODEL_H

#include <QAbstractTableModel>
#include <QStringList>
#include <vector>

#include "board/design.h"
#include "views/view_settings.h"

namespace viewer {

enum class ObjectKind { Pad, Track, Net };

/// One cell: a text, or a number that is shown as a length, as a count, or not at all where there is none.
struct Cell {
    enum class Kind { Text, Length, Count };

    Kind kind = Kind::Text;
    QString text;
    double number = 0;
};

/// The objects of one kind of the open board, a row each, a column for each of their properties.
class PropertyModel : public QAbstractTableModel {
    Q_OBJECT

public:
    explicit PropertyModel(Design& design, QObject* parent = nullptr);

    void setKind(ObjectKind kind);
    ObjectKind kind() const { return kind_; }
    void setSettings(const ViewSettings& settings);

    /// Returns the name of the objects, under which their facets are known.
    QString header() const;
    const QStringList& columns() const { return columns_; }

    const Cell& cell(int row, int column) const;
    QString cellText(int row, int column) const;
    Item itemOf(int row) const;
    QString netOf(int row) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    void rebuild();
    void addPads();
    void addTracks();
    void addNets();

    Design& design_;
    ViewSettings settings_;
    ObjectKind kind_ = ObjectKind::Pad;
    QStringList columns_;
    std::vector<std::vector<Cell>> rows_;
};

}  // namespace viewer

#endif
