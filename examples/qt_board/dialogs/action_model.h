#ifndef QT_BOARD_DIALOGS_ACTION_MODEL_H
#define QT_BOARD_DIALOGS_ACTION_MODEL_H

#include <zelutil/host/actions.h>

#include <QAbstractTableModel>
#include <vector>

namespace viewer {

/// All actions of the catalogue, a row each.
class ActionModel : public QAbstractTableModel {
    Q_OBJECT

public:
    enum Column { Name, Context, Shortcut, Menu, Origin, ColumnCount };

    explicit ActionModel(QObject* parent = nullptr);

    /// Asks the catalogue again.
    void refresh();

    const zelutil::host::ActionInfo& action(int row) const { return actions_[static_cast<std::size_t>(row)]; }
    int rowOf(int id) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

signals:
    void menuFlagWanted(int id, bool inMenu);

private:
    std::vector<zelutil::host::ActionInfo> actions_;
};

}  // namespace viewer

#endif
