#include "dialogs/action_model.h"

#include <QBrush>
#include <QFont>

#include "keys/key_holders.h"
#include "keys/key_text.h"
#include "window/editors.h"

namespace viewer {

namespace {

using zelutil::host::ActionInfo;
using zelutil::host::ShortcutSource;

QString shortcutText(const ActionInfo& action) {
    const QString shortcut = QString::fromStdString(action.shortcut);
    return keyOf(shortcut) ? shortcut : QStringLiteral("%1 (no key)").arg(shortcut);
}

QString originText(const ActionInfo& action) {
    if (action.heldBy > 0) {
        return QStringLiteral("Does not run: %1 has the key").arg(titleOf(action.heldBy));
    }
    switch (action.source) {
        case ShortcutSource::User:
            return QStringLiteral("Yours");
        case ShortcutSource::Parent:
            return QStringLiteral("Follows %1").arg(titleOf(action.item.parent_id));
        case ShortcutSource::Shipped:
        case ShortcutSource::StandIn:
            break;
    }
    return QStringLiteral("Shipped");
}

/// Returns whether the user sees something else than what was shipped with this very action.
bool isChanged(const ActionInfo& action) { return action.source == ShortcutSource::User || action.item.hasOverwrite(); }

bool isDoubtful(const ActionInfo& action) {
    return action.heldBy > 0 || !keyOf(QString::fromStdString(action.shortcut));
}

QString tipOf(const ActionInfo& action) {
    return QStringLiteral("Shipped with: %1. Command: %2.")
        .arg(action.shippedShortcut.empty() ? QStringLiteral("no shortcut")
                                            : QString::fromStdString(action.shippedShortcut),
             QString::fromStdString(action.item.command));
}

}  // namespace

ActionModel::ActionModel(QObject* parent) : QAbstractTableModel(parent) { refresh(); }

void ActionModel::refresh() {
    std::vector<ActionInfo> now;
    for (ActionInfo& action : zelutil::host::actions()) {
        if (action.source != ShortcutSource::StandIn) {
            now.push_back(std::move(action));
        }
    }
    if (now.size() == actions_.size()) {
        // Rows stay selected.
        actions_ = std::move(now);
        emit dataChanged(index(0, 0), index(rowCount() - 1, ColumnCount - 1));
        return;
    }
    beginResetModel();
    actions_ = std::move(now);
    endResetModel();
}

int ActionModel::rowOf(int id) const {
    for (int row = 0; row < rowCount(); ++row) {
        if (action(row).id == id) {
            return row;
        }
    }
    return -1;
}

int ActionModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(actions_.size());
}

int ActionModel::columnCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : ColumnCount; }

QVariant ActionModel::data(const QModelIndex& index, int role) const {
    const ActionInfo& shown = action(index.row());
    if (role == Qt::CheckStateRole && index.column() == Menu) {
        return shown.inMenu ? Qt::Checked : Qt::Unchecked;
    }
    if (role == Qt::FontRole && isChanged(shown)) {
        QFont font;
        font.setBold(true);
        return font;
    }
    if (role == Qt::ForegroundRole && isDoubtful(shown)) {
        return QBrush(QColor(0xa0, 0x30, 0x20));
    }
    if (role == Qt::ToolTipRole) {
        return tipOf(shown);
    }
    if (role != Qt::DisplayRole) {
        return {};
    }
    switch (index.column()) {
        case Name:
            return QString::fromStdString(shown.item.name);
        case Context:
            return contextTitle(QString::fromStdString(shown.item.context));
        case Shortcut:
            return shortcutText(shown);
        case Origin:
            return originText(shown);
        default:
            return {};
    }
}

bool ActionModel::setData(const QModelIndex& index, const QVariant& value, int role) {
    if (role != Qt::CheckStateRole || index.column() != Menu) {
        return false;
    }
    emit menuFlagWanted(action(index.row()).id, value.toInt() == Qt::Checked);
    return true;
}

Qt::ItemFlags ActionModel::flags(const QModelIndex& index) const {
    const Qt::ItemFlags all = QAbstractTableModel::flags(index);
    return index.column() == Menu ? all | Qt::ItemIsUserCheckable : all;
}

QVariant ActionModel::headerData(int section, Qt::Orientation orientation, int role) const {
    static const char* const kTitles[] = {"Action", "Where", "Shortcut", "In menu", "From"};
    if (orientation == Qt::Horizontal && role == Qt::DisplayRole) {
        return tr(kTitles[section]);
    }
    return {};
}

}  // namespace viewer
