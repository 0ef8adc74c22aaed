#ifndef QT_BOARD_DIALOGS_SHORTCUT_DIALOG_H
#define QT_BOARD_DIALOGS_SHORTCUT_DIALOG_H

#include <zelutil/host/observers.h>

#include <QDialog>

#include "actions/shortcut_edits.h"
#include "window/message_log.h"

class QLabel;
class QLineEdit;
class QPushButton;
class QSortFilterProxyModel;
class QTableView;

namespace viewer {

class ActionModel;
class KeyCapture;

/// Shows all actions and has their shortcuts and menu flags edited. Edits are in force at once, everywhere in the
/// program; they are saved, or taken back, when the dialog ends.
class ShortcutDialog : public QDialog {
    Q_OBJECT

public:
    explicit ShortcutDialog(MessageLog& messages, QWidget* parent = nullptr);

    void selectAction(int id);
    int selectedAction() const;

    /// Has the dialog look who holds that shortcut, as if its key had been pressed.
    void tryShortcut(const QString& text);

    QString verdict() const;
    QString afterRestart() const;

    void reject() override;

private:
    void build();
    QLayout* buildKeyRow();
    QLayout* buildEndRow();
    void connectEverything();
    void assign();
    void take();
    void resetSelected();
    void resetAll();
    void save();
    void finishEdit(bool isDone, const QString& done);
    void showSelected();
    void showAfterRestart();

    MessageLog& messages_;
    ShortcutEdits edits_;
    ActionModel* model_;
    QSortFilterProxyModel* filter_;
    QLineEdit* search_;
    QTableView* table_;
    QLabel* selected_;
    KeyCapture* capture_;
    QLineEdit* typed_;
    QLabel* verdict_;
    QLabel* afterRestart_;
    QPushButton* assign_;
    QPushButton* take_;
    QPushButton* remove_;
    QPushButton* reset_;
    QPushButton* save_;
    QString candidate_;
    zelutil::host::Subscription shortcuts_;
    zelutil::host::Subscription menuFlags_;
};

}  // namespace viewer

#endif
