#include "table/property_sorter.h"

#include <zelutil/c_api.h>

namespace viewer {

PropertySorter::PropertySorter(PropertyModel& model, QObject* parent) : QSortFilterProxyModel(parent), model_(model) {
    setSourceModel(&model);
}

void PropertySorter::setNumbersAsNumbers(bool numbers) {
    numbers_ = numbers;
    invalidate();
}

bool PropertySorter::isNumerical(int column) const {
    const std::string header = model_.header().toStdString();
    const std::string name = model_.columns()[column].toStdString();
    return numbers_ && ZelUGetFacetType(header.c_str(), name.c_str()) == 1;
}

bool PropertySorter::lessThan(const QModelIndex& left, const QModelIndex& right) const {
    if (isNumerical(left.column())) {
        return model_.cell(left.row(), left.column()).number < model_.cell(right.row(), right.column()).number;
    }
    return model_.cellText(left.row(), left.column()) < model_.cellText(right.row(), right.column());
}

}  // namespace viewer
