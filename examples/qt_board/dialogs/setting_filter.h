#ifndef QT_BOARD_DIALOGS_SETTING_FILTER_H
#define QT_BOARD_DIALOGS_SETTING_FILTER_H

#include <QSortFilterProxyModel>

namespace viewer {

class SettingModel;

/// Shows the settings of one section or, while something is searched for, all that have it in their name or value.
class SettingFilter : public QSortFilterProxyModel {
    Q_OBJECT

public:
    explicit SettingFilter(SettingModel& model, QObject* parent = nullptr);

    void setSection(const QString& attributePath);
    void setSearched(const QString& text);

protected:
    bool filterAcceptsRow(int row, const QModelIndex& parent) const override;

private:
    SettingModel& model_;
    QString section_;
    QString searched_;
};

}  // namespace viewer

#endif
