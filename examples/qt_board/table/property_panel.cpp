#include "table/property_panel.h"

#include <QComboBox>
#include <QHeaderView>
#include <QTableView>
#include <QVBoxLayout>

#include "table/property_model.h"
#include "table/property_sorter.h"

namespace viewer {

PropertyPanel::PropertyPanel(Design& design, QWidget* parent)
    : QWidget(parent),
      design_(design),
      model_(new PropertyModel(design, this)),
      sorter_(new PropertySorter(*model_, this)),
      kinds_(new QComboBox(this)),
      table_(new QTableView(this)) {
    setObjectName(QStringLiteral("propertyPanel"));
    kinds_->addItems({tr("Pads"), tr("Tracks"), tr("Nets")});
    table_->setModel(sorter_);
    table_->setSortingEnabled(true);
    table_->sortByColumn(0, Qt::AscendingOrder);
    table_->setSelectionBehavior(QAbstractItemView::SelectRows);
    table_->setAlternatingRowColors(true);
    table_->verticalHeader()->hide();
    table_->verticalHeader()->setDefaultSectionSize(table_->fontMetrics().height() + 6);
    table_->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    table_->setTabKeyNavigation(false);
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(4, 4, 4, 4);
    layout->addWidget(kinds_);
    layout->addWidget(table_);
    connect(kinds_, &QComboBox::currentIndexChanged, this, [this](int index) {
        model_->setKind(static_cast<ObjectKind>(index));
        tellHowColumnsSort();
    });
    connect(table_, &QTableView::clicked, this, &PropertyPanel::showCurrentOnBoard);
    tellHowColumnsSort();
}

void PropertyPanel::setSettings(const ViewSettings& settings) {
    model_->setSettings(settings);
    sorter_->setNumbersAsNumbers(settings.numbersAsNumbers);
    tellHowColumnsSort();
}

void PropertyPanel::tellHowColumnsSort() {
    QStringList numerical;
    for (int column = 0; column < model_->columnCount(); ++column) {
        if (sorter_->isNumerical(column)) {
            numerical << model_->columns()[column];
        }
    }
    table_->horizontalHeader()->setToolTip(numerical.isEmpty()
                                               ? tr("All columns sort as texts")
                                               : tr("Sorted as numbers: %1").arg(numerical.join(QStringLiteral(", "))));
}

void PropertyPanel::showNextKind() { kinds_->setCurrentIndex((kinds_->currentIndex() + 1) % kinds_->count()); }

void PropertyPanel::sortByNextColumn() {
    const QHeaderView& header = *table_->horizontalHeader();
    table_->sortByColumn((header.sortIndicatorSection() + 1) % model_->columnCount(), Qt::AscendingOrder);
}

int PropertyPanel::currentRow() const {
    const QModelIndex index = sorter_->mapToSource(table_->currentIndex());
    return index.isValid() ? index.row() : -1;
}

void PropertyPanel::showCurrentOnBoard() {
    const int row = currentRow();
    if (row < 0) {
        return;
    }
    if (model_->kind() == ObjectKind::Net) {
        design_.highlightNet(model_->netOf(row));
    } else {
        design_.select(model_->itemOf(row));
    }
}

QString PropertyPanel::currentNet() const { return currentRow() < 0 ? QString() : model_->netOf(currentRow()); }

QString PropertyPanel::currentText() const {
    QStringList cells;
    for (int column = 0; currentRow() >= 0 && column < model_->columnCount(); ++column) {
        cells << model_->cellText(currentRow(), column);
    }
    return cells.join(u'\t');
}

}  // namespace viewer
