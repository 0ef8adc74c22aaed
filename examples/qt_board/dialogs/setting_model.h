#ifndef QT_BOARD_DIALOGS_SETTING_MODEL_H
#define QT_BOARD_DIALOGS_SETTING_MODEL_H

#include <zelutil/host/settings.h>

#include <QAbstractTableModel>
#include <QMap>
#include <map>
#include <string>
#include <vector>

namespace viewer {

/// All settings, a row each, with the values that the user has typed and not saved yet.
class SettingModel : public QAbstractTableModel {
    Q_OBJECT

public:
    enum Column { Name, Value, Default, Origin, ColumnCount };

    explicit SettingModel(QObject* parent = nullptr);

    /// Asks the preferences again; what is typed stays, unless it is what is in force.
    void refresh();

    const zelutil::host::SettingInfo& setting(int row) const { return settings_[static_cast<std::size_t>(row)]; }
    int rowOf(const QString& fullName) const;
    QString fullName(int row) const;
    QString shownValue(int row) const;

    /// Returns why the value that is shown makes no sense; empty when it does.
    QString objection(int row) const;

    /// Returns all that is typed and not in force, by full name, and a sentence for each of them that makes no sense.
    std::map<std::string, std::string> typed() const;
    QStringList objections() const;

    void forgetTyped(int row);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

signals:
    void typedChanged();

private:
    QVariant display(int row, int column) const;
    QVariant decoration(int row, int column) const;
    void setTyped(int row, const QString& text);

    std::vector<zelutil::host::SettingInfo> settings_;
    QMap<QString, QString> typed_;
};

}  // namespace viewer

#endif
