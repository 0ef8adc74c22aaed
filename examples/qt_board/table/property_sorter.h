#ifndef QT_BOARD_TABLE_PROPERTY_SORTER_H
#define QT_BOARD_TABLE_PROPERTY_SORTER_H

#include <QSortFilterProxyModel>

#include "table/property_model.h"

namespace viewer {

/// Sorts the property table. The product's facets say of each column whether it is sorted as numbers or as texts.
class PropertySorter : public QSortFilterProxyModel {
    Q_OBJECT

public:
    explicit PropertySorter(PropertyModel& model, QObject* parent = nullptr);

    /// Has numerical columns sorted as texts, too, when false.
    void setNumbersAsNumbers(bool numbers);

    /// Returns whether the column is sorted as numbers.
    bool isNumerical(int column) const;

protected:
    bool lessThan(const QModelIndex& left, const QModelIndex& right) const override;

private:
    PropertyModel& model_;
    bool numbers_ = true;
};

}  // namespace viewer

#endif
