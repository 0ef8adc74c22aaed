#ifndef QT_BOARD_DIALOGS_PREFERENCES_DIALOG_H
#define QT_BOARD_DIALOGS_PREFERENCES_DIALOG_H

#include <zelutil/host/observers.h>
#include <zelutil/host/result.h>

#include <QDialog>

#include "window/message_log.h"

class QLabel;
class QLineEdit;
class QPushButton;
class QTableView;
class QTreeWidget;

namespace viewer {

class SettingFilter;
class SettingModel;

/// Shows all settings by section, with the shipped default beside the value in force. What is saved takes effect at
/// once: every view follows.
class PreferencesDialog : public QDialog {
    Q_OBJECT

public:
    explicit PreferencesDialog(MessageLog& messages, QWidget* parent = nullptr);

    /// Hides the dialog: a cell that is being edited hands its text over now, while there is somebody to take it.
    ~PreferencesDialog() override;

    SettingModel& settings() { return *model_; }
    QString verdict() const;

    /// Shows the setting, whichever section is open and whatever is searched for.
    void selectSetting(const QString& fullName);

    /// Closes the dialog. Where values are typed and not saved, it says so and stays once.
    void reject() override;

private:
    void build();
    QLayout* buildEndRow();
    void connectEverything();
    void showSection();
    void save();
    void resetSelected();
    void showOutcome(const zelutil::host::SaveResult& result);
    void followTyping();

    MessageLog& messages_;
    SettingModel* model_;
    SettingFilter* filter_;
    QLineEdit* search_;
    QTreeWidget* tree_;
    QTableView* table_;
    QLabel* verdict_;
    QPushButton* reset_;
    QPushButton* save_;
    bool isWarned_ = false;
    zelutil::host::Subscription changes_;
};

}  // namespace viewer

#endif
