#include "dialogs/dialog_parts.h"

#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>

namespace viewer {

QPushButton* newButton(const QString& text, const char* name) {
    auto* const made = new QPushButton(text);
    made->setObjectName(QString::fromLatin1(name));
    made->setAutoDefault(false);
    return made;
}

QLabel* newSentences(const char* name) {
    auto* const made = new QLabel;
    made->setObjectName(QString::fromLatin1(name));
    made->setWordWrap(true);
    made->setTextFormat(Qt::PlainText);
    return made;
}

QLineEdit* newSearchField(const QString& placeholder) {
    auto* const made = new QLineEdit;
    made->setObjectName(QStringLiteral("search"));
    made->setPlaceholderText(placeholder);
    made->setClearButtonEnabled(true);
    return made;
}

void layOutRows(QTableView& table, int morePixels) {
    table.setSelectionBehavior(QAbstractItemView::SelectRows);
    table.setAlternatingRowColors(true);
    table.verticalHeader()->hide();
    table.verticalHeader()->setDefaultSectionSize(table.fontMetrics().height() + morePixels);
}

void showVerdict(QLabel& label, const QString& text, bool isGood) {
    label.setText(text);
    label.setStyleSheet(isGood ? QStringLiteral("color: #20703a;") : QStringLiteral("color: #a03020;"));
}

}  // namespace viewer
