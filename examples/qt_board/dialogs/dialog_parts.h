#ifndef QT_BOARD_DIALOGS_DIALOG_PARTS_H
#define QT_BOARD_DIALOGS_DIALOG_PARTS_H

#include <QString>

class QLabel;
class QLineEdit;
class QPushButton;
class QTableView;

/// Parts that the dialogs have in common. Each has an object name, by which tests find it.
namespace viewer {

/// Returns a button that the Enter key presses only while it has the focus. It belongs to the caller.
QPushButton* newButton(const QString& text, const char* name);

/// Returns a label for sentences, which wrap. It belongs to the caller.
QLabel* newSentences(const char* name);

/// Returns the search field of a dialog. It belongs to the caller.
QLineEdit* newSearchField(const QString& placeholder);

/// Has a table show rows of a text's height and so many pixels more, without a header beside them.
void layOutRows(QTableView& table, int morePixels);

void showVerdict(QLabel& label, const QString& text, bool isGood);

}  // namespace viewer

#endif
